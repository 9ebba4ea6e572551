// tests/proof/repair/judge.h — repairs one harmed file and says what is wrong with the result: rows missing
// that no harm touched, a result that the check refuses, a source that changed.
#pragma once

#include "proof/repair/damage.h"
#include "proof/repair/known_file.h"

#include <filesystem>
#include <functional>

namespace proof_repair {

struct Figures {
    size_t trials = 0, refused = 0, faults = 0; // refused: nothing was owed and nothing could be saved
    uint64_t rowsOwed = 0;                      // rows on pages that no harm touched
    uint64_t rowsTouched = 0, touchedSaved = 0; // rows that lie, in part or whole, on harmed pages
    uint64_t rowsForeign = 0;                   // in the result, not in the sound file: changed by flips
    uint64_t shownByMdbTools = 0;
    double worstMs = 0, allMs = 0;

    void add(const Figures& more);
};

class Judge {
  public:
    explicit Judge(std::function<void(const std::string&)> complain) : complain_(std::move(complain)) {}

    // `withMdbTools`: the result is also read by mdb-export.
    void tryRepair(const KnownFile& known, const Damage& damage, bool withMdbTools);
    const Figures& figures() const { return figures_; }

  private:
    void compareRows(const KnownFile& known, const Damage& damage,
                     std::unordered_map<std::string, RowCounts> found, const std::string& what);
    void fault(const std::string& what, const std::string& text);
    void compareWithMdbTools(jet::Database& database, std::vector<uint8_t> bytes, const std::string& what);

    std::function<void(const std::string&)> complain_;
    Figures figures_;
};

} // namespace proof_repair
