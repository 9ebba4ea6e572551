// jet/check/row_set.h — a set of row places: 32 bytes for each page that has any, however many rows it has.
#pragma once

#include "jet/value.h"

#include <array>
#include <unordered_map>

namespace jet {

class RowSet {
  public:
    bool insert(RowId row) { // false: it was there
        uint64_t& word = pages_[row.page][row.row / 64];
        const bool isNew = !(word & bit(row));
        word |= bit(row);
        return isNew;
    }
    bool erase(RowId row) { // false: it was not there
        const auto page = pages_.find(row.page);
        if (page == pages_.end() || !(page->second[row.row / 64] & bit(row))) return false;
        page->second[row.row / 64] &= ~bit(row);
        return true;
    }
    bool contains(RowId row) const {
        const auto page = pages_.find(row.page);
        return page != pages_.end() && (page->second[row.row / 64] & bit(row));
    }
    template <class F> void forEach(F visit) const {
        for (const auto& [page, words] : pages_)
            for (unsigned row = 0; row < 256; ++row)
                if (words[row / 64] >> row % 64 & 1) visit(RowId{page, static_cast<uint8_t>(row)});
    }

  private:
    static uint64_t bit(RowId row) { return uint64_t{1} << row.row % 64; }
    std::unordered_map<uint32_t, std::array<uint64_t, 4>> pages_;
};

} // namespace jet
