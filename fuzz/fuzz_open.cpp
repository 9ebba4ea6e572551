// fuzz/fuzz_open — a hostile file with a hostile journal and lock file beside it: opened for reading and for
// writing, with and without its password; names, definitions and properties of all tables.
#include "hostile_file.h"

namespace {

void openOnce(const fuzz::HostileFile& parts, bool readOnly, const char* password) {
    const auto io = fuzz::putInMemory(parts);
    jet::OpenOptions options = fuzz::openOptions(io);
    options.readOnly = readOnly;
    options.ignorePassword = password == nullptr;
    if (password) options.password = password;
    fuzz::refusable([&] {
        const auto database = jet::Database::open(fuzz::kPath, options);
        for (const std::string& name : fuzz::allTables(*database))
            fuzz::refusable([&] { database->tableDef(name); });
        database->pages().users();
    });
    const size_t bound = parts.file.size() + parts.journal.size(); // rolling back never makes more of it
    fuzz::require(io->contents(fuzz::kPath).size() <= bound, "opening does not let the file grow");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const fuzz::TimeBound bound;
    const fuzz::HostileFile parts = fuzz::split({data, size});
    openOnce(parts, true, nullptr);
    openOnce(parts, false, nullptr);
    openOnce(parts, false, fuzz::kPassword);
    return 0;
}
