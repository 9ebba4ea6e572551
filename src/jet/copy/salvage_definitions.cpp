// jet/copy/salvage_definitions.h
#include "jet/copy/salvage_definitions.h"

#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/field_size.h"
#include "jet/format/row_codec.h"

#include <algorithm>
#include <array>
#include <map>
#include <unordered_set>

namespace jet {

namespace {

constexpr size_t kMaxChain = 256;      // pages of one definition
constexpr size_t kMapPagesLooked = 32; // of an owned map, to learn by which name its pages call the table
constexpr uint16_t kMaxBinary = 510;   // bytes
constexpr uint16_t kDefaultText = 255; // characters, for a width that cannot be

// As much of the chain as is there.
Bytes imageFrom(const SalvageSource& source, PageNo first) {
    Bytes image;
    std::unordered_set<PageNo> seen;
    for (PageNo page = first; page != 0 && seen.size() < kMaxChain && seen.insert(page).second;) {
        if (source.pages.kind(page) != PageKind::Definition) break;
        const PageRef ref = source.file.read(page);
        const auto part = ref.bytes().subspan(page == first ? 0 : source.layout().tdefBodyOfNextPages);
        image.insert(image.end(), part.begin(), part.end());
        page = get32(ref.bytes(), source.layout().tdefNext);
    }
    return image;
}

std::optional<TableDef> parse(const SalvageSource& source, PageNo page, std::span<const uint8_t> image) {
    try {
        TableDef def = parseTableDef(source.layout(), page, image);
        if (def.fields.empty()) return std::nullopt;
        return def;
    } catch (const Error&) {
        return std::nullopt;
    }
}

std::optional<SalvagedDefinition> readAt(const SalvageSource& source, PageNo page) {
    const Bytes image = imageFrom(source, page);
    if (image.empty()) return std::nullopt;
    SalvagedDefinition found;
    auto def = parse(source, page, image);
    if (!def && hasDefinitionMark(source.layout(), image)) {
        def = parse(source, page, fieldsOnlyImage(source.layout(), image));
        found.indexesLost = true;
    }
    if (!def) return std::nullopt;
    found.def = std::move(*def);
    return found;
}

// By what number the pages call their table that this definition's map lists: its own unless pages were
// exchanged.
PageNo idByPages(const SalvageSource& source, const TableDef& def) {
    std::map<PageNo, size_t> votes;
    const auto pointer = RowId::fromPacked(def.ownedMapPointer);
    try {
        if (source.pages.kind(pointer.page) != PageKind::Maps) return def.page;
        const UsageMap map(source.file, source.layout(), pointer);
        auto page = map.next(0);
        for (size_t i = 0; page && i < kMapPagesLooked; ++i, page = map.next(*page + 1))
            if (source.pages.kind(*page) == PageKind::Data) ++votes[source.pages.owners[*page]];
    } catch (const Error&) {
        return def.page;
    }
    size_t all = 0;
    for (const auto& [id, count] : votes)
        all += count;
    for (const auto& [id, count] : votes)
        if (2 * count > all && id < source.file.pageCount()) return votes.contains(def.page) ? def.page : id;
    return def.page;
}

template <class Item> bool makeNamesUsable(std::vector<Item>& items, const std::string& stem) {
    std::unordered_set<std::string> taken;
    bool changed = false;
    for (Item& item : items)
        if (!isUsableName(item.name) || !taken.insert(foldName(item.name)).second) item.name.clear();
    size_t number = 0;
    for (Item& item : items) {
        if (!item.name.empty()) continue;
        do
            item.name = stem + std::to_string(++number);
        while (!taken.insert(foldName(item.name)).second);
        changed = true;
    }
    return changed;
}

void makeSizesUsable(TableDef& def) {
    for (FieldDef& field : def.fields) {
        if (field.type == Type::Text && (field.size == 0 || field.size > kMaxTextSize))
            field.size = kDefaultText;
        if (field.type == Type::Binary && (field.size == 0 || field.size > kMaxBinary))
            field.size = kMaxBinary;
    }
}

} // namespace

std::optional<bool> SalvageSource::mapHolds(uint64_t mapPointer, PageNo page) const {
    const auto at = RowId::fromPacked(mapPointer);
    if (pages.kind(at.page) != PageKind::Maps) return std::nullopt;
    try {
        return UsageMap(file, layout(), at).contains(page);
    } catch (const Error&) {
        return std::nullopt;
    }
}

bool isUsableName(std::string_view name) {
    const std::u16string units = utf16FromUtf8(name);
    if (units.empty() || units.size() > kMaxName || units.front() == u' ') return false;
    return std::ranges::none_of(units, [](char16_t unit) {
        return unit < 0x20 || unit == 0x7F || (unit >= 0xD800 && unit <= 0xDFFF) || unit >= 0xFFF0;
    });
}

std::vector<DefinitionPlace> findDefinitions(const SalvageSource& source) {
    std::vector<DefinitionPlace> found;
    for (PageNo page = kCatalogPage; page < source.file.pageCount(); ++page) {
        if (source.pages.kind(page) != PageKind::Definition) continue;
        if (const auto definition = readAt(source, page))
            found.push_back({idByPages(source, definition->def), page});
    }
    // One that lies where it should goes before one that only says so.
    std::ranges::sort(found, [](const DefinitionPlace& a, const DefinitionPlace& b) {
        return std::tuple(a.id, a.id != a.page, a.page) < std::tuple(b.id, b.id != b.page, b.page);
    });
    std::unordered_set<PageNo> taken;
    std::vector<DefinitionPlace> places, second;
    for (const DefinitionPlace place : found)
        (taken.insert(place.id).second ? places : second).push_back(place);
    for (const DefinitionPlace place : second)
        if (taken.insert(place.page).second) places.push_back({place.page, place.page});
    std::ranges::sort(places, {}, &DefinitionPlace::id);
    return places;
}

std::optional<SalvagedDefinition> readDamagedDefinition(const SalvageSource& source, DefinitionPlace place) {
    auto found = readAt(source, place.page);
    if (!found) return found;
    found->def.page = place.id;
    found->namesMadeUp = makeNamesUsable(found->def.fields, "Alan");
    makeNamesUsable(found->def.indexes, "Dizin");
    makeSizesUsable(found->def);
    return found;
}

} // namespace jet
