// jet/database.h: whole tables — create, drop, rename.
#include "jet/table/database_impl.h"
#include "jet/table/definition_store.h"
#include "jet/table/permissions.h"
#include "jet/table/relations.h"
#include "jet/table/structure_rules.h"
#include "jet/table/table_change.h"
#include "jet/table/table_storage.h"

namespace jet {

namespace {

// The definition as wanted, checked, everything set but pages.
TableDef planTable(SortOrder sortOrder, const std::string& name, std::vector<FieldDef> fields,
                   std::vector<IndexDef> indexes) {
    TableDef def;
    def.name = name;
    if (fields.empty()) throw Error(Err::InvalidArgument, "Tabloda en az bir alan olmalıdır.");
    for (FieldDef& field : fields) {
        checkName(field.name);
        if (def.findField(field.name))
            throw Error(Err::FieldDefinedTwice, "“" + field.name + "” alanı iki kez tanımlanmış.");
        completeField(field, sortOrder);
        placeField(def, field);
        def.fields.push_back(std::move(field));
    }
    checkAutoNumbers(def);
    for (IndexDef& index : indexes) {
        checkIndex(def, index);
        index.realNumber = def.realIndexCount++;
        def.uniqueEntryCounts.push_back(0);
        insertIndex(def, std::move(index));
    }
    return def;
}

void refuseRelated(const std::vector<std::string>& relations, const std::string& what) {
    if (relations.empty()) return;
    throw Error(Err::InvalidArgument, what + " “" + relations.front() + "” ilişkisinde kullanılıyor.");
}

} // namespace

void Database::createTable(const std::string& name, std::vector<FieldDef> fields,
                           std::vector<IndexDef> indexes) {
    OpenDatabase& db = *impl_;
    statement(db, name, [&] {
        checkName(name);
        refuseTakenName(db, name);
        TableDef def = planTable(db.header().sortOrder, name, std::move(fields), std::move(indexes));
        def.page = db.allocator().allocate().number();
        createStorage(db, def);
        for (IndexDef& index : def.indexes)
            createTree(db, def.page, index);
        db.saveDefinition(def);

        PropertySet properties;
        for (const FieldDef& field : def.fields)
            describeField(properties, field);
        const auto id = static_cast<int32_t>(def.page);
        db.catalog().insert({.id = id,
                             .parent = ObjectId::kTables,
                             .type = ObjectType::kTable,
                             .flags = 0,
                             .name = name,
                             .owner = {},
                             .properties = properties.serialize()});
        inheritPermissions(db, ObjectId::kTables, id);
    });
}

void Database::dropTable(std::string_view name) {
    OpenDatabase& db = *impl_;
    statement(db, name, [&] {
        TableChange change(db, name);
        const TableDef& def = change.def();
        refuseRelated(Relations(db).of(name), "Tablo silinemez:");
        for (const IndexDef& index : def.indexes)
            if (index.foreign) refuseRelated({index.name}, "Tablo silinemez:");
        for (const size_t tree : treesOf(def))
            freeTree(db, def, def.indexes[tree]);
        for (const FieldDef& field : def.fields)
            if (field.isLongValue()) freeLongValues(db, field);
        freeRows(db, def);
        freeDefinition(db.allocator(), def.page);
        removePermissions(db, change.entry().id);
        db.catalog().remove(change.entry());
    });
}

void Database::renameTable(std::string_view from, const std::string& to) {
    OpenDatabase& db = *impl_;
    statement(db, from, [&] {
        TableChange change(db, from);
        checkName(to);
        if (!sameName(from, to)) refuseTakenName(db, to);
        Relations(db).tableRenamed(from, to);
        db.catalog().rename(change.entry(), to);
    });
}

} // namespace jet
