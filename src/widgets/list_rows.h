// widgets/list_rows.h — the rows of a list and which of them are shown in what order: find-as-you-type and
// sorting by value with Turkish rules. Pure; the grid shows it.
#pragma once

#include "widgets/list_sheet.h"

#include <cstddef>
#include <vector>

namespace orvan {

// The places of the cells in the order of their values; equal ones keep their order, empty ones come first
// (last when descending).
std::vector<size_t> sortedOrder(const std::vector<QVariant>& cells, ListKind kind, Qt::SortOrder order);

class ListRows {
  public:
    explicit ListRows(std::vector<ListColumn> columns) : columns_(std::move(columns)) {}

    const std::vector<ListColumn>& columns() const { return columns_; }
    size_t totalCount() const { return rows_.size(); }
    size_t shownCount() const { return shown_.size(); }

    // New rows; filter and order stay in force. REQUIRES: each row has a cell per column.
    void setRows(std::vector<ListRow> rows);

    // Shows the rows in which every word of `text` occurs in some cell, as shown, without regard to case.
    // Empty shows all.
    void setFilter(const QString& text);
    const QString& filter() const { return filter_; }

    // Sorts by the value of a column; equal rows keep their given order, empty cells come first (last when
    // descending). column -1: the given order.
    void sortBy(int column, Qt::SortOrder order);

    // `shown` counts the shown rows, 0 .. shownCount()-1; `given` the rows of setRows.
    size_t given(size_t shown) const { return shown_[shown]; }
    int shownAt(size_t given) const; // -1 when the filter hides it
    const QVariant& cell(size_t shown, size_t column) const { return rows_[shown_[shown]][column]; }
    QString text(size_t shown, size_t column) const {
        return cellText(cell(shown, column), columns_[column].kind);
    }

  private:
    void rebuild();
    const QString& searchText(size_t given);

    std::vector<ListColumn> columns_;
    std::vector<ListRow> rows_;
    std::vector<QString> searchTexts_; // lower-case text of each row, made when first searched
    std::vector<size_t> order_;        // all rows in sorted order
    std::vector<size_t> shown_;        // those of them that pass the filter
    QString filter_;
    int sortColumn_ = -1;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
};

} // namespace orvan
