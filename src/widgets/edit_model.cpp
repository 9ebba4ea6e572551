// widgets/edit_model.cpp — EditCells as an item model.
#include "widgets/edit_model.h"

#include "widgets/list_rows.h"

#include <algorithm>
#include <numeric>
#include <QApplication>
#include <QPalette>

namespace orvan {

namespace {

Qt::Alignment alignment(const EditColumn& column) {
    const ListKind kind = listKind(column);
    if (column.kind == CellKind::Check) return Qt::AlignVCenter | Qt::AlignHCenter;
    const bool right = kind == ListKind::Number || kind == ListKind::Money;
    return Qt::AlignVCenter | (right ? Qt::AlignRight : Qt::AlignLeft);
}

} // namespace

EditModel::EditModel(std::vector<EditColumn> columns, QObject* parent)
    : QAbstractTableModel(parent), cells_(std::move(columns)) {}

void EditModel::setRows(std::vector<EditRow> rows) {
    beginResetModel();
    cells_.setRows(std::move(rows));
    setOrder(sortColumn_, sortOrder_);
    endResetModel();
}

void EditModel::setReadOnly(bool readOnly) {
    readOnly_ = readOnly;
    touched({});
}

void EditModel::setLocked(std::function<bool(CellPlace)> isLocked) {
    isLocked_ = std::move(isLocked);
    touched({});
}

bool EditModel::takesInput(CellPlace place) const {
    return !readOnly_ && cells_.columns()[place.column].kind != CellKind::ReadOnly &&
           !(isLocked_ && isLocked_(place));
}

CellPlace EditModel::place(const QModelIndex& index) const {
    return {order_[static_cast<size_t>(index.row())], static_cast<size_t>(index.column())};
}

QModelIndex EditModel::indexOf(CellPlace place) const {
    return index(static_cast<int>(shownAt_[place.row]), static_cast<int>(place.column));
}

// Many at once, or none named: everything.
void EditModel::touched(const std::vector<CellPlace>& places) {
    if (rowCount() == 0) return;
    if (places.size() == 1) {
        const QModelIndex cell = indexOf(places.front());
        emit dataChanged(cell, cell);
    } else {
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
    }
}

int EditModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(cells_.rowCount());
}

int EditModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(cells_.columns().size());
}

QVariant EditModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const CellPlace cell = place(index);
    const EditColumn& column = cells_.columns()[cell.column];
    const EditCells::Refusal* refused = cells_.refusal(cell);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole: return refused ? refused->typed : shownCell(column, cells_.value(cell));
    case Qt::ToolTipRole:
        return refused ? QVariant(QStringLiteral("⚠ %1: %2").arg(column.title, refused->reason))
                       : QVariant(shownCell(column, cells_.value(cell)));
    case Qt::AccessibleDescriptionRole: return refused ? QVariant(refused->reason) : QVariant();
    case Qt::TextAlignmentRole: return QVariant(alignment(column));
    case Qt::BackgroundRole:
        return takesInput(cell) ? QVariant() : QVariant(QApplication::palette().brush(QPalette::Window));
    case RefusedRole: return refused != nullptr;
    case KindRole: return static_cast<int>(column.kind);
    case TickedRole: return !refused && cells_.value(cell) == kYesText;
    default: return {};
    }
}

QVariant EditModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    const EditColumn& column = cells_.columns()[static_cast<size_t>(section)];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole) return column.title;
    return role == Qt::TextAlignmentRole ? QVariant(alignment(column)) : QVariant();
}

Qt::ItemFlags EditModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags usual = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    return index.isValid() && takesInput(place(index)) ? usual | Qt::ItemIsEditable : usual;
}

void EditModel::sort(int column, Qt::SortOrder order) {
    beginResetModel();
    setOrder(column, order);
    endResetModel();
}

void EditModel::setOrder(int column, Qt::SortOrder order) {
    sortColumn_ = column;
    sortOrder_ = order;
    if (column >= 0) {
        const EditColumn& about = cells_.columns()[static_cast<size_t>(column)];
        std::vector<QVariant> values;
        for (size_t row = 0; row < cells_.rowCount(); ++row)
            values.push_back(listCell(about, cells_.value({row, static_cast<size_t>(column)})));
        order_ = sortedOrder(values, listKind(about), order);
    } else {
        order_.resize(cells_.rowCount());
        std::iota(order_.begin(), order_.end(), size_t{0});
    }
    shownAt_.resize(order_.size());
    for (size_t shown = 0; shown < order_.size(); ++shown)
        shownAt_[order_[shown]] = shown;
}

} // namespace orvan
