// jet/table/relations.h — the rows of MSysRelationships. Relations are kept as they are: the names in them
// follow renamed tables and fields, and what a relation stands on is not dropped.
#pragma once

#include "jet/table/table_source.h"

#include <string>
#include <string_view>
#include <vector>

namespace jet {

class Relations {
  public:
    // Reads the rows. REQUIRES: inside a read or write scope, which stays open while this object is used.
    explicit Relations(TableSource& source);

    // Names of the relations that a table, or one field of it, takes part in (either side); each once.
    std::vector<std::string> of(std::string_view table) const;
    std::vector<std::string> of(std::string_view table, std::string_view field) const;

    // REQUIRES: inside a write.
    void tableRenamed(std::string_view from, const std::string& to);
    void fieldRenamed(std::string_view table, std::string_view from, const std::string& to);

  private:
    struct Pair { // one row: a field of the child and the field of the parent that it refers to
        RowId row;
        std::string relation, childTable, childField, parentTable, parentField;
    };
    TableSource* source_;
    std::vector<Pair> pairs_;
};

} // namespace jet
