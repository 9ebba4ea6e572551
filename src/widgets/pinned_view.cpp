// widgets/pinned_view.cpp — keeps the pinned part in step with the table.
#include "widgets/pinned_view.h"

#include <algorithm>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>

namespace orvan {

namespace {

// Paints as the table's delegate does. Two views cannot share one: both would take its editors for theirs.
class PaintingDelegate : public QStyledItemDelegate {
  public:
    PaintingDelegate(const QTableView* table, QObject* parent) : QStyledItemDelegate(parent), table_(table) {}
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        table_->itemDelegate()->paint(painter, option, index);
    }

  private:
    const QTableView* table_;
};

} // namespace

PinnedTableView::PinnedTableView(QWidget* parent) : QTableView(parent), part_(new QTableView(this)) {
    part_->setObjectName(QStringLiteral("sabitSutunlar"));
    part_->setFocusPolicy(Qt::NoFocus);
    part_->setFrameShape(QFrame::NoFrame);
    part_->setEditTriggers(NoEditTriggers);
    part_->setItemDelegate(new PaintingDelegate(this, part_));
    part_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    part_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    part_->setHorizontalScrollMode(ScrollPerPixel);
    part_->verticalHeader()->hide();
    part_->horizontalHeader()->setHighlightSections(false);
    part_->viewport()->installEventFilter(this);
    part_->horizontalHeader()->viewport()->installEventFilter(this);
    part_->hide();
    setHorizontalScrollMode(ScrollPerPixel);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, part_->verticalScrollBar(),
            &QScrollBar::setValue);
    connect(part_->verticalScrollBar(), &QScrollBar::valueChanged, verticalScrollBar(),
            &QScrollBar::setValue);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, [this] { placePart(); });
    for (auto changed : {&QHeaderView::sectionResized, &QHeaderView::sectionMoved})
        connect(horizontalHeader(), changed, this, [this] {
            copyColumns();
            placePart();
        });
}

void PinnedTableView::setPinnedColumns(int count) {
    pinned_ = count;
    copyColumns();
    placePart();
}

void PinnedTableView::setModel(QAbstractItemModel* model) {
    QTableView::setModel(model);
    part_->setModel(model);
    if (part_->selectionModel() != selectionModel()) {
        delete part_->selectionModel();
        part_->setSelectionModel(selectionModel());
    }
    copyColumns();
}

bool PinnedTableView::isPinned(int column) const {
    int before = 0; // shown columns to the left of it
    for (int visual = 0; visual < horizontalHeader()->visualIndex(column); ++visual)
        before += horizontalHeader()->isSectionHidden(horizontalHeader()->logicalIndex(visual)) ? 0 : 1;
    return before < pinned_;
}

int PinnedTableView::pinnedWidth() const {
    int width = 0;
    for (int column = 0; column < horizontalHeader()->count(); ++column)
        if (isPinned(column)) width += columnWidth(column);
    return width;
}

void PinnedTableView::copyColumns() {
    if (pinned_ == 0) return;
    QHeaderView* header = part_->horizontalHeader();
    for (int visual = 0; visual < horizontalHeader()->count(); ++visual) {
        const int column = horizontalHeader()->logicalIndex(visual);
        header->moveSection(header->visualIndex(column), visual);
        const bool shown = !isColumnHidden(column) && isPinned(column);
        part_->setColumnHidden(column, !shown);
        if (shown) part_->setColumnWidth(column, columnWidth(column));
    }
}

// Wider than two thirds of the table the pinned columns would leave no room to work in.
void PinnedTableView::placePart() {
    const int width = pinnedWidth();
    const bool needed =
        pinned_ > 0 && horizontalScrollBar()->value() > 0 && width <= viewport()->width() * 2 / 3;
    if (!needed) {
        part_->hide();
        return;
    }
    const QHeaderView* header = horizontalHeader();
    part_->setSelectionBehavior(selectionBehavior());
    part_->setAlternatingRowColors(alternatingRowColors());
    part_->setWordWrap(wordWrap());
    part_->setVerticalScrollMode(verticalScrollMode());
    part_->verticalHeader()->setDefaultSectionSize(verticalHeader()->defaultSectionSize());
    part_->verticalHeader()->setMinimumSectionSize(verticalHeader()->minimumSectionSize());
    part_->horizontalHeader()->setFixedHeight(header->height());
    part_->horizontalHeader()->setSortIndicatorShown(header->isSortIndicatorShown());
    part_->horizontalHeader()->setSortIndicator(header->sortIndicatorSection(), header->sortIndicatorOrder());
    part_->setGeometry(viewport()->x(), header->y(), width, header->height() + viewport()->height());
    part_->verticalScrollBar()->setValue(verticalScrollBar()->value());
    part_->show();
    part_->raise();
}

void PinnedTableView::updateGeometries() {
    QTableView::updateGeometries();
    placePart();
}

// A cell that has come under the pinned part is not in view.
void PinnedTableView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    if (isPinned(index.column())) { // seen anyway: its row only
        const int sideways = horizontalScrollBar()->value();
        QTableView::scrollTo(index, hint);
        horizontalScrollBar()->setValue(sideways);
        return;
    }
    QTableView::scrollTo(index, hint);
    if (pinned_ == 0 || horizontalScrollBar()->value() == 0) return;
    const int covered = pinnedWidth() - columnViewportPosition(index.column());
    if (covered > 0 && part_->isVisible())
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - covered);
}

void PinnedTableView::reveal(const QModelIndex& index) {
    scrollTo(index);
    if (isPinned(index.column())) horizontalScrollBar()->setValue(0);
}

// A click on a pinned cell goes to its row in the column where the user is; its header sorts.
bool PinnedTableView::eventFilter(QObject* watched, QEvent* event) {
    const bool isPress = event->type() == QEvent::MouseButtonPress;
    const bool isDouble = event->type() == QEvent::MouseButtonDblClick;
    if (!isPress && !isDouble) return QTableView::eventFilter(watched, event);
    const auto* mouse = static_cast<QMouseEvent*>(event);
    if (watched == part_->viewport()) {
        const QModelIndex hit = part_->indexAt(mouse->position().toPoint());
        if (!hit.isValid()) return true;
        const int column = currentIndex().isValid() ? currentIndex().column() : hit.column();
        if (mouse->modifiers() == Qt::NoModifier) setCurrentIndex(hit.siblingAtColumn(column));
        setFocus(Qt::MouseFocusReason);
        if (isDouble) emit doubleClicked(hit);
        return mouse->modifiers() == Qt::NoModifier;
    }
    if (watched == part_->horizontalHeader()->viewport() && isPress &&
        horizontalHeader()->sectionsClickable()) {
        const int column = part_->horizontalHeader()->logicalIndexAt(mouse->position().toPoint());
        const bool again = column == horizontalHeader()->sortIndicatorSection() &&
                           horizontalHeader()->sortIndicatorOrder() == Qt::AscendingOrder;
        if (column >= 0)
            horizontalHeader()->setSortIndicator(column, again ? Qt::DescendingOrder : Qt::AscendingOrder);
        placePart();
        return true;
    }
    return QTableView::eventFilter(watched, event);
}

} // namespace orvan
