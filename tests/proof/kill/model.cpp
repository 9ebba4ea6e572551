#include "model.h"

#include "jet/pages/io_memory.h"

#include <algorithm>
#include <set>

namespace proof {

using jet::Value;

namespace {

std::string textOf(int version, size_t length) {
    static constexpr const char* kLetters[] = {"a", "b", "ç", "d", "e", "ğ", "ı",
                                               "İ", "k", "ö", "ş", "ü", "z", " "};
    std::mt19937 dice(static_cast<uint32_t>(version));
    std::string text = std::to_string(version) + ":";
    for (size_t i = 0; i < length; ++i)
        text += kLetters[dice() % std::size(kLetters)];
    return text + ".";
}
Value nameOf(int version) { return textOf(version, 5 + version % 40); }
Value noteOf(int version) {
    constexpr size_t kLengths[] = {0, 30, 500, 3000, 9000};
    const size_t length = kLengths[version % std::size(kLengths)];
    return length == 0 ? Value() : Value(textOf(version, length));
}

int keyOf(int worker, size_t at) { return worker * 1000 + static_cast<int>(at); }

// The life of a worker's own table; the last step drops it.
const std::vector<std::string>& stages() {
    static const std::vector<std::string> kStages{
        "CREATE TABLE # (A LONG CONSTRAINT PrimaryKey PRIMARY KEY, B TEXT(20))",
        "ALTER TABLE # ADD COLUMN C MEMO",
        "CREATE INDEX Sira ON # (B, A DESC)",
        "UPDATE # SET C = B & ' numaralı satırın uzun açıklaması', B = B & '0'",
        "ALTER TABLE # ALTER COLUMN B LONG",
        "DROP INDEX Sira ON #",
        "ALTER TABLE # DROP COLUMN C",
        "DROP TABLE #"};
    return kStages;
}
constexpr int kOwnRows = 40;

std::string ownTable(int worker) { return "Gecici" + std::to_string(worker); }

void enterStage(jet::Database& database, jet::SqlSession& sql, int worker, int stage) {
    std::string text = stages()[static_cast<size_t>(stage == 0 ? stages().size() - 1 : stage - 1)];
    text.replace(text.find('#'), 1, ownTable(worker));
    if (stage != 1) {
        sql.execute(text);
        return;
    }
    jet::WriteBatch batch(database);
    sql.execute(text);
    for (int row = 0; row < kOwnRows; ++row) {
        const std::vector<Value> values{row, std::to_string(row * 7)};
        sql.execute("INSERT INTO " + ownTable(worker) + " VALUES (?, ?)", values);
    }
    batch.commit();
}

// What can be told of a stage: fields, indexes, and a sum over the rows.
std::string signatureOf(jet::Database& database, const std::string& name) {
    const jet::ReadScope read(database.pages());
    jet::Table table = database.openTable(name);
    const jet::TableDef def = table.def();
    std::string text;
    for (const jet::FieldDef& field : def.fields)
        text += field.name + std::to_string(static_cast<int>(field.type)) + ",";
    for (const jet::IndexDef& index : def.indexes)
        text += index.name + ",";
    size_t sum = 0, rows = 0;
    for (jet::Scan scan = table.scan(); scan.next(); ++rows)
        for (size_t i = 0; i < def.fields.size(); ++i)
            sum += std::hash<std::string>()(scan.value(i).toText()) * (i + 1);
    return text + std::to_string(rows) + "," + std::to_string(sum);
}

std::map<std::string, int> knownSignatures() {
    const auto io = std::make_shared<jet::MemoryIo>();
    jet::CreateOptions options;
    options.io = io;
    const auto database = jet::Database::create("/a.mdb", options);
    jet::SqlSession sql(*database);
    std::map<std::string, int> known;
    for (int stage = 1; stage < static_cast<int>(stages().size()); ++stage) {
        enterStage(*database, sql, 0, stage);
        known.emplace(signatureOf(*database, ownTable(0)), stage);
    }
    return known;
}

void readRows(jet::Database& database, std::vector<Model>& models, std::vector<std::string>& faults) {
    jet::Table table = database.openTable("Kayit");
    for (jet::Scan scan = table.scan(); scan.next();) {
        const int key = static_cast<int>(scan.value(0).toInt()),
                  version = static_cast<int>(scan.value(1).toInt());
        const auto worker = static_cast<size_t>(key / 1000);
        if (worker >= models.size() || scan.value(2) != nameOf(version) || scan.value(3) != noteOf(version))
            faults.push_back("row " + std::to_string(key) + " does not follow from its version");
        else
            models[worker].rows[key] = version;
    }
}

void readBatches(jet::Database& database, std::vector<Model>& models, std::vector<std::string>& faults) {
    std::map<int, std::set<int>> found;
    jet::Table table = database.openTable("Yigin");
    for (jet::Scan scan = table.scan(); scan.next();) {
        const int batch = static_cast<int>(scan.value(0).toInt()),
                  row = static_cast<int>(scan.value(1).toInt());
        found[batch].insert(row);
        if (scan.value(2) != Value(textOf(batch + row, 30)))
            faults.push_back("text of batch " + std::to_string(batch));
    }
    for (const auto& [batch, rows] : found) {
        if (*rows.rbegin() + 1 != static_cast<int>(rows.size()))
            faults.push_back("batch " + std::to_string(batch) + " has gaps");
        models[static_cast<size_t>(batch % kWorkers)].batches[batch] = static_cast<int>(rows.size());
    }
}

} // namespace

void apply(Model& model, const Action& action) {
    switch (action.deed) {
    case Deed::Insert:
    case Deed::Update: model.rows[action.key] = action.value; break;
    case Deed::Delete: model.rows.erase(action.key); break;
    case Deed::UpdateAll:
        for (auto& [key, version] : model.rows)
            version = action.value;
        break;
    case Deed::BatchIn: model.batches[action.key] = action.value; break;
    case Deed::BatchOut: model.batches.erase(action.key); break;
    case Deed::Structure: model.stage = action.value; break;
    }
}

std::string difference(const Model& expected, const Model& found) {
    const auto maps = [](const char* what, const std::map<int, int>& a, const std::map<int, int>& b) {
        std::string text;
        for (const auto& [key, value] : a)
            if (!b.contains(key) || b.at(key) != value)
                text += std::string(what) + " " + std::to_string(key) + " should be " +
                        std::to_string(value) + " is " +
                        (b.contains(key) ? std::to_string(b.at(key)) : "none") + "; ";
        for (const auto& [key, value] : b)
            if (!a.contains(key)) text += std::string(what) + " " + std::to_string(key) + " should not be; ";
        return text;
    };
    std::string text =
        maps("row", expected.rows, found.rows) + maps("batch", expected.batches, found.batches);
    if (expected.stage != found.stage)
        text += "stage " + std::to_string(found.stage) + " should be " + std::to_string(expected.stage);
    return text.substr(0, 400);
}

Action Chooser::next(const Model& model) {
    const size_t dice = below(100);
    next_ += kWorkers;
    const int fresh = next_;
    if (dice < 12)
        return {Deed::BatchIn, fresh - fresh % kWorkers + worker_, 3 + static_cast<int>(below(60))};
    if (dice < 22 && model.batches.size() > 3) return {Deed::BatchOut, model.batches.begin()->first, 0};
    if (dice < 32) return {Deed::Structure, 0, (model.stage + 1) % static_cast<int>(stages().size())};
    if (dice < 37 && !model.rows.empty()) return {Deed::UpdateAll, 0, fresh};
    const int key = keyOf(worker_, below(kKeys));
    if (!model.rows.contains(key)) return {Deed::Insert, key, fresh};
    return below(3) == 0 ? Action{Deed::Delete, key, 0} : Action{Deed::Update, key, fresh};
}

void createDatabase(const std::filesystem::path& file) {
    const auto database = jet::Database::create(file);
    jet::SqlSession sql(*database);
    sql.execute(
        "CREATE TABLE Kayit (Anahtar LONG CONSTRAINT PrimaryKey PRIMARY KEY, Surum LONG, Ad TEXT(60), "
        "Aciklama MEMO)");
    sql.execute("CREATE INDEX Ad ON Kayit (Ad)");
    sql.execute("CREATE UNIQUE INDEX Surum ON Kayit (Surum DESC, Anahtar)");
    sql.execute(
        "CREATE TABLE Yigin (Parti LONG, Sira LONG, Metin TEXT(80), CONSTRAINT PrimaryKey PRIMARY KEY "
        "(Parti, Sira))");
}

void perform(jet::Database& database, jet::SqlSession& sql, int worker, const Action& action) {
    const Value name = nameOf(action.value), note = noteOf(action.value);
    const std::vector<Value> content{action.value, name, note};
    switch (action.deed) {
    case Deed::Insert: {
        const std::vector<Value> row{action.key, action.value, name, note};
        sql.execute("INSERT INTO Kayit VALUES (?, ?, ?, ?)", row);
        break;
    }
    case Deed::Update: {
        const std::vector<Value> row{action.value, name, note, action.key};
        sql.execute("UPDATE Kayit SET Surum = ?, Ad = ?, Aciklama = ? WHERE Anahtar = ?", row);
        break;
    }
    case Deed::Delete:
        sql.execute("DELETE FROM Kayit WHERE Anahtar = ?", std::vector<Value>{action.key});
        break;
    case Deed::UpdateAll: {
        const std::vector<Value> row{action.value, name, note, keyOf(worker, 0), keyOf(worker, kKeys)};
        sql.execute("UPDATE Kayit SET Surum = ?, Ad = ?, Aciklama = ? WHERE Anahtar BETWEEN ? AND ?", row);
        break;
    }
    case Deed::BatchIn: {
        jet::WriteBatch batch(database);
        for (int row = 0; row < action.value; ++row) {
            const std::vector<Value> values{action.key, row, textOf(action.key + row, 30)};
            sql.execute("INSERT INTO Yigin VALUES (?, ?, ?)", values);
        }
        batch.commit();
        break;
    }
    case Deed::BatchOut:
        sql.execute("DELETE FROM Yigin WHERE Parti = ?", std::vector<Value>{action.key});
        break;
    case Deed::Structure: enterStage(database, sql, worker, action.value); break;
    }
}

std::vector<Model> readModels(jet::Database& database, std::vector<std::string>& faults) {
    static const std::map<std::string, int> signatures = knownSignatures();
    const jet::ReadScope read(database.pages());
    std::vector<Model> models(kWorkers);
    readRows(database, models, faults);
    readBatches(database, models, faults);
    for (int worker = 0; worker < kWorkers; ++worker) {
        if (!database.hasTable(ownTable(worker))) continue;
        const auto known = signatures.find(signatureOf(database, ownTable(worker)));
        if (known == signatures.end())
            faults.push_back(ownTable(worker) + " is in no known stage");
        else
            models[static_cast<size_t>(worker)].stage = known->second;
    }
    return models;
}

} // namespace proof
