// jet/sql/table_registry.cpp — see table_registry.h.
#include "jet/sql/table_registry.h"

#include "jet/sql/function_support.h"
#include "jet/sql/virtual_table.h"

#include <algorithm>

namespace jet::sql {
namespace {

bool sameField(const FieldDef& a, const FieldDef& b) {
    return a.name == b.name && a.type == b.type && a.size == b.size && a.columnNumber == b.columnNumber &&
           a.sortOrder == b.sortOrder;
}

bool sameIndex(const IndexDef& a, const IndexDef& b) {
    return a.name == b.name && a.unique == b.unique && a.primary == b.primary &&
           a.ignoreNulls == b.ignoreNulls && a.readOnlyReason == b.readOnlyReason &&
           a.rootPage == b.rootPage &&
           std::equal(a.fields.begin(), a.fields.end(), b.fields.begin(), b.fields.end(),
                      [](const IndexField& x, const IndexField& y) {
                          return x.field == y.field && x.descending == y.descending;
                      });
}

void require(int result) {
    if (result == SQLITE_NOMEM) throw std::bad_alloc();
    if (result != SQLITE_OK) throw Error(Err::Syntax, "SQL işleyicisi tabloyu açamadı.");
}

} // namespace

RegisteredTable::RegisteredTable(Database& database, std::string_view name)
    : table(database.openTable(name)), def(table.def()) {
    for (size_t i = 0; i < def.fields.size(); ++i)
        fieldByName.emplace(foldName(def.fields[i].name), i);
}

bool RegisteredTable::stillFits(const PageFile& file) {
    if (checked_ && checkedChanges_ == file.changeCount() && checkedGeneration_ == file.generation())
        return true;
    try {
        const TableDef& now = table.def();
        if (now.name != def.name || now.page != def.page ||
            !std::equal(now.fields.begin(), now.fields.end(), def.fields.begin(), def.fields.end(),
                        sameField) ||
            !std::equal(now.indexes.begin(), now.indexes.end(), def.indexes.begin(), def.indexes.end(),
                        sameIndex))
            return false;
    } catch (const Error& error) {
        if (error.number() == Err::NoSuchTable) return false;
        throw;
    }
    checked_ = true;
    checkedChanges_ = file.changeCount();
    checkedGeneration_ = file.generation();
    return true;
}

TableRegistry::TableRegistry(Database& database, sqlite3* db, FunctionContext& context)
    : database_(database), db_(db), context_(context) {
    registerModule(db, *this);
}

RegisteredTable& TableRegistry::use(std::string_view name) {
    const std::string key = foldName(name);
    if (const auto known = tables_.find(key); known != tables_.end()) return *known->second;
    auto table = std::make_unique<RegisteredTable>(database_, name);
    table->virtualName = "v" + std::to_string(++lastNumber_);
    registerCollations(table->def);
    RegisteredTable& opened = *tables_.emplace(key, std::move(table)).first->second;
    try {
        const std::string sql = "CREATE VIRTUAL TABLE " + opened.virtualName + " USING jet";
        require(sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr));
    } catch (...) {
        tables_.erase(key);
        throw;
    }
    return opened;
}

void TableRegistry::registerCollations(const TableDef& def) {
    for (const FieldDef& field : def.fields) {
        if (!field.isText() ||
            std::find(collations_.begin(), collations_.end(), field.sortOrder) != collations_.end())
            continue;
        registerCollation(db_, field.sortOrder);
        collations_.push_back(field.sortOrder);
    }
}

bool TableRegistry::allFit() {
    return std::all_of(tables_.begin(), tables_.end(),
                       [this](const auto& entry) { return entry.second->stillFits(database_.pages()); });
}

void TableRegistry::clear() {
    for (const auto& [key, table] : tables_) {
        const std::string sql = "DROP TABLE " + table->virtualName;
        require(sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, nullptr));
    }
    tables_.clear();
}

RegisteredTable* TableRegistry::byVirtualName(std::string_view name) const {
    for (const auto& [key, table] : tables_)
        if (table->virtualName == name) return table.get();
    return nullptr;
}

} // namespace jet::sql
