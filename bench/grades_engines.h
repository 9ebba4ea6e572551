// bench/grades_engines.h — the same work on both engines: write the grades, read every field, seek two
// fields. Each call opens the file anew, so nothing of an earlier call is in a cache of the engine's own.
#pragma once

#include <filesystem>

namespace bench {

struct Work {
    size_t rows = 0;
    uint64_t checksum = 0; // of everything read: both engines must agree, and nothing can be optimised away
};

struct Engine {
    virtual ~Engine() = default;
    virtual void insertAll(const std::filesystem::path& file) = 0; // makes the file; one batch
    virtual Work scanAll(const std::filesystem::path& file) = 0;
    virtual Work
    seekAll(const std::filesystem::path& file) = 0; // kSeeks seeks of kCourses rows, every field read
};

Engine& jetTables(); // Table of src/jet
Engine& jetSql();    // the same through SQL
Engine& plainSqlite();

} // namespace bench
