// widgets/tick_paint.cpp — paints check marks of cells.
#include "widgets/tick_paint.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QWidget>

namespace orvan {

namespace {

const QStyle* styleOf(const QStyleOptionViewItem& option) {
    return option.widget ? option.widget->style() : QApplication::style();
}

} // namespace

QRect tickRect(const QStyleOptionViewItem& option) {
    const QStyle* style = styleOf(option);
    const QSize size(style->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, option.widget),
                     style->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, option.widget));
    return QStyle::alignedRect(option.direction, Qt::AlignCenter, size, option.rect);
}

void paintTick(QPainter* painter, QStyleOptionViewItem cell, Qt::CheckState state, bool takesInput) {
    const QStyle* style = styleOf(cell);
    cell.text.clear();
    cell.features &= ~QStyleOptionViewItem::HasCheckIndicator;
    style->drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);
    QStyleOptionButton box;
    box.rect = tickRect(cell);
    box.palette = cell.palette;
    box.state = takesInput ? QStyle::State_Enabled : QStyle::State_ReadOnly;
    box.state |= state == Qt::Checked     ? QStyle::State_On
                 : state == Qt::Unchecked ? QStyle::State_Off
                                          : QStyle::State_NoChange;
    style->drawPrimitive(QStyle::PE_IndicatorItemViewItemCheck, &box, painter, cell.widget);
}

} // namespace orvan
