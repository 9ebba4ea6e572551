// widgets/tick_paint.h — a check mark in the middle of a cell.
#pragma once

#include <QStyleOption>

class QModelIndex;
class QPainter;

namespace orvan {

QRect tickRect(const QStyleOptionViewItem& option);
// The cell's usual background and focus, and the mark over it. `cell` as initStyleOption has made it.
void paintTick(QPainter* painter, QStyleOptionViewItem cell, Qt::CheckState state, bool takesInput);

} // namespace orvan
