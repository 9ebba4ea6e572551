// tests/jet/copy/messy_database.h — a database in memory with all that a compaction must carry over and all
// that it must leave behind: dropped fields, deleted and moved rows, freed long values.
#pragma once

#include "jet/database.h"
#include "jet/format/layout.h"
#include "jet/pages/io_memory.h"

#include <algorithm>
#include <array>

namespace copy_test {

inline const std::filesystem::path kIn = "/bellek/merkez.mdb", kOut = "/bellek/yeni.mdb";

inline jet::FieldDef field(const char* name, jet::Type type, uint16_t size = 0) {
    jet::FieldDef def;
    def.name = name;
    def.type = type;
    def.size = size;
    return def;
}

inline jet::IndexDef index(const char* name, std::vector<jet::IndexField> fields, bool unique = false,
                           bool primary = false) {
    jet::IndexDef def;
    def.name = name;
    def.fields = std::move(fields);
    def.unique = unique;
    def.primary = primary;
    return def;
}

inline std::unique_ptr<jet::Database> openIn(const std::shared_ptr<jet::MemoryIo>& io,
                                             const std::filesystem::path& path,
                                             const std::string& password = {}, bool readOnly = true) {
    return jet::Database::open(path, {.password = password, .readOnly = readOnly, .io = io});
}

inline void change(jet::Table& table, jet::RowId row, size_t field, jet::Value value) {
    std::vector<jet::Value> values(table.def().fields.size());
    std::array<bool, jet::kMaxFields> changed{};
    values[field] = std::move(value);
    changed[field] = true;
    table.update(row, values, {changed.data(), values.size()});
}

// "Öğrenci": keys given in descending order, every third row deleted, every fifth grown; the last autonumber
// given is of a deleted row. "Boş" has no rows.
inline std::shared_ptr<jet::MemoryIo> messyDatabase(int rows = 300, const jet::CreateOptions& wanted = {}) {
    using jet::Type;
    auto io = std::make_shared<jet::MemoryIo>();
    jet::CreateOptions options = wanted;
    options.io = io;
    const auto database = jet::Database::create(kIn, options);
    jet::FieldDef number = field("Sıra", Type::Long);
    number.autoNumber = true;
    jet::FieldDef name = field("Ad", Type::Text, 60);
    name.required = true;
    name.allowZeroLength = false;
    jet::FieldDef paid = field("Tutar", Type::Currency);
    paid.defaultValue = "12";
    database->createTable("Öğrenci",
                          {field("No", Type::Long), field("Eski", Type::Text, 200), name, number,
                           field("Not", Type::Memo), paid, field("EskiSayı", Type::Double),
                           field("Aktif", Type::Boolean)},
                          {index("PrimaryKey", {{0}}, true, true), index("indAd", {{2, true}, {5}}),
                           index("indSıra", {{3}}, true)});
    database->createTable("Boş", {field("Kod", Type::Text, 8)}, {index("indKod", {{0}})});
    jet::WriteBatch batch(*database);
    jet::Table table = database->openTable("Öğrenci");
    constexpr bool given[] = {true, true, true, false, true, true, true, true};
    std::vector<jet::RowId> ids;
    for (int i = rows; i > 0; --i)
        ids.push_back(table.insert(std::vector<jet::Value>{i,
                                                           std::string(50, 'e'),
                                                           "Öğrenci " + std::to_string(i % 40),
                                                           {},
                                                           std::string(static_cast<size_t>(i % 90) * 60, 'n'),
                                                           jet::Currency{i * 2500},
                                                           i / 3.0,
                                                           i % 2 == 0},
                                   given));
    for (size_t i = 0; i < ids.size(); i += 5)
        change(table, ids[i], 1, std::string(200, 'f'));
    for (size_t i = ids.size(); i-- > 0; i -= std::min<size_t>(i, 2))
        table.remove(ids[i]);
    batch.commit();
    database->dropField("Öğrenci", "Eski");
    database->dropField("Öğrenci", "EskiSayı");
    return io;
}

} // namespace copy_test
