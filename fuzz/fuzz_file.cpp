// fuzz/fuzz_file — a hostile database file: opened, every table read to its end, checked. Only jet::Error may
// come out.
#include "jet/check/check.h"
#include "jet/database.h"
#include "jet/pages/io_memory.h"

#include <cstdint>

namespace {

void readEverything(jet::Database& database) {
    const jet::ReadScope read(database.pages());
    for (const std::string& name : database.tableNames(jet::TableKinds::All)) {
        try {
            jet::Table table = database.openTable(name);
            const size_t fields = table.def().fields.size();
            for (jet::Scan scan = table.scan(); scan.next();)
                for (size_t i = 0; i < fields; ++i)
                    scan.value(i);
        } catch (const jet::Error&) { // a damaged table; the others are read all the same
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const auto io = std::make_shared<jet::MemoryIo>();
    io->put("/fuzz.mdb", std::vector<uint8_t>(data, data + size));
    jet::OpenOptions options;
    options.io = io;
    options.readOnly = true;
    options.ignorePassword = true;
    try {
        const auto database = jet::Database::open("/fuzz.mdb", options);
        readEverything(*database);
        jet::checkDatabase(*database);
    } catch (const jet::Error&) { // refused as it should be
    }
    return 0;
}
