// widgets/tick_model.cpp — see tick_model.h.
#include "widgets/tick_model.h"

#include "core/turkish_text.h"
#include "widgets/list_rows.h"

#include <algorithm>
#include <cassert>
#include <map>

namespace orvan {

namespace {

constexpr int kTickWidth = 6; // characters

bool isRight(ListKind kind) { return kind == ListKind::Number || kind == ListKind::Money; }

} // namespace

TickModel::TickModel(std::vector<ListColumn> textColumns, std::vector<TickColumn> tickColumns,
                     QObject* parent)
    : QAbstractItemModel(parent), texts_(std::move(textColumns)), ticks_(std::move(tickColumns)) {}

std::vector<ListColumn> TickModel::allColumns() const {
    std::vector<ListColumn> columns = texts_;
    for (const TickColumn& tick : ticks_)
        columns.push_back({tick.key, tick.title, ListKind::Text, kTickWidth});
    return columns;
}

size_t TickModel::tickColumn(const QString& key) const {
    const auto found =
        std::find_if(ticks_.begin(), ticks_.end(), [&](const TickColumn& tick) { return tick.key == key; });
    assert(found != ticks_.end());
    return static_cast<size_t>(found - ticks_.begin());
}

void TickModel::setRows(std::vector<TickRow> rows) {
    beginResetModel();
    nodes_.clear();
    top_.clear();
    isTree_ = false;
    std::map<QString, int> places;
    for (TickRow& row : rows) {
        assert(row.cells.size() == texts_.size());
        const int at = static_cast<int>(nodes_.size());
        places[row.key] = at;
        Node node;
        if (const auto above = places.find(row.parent); !row.parent.isEmpty() && above != places.end()) {
            node.parent = above->second;
            nodes_[static_cast<size_t>(node.parent)].below.push_back(at);
            isTree_ = true;
        } else {
            top_.push_back(at);
        }
        row.ticks.resize(ticks_.size());
        node.loaded = row.ticks;
        node.row = std::move(row);
        nodes_.push_back(std::move(node));
    }
    showMatches();
    endResetModel();
}

void TickModel::setFilter(const QString& text) {
    beginResetModel();
    filter_ = text;
    showMatches();
    endResetModel();
}

void TickModel::showMatches() {
    const QStringList words = lowerTurkish(filter_).split(u' ', Qt::SkipEmptyParts);
    shownTop_.clear();
    for (const int node : sorted()) {
        if (!showBelow(node, words)) continue;
        nodes_[static_cast<size_t>(node)].place = static_cast<int>(shownTop_.size());
        shownTop_.push_back(node);
    }
}

// A parent that matches itself shows all that is below it.
bool TickModel::showBelow(int at, const QStringList& words) {
    Node& node = nodes_[static_cast<size_t>(at)];
    QString text;
    for (size_t column = 0; column < texts_.size(); ++column)
        text += cellText(node.row.cells[column], texts_[column].kind) + u'\n';
    text = lowerTurkish(text);
    const bool matches =
        std::all_of(words.begin(), words.end(), [&](const QString& word) { return text.contains(word); });
    node.shownBelow.clear();
    for (const int below : node.below) {
        if (!showBelow(below, matches ? QStringList() : words)) continue;
        nodes_[static_cast<size_t>(below)].place = static_cast<int>(node.shownBelow.size());
        node.shownBelow.push_back(below);
    }
    if (matches || !node.shownBelow.empty()) return true;
    node.place = -1;
    return false;
}

std::vector<int> TickModel::sorted() const {
    if (isTree_ || sortColumn_ < 0) return top_;
    const auto column = static_cast<size_t>(sortColumn_);
    std::vector<QVariant> cells;
    for (const int node : top_)
        cells.push_back(cell(node, column));
    const ListKind kind = column < texts_.size() ? texts_[column].kind : ListKind::Text;
    std::vector<int> order;
    for (const size_t place : sortedOrder(cells, kind, sortOrder_))
        order.push_back(top_[place]);
    return order;
}

QVariant TickModel::cell(int node, size_t column) const {
    if (column < texts_.size()) return row(node).cells[column];
    return state(node, column - texts_.size()) == Qt::Unchecked ? QVariant() : QVariant(QStringLiteral("X"));
}

size_t TickModel::leafCount() const {
    return static_cast<size_t>(
        std::count_if(nodes_.begin(), nodes_.end(), [](const Node& node) { return node.below.empty(); }));
}

size_t TickModel::shownLeafCount() const {
    size_t count = 0;
    for (int node = 0; node < this->count(); ++node)
        if (!isParent(node) && indexOf(node, 0).isValid()) ++count;
    return count;
}

int TickModel::find(const QString& key) const {
    const auto found =
        std::find_if(nodes_.begin(), nodes_.end(), [&](const Node& node) { return node.row.key == key; });
    return found == nodes_.end() ? -1 : static_cast<int>(found - nodes_.begin());
}

void TickModel::count(int at, size_t column, int& ticked, int& all) const {
    const Node& node = nodes_[static_cast<size_t>(at)];
    if (node.below.empty()) {
        ++all;
        ticked += node.row.ticks[column] ? 1 : 0;
    }
    for (const int below : node.below)
        count(below, column, ticked, all);
}

Qt::CheckState TickModel::state(int node, size_t column) const {
    int ticked = 0, all = 0;
    count(node, column, ticked, all);
    return ticked == 0 ? Qt::Unchecked : ticked == all ? Qt::Checked : Qt::PartiallyChecked;
}

void TickModel::tick(const std::vector<int>& nodes, size_t column, bool ticked) {
    for (const int node : nodes)
        tickOne(node, column, ticked);
    if (rowCount() > 0) emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void TickModel::tickOne(int at, size_t column, bool ticked) {
    Node& node = nodes_[static_cast<size_t>(at)];
    if (node.below.empty()) node.row.ticks[column] = ticked;
    for (const int below : node.shownBelow)
        tickOne(below, column, ticked);
}

std::vector<int> TickModel::shownNodes() const { return shownTop_; }

std::vector<TickChange> TickModel::changes() const {
    std::vector<TickChange> changes;
    for (const Node& node : nodes_)
        for (size_t column = 0; node.below.empty() && column < ticks_.size(); ++column)
            if (node.row.ticks[column] != node.loaded[column])
                changes.push_back({node.row.key, ticks_[column].key, node.row.ticks[column]});
    return changes;
}

void TickModel::acceptAsLoaded() {
    for (Node& node : nodes_)
        node.loaded = node.row.ticks;
}

void TickModel::revert() {
    for (Node& node : nodes_)
        node.row.ticks = node.loaded;
    if (rowCount() > 0) emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

QModelIndex TickModel::indexOf(int at, int column) const {
    const int place = nodes_[static_cast<size_t>(at)].place;
    const int above = nodes_[static_cast<size_t>(at)].parent;
    if (place < 0 || (above >= 0 && !indexOf(above, 0).isValid())) return {};
    return createIndex(place, column, static_cast<quintptr>(at));
}

const std::vector<int>& TickModel::shownBelow(const QModelIndex& parent) const {
    return parent.isValid() ? nodes_[static_cast<size_t>(node(parent))].shownBelow : shownTop_;
}

QModelIndex TickModel::index(int row, int column, const QModelIndex& parent) const {
    const std::vector<int>& below = shownBelow(parent);
    if (row < 0 || static_cast<size_t>(row) >= below.size() || column < 0 || column >= columnCount())
        return {};
    return createIndex(row, column, static_cast<quintptr>(below[static_cast<size_t>(row)]));
}

QModelIndex TickModel::parent(const QModelIndex& index) const {
    const int above = index.isValid() ? parentOf(node(index)) : -1;
    return above < 0 ? QModelIndex() : indexOf(above, 0);
}

int TickModel::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : static_cast<int>(shownBelow(parent).size());
}

int TickModel::columnCount(const QModelIndex&) const {
    return static_cast<int>(texts_.size() + ticks_.size());
}

QVariant TickModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const auto column = static_cast<size_t>(index.column());
    if (column >= texts_.size()) {
        const Qt::CheckState now = state(node(index), column - texts_.size());
        if (role == Qt::CheckStateRole) return static_cast<int>(now);
        if (role == Qt::AccessibleTextRole)
            return now == Qt::Checked     ? QStringLiteral("işaretli")
                   : now == Qt::Unchecked ? QStringLiteral("işaretsiz")
                                          : QStringLiteral("bir bölümü işaretli");
        return {};
    }
    const ListKind kind = texts_[column].kind;
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return cellText(row(node(index)).cells[column], kind);
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignVCenter | (isRight(kind) ? Qt::AlignRight : Qt::AlignLeft));
    return {};
}

QVariant TickModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) return {};
    const auto column = static_cast<size_t>(section);
    const bool isTick = column >= texts_.size();
    if (role == Qt::DisplayRole) return isTick ? ticks_[column - texts_.size()].title : texts_[column].title;
    if (role != Qt::TextAlignmentRole) return {};
    if (isTick) return QVariant(Qt::AlignCenter);
    return QVariant(Qt::AlignVCenter | (isRight(texts_[column].kind) ? Qt::AlignRight : Qt::AlignLeft));
}

void TickModel::sort(int column, Qt::SortOrder order) {
    beginResetModel();
    sortColumn_ = column;
    sortOrder_ = order;
    showMatches();
    endResetModel();
}

} // namespace orvan
