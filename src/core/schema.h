// core/schema.h — tables declared as data. Each subsystem that owns a table declares it once; the templates
// of Mdx, the structure upgrade and the widths of the entry fields all come from that declaration.
#pragma once

#include "jet/database.h"

#include <QString>
#include <string>
#include <vector>

namespace orvan {

enum class DatabaseKind { Level, Constants, Workplaces, Coordinators, Exams };

struct FieldDeclaration {
    std::string name;
    jet::Type type = jet::Type::Text;
    uint16_t width = 0; // characters, text only
    std::string label;  // words a person reads, UTF-8
    bool required = false;
    std::string defaultValue; // Jet expression, empty = none
    bool autoNumber = false;
};

struct IndexDeclaration {
    std::string name;
    std::vector<std::string> fields;
    enum Kind { Plain, Unique, Primary } kind = Plain;
};

// First rows: values in the order of `fields`. Added to a new table; where the structure upgrade completes
// them it adds a row only when no row has the same values in the first `keyFields` of them.
struct FirstRows {
    std::vector<std::string> fields;
    size_t keyFields = 1;
    std::vector<std::vector<jet::Value>> rows;
};

struct TableDeclaration {
    DatabaseKind database = DatabaseKind::Level;
    std::string name;
    std::vector<FieldDeclaration> fields;
    std::vector<IndexDeclaration> indexes;
    std::vector<FirstRows> firstRows;
    std::vector<std::string> corrections{}; // statements that put old rows right; each is safe to repeat
    // Statements that take the ready-made rows, which its template carries, out of a new file.
    std::vector<std::string> emptying{};

    const FieldDeclaration* field(std::string_view fieldName) const; // nullptr when there is none
};

// Short forms for the declarations.
FieldDeclaration textField(std::string name, uint16_t width, std::string label);
FieldDeclaration memoField(std::string name, std::string label);
FieldDeclaration longField(std::string name, std::string label);
FieldDeclaration yesNoField(std::string name, std::string label);
FieldDeclaration moneyField(std::string name, std::string label);
FieldDeclaration doubleField(std::string name, std::string label);
FieldDeclaration dateField(std::string name,
                           std::string label); // a real date; dates are mostly text of width 10

class Schema {
  public:
    explicit Schema(std::vector<TableDeclaration> tables) : tables_(std::move(tables)) {}
    const std::vector<TableDeclaration>& tables() const { return tables_; }
    const TableDeclaration* find(std::string_view table) const;      // nullptr when there is none
    const TableDeclaration& table(std::string_view table) const;     // throws jet::Error(NoSuchTable)
    int width(std::string_view table, std::string_view field) const; // 0 = no limit or not declared
    QString label(std::string_view table, std::string_view field) const;

  private:
    std::vector<TableDeclaration> tables_;
};

// What bringing one database up to its declarations did.
struct StructureChanges {
    int tables = 0, fields = 0, widened = 0, converted = 0, indexes = 0, ordered = 0, rows = 0;
    bool any() const { return *this != StructureChanges(); }
    bool operator==(const StructureChanges&) const = default;
    StructureChanges& operator+=(const StructureChanges& other);
};

// Brings one table up to its declaration: creates it or what it lacks, widens what is too narrow, gives a
// field of another kind a successor (structure_fields.h), fills new fields with their default, puts the
// declared fields first. Tables and fields that the declaration does not know stay; no value is lost; safe to
// repeat. An index that rows of an old file stand against (doubles under a unique one) is made as a plain
// index.
void bringUpToDate(jet::Database& database, const TableDeclaration& declaration, StructureChanges& changes);
void createTable(jet::Database& database, const TableDeclaration& declaration); // with its first rows
// First rows that are missing, then the corrections.
void completeRows(jet::Database& database, const TableDeclaration& declaration, StructureChanges& changes);

} // namespace orvan
