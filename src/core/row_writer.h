// core/row_writer.h — adds many rows to one table: the named fields are given by position, the rest take
// their defaults.
#pragma once

#include "jet/table/table.h"

#include <memory>
#include <string>
#include <vector>

namespace orvan {

class RowWriter {
  public:
    // Throws jet::Error(NoSuchItem) for an unknown field. The table must outlive it.
    RowWriter(jet::Table& table, const std::vector<std::string>& fields);
    // REQUIRES: as many values as fields. Throws what jet::Table::insert throws.
    jet::RowId add(const std::vector<jet::Value>& values);

  private:
    jet::Table& table_;
    std::vector<size_t> places_;
    std::vector<jet::Value> row_;
    std::unique_ptr<bool[]> given_;
};

} // namespace orvan
