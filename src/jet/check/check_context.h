// jet/check/check_context.h — what every part of one check works on.
#pragma once

#include "jet/check/findings.h"
#include "jet/check/page_ledger.h"
#include "jet/check/row_set.h"
#include "jet/format/usage_map.h"

namespace jet {

class Database;

struct CheckContext {
    PageFile& file;
    PageAllocator& allocator;
    const Layout& layout;
    uint16_t codePage;
    Findings& findings;
    PageLedger ledger;
    PageLedger::Owner mapPages; // pages whose rows are usage maps; many tables share them
    RowSet maps;                // every usage map that somebody names

    CheckContext(Database& database, Findings& found);

    UsageMap map(RowId at) const { return {file, layout, at}; }

    // Takes a usage map over into the ledger: its own row, its bitmap pages, and the pages it lists, which
    // become `owner`'s. Faults: the row is no map or serves another owner too.
    void claimMap(RowId at, PageLedger::Owner owner, const std::string& table);
    // The map's row and bitmap pages only.
    void claimMapItself(RowId at, const std::string& table);
};

} // namespace jet
