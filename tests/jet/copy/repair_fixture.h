// tests/jet/copy/repair_fixture.h — a small file of ours in memory, ways to harm it, and what repair makes of
// it.
#pragma once

#include "jet/check/check.h"
#include "jet/copy/repair.h"
#include "jet/database.h"
#include "jet/format/bytes.h"
#include "jet/format/data_page.h"
#include "jet/pages/io_memory.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>

namespace repair_test {

using namespace jet;

inline constexpr size_t kPage = 4096;
inline constexpr int kStudents = 120, kClasses = 12;

inline FieldDef field(const char* name, Type type, uint16_t size = 0) {
    FieldDef made;
    made.name = name;
    made.type = type;
    made.size = size;
    return made;
}

inline IndexDef key(const char* name) {
    IndexDef made;
    made.name = name;
    made.fields = {{0, false}};
    made.primary = made.unique = made.required = true;
    return made;
}

// Ogrenci: a key, a date, a memo for each row (every 5th a chain); Sinif: small.
inline std::vector<uint8_t> makeFile(const std::string& password = {}) {
    const auto io = std::make_shared<MemoryIo>();
    CreateOptions options;
    options.io = io;
    options.password = password;
    const auto database = Database::create("okul.mdb", options);
    database->createTable("Ogrenci",
                          {field("No", Type::Long), field("Ad", Type::Text, 200), field("Tarih", Type::Date),
                           field("Not", Type::Memo)},
                          {key("Anahtar")});
    database->createTable("Sinif", {field("Kod", Type::Long), field("Ad", Type::Text, 50)}, {key("Anahtar")});
    Table students = database->openTable("Ogrenci"), classes = database->openTable("Sinif");
    for (int i = 0; i < kStudents; ++i)
        students.insert(
            std::vector<Value>{i, "Öğrenci " + std::to_string(i), Date{40000.0 + i},
                               std::string(i % 5 == 0 ? 6000u : 100u, static_cast<char>('a' + i % 26))});
    for (int i = 0; i < kClasses; ++i)
        classes.insert(std::vector<Value>{i, "Sınıf " + std::to_string(i)});
    return io->contents("okul.mdb");
}

class Repair : public testing::Test {
  protected:
    Repair() {
        static const std::vector<uint8_t> sound = makeFile();
        bytes = sound;
    }

    std::span<uint8_t> page(size_t number) { return std::span(bytes).subspan(number * kPage, kPage); }
    size_t pageCount() const { return bytes.size() / kPage; }
    // The definition page of a table of the file as it is now.
    PageNo definitionOf(const char* table) {
        const auto io = std::make_shared<MemoryIo>();
        io->put("x.mdb", bytes);
        return open(io, "x.mdb")->tableDef(table).page;
    }
    // Data pages that carry this owner's mark.
    std::vector<size_t> pagesOf(uint32_t owner) {
        std::vector<size_t> found;
        for (size_t i = 1; i < pageCount(); ++i)
            if (page(i)[0] == PageType::kData && get32(page(i), kJet4.dataOwner) == owner) found.push_back(i);
        return found;
    }
    // The bytes of one row.
    std::span<uint8_t> row(size_t pageNumber, uint16_t slot) {
        const Slot at = data_page::slot(kJet4, page(pageNumber), slot);
        return page(pageNumber).subspan(at.start, at.length);
    }

    static std::unique_ptr<Database> open(const std::shared_ptr<MemoryIo>& io, const char* name,
                                          bool readOnly = true) {
        OpenOptions options;
        options.io = io;
        options.readOnly = readOnly;
        options.ignorePassword = true;
        return Database::open(name, options);
    }

    // Repairs `bytes` and looks over what every repair must hold.
    const RepairReport& repair(const RepairOptions& given = {}) {
        io = std::make_shared<MemoryIo>();
        io->put("bozuk.mdb", bytes);
        RepairOptions options = given;
        options.io = io;
        result.reset();
        report = repairDatabase("bozuk.mdb", "yeni.mdb", options);
        EXPECT_EQ(io->contents("bozuk.mdb"), bytes) << "the source was changed";
        EXPECT_EQ(io->names().size(), report.stopped ? 1u : 2u) << "something was left behind";
        if (report.stopped) return report;
        result = open(io, "yeni.mdb");
        for (const Fault& fault : checkDatabase(*result).faults)
            ADD_FAILURE() << fault.table << ", page " << fault.page << ": " << fault.text;
        return report;
    }

    std::vector<std::vector<Value>> rowsOf(const std::string& table) {
        const ReadScope read(result->pages());
        Table from = result->openTable(table);
        std::vector<std::vector<Value>> rows;
        Scan scan = from.scan();
        while (scan.next()) {
            rows.emplace_back();
            for (size_t i = 0; i < from.def().fields.size(); ++i)
                rows.back().push_back(scan.value(i));
        }
        return rows;
    }
    const RepairedTable& told(const std::string& name) const {
        const auto found = std::ranges::find(report.tables, name, &RepairedTable::name);
        if (found == report.tables.end()) throw std::runtime_error("not told: " + name);
        return *found;
    }

    std::vector<uint8_t> bytes;
    std::shared_ptr<MemoryIo> io;
    std::unique_ptr<Database> result;
    RepairReport report;
};

} // namespace repair_test
