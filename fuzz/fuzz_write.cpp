// fuzz/fuzz_write — a hostile file opened for writing: rows come, change and go, structure changes,
// statements run, alone and in batches. What the engine refuses it refuses whole, and the file never grows
// without bound.
#include "hostile_file.h"
#include "jet/sql/session.h"

#include <algorithm>

namespace {

using fuzz::refusable;

jet::Value valueFor(const jet::FieldDef& field, int32_t salt) {
    switch (field.type) {
    case jet::Type::Boolean: return salt % 2 == 0;
    case jet::Type::Byte: return salt % 200;
    case jet::Type::Date: return jet::Date{40000.5 + salt};
    case jet::Type::Text:
        return std::string(std::min<size_t>(field.size, 3), static_cast<char>('a' + salt % 26));
    case jet::Type::Memo: return std::string(static_cast<size_t>(salt % 3) * 3000 + 1, 'm');
    case jet::Type::Binary:
    case jet::Type::Ole: return jet::Bytes(static_cast<size_t>(salt % 3) * 20 + 1, 0x55);
    case jet::Type::Guid: return jet::Guid{};
    case jet::Type::Numeric: return jet::Numeric{};
    default: return salt;
    }
}

std::vector<jet::Value> rowFor(const jet::TableDef& def, int32_t salt) {
    std::vector<jet::Value> row;
    for (const jet::FieldDef& field : def.fields)
        row.push_back(salt % 5 == 4 ? jet::Value() : valueFor(field, salt));
    return row;
}

class Writer {
  public:
    Writer(jet::Database& database, std::string table, int32_t salt)
        : db_(database), name_(std::move(table)), salt_(salt) {}

    void insert() {
        jet::Table table = db_.openTable(name_);
        for (int32_t i = 0; i < 8; ++i)
            refusable([&] { table.insert(rowFor(table.def(), salt_ + i)); });
    }
    void update() {
        jet::Table table = db_.openTable(name_);
        const std::vector<jet::RowId> rows = someRows(table);
        const auto all = std::make_unique<bool[]>(jet::kMaxFields);
        std::fill_n(all.get(), jet::kMaxFields, true);
        for (size_t i = 0; i < rows.size(); ++i)
            refusable([&] {
                const auto values = rowFor(table.def(), salt_ + static_cast<int32_t>(i));
                table.update(rows[i], values, std::span(all.get(), values.size()));
            });
    }
    void remove() {
        jet::Table table = db_.openTable(name_);
        for (const jet::RowId row : someRows(table))
            refusable([&] { table.remove(row); });
    }
    void current() { // as a screen does it
        jet::Table table = db_.openTable(name_);
        if (!table.def().indexes.empty()) table.setIndex(table.def().indexes.front().name);
        const std::string field = firstField();
        if (table.moveFirst()) {
            table.edit();
            table.set(field, valueFor(db_.tableDef(name_).field(field), salt_));
            table.update();
        }
        table.addNew();
        table.set(field, valueFor(db_.tableDef(name_).field(field), salt_ + 1));
        table.update();
        if (table.moveLast()) table.remove();
    }
    void fields() {
        jet::FieldDef field;
        field.name = "Yeni";
        field.type = salt_ % 2 == 0 ? jet::Type::Memo : jet::Type::Long;
        refusable([&] { db_.addField(name_, field); });
        refusable([&] { db_.renameField(name_, firstField(), "Eski"); });
        field.type = jet::Type::Text;
        field.size = 50;
        refusable([&] { db_.alterField(name_, firstField(), field); });
        refusable([&] { db_.dropField(name_, db_.tableDef(name_).fields.back().name); });
    }
    void indexes() {
        jet::IndexDef index;
        index.name = "Yeni";
        index.fields = {{0, salt_ % 2 == 0}};
        index.unique = salt_ % 3 == 0;
        refusable([&] { db_.createIndex(name_, index); });
        const auto& known = db_.tableDef(name_).indexes;
        if (!known.empty()) db_.dropIndex(name_, std::string(known.front().name));
    }
    void tables() {
        refusable([&] { db_.renameTable(name_, "Baska"); });
        refusable([&] { db_.dropTable(salt_ % 2 == 0 ? name_ : "Baska"); });
        jet::FieldDef field;
        field.name = "Ad";
        db_.createTable("Yepyeni", {field});
    }
    void password() { db_.changePassword(db_.header().password, salt_ % 2 == 0 ? "abc" : ""); }
    void statements() {
        jet::SqlSession sql(db_);
        const std::string table = "[" + name_ + "]", field = "[" + firstField() + "]";
        for (const std::string& text :
             {"UPDATE " + table + " SET " + field + "=NULL",
              "DELETE FROM " + table + " WHERE " + field + " IS NULL",
              "INSERT INTO " + table + " (" + field + ") VALUES (5)", "SELECT * INTO Kopya FROM " + table})
            refusable([&] { sql.execute(text); });
    }
    void batch() {
        jet::WriteBatch all(db_);
        refusable([&] { insert(); });
        refusable([&] { remove(); });
        all.commit();
    }

  private:
    // A name that no table has where the table has no field.
    std::string firstField() {
        const jet::TableDef def = db_.tableDef(name_);
        return def.fields.empty() ? "Yok" : def.fields.front().name;
    }
    std::vector<jet::RowId> someRows(jet::Table& table) {
        std::vector<jet::RowId> rows;
        refusable([&] {
            const jet::ReadScope read(db_.pages());
            for (jet::Scan scan = table.scan(); rows.size() < 8 && scan.next();)
                rows.push_back(scan.id());
        });
        return rows;
    }

    jet::Database& db_;
    std::string name_;
    int32_t salt_;
};

constexpr void (Writer::*kSteps[])() = {
    &Writer::insert,  &Writer::update,     &Writer::remove, &Writer::current, &Writer::fields,
    &Writer::indexes, &Writer::statements, &Writer::batch,  &Writer::tables,  &Writer::password};
constexpr size_t kMostSteps = 24, kStepBytes = 1u << 20;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const fuzz::TimeBound bound;
    fuzz::HostileFile parts = fuzz::split({data, size});
    const auto io = fuzz::putInMemory(parts);
    std::unique_ptr<jet::Database> database;
    if (!refusable([&] { database = jet::Database::open(fuzz::kPath, fuzz::openOptions(io)); })) return 0;
    if (parts.steps.empty())
        for (uint8_t i = 0; i < std::size(kSteps); ++i)
            parts.steps.push_back(i);
    size_t allowed = 8 * size; // tables are built anew, copied; each row adds its long values
    parts.steps.resize(std::min(parts.steps.size(), kMostSteps));
    for (const uint8_t step : parts.steps) {
        std::vector<std::string> names = fuzz::allTables(*database);
        if (names.empty()) break;
        Writer writer(*database, names[step / std::size(kSteps) % names.size()], step);
        refusable([&] { (writer.*kSteps[step % std::size(kSteps)])(); });
        allowed += kStepBytes;
        fuzz::require(io->contents(fuzz::kPath).size() <= allowed, "steps grow the file a little");
    }
    return 0;
}
