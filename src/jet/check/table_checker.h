// jet/check/table_checker.h — one table: its pages, rows, moved rows, long values and counts; indexes are
// given to index_checker.h.
#pragma once

#include "jet/check/check_context.h"
#include "jet/check/index_checker.h"
#include "jet/format/row_codec.h"
#include "jet/format/table_def.h"

#include <memory>
#include <vector>

namespace jet {

class TableChecker {
  public:
    TableChecker(CheckContext& context, TableDef def, std::vector<PageNo> definitionPages);

    // First for every table, before any rows are looked at.
    void claimPages();
    void checkRows();
    const TableDef& def() const { return def_; }

    // Rows as scans show them, moved rows followed; rows that cannot be read are left out silently.
    void forEachRow(const std::function<void(RowId home, const RowView& row)>& visit);

  private:
    struct LongValues { // pages and rows of one memo or OLE field
        size_t field;
        PageLedger::Owner owner;
        RowSet used;
    };

    void claimFreeMap(RowId at, PageLedger::Owner owner, const std::string& what);
    void checkDataPage(PageNo number);
    void checkSlot(const PageRef& page, uint8_t number);
    // The bytes of a moved row; empty (and a fault, unless `silent`) when the pointer leads nowhere.
    std::span<const uint8_t> follow(const PageRef& page, uint8_t number, PageRef& target, bool silent);
    void checkRow(RowId home, std::span<const uint8_t> bytes);
    void checkLongValue(LongValues& values, RowId home, std::span<const uint8_t> header);
    void checkHiddenRows();
    void checkLongValuePages(const LongValues& values);
    void fault(PageNo page, std::string text) { context_.findings.add(def_.name, page, std::move(text)); }

    CheckContext& context_;
    TableDef def_;
    std::vector<PageNo> definitionPages_;
    PageLedger::Owner data_ = 0;
    std::vector<LongValues> longValues_;
    std::vector<std::unique_ptr<IndexChecker>> indexes_; // one per tree
    RowSet hidden_, targets_;
    RowView view_;
    size_t rows_ = 0;
};

} // namespace jet
