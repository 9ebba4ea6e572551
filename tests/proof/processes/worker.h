// worker.h — one process of the proof: its own handles on the database, a die, and the actions it throws it
// for. Whatever it sees that must not be is a fault, told in one line and counted on the board.
#pragma once

#include "board.h"
#include "records.h"
#include "schema.h"

#include "jet/sql/session.h"

#include <chrono>
#include <initializer_list>
#include <optional>
#include <random>

namespace proof {

struct WorkerOptions {
    std::filesystem::path folder;
    int number = 0; // 1..
    int workers = 0;
    int life = 0; // 0, 1, … after each kill
    int lockTimeoutMs = 10'000;
    int marginMs = 2'000; // beyond the lock timeout, for the work itself on a busy machine
};

class Worker {
  public:
    explicit Worker(const WorkerOptions& options);
    void run(); // until the board says stop

  private:
    struct Choice {
        int weight;
        void (Worker::*action)();
    };
    void open();
    void close();
    void reopen();

    // Runs one call of the engine: times it, and returns 0 or the number of its jet::Error. One that is
    // neither in `allowed` nor a lock refusal after the full wait is a fault.
    template <class F> int call(Kind kind, std::initializer_list<jet::Err> allowed, F&& work);
    void judge(Kind kind, int64_t micros, const jet::Error* error, std::initializer_list<jet::Err> allowed);
    void fault(const std::string& text);
    void tally(Tally what) { ++seat_.tallies[static_cast<size_t>(what)]; }
    int dice(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }
    int32_t freshId();
    jet::PageFile& pages() { return database_->pages(); }
    size_t execute(const char* sql, std::vector<jet::Value> parameters) {
        return session_->execute(sql, parameters);
    }
    jet::ResultSet query(const char* sql, std::vector<jet::Value> parameters = {}) {
        return session_->query(sql, parameters);
    }

    // actions_records.cpp: rows with keys that everybody wants
    void insertRecord();
    void updateRecord();
    void updateByRecord(int32_t key);
    void updateBySql(int32_t key);
    void updateUnderLock(int32_t key);
    void deleteRecord();
    void readRecord();
    void compareSeeksWithScan();
    void compareIndex(jet::Table& table, const char* index, const std::vector<jet::RowId>& scanned);
    void checkContent(int32_t id, int32_t version, const jet::Value& name, const jet::Value& note);

    // actions_sums.cpp: transfers, counters, stamps
    void transfer();
    void readSumByScan();
    void readSumBySql();
    void expectSum(int64_t sum, const char* how);
    void count();
    int countByRecord(int32_t counter);
    void stamp();
    void lookForStamps();
    void leaveWithoutCommit();
    void writeWhileReading();

    // actions_tables.cpp: batches and structure
    void putBatch();
    void removeBatch();
    void readBatches();
    void changeStructure();
    void changeFields();
    void changeRecordIndex();
    void ownTable();
    void insertChanging();
    void readChanging();

    WorkerOptions options_;
    Board& board_;
    Seat& seat_;
    Diary diary_;
    std::mt19937 random_;
    std::unique_ptr<jet::Database> database_;
    std::optional<jet::SqlSession> session_;
    std::optional<jet::Table> accounts_, counters_, stamps_, records_, batches_, changing_;
    std::vector<int32_t> ownBatches_; // there now, by what was acknowledged to this life
    std::optional<std::string> ownIndex_, ownField_;
    bool upgrading_ = false; // a write inside an open read may be refused at once
    int32_t lastId_ = 0;
};

template <class F> int Worker::call(Kind kind, std::initializer_list<jet::Err> allowed, F&& work) {
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    const auto passed = [start] {
        return std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start).count();
    };
    try {
        work();
        judge(kind, passed(), nullptr, allowed);
        return 0;
    } catch (const jet::Error& error) {
        judge(kind, passed(), &error, allowed);
        return error.code();
    }
}

} // namespace proof
