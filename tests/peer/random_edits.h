// tests/peer/random_edits.h — random inserts, updates and deletes on any table, mirrored in a model in
// memory.
#pragma once

#include "jet/database.h"

#include <map>
#include <random>
#include <vector>

namespace peer {

using Model = std::map<jet::RowId, std::vector<jet::Value>>;

// What the file holds now.
Model readModel(jet::Database& database, const std::string& table);

class RandomEdits {
  public:
    RandomEdits(jet::Database& database, const std::string& table, uint32_t seed);

    // One insert, update or delete; a refusal by the table's own rules (duplicate key, required field, …)
    // changes neither the file nor the model. `growth` > 0.5 makes the table grow.
    void step(double growth = 0.5);
    const Model& model() const { return model_; }
    size_t refusals() const { return refusals_; }

  private:
    jet::Value randomValue(const jet::FieldDef& field);
    std::string randomText(size_t most);
    bool editable(const jet::FieldDef& field) const;
    void insertRow();
    void updateRow(jet::RowId id);
    size_t below(size_t bound) { return std::uniform_int_distribution<size_t>(0, bound - 1)(random_); }

    jet::Table table_;
    std::vector<jet::FieldDef> fields_;
    Model model_;
    std::vector<jet::RowId> ids_; // of the model, for picking
    std::mt19937 random_;
    size_t refusals_ = 0;
};

} // namespace peer
