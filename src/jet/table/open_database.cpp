// jet/table/open_database.h: definitions kept in memory, catalog, clock.
#include "jet/table/open_database.h"

#include "jet/index/key.h"
#include "jet/table/definition_store.h"

#include <chrono>
#include <ctime>

namespace jet {

namespace {

// Required, AllowZeroLength and DefaultValue of every field. A damaged blob must not keep people from their
// rows: the properties are then left out, and a statement that would have to rewrite them fails.
void applyProperties(TableDef& def, std::span<const uint8_t> blob, uint16_t codePage) {
    if (blob.empty()) return;
    PropertySet properties;
    try {
        properties = PropertySet::parse(blob, codePage);
    } catch (const Error&) {
        return;
    }
    for (FieldDef& field : def.fields) {
        field.required = properties.boolean(field.name, "Required", false);
        field.allowZeroLength = properties.boolean(field.name, "AllowZeroLength", true);
        field.defaultValue = properties.text(field.name, "DefaultValue");
    }
}

} // namespace

OpenDatabase::OpenDatabase(std::unique_ptr<PageFile> file, DatabaseHeader header, std::string readOnlyReason)
    : file_(std::move(file)), header_(std::move(header)), readOnlyReason_(std::move(readOnlyReason)),
      allocator_(*file_, *header_.layout), catalog_(*this) {}

bool OpenDatabase::writable(std::string& reason) const {
    reason = readOnlyReason_;
    return reason.empty();
}

void OpenDatabase::requireWritable() const {
    if (!readOnlyReason_.empty()) throw Error(Err::ReadOnly, readOnlyReason_);
}

// Local time, as Access stamps its rows.
Date OpenDatabase::now() const {
    const std::time_t seconds = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &seconds);
#else
    localtime_r(&seconds, &local);
#endif
    return Date::fromParts(
        {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec});
}

std::shared_ptr<const TableDef> OpenDatabase::definition(PageNo page) {
    if (const auto found = known_.find(page); found != known_.end() && found->second.stamp == stamp())
        return found->second.def;

    Known fresh = read(page); // may add other definitions: looked up again after it
    if (const auto found = known_.find(page); found != known_.end() && found->second.sameAs(fresh)) {
        found->second.stamp = stamp();
        return found->second.def;
    }
    TableDef def = parseTableDef(layout(), page, fresh.image, codePage());
    def.name = fresh.name;
    def.system = (fresh.flags & (ObjectFlag::kSystem | ObjectFlag::kOtherSystem)) != 0;
    def.hidden = (fresh.flags & ObjectFlag::kHidden) != 0;
    applyProperties(def, fresh.properties, codePage());
    for (IndexDef& index : def.indexes)
        index.readOnlyReason = keyObstacle(layout(), def, index);
    fresh.def = std::make_shared<const TableDef>(std::move(def));
    fresh.stamp = stamp();
    return (known_[page] = std::move(fresh)).def;
}

// The bytes a definition is made of, and its catalog entry.
OpenDatabase::Known OpenDatabase::read(PageNo page) {
    Known known;
    if (const std::string_view system = systemTableName(page); !system.empty()) {
        known.name = system;
        known.flags = ObjectFlag::kSystem;
    } else if (page != draft_) {
        const CatalogEntry* entry = catalog().findTable(page);
        if (!entry) throw Error(Err::NoSuchTable, "Tablo artık yok: silinmiş.").onPage(page);
        known.name = entry->name;
        known.flags = entry->flags;
        known.properties = catalog_.properties(*entry);
    }
    known.image = readDefinition(*file_, layout(), page);
    blankCounters(layout(), known.image);
    return known;
}

Catalog& OpenDatabase::catalog() {
    catalog_.refresh(stamp());
    return catalog_;
}

CatalogEntry OpenDatabase::tableEntry(std::string_view name) {
    const CatalogEntry* entry = catalog().find(name);
    if (!entry) throw Error(Err::NoSuchTable, "“" + std::string(name) + "” adlı tablo bulunamadı.");
    if (!entry->isTable())
        throw Error(Err::NoSuchTable, "“" + std::string(name) + "” bu dosyada duran bir tablo değil.");
    return *entry;
}

TableDef OpenDatabase::loadDefinition(PageNo page) {
    TableDef def = *definition(page);
    const TableDef counted =
        parseTableDef(layout(), page, readDefinition(*file_, layout(), page), codePage());
    def.rowCount = counted.rowCount;
    def.lastAutoNumber = counted.lastAutoNumber;
    def.uniqueEntryCounts = counted.uniqueEntryCounts;
    def.storedRowCounts = counted.storedRowCounts;
    return def;
}

void OpenDatabase::saveDefinition(const TableDef& def) {
    writeDefinition(allocator_, def.page, serializeTableDef(layout(), def));
    structureChanged();
}

} // namespace jet
