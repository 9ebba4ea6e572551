// model.h — what each worker does to the database and what must be found of it: small models that are changed
// by the same actions as the file.
#pragma once

#include "jet/database.h"
#include "jet/sql/session.h"

#include <cstdint>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace proof {

// Kayit(Anahtar, Surum, Ad, Aciklama): each worker has keys of its own; the texts follow from Surum.
// Yigin(Parti, Sira, Metin): each batch wholly or not at all. Gecici<worker>: made, changed and dropped
// again.
inline constexpr int kWorkers = 4, kKeys = 60;

enum class Deed : int32_t { Insert, Update, Delete, UpdateAll, BatchIn, BatchOut, Structure };

struct Action {
    Deed deed = Deed::Insert;
    int32_t key = 0;   // row or batch
    int32_t value = 0; // version, rows of the batch, or the next stage of the structure
};

struct Model {                        // of one worker
    std::map<int, int> rows, batches; // key -> version; batch -> rows
    int stage = 0;                    // of its own table, 0 = not there
    bool operator==(const Model&) const = default;
};
void apply(Model& model, const Action& action);
std::string difference(const Model& expected, const Model& found);

// Chooses what comes next; numbers are never used twice.
class Chooser {
  public:
    Chooser(int worker, uint32_t seed)
        : worker_(worker), dice_(seed), next_(static_cast<int>(seed % 100'000) * 1000) {}
    Action next(const Model& model);

  private:
    size_t below(size_t bound) { return dice_() % bound; }
    int worker_;
    std::mt19937 dice_;
    int next_;
};

void createDatabase(const std::filesystem::path& file);
void perform(jet::Database& database, jet::SqlSession& sql, int worker, const Action& action);

// Reads the whole file; what contradicts itself (a text that does not follow from its version, a batch with
// gaps, a table in no known stage) goes to `faults`.
std::vector<Model> readModels(jet::Database& database, std::vector<std::string>& faults);

} // namespace proof
