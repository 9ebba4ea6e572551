// jet/table/catalog.h: MSysObjects.
#include "jet/table/catalog.h"

#include "jet/error.h"
#include "jet/table/system_row.h"

#include <array>

namespace jet {

std::string_view systemTableName(PageNo page) {
    static constexpr std::array<std::string_view, 6> names = {
        "", "", "MSysObjects", "MSysACEs", "MSysQueries", "MSysRelationships"};
    return page < names.size() ? names[page] : std::string_view();
}

size_t systemColumn(Table& table, std::string_view column) {
    const auto found = table.def().findField(column);
    if (!found)
        throw Error(Err::Corrupt, "Sistem tablosunda “" + std::string(column) + "” alanı yok.")
            .inTable(table.def().name);
    return *found;
}

SystemRow& SystemRow::set(std::string_view column, Value value) {
    const size_t at = systemColumn(*table_, column);
    values_[at] = std::move(value);
    given_[at] = true;
    return *this;
}

void Catalog::refresh(uint64_t stamp) {
    if (stamp_ == stamp) return;
    stamp_ = 0;
    entries_.clear();
    byName_.clear();
    byFoldedName_.clear();
    byPage_.clear();

    Table objects(*source_, SystemPage::kObjects);
    const size_t id = systemColumn(objects, "Id"), parent = systemColumn(objects, "ParentId"),
                 name = systemColumn(objects, "Name"), type = systemColumn(objects, "Type"),
                 flags = systemColumn(objects, "Flags");
    Scan scan = objects.scan();
    std::string scratch;
    while (scan.next()) {
        const RowView& row = scan.row();
        if (row.isNull(id) || row.isNull(parent) || row.isNull(name) || row.isNull(type)) continue;
        if (row.integer(parent) != ObjectId::kTables) continue;
        CatalogEntry entry;
        entry.name = scan.text(name, scratch);
        entry.id = row.integer(id);
        entry.type = row.integer(type);
        entry.flags = row.isNull(flags) ? 0 : static_cast<uint32_t>(row.integer(flags));
        entry.row = scan.id();
        byName_.emplace(entry.name, entries_.size());
        byFoldedName_.emplace(foldName(entry.name), entries_.size());
        if (entry.isTable()) byPage_.emplace(entry.page(), entries_.size());
        entries_.push_back(std::move(entry));
    }
    stamp_ = stamp;
}

const CatalogEntry* Catalog::find(std::string_view name) const {
    if (const auto exact = byName_.find(std::string(name)); exact != byName_.end())
        return &entries_[exact->second];
    const auto similar = byFoldedName_.find(foldName(name));
    return similar == byFoldedName_.end() ? nullptr : &entries_[similar->second];
}

const CatalogEntry* Catalog::findTable(PageNo page) const {
    const auto found = byPage_.find(page);
    return found == byPage_.end() ? nullptr : &entries_[found->second];
}

Bytes Catalog::properties(const CatalogEntry& entry) {
    Table objects(*source_, SystemPage::kObjects);
    const size_t column = systemColumn(objects, "LvProp");
    const std::vector<Value> row = objects.read(entry.row);
    const Bytes* bytes = row[column].get<Bytes>();
    return bytes ? *bytes : Bytes();
}

void Catalog::setProperties(const CatalogEntry& entry, const PropertySet& properties) {
    Table objects(*source_, SystemPage::kObjects);
    Bytes blob = properties.serialize();
    SystemRow(objects)
        .set("LvProp", blob.empty() ? Value() : Value(std::move(blob)))
        .set("DateUpdate", source_->now())
        .update(entry.row);
}

void Catalog::touch(const CatalogEntry& entry) {
    Table objects(*source_, SystemPage::kObjects);
    SystemRow(objects).set("DateUpdate", source_->now()).update(entry.row);
}

void Catalog::rename(const CatalogEntry& entry, const std::string& name) {
    Table objects(*source_, SystemPage::kObjects);
    SystemRow(objects).set("Name", name).set("DateUpdate", source_->now()).update(entry.row);
}

void Catalog::remove(const CatalogEntry& entry) { Table(*source_, SystemPage::kObjects).remove(entry.row); }

void Catalog::insert(const NewObject& object) {
    Table objects(*source_, SystemPage::kObjects);
    const Date now = source_->now();
    SystemRow row(objects);
    row.set("Id", object.id)
        .set("ParentId", object.parent)
        .set("Name", object.name)
        .set("Type", static_cast<int32_t>(object.type))
        .set("DateCreate", now)
        .set("DateUpdate", now)
        .set("Flags", static_cast<int32_t>(object.flags))
        .set("Owner", object.owner.empty() ? ownerOfDatabase() : object.owner);
    if (!object.properties.empty()) row.set("LvProp", object.properties);
    row.insert();
}

// The user who made the file owns the row of the database itself; what is made later belongs to him as well.
Bytes Catalog::ownerOfDatabase() {
    Table objects(*source_, SystemPage::kObjects);
    const size_t id = systemColumn(objects, "Id"), owner = systemColumn(objects, "Owner");
    Scan scan = objects.scan();
    while (scan.next()) {
        if (scan.row().isNull(id) || scan.row().integer(id) != ObjectId::kDatabase) continue;
        const Value value = scan.value(owner);
        return value.isNull() ? Bytes() : *value.get<Bytes>();
    }
    return {};
}

} // namespace jet
