// jet/copy/compact.h — makes a new, dense database file of a sound one: the same content without the room
// that deleted rows, dropped fields and grown pages left; rows in the order of the primary key. Kept are all
// tables with their properties and counters, relations, queries and whatever else the catalog has, code page,
// sort order, password and encoding.
#pragma once

#include "jet/pages/page_file.h"

#include <string>
#include <vector>

namespace jet {

struct CopyOptions {
    std::string password{};         // UTF-8; ignored when the file has none
    PageFileOptions pages{};        // of the file that is read
    std::shared_ptr<Io> io{};       // empty = systemIo()
    size_t memoryBytes = 64u << 20; // see WriterOptions
    // Steps done of about `total`; false stops, and nothing is left behind.
    std::function<bool(size_t done, size_t total)> progress{};
};

struct CopyReport {
    bool stopped = false; // by `progress`: there is no new file
    size_t tables = 0;    // the system's own left aside
    uint64_t rows = 0;    // of them
    uint64_t bytesBefore = 0, bytesAfter = 0;
    std::vector<std::string> notes; // Turkish sentences: what is not as it was
};

// `in` is never changed; others may read it meanwhile, and writers wait. Errors: DatabaseExists (`out` is
// there, or is `in`), those of Database::open, ReadOnly (an older format: convertDatabase), Corrupt (then
// repairDatabase), those of the disk. After an error there is no `out`.
CopyReport compactDatabase(const std::filesystem::path& in, const std::filesystem::path& out,
                           const CopyOptions& options = {});

// The same, the new file taking the place of the old one: at any moment either the one or the other is at
// `path`, whole. Nobody may have it open: FileInUse, naming who; LockedByOther while somebody writes. Open
// the database anew afterwards.
CopyReport compactInPlace(const std::filesystem::path& path, const CopyOptions& options = {});

} // namespace jet
