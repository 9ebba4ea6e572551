// jet/copy/row_appender.h — puts rows one behind the other on the data pages of a new table, each page filled
// before the next one is begun, and their long values on long-value pages.
#pragma once

#include "jet/copy/new_file.h"

namespace jet {

class RowAppender {
  public:
    // `def` has its storage (createStorage) and must outlive the appender.
    RowAppender(NewFile& file, const TableDef& def);

    RowId append(std::span<const Value> values);
    // A row of a Jet 4 file, of a definition with the same fields; stored bytes are taken as they stand.
    RowId append(const RowView& row, PageFile& from);
    // After the last row.
    void finish();

    uint32_t rows() const { return rows_; }
    uint32_t highestAutoNumber() const { return highest_; } // 0: none

  private:
    void keep(size_t field, const RowView& row);
    void encode(size_t field, const Value& value);
    void writeLongValueOf(size_t field, std::span<const uint8_t> stored);
    template <class F> RowId place(F longValues);
    RowId put();
    void noteAutoNumber(int64_t number);

    NewFile& file_;
    const TableDef& def_;
    std::vector<size_t> longFields_;
    std::vector<StoredField> stored_; // of the row being written
    Bytes bytes_, text_;
    PageNo page_ = 0;
    uint32_t rows_ = 0, highest_ = 0;
};

} // namespace jet
