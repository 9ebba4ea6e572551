#include "peer/random_edits.h"

#include <algorithm>
#include <array>
#include <memory>

namespace peer {

Model readModel(jet::Database& database, const std::string& name) {
    const jet::ReadScope read(database.pages());
    jet::Table table = database.openTable(name);
    const size_t fields = table.def().fields.size();
    Model model;
    for (jet::Scan scan = table.scan(); scan.next();) {
        std::vector<jet::Value> values;
        for (size_t i = 0; i < fields; ++i)
            values.push_back(scan.value(i));
        model.emplace(scan.id(), std::move(values));
    }
    return model;
}

RandomEdits::RandomEdits(jet::Database& database, const std::string& table, uint32_t seed)
    : table_(database.openTable(table)), fields_(table_.def().fields), model_(readModel(database, table)),
      random_(seed) {
    for (const auto& [id, values] : model_)
        ids_.push_back(id);
}

bool RandomEdits::editable(const jet::FieldDef& field) const {
    return field.type != jet::Type::Guid && field.type != jet::Type::Numeric && !field.autoNumber &&
           jet::Type::Boolean <= field.type && field.type <= jet::Type::Memo;
}

std::string RandomEdits::randomText(size_t most) {
    static constexpr std::array<const char*, 16> kPieces{"a", "B", "ı", "İ", "ğ", "Ş", "ö",  "Ü",
                                                         "ç", "0", "7", " ", "'", "-", "\"", "z"};
    const size_t length = below(most + 1);
    std::string text;
    for (size_t i = 0; i < length; ++i)
        text += kPieces[below(kPieces.size())];
    return text;
}

jet::Value RandomEdits::randomValue(const jet::FieldDef& field) {
    using jet::Type;
    using jet::Value;
    if (field.type != Type::Boolean && below(8) == 0) return {};
    const auto whole = static_cast<int32_t>(random_());
    switch (field.type) {
    case Type::Boolean: return below(2) == 1;
    case Type::Byte: return static_cast<int32_t>(below(256));
    case Type::Integer: return static_cast<int32_t>(static_cast<int16_t>(whole));
    case Type::Long: return whole;
    case Type::Currency: return jet::Currency{static_cast<int64_t>(whole) * 977};
    case Type::Single: return static_cast<float>(whole) / 64.0f;
    case Type::Double: return static_cast<double>(whole) / 7.0;
    case Type::Date:
        return jet::Date{static_cast<double>(20000 + below(30000)) + static_cast<double>(below(24)) / 24.0};
    case Type::Memo: return randomText(below(10) == 0 ? 9000 : 80);
    case Type::Text: return randomText(field.size);
    default: {
        jet::Bytes bytes(
            field.type == Type::Ole && below(10) == 0 ? 20'000 : 1 + below(std::max<size_t>(field.size, 1)));
        for (uint8_t& byte : bytes)
            byte = static_cast<uint8_t>(random_());
        return bytes;
    }
    }
}

void RandomEdits::insertRow() {
    std::vector<jet::Value> values(fields_.size());
    const auto given = std::make_unique<bool[]>(fields_.size());
    for (size_t i = 0; i < fields_.size(); ++i) {
        given[i] = editable(fields_[i]);
        if (given[i]) values[i] = randomValue(fields_[i]);
    }
    const jet::RowId id = table_.insert(values, {given.get(), fields_.size()});
    const std::vector<jet::Value> stored = table_.read(id);
    for (size_t i = 0; i < fields_.size(); ++i) {
        if (given[i])
            values[i] = jet::convertTo(fields_[i], values[i]);
        else
            values[i] = stored[i]; // autonumber, default
    }
    model_[id] = std::move(values);
    ids_.push_back(id);
}

void RandomEdits::updateRow(jet::RowId id) {
    std::vector<jet::Value> values = model_.at(id);
    const auto changed = std::make_unique<bool[]>(fields_.size());
    for (size_t i = 0; i < fields_.size(); ++i) {
        changed[i] = editable(fields_[i]) && below(3) == 0;
        if (changed[i]) values[i] = jet::convertTo(fields_[i], randomValue(fields_[i]));
    }
    table_.update(id, values, {changed.get(), fields_.size()});
    model_[id] = std::move(values);
}

void RandomEdits::step(double growth) {
    try {
        const double dice = std::uniform_real_distribution<double>(0, 1)(random_);
        if (ids_.empty() || dice < growth * 0.8) return insertRow();
        const size_t at = below(ids_.size());
        if (dice < 0.8) return updateRow(ids_[at]);
        table_.remove(ids_[at]);
        model_.erase(ids_[at]);
        ids_[at] = ids_.back();
        ids_.pop_back();
    } catch (const jet::Error& error) {
        switch (error.number()) {
        case jet::Err::DuplicateKey:
        case jet::Err::IndexNullKey:
        case jet::Err::RequiredNull:
        case jet::Err::ZeroLength:
        case jet::Err::RecordTooLarge: ++refusals_; break;
        default: throw;
        }
    }
}

} // namespace peer
