// worker.h: the life of a worker, and what counts as a fault of a call.
#include "worker.h"

#include <algorithm>
#include <cstdio>
#include <thread>

namespace proof {

using jet::Err;

Worker::Worker(const WorkerOptions& options)
    : options_(options), board_(mapBoard(options.folder / "board")),
      seat_(board_.seats[static_cast<size_t>(options.number)]), diary_(options.folder, options.number),
      random_(static_cast<unsigned>(options.number * 1000 + options.life)) {}

// Numbers no other worker and no earlier life of this one gives.
int32_t Worker::freshId() { return (options_.number * 100 + options_.life % 100) * 100'000 + ++lastId_; }

void Worker::open() {
    jet::OpenOptions options;
    options.pages.lockTimeoutMs = options_.lockTimeoutMs;
    options.pages.securityName = "Calisan" + std::to_string(options_.number);
    options.pages.cacheBytes = dice(4) == 0 ? 1 : 4 << 20; // now and then hardly any cache
    call(Kind::Read, {}, [&] { database_ = jet::Database::open(options_.folder / "ORTAK.MDB", options); });
    if (!database_) return;
    call(Kind::Read, {}, [&] {
        session_.emplace(*database_);
        accounts_.emplace(database_->openTable("Hesap"));
        counters_.emplace(database_->openTable("Sayac"));
        stamps_.emplace(database_->openTable("Damga"));
        records_.emplace(database_->openTable("Kayit"));
        batches_.emplace(database_->openTable("Yigin"));
        changing_.emplace(database_->openTable("Degisen"));
    });
    if (!changing_) close();
}

void Worker::close() {
    for (auto* table : {&accounts_, &counters_, &stamps_, &records_, &batches_, &changing_})
        table->reset();
    session_.reset();
    database_.reset();
}

void Worker::reopen() {
    close();
    open();
    tally(Tally::Reopened);
}

void Worker::run() {
    static constexpr Choice kChoices[] = {
        {12, &Worker::readSumByScan},
        {8, &Worker::readSumBySql},
        {20, &Worker::readRecord},
        {4, &Worker::compareSeeksWithScan},
        {15, &Worker::lookForStamps},
        {4, &Worker::readBatches},
        {4, &Worker::readChanging},
        {10, &Worker::insertRecord},
        {8, &Worker::updateRecord},
        {4, &Worker::deleteRecord},
        {8, &Worker::transfer},
        {8, &Worker::count},
        {6, &Worker::stamp},
        {1, &Worker::putBatch},
        {1, &Worker::removeBatch},
        {1, &Worker::changeStructure},
        {2, &Worker::insertChanging},
        {1, &Worker::leaveWithoutCommit},
        {2, &Worker::writeWhileReading},
        {1, &Worker::reopen},
    };
    int all = 0;
    for (const Choice& choice : kChoices)
        all += choice.weight;
    open();
    while (!board_.stop) {
        if (!database_) { // a lock wait ended in vain, which was counted
            open();
            continue;
        }
        int left = dice(all);
        for (const Choice& choice : kChoices)
            if ((left -= choice.weight) < 0) {
                (this->*choice.action)();
                break;
            }
        // People think between two actions, and the machine has few cores for many workers.
        if (dice(4) == 0) std::this_thread::sleep_for(std::chrono::milliseconds(dice(10)));
    }
    close();
}

void Worker::judge(Kind kind, int64_t micros, const jet::Error* error, std::initializer_list<Err> allowed) {
    seat_.took[static_cast<size_t>(kind)].add(static_cast<uint64_t>(micros));
    if (micros > (int64_t{options_.lockTimeoutMs} + options_.marginMs) * 1000)
        fault("a call took " + std::to_string(micros / 1000) + " ms");
    if (!error) return;
    switch (error->number()) {
    case Err::LockedByOther:
        if (micros >= int64_t{options_.lockTimeoutMs} * 900) return tally(Tally::Refused);
        if (upgrading_) return tally(Tally::RefusedAtOnce);
        return fault("refused after " + std::to_string(micros / 1000) + " ms: " + error->what());
    case Err::DuplicateKey: tally(Tally::Duplicate); break;
    case Err::DataChanged: tally(Tally::Changed); break;
    case Err::NoCurrentRecord: tally(Tally::Gone); break;
    default: break;
    }
    if (std::find(allowed.begin(), allowed.end(), error->number()) == allowed.end())
        fault(std::to_string(error->code()) + " " + error->what());
}

void Worker::fault(const std::string& text) {
    constexpr uint32_t kTold = 50; // the rest is only counted
    if (++board_.faults > kTold) return;
    const std::string line = "FAULT (process " + std::to_string(options_.number) + "): " + text + "\n";
    std::fputs(line.c_str(), stderr);
    std::fflush(stderr);
}

} // namespace proof
