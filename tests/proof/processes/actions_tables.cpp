// worker.h: batches of some hundred rows, and structure that changes under everybody's open handles.
#include "worker.h"

#include <algorithm>

namespace proof {

using jet::Err;
using jet::ReadScope;
using jet::Value;
using jet::WriteScope;

void Worker::putBatch() {
    const int32_t batch = freshId();
    diary_.begin(What::BatchIn, batch);
    const int error = call(Kind::Write, {}, [&] {
        jet::WriteBatch write(*database_);
        for (int32_t row = 0; row < batchRows(batch); ++row)
            batches_->insert(std::vector<Value>{batch, row, nameOf(batch, row)});
        write.commit();
    });
    diary_.end(error == 0);
    if (error == 0) ownBatches_.push_back(batch);
}

void Worker::removeBatch() {
    if (ownBatches_.empty()) return;
    const int32_t batch = ownBatches_.back();
    size_t gone = 0;
    diary_.begin(What::BatchOut, batch);
    const int error =
        call(Kind::Write, {}, [&] { gone = execute("DELETE FROM Yigin WHERE Parti = ?", {batch}); });
    diary_.end(error == 0);
    if (error != 0) return;
    ownBatches_.pop_back();
    if (gone != static_cast<size_t>(batchRows(batch)))
        fault("own batch had " + std::to_string(gone) + " rows of " + std::to_string(batchRows(batch)));
}

void Worker::readBatches() {
    const auto expect = [this](int64_t batch, int64_t rows) {
        tally(Tally::TornLooks);
        if (rows != batchRows(static_cast<int32_t>(batch)))
            fault("a batch is there in part: " + std::to_string(rows) + " rows");
    };
    call(Kind::Read, {}, [&] {
        const ReadScope scope(pages());
        const auto groups = query("SELECT Parti, Count(*) AS Adet FROM Yigin GROUP BY Parti");
        for (size_t i = 0; i < groups.rowCount(); ++i)
            expect(groups.at(i, 0).toInt(), groups.at(i, 1).toInt());
        if (groups.empty()) return;
        const Value batch = groups.at(static_cast<size_t>(dice(static_cast<int>(groups.rowCount()))), 0);
        int64_t rows = 0;
        for (jet::Scan scan = batches_->scan("indParti", {{batch}, {batch}}); scan.next(); ++rows)
            if (scan.value(2).toText() !=
                nameOf(static_cast<int32_t>(batch.toInt()), static_cast<int32_t>(scan.value(1).toInt())))
                fault("a row of a batch holds another content");
        expect(batch.toInt(), rows);
    });
}

// --- structure

void Worker::changeStructure() {
    tally(Tally::Structure);
    switch (dice(3)) {
    case 0: return changeFields();
    case 1: return changeRecordIndex();
    default: return ownTable();
    }
}

// A field of our own name comes and goes, with the rows of all in the table.
void Worker::changeFields() {
    const std::string name = "Alan" + std::to_string(options_.number);
    if (!ownField_) {
        const std::string sql =
            "ALTER TABLE Degisen ADD COLUMN " + name + (dice(2) == 0 ? " LONG" : " TEXT(30)");
        if (call(Kind::Write, {Err::FieldDefinedTwice}, [&] { execute(sql.c_str(), {}); }) != 0) return;
        ownField_ = name;
        call(Kind::Write, {}, [&] { execute(("UPDATE Degisen SET " + name + " = 5").c_str(), {}); });
    } else {
        const std::string sql = "ALTER TABLE Degisen DROP COLUMN " + *ownField_;
        if (call(Kind::Write, {}, [&] { execute(sql.c_str(), {}); }) == 0) ownField_.reset();
    }
}

void Worker::changeRecordIndex() {
    const std::string name = "indGecici" + std::to_string(options_.number);
    if (!ownIndex_) {
        const std::string sql = "CREATE INDEX " + name + " ON Kayit (Surum, Ad)";
        if (call(Kind::Write, {Err::IndexExists}, [&] { execute(sql.c_str(), {}); }) != 0) {
            ownIndex_ = name; // of an earlier life
            return;
        }
        ownIndex_ = name;
    }
    call(Kind::Read, {}, [&] { // others have changed rows since it was made
        const ReadScope scope(pages());
        std::vector<jet::RowId> places;
        for (jet::Scan rows = records_->scan(); rows.next();)
            places.push_back(rows.id());
        std::sort(places.begin(), places.end());
        compareIndex(*records_, name.c_str(), places);
    });
    if (dice(2) == 0) return;
    const std::string sql = "DROP INDEX " + name + " ON Kayit";
    if (call(Kind::Write, {}, [&] { execute(sql.c_str(), {}); }) == 0) ownIndex_.reset();
}

void Worker::ownTable() {
    const std::string name = "Gecici" + std::to_string(options_.number);
    bool left = false; // by an earlier life
    call(Kind::Read, {}, [&] { left = database_->hasTable(name); });
    const auto run = [&](const std::string& sql) {
        return call(Kind::Write, {}, [&] { execute(sql.c_str(), {}); }) == 0;
    };
    if (left && !run("DROP TABLE " + name)) return;
    if (!run("CREATE TABLE " + name + " (A LONG CONSTRAINT anahtar PRIMARY KEY, B TEXT(20), C MEMO)")) return;
    const int rows = 1 + dice(20);
    int written = 0;
    for (int i = 0; i < rows; ++i)
        written += run("INSERT INTO " + name + " (A, B) VALUES (" + std::to_string(i) + ", 'x')");
    call(Kind::Read, {}, [&] {
        if (query(("SELECT Count(*) AS Adet FROM " + name).c_str()).at(0, 0).toInt() != written)
            fault("own table does not hold what was written");
    });
    run("DROP TABLE " + name);
}

void Worker::insertChanging() {
    const int32_t key = freshId();
    diary_.begin(What::Changing, key);
    const int error = call(Kind::Write, {}, [&] {
        if (dice(2) == 0) {
            execute("INSERT INTO Degisen (Id, Metin) VALUES (?, ?)", {key, "satir"});
            return;
        }
        changing_->addNew();
        changing_->set("Id", Value(key));
        changing_->set("Metin", Value("satir"));
        changing_->update();
    });
    diary_.end(error == 0);
}

void Worker::readChanging() {
    call(Kind::Read, {}, [&] {
        const ReadScope scope(pages());
        const auto rows = query("SELECT * FROM Degisen");
        tally(Tally::Contents);
        if (rows.columns().size() != changing_->def().fields.size())
            fault("SQL and the definition differ in fields");
        for (size_t i = 0; i < rows.rowCount(); ++i)
            if (rows.at(i, "Metin").toText() != "satir")
                return fault("a row lost its text over a structure change");
        if (rows.rowCount() != changing_->rowCount()) fault("SELECT * and the row count differ");
    });
}

} // namespace proof
