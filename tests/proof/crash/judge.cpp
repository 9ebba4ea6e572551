#include "judge.h"

#include "dump.h"
#include "faults.h"
#include "jet/check/check.h"
#include "peer/peer.h"
#include "peer/random_edits.h"

#include <cstdio>
#include <fstream>
#include <unistd.h>

namespace proof {

namespace fs = std::filesystem;
using jet::Err;

namespace {

constexpr size_t kMostPrinted = 12; // faults a statement

size_t hashOf(const std::vector<uint8_t>& bytes) {
    return std::hash<std::string_view>()({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

class ScratchFile {
  public:
    explicit ScratchFile(const std::vector<uint8_t>& bytes)
        : path_(fs::temp_directory_path() / ("orvan-crash-" + std::to_string(::getpid()) + ".mdb")) {
        std::ofstream(path_, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    ~ScratchFile() {
        std::error_code ignored;
        fs::remove(path_, ignored);
    }
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    const fs::path& path() const { return path_; }

  private:
    fs::path path_;
};

} // namespace

void Judge::begin(const Statement& statement, States states, std::vector<uint8_t> source) {
    statement_ = &statement;
    source_ = std::move(source);
    states_ = std::move(states);
    fileBefore_ = hashOf(states_.fileBefore);
    figures_ = {};
    known_.clear();
}

void Judge::fault(const std::string& where, const std::string& what) {
    if (++figures_.faults <= kMostPrinted)
        std::printf("FAULT  %s, %s: %s\n", statement_->name.c_str(), where.c_str(), what.c_str());
    std::fflush(stdout);
}

Outcome Judge::recognise(jet::Database& database, const std::string& where) {
    const std::string dump = dumpOf(database);
    if (dump == states_.before) return Outcome::Old;
    if (dump == states_.after) return Outcome::New;
    for (const auto& [finished, part] : states_.parts)
        if (dump == part) return Outcome::Part;
    if (statement_->compacts() && contentOf(database) == states_.compacted) return Outcome::New;
    fault(where, "neither old nor new; old: " + firstDifference(states_.before, dump) +
                     "; new: " + firstDifference(states_.after, dump));
    return Outcome::Wrong;
}

Outcome Judge::seenBy(jet::Database& database, const std::string& where) {
    return recognise(database, where);
}

Outcome Judge::inFile(Workplace& place, const std::string& where) {
    const std::vector<uint8_t> bytes = place.io()->contents(kDatabase);
    const size_t hash = hashOf(bytes);
    if (const auto found = known_.find(hash); found != known_.end()) return found->second;
    const Outcome outcome = recognise(place.database(), where);
    known_.emplace(hash, outcome);
    if (outcome == Outcome::Old && hash != fileBefore_)
        fault(where, "the old content, but not the old bytes");
    if (!checked_.insert(hash).second) return outcome;
    checkWholly(place.database(), where);
    if (peerEach_ != 0 && offered_.insert(hash).second && offered_.size() % peerEach_ == 0)
        compareWithPeer(place.database(), bytes, where);
    return outcome;
}

void Judge::checkWholly(jet::Database& database, const std::string& where) {
    for (const jet::Fault& found : jet::checkDatabase(database).faults)
        fault(where, "check: " + found.table + " page " + std::to_string(found.page) + ": " + found.text);
}

void Judge::compareWithPeer(jet::Database& database, const std::vector<uint8_t>& bytes,
                            const std::string& where) {
    ++figures_.files;
    const ScratchFile file(bytes);
    for (const std::string& table : database.tableNames()) {
        const jet::TableDef def = database.tableDef(table);
        const auto ours = peer::fromModel(peer::readModel(database, table), def, peer::Detail::AsMdbTools);
        const std::string differs = peer::difference(ours, peer::exportedByMdbTools(file.path(), def));
        if (!differs.empty()) fault(where, "mdb-export of " + table + ": " + differs.substr(0, 300));
    }
}

Outcome Judge::absent(const std::string& where) {
    if (states_.before.empty()) return Outcome::Old;
    fault(where, "the database is gone");
    return Outcome::Wrong;
}

void Judge::count(Outcome outcome) {
    ++figures_.failures;
    if (outcome == Outcome::Old) ++figures_.old;
    if (outcome == Outcome::New) ++figures_.fresh;
    if (outcome == Outcome::Part) ++figures_.parts;
}

Outcome Judge::afterReopening(const std::shared_ptr<jet::MemoryIo>& disk, const std::string& where) {
    Outcome outcome = Outcome::Wrong;
    try {
        Workplace place(disk);
        try {
            place.open();
            outcome = inFile(place, where);
        } catch (const jet::Error& error) {
            if (error.number() != Err::FileNotFound && error.number() != Err::NotADatabase) throw;
            outcome = absent(where);
            statement_->run(place);
            if (!place.isOpen()) place.open();
        }
        insertProbe(place);
        Workplace other(disk);
        other.open();
        if (!probeIsThere(other)) fault(where, "the next statement left no row");
        other.close();
        place.close();
        clearUp(disk);
    } catch (const jet::Error& error) {
        fault(where, "reopened: " + std::to_string(error.code()) + " " + error.what());
    }
    requireNoLeftovers(*disk, where);
    return outcome;
}

void Judge::clearUp(const std::shared_ptr<jet::MemoryIo>& disk) {
    if (!statement_->compacts()) return;
    if (statement_->kind == Statement::Kind::Copies) disk->erase(kDatabase);
    Workplace place(disk);
    statement_->run(place);
}

void Judge::requireNoLeftovers(const jet::MemoryIo& disk, const std::string& where) {
    for (const fs::path& name : disk.names())
        if (name != kDatabase && name != kSource) fault(where, "left over: " + name.filename().string());
    if (disk.contents(kSource) != source_) fault(where, "the source of the copy changed");
}

} // namespace proof
