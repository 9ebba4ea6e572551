// worker.h: records under keys that everybody wants. Content follows from identity and version, so a row that
// is half one and half another shows at once.
#include "worker.h"

#include <algorithm>

namespace proof {

using jet::Err;
using jet::ReadScope;
using jet::SeekOp;
using jet::Value;
using jet::WriteScope;

namespace {
int32_t whole(const Value& value) { return static_cast<int32_t>(value.toInt()); }
std::vector<Value> rowOf(int32_t key, int32_t id, int32_t version) {
    return {key, id, version, nameOf(id, version), noteOf(id, version)};
}
constexpr bool kAllButKey[] = {false, false, true, true, true};
} // namespace

void Worker::checkContent(int32_t id, int32_t version, const Value& name, const Value& note) {
    tally(Tally::Contents);
    if (!isWholeNote(note.toText()))
        fault("memo of record " + std::to_string(id) + " is not one whole value");
    if (name.toText() != nameOf(id, version) || note.toText() != noteOf(id, version))
        fault("record " + std::to_string(id) + " version " + std::to_string(version) +
              " holds another content");
}

void Worker::insertRecord() {
    const int32_t key = 1 + dice(kRecordKeys), id = freshId();
    const int way = dice(3);
    diary_.begin(What::Insert, key, id, 1);
    const int error = call(Kind::Write, {Err::DuplicateKey}, [&] {
        const std::vector<Value> row = rowOf(key, id, 1);
        if (way == 0) {
            records_->insert(row);
        } else if (way == 1) {
            execute("INSERT INTO Kayit (No, Kimlik, Surum, Ad, Aciklama) VALUES (?, ?, ?, ?, ?)", row);
        } else {
            static constexpr const char* kNames[] = {"No", "Kimlik", "Surum", "Ad", "Aciklama"};
            records_->addNew();
            for (size_t i = 0; i < row.size(); ++i)
                records_->set(kNames[i], row[i]);
            records_->update();
        }
    });
    diary_.end(error == 0);
}

void Worker::updateRecord() {
    const int32_t key = 1 + dice(kRecordKeys);
    switch (dice(3)) {
    case 0: return updateByRecord(key);
    case 1: return updateBySql(key);
    default: return updateUnderLock(key);
    }
}

// DAO's way: no lock between edit() and update(), so another may change, delete or replace the record.
void Worker::updateByRecord(int32_t key) {
    int32_t id = 0, version = 0;
    const Value wanted[] = {key};
    const int found = call(Kind::Read, {Err::NoCurrentRecord}, [&] {
        records_->setIndex("indNo");
        if (!records_->seek(SeekOp::Equal, wanted)) return;
        records_->edit();
        if (whole(records_->value("No")) != key)
            return fault("a record turned into another under its handle");
        id = whole(records_->value("Kimlik"));
        version = whole(records_->value("Surum")) + 1;
        checkContent(id, version - 1, records_->value("Ad"), records_->value("Aciklama"));
    });
    if (found != 0 || id == 0) return;
    diary_.begin(What::Update, key, id, version);
    const int error = call(Kind::Write, {Err::DataChanged, Err::NoCurrentRecord}, [&] {
        records_->set("Surum", Value(version));
        records_->set("Ad", Value(nameOf(id, version)));
        records_->set("Aciklama", Value(noteOf(id, version)));
        records_->update();
    });
    diary_.end(error == 0);
}

// One statement that names the version it builds on.
void Worker::updateBySql(int32_t key) {
    int32_t id = 0, version = 0;
    call(Kind::Read, {}, [&] {
        const auto row = query("SELECT Kimlik, Surum FROM Kayit WHERE No = ?", {key});
        if (row.empty()) return;
        id = whole(row.at(0, 0));
        version = whole(row.at(0, 1)) + 1;
    });
    if (id == 0) return;
    size_t touched = 0;
    diary_.begin(What::Update, key, id, version);
    call(Kind::Write, {}, [&] {
        touched = execute(
            "UPDATE Kayit SET Surum = ?, Ad = ?, Aciklama = ? WHERE No = ? AND Kimlik = ? AND Surum = ?",
            {version, nameOf(id, version), noteOf(id, version), key, id, version - 1});
    });
    diary_.end(touched == 1);
}

void Worker::updateUnderLock(int32_t key) {
    const Value wanted[] = {key};
    bool begun = false;
    const int error = call(Kind::Write, {}, [&] {
        WriteScope write(pages());
        records_->setIndex("indNo");
        if (!records_->seek(SeekOp::Equal, wanted)) return;
        const jet::RowId place = records_->bookmark();
        const std::vector<Value> old = records_->read(place);
        const int32_t id = whole(old[1]), version = whole(old[2]) + 1;
        checkContent(id, version - 1, old[3], old[4]);
        diary_.begin(What::Update, key, id, version);
        begun = true;
        records_->update(place, rowOf(key, id, version), kAllButKey);
        write.commit();
    });
    if (begun) diary_.end(error == 0);
}

void Worker::deleteRecord() {
    const int32_t key = 1 + dice(kRecordKeys);
    const Value wanted[] = {key};
    const bool bySql = dice(2) == 0;
    bool begun = false;
    const int error = call(Kind::Write, {}, [&] {
        WriteScope write(pages());
        records_->setIndex("indNo");
        if (!records_->seek(SeekOp::Equal, wanted)) return;
        diary_.begin(What::Delete, key, whole(records_->value("Kimlik")), whole(records_->value("Surum")));
        begun = true;
        if (!bySql)
            records_->remove();
        else if (execute("DELETE FROM Kayit WHERE No = ?", {key}) != 1)
            fault("SQL does not find a row that a seek found");
        write.commit();
    });
    if (begun) diary_.end(error == 0);
}

void Worker::readRecord() {
    const int32_t key = 1 + dice(kRecordKeys);
    if (dice(2) == 0) {
        call(Kind::Read, {}, [&] {
            const auto rows = query("SELECT Kimlik, Surum, Ad, Aciklama FROM Kayit WHERE No BETWEEN ? AND ?",
                                    {key, key + 3});
            for (size_t i = 0; i < rows.rowCount(); ++i)
                checkContent(whole(rows.at(i, 0)), whole(rows.at(i, 1)), rows.at(i, 2), rows.at(i, 3));
        });
        return;
    }
    const Value wanted[] = {key};
    call(Kind::Read, {}, [&] {
        const ReadScope scope(pages());
        records_->setIndex("indNo");
        if (!records_->seek(SeekOp::GreaterOrEqual, wanted)) return;
        checkContent(whole(records_->value("Kimlik")), whole(records_->value("Surum")), records_->value("Ad"),
                     records_->value("Aciklama"));
    });
}

// What each index shows of the table must be what a walk over its pages shows.
void Worker::compareSeeksWithScan() {
    call(Kind::Read, {}, [&] {
        const ReadScope scope(pages());
        std::vector<jet::RowId> places;
        std::vector<int32_t> keys;
        for (jet::Scan rows = records_->scan(); rows.next();) {
            places.push_back(rows.id());
            keys.push_back(whole(rows.value(0)));
        }
        std::sort(places.begin(), places.end());
        std::sort(keys.begin(), keys.end());
        if (std::adjacent_find(keys.begin(), keys.end()) != keys.end()) fault("a key is there twice");
        if (records_->rowCount() != keys.size()) fault("the row count is not the number of rows");
        compareIndex(*records_, "indNo", places);
        compareIndex(*records_, "indAd", places);
        records_->setIndex("indNo");
        for (int i = 0; i < 8; ++i) {
            const int32_t key = 1 + dice(kRecordKeys);
            const Value wanted[] = {key};
            tally(Tally::SeekLooks);
            if (records_->seek(SeekOp::Equal, wanted) != std::binary_search(keys.begin(), keys.end(), key))
                fault("a seek contradicts the scan");
        }
    });
}

void Worker::compareIndex(jet::Table& table, const char* index, const std::vector<jet::RowId>& scanned) {
    std::vector<jet::RowId> walked;
    for (jet::Scan rows = table.scan(index, {}); rows.next();)
        walked.push_back(rows.id());
    std::sort(walked.begin(), walked.end());
    tally(Tally::SeekLooks);
    if (walked != scanned) fault(std::string("index ") + index + " contradicts the scan");
}

} // namespace proof
