// core/structure.cpp — brings a table up to its declaration: tables, fields, indexes, order, first rows.
// Single fields: structure_fields.cpp.
#include "core/structure_fields.h"

#include "core/row_writer.h"
#include "core/values.h"

#include <set>

namespace orvan {
namespace {

jet::IndexDef indexDef(const IndexDeclaration& index, const std::vector<jet::FieldDef>& fields) {
    jet::IndexDef def;
    def.name = index.name;
    def.primary = index.kind == IndexDeclaration::Primary;
    def.unique = index.kind != IndexDeclaration::Plain;
    for (const std::string& wanted : index.fields)
        for (size_t i = 0; i < fields.size(); ++i)
            if (jet::sameName(fields[i].name, wanted))
                def.fields.push_back({static_cast<uint16_t>(i), false});
    return def;
}

std::string keyOf(const std::vector<jet::Value>& values, size_t keyFields) {
    std::string key;
    for (size_t i = 0; i < keyFields; ++i)
        key += jet::foldName(utf8(trimmedText(values[i]))) + '\x1f';
    return key;
}

std::set<std::string> presentKeys(jet::Table& table, const FirstRows& first) {
    std::set<std::string> keys;
    std::vector<jet::Value> values(first.keyFields);
    for (bool more = table.moveFirst(); more; more = table.moveNext()) {
        for (size_t i = 0; i < values.size(); ++i)
            values[i] = table.value(first.fields[i]);
        keys.insert(keyOf(values, first.keyFields));
    }
    return keys;
}

int addRows(jet::Database& database, const TableDeclaration& declaration) {
    int added = 0;
    jet::Table table = database.openTable(declaration.name);
    for (const FirstRows& first : declaration.firstRows) {
        const auto present = presentKeys(table, first);
        RowWriter writer(table, first.fields);
        jet::WriteBatch batch(database);
        for (const auto& row : first.rows) {
            if (present.contains(keyOf(row, first.keyFields))) continue;
            writer.add(row);
            ++added;
        }
        batch.commit();
    }
    return added;
}

void fillWithDefault(jet::Database& database, const std::string& table, const FieldDeclaration& field) {
    jet::SqlSession sql(database);
    sql.execute("UPDATE [" + table + "] SET [" + field.name + "] = " + field.defaultValue);
}

void bringFieldsUpToDate(jet::Database& database, const TableDeclaration& declaration,
                         StructureChanges& changes) {
    for (const FieldDeclaration& field : declaration.fields) {
        if (database.tableDef(declaration.name).findField(field.name)) {
            bringFieldUpToDate(database, declaration.name, field, changes);
            continue;
        }
        database.addField(declaration.name, fieldDef(field));
        if (!field.defaultValue.empty()) fillWithDefault(database, declaration.name, field);
        ++changes.fields;
    }
}

// The declared fields first, in their order; the rest behind them as they stand.
void orderFields(jet::Database& database, const TableDeclaration& declaration, StructureChanges& changes) {
    const auto& present = database.tableDef(declaration.name).fields;
    std::vector<std::string> wanted;
    bool inOrder = true;
    for (size_t i = 0; i < declaration.fields.size(); ++i) {
        wanted.push_back(declaration.fields[i].name);
        inOrder = inOrder && jet::sameName(present[i].name, wanted.back());
    }
    if (inOrder) return;
    database.setFieldOrder(declaration.name, wanted);
    ++changes.ordered;
}

void addIndexes(jet::Database& database, const TableDeclaration& declaration, StructureChanges& changes) {
    for (const IndexDeclaration& index : declaration.indexes) {
        const jet::TableDef& def = database.tableDef(declaration.name);
        if (def.findIndex(index.name)) continue;
        jet::IndexDef wanted = indexDef(index, def.fields);
        if (wanted.primary && def.primaryKey()) wanted.primary = false;
        try {
            database.createIndex(declaration.name, wanted);
        } catch (const jet::Error& error) {
            if (error.number() != jet::Err::DuplicateKey && error.number() != jet::Err::IndexNullKey) throw;
            wanted.unique = wanted.primary =
                false; // rows of the old file stand against it; seeking still works
            database.createIndex(declaration.name, wanted);
        }
        ++changes.indexes;
    }
}

} // namespace

void createTable(jet::Database& database, const TableDeclaration& declaration) {
    std::vector<jet::FieldDef> fields;
    for (const FieldDeclaration& field : declaration.fields)
        fields.push_back(fieldDef(field));
    std::vector<jet::IndexDef> indexes;
    for (const IndexDeclaration& index : declaration.indexes)
        indexes.push_back(indexDef(index, fields));
    database.createTable(declaration.name, std::move(fields), std::move(indexes));
    addRows(database, declaration);
}

void bringUpToDate(jet::Database& database, const TableDeclaration& declaration, StructureChanges& changes) {
    if (!database.hasTable(declaration.name)) {
        createTable(database, declaration);
        ++changes.tables;
        return;
    }
    bringFieldsUpToDate(database, declaration, changes);
    orderFields(database, declaration, changes);
    addIndexes(database, declaration, changes);
}

void completeRows(jet::Database& database, const TableDeclaration& declaration, StructureChanges& changes) {
    changes.rows += addRows(database, declaration);
    jet::SqlSession sql(database);
    for (const std::string& statement : declaration.corrections)
        changes.rows += static_cast<int>(sql.execute(statement));
}

StructureChanges& StructureChanges::operator+=(const StructureChanges& other) {
    tables += other.tables;
    fields += other.fields;
    widened += other.widened;
    converted += other.converted;
    indexes += other.indexes;
    ordered += other.ordered;
    rows += other.rows;
    return *this;
}

} // namespace orvan
