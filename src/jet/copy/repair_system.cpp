// jet/copy/repair_system.h
#include "jet/copy/repair_system.h"

#include "jet/error.h"
#include "jet/table/catalog.h"

#include <algorithm>

namespace jet {

namespace {

constexpr size_t kMaxObjects = 100'000; // more than any file holds; bounds what is remembered of them

std::string textOf(const Value& value) { return value.isNull() ? std::string() : value.toText(); }

// Programs do not show a table that is called the system's: damaged flags must not hide what was saved.
bool bearsSystemName(const std::string& name) { return name.starts_with("MSys") || name.starts_with("f_"); }

Value withoutSystemBits(const Value& flags) {
    if (flags.isNull()) return flags;
    constexpr uint32_t kSystemBits = ObjectFlag::kSystem | ObjectFlag::kOtherSystem;
    return static_cast<int32_t>(static_cast<uint32_t>(flags.toInt()) & ~kSystemBits);
}

bool areProperties(const Value& value) {
    const Bytes* blob = value.get<Bytes>();
    try {
        if (blob) PropertySet::parse(*blob);
        return true;
    } catch (const Error&) {
        return false;
    }
}

} // namespace

SystemRows::SystemRows(const Salvage& salvage, DatabaseWriter& writer,
                       std::unordered_map<PageNo, std::string> made, Reader reader,
                       std::vector<std::string>& notes)
    : salvage_(salvage), writer_(writer), made_(std::move(made)), read_(std::move(reader)), notes_(notes) {
    for (const auto& [id, name] : made_)
        tablesByName_.emplace(foldName(name), id);
}

size_t SystemRows::Source::column(std::string_view name) const {
    if (const auto at = def.findField(name)) return *at;
    throw Error(Err::Corrupt, "Sistem tablosunda “" + std::string(name) + "” alanı yok.").inTable(def.name);
}

SystemRows::Source SystemRows::source(PageNo page) const {
    for (const SalvagedTable& table : salvage_.tables())
        if (table.id == page) return {&table, salvage_.definition(table).def};
    throw Error(Err::Corrupt, "Sistem tablosu yok.").onPage(page);
}

void SystemRows::carryOver() {
    const Source relations = source(SystemPage::kRelationships);
    chooseRelations(relations);
    copyObjects(source(SystemPage::kObjects));
    copyPermissions(source(SystemPage::kAces));
    copyQueries(source(SystemPage::kQueries));
    copyRelations(relations);
}

// `change` gets each row's values, may alter them, and says whether the row is wanted.
template <class F> void SystemRows::copy(const Source& from, F change) {
    writer_.beginSystemTable(from.table->id, &from.def);
    std::vector<Value> values;
    read_(*from.table, from.def, [&](std::span<const Value> row) {
        values.assign(row.begin(), row.end());
        if (change(values)) writer_.addRow(values);
    });
    writer_.endTable();
}

void SystemRows::note(size_t count, const std::string& what) {
    if (count > 0) notes_.push_back(std::to_string(count) + " " + what);
}

// One that names a table or a field that is not there any more is left out whole.
void SystemRows::chooseRelations(const Source& from) {
    const size_t name = from.column("szRelationship"), child = from.column("szObject"),
                 childField = from.column("szColumn"), parent = from.column("szReferencedObject"),
                 parentField = from.column("szReferencedColumn");
    std::unordered_set<std::string> broken;
    read_(*from.table, from.def, [&](std::span<const Value> row) {
        const std::string relation = textOf(row[name]);
        const bool sound = salvage_.isKeyName(relation) && hasField(row[child], row[childField]) &&
                           hasField(row[parent], row[parentField]);
        if (keptRelations_.size() + broken.size() > kMaxObjects) return;
        (sound ? keptRelations_ : broken).insert(relation);
    });
    for (const std::string& relation : broken)
        keptRelations_.erase(relation);
    note(broken.size(), "ilişki, tablosu ya da alanı kurtarılamadığı için bırakıldı.");
}

bool SystemRows::hasField(const Value& table, const Value& field) {
    const auto found = tablesByName_.find(foldName(textOf(table)));
    if (found == tablesByName_.end() || !salvage_.isKeyName(textOf(table))) return false;
    auto [fields, isNew] = fields_.try_emplace(found->second);
    if (isNew)
        for (const SalvagedTable& candidate : salvage_.tables())
            if (candidate.id == found->second)
                for (const FieldDef& def : salvage_.definition(candidate).def.fields)
                    fields->second.insert(foldName(def.name));
    return fields->second.contains(foldName(textOf(field)));
}

void SystemRows::copyObjects(const Source& from) {
    const size_t id = from.column("Id"), parent = from.column("ParentId"), name = from.column("Name"),
                 type = from.column("Type"), owner = from.column("Owner"), flags = from.column("Flags"),
                 properties = from.column("LvProp");
    std::set<std::pair<int32_t, std::string>> names;
    size_t contradictory = 0, propertiesLost = 0;
    const auto unusable = [&](const std::vector<Value>& row) {
        return row[id].isNull() || row[parent].isNull() || row[type].isNull() ||
               !salvage_.isKeyName(textOf(row[name])) || objects_.size() >= kMaxObjects;
    };
    copy(from, [&](std::vector<Value>& row) {
        if (unusable(row)) {
            ++contradictory;
            return false;
        }
        const auto old = static_cast<int32_t>(row[id].toInt());
        const int64_t kind = row[type].toInt();
        if (kind == ObjectType::kTable) {
            const auto table = made_.find(static_cast<PageNo>(old));
            const bool system = !systemTableName(static_cast<PageNo>(old)).empty();
            if (table == made_.end() && !system) return false; // told with the tables
            row[name] = system ? std::string(systemTableName(static_cast<PageNo>(old))) : table->second;
            row[parent] = int32_t{ObjectId::kTables};
            if (!bearsSystemName(row[name].toText())) row[flags] = withoutSystemBits(row[flags]);
            row[id] = writer_.newId(old);
        } else if (old >= 0 && old < ObjectId::kRoot) { // would be mistaken for a table
            ++contradictory;
            return false;
        }
        if (kind == ObjectType::kRelation && !keptRelations_.contains(textOf(row[name]))) return false;
        const auto place = static_cast<int32_t>(row[parent].toInt()),
                   object = static_cast<int32_t>(row[id].toInt());
        if (objects_.contains(object) || !names.emplace(place, salvage_.keyOf(textOf(row[name]))).second) {
            ++contradictory;
            return false;
        }
        objects_.insert(object);
        if (!salvage_.datesKnown()) row[owner] = Value();
        if (!areProperties(row[properties])) {
            row[properties] = Value();
            ++propertiesLost;
        }
        return true;
    });
    note(propertiesLost, "nesnenin özellikleri (LvProp) okunamadı.");
    note(contradictory, "katalog satırı okunamadığı ya da başkasıyla çeliştiği için bırakıldı.");
}

// Security ids mean nothing without the date that masks them: the new file then gives everybody's rights
// anew.
void SystemRows::copyPermissions(const Source& from) {
    if (!salvage_.datesKnown()) return;
    const size_t object = from.column("ObjectId");
    copy(from, [&](std::vector<Value>& row) {
        if (row[object].isNull()) return false;
        row[object] = writer_.newId(static_cast<int32_t>(row[object].toInt()));
        return objects_.contains(static_cast<int32_t>(row[object].toInt()));
    });
}

void SystemRows::copyQueries(const Source& from) {
    const size_t object = from.column("ObjectId");
    size_t strays = 0;
    copy(from, [&](std::vector<Value>& row) {
        const bool known =
            !row[object].isNull() && objects_.contains(static_cast<int32_t>(row[object].toInt()));
        strays += !known;
        return known;
    });
    note(strays, "sorgu satırı, sorgusu kurtarılamadığı için bırakıldı.");
}

void SystemRows::copyRelations(const Source& from) {
    const size_t name = from.column("szRelationship");
    copy(from, [&](std::vector<Value>& row) { return keptRelations_.contains(textOf(row[name])); });
}

} // namespace jet
