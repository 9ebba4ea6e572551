// fuzz/small_databases.h: each is made in memory and taken as it lies there.
#include "small_databases.h"

#include "jet/format/database_header.h"
#include "jet/sql/session.h"

#include <algorithm>
#include <functional>

namespace fuzz {

namespace {

using Fill = std::function<void(jet::Database&)>;

Bytes made(const Fill& fill, const std::string& password = {}) {
    const auto io = std::make_shared<jet::MemoryIo>();
    jet::CreateOptions options;
    options.io = io;
    options.password = password;
    {
        const auto database = jet::Database::create(kPath, options);
        fill(*database);
    }
    return io->contents(kPath);
}

void run(jet::Database& database, std::initializer_list<const char*> statements) {
    jet::SqlSession sql(database);
    for (const char* statement : statements)
        sql.execute(statement);
}

void nothing(jet::Database&) {}

void people(jet::Database& database) {
    run(database,
        {"CREATE TABLE Ogr (No LONG CONSTRAINT pk PRIMARY KEY, Ad TEXT(40), Puan DOUBLE, Evet YESNO)",
         "CREATE INDEX adaGore ON Ogr (Ad DESC, Puan)"});
    jet::Table table = database.openTable("Ogr");
    for (int i = 0; i < 40; ++i)
        table.insert(
            std::vector<jet::Value>{i, "Öğrenci " + std::to_string(i * 37 % 40), i / 4.0, i % 2 == 0});
    for (int i = 0; i < 3; ++i)
        if (table.moveFirst()) table.remove();
}

// Values inline, on one page and in chains; rows that moved and left a pointer.
void longValues(jet::Database& database) {
    run(database, {"CREATE TABLE Metin (No LONG, Dar TEXT(255), Uzun MEMO, Nesne OLEOBJECT)"});
    jet::Table table = database.openTable("Metin");
    std::vector<jet::RowId> rows;
    for (const size_t length :
         {0u, 20u, 500u, 3000u, 9000u, 40u, 40u, 40u, 40u, 40u, 40u, 40u, 40u, 40u, 40u, 40u, 40u})
        rows.push_back(
            table.insert(std::vector<jet::Value>{static_cast<int32_t>(length), std::string(100, 'd'),
                                                 std::string(length, 'm'), jet::Bytes(length, 0x4F)}));
    const bool onlyText[] = {false, true, false, false};
    for (size_t i = 0; i < rows.size(); i += 3)
        table.update(rows[i], std::vector<jet::Value>{{}, std::string(255, 'D'), {}, {}}, onlyText);
}

// Keys so long that two fill a page: three levels with a few rows; and a tree of several leaves with short
// ones.
void deepTrees(jet::Database& database) {
    run(database, {"CREATE TABLE Derin (A TEXT(255), B TEXT(255), C LONG)",
                   "CREATE INDEX uzun ON Derin (A, B)", "CREATE UNIQUE INDEX kisa ON Derin (C)"});
    jet::Table table = database.openTable("Derin");
    for (int i = 0; i < 14; ++i) {
        const auto letter = static_cast<char>('a' + i * 5 % 14);
        table.insert(std::vector<jet::Value>{std::string(255, letter), std::string(250, 'x'), i});
    }
}

void manyLeaves(jet::Database& database) {
    run(database, {"CREATE TABLE Sira (N LONG)", "CREATE INDEX n ON Sira (N)"});
    const jet::WriteBatch all(database);
    jet::Table table = database.openTable("Sira");
    for (int i = 0; i < 1000; ++i)
        table.insert(std::vector<jet::Value>{i * 7919 % 1000});
}

std::string longName(size_t number) { return "Alan " + std::to_string(number) + std::string(50, '_'); }

// A definition over several pages, dropped fields, defaults and other properties.
void wideTable(jet::Database& database) {
    std::vector<jet::FieldDef> fields(40);
    constexpr jet::Type types[] = {jet::Type::Text, jet::Type::Long,     jet::Type::Boolean,
                                   jet::Type::Memo, jet::Type::Currency, jet::Type::Date,
                                   jet::Type::Byte, jet::Type::Guid,     jet::Type::Single,
                                   jet::Type::Ole,  jet::Type::Binary,   jet::Type::Integer};
    for (size_t i = 0; i < fields.size(); ++i) {
        fields[i].name = longName(i);
        fields[i].type = types[i % std::size(types)];
        if (fields[i].type == jet::Type::Text) fields[i].defaultValue = "\"öndeğer\"";
    }
    fields[1].autoNumber = true;
    database.createTable("Genis", fields);
    jet::Table table = database.openTable("Genis");
    for (int i = 0; i < 3; ++i)
        table.insert(std::vector<jet::Value>(fields.size()));
    for (const size_t i : {size_t{5}, size_t{12}, fields.size() - 1})
        database.dropField("Genis", longName(i));
}

Bytes encoded(Bytes file) {
    jet::DatabaseHeader header = jet::readHeader(file);
    header.encodingKey = 0x1234ABCD;
    const std::span<uint8_t> bytes(file);
    const size_t size = jet::kJet4.pageSize;
    jet::initialiseHeader(bytes.first(size), header);
    const auto codec = jet::makePageCodec(header.encodingKey);
    for (size_t page = 1; (page + 1) * size <= file.size(); ++page)
        codec->encode(static_cast<uint32_t>(page), bytes.subspan(page * size, size));
    return file;
}

// A commit that died after its first page: the journal counts.
Bytes interrupted() {
    HostileFile parts;
    parts.file = made(people);
    const auto io = putInMemory(parts);
    {
        const auto database = jet::Database::open(kPath, openOptions(io));
        io->setHook([written = 0](const jet::MemoryIo::Step& step) mutable {
            using Op = jet::MemoryIo::Op;
            const bool changes = step.op == Op::Write || step.op == Op::Truncate || step.op == Op::Remove;
            if (changes && (written > 1 || (step.op == Op::Write && step.path == kPath && ++written > 1)))
                throw jet::Error(jet::Err::DiskIO, "Yarıda kaldı.");
        });
        refusable([&] {
            run(*database, {"UPDATE Ogr SET Ad='Yeni', Puan=1", "SELECT * INTO Kopya FROM Ogr"});
        });
        parts.file = io->contents(kPath);
        parts.journal = io->contents(std::string(kPath) + "-journal");
        parts.lock = io->contents("/fuzz.ldb");
    }
    parts.lock.resize(std::min<size_t>(parts.lock.size(), 256));
    return join(parts);
}

Bytes olderHeader() {
    Bytes file = made(nothing);
    file[0x14] = 0;
    return file;
}

Bytes withSteps(const Fill& fill, Bytes steps) {
    HostileFile parts;
    parts.file = made(fill);
    parts.steps = std::move(steps);
    return join(parts);
}

} // namespace

Bytes sqlDatabase() {
    return made([](jet::Database& database) {
        run(database,
            {"CREATE TABLE Ogr (No TEXT(15), Ad TEXT(20), Puan DOUBLE, Tarih DATETIME, Ucret CURRENCY, "
             "Evet YESNO, Sira LONG, Ek MEMO)",
             "CREATE UNIQUE INDEX indNo ON Ogr (No)", "CREATE INDEX indSira ON Ogr (Sira, Ad DESC)",
             "CREATE TABLE Notlar (No TEXT(15), Ders TEXT(10), Puan SHORT, Oran SINGLE, Tur BYTE)",
             "CREATE INDEX indDers ON Notlar (No, Ders)", "CREATE TABLE Bos (A LONG, B TEXT(5))",
             "INSERT INTO Ogr VALUES ('1001', 'Gül', 85, #2026-11-22#, 12.5, TRUE, 1, 'uzun not')",
             "INSERT INTO Ogr VALUES ('1002', 'İnci', 45.5, #2008-09-15 10:30:00#, 0, FALSE, 2, NULL)",
             "INSERT INTO Ogr VALUES ('1003', 'ışık ', NULL, NULL, -3.25, TRUE, NULL, '')",
             "INSERT INTO Notlar VALUES ('1001', 'MAT', 70, 0.5, 1)",
             "INSERT INTO Notlar VALUES ('1001', 'TÜR', 90, 1.5, 2)",
             "INSERT INTO Notlar VALUES ('1002', 'MAT', NULL, 2.25, 3)"});
    });
}

std::vector<std::pair<std::string, Bytes>> seedFiles() {
    return {
        {"empty", made(nothing)},
        {"people", made(people)},
        {"long-values", made(longValues)},
        {"deep-trees", made(deepTrees)},
        {"many-leaves", made(manyLeaves)},
        {"wide-table", made(wideTable)},
        {"password", made(people, kPassword)},
        {"encoded", encoded(made(people))},
        {"interrupted", interrupted()},
        {"older-header", olderHeader()},
        {"steps-rows", withSteps(people, {130, 131, 132, 133, 137, 130})},
        {"steps-structure", withSteps(longValues, {44, 45, 48, 44, 40})},
    };
}

} // namespace fuzz
