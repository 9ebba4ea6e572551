// workload.h — the database on which everything fails, and the statements that are made to fail: one for each
// way in which the engine changes a file.
#pragma once

#include "jet/database.h"
#include "jet/pages/io_memory.h"
#include "jet/sql/session.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace proof {

// One open handle with its SQL session.
class Workplace {
  public:
    Workplace(std::shared_ptr<jet::MemoryIo> io, size_t cachePages = 0)
        : io_(std::move(io)), cachePages_(cachePages) {}

    void open(); // the password is not asked
    void create(const std::string& password = {});
    bool isOpen() const { return database_ != nullptr; }
    void close();

    jet::Database& database() { return *database_; }
    size_t execute(std::string_view sql, std::span<const jet::Value> parameters = {}) {
        return session_->execute(sql, parameters);
    }
    const std::shared_ptr<jet::MemoryIo>& io() const { return io_; }

    // A batch tells each statement that it finished; with a limit set it is left by StopHere after that many.
    struct StopHere {};
    void finishedOne();
    size_t finished() const { return finished_; }
    void stopAfter(size_t parts) { stopAfter_ = parts; }

  private:
    std::shared_ptr<jet::MemoryIo> io_;
    size_t cachePages_; // 0 = the engine's own
    std::unique_ptr<jet::Database> database_;
    std::unique_ptr<jet::SqlSession> session_;
    size_t finished_ = 0, stopAfter_ = 0;
};

inline const std::filesystem::path kSource = "/veri/KAYNAK.MDB"; // of copies

struct Statement {
    std::string name;
    std::function<void(Workplace&)> run;
    size_t cachePages = 0; // small: pages go to the spill file
    enum class Kind {
        Changes, // an open database
        Creates, // one where none is
        Copies,  // kSource to one where none is
        Replaces // the file by another one; nobody may have it open
    } kind = Kind::Changes;
    bool silent = false;        // its commit has nobody to tell of a failure
    bool commitsBefore = false; // the same handle, something else

    bool makesFile() const { return kind == Kind::Creates || kind == Kind::Copies; }
    bool compacts() const { return kind == Kind::Copies || kind == Kind::Replaces; }
};

struct Scale {
    int rows = 300, batchRows = 1000;
    size_t copyBytes = 1 << 20; // memory of a compaction: more than that goes to the disk on the way
};

// The files of a disk with the filled database on it; the statements are to run on it one after the other.
// Among them the insert that splits leaf, node and root of an index: found by trying.
struct Workload {
    std::shared_ptr<jet::MemoryIo> disk;
    std::vector<Statement> statements;
};
Workload makeWorkload(const Scale& scale);

// A small statement that works on every state of the database, and whether its row is there.
void insertProbe(Workplace& place);
bool probeIsThere(Workplace& place);

} // namespace proof
