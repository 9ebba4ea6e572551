// core/structure.cpp — brings one database up to its declarations: creates what is missing, never takes
// anything away.
#include "core/schema.h"

#include "core/row_writer.h"
#include "core/values.h"

#include <set>

namespace orvan {
namespace {

jet::FieldDef fieldDef(const FieldDeclaration& field) {
    jet::FieldDef def;
    def.name = field.name;
    def.type = field.type;
    def.size = field.width;
    def.required = field.required;
    def.autoNumber = field.autoNumber;
    def.defaultValue = field.defaultValue;
    return def;
}

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

void addFields(jet::Database& database, const TableDeclaration& declaration, StructureChanges& changes) {
    for (const FieldDeclaration& field : declaration.fields) {
        const auto place = database.tableDef(declaration.name).findField(field.name);
        if (!place) {
            database.addField(declaration.name, fieldDef(field));
            ++changes.fields;
            continue;
        }
        jet::FieldDef present = database.tableDef(declaration.name).fields[*place];
        if (present.type != jet::Type::Text || field.type != jet::Type::Text || present.size >= field.width)
            continue;
        present.size = field.width;
        database.alterField(declaration.name, present.name, present);
        ++changes.widened;
    }
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

StructureChanges bringUpToDate(jet::Database& database, DatabaseKind kind, const Schema& schema,
                               FirstRowsWhen rows) {
    StructureChanges changes;
    for (const TableDeclaration& declaration : schema.tables()) {
        if (declaration.database != kind) continue;
        if (!database.hasTable(declaration.name)) {
            createTable(database, declaration);
            ++changes.tables;
            continue;
        }
        addFields(database, declaration, changes);
        addIndexes(database, declaration, changes);
        if (rows == FirstRowsWhen::AlsoMissing) changes.rows += addRows(database, declaration);
    }
    return changes;
}

} // namespace orvan
