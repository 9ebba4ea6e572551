// widgets/list_model.cpp — ListRows as an item model.
#include "widgets/list_model.h"

namespace orvan {

namespace {

bool isRightAligned(ListKind kind) { return kind == ListKind::Number || kind == ListKind::Money; }

} // namespace

ListModel::ListModel(std::vector<ListColumn> columns, QObject* parent)
    : QAbstractTableModel(parent), rows_(std::move(columns)) {}

void ListModel::setRows(std::vector<ListRow> rows) {
    beginResetModel();
    rows_.setRows(std::move(rows));
    endResetModel();
}

void ListModel::setFilter(const QString& text) {
    beginResetModel();
    rows_.setFilter(text);
    endResetModel();
}

void ListModel::sort(int column, Qt::SortOrder order) {
    beginResetModel();
    rows_.sortBy(column, order);
    endResetModel();
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.shownCount());
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.columns().size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const auto row = static_cast<size_t>(index.row());
    const auto column = static_cast<size_t>(index.column());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole: return rows_.text(row, column);
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignVCenter |
                        (isRightAligned(rows_.columns()[column].kind) ? Qt::AlignRight : Qt::AlignLeft));
    default: return {};
    }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Vertical) return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    const ListColumn& column = rows_.columns()[static_cast<size_t>(section)];
    if (role == Qt::DisplayRole) return column.title;
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | (isRightAligned(column.kind) ? Qt::AlignRight : Qt::AlignLeft));
    return {};
}

} // namespace orvan
