// widgets/grid.cpp — the list grid: view, find line, counts, selection that survives sorting and refreshing.
#include "widgets/grid.h"

#include "widgets/column_layout.h"
#include "widgets/list_export.h"
#include "widgets/list_output.h"
#include "widgets/pinned_view.h"
#include "widgets/text_edit.h"

#include <algorithm>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace orvan {

ListGrid::ListGrid(const QString& name, std::vector<ListColumn> columns, Dialogs& dialogs, UserMemory& memory,
                   QWidget* parent)
    : QWidget(parent), dialogs_(dialogs), memory_(memory), model_(new ListModel(std::move(columns), this)) {
    setObjectName(name);
    emptyText_ = QStringLiteral("Listede kayıt yok.");
    build();
    columns_->restore();
    updateCounts();
}

ListGrid::~ListGrid() = default;

// When the window closes, not when it is deleted: by then another user may have signed in.
void ListGrid::hideEvent(QHideEvent* event) {
    columns_->save();
    QWidget::hideEvent(event);
}

void ListGrid::build() {
    find_ = new QLineEdit(this);
    find_->setObjectName(QStringLiteral("ara"));
    find_->setAccessibleName(QStringLiteral("Listede ara"));
    find_->setPlaceholderText(QStringLiteral("Aranan numara, ad ya da başka bir bilgi"));
    find_->setToolTip(QStringLiteral("Yazdıkça süzülür; birden çok sözcük yazılabilir (Ctrl+F)"));
    find_->setClearButtonEnabled(true);
    find_->installEventFilter(this);
    setFocusProxy(find_);
    output_ = new ListOutput(
        this, [this] { return sheet(); }, dialogs_, memory_);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    buildToolLine(layout); // before the view: Tab goes in the order they are made
    buildView();
    counts_ = new QLabel(this);
    counts_->setObjectName(QStringLiteral("sayilar"));
    columns_ = std::make_unique<ColumnLayout>(view_->horizontalHeader(), model_->rows().columns(), memory_,
                                              QStringLiteral("Liste-") + objectName());
    layout->addWidget(view_, 1);
    layout->addWidget(counts_);

    connect(find_, &QLineEdit::textChanged, this, &ListGrid::applyFilter);
    auto* find = new QAction(QStringLiteral("Listede ara"), this);
    find->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_F), QKeySequence(Qt::Key_F3)});
    find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QAction::triggered, this, &ListGrid::focusFilter);
    addAction(find);
}

void ListGrid::buildToolLine(QVBoxLayout* layout) {
    auto* findLabel = new QLabel(QStringLiteral("&Ara:"), this);
    findLabel->setBuddy(find_);
    auto* columnMenu = new QMenu(this);
    connect(columnMenu, &QMenu::aboutToShow, this, [this, columnMenu] { columns_->fillMenu(columnMenu); });
    auto* top = new QHBoxLayout;
    top->addWidget(findLabel);
    top->addWidget(find_, 1);
    top->addWidget(makeMenuButton("sutunlar", QStringLiteral("Sütunlar"), columnMenu, this));
    top->addWidget(output_->makeButton(this));
    layout->addLayout(top);
}

void ListGrid::buildView() {
    view_ = new PinnedTableView(this);
    view_->setObjectName(QStringLiteral("tablo"));
    view_->setAccessibleName(QStringLiteral("Liste"));
    view_->setModel(model_);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setAlternatingRowColors(true);
    view_->setWordWrap(false);
    view_->setTabKeyNavigation(false);
    view_->setCornerButtonEnabled(false);
    view_->verticalHeader()->setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
    view_->verticalHeader()->setDefaultSectionSize(view_->fontMetrics().height() * 3 / 2);
    QHeaderView* header = view_->horizontalHeader();
    header->setSectionsMovable(true);
    header->setHighlightSections(false);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    header->setSectionsClickable(true);
    header->setSortIndicatorShown(true);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->installEventFilter(this);
    empty_ = new QLabel(view_->viewport());
    empty_->setObjectName(QStringLiteral("bosListe"));
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    view_->viewport()->installEventFilter(this);

    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ListGrid::updateCounts);
    connect(header, &QHeaderView::sortIndicatorChanged, this, [this](int column, Qt::SortOrder order) {
        const auto selected = selectedKeys();
        const QVariant current = currentKey();
        model_->sort(column, order);
        restoreSelection(selected, current);
    });
    connect(view_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        emit activated(model_->rows().given(static_cast<size_t>(index.row())));
    });
    connect(view_, &QTableView::customContextMenuRequested, this, &ListGrid::showContextMenu);
    connect(header, &QHeaderView::customContextMenuRequested, this, [this](QPoint place) {
        QMenu menu(this);
        columns_->fillMenu(&menu);
        menu.exec(view_->horizontalHeader()->mapToGlobal(place));
    });
    auto* copy = new QAction(QStringLiteral("&Kopyala"), view_);
    copy->setObjectName(QStringLiteral("kopyala"));
    copy->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_C));
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &ListGrid::copySelection);
    view_->addAction(copy);
}

std::vector<QAction*> ListGrid::outputActions() const { return output_->actions(); }

QTableView* ListGrid::view() const { return view_; }

void ListGrid::setPinnedColumns(int count) { view_->setPinnedColumns(count); }

void ListGrid::sortAtFirstBy(const QString& key) {
    QHeaderView* header = view_->horizontalHeader();
    if (header->sortIndicatorSection() < 0) header->setSortIndicator(columns_->find(key), Qt::AscendingOrder);
}

void ListGrid::setRows(std::vector<ListRow> rows) {
    const auto selected = selectedKeys();
    const QVariant current = currentKey();
    model_->setRows(std::move(rows));
    restoreSelection(selected, current);
}

void ListGrid::setEmptyText(const QString& text) {
    emptyText_ = text;
    updateCounts();
}

QString ListGrid::filter() const { return find_->text(); }

void ListGrid::setFilter(const QString& text) { find_->setText(text); }

void ListGrid::focusFilter() {
    find_->setFocus(Qt::ShortcutFocusReason);
    find_->selectAll();
}

void ListGrid::applyFilter() {
    const auto selected = selectedKeys();
    const QVariant current = currentKey();
    model_->setFilter(find_->text());
    restoreSelection(selected, current);
}

std::optional<size_t> ListGrid::currentRow() const {
    const QModelIndex index = view_->currentIndex();
    if (!index.isValid()) return std::nullopt;
    return model_->rows().given(static_cast<size_t>(index.row()));
}

std::vector<size_t> ListGrid::selectedRows() const {
    std::vector<size_t> rows;
    for (const QModelIndex& index : view_->selectionModel()->selectedRows())
        rows.push_back(static_cast<size_t>(index.row()));
    std::sort(rows.begin(), rows.end());
    for (size_t& row : rows)
        row = model_->rows().given(row);
    return rows;
}

void ListGrid::makeCurrent(const QVariant& key) { restoreSelection({key}, key); }

std::vector<QVariant> ListGrid::selectedKeys() const {
    std::vector<QVariant> keys;
    for (const QModelIndex& index : view_->selectionModel()->selectedRows())
        keys.push_back(model_->rows().cell(static_cast<size_t>(index.row()), keyColumn_));
    return keys;
}

QVariant ListGrid::currentKey() const {
    const QModelIndex index = view_->currentIndex();
    return index.isValid() ? model_->rows().cell(static_cast<size_t>(index.row()), keyColumn_) : QVariant();
}

// The first row becomes current when the old current row is gone, so that the arrow keys always have a start.
void ListGrid::restoreSelection(const std::vector<QVariant>& selected, const QVariant& current) {
    const ListRows& rows = model_->rows();
    const int column = std::max(0, view_->horizontalHeader()->logicalIndex(0));
    int currentRow = -1;
    QItemSelection selection;
    for (size_t row = 0; row < rows.shownCount() && (current.isValid() || !selected.empty()); ++row) {
        const QVariant& key = rows.cell(row, keyColumn_);
        if (current.isValid() && key == current) currentRow = static_cast<int>(row);
        if (std::find(selected.begin(), selected.end(), key) != selected.end()) {
            const QModelIndex index = model_->index(static_cast<int>(row), 0);
            selection.select(index, index);
        }
    }
    if (currentRow < 0 && rows.shownCount() > 0) currentRow = 0;
    if (currentRow >= 0) {
        const QModelIndex index = model_->index(currentRow, column);
        if (selection.isEmpty()) selection.select(index, index);
        view_->selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        view_->selectionModel()->select(selection,
                                        QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        view_->scrollTo(index);
    }
    updateCounts();
}

void ListGrid::updateCounts() {
    const size_t total = totalCount(), shown = shownCount();
    QString text = shown == total ? QStringLiteral("%1 kayıt").arg(total)
                                  : QStringLiteral("%1 kayıttan gösterilen: %2").arg(total).arg(shown);
    text += QStringLiteral("     Seçili: %1").arg(view_->selectionModel()->selectedRows().size());
    counts_->setText(text);
    empty_->setVisible(shown == 0);
    empty_->setText(total == 0
                        ? emptyText_
                        : QStringLiteral("\"%1\" aramasına uyan kayıt yok.").arg(find_->text().trimmed()));
    empty_->setGeometry(view_->viewport()->rect());
}

ListSheet ListGrid::sheet() const {
    ListSheet sheet;
    sheet.title = title_;
    sheet.notes = notes_;
    if (!find_->text().trimmed().isEmpty())
        sheet.notes << QStringLiteral("Süzgeç: %1").arg(find_->text().trimmed());
    const std::vector<size_t> columns = columns_->shown();
    for (const size_t column : columns)
        sheet.columns.push_back(model_->rows().columns()[column]);
    for (size_t row = 0; row < shownCount(); ++row) {
        ListRow cells;
        for (const size_t column : columns)
            cells.push_back(model_->rows().cell(row, column));
        sheet.rows.push_back(std::move(cells));
    }
    return sheet;
}

void ListGrid::copySelection() {
    std::vector<QStringList> rows;
    QModelIndexList selected = view_->selectionModel()->selectedRows();
    std::sort(selected.begin(), selected.end());
    for (const QModelIndex& index : selected) {
        QStringList cells;
        for (const size_t column : columns_->shown())
            cells << model_->rows().text(static_cast<size_t>(index.row()), column);
        rows.push_back(cells);
    }
    if (!rows.empty()) QApplication::clipboard()->setText(tabSeparated(rows));
}

// Typing in the table goes to the find line; arrows in the find line go to the table; Esc in it shows all
// rows again.
bool ListGrid::eventFilter(QObject* watched, QEvent* event) {
    if (watched == view_->viewport() && event->type() == QEvent::Resize)
        empty_->setGeometry(view_->viewport()->rect());
    if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    if (watched == find_) {
        if (key->key() == Qt::Key_Escape && !find_->text().isEmpty()) {
            find_->clear();
            return true;
        }
        const bool down = key->key() == Qt::Key_Down || key->key() == Qt::Key_PageDown;
        if (down || key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            view_->setFocus(Qt::OtherFocusReason);
            return true;
        }
    } else if (watched == view_) {
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            if (const auto row = currentRow(); row && !key->isAutoRepeat()) emit activated(*row);
            return true;
        }
        const bool typed = typesText(*key) && key->key() != Qt::Key_Space;
        if (typed || (key->key() == Qt::Key_Backspace && !find_->text().isEmpty())) {
            find_->setFocus(Qt::OtherFocusReason);
            find_->end(false);
            QApplication::sendEvent(find_, event);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ListGrid::showContextMenu(QPoint place) {
    QMenu menu(this);
    for (QAction* action : view_->actions())
        menu.addAction(action);
    menu.addAction(QStringLiteral("&Tümünü seç\tCtrl+A"), view_, &QTableView::selectAll);
    const QModelIndex current = view_->currentIndex();
    if (current.isValid()) {
        const int column = current.column();
        const QString title = model_->rows().columns()[static_cast<size_t>(column)].title;
        menu.addSeparator();
        menu.addAction(QStringLiteral("%1: küçükten &büyüğe sırala").arg(title), this, [this, column] {
            view_->horizontalHeader()->setSortIndicator(column, Qt::AscendingOrder);
        });
        menu.addAction(QStringLiteral("%1: büyükten &küçüğe sırala").arg(title), this, [this, column] {
            view_->horizontalHeader()->setSortIndicator(column, Qt::DescendingOrder);
        });
    }
    menu.addSeparator();
    for (QAction* action : output_->actions())
        menu.addAction(action);
    menu.exec(view_->viewport()->mapToGlobal(place));
}

QSize ListGrid::sizeHint() const {
    constexpr int kRows = 22;
    const QSize usual = QWidget::sizeHint();
    const int width = view_->horizontalHeader()->length() + view_->verticalHeader()->sizeHint().width() +
                      view_->verticalScrollBar()->sizeHint().width() +
                      view_->fontMetrics().averageCharWidth() * 6;
    const int height =
        usual.height() - view_->sizeHint().height() + view_->verticalHeader()->defaultSectionSize() * kRows;
    return {std::max(usual.width(), width), std::max(usual.height(), height)};
}

} // namespace orvan
