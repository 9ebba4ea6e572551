// jet/table/table_change.h — one user table in the course of a structural statement: its catalog row,
// definition and properties, read when the statement begins and written back by save().
#pragma once

#include "jet/format/properties.h"
#include "jet/table/open_database.h"

#include <optional>

namespace jet {

// REQUIRES: lives inside the write scope of the statement.
class TableChange {
  public:
    // Err::NoSuchTable; Err::InvalidArgument for a system table.
    TableChange(OpenDatabase& db, std::string_view table);

    OpenDatabase& db() { return db_; }
    const CatalogEntry& entry() const { return entry_; }
    TableDef& def() { return def_; }
    // Asking for them means that save() writes them. Err::Corrupt when the stored ones cannot be read.
    PropertySet& properties();

    size_t fieldPosition(std::string_view field) const; // Err::NoSuchItem
    size_t indexPosition(std::string_view index) const; // Err::NoSuchItem
    void refuseTakenField(std::string_view name) const; // Err::FieldDefinedTwice
    void saveDefinition();
    void save(); // definition, properties, time of change

  private:
    OpenDatabase& db_;
    CatalogEntry entry_;
    TableDef def_;
    std::optional<PropertySet> properties_;
};

// Puts what FieldDef says into the properties, as other programs expect to find it.
void describeField(PropertySet& properties, const FieldDef& field);

// Err::TableExists or ObjectExists when an object of this name is there. REQUIRES: inside a read or write
// scope.
void refuseTakenName(OpenDatabase& db, std::string_view name);

// Adds a logical index where its name belongs; it gets the next number. Sets what marks it as no relation's
// index.
IndexDef& insertIndex(TableDef& def, IndexDef index);

struct RebuiltField {
    FieldDef field;
    std::optional<size_t>
        from; // position in the old definition; none = a new field: null, or numbered from 1
};
// Writes all rows of a table anew under other fields, in the order given, and all its trees. The definition
// page stays. Err::Conversion, FieldTooLong, DuplicateKey, …; Err::ReadOnly when a tree's keys cannot be
// made.
void rebuildTable(OpenDatabase& db, const TableDef& old, const std::vector<RebuiltField>& fields);

} // namespace jet
