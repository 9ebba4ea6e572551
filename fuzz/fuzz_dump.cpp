// fuzz/fuzz_dump — a hostile file read to its end: every table in page order with every long value, every
// index walked forwards and backwards, by cursor and by scan. However the pages are linked, no walk meets
// more rows than the file has bytes.
#include "hostile_file.h"

namespace {

void readRows(jet::Table& table, size_t bound) {
    const size_t fields = table.def().fields.size();
    size_t seen = 0;
    for (jet::Scan scan = table.scan(); scan.next();) {
        fuzz::require(++seen <= bound, "a walk in page order ends");
        for (size_t i = 0; i < fields; ++i)
            fuzz::refusable([&] { scan.value(i); });
    }
}

void walkIndex(jet::Table& table, const std::string& index, size_t bound) {
    size_t seen = 0;
    fuzz::refusable([&] {
        jet::KeyRange all;
        all.backwards = true;
        for (jet::Scan scan = table.scan(index, all); scan.next();)
            fuzz::require(++seen <= bound, "a walk along an index ends");
    });
    fuzz::refusable([&] {
        table.setIndex(index);
        seen = 0;
        for (bool more = table.moveFirst(); more; more = table.moveNext())
            fuzz::require(++seen <= bound, "moving to the end ends");
        table.moveLast();
        table.movePrevious();
    });
    fuzz::refusable([&] {
        table.setIndex(index);
        table.moveFirst();
        const jet::TableDef& def = table.def();
        const jet::IndexDef* stored = def.findIndex(index);
        if (!stored || stored->fields.empty() || table.eof()) return;
        const jet::Value key = table.value(def.fields[stored->fields.front().field].name);
        table.seek(jet::SeekOp::GreaterOrEqual, std::vector{key});
        table.seek(jet::SeekOp::Less, std::vector{key});
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const fuzz::TimeBound bound;
    jet::OpenOptions options = fuzz::openOptions(fuzz::putInMemory(fuzz::split({data, size})));
    options.readOnly = true;
    std::unique_ptr<jet::Database> database;
    if (!fuzz::refusable([&] { database = jet::Database::open(fuzz::kPath, options); })) return 0;
    const jet::ReadScope read(database->pages());
    for (const std::string& name : fuzz::allTables(*database))
        fuzz::refusable([&] {
            jet::Table table = database->openTable(name);
            std::vector<std::string> indexes;
            for (const jet::IndexDef& index : table.def().indexes)
                indexes.push_back(index.name);
            fuzz::refusable([&] { readRows(table, size); });
            for (const std::string& index : indexes)
                walkIndex(table, index, size);
        });
    return 0;
}
