// jet/copy/salvage_definitions.h — the table definitions of a damaged file: found by their pages, read as far
// as they can be, with names that a file may have.
#pragma once

#include "jet/copy/salvage_pages.h"
#include "jet/format/table_def.h"
#include "jet/format/usage_map.h"

#include <optional>
#include <string>
#include <vector>

namespace jet {

// What every step of one repair reads from.
struct SalvageSource {
    PageFile& file;
    PageSurvey pages;

    const Layout& layout() const { return kJet4; }
    // The pages of a usage map: whether it holds this one; nullopt when the map cannot be read.
    std::optional<bool> mapHolds(uint64_t mapPointer, PageNo page) const;
};

// Little for each: a hostile file may hold hundreds of thousands.
struct DefinitionPlace {
    PageNo id = 0;   // what the rows' pages and the catalog call it
    PageNo page = 0; // where it lies: elsewhere only when pages have changed places
};

struct SalvagedDefinition {
    TableDef def; // page = id; the names of fields and indexes are usable and differ
    bool indexesLost = false;
    bool namesMadeUp = false;
};

// Definitions whose fields can be read, by id.
std::vector<DefinitionPlace> findDefinitions(const SalvageSource& source);
// nullopt when there are no fields to be had.
std::optional<SalvagedDefinition> readDamagedDefinition(const SalvageSource& source, DefinitionPlace place);

// Could an object or field be called so?
bool isUsableName(std::string_view name);

} // namespace jet
