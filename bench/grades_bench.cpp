// bench/grades_bench — the storage engine beside plain SQLite on a table of 240,000 grades.
// `grades_bench FILE_FOLDER [Google Benchmark options]`: the folder receives grades.mdb and grades.sqlite.
#include "grades_data.h"
#include "grades_engines.h"

#include "jet/database.h"

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

namespace {

namespace fs = std::filesystem;

void expectRows(size_t got, size_t wanted, benchmark::State& state) {
    if (got != wanted) state.SkipWithError("wrong number of rows");
}

struct Case {
    const char* name;
    bench::Engine& engine;
    const char* file;
};

void registerCases(const Case& c, const fs::path& folder) {
    const fs::path file = folder / c.file;
    const std::string name = c.name;
    const auto add = [](const std::string& title, std::function<void(benchmark::State&)> work, int repeats) {
        benchmark::RegisterBenchmark(title.c_str(), std::move(work))
            ->Unit(benchmark::kMillisecond)
            ->UseRealTime()
            ->Iterations(1)
            ->Repetitions(repeats)
            ->ReportAggregatesOnly();
    };
    if (name != "jet-sql")
        add(
            "insert/" + name,
            [&c, file](benchmark::State& s) {
                for (auto _ : s)
                    c.engine.insertAll(file);
                s.counters["checksum"] = 0; // the CSV form wants the same counters in every run
            },
            5);
    add(
        "scan/" + name,
        [&c, file](benchmark::State& s) {
            for (auto _ : s) {
                const bench::Work work = c.engine.scanAll(file);
                expectRows(work.rows, bench::kRows, s);
                benchmark::DoNotOptimize(work.checksum);
                s.counters["checksum"] = static_cast<double>(work.checksum % 1'000'000'007);
            }
        },
        9);
    add(
        "seek/" + name,
        [&c, file](benchmark::State& s) {
            for (auto _ : s) {
                const bench::Work work = c.engine.seekAll(file);
                expectRows(work.rows, static_cast<size_t>(bench::kSeeks) * bench::kCourses, s);
                s.counters["checksum"] = static_cast<double>(work.checksum % 1'000'000'007);
            }
        },
        9);
}

// A file past 100 MB: the grades table plus long texts.
fs::path makeBigFile(const fs::path& folder) {
    const fs::path file = folder / "big.mdb";
    fs::remove(file);
    const auto database = jet::Database::create(file);
    jet::FieldDef id, text;
    id.name = "Id", id.type = jet::Type::Long;
    text.name = "Metin", text.type = jet::Type::Memo;
    jet::IndexDef key;
    key.name = "indId", key.fields = {{0, false}}, key.unique = true;
    database->createTable("Buyuk", {id, text}, {key});
    jet::Table table = database->openTable("Buyuk");
    jet::WriteBatch batch(*database);
    const std::string longText(30'000, 'x');
    for (int i = 0; fs::file_size(file) + static_cast<size_t>(i) * 30'000 < (115u << 20); ++i) {
        const jet::Value values[] = {i, longText};
        table.insert(values);
    }
    batch.commit();
    return file;
}

void openBig(benchmark::State& state, const fs::path& file) {
    for (auto _ : state) {
        const auto database = jet::Database::open(file);
        benchmark::DoNotOptimize(database->tableDef("Buyuk").rowCount);
    }
    state.counters["checksum"] = 0;
    state.SetLabel(std::to_string(fs::file_size(file) >> 20) + " MB");
}

} // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (argc != 2) {
        std::fprintf(stderr, "grades_bench FOLDER [--benchmark_...]\n");
        return 2;
    }
    const fs::path folder = argv[1];
    fs::create_directories(folder);
    const Case cases[] = {{"sqlite", bench::plainSqlite(), "grades.sqlite"},
                          {"jet", bench::jetTables(), "grades.mdb"},
                          {"jet-sql", bench::jetSql(), "grades.mdb"}};
    for (const Case& c : cases)
        registerCases(c, folder);
    const fs::path big = makeBigFile(folder);
    benchmark::RegisterBenchmark("open/100MB", [big](benchmark::State& s) { openBig(s, big); })
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
