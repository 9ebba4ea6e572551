// jet/sql/run_definition.cpp — CREATE, ALTER and DROP through Database; see runner.h.
#include "jet/sql/runner.h"

namespace jet::sql {
namespace {

FieldDef fieldOf(const ColumnSpec& column) {
    FieldDef field;
    field.name = column.name;
    field.type = column.type;
    field.size = column.size;
    field.required = column.required;
    field.autoNumber = column.autoNumber;
    field.defaultValue = column.defaultValue;
    return field;
}

size_t positionOf(const std::vector<FieldDef>& fields, const std::string& name) {
    for (size_t i = 0; i < fields.size(); ++i)
        if (sameName(fields[i].name, name)) return i;
    throw Error(Err::NoSuchItem, "“" + name + "” adında bir alan yok.");
}

bool taken(const std::vector<IndexDef>& indexes, const std::string& name) {
    for (const IndexDef& index : indexes)
        if (sameName(index.name, name)) return true;
    return false;
}

// A constraint without a name gets that of its first field, or PrimaryKey, made unique by a number.
std::string nameFor(const IndexSpec& spec, const std::vector<IndexDef>& others) {
    if (!spec.name.empty()) return spec.name;
    const std::string base = spec.primary ? "PrimaryKey" : spec.fields.front().first;
    std::string name = base;
    for (int i = 1; taken(others, name); ++i)
        name = base + std::to_string(i);
    return name;
}

IndexDef indexOf(const IndexSpec& spec, const std::vector<FieldDef>& fields,
                 const std::vector<IndexDef>& others) {
    IndexDef index;
    index.name = nameFor(spec, others);
    index.primary = spec.primary;
    index.unique = spec.unique;
    index.required = spec.required || spec.primary;
    index.ignoreNulls = spec.ignoreNulls;
    for (const auto& [name, descending] : spec.fields)
        index.fields.push_back({static_cast<uint16_t>(positionOf(fields, name)), descending});
    return index;
}

void addIndex(Database& database, const std::string& table, const IndexSpec& spec) {
    const TableDef& def = database.tableDef(table);
    if (spec.primary && def.primaryKey())
        throw Error(Err::PrimaryKeyExists, "Tablonun zaten birincil anahtarı var.").inTable(def.name);
    database.createIndex(table, indexOf(spec, def.fields, def.indexes));
}

void run(Database& database, const CreateTable& create) {
    std::vector<FieldDef> fields;
    for (const ColumnSpec& column : create.columns)
        fields.push_back(fieldOf(column));
    std::vector<IndexDef> indexes;
    for (const IndexSpec& spec : create.indexes)
        indexes.push_back(indexOf(spec, fields, indexes));
    database.createTable(create.table, std::move(fields), std::move(indexes));
}

void run(Database& database, const CreateIndex& create) { addIndex(database, create.table, create.index); }

void run(Database& database, const AlterTable& alter) {
    for (const ColumnSpec& column : alter.add)
        database.addField(alter.table, fieldOf(column));
    for (const ColumnSpec& column : alter.alter) {
        const FieldDef& old = database.tableDef(alter.table).field(column.name);
        FieldDef wanted = fieldOf(column);
        wanted.name = old.name;
        wanted.allowZeroLength = old.allowZeroLength;
        if (wanted.defaultValue.empty()) wanted.defaultValue = old.defaultValue;
        database.alterField(alter.table, column.name, wanted);
    }
    for (const std::string& field : alter.drop)
        database.dropField(alter.table, field);
    for (const IndexSpec& spec : alter.addIndexes)
        addIndex(database, alter.table, spec);
    if (!alter.dropConstraint.empty()) database.dropIndex(alter.table, alter.dropConstraint);
}

void run(Database& database, const DropTable& drop) { database.dropTable(drop.table); }
void run(Database& database, const DropIndex& drop) { database.dropIndex(drop.table, drop.index); }
template <class Other>
void run(Database&, const Other&) {} // rows, not structure: never compiled as a definition

} // namespace

void runDefinition(Database& database, const Statement& statement) {
    std::visit([&](const auto& body) { run(database, body); }, statement.body);
}

} // namespace jet::sql
