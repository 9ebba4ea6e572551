#include "grades_data.h"
#include "grades_engines.h"

#include "jet/database.h"
#include "jet/sql/session.h"

#include <array>
#include <cmath>

namespace bench {
namespace {

using jet::Type;
using jet::Value;

jet::FieldDef field(const char* name, Type type, uint16_t size = 0) {
    jet::FieldDef def;
    def.name = name;
    def.type = type;
    def.size = size;
    return def;
}

std::vector<jet::FieldDef> gradeFields() {
    return {
        field("Id", Type::Long),          field("OgrNo", Type::Text, 15),    field("Ad", Type::Text, 30),
        field("Soyad", Type::Text, 30),   field("DersKodu", Type::Text, 10), field("DersAdi", Type::Text, 50),
        field("DersYili", Type::Text, 9), field("Donem", Type::Integer),     field("Saat", Type::Byte),
        field("Sozlu1", Type::Text, 3),   field("Sozlu2", Type::Text, 3),    field("Yazili1", Type::Text, 3),
        field("Yazili2", Type::Text, 3),  field("Yazili3", Type::Text, 3),   field("Yilsonu", Type::Text, 3),
        field("Ortalama", Type::Double),  field("Ucret", Type::Currency),    field("Tarih", Type::Date)};
}

std::vector<jet::IndexDef> gradeIndexes() {
    jet::IndexDef unique;
    unique.name = "indId";
    unique.fields = {{0, false}};
    unique.unique = true;
    jet::IndexDef pair;
    pair.name = "indOgrDonem";
    pair.fields = {{1, false}, {7, false}};
    return {unique, pair};
}

void addText(std::string_view text, Work& work) {
    work.checksum += text.size();
    if (!text.empty()) work.checksum += static_cast<unsigned char>(text.front());
}

// Every field of a row, by its typed getter.
void addRow(const jet::Scan& scan, std::string& scratch, Work& work) {
    const jet::RowView& row = scan.row();
    const auto& fields = row.def().fields;
    for (size_t i = 0; i < fields.size(); ++i) {
        if (row.isNull(i)) continue;
        switch (fields[i].type) {
        case Type::Text: addText(row.text(i, scratch), work); break;
        case Type::Currency: work.checksum += static_cast<uint64_t>(row.currency(i).tenThousandths); break;
        case Type::Double:
        case Type::Date: work.checksum += static_cast<uint64_t>(std::llround(row.real(i) * 100)); break;
        default: work.checksum += static_cast<uint64_t>(row.integer(i));
        }
    }
    ++work.rows;
}

void addResult(const jet::ResultSet& result, Work& work) {
    for (size_t row = 0; row < result.rowCount(); ++row) {
        for (size_t i = 0; i < result.columns().size(); ++i) {
            const Value& value = result.at(row, i);
            if (const auto* text = value.get<std::string>())
                addText(*text, work);
            else if (const auto* money = value.get<jet::Currency>())
                work.checksum += static_cast<uint64_t>(money->tenThousandths);
            else if (const auto* number = value.get<int32_t>())
                work.checksum += static_cast<uint64_t>(*number);
            else
                work.checksum += static_cast<uint64_t>(std::llround(value.toDouble() * 100));
        }
        ++work.rows;
    }
}

class JetTables : public Engine {
  public:
    void insertAll(const std::filesystem::path& file) override {
        std::filesystem::remove(file);
        const auto database = jet::Database::create(file);
        database->createTable("Notlar", gradeFields(), gradeIndexes());
        jet::Table table = database->openTable("Notlar");
        jet::WriteBatch batch(*database);
        Grade g;
        std::array<Value, 18> values;
        for (int row = 0; row < kRows; ++row) {
            makeGrade(row, g);
            values = {g.id,
                      g.studentNo,
                      g.firstName,
                      g.surname,
                      g.courseCode,
                      g.courseName,
                      g.schoolYear,
                      g.term,
                      g.hours,
                      g.oral1,
                      g.oral2,
                      g.written1,
                      g.written2,
                      g.written3,
                      g.yearEnd,
                      g.average,
                      jet::Currency{g.feeTenThousandths},
                      jet::Date{g.enteredOn}};
            table.insert(values);
        }
        batch.commit();
    }

    Work scanAll(const std::filesystem::path& file) override {
        const auto database = jet::Database::open(file);
        const jet::ReadScope read(database->pages());
        jet::Table table = database->openTable("Notlar");
        Work work;
        std::string scratch;
        for (jet::Scan scan = table.scan(); scan.next();)
            addRow(scan, scratch, work);
        return work;
    }

    Work seekAll(const std::filesystem::path& file) override {
        const auto database = jet::Database::open(file);
        const jet::ReadScope read(database->pages());
        jet::Table table = database->openTable("Notlar");
        Work work;
        std::string scratch;
        for (int i = 0; i < kSeeks; ++i) {
            jet::KeyRange range;
            range.lower = {Value(studentNo(seekStudent(i))), Value(seekTerm(i))};
            range.upper = range.lower;
            for (jet::Scan scan = table.scan("indOgrDonem", range); scan.next();)
                addRow(scan, scratch, work);
        }
        return work;
    }
};

class JetSql : public JetTables {
  public:
    Work scanAll(const std::filesystem::path& file) override {
        const auto database = jet::Database::open(file);
        Work work;
        addResult(jet::SqlSession(*database).query("SELECT * FROM Notlar"), work);
        return work;
    }

    Work seekAll(const std::filesystem::path& file) override {
        const auto database = jet::Database::open(file);
        jet::SqlSession sql(*database);
        Work work;
        for (int i = 0; i < kSeeks; ++i) {
            const std::array<Value, 2> key{studentNo(seekStudent(i)), seekTerm(i)};
            addResult(sql.query("SELECT * FROM Notlar WHERE OgrNo = ? AND Donem = ?", key), work);
        }
        return work;
    }
};

} // namespace

Engine& jetTables() {
    static JetTables engine;
    return engine;
}
Engine& jetSql() {
    static JetSql engine;
    return engine;
}

} // namespace bench
