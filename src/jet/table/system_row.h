// jet/table/system_row.h — reading and writing rows of the system tables by the names of their columns.
#pragma once

#include "jet/table/table.h"

#include <array>

namespace jet {

// Values for one row of a system table; columns that are not set stay null (insert) or as they are (update).
class SystemRow {
  public:
    explicit SystemRow(Table& table) : table_(&table), values_(table.def().fields.size()) {}
    SystemRow& set(std::string_view column, Value value);
    RowId insert() { return table_->insert(values_, {given_.data(), values_.size()}); }
    void update(RowId id) { table_->update(id, values_, {given_.data(), values_.size()}); }

  private:
    Table* table_;
    std::vector<Value> values_;
    std::array<bool, kMaxFields> given_{};
};

// Position of a column that the table must have; Err::Corrupt when it lacks it.
size_t systemColumn(Table& table, std::string_view column);

} // namespace jet
