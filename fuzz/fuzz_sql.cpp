// fuzz/fuzz_sql — hostile SQL text on a small database. Only jet::Error may come out.
#include "jet/database.h"
#include "jet/pages/io_memory.h"
#include "jet/sql/session.h"

#include <array>
#include <cstdint>

namespace {

std::unique_ptr<jet::Database> smallDatabase() {
    jet::CreateOptions options;
    options.io = std::make_shared<jet::MemoryIo>();
    auto database = jet::Database::create("/fuzz.mdb", options);
    jet::SqlSession sql(*database);
    sql.execute("CREATE TABLE Ogr (No TEXT(15), Ad TEXT(20), Puan DOUBLE, Tarih DATETIME, Ucret CURRENCY, "
                "Evet YESNO)");
    sql.execute("CREATE UNIQUE INDEX indNo ON Ogr (No)");
    for (const char* no : {"1001", "1002", "1003"})
        sql.execute("INSERT INTO Ogr VALUES (?, 'Gül', 85, #2026-11-22#, 12.5, TRUE)",
                    std::array{jet::Value(no)});
    return database;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size > 4096) return 0;
    const auto database = smallDatabase();
    jet::SqlSession sql(*database);
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    try {
        sql.query(text);
    } catch (const jet::Error&) { // refused as it should be
    }
    try {
        sql.execute(text);
    } catch (const jet::Error&) {
    }
    return 0;
}
