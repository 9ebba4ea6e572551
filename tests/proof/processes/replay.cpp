// replay.h. Changes of one record are ordered by its version, so no clock is needed: every version from 2 to
// the last must have been written exactly once, a deleted record must be gone, any other there.
#include "replay.h"

#include "schema.h"

#include "jet/check/check.h"
#include "jet/sql/session.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>
#include <set>

namespace proof {

namespace {

namespace fs = std::filesystem;
using jet::Value;

int32_t whole(const Value& value) { return static_cast<int32_t>(value.toInt()); }

struct Life { // of one record
    int32_t key = 0;
    bool born = false;
    std::multiset<int32_t> written;               // versions acknowledged
    std::set<int32_t> perhaps;                    // versions of killed processes
    std::vector<int32_t> deleted, perhapsDeleted; // the version that was deleted
};

class Comparison {
  public:
    Comparison(jet::Database& database, const std::vector<Change>& changes, Replay& result)
        : database_(database), session_(database), changes_(changes), result_(result) {}

    void records();
    void counters();
    void stamps(int workers);
    void batches();
    void changing();
    void sums();

  private:
    void fault(const std::string& text) { result_.faults.push_back(text); }
    std::map<int32_t, Life> lives();
    void judgeLife(int32_t id, const Life& life, std::optional<int32_t> version);
    // Keys that must be in a set, and those that may: by one kind of change, and one that takes it back.
    struct Keys {
        std::set<int32_t> must, may;
    };
    Keys keysOf(What in, std::optional<What> out);

    jet::Database& database_;
    jet::SqlSession session_;
    const std::vector<Change>& changes_;
    Replay& result_;
};

std::map<int32_t, Life> Comparison::lives() {
    std::map<int32_t, Life> lives;
    for (const Change& change : changes_) {
        const bool sure = change.outcome == Outcome::Done;
        Life& life = lives[change.record.id];
        switch (change.record.what) {
        case What::Insert:
            life.key = change.record.key;
            life.born = sure;
            break;
        case What::Update:
            if (sure)
                life.written.insert(change.record.version);
            else
                life.perhaps.insert(change.record.version);
            break;
        case What::Delete:
            (sure ? life.deleted : life.perhapsDeleted).push_back(change.record.version);
            break;
        default: break;
        }
    }
    lives.erase(0); // changes of other tables
    return lives;
}

void Comparison::judgeLife(int32_t id, const Life& life, std::optional<int32_t> version) {
    const std::string name = "record " + std::to_string(id) + ": ";
    if (life.deleted.size() > 1) fault(name + "deleted twice");
    if (version && !life.deleted.empty()) fault(name + "is there although it was deleted");
    if (!version && life.born && life.deleted.empty() && life.perhapsDeleted.empty()) fault(name + "is lost");
    int32_t last = 1;
    if (version)
        last = *version;
    else if (!life.deleted.empty())
        last = life.deleted.front();
    else if (!life.written.empty())
        last = *life.written.rbegin();
    if (!life.written.empty() && *life.written.rbegin() > last)
        fault(name + "an update after version " + std::to_string(last) + " is lost");
    for (int32_t v = 2; v <= last; ++v) {
        const size_t times = life.written.count(v);
        if (times > 1) fault(name + "two built version " + std::to_string(v) + " on the same state");
        if (times == 0 && !life.perhaps.contains(v))
            fault(name + "nobody wrote its version " + std::to_string(v));
    }
}

void Comparison::records() {
    std::map<int32_t, Life> lives = this->lives();
    std::map<int32_t, int32_t> there; // id → version
    std::set<int32_t> keys;
    const auto rows = session_.query("SELECT No, Kimlik, Surum, Ad, Aciklama FROM Kayit");
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        const int32_t key = whole(rows.at(i, 0)), id = whole(rows.at(i, 1)), version = whole(rows.at(i, 2));
        const std::string name = "record " + std::to_string(id);
        if (!keys.insert(key).second) fault("key " + std::to_string(key) + " is there twice");
        if (!there.emplace(id, version).second) fault(name + " is there twice");
        if (!lives.contains(id) || lives[id].key != key) fault(name + " was never inserted under its key");
        if (rows.at(i, 3).toText() != nameOf(id, version) || rows.at(i, 4).toText() != noteOf(id, version))
            fault(name + " holds another content");
    }
    for (const auto& [id, life] : lives) {
        const auto found = there.find(id);
        judgeLife(id, life, found == there.end() ? std::nullopt : std::optional(found->second));
    }
    result_.records = there.size();
}

void Comparison::counters() {
    std::map<int32_t, std::pair<int64_t, int64_t>> counted; // sure, perhaps
    for (const Change& change : changes_)
        if (change.record.what == What::Count)
            ++(change.outcome == Outcome::Done ? counted[change.record.key].first
                                               : counted[change.record.key].second);
    const auto rows = session_.query("SELECT Id, Deger FROM Sayac");
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        const auto [sure, perhaps] = counted[whole(rows.at(i, 0))];
        const int64_t value = rows.at(i, 1).toInt();
        if (value < sure || value > sure + perhaps)
            fault("counter stands at " + std::to_string(value) + ", " + std::to_string(sure) +
                  " increments were acknowledged");
    }
}

void Comparison::stamps(int workers) {
    std::map<int32_t, std::set<int32_t>> may;
    std::map<int32_t, int32_t> least;
    for (const Change& change : changes_)
        if (change.record.what == What::Stamp) {
            may[change.record.key].insert(change.record.version);
            if (change.outcome == Outcome::Done) least[change.record.key] = change.record.version;
        }
    const auto rows = session_.query("SELECT Id, Deger FROM Damga");
    if (rows.rowCount() != static_cast<size_t>(workers)) fault("a stamp is lost");
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        const int32_t worker = whole(rows.at(i, 0)), value = whole(rows.at(i, 1));
        if (value < least[worker] || (value != 0 && !may[worker].contains(value)))
            fault("stamp of process " + std::to_string(worker) + " is not what it was told");
    }
}

Comparison::Keys Comparison::keysOf(What in, std::optional<What> out) {
    Keys keys;
    for (const Change& change : changes_) {
        const bool sure = change.outcome == Outcome::Done;
        if (change.record.what == in) {
            keys.may.insert(change.record.key);
            if (sure) keys.must.insert(change.record.key);
        } else if (change.record.what == out) {
            keys.must.erase(change.record.key);
            if (sure) keys.may.erase(change.record.key);
        }
    }
    return keys;
}

void Comparison::batches() {
    const Keys keys = keysOf(What::BatchIn, What::BatchOut);
    std::set<int32_t> there;
    const auto rows = session_.query("SELECT Parti, Count(*), Sum(Sira) FROM Yigin GROUP BY Parti");
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        const int32_t batch = whole(rows.at(i, 0));
        const int64_t wanted = batchRows(batch);
        there.insert(batch);
        if (rows.at(i, 1).toInt() != wanted || rows.at(i, 2).toInt() != wanted * (wanted - 1) / 2)
            fault("batch " + std::to_string(batch) + " is there in part");
        if (!keys.may.contains(batch)) fault("batch " + std::to_string(batch) + " must not be there");
    }
    for (const int32_t batch : keys.must)
        if (!there.contains(batch)) fault("batch " + std::to_string(batch) + " is lost");
    result_.batches = there.size();
}

void Comparison::changing() {
    const Keys keys = keysOf(What::Changing, std::nullopt);
    std::set<int32_t> there;
    const auto rows = session_.query("SELECT Id, Metin FROM Degisen");
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        if (!there.insert(whole(rows.at(i, 0))).second) fault("a row of Degisen is there twice");
        if (rows.at(i, 1).toText() != "satir") fault("a row of Degisen lost its text");
    }
    if (!std::includes(there.begin(), there.end(), keys.must.begin(), keys.must.end()))
        fault("a row of Degisen is lost");
    if (!std::includes(keys.may.begin(), keys.may.end(), there.begin(), there.end()))
        fault("a row of Degisen was never inserted");
}

void Comparison::sums() {
    const auto row = session_.query("SELECT Sum(Bakiye), Count(*) FROM Hesap");
    if (row.at(0, 0).toInt() != int64_t{kAccounts} * kOpening || row.at(0, 1).toInt() != kAccounts)
        fault("the accounts' sum moved");
}

void checkFile(jet::Database& database, Replay& result) {
    const jet::CheckReport report = jet::checkDatabase(database);
    for (const jet::Fault& found : report.faults)
        result.faults.push_back("check: " + found.table + " page " + std::to_string(found.page) + " " +
                                found.text);
}

#ifdef _WIN32
void compareExport(jet::Database&, const fs::path&, Replay&) {} // no such program there
#else
// The numbers of Kayit as mdb-export prints them: "No,Kimlik,Surum".
std::set<std::string> exported(const fs::path& database, size_t& lines) {
    std::set<std::string> rows;
    const std::string command = "mdb-export -H -b strip '" + database.string() + "' Kayit 2>&1";
    FILE* pipe = ::popen(command.c_str(), "r");
    if (!pipe) return rows;
    std::array<char, 32768> line{};
    while (std::fgets(line.data(), line.size(), pipe)) {
        ++lines;
        std::string text = line.data();
        size_t end = 0;
        for (int commas = 0; end < text.size() && (text[end] != ',' || ++commas < 3); ++end) {
        }
        rows.insert(text.substr(0, end));
    }
    ::pclose(pipe);
    return rows;
}

void compareExport(jet::Database& database, const fs::path& path, Replay& result) {
    if (std::system("command -v mdb-export >/dev/null 2>&1") != 0) {
        std::printf("mdb-export is not installed: its view of the file is not compared\n");
        return;
    }
    jet::SqlSession session(database);
    const auto rows = session.query("SELECT No, Kimlik, Surum FROM Kayit");
    std::set<std::string> ours;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        ours.insert(rows.at(i, 0).toText() + "," + rows.at(i, 1).toText() + "," + rows.at(i, 2).toText());
    size_t lines = 0;
    if (exported(path, lines) != ours || lines != rows.rowCount())
        result.faults.push_back("mdb-export shows other records");
}
#endif

} // namespace

Replay replayAndCompare(const fs::path& folder, const fs::path& path, int workers) {
    Replay result;
    const std::vector<Change> changes = readDiaries(folder, workers);
    for (const Change& change : changes)
        ++(change.outcome == Outcome::Done ? result.changes : result.unknown);
    const auto database = jet::Database::open(path);
    Comparison comparison(*database, changes, result);
    comparison.records();
    comparison.counters();
    comparison.stamps(workers);
    comparison.batches();
    comparison.changing();
    comparison.sums();
    checkFile(*database, result);
    compareExport(*database, path, result);
    return result;
}

} // namespace proof
