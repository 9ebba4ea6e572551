// jet/check/index_checker.h — one index tree of a table: in order, and exactly one entry for each row that
// belongs in it. While the rows are read their entries are only summed up; rows are looked up one by one when
// the sums differ.
#pragma once

#include "jet/check/check_context.h"
#include "jet/format/row_codec.h"
#include "jet/format/table_def.h"
#include "jet/index/btree.h"

#include <functional>

namespace jet {

class IndexChecker {
  public:
    using RowVisitor = std::function<void(RowId home, const RowView& row)>;

    // `def` and `index` must outlive the checker.
    IndexChecker(CheckContext& context, const TableDef& def, const IndexDef& index);

    void claimPages();
    // A row of the table, whose entry must be in the tree.
    void expect(RowId home, const RowView& row);
    // After all rows. `forEachRow` goes through them again, to name the ones that are wrong.
    void check(const std::function<void(const RowVisitor&)>& forEachRow);

  private:
    struct Sum { // of a set of entries, in any order
        size_t count = 0;
        uint64_t rows = 0, keys = 0;
        void add(RowId row, std::span<const uint8_t> key);
    };

    // Whether the row has an entry, and its key in key_ where keys can be made.
    bool keyOf(const RowView& row);
    Value fieldValue(const RowView& row, size_t field) const;
    void walk(RowSet& entries, bool& duplicates);
    bool hasNull(RowId row) const;
    void nameWrongRows(RowSet& entries, const std::function<void(const RowVisitor&)>& forEachRow);
    void fault(PageNo page, const std::string& text);

    CheckContext& context_;
    const TableDef& def_;
    const IndexDef& index_;
    BTree tree_;
    bool keysKnown_;
    Sum expected_, found_;
    std::vector<Value> values_;
    Bytes key_;
};

} // namespace jet
