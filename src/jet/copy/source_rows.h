// jet/copy/source_rows.h — the rows of a table that is copied, and the steps that its copy takes.
#pragma once

#include "jet/copy/compact.h"
#include "jet/database.h"

namespace jet {

// Thrown when the caller's progress function wants no more.
struct CopyStopped {};

// Counts steps and asks from time to time whether to go on.
class CopyProgress {
  public:
    explicit CopyProgress(const CopyOptions& options) : options_(options) {}
    void expect(const TableDef& def, uint32_t rows) { total_ += rows * (1 + size_t{def.realIndexCount}); }
    void step() { // throws CopyStopped
        if (++done_ % kStepsPerAsking == 0) ask();
    }

  private:
    static constexpr size_t kStepsPerAsking = 256;
    void ask() const {
        if (options_.progress && !options_.progress(std::min(done_, total_), total_)) throw CopyStopped();
    }
    const CopyOptions& options_;
    size_t done_ = 0, total_ = 0;
};

// Visits every row once, in the order of the primary key where there is one, else in page order. A row that
// the key's index does not know comes at the end. REQUIRES: a read or write scope stays open around it.
void forEachRow(Table& table, const std::function<void(const Scan&)>& visit);

// Tables of the file, by definition page; `system` says which.
struct SourceTable {
    std::string name;
    PageNo page = 0;
    bool system = false;
};
std::vector<SourceTable> sourceTables(Database& database);

// The definition of a table with its counters as the file has them now.
TableDef countedDefinition(Database& database, Table& table);

// 0 when it cannot be told: no reason to call a finished copy failed.
uint64_t fileSize(Io& io, const std::filesystem::path& path);

// Runs a copy; a stop is told in the report, an error names the file that was being read.
CopyReport reportedCopy(const std::filesystem::path& in, const CopyOptions& options,
                        const std::function<void(Io&, CopyReport&)>& body);
// The same with `in` open for reading, in one state, and the sizes of both files told.
CopyReport copyDatabase(const std::filesystem::path& in, const std::filesystem::path& out,
                        const CopyOptions& options,
                        const std::function<void(Database& source, CopyReport&)>& body);

} // namespace jet
