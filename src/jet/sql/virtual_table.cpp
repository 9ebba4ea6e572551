// jet/sql/virtual_table.cpp — the SQLite module: declaring a table's columns, opening cursors; see
// virtual_table.h.
#include "jet/sql/virtual_table.h"

namespace jet::sql {
namespace {

const char* declaredType(Type type) {
    switch (type) {
    case Type::Boolean:
    case Type::Byte:
    case Type::Integer:
    case Type::Long: return "INTEGER";
    case Type::Currency:
    case Type::Single:
    case Type::Double:
    case Type::Date:
    case Type::Numeric: return "REAL";
    case Type::Text:
    case Type::Memo: return "TEXT";
    case Type::Guid: return "TEXT COLLATE NOCASE";
    default: return "BLOB";
    }
}

VirtualTable* table(sqlite3_vtab* base) { return static_cast<VirtualTable*>(base); }
VirtualCursor* cursor(sqlite3_vtab_cursor* base) { return static_cast<VirtualCursor*>(base); }

int connect(sqlite3* db, void* argument, int, const char* const* words, sqlite3_vtab** result, char**) {
    auto& registry = *static_cast<TableRegistry*>(argument);
    return caught(registry.context(), [&] {
        RegisteredTable* source = registry.byVirtualName(words[2]);
        if (!source) throw Error(Err::NoSuchTable, "Tablo bulunamadı.");
        auto made = std::make_unique<VirtualTable>();
        made->source = source;
        made->context = &registry.context();
        std::string columns;
        for (const FieldDef& field : source->def.fields) {
            columns += (columns.empty() ? "c" : ", c") + std::to_string(made->collations.size()) + " ";
            columns += declaredType(field.type);
            made->collations.push_back(field.isText() ? collationName(field.sortOrder) : std::string());
            if (field.isText()) columns += " COLLATE " + made->collations.back();
        }
        if (columns.empty()) columns = "none";
        if (sqlite3_declare_vtab(db, ("CREATE TABLE x(" + columns + ")").c_str()) != SQLITE_OK)
            throw Error(Err::TooManyFields, "Tablonun alanları SQL ile okunamıyor.");
        *result = made.release();
    });
}

int disconnect(sqlite3_vtab* base) {
    delete table(base);
    return SQLITE_OK;
}

int openCursor(sqlite3_vtab*, sqlite3_vtab_cursor** result) {
    *result = new (std::nothrow) VirtualCursor();
    return *result ? SQLITE_OK : SQLITE_NOMEM;
}

int closeCursor(sqlite3_vtab_cursor* base) {
    delete cursor(base);
    return SQLITE_OK;
}

int atEnd(sqlite3_vtab_cursor* base) { return cursor(base)->atEnd; }

int rowId(sqlite3_vtab_cursor* base, sqlite3_int64* result) {
    const VirtualCursor& at = *cursor(base);
    const RowId id = at.lookup ? at.lookup->id(at.found[at.next - 1]) : at.scan->id();
    *result = static_cast<sqlite3_int64>(id.packed());
    return SQLITE_OK;
}

sqlite3_module makeModule() {
    sqlite3_module module{};
    module.xCreate = connect;
    module.xConnect = connect;
    module.xBestIndex = chooseBestPlan;
    module.xDisconnect = disconnect;
    module.xDestroy = disconnect;
    module.xOpen = openCursor;
    module.xClose = closeCursor;
    module.xFilter = filterCursor;
    module.xNext = advanceCursor;
    module.xEof = atEnd;
    module.xColumn = readColumn;
    module.xRowid = rowId;
    return module;
}

const sqlite3_module kModule = makeModule();

} // namespace

void registerModule(sqlite3* db, TableRegistry& registry) {
    sqlite3_create_module(db, "jet", &kModule, &registry);
}

} // namespace jet::sql
