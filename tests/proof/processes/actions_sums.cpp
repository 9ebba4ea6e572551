// worker.h: transfers whose sum stays, counters nobody may lose, stamps everybody must see at once.
#include "worker.h"

namespace proof {

using jet::Err;
using jet::ReadScope;
using jet::SeekOp;
using jet::Value;
using jet::WriteScope;

// Two updates in one write, or one statement on two rows.
void Worker::transfer() {
    const int32_t from = 1 + dice(kAccounts), to = 1 + (from + dice(kAccounts - 1)) % kAccounts;
    const int32_t amount = dice(100);
    if (from == to) return;
    if (dice(2) == 0) {
        call(Kind::Write, {}, [&] {
            execute("UPDATE Hesap SET Bakiye = Bakiye + IIf(Id = ?, ?, ?) WHERE Id = ? OR Id = ?",
                    {from, -amount, amount, from, to});
        });
        return;
    }
    call(Kind::Write, {}, [&] {
        WriteScope write(pages());
        execute("UPDATE Hesap SET Bakiye = Bakiye - ? WHERE Id = ?", {amount, from});
        const Value key[] = {to};
        accounts_->setIndex("indId");
        if (!accounts_->seek(SeekOp::Equal, key)) fault("an account is not found by its index");
        accounts_->edit();
        accounts_->set("Bakiye", Value(static_cast<int32_t>(accounts_->value("Bakiye").toInt()) + amount));
        accounts_->update();
        write.commit();
    });
}

void Worker::expectSum(int64_t sum, const char* how) {
    tally(Tally::TornLooks);
    if (sum != int64_t{kAccounts} * kOpening)
        fault(std::string("torn read by ") + how + ": sum " + std::to_string(sum));
}

// Twice in one scope, with a pause: others' commits must not come in between.
void Worker::readSumByScan() {
    call(Kind::Read, {}, [&] {
        const ReadScope scope(pages());
        for (int look = 0; look < 2; ++look) {
            int64_t sum = 0;
            for (jet::Scan rows = accounts_->scan(); rows.next();)
                sum += rows.value(1).toInt();
            expectSum(sum, "scan");
            if (look == 0)
                expectSum(query("SELECT Sum(Bakiye) AS T FROM Hesap").at(0, 0).toInt(), "SQL in a scope");
        }
    });
}

void Worker::readSumBySql() {
    call(Kind::Read, {}, [&] {
        const auto rows = query("SELECT Id, Bakiye FROM Hesap WHERE Id > 0 ORDER BY Bakiye");
        int64_t sum = 0;
        for (size_t i = 0; i < rows.rowCount(); ++i)
            sum += rows.at(i, 1).toInt();
        expectSum(sum, "SELECT");
    });
}

void Worker::count() {
    const int32_t counter = 1 + dice(kCounters);
    diary_.begin(What::Count, counter);
    int error = 0;
    if (dice(2) == 0)
        error = call(Kind::Write, {},
                     [&] { execute("UPDATE Sayac SET Deger = Deger + 1 WHERE Id = ?", {counter}); });
    else
        error = countByRecord(counter);
    diary_.end(error == 0);
}

// Without a lock over reading and writing: the engine must notice that another was quicker.
int Worker::countByRecord(int32_t counter) {
    const Value key[] = {counter};
    for (;;) {
        const int error = call(Kind::Write, {Err::DataChanged}, [&] {
            counters_->setIndex("indId");
            if (!counters_->seek(SeekOp::Equal, key)) fault("a counter is not found by its index");
            counters_->edit();
            counters_->set("Deger", Value(static_cast<int32_t>(counters_->value("Deger").toInt()) + 1));
            counters_->update();
        });
        if (error != static_cast<int>(Err::DataChanged)) return error;
    }
}

// Grows our own row, reads it back, and tells the others that it is committed.
void Worker::stamp() {
    const int32_t me = options_.number;
    int32_t next = 0;
    const int error = call(Kind::Write, {}, [&] {
        WriteScope write(pages());
        next = static_cast<int32_t>(query("SELECT Deger FROM Damga WHERE Id = ?", {me}).at(0, 0).toInt()) + 1;
        diary_.begin(What::Stamp, me, 0, next);
        execute("UPDATE Damga SET Deger = ? WHERE Id = ?", {next, me});
        write.commit();
    });
    if (next == 0) return;
    diary_.end(error == 0);
    if (error != 0) return;
    seat_.stamp = next;
    call(Kind::Read, {}, [&] {
        if (query("SELECT Deger FROM Damga WHERE Id = ?", {me}).at(0, 0).toInt() != next)
            fault("own write is not read back");
    });
}

void Worker::lookForStamps() {
    std::vector<int32_t> acknowledged;
    for (int i = 1; i <= options_.workers; ++i)
        acknowledged.push_back(board_.seats[static_cast<size_t>(i)].stamp);
    const auto expect = [&](int32_t worker, int64_t seen, const char* how) {
        tally(Tally::StaleLooks);
        if (seen < acknowledged[static_cast<size_t>(worker) - 1])
            fault(std::string("stale read by ") + how + " of process " + std::to_string(worker) +
                  "'s stamp: " + std::to_string(seen) + " < " +
                  std::to_string(acknowledged[static_cast<size_t>(worker) - 1]));
    };
    const bool bySql = dice(2) == 0;
    call(Kind::Read, {}, [&] {
        if (bySql) {
            const auto rows = query("SELECT Id, Deger FROM Damga");
            for (size_t i = 0; i < rows.rowCount(); ++i)
                expect(static_cast<int32_t>(rows.at(i, 0).toInt()), rows.at(i, 1).toInt(), "SELECT");
            return;
        }
        stamps_->setIndex("indId");
        for (int32_t worker = 1; worker <= options_.workers; ++worker) {
            const Value key[] = {worker};
            if (!stamps_->seek(SeekOp::Equal, key)) fault("a stamp is not found by its index");
            expect(worker, stamps_->value("Deger").toInt(), "seek");
        }
    });
}

// A write that is left without commit must leave nothing, for us and for others.
void Worker::leaveWithoutCommit() {
    call(Kind::Write, {}, [&] {
        const WriteScope write(pages());
        execute("UPDATE Hesap SET Bakiye = Bakiye + 7", {});
        execute("UPDATE Sayac SET Deger = Deger + 1000000", {});
        execute("DELETE FROM Kayit", {});
    });
    tally(Tally::Undone);
    readSumBySql();
}

// A reader becomes the writer; refused at once only while a commit waits for it.
void Worker::writeWhileReading() {
    const int32_t counter = 1 + dice(kCounters);
    upgrading_ = true;
    int error = -1; // the write was not reached
    diary_.begin(What::Count, counter);
    call(Kind::Write, {}, [&] {
        const ReadScope scope(pages());
        const int64_t before = query("SELECT Sum(Deger) AS T FROM Sayac").at(0, 0).toInt();
        error = call(Kind::Write, {},
                     [&] { execute("UPDATE Sayac SET Deger = Deger + 1 WHERE Id = ?", {counter}); });
        const int64_t after = query("SELECT Sum(Deger) AS T FROM Sayac").at(0, 0).toInt();
        if (after != before + (error == 0 ? 1 : 0)) fault("another's write came into an open read");
    });
    diary_.end(error == 0);
    upgrading_ = false;
}

} // namespace proof
