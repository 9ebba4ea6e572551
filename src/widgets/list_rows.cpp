// widgets/list_rows.cpp — filter and order of a list's rows.
#include "widgets/list_rows.h"

#include "core/turkish_text.h"
#include "jet/index/sort_key.h"

#include <algorithm>
#include <cassert>
#include <numeric>
#include <QDate>

namespace orvan {

namespace {

// What a cell is compared by: empty cells, then numbers or days, then texts.
struct SortKey {
    enum Rank { Empty, Value, Text } rank = Empty;
    double value = 0;
    jet::Bytes text;

    bool operator<(const SortKey& other) const {
        if (rank != other.rank) return rank < other.rank;
        if (rank == Value) return value < other.value;
        return text < other.text;
    }
};

SortKey sortKey(const QVariant& cell, ListKind kind) {
    SortKey key;
    const QString text = cell.toString();
    if (text.isEmpty()) return key;
    if (kind == ListKind::Date) {
        if (const QDate day = cellDate(cell); day.isValid()) {
            key.rank = SortKey::Value;
            key.value = static_cast<double>(day.toJulianDay());
            return key;
        }
    } else if (kind != ListKind::Text) {
        bool isNumber = false;
        key.value = cellNumber(cell, isNumber);
        if (isNumber) {
            key.rank = SortKey::Value;
            return key;
        }
    }
    key.rank = SortKey::Text;
    jet::appendTextKey({reinterpret_cast<const char16_t*>(text.utf16()), static_cast<size_t>(text.size())},
                       jet::kTurkishSort, key.text);
    return key;
}

} // namespace

std::vector<size_t> sortedOrder(const std::vector<QVariant>& cells, ListKind kind, Qt::SortOrder order) {
    std::vector<SortKey> keys;
    keys.reserve(cells.size());
    for (const QVariant& cell : cells)
        keys.push_back(sortKey(cell, kind));
    std::vector<size_t> places(cells.size());
    std::iota(places.begin(), places.end(), size_t{0});
    std::stable_sort(places.begin(), places.end(), [&](size_t a, size_t b) {
        return order == Qt::AscendingOrder ? keys[a] < keys[b] : keys[b] < keys[a];
    });
    return places;
}

void ListRows::setRows(std::vector<ListRow> rows) {
    rows_ = std::move(rows);
    assert(std::all_of(rows_.begin(), rows_.end(),
                       [this](const ListRow& row) { return row.size() == columns_.size(); }));
    searchTexts_.assign(rows_.size(), QString());
    sortBy(sortColumn_, sortOrder_);
}

void ListRows::setFilter(const QString& text) {
    filter_ = text;
    rebuild();
}

void ListRows::sortBy(int column, Qt::SortOrder order) {
    sortColumn_ = column;
    sortOrder_ = order;
    if (column >= 0) {
        const auto place = static_cast<size_t>(column);
        std::vector<QVariant> cells;
        cells.reserve(rows_.size());
        for (const ListRow& row : rows_)
            cells.push_back(row[place]);
        order_ = sortedOrder(cells, columns_[place].kind, order);
    } else {
        order_.resize(rows_.size());
        std::iota(order_.begin(), order_.end(), size_t{0});
    }
    rebuild();
}

int ListRows::shownAt(size_t given) const {
    const auto found = std::find(shown_.begin(), shown_.end(), given);
    return found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

void ListRows::rebuild() {
    const QStringList words = lowerTurkish(filter_).split(u' ', Qt::SkipEmptyParts);
    shown_.clear();
    for (const size_t row : order_) {
        const bool passes = std::all_of(words.begin(), words.end(),
                                        [&](const QString& word) { return searchText(row).contains(word); });
        if (passes) shown_.push_back(row);
    }
}

const QString& ListRows::searchText(size_t given) {
    QString& text = searchTexts_[given];
    if (text.isEmpty()) {
        for (size_t column = 0; column < columns_.size(); ++column)
            text += cellText(rows_[given][column], columns_[column].kind) + u'\n';
        text = lowerTurkish(text);
    }
    return text;
}

} // namespace orvan
