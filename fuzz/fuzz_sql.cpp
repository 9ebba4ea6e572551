// fuzz/fuzz_sql — hostile SQL text, with parameters, on a small database: run as a query, as a change,
// explained.
#include "hostile_file.h"
#include "jet/sql/session.h"
#include "small_databases.h"

#include <algorithm>
#include <array>

namespace {

constexpr size_t kMostTables = 6; // joined without condition they multiply their rows: honest work, no hang

size_t tablesNamed(std::string_view text) {
    size_t count = 0;
    for (const std::string_view name : {"ogr", "not", "bos"})
        for (size_t i = 0; i + name.size() <= text.size(); ++i)
            count += std::equal(name.begin(), name.end(), text.begin() + static_cast<ptrdiff_t>(i),
                                [](char a, char b) { return a == (b | 0x20); });
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const fuzz::TimeBound bound;
    static const fuzz::Bytes sound = fuzz::sqlDatabase();
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (size > 2048 || tablesNamed(text) > kMostTables) return 0;
    fuzz::HostileFile parts;
    parts.file = sound;
    const auto database = jet::Database::open(fuzz::kPath, fuzz::openOptions(fuzz::putInMemory(parts)));
    jet::SqlSession sql(*database);
    sql.setClock([] { return jet::Date::fromParts({2008, 9, 15, 10, 30, 0}); });
    const std::array<jet::Value, 4> parameters = {jet::Value(1001), "Gül*", jet::Value(),
                                                  jet::Date{40000.25}};
    for (const size_t count : {size_t{0}, parameters.size()}) {
        const auto given = std::span(parameters).first(count);
        fuzz::refusable([&] { jet::SqlSession::givesRows(text); });
        fuzz::refusable([&] { sql.explain(text, given); });
        fuzz::refusable([&] { sql.query(text, given); });
        fuzz::refusable([&] { sql.execute(text, given); });
    }
    return 0;
}
