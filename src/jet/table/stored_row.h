// table/stored_row.h — one row as it lies in the file: its checked view and, behind memo and OLE headers, the
// values themselves; text of either file version. Reads only; the row's bytes must outlive it.
#pragma once

#include "jet/format/row_codec.h"
#include "jet/table/table_source.h"

namespace jet {

class StoredRow {
  public:
    explicit StoredRow(TableSource& source) : source_(&source), codePage_(source.codePage()) {}

    void attach(const TableDef& def, std::span<const uint8_t> bytes) {
        view_.attach(source_->layout(), def, bytes, codePage_);
    }
    const RowView& view() const { return view_; }

    Value value(size_t field) const; // any field, null included
    // Text or Memo as UTF-8; the result may point into `scratch`. REQUIRES: not null.
    std::string_view text(size_t field, std::string& scratch) const;
    void values(std::vector<Value>& all) const; // every field, in display order

  private:
    TableSource* source_;
    uint16_t codePage_; // of Jet 3 text
    RowView view_;
};

} // namespace jet
