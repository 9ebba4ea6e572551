// jet/table/create_database.h: pages in the order in which Access lays out a new file — header 0, free map 1,
// the definitions of the system tables 2 to 5, their maps and trees — and then the rows of the catalog
// through Table.
#include "jet/table/create_database.h"

#include "jet/format/data_page.h"
#include "jet/format/layout.h"
#include "jet/format/properties.h"
#include "jet/table/table_storage.h"

#include <algorithm>
#include <array>

namespace jet {

namespace {

struct Column {
    const char* name;
    Type type;
    uint16_t number, variableIndex, fixedOffset, size;
    uint8_t flags = 0; // besides the ones that follow from the type
};

struct Index {
    const char* name;
    uint32_t number;            // of the tree as well
    std::array<int, 3> columns; // numbers; -1 = no more
    bool primary, unique, required, ignoreNulls;
};

struct SystemTable {
    PageNo page;
    uint16_t variableColumns;
    std::span<const Column> columns; // by name, as they are stored
    std::span<const Index> indexes;  // by name
};

constexpr uint8_t kSystemColumn = 0x10, kSystemId = 0x30; // column flags of system tables

constexpr Column kObjectColumns[] = {
    {"Connect", Type::Memo, 9, 3, 0, 0},
    {"Database", Type::Memo, 8, 2, 0, 0},
    {"DateCreate", Type::Date, 4, 1, 10, 0},
    {"DateUpdate", Type::Date, 5, 1, 18, 0},
    {"Flags", Type::Long, 7, 2, 26, 0},
    {"ForeignName", Type::Text, 10, 4, 0, 255},
    {"Id", Type::Long, 0, 0, 0, 0},
    {"Lv", Type::Ole, 13, 7, 0, 0},
    {"LvExtra", Type::Ole, 16, 10, 0, 0},
    {"LvModule", Type::Ole, 15, 9, 0, 0},
    {"LvProp", Type::Ole, 14, 8, 0, 0},
    {"Name", Type::Text, 2, 0, 0, 255},
    {"Owner", Type::Binary, 6, 1, 0, 510, kSystemId},
    {"ParentId", Type::Long, 1, 0, 4, 0},
    {"RmtInfoLong", Type::Ole, 12, 6, 0, 0},
    {"RmtInfoShort", Type::Binary, 11, 5, 0, 510},
    {"Type", Type::Integer, 3, 1, 8, 0},
};
constexpr Index kObjectIndexes[] = {
    {"Id", 1, {0, -1, -1}, true, true, false, false},
    {"ParentIdName", 0, {1, 2, -1}, false, true, false, false},
};

constexpr Column kAceColumns[] = {
    {"ACM", Type::Long, 2, 1, 4, 0},
    {"FInheritable", Type::Boolean, 3, 1, 0, 0},
    {"ObjectId", Type::Long, 0, 0, 0, 0},
    {"SID", Type::Binary, 1, 0, 0, 510, kSystemId},
};
constexpr Index kAceIndexes[] = {{"ObjectId", 0, {0, -1, -1}, false, false, true, false}};

constexpr Column kQueryColumns[] = {
    {"Attribute", Type::Byte, 1, 0, 4, 0}, {"Expression", Type::Memo, 5, 3, 0, 0},
    {"Flag", Type::Integer, 6, 4, 5, 0},   {"LvExtra", Type::Long, 7, 4, 7, 0},
    {"Name1", Type::Text, 3, 1, 0, 255},   {"Name2", Type::Text, 4, 2, 0, 255},
    {"ObjectId", Type::Long, 0, 0, 0, 0},  {"Order", Type::Binary, 2, 0, 0, 510},
};
constexpr Index kQueryIndexes[] = {{"ObjectIdAttribute", 0, {0, 1, 2}, true, true, false, false}};

constexpr Column kRelationColumns[] = {
    {"ccolumn", Type::Long, 2, 1, 4, 0},
    {"grbit", Type::Long, 1, 1, 0, 0},
    {"icolumn", Type::Long, 3, 1, 8, 0},
    {"szColumn", Type::Text, 5, 2, 0, 255},
    {"szObject", Type::Text, 4, 1, 0, 255},
    {"szReferencedColumn", Type::Text, 7, 4, 0, 255},
    {"szReferencedObject", Type::Text, 6, 3, 0, 255},
    {"szRelationship", Type::Text, 0, 0, 0, 255},
};
constexpr Index kRelationIndexes[] = {
    {"szObject", 1, {4, -1, -1}, false, false, false, true},
    {"szReferencedObject", 2, {6, -1, -1}, false, false, false, true},
    {"szRelationship", 0, {0, -1, -1}, false, false, false, true},
};

constexpr SystemTable kSystemTables[] = {
    {SystemPage::kObjects, 11, kObjectColumns, kObjectIndexes},
    {SystemPage::kAces, 1, kAceColumns, kAceIndexes},
    {SystemPage::kQueries, 4, kQueryColumns, kQueryIndexes},
    {SystemPage::kRelationships, 5, kRelationColumns, kRelationIndexes},
};
constexpr PageNo kFirstFreePage = 6; // behind the last system definition
constexpr uint8_t kSystemTableType = 0x53;

FieldDef fieldOf(const Column& column, SortOrder sortOrder) {
    FieldDef field;
    field.name = column.name;
    field.type = column.type;
    field.size = column.size;
    field.columnNumber = column.number;
    field.variableIndex = column.variableIndex;
    field.fixedOffset = column.fixedOffset;
    field.compressed = false;
    field.fixedLength = column.type != Type::Text && column.type != Type::Binary && !field.isLongValue();
    field.flags = static_cast<uint8_t>(kSystemColumn | column.flags | ColumnFlag::kNullable |
                                       (field.fixedLength ? ColumnFlag::kFixed : 0));
    field.sortOrder = sortOrder;
    return field;
}

IndexDef indexOf(const Index& index, const TableDef& def) {
    IndexDef made;
    made.name = index.name;
    made.number = made.realNumber = index.number;
    made.primary = index.primary;
    made.unique = index.unique;
    made.required = index.required;
    made.ignoreNulls = index.ignoreNulls;
    for (const int column : index.columns)
        for (size_t i = 0; column >= 0 && i < def.fields.size(); ++i)
            if (def.fields[i].columnNumber == column)
                made.fields.push_back({static_cast<uint16_t>(i), false});
    return made;
}

// Definition, maps and trees of one system table, all empty.
void createSystemTable(OpenDatabase& db, PageNo page) {
    TableDef def = systemTableDefinition(page, db.header().sortOrder);
    createStorage(db, def);
    for (const size_t tree : treesOf(def))
        createTree(db, def.page, def.indexes[tree]);
    db.saveDefinition(def);
}

// Page 1: row 0 = the free pages of the first 512, also those beyond the end of the file; row 1 = an empty
// map.
void createFreeMap(OpenDatabase& db) {
    Bytes map(UsageMapForm::kRowSize, 0);
    const Bytes empty = map;
    for (size_t page = kFirstFreePage; page < (map.size() - UsageMapForm::kInlineBits) * 8; ++page)
        map[UsageMapForm::kInlineBits + page / 8] |= static_cast<uint8_t>(1u << (page % 8));
    PageEdit page = db.pages().edit(kGlobalMapPage);
    data_page::initialise(db.layout(), page.bytes(), kOwnerGlobalMap);
    data_page::insert(db.layout(), page.bytes(), map);
    data_page::insert(db.layout(), page.bytes(), empty);
}

// Security ids under the stream of kSecurityDate.
using SecurityId = std::array<uint8_t, 2>;
constexpr SecurityId kEngine{0xA7, 0x31}, kAdmin{0xA6, 0x33}, kUsers{0xA7, 0x33}, kCreator{0xA7, 0x36};
Bytes bytesOf(const SecurityId& id) { return {id.begin(), id.end()}; }

// Rights as Access gives them.
constexpr int32_t kAllRights = 0xFFFFF, kTableRights = 0xFFEFF, kCreatorRights = 0xF00FE,
                  kOwnRights = 0x60000, kOwnRelationRights = 0xE0000, kReadRights = 0x14, kOpenRights = 0x0E,
                  kDeleteRights = 0x10000, kOwnOpenRights = 0x6000E, kOwnCreateRights = 0x60001;

struct Document {
    const char* name;
    int32_t id, parent;
    int type;
    uint32_t flags;
    bool ofEngine; // owned by the engine, not by the user
};
constexpr int32_t kFirstDocument = INT32_MIN;
constexpr Document kDocuments[] = {
    {"Tables", ObjectId::kTables, ObjectId::kRoot, ObjectType::kContainer, ObjectFlag::kSystem, true},
    {"Databases", ObjectId::kDatabases, ObjectId::kRoot, ObjectType::kContainer, ObjectFlag::kSystem, true},
    {"Relationships", ObjectId::kRelationships, ObjectId::kRoot, ObjectType::kContainer, ObjectFlag::kSystem,
     true},
    {"MSysDb", ObjectId::kDatabase, ObjectId::kDatabases, ObjectType::kDatabase, ObjectFlag::kSystem, false},
    {"MSysObjects", 2, ObjectId::kTables, ObjectType::kTable, ObjectFlag::kSystem, true},
    {"MSysACEs", 3, ObjectId::kTables, ObjectType::kTable, ObjectFlag::kSystem, true},
    {"MSysQueries", 4, ObjectId::kTables, ObjectType::kTable, ObjectFlag::kSystem, true},
    {"MSysRelationships", 5, ObjectId::kTables, ObjectType::kTable, ObjectFlag::kSystem, true},
    {"DataAccessPages", kFirstDocument, ObjectId::kRoot, ObjectType::kContainer, 0, false},
    {"Forms", kFirstDocument + 1, ObjectId::kRoot, ObjectType::kContainer, 0, false},
    {"Modules", kFirstDocument + 2, ObjectId::kRoot, ObjectType::kContainer, 0, false},
    {"Reports", kFirstDocument + 3, ObjectId::kRoot, ObjectType::kContainer, 0, false},
    {"Scripts", kFirstDocument + 4, ObjectId::kRoot, ObjectType::kContainer, 0, false},
    {"SysRel", kFirstDocument + 5, ObjectId::kRoot, ObjectType::kContainer, 0, false},
    {"SummaryInfo", kFirstDocument + 6, ObjectId::kDatabases, ObjectType::kDocument, 0, false},
    {"UserDefined", kFirstDocument + 7, ObjectId::kDatabases, ObjectType::kDocument, 0, false},
};

Bytes documentProperties(std::string_view name) {
    PropertySet properties;
    if (name == "MSysDb") properties.setText("", "AccessVersion", "08.50");
    if (name == "UserDefined") properties.setBoolean("", "ReplicateProject", true);
    return properties.serialize();
}

} // namespace

TableDef systemTableDefinition(PageNo page, SortOrder sortOrder) {
    const auto table = std::find_if(std::begin(kSystemTables), std::end(kSystemTables),
                                    [page](const SystemTable& t) { return t.page == page; });
    TableDef def;
    def.name = systemTableName(page);
    def.page = page;
    def.system = true;
    def.tableType = kSystemTableType;
    def.maxColumns = static_cast<uint16_t>(table->columns.size());
    def.variableColumns = table->variableColumns;
    for (const Column& column : table->columns)
        def.fields.push_back(fieldOf(column, sortOrder));
    for (const Index& index : table->indexes)
        def.indexes.push_back(indexOf(index, def));
    def.realIndexCount = static_cast<uint32_t>(def.indexes.size());
    def.uniqueEntryCounts.resize(def.realIndexCount);
    return def;
}

std::vector<Catalog::NewObject> newDatabaseObjects() {
    std::vector<Catalog::NewObject> objects;
    for (const Document& document : kDocuments)
        objects.push_back({.id = document.id,
                           .parent = document.parent,
                           .type = document.type,
                           .flags = document.flags,
                           .name = document.name,
                           .owner = bytesOf(document.ofEngine ? kEngine : kAdmin),
                           .properties = documentProperties(document.name)});
    return objects;
}

std::vector<Permission> newDatabasePermissions() {
    std::vector<Permission> made;
    const auto add = [&](int32_t object, const SecurityId& who, int32_t rights, bool handedOn) {
        made.push_back({object, bytesOf(who), rights, handedOn});
    };
    for (const int32_t table : {2, 3, 4})
        add(table, kAdmin, kOwnRights, false);
    add(5, kAdmin, kOwnRelationRights, false);
    for (const int32_t table : {2, 4, 5})
        add(table, kUsers, kReadRights, false);
    add(ObjectId::kTables, kCreator, kCreatorRights, true);
    add(ObjectId::kTables, kAdmin, kTableRights, true);
    add(ObjectId::kTables, kUsers, kTableRights, true);
    add(ObjectId::kRelationships, kCreator, kCreatorRights, true);
    add(ObjectId::kRelationships, kAdmin, kOwnCreateRights, false);
    add(ObjectId::kRelationships, kUsers, kAllRights, true);
    add(ObjectId::kDatabases, kAdmin, kOwnRights, false);
    add(ObjectId::kDatabase, kAdmin, kOwnOpenRights, false);
    add(ObjectId::kDatabase, kUsers, kOpenRights, false);
    for (const Document& document : kDocuments) {
        if (document.flags != 0) continue;
        if (document.type == ObjectType::kDocument) {
            add(document.id, kUsers, kDeleteRights, false);
            continue;
        }
        for (const SecurityId& who : {kUsers, kAdmin, kCreator})
            add(document.id, who, kAllRights, true);
    }
    return made;
}

void writeFirstPages(OpenDatabase& db, std::span<const uint8_t> page0) {
    PageFile& file = db.pages();
    {
        PageEdit header = file.append();
        if (page0.empty())
            initialiseHeader(header.bytes(), db.header());
        else
            std::copy(page0.begin(), page0.end(), header.bytes().begin());
    }
    while (file.pageCount() < kFirstFreePage)
        file.append();
    createFreeMap(db);
}

void writeNewDatabase(OpenDatabase& db) {
    writeFirstPages(db);
    for (const SystemTable& table : kSystemTables)
        createSystemTable(db, table.page);
    for (const Catalog::NewObject& object : newDatabaseObjects())
        db.catalog().insert(object);
    for (const Permission& permission : newDatabasePermissions())
        addPermission(db, permission);
}

} // namespace jet
