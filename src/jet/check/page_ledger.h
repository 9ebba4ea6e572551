// jet/check/page_ledger.h — who owns each page of the file. Every page must be claimed exactly once.
#pragma once

#include "jet/check/findings.h"
#include "jet/pages/page_file.h"

#include <string>
#include <vector>

namespace jet {

class PageLedger {
  public:
    using Owner = uint32_t; // 0 = nobody

    PageLedger(size_t pages, Findings& findings) : owners_(pages), findings_(findings), names_{{}} {}

    // A new owner: the table and what of it ("verileri", "'Ad' dizini").
    Owner newOwner(const std::string& table, const std::string& part);
    // Faults: page outside the file, or somebody else's.
    void claim(Owner owner, PageNo page);
    Owner ownerOf(PageNo page) const { return page < owners_.size() ? owners_[page] : 0; }

    template <class F> void forEachUnclaimed(F visit) const {
        for (size_t page = 0; page < owners_.size(); ++page)
            if (owners_[page] == 0) visit(static_cast<PageNo>(page));
    }

  private:
    struct Name {
        std::string table, part;
        std::string text() const { return table.empty() ? part : "'" + table + "' tablosunun " + part; }
    };
    std::vector<Owner> owners_;
    Findings& findings_;
    std::vector<Name> names_;
};

} // namespace jet
