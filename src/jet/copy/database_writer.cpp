// jet/copy/database_writer.h
#include "jet/copy/database_writer.h"

#include "jet/copy/table_plan.h"
#include "jet/copy/table_writer.h"
#include "jet/table/create_database.h"

#include <algorithm>
#include <cassert>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace jet {

namespace {

const Value& valueOf(const TableDef& def, std::span<const Value> row, std::string_view field) {
    static const Value null;
    const auto at = def.findField(field);
    return at ? row[*at] : null;
}

int32_t idOf(const Value& value) { return value.isNull() ? 0 : static_cast<int32_t>(value.toInt()); }

} // namespace

struct DatabaseWriter::Impl {
    struct Made {
        int32_t id = 0;
        std::string name;
        uint32_t flags = 0;
        Bytes properties;
    };

    Impl(const std::filesystem::path& out, const NewDatabase& what, WriterOptions wanted)
        : options(std::move(wanted)), file(out, what, options), objects(newDatabaseObjects()) {}

    OpenDatabase& db() { return file.db(); }

    int32_t begin(const NewTable& table);
    void beginSystem(PageNo page, const TableDef* def);
    void add(std::span<const Value> values);
    void addObject(std::span<const Value> values);
    std::vector<IndexOutcome> end(const OldKeys& oldKeys);

    void settleRelations(std::vector<std::string>& notes);
    bool settle(const TableDef& def, IndexDef& index) const;
    void completeObjects();
    void completePermissions();
    int32_t freeObjectId() const;

    WriterOptions options;
    NewFile file;
    std::optional<TableWriter> table;
    int32_t systemPage = 0; // of the table that was begun; 0: a table like any other
    std::vector<Made> made;
    std::unordered_map<int32_t, int32_t> newIds;   // by old id
    std::unordered_map<int32_t, TableDef> related; // tables with indexes of relations, by new id
    std::set<PageNo> systemsBegun;
    std::vector<Catalog::NewObject> objects;               // of a new file
    std::unordered_set<int32_t> objectIds, permittedIds;   // rows of the catalog, of the permissions
    std::set<std::pair<int32_t, std::string>> objectNames; // by parent
    std::vector<Value> row;                                // an object's, being changed
};

// --- tables

int32_t DatabaseWriter::Impl::begin(const NewTable& wanted) {
    assert(!table && systemsBegun.empty());
    TableDef def = wanted.def;
    const auto old = static_cast<int32_t>(def.page);
    def.page = db().allocator().allocate().number();
    const auto id = static_cast<int32_t>(def.page);
    try {
        table.emplace(file, std::move(def), options);
    } catch (const Error&) {
        db().allocator().free(static_cast<PageNo>(id));
        throw;
    }
    systemPage = 0;
    made.push_back({id, wanted.def.name, wanted.flags, wanted.properties});
    if (old != 0) newIds[old] = id;
    return id;
}

void DatabaseWriter::Impl::beginSystem(PageNo page, const TableDef* given) {
    assert(!table && !systemsBegun.contains(page) && !systemTableName(page).empty());
    TableDef def = given ? *given : systemTableDefinition(page, db().header().sortOrder);
    def.page = page;
    table.emplace(file, std::move(def), options);
    systemPage = static_cast<int32_t>(page);
    systemsBegun.insert(page);
}

void DatabaseWriter::Impl::add(std::span<const Value> values) {
    if (systemPage == SystemPage::kObjects) return addObject(values);
    table->add(values);
    if (systemPage == SystemPage::kAces) permittedIds.insert(idOf(valueOf(table->def(), values, "ObjectId")));
}

// An object without owner is everybody's, as those of a new file are.
void DatabaseWriter::Impl::addObject(std::span<const Value> values) {
    const TableDef& def = table->def();
    row.assign(values.begin(), values.end());
    if (const auto owner = def.findField("Owner"); owner && row[*owner].isNull()) {
        const auto like = std::find_if(objects.begin(), objects.end(), [&](const Catalog::NewObject& object) {
            return object.id == idOf(valueOf(def, row, "Id"));
        });
        row[*owner] = like == objects.end() ? objects.back().owner : like->owner;
    }
    table->add(row);
    objectIds.insert(idOf(valueOf(def, row, "Id")));
    objectNames.emplace(idOf(valueOf(def, row, "ParentId")), foldName(valueOf(def, row, "Name").toText()));
}

std::vector<IndexOutcome> DatabaseWriter::Impl::end(const OldKeys& oldKeys) {
    assert(table);
    auto outcomes = table->end(oldKeys);
    const TableDef& def = table->def();
    if (std::any_of(def.indexes.begin(), def.indexes.end(), [](const IndexDef& i) { return i.foreign; }))
        related.emplace(static_cast<int32_t>(def.page), def);
    table.reset();
    return outcomes;
}

// --- relations

// The index names its other side by the old id; true when that is here and names this one in turn.
bool DatabaseWriter::Impl::settle(const TableDef& def, IndexDef& index) const {
    const auto other = newIds.find(static_cast<int32_t>(index.relatedTable));
    if (other == newIds.end() || index.relatedIndex < 0) return false;
    const auto found = related.find(other->second);
    if (found == related.end()) return false;
    const auto& theirs = found->second.indexes;
    const bool answered = std::any_of(theirs.begin(), theirs.end(), [&](const IndexDef& their) {
        const auto back = newIds.find(static_cast<int32_t>(their.relatedTable));
        return their.foreign && their.number == static_cast<uint32_t>(index.relatedIndex) &&
               their.relatedIndex == static_cast<int32_t>(index.number) && back != newIds.end() &&
               back->second == static_cast<int32_t>(def.page);
    });
    if (answered) index.relatedTable = static_cast<uint32_t>(other->second);
    return answered;
}

void DatabaseWriter::Impl::settleRelations(std::vector<std::string>& notes) {
    for (const auto& [id, def] : related) {
        TableDef settled = def;
        std::vector<bool> drop(def.indexes.size());
        for (size_t i = 0; i < def.indexes.size(); ++i) {
            IndexDef& index = settled.indexes[i];
            if (!index.foreign || settle(def, index)) continue;
            notes.push_back("“" + index.name +
                            "” ilişkisinin öbür tablosu yok; ilişkinin dizini sıradan bir "
                            "dizin oldu.");
            drop[i] = std::count_if(def.indexes.begin(), def.indexes.end(), [&](const IndexDef& other) {
                          return other.realNumber == index.realNumber;
                      }) > 1;
            index.foreign = false;
            index.type = IndexFlag::kTypePlain;
            index.storedLogical = {};
            index.relatedTable = 0;
            index.relatedIndex = -1;
        }
        dropIndexes(settled, drop);
        db().saveDefinition(settled);
    }
}

// --- catalog

int32_t DatabaseWriter::Impl::freeObjectId() const {
    int32_t id = INT32_MIN;
    while (objectIds.contains(id))
        ++id;
    return id;
}

// What every file has is added one by one; the containers that only new files are sure to have come together.
void DatabaseWriter::Impl::completeObjects() {
    const bool nothingGiven = objectIds.empty();
    for (Catalog::NewObject object : objects) {
        const bool needed = nothingGiven || options.lenient || object.flags == ObjectFlag::kSystem;
        if (!needed || objectNames.contains({object.parent, foldName(object.name)})) continue;
        if (objectIds.contains(object.id)) object.id = freeObjectId();
        objectIds.insert(object.id);
        db().catalog().insert(object);
    }
    for (const Made& each : made)
        if (!objectIds.contains(each.id))
            db().catalog().insert({.id = each.id,
                                   .parent = ObjectId::kTables,
                                   .type = ObjectType::kTable,
                                   .flags = each.flags,
                                   .name = each.name,
                                   .owner = objects.back().owner,
                                   .properties = each.properties});
    db().structureChanged();
}

void DatabaseWriter::Impl::completePermissions() {
    if (permittedIds.empty())
        for (const Permission& permission : newDatabasePermissions())
            addPermission(db(), permission);
    for (const Made& each : made)
        if (!permittedIds.contains(each.id)) inheritPermissions(db(), ObjectId::kTables, each.id);
}

// --- the public face

DatabaseWriter::DatabaseWriter(const std::filesystem::path& out, const NewDatabase& what,
                               WriterOptions options)
    : impl_(std::make_unique<Impl>(out, what, std::move(options))) {}
DatabaseWriter::~DatabaseWriter() = default;

int32_t DatabaseWriter::beginTable(const NewTable& table) { return impl_->begin(table); }
void DatabaseWriter::beginSystemTable(PageNo page, const TableDef* def) { impl_->beginSystem(page, def); }
const TableDef& DatabaseWriter::def() const { return impl_->table->def(); }
void DatabaseWriter::addRow(std::span<const Value> values) { impl_->add(values); }
void DatabaseWriter::addRow(const RowView& row, PageFile& from, RowId old) {
    assert(impl_->systemPage == 0);
    impl_->table->add(row, from, old);
}
std::vector<IndexOutcome> DatabaseWriter::endTable(const OldKeys& oldKeys) { return impl_->end(oldKeys); }

int32_t DatabaseWriter::newId(int32_t oldId) const {
    const auto found = impl_->newIds.find(oldId);
    return found == impl_->newIds.end() ? oldId : found->second;
}
bool DatabaseWriter::hasTable(int32_t oldId) const { return impl_->newIds.contains(oldId); }

std::vector<std::string> DatabaseWriter::finish() {
    assert(!impl_->table);
    std::vector<std::string> notes;
    impl_->settleRelations(notes);
    for (const PageNo page :
         {SystemPage::kObjects, SystemPage::kAces, SystemPage::kQueries, SystemPage::kRelationships}) {
        if (impl_->systemsBegun.contains(page)) continue;
        impl_->beginSystem(page, nullptr);
        impl_->end({});
    }
    impl_->completeObjects();
    impl_->completePermissions();
    impl_->file.publish();
    return notes;
}

} // namespace jet
