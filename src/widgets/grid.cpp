// widgets/grid.cpp — the list grid: view, find line, counts, selection that survives sorting and refreshing.
#include "widgets/grid.h"

#include "core/values.h"
#include "widgets/list_export.h"
#include "widgets/list_print.h"
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
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

namespace orvan {

namespace {

QToolButton* menuButton(const char* name, const QString& text, QMenu* menu, QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(text + QStringLiteral("  ")); // room for the arrow
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

} // namespace

ListGrid::ListGrid(const QString& name, std::vector<ListColumn> columns, Dialogs& dialogs, UserMemory& memory,
                   QWidget* parent)
    : QWidget(parent), dialogs_(dialogs), memory_(memory), model_(new ListModel(std::move(columns), this)) {
    setObjectName(name);
    emptyText_ = QStringLiteral("Listede kayıt yok.");
    build();
    restoreLayout();
    updateCounts();
}

// When the window closes, not when it is deleted: by then another user may have signed in.
void ListGrid::hideEvent(QHideEvent* event) {
    saveLayout();
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
    auto* findLabel = new QLabel(QStringLiteral("&Ara:"), this);
    findLabel->setBuddy(find_);

    view_ = new QTableView(this);
    setFocusProxy(find_);
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
    view_->horizontalHeader()->setSectionsMovable(true);
    view_->horizontalHeader()->setHighlightSections(false);
    view_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    view_->horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->setContextMenuPolicy(Qt::CustomContextMenu);
    view_->installEventFilter(this);

    empty_ = new QLabel(view_->viewport());
    empty_->setObjectName(QStringLiteral("bosListe"));
    empty_->setAlignment(Qt::AlignCenter);
    empty_->setWordWrap(true);
    view_->viewport()->installEventFilter(this);

    counts_ = new QLabel(this);
    counts_->setObjectName(QStringLiteral("sayilar"));

    buildOutputs();
    auto* columnMenu = new QMenu(this);
    connect(columnMenu, &QMenu::aboutToShow, this, [this, columnMenu] { fillColumnMenu(columnMenu); });
    auto* outputMenu = new QMenu(this);
    for (QAction* action : outputs_)
        outputMenu->addAction(action);

    auto* top = new QHBoxLayout;
    top->addWidget(findLabel);
    top->addWidget(find_, 1);
    top->addWidget(menuButton("sutunlar", QStringLiteral("Sütunlar"), columnMenu, this));
    top->addWidget(menuButton("cikti", QStringLiteral("Yazdır / Dışa Aktar"), outputMenu, this));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(top);
    layout->addWidget(view_, 1);
    layout->addWidget(counts_);

    connect(find_, &QLineEdit::textChanged, this, &ListGrid::applyFilter);
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ListGrid::updateCounts);
    connect(view_->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
            [this](int column, Qt::SortOrder order) {
                const auto selected = selectedKeys();
                const QVariant current = currentKey();
                model_->sort(column, order);
                restoreSelection(selected, current);
            });
    view_->horizontalHeader()->setSectionsClickable(true);
    view_->horizontalHeader()->setSortIndicatorShown(true);
    connect(view_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
        emit activated(model_->rows().given(static_cast<size_t>(index.row())));
    });
    connect(view_, &QTableView::customContextMenuRequested, this, &ListGrid::showContextMenu);
    connect(view_->horizontalHeader(), &QHeaderView::customContextMenuRequested, this, [this](QPoint place) {
        QMenu menu(this);
        fillColumnMenu(&menu);
        menu.exec(view_->horizontalHeader()->mapToGlobal(place));
    });

    auto* find = new QAction(QStringLiteral("Listede ara"), this);
    find->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_F), QKeySequence(Qt::Key_F3)});
    find->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(find, &QAction::triggered, this, &ListGrid::focusFilter);
    addAction(find);
    auto* copy = new QAction(QStringLiteral("&Kopyala"), view_);
    copy->setObjectName(QStringLiteral("kopyala"));
    copy->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_C));
    copy->setShortcutContext(Qt::WidgetShortcut);
    connect(copy, &QAction::triggered, this, &ListGrid::copySelection);
    view_->addAction(copy);
}

void ListGrid::buildOutputs() {
    QAction* print = addOutput("yazdir", QStringLiteral("&Yazdır…"), &ListGrid::print);
    print->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    print->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(print);
    addOutput("pdf", QStringLiteral("&PDF dosyası…"), &ListGrid::exportPdf);
    addOutput("excel", QStringLiteral("&Excel dosyası (.xlsx)…"), &ListGrid::exportXlsx);
    addOutput("csv", QStringLiteral("&CSV dosyası…"), &ListGrid::exportCsv);
}

QAction* ListGrid::addOutput(const char* name, const QString& text, void (ListGrid::*run)()) {
    auto* action = new QAction(text, this);
    action->setObjectName(QString::fromLatin1(name));
    connect(action, &QAction::triggered, this, run);
    outputs_.push_back(action);
    return action;
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
    std::vector<size_t> columns;
    for (int visual = 0; visual < model_->columnCount(); ++visual) {
        const int logical = view_->horizontalHeader()->logicalIndex(visual);
        if (view_->isColumnHidden(logical)) continue;
        columns.push_back(static_cast<size_t>(logical));
        sheet.columns.push_back(model_->rows().columns()[columns.back()]);
    }
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
        for (int visual = 0; visual < model_->columnCount(); ++visual) {
            const int logical = view_->horizontalHeader()->logicalIndex(visual);
            if (!view_->isColumnHidden(logical))
                cells << model_->rows().text(static_cast<size_t>(index.row()), static_cast<size_t>(logical));
        }
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

void ListGrid::print() {
    try {
        previewList(sheet(), window());
    } catch (const jet::Error& error) {
        dialogs_.message(errorText(error), QStringLiteral("Yazdırma"), Icon::Critical);
    }
}

void ListGrid::exportFile(const QString& what, const QString& filter,
                          void (*write)(const ListSheet&, const QString&)) {
    const auto path = dialogs_.chooseSaveFile(what, filter, title_);
    if (!path) return;
    try {
        const ListSheet shown = sheet();
        QApplication::setOverrideCursor(Qt::WaitCursor);
        struct Restore {
            ~Restore() { QApplication::restoreOverrideCursor(); }
        } restore;
        write(shown, *path);
    } catch (const jet::Error& error) {
        dialogs_.message(errorText(error), what, Icon::Critical);
    }
}

void ListGrid::exportPdf() {
    exportFile(QStringLiteral("PDF Dosyasına Aktar"), QStringLiteral("PDF dosyaları|*.pdf"), writePdf);
}

void ListGrid::exportXlsx() {
    exportFile(QStringLiteral("Excel Dosyasına Aktar"), QStringLiteral("Excel dosyaları|*.xlsx"), writeXlsx);
}

void ListGrid::exportCsv() {
    exportFile(QStringLiteral("CSV Dosyasına Aktar"), QStringLiteral("CSV dosyaları|*.csv"), writeCsv);
}

} // namespace orvan
