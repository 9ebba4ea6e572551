// widgets/edit_grid.cpp — the public face of the entry grid.
#include "widgets/edit_grid.h"

#include "widgets/edit_grid_body.h"

#include <algorithm>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>

namespace orvan {

EditGrid::EditGrid(const QString& name, std::vector<EditColumn> columns, Dialogs& dialogs, UserMemory& memory,
                   QWidget* parent)
    : QWidget(parent) {
    setObjectName(name);
    body_ = std::make_unique<EditGridBody>(*this, std::move(columns), dialogs, memory);
    body_->build();
}

EditGrid::~EditGrid() = default;

void EditGrid::setTitle(const QString& title) { body_->title_ = title; }

void EditGrid::setNotes(const QStringList& notes) { body_->notes_ = notes; }

void EditGrid::setEmptyText(const QString& text) {
    body_->emptyText_ = text;
    body_->updateCounts();
}

void EditGrid::hideFind() {
    body_->findLabel_->hide();
    body_->find_->hide();
    body_->toolLine_->insertStretch(0, 1);
}

void EditGrid::setPinnedColumns(int count) { body_->view_->setPinnedColumns(count); }

void EditGrid::setEntryDirection(EntryDirection direction) {
    if (!body_->directionChosen_) body_->chooseDirection(direction);
}

void EditGrid::setValidator(CellValidator validator) { body_->validator_ = std::move(validator); }

void EditGrid::setValidator(const QString& key, CellValidator validator) {
    body_->validators_[body_->model_->cells().column(key)] = std::move(validator);
}

void EditGrid::setReadOnly(bool readOnly) { body_->model_->setReadOnly(readOnly); }

void EditGrid::setCellLocked(std::function<bool(CellPlace)> isLocked) {
    body_->model_->setLocked(std::move(isLocked));
}

void EditGrid::setRows(std::vector<EditRow> rows) {
    const QModelIndex current = body_->view_->currentIndex();
    const auto at = current.isValid() ? std::optional(body_->model_->place(current)) : std::nullopt;
    body_->model_->setRows(std::move(rows));
    body_->placesOutside_.clear();
    if (rowCount() > 0) body_->makeCurrent(at && at->row < rowCount() ? *at : CellPlace{});
    body_->cellsChanged({});
}

size_t EditGrid::rowCount() const { return body_->model_->cells().rowCount(); }

QString EditGrid::value(size_t row, const QString& key) const {
    const EditCells& cells = body_->model_->cells();
    return cells.value({row, cells.column(key)});
}

EditRow EditGrid::row(size_t row) const { return body_->model_->cells().row(row); }

void EditGrid::setValue(size_t row, const QString& key, const QString& value) {
    EditCells& cells = body_->model_->cells();
    const CellPlace place{row, cells.column(key)};
    cells.putLoaded(place, value);
    body_->model_->touched({place});
    body_->cellsChanged({});
}

void EditGrid::applyChanges(const std::vector<Change>& changes) {
    EditCells& cells = body_->model_->cells();
    cells.begin();
    for (const Change& change : changes) {
        const CellPlace place{change.row, cells.column(change.key)};
        body_->enterCell(place, shownCell(cells.columns()[place.column], change.value));
    }
    body_->endStep();
}

bool EditGrid::settle() {
    body_->delegate_->finish();
    const auto& refused = body_->model_->cells().refusals();
    if (refused.empty()) return true;
    body_->makeCurrent(refused.begin()->first);
    body_->view_->setFocus(Qt::OtherFocusReason);
    return false;
}

bool EditGrid::isDirty() const {
    const EditCells& cells = body_->model_->cells();
    return cells.changedCount() > 0 || !cells.refusals().empty();
}

std::vector<CellPlace> EditGrid::changedCells() const { return body_->model_->cells().changedCells(); }

std::vector<size_t> EditGrid::changedRows() const {
    std::vector<size_t> rows;
    for (const CellPlace place : changedCells())
        if (rows.empty() || rows.back() != place.row) rows.push_back(place.row);
    return rows;
}

std::vector<RefusedCell> EditGrid::refusedCells() const {
    std::vector<RefusedCell> refused;
    for (const auto& [place, refusal] : body_->model_->cells().refusals())
        refused.push_back({place, refusal.typed, refusal.reason});
    return refused;
}

void EditGrid::acceptAsLoaded() {
    body_->model_->cells().acceptAsLoaded();
    body_->model_->touched({});
    body_->cellsChanged({});
}

void EditGrid::revert() {
    EditCells& cells = body_->model_->cells();
    cells.begin();
    cells.revert();
    body_->endStep();
}

void EditGrid::showWrong(size_t row, const QString& key, const QString& reason) {
    EditCells& cells = body_->model_->cells();
    const CellPlace place{row, cells.column(key)};
    cells.mark(place, {shownCell(cells.columns()[place.column], cells.value(place)), reason});
    body_->model_->touched({place});
    body_->makeCurrent(place);
    body_->cellsChanged({});
    body_->view_->setFocus(Qt::OtherFocusReason);
}

std::optional<CellPlace> EditGrid::currentCell() const {
    const QModelIndex index = body_->view_->currentIndex();
    return index.isValid() ? std::optional(body_->model_->place(index)) : std::nullopt;
}

void EditGrid::makeCurrent(size_t row, const QString& key) {
    body_->makeCurrent({row, body_->model_->cells().column(key)});
}

std::vector<size_t> EditGrid::selectedRows() const {
    std::vector<size_t> rows;
    QModelIndexList cells = body_->selectedCells();
    std::sort(cells.begin(), cells.end());
    for (const QModelIndex& cell : cells) {
        const size_t row = body_->model_->place(cell).row;
        if (rows.empty() || rows.back() != row) rows.push_back(row);
    }
    return rows;
}

ListSheet EditGrid::sheet() const {
    const EditCells& cells = body_->model_->cells();
    ListSheet sheet;
    sheet.title = body_->title_;
    sheet.notes = body_->notes_;
    const std::vector<size_t> shown = body_->columns_->shown();
    for (const size_t column : shown) {
        const EditColumn& about = cells.columns()[column];
        sheet.columns.push_back({about.key, about.title, listKind(about), about.width});
    }
    for (int row = 0; row < body_->model_->rowCount(); ++row) {
        ListRow line;
        const size_t given = body_->model_->place(body_->model_->index(row, 0)).row;
        for (const size_t column : shown)
            line.push_back(listCell(cells.columns()[column], cells.value({given, column})));
        sheet.rows.push_back(std::move(line));
    }
    return sheet;
}

std::vector<QAction*> EditGrid::outputActions() const { return body_->output_->actions(); }

QTableView* EditGrid::view() const { return body_->view_; }

QSize EditGrid::sizeHint() const {
    constexpr int kRows = 20;
    const QTableView* view = body_->view_;
    const QSize usual = QWidget::sizeHint();
    const int width = view->horizontalHeader()->length() + view->verticalHeader()->sizeHint().width() +
                      view->verticalScrollBar()->sizeHint().width() +
                      view->fontMetrics().averageCharWidth() * 4;
    const int height =
        usual.height() - view->sizeHint().height() + view->verticalHeader()->defaultSectionSize() * kRows;
    return {std::max(usual.width(), width), std::max(usual.height(), height)};
}

bool EditGrid::eventFilter(QObject* watched, QEvent* event) {
    if (watched == body_->view_->viewport() && event->type() == QEvent::Resize)
        body_->empty_->setGeometry(body_->view_->viewport()->rect());
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto& key = *static_cast<QKeyEvent*>(event);
    const bool isEnter = key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter;
    if (watched == body_->view_) return body_->keyInView(key);
    if (watched == body_->find_) {
        if (isEnter) body_->findRow(true);
        if (key.key() == Qt::Key_Escape && body_->find_->text().isEmpty()) return false;
        if (key.key() == Qt::Key_Down || key.key() == Qt::Key_Escape) {
            body_->find_->clear();
            body_->view_->setFocus(Qt::OtherFocusReason);
            return true;
        }
        return isEnter;
    }
    if (watched == body_->refusals_ && isEnter) {
        if (QListWidgetItem* item = body_->refusals_->currentItem())
            emit body_->refusals_->itemActivated(item);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

// When the window closes, not when it is deleted: by then another user may have signed in.
void EditGrid::hideEvent(QHideEvent* event) {
    body_->saveLayout();
    QWidget::hideEvent(event);
}

} // namespace orvan
