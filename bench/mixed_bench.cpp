// bench/mixed_bench — several processes on one file at the same time: 70 % reads (a seek, or a group of ten
// rows), 20 % updates of one row, 10 % inserts, each a transaction of its own and durable. Our engine and
// SQLite with its rollback journal take turns in the same folder.
//   mixed_bench FOLDER [PROCESSES [SECONDS [ROUNDS]]]      (8, 5 and 2)
// The last line is for bench/compare: operations a second of both.
#include "jet/database.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <random>
#include <sqlite3.h>
#include <string>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr int32_t kRows = 20'000, kGroup = 10;

struct Seat {
    std::atomic<uint64_t> reads, writes, longestRead, longestWrite; // microseconds
    std::atomic<bool> failed;
};

// One user of the file.
class User {
  public:
    virtual ~User() = default;
    virtual int64_t seek(int32_t id) = 0;
    virtual int64_t readGroup(int32_t group) = 0;
    virtual void update(int32_t id, int32_t value) = 0;
    virtual void insert(int32_t id, int32_t group) = 0;
};

struct Engine {
    const char* name;
    const char* file;
    void (*create)(const fs::path&);
    std::unique_ptr<User> (*open)(const fs::path&);
};

std::string nameOf(int32_t id) {
    return "Kayıt " + std::to_string(id) + std::string(static_cast<size_t>(id % 20), 'x');
}

// --- ours

class JetUser final : public User {
  public:
    explicit JetUser(const fs::path& file)
        : database_(jet::Database::open(file)), table_(database_->openTable("Kayit")) {
        table_.setIndex("indId");
    }
    int64_t seek(int32_t id) override {
        const jet::ReadScope scope(database_->pages());
        const jet::Value key[] = {id};
        if (!table_.seek(jet::SeekOp::Equal, key)) throw std::runtime_error("row not found");
        return table_.value("Puan").toInt() + static_cast<int64_t>(table_.value("Ad").toText().size());
    }
    int64_t readGroup(int32_t group) override {
        const jet::ReadScope scope(database_->pages());
        int64_t sum = 0;
        for (jet::Scan rows = table_.scan("indGrup", {{group}, {group}}); rows.next();)
            sum += rows.value(3).toInt();
        return sum;
    }
    void update(int32_t id, int32_t value) override {
        jet::WriteScope write(database_->pages());
        const jet::Value key[] = {id};
        if (!table_.seek(jet::SeekOp::Equal, key)) throw std::runtime_error("row not found");
        static constexpr bool kOnlyValue[] = {false, false, false, true};
        table_.update(table_.bookmark(), std::vector<jet::Value>{{}, {}, {}, value}, kOnlyValue);
        write.commit();
    }
    void insert(int32_t id, int32_t group) override {
        table_.insert(std::vector<jet::Value>{id, group, nameOf(id), 0});
    }

  private:
    std::unique_ptr<jet::Database> database_;
    jet::Table table_;
};

void createJet(const fs::path& file) {
    const auto database = jet::Database::create(file);
    std::vector<jet::FieldDef> fields(4);
    const char* const names[] = {"Id", "Grup", "Ad", "Puan"};
    for (size_t i = 0; i < fields.size(); ++i)
        fields[i].name = names[i], fields[i].type = i == 2 ? jet::Type::Text : jet::Type::Long;
    fields[2].size = 60;
    std::vector<jet::IndexDef> indexes(2);
    indexes[0].name = "indId", indexes[0].fields = {{0, false}}, indexes[0].unique = true;
    indexes[1].name = "indGrup", indexes[1].fields = {{1, false}};
    database->createTable("Kayit", fields, indexes);
    jet::WriteBatch batch(*database);
    jet::Table table = database->openTable("Kayit");
    for (int32_t id = 0; id < kRows; ++id)
        table.insert(std::vector<jet::Value>{id, id / kGroup, nameOf(id), 0});
    batch.commit();
}

// --- SQLite

void check(int result, sqlite3* db) {
    if (result != SQLITE_OK && result != SQLITE_ROW && result != SQLITE_DONE)
        throw std::runtime_error(sqlite3_errmsg(db));
}

class SqliteUser final : public User {
  public:
    explicit SqliteUser(const fs::path& file) {
        check(sqlite3_open(file.c_str(), &db_), db_);
        sqlite3_busy_timeout(db_, 10'000);
        for (const char* pragma :
             {"PRAGMA journal_mode=DELETE", "PRAGMA synchronous=FULL", "PRAGMA cache_size=-65536"})
            check(sqlite3_exec(db_, pragma, nullptr, nullptr, nullptr), db_);
        prepare(seek_, "SELECT Puan, Ad FROM Kayit WHERE Id = ?");
        prepare(group_, "SELECT Puan FROM Kayit WHERE Grup = ?");
        prepare(update_, "UPDATE Kayit SET Puan = ?2 WHERE Id = ?1");
        prepare(insert_, "INSERT INTO Kayit (Id, Grup, Ad, Puan) VALUES (?1, ?2, ?3, 0)");
    }
    ~SqliteUser() override {
        for (sqlite3_stmt* statement : {seek_, group_, update_, insert_})
            sqlite3_finalize(statement);
        sqlite3_close(db_);
    }
    int64_t seek(int32_t id) override {
        sqlite3_bind_int(seek_, 1, id);
        int64_t sum = 0;
        run(seek_, [&] { sum += sqlite3_column_int64(seek_, 0) + sqlite3_column_bytes(seek_, 1); });
        return sum;
    }
    int64_t readGroup(int32_t group) override {
        sqlite3_bind_int(group_, 1, group);
        int64_t sum = 0;
        run(group_, [&] { sum += sqlite3_column_int64(group_, 0); });
        return sum;
    }
    void update(int32_t id, int32_t value) override {
        sqlite3_bind_int(update_, 1, id);
        sqlite3_bind_int(update_, 2, value);
        run(update_, [] {});
    }
    void insert(int32_t id, int32_t group) override {
        const std::string name = nameOf(id);
        sqlite3_bind_int(insert_, 1, id);
        sqlite3_bind_int(insert_, 2, group);
        sqlite3_bind_text(insert_, 3, name.c_str(), -1, SQLITE_TRANSIENT);
        run(insert_, [] {});
    }

  private:
    void prepare(sqlite3_stmt*& statement, const char* sql) {
        check(sqlite3_prepare_v2(db_, sql, -1, &statement, nullptr), db_);
    }
    // A writer may find the file changed since its read began (SQLITE_BUSY at once): it tries again.
    void run(sqlite3_stmt* statement, const std::function<void()>& row) {
        for (;;) {
            int result = SQLITE_OK;
            while ((result = sqlite3_step(statement)) == SQLITE_ROW)
                row();
            sqlite3_reset(statement);
            if (result == SQLITE_BUSY) continue;
            return check(result, db_);
        }
    }

    sqlite3* db_ = nullptr;
    sqlite3_stmt *seek_ = nullptr, *group_ = nullptr, *update_ = nullptr, *insert_ = nullptr;
};

void createSqlite(const fs::path& file) {
    sqlite3* db = nullptr;
    check(sqlite3_open(file.c_str(), &db), db);
    check(sqlite3_exec(db,
                       "PRAGMA page_size=4096; PRAGMA journal_mode=DELETE; BEGIN;"
                       "CREATE TABLE Kayit (Id INTEGER, Grup INTEGER, Ad TEXT, Puan INTEGER);"
                       "CREATE UNIQUE INDEX indId ON Kayit (Id); CREATE INDEX indGrup ON Kayit (Grup);",
                       nullptr, nullptr, nullptr),
          db);
    sqlite3_stmt* insert = nullptr;
    check(sqlite3_prepare_v2(db, "INSERT INTO Kayit VALUES (?, ?, ?, 0)", -1, &insert, nullptr), db);
    for (int32_t id = 0; id < kRows; ++id) {
        const std::string name = nameOf(id);
        sqlite3_bind_int(insert, 1, id);
        sqlite3_bind_int(insert, 2, id / kGroup);
        sqlite3_bind_text(insert, 3, name.c_str(), -1, SQLITE_TRANSIENT);
        check(sqlite3_step(insert), db);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    check(sqlite3_exec(db, "COMMIT", nullptr, nullptr, nullptr), db);
    sqlite3_close(db);
}

// --- the load

void work(User& user, Seat& seat, int number, Clock::time_point end) {
    std::mt19937 dice(static_cast<unsigned>(number));
    int32_t next = kRows + number * 10'000'000;
    while (Clock::now() < end) {
        const auto start = Clock::now();
        const unsigned what = dice() % 10;
        const auto id = static_cast<int32_t>(dice() % kRows);
        if (what < 4)
            user.seek(id);
        else if (what < 7)
            user.readGroup(id / kGroup);
        else if (what < 9)
            user.update(id, static_cast<int32_t>(dice() % 1000));
        else
            user.insert(next++, id / kGroup);
        const auto took = static_cast<uint64_t>(
            std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start).count());
        const bool read = what < 7;
        ++(read ? seat.reads : seat.writes);
        auto& longest = read ? seat.longestRead : seat.longestWrite;
        if (took > longest) longest = took;
    }
}

struct Result {
    double reads = 0, writes = 0;                         // a second
    double longestRead = 0, longestWrite = 0;             // ms
    uint64_t fewestWrites = ~uint64_t{0}, mostWrites = 0; // of one process
};

Result run(const Engine& engine, const fs::path& folder, int processes, int seconds) {
    const fs::path file = folder / engine.file;
    for (const char* tail : {"", "-journal"})
        fs::remove(file.string() + tail);
    engine.create(file);
    auto* seats = static_cast<Seat*>(::mmap(nullptr, sizeof(Seat) * static_cast<size_t>(processes),
                                            PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    const auto end = Clock::now() + std::chrono::seconds(seconds);
    std::vector<pid_t> children;
    for (int i = 0; i < processes; ++i) {
        children.push_back(::fork());
        if (children.back() != 0) continue;
        try {
            const auto user = engine.open(file);
            work(*user, seats[i], i, end);
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s: %s\n", engine.name, error.what());
            seats[i].failed = true;
        }
        ::_exit(0);
    }
    Result result;
    for (const pid_t child : children)
        ::waitpid(child, nullptr, 0);
    for (int i = 0; i < processes; ++i) {
        if (seats[i].failed) std::exit(1);
        result.reads += static_cast<double>(seats[i].reads) / seconds;
        result.writes += static_cast<double>(seats[i].writes) / seconds;
        result.longestRead = std::max(result.longestRead, static_cast<double>(seats[i].longestRead) / 1000);
        result.longestWrite =
            std::max(result.longestWrite, static_cast<double>(seats[i].longestWrite) / 1000);
        result.fewestWrites = std::min<uint64_t>(result.fewestWrites, seats[i].writes);
        result.mostWrites = std::max<uint64_t>(result.mostWrites, seats[i].writes);
    }
    ::munmap(seats, sizeof(Seat) * static_cast<size_t>(processes));
    std::printf("%-7s %9.1f reads/s %8.1f writes/s   longest read %7.1f ms, write %7.1f ms   writes of one "
                "process %llu to %llu\n",
                engine.name, result.reads, result.writes, result.longestRead, result.longestWrite,
                static_cast<unsigned long long>(result.fewestWrites),
                static_cast<unsigned long long>(result.mostWrites));
    return result;
}

template <class Member> double mean(const std::vector<Result>& results, Member member) {
    double sum = 0;
    for (const Result& result : results)
        sum += result.*member;
    return sum / static_cast<double>(results.size());
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "mixed_bench FOLDER [PROCESSES [SECONDS [ROUNDS]]]\n");
        return 2;
    }
    const fs::path folder = argv[1];
    const auto number = [&](int at, int otherwise) {
        return argc > at ? std::max(1, std::atoi(argv[at])) : otherwise;
    };
    const int processes = number(2, 8), seconds = number(3, 5), rounds = number(4, 2);
    fs::create_directories(folder);
    const Engine engines[] = {
        {"jet", "mixed.mdb", createJet,
         [](const fs::path& f) -> std::unique_ptr<User> { return std::make_unique<JetUser>(f); }},
        {"sqlite", "mixed.sqlite", createSqlite,
         [](const fs::path& f) -> std::unique_ptr<User> { return std::make_unique<SqliteUser>(f); }}};
    std::vector<Result> results[2];
    for (int round = 0; round < rounds; ++round)
        for (size_t i = 0; i < 2; ++i)
            results[i].push_back(run(engines[i], folder, processes, seconds));
    std::printf("mixed,%.1f,%.1f,%.1f,%.1f\n", mean(results[0], &Result::reads),
                mean(results[1], &Result::reads), mean(results[0], &Result::writes),
                mean(results[1], &Result::writes));
    return 0;
}
