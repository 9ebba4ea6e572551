// jet/copy/salvage.h: which tables a damaged file has, how they are called, and which pages are theirs.
#include "jet/copy/salvage.h"
#include "jet/error.h"
#include "jet/format/data_page.h"
#include "jet/table/catalog.h"

#include <algorithm>
#include <unordered_set>

namespace jet {

namespace {

constexpr RowId kFreeMap{kGlobalMapPage, 0};
constexpr size_t kMaxAdoptionSteps = 4u
                                     << 20; // tables times stray pages; more is no file that was ever sound
constexpr size_t kMaxProperties = 1u << 20; // bytes of one table's properties
constexpr size_t kMaxAllProperties = 64u << 20;
constexpr size_t kMaxNameless = 2000;
constexpr const char* kMadeUpName = "Kurtarılan_";

size_t livingRows(const Layout& layout, std::span<const uint8_t> page) {
    size_t rows = 0;
    try {
        for (uint16_t i = 0; i < data_page::slotCount(layout, page); ++i) {
            const Slot slot = data_page::slot(layout, page, i);
            rows += !slot.deleted && !slot.hidden;
        }
    } catch (const Error&) { // what was counted so far
    }
    return rows;
}

// Fields of a system table by name; nothing when one is missing or of another type.
std::optional<size_t> column(const TableDef& def, std::string_view name, Type type) {
    const auto at = def.findField(name);
    return at && def.fields[*at].type == type ? at : std::nullopt;
}

bool hasFieldsOf(const TableDef& def, const TableDef& known) {
    return std::ranges::all_of(known.fields, [&](const FieldDef& field) {
        const auto at = column(def, field.name, field.type);
        return at && def.fields[*at].columnNumber == field.columnNumber;
    });
}

} // namespace

bool Salvage::isSystem(PageNo id) const { return systemDefinitions_.contains(id); }

SalvagedDefinition Salvage::definitionOf(PageNo id) const {
    if (const PageNo page = known_.at(id); page != 0)
        if (auto found = readDamagedDefinition(*source_, {id, page})) return *found;
    return {.def = systemDefinitions_.at(id)};
}

std::vector<PageNo> Salvage::pagesOf(PageNo id, bool free) const {
    std::vector<PageNo> pages;
    auto at = std::ranges::lower_bound(dataPages_, std::pair(id, PageNo{0}));
    for (; at != dataPages_.end() && at->first == id; ++at)
        if (isFree(at->second) == free) pages.push_back(at->second);
    return pages;
}

void Salvage::findTables() {
    for (const DefinitionPlace place : findDefinitions(*source_))
        known_.emplace(place.id, place.page);
    for (const auto& [id, known] : systemDefinitions_) {
        const auto at = known_.find(id);
        if (at != known_.end() && hasFieldsOf(definitionOf(id).def, known)) continue;
        known_[id] = 0;
        notes_.push_back("'" + known.name +
                         "' sistem tablosunun tanımı okunamadı; her dosyada olan kullanıldı.");
    }
    for (PageNo page = 0; page < source_->file.pageCount(); ++page)
        if (source_->pages.kind(page) == PageKind::Data)
            dataPages_.emplace_back(source_->pages.owners[page], page);
    std::ranges::sort(dataPages_);
    if (!headerKnown_) assumeSortOrder();
    readFreeMap();
    adoptStrayPages();
    Catalog catalog = readCatalog();
    if (freeMapContradicts(catalog)) {
        notes_.push_back("Boş sayfalar haritası tablolarla çelişiyor; ona bakılmadı.");
        free_.clear();
        catalog = readCatalog();
    }
    nameTables(catalog);
    countStrays(catalog);
}

void Salvage::readFreeMap() {
    std::vector<bool> free(source_->file.pageCount());
    try {
        if (source_->pages.kind(kGlobalMapPage) != PageKind::Maps)
            throw Error(Err::Corrupt, "Boş sayfalar haritası okunamıyor.");
        UsageMap(source_->file, source_->layout(), kFreeMap).forEach([&](PageNo page) { free[page] = true; });
    } catch (const Error&) {
        notes_.push_back(
            "Boş sayfalar haritası okunamadı; bir tablonun işaretini taşıyan her sayfa kullanıldı.");
        return;
    }
    for (PageNo page = 0; page <= SystemPage::kRelationships && page < free.size(); ++page)
        if (free[page]) return; // never free in a sound file
    free_ = std::move(free);
}

// A page whose own mark is damaged may still be in the map of exactly one table.
void Salvage::adoptStrayPages() {
    std::vector<size_t> strays;
    for (size_t i = 0; i < dataPages_.size(); ++i)
        if (!known_.contains(dataPages_[i].first) && !isFree(dataPages_[i].second)) strays.push_back(i);
    if (strays.empty() || strays.size() * known_.size() > kMaxAdoptionSteps) return;
    std::unordered_map<PageNo, PageNo> adopters; // page -> table, 0 = more than one
    for (const auto& [id, place] : known_) {
        const uint64_t map = definitionOf(id).def.ownedMapPointer;
        for (const size_t stray : strays) {
            const PageNo page = dataPages_[stray].second;
            if (!source_->mapHolds(map, page).value_or(false)) continue;
            const auto [at, isNew] = adopters.emplace(page, id);
            if (!isNew) at->second = 0;
        }
    }
    for (const size_t stray : strays) {
        const auto adopter = adopters.find(dataPages_[stray].second);
        if (adopter == adopters.end() || adopter->second == 0) continue;
        dataPages_[stray].first = adopter->second;
        source_->pages.owners[adopter->first] = adopter->second;
        source_->pages.damaged[adopter->first] = true;
    }
    std::ranges::sort(dataPages_);
}

Salvage::Catalog Salvage::readCatalog() {
    const TableDef def = definitionOf(SystemPage::kObjects).def;
    const auto id = column(def, "Id", Type::Long), type = column(def, "Type", Type::Integer),
               name = column(def, "Name", Type::Text), flags = column(def, "Flags", Type::Long),
               properties = column(def, "LvProp", Type::Ole);
    Catalog catalog;
    if (!id || !type || !name || !flags || !properties) return catalog; // the known definition has them all
    std::unordered_set<PageNo> owners;
    for (const auto& [owner, page] : dataPages_)
        owners.insert(owner);
    size_t room = kMaxAllProperties;
    const auto take = [&](std::span<const Value> row) {
        if (row[*id].isNull() || row[*type].isNull() || row[*name].isNull()) return;
        if (row[*type].toInt() != ObjectType::kTable) return;
        const auto page = static_cast<PageNo>(row[*id].toInt());
        const std::string& text = *row[*name].get<std::string>();
        if ((!known_.contains(page) && !owners.contains(page)) || !isKeyName(text)) return;
        CatalogRow found{text, static_cast<uint32_t>(row[*flags].toInt()), {}};
        const Bytes* blob = row[*properties].get<Bytes>();
        if (blob && blob->size() <= std::min(kMaxProperties, room)) {
            found.properties = *blob;
            room -= blob->size();
        }
        catalog.rows.emplace(page, std::move(found));
    };
    TableLosses losses;
    LongValueReader longValues(*source_);
    TableSalvage(*source_, def, {pagesOf(SystemPage::kObjects), pagesOf(SystemPage::kObjects, true)},
                 known_.at(SystemPage::kObjects) != 0, longValues)
        .read(take, losses, options_.step);
    catalog.whole = known_.at(SystemPage::kObjects) != 0 && losses.rowsLost == 0 && losses.fieldsLost == 0 &&
                    losses.pagesDamaged == 0 && losses.rowsSaved >= def.rowCount;
    return catalog;
}

// A page cannot be free and be a table's.
bool Salvage::freeMapContradicts(const Catalog& catalog) const {
    if (free_.empty()) return false;
    // Where the catalog is not whole a definition that is not free itself counts as a table.
    const auto listed = [&](PageNo id) {
        return isSystem(id) || catalog.rows.contains(id) || (!catalog.whole && !isFree(known_.at(id)));
    };
    for (const auto& [id, place] : known_)
        if (listed(id) && isFree(place)) return true;
    PageNo last = 0;
    uint64_t map = 0;
    for (const auto& [id, page] : dataPages_) {
        if (!isFree(page) || !known_.contains(id) || !listed(id)) continue;
        if (id != last) map = definitionOf(last = id).def.ownedMapPointer;
        if (source_->mapHolds(map, page).value_or(false)) return true;
    }
    return false;
}

void Salvage::nameTables(const Catalog& catalog) {
    std::unordered_set<std::string> taken;
    std::vector<PageNo> ids;
    for (const auto& [id, place] : known_)
        ids.push_back(id);
    std::ranges::sort(ids);
    size_t nameless = 0;
    for (const PageNo id : ids) {
        SalvagedTable table{.id = id, .page = known_.at(id)};
        const auto row = catalog.rows.find(id);
        if (row != catalog.rows.end()) {
            table.name = row->second.name;
            table.flags = row->second.flags;
            table.properties = row->second.properties;
        } else if (!isSystem(id) && (isFree(table.page) || catalog.whole) && pagesOf(id).empty()) {
            continue; // dropped long ago
        }
        if (isSystem(id)) table.name = systemTableName(id);
        if (table.name.empty() && ++nameless > kMaxNameless) continue;
        table.nameLost = table.name.empty() || !taken.insert(keyOf(table.name)).second;
        tables_.push_back(std::move(table));
    }
    if (nameless > kMaxNameless)
        notes_.push_back("Adı yitmiş tabloların çoğu bırakıldı; en çok " + std::to_string(kMaxNameless) +
                         " tanesi kurtarılır.");
    for (SalvagedTable& table : tables_) {
        if (!table.nameLost) continue;
        table.flags = 0;
        for (std::string name = kMadeUpName + std::to_string(table.id);; name += "_") {
            if (!taken.insert(keyOf(name)).second) continue;
            table.name = name;
            break;
        }
    }
}

void Salvage::countStrays(const Catalog& catalog) {
    for (const auto& [owner, page] : dataPages_) {
        if (known_.contains(owner) || isFree(page)) continue;
        if (strays_.empty() || strays_.back().owner != owner) {
            strays_.push_back({.owner = owner});
            if (const auto row = catalog.rows.find(owner); row != catalog.rows.end())
                strays_.back().table = row->second.name;
        }
        ++strays_.back().pages;
        strays_.back().rows += livingRows(source_->layout(), source_->file.read(page).bytes());
    }
}

} // namespace jet
