// widgets/grid_columns.cpp — the list grid's columns: menu to show and hide them, and each user's layout.
#include "widgets/grid.h"

#include <QAction>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QTableView>

namespace orvan {

namespace {

int pixelWidth(const QTableView* view, const ListColumn& column) {
    const QFontMetrics metrics = view->fontMetrics();
    const int content = metrics.averageCharWidth() * (column.width + 2);
    // room for the sort arrow beside the title
    const int title = metrics.horizontalAdvance(column.title) + metrics.averageCharWidth() * 5;
    return std::max(content, title);
}

QString layoutKey(const ListGrid* grid) { return QStringLiteral("Liste-") + grid->objectName(); }

} // namespace

void ListGrid::fillColumnMenu(QMenu* menu) {
    menu->clear();
    const QHeaderView* header = view_->horizontalHeader();
    const int shown = header->count() - header->hiddenSectionCount();
    for (int visual = 0; visual < header->count(); ++visual) {
        const int logical = header->logicalIndex(visual);
        const ListColumn& column = model_->rows().columns()[static_cast<size_t>(logical)];
        QAction* action = menu->addAction(column.title);
        action->setObjectName(QStringLiteral("sutun-") + column.key);
        action->setCheckable(true);
        action->setChecked(!view_->isColumnHidden(logical));
        action->setEnabled(view_->isColumnHidden(logical) || shown > 1); // the last one stays
        connect(action, &QAction::toggled, this, [this, logical](bool on) {
            view_->setColumnHidden(logical, !on);
            if (on && view_->columnWidth(logical) < 10) view_->resizeColumnToContents(logical);
        });
    }
    menu->addSeparator();
    menu->addAction(QStringLiteral("&Başlangıç düzeni"), this, &ListGrid::resetColumns);
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
    for (QAction* action : outputs_)
        menu.addAction(action);
    menu.exec(view_->viewport()->mapToGlobal(place));
}

void ListGrid::resetColumns() {
    QHeaderView* header = view_->horizontalHeader();
    const auto& columns = model_->rows().columns();
    for (int logical = 0; logical < header->count(); ++logical) {
        const ListColumn& column = columns[static_cast<size_t>(logical)];
        header->moveSection(header->visualIndex(logical), logical);
        view_->setColumnHidden(logical, false);
        view_->setColumnWidth(logical, pixelWidth(view_, column));
        view_->setColumnHidden(logical, !column.shown);
    }
}

int ListGrid::columnOf(const QString& key) const {
    const auto& columns = model_->rows().columns();
    for (size_t i = 0; i < columns.size(); ++i)
        if (columns[i].key == key) return static_cast<int>(i);
    return -1;
}

void ListGrid::sortAtFirstBy(const QString& key) {
    QHeaderView* header = view_->horizontalHeader();
    if (header->sortIndicatorSection() < 0) header->setSortIndicator(columnOf(key), Qt::AscendingOrder);
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

// One text a column, "key;width in characters;shown", in the order shown; unknown and missing columns do no
// harm.
void ListGrid::saveLayout() {
    const QHeaderView* header = view_->horizontalHeader();
    const double unit = view_->fontMetrics().averageCharWidth();
    QStringList layout;
    for (int visual = 0; visual < header->count(); ++visual) {
        const int logical = header->logicalIndex(visual);
        const bool hidden = view_->isColumnHidden(logical);
        if (hidden) view_->setColumnHidden(logical, false); // a hidden column reports no width
        layout << QStringLiteral("%1;%2;%3")
                      .arg(model_->rows().columns()[static_cast<size_t>(logical)].key)
                      .arg(view_->columnWidth(logical) / unit, 0, 'f', 1)
                      .arg(hidden ? 0 : 1);
        if (hidden) view_->setColumnHidden(logical, true);
    }
    const int sorted = header->sortIndicatorSection();
    const QString sortKey =
        sorted >= 0 ? model_->rows().columns()[static_cast<size_t>(sorted)].key : QString();
    memory_.setValue(layoutKey(this) + QStringLiteral("/Sutunlar"), layout);
    memory_.setValue(layoutKey(this) + QStringLiteral("/Siralama"), sortKey);
    memory_.setValue(layoutKey(this) + QStringLiteral("/Azalan"),
                     header->sortIndicatorOrder() == Qt::DescendingOrder);
}

void ListGrid::restoreLayout() {
    resetColumns();
    QHeaderView* header = view_->horizontalHeader();
    const double unit = view_->fontMetrics().averageCharWidth();
    int visual = 0;
    for (const QString& line : memory_.value(layoutKey(this) + QStringLiteral("/Sutunlar")).toStringList()) {
        const QStringList parts = line.split(u';');
        const int logical = columnOf(parts.value(0));
        if (logical < 0 || parts.size() != 3) continue;
        header->moveSection(header->visualIndex(logical), visual++);
        const int width = static_cast<int>(parts[1].toDouble() * unit);
        view_->setColumnWidth(logical, std::clamp(width, view_->fontMetrics().height(), 2000));
        view_->setColumnHidden(logical, parts[2] == QStringLiteral("0"));
    }
    if (header->hiddenSectionCount() == header->count()) resetColumns();
    const int sorted = columnOf(memory_.value(layoutKey(this) + QStringLiteral("/Siralama")).toString());
    const bool descending = memory_.value(layoutKey(this) + QStringLiteral("/Azalan")).toBool();
    if (sorted >= 0) header->setSortIndicator(sorted, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

} // namespace orvan
