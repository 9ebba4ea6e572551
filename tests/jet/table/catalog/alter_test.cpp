// Structure statements on filled tables: rows, indexes and other tables stay as they were.
#include "catalog_fixture.h"

#include <functional>

namespace catalog_test {
namespace {

using jet::Database;
using jet::FieldDef;
using jet::IndexDef;
using jet::Type;
using jet::Value;

constexpr int kRows = 700;

class Alter : public Files {
  protected:
    void SetUp() override {
        Files::SetUp();
        database_ = Database::create(file("a.mdb"));
        FieldDef id = field("Id", Type::Long);
        id.autoNumber = true;
        FieldDef code = field("Kod", Type::Text, 12);
        code.required = true;
        database_->createTable("T",
                               {id, code, field("Ad", Type::Text, 40), field("Puan", Type::Double),
                                field("Not", Type::Memo), field("Aktif", Type::Boolean)},
                               {primaryKey(0), index("Ad", {2, 3}), index("Kod", {1})});
        database_->createTable("Diğer", {field("A", Type::Text, 10)}, {primaryKey(0)});
        jet::WriteBatch batch(*database_);
        jet::Table table = database_->openTable("T");
        for (int i = 0; i < kRows; ++i)
            table.insert(std::vector<Value>{Value(), std::to_string(10000 + i * 7 % kRows),
                                            i % 10 ? Value("Ad " + std::to_string(i % 90)) : Value(), i / 4.0,
                                            i % 3 ? Value(std::string(static_cast<size_t>(i), 'n')) : Value(),
                                            i % 2 == 0});
        jet::Table other = database_->openTable("Diğer");
        for (const char* text : {"ı", "i", "İ2", "I2"})
            other.insert(std::vector<Value>{text});
        batch.commit();
    }
    void reopen() {
        database_.reset();
        database_ = Database::open(file("a.mdb"));
    }
    // The rows, each field left out that is in `without`.
    std::vector<std::string> rows(const std::vector<std::string>& without = {}) {
        std::vector<std::string> found;
        for (std::string row : rowsOf(*database_, "T")) {
            for (const std::string& name : without) {
                const size_t at = row.find(name + "=");
                if (at != std::string::npos) row.erase(at, row.find('|', at) - at + 1);
            }
            found.push_back(row);
        }
        std::sort(found.begin(), found.end());
        return found;
    }
    std::unique_ptr<Database> database_;
};

TEST_F(Alter, EachStatementLeavesTheOtherFieldsAsTheyWere) {
    const auto altered = [](FieldDef f, std::function<void(FieldDef&)> how) {
        how(f);
        return f;
    };
    struct Case {
        const char* what;
        std::function<void(Database&)> statement;
        std::vector<std::string> touched; // fields not compared
        std::vector<std::string> fieldsAfter;
        std::vector<std::string> indexesAfter;
    };
    const std::vector<std::string> fields{"Id", "Kod", "Ad", "Puan", "Not", "Aktif"},
        indexes{"Ad", "Kod", "PrimaryKey"};
    const auto with = [&](const std::string& name) {
        auto all = fields;
        all.push_back(name);
        return all;
    };
    const Case cases[] = {
        {"add text",
         [](Database& d) { d.addField("T", field("Yeni", Type::Text, 9)); },
         {"Yeni"},
         with("Yeni"),
         indexes},
        {"add boolean",
         [](Database& d) { d.addField("T", field("Yeni", Type::Boolean)); },
         {"Yeni"},
         with("Yeni"),
         indexes},
        {"add memo",
         [](Database& d) { d.addField("T", field("Yeni", Type::Memo)); },
         {"Yeni"},
         with("Yeni"),
         indexes},
        {"add fixed",
         [](Database& d) { d.addField("T", field("Yeni", Type::Date)); },
         {"Yeni"},
         with("Yeni"),
         indexes},
        {"drop memo",
         [](Database& d) { d.dropField("T", "not"); },
         {"Not"},
         {"Id", "Kod", "Ad", "Puan", "Aktif"},
         indexes},
        {"drop boolean",
         [](Database& d) { d.dropField("T", "Aktif"); },
         {"Aktif"},
         {"Id", "Kod", "Ad", "Puan", "Not"},
         indexes},
        {"rename to a longer name",
         [](Database& d) { d.renameField("T", "Kod", "Öğrenci Kodu"); },
         {"Kod", "Öğrenci Kodu"},
         {"Id", "Öğrenci Kodu", "Ad", "Puan", "Not", "Aktif"},
         indexes},
        {"widen text",
         [&](Database& d) {
             d.alterField("T", "Ad", altered(field("Ad", Type::Text, 200), [](FieldDef&) {}));
         },
         {},
         fields,
         indexes},
        {"narrow text",
         [](Database& d) { d.alterField("T", "Ad", field("Ad", Type::Text, 10)); },
         {},
         fields,
         indexes},
        {"text to memo",
         [](Database& d) { d.alterField("T", "Kod", field("Kod", Type::Memo)); },
         {},
         fields,
         indexes},
        {"text to long, indexed",
         [](Database& d) { d.alterField("T", "Kod", field("Kod", Type::Long)); },
         {},
         fields,
         indexes},
        {"memo to text",
         [](Database& d) {
             d.dropIndex("T", "Kod");
             d.alterField("T", "Kod", field("Kod", Type::Memo));
             d.alterField("T", "Kod", field("Kod", Type::Text, 12));
             d.createIndex("T", index("Kod", {1}));
         },
         {},
         fields,
         indexes},
        {"autonumber to plain",
         [](Database& d) { d.alterField("T", "Id", field("Id", Type::Long)); },
         {},
         fields,
         indexes},
        {"default and required",
         [&](Database& d) {
             d.alterField("T", "Ad", altered(field("Ad", Type::Text, 40), [](FieldDef& f) {
                              f.required = true;
                              f.defaultValue = "\"yok\"";
                          }));
         },
         {},
         fields,
         indexes},
        {"order",
         [](Database& d) {
             d.setFieldOrder("T", {"aktif", "Ad"});
         },
         fields,
         {"Aktif", "Ad", "Id", "Kod", "Puan", "Not"},
         indexes},
        {"create index",
         [](Database& d) {
             IndexDef i = index("Puan", {3});
             i.fields[0].descending = true;
             i.unique = true;
             d.createIndex("T", i);
         },
         {},
         fields,
         {"Ad", "Kod", "PrimaryKey", "Puan"}},
        {"drop index", [](Database& d) { d.dropIndex("T", "ad"); }, {}, fields, {"Kod", "PrimaryKey"}},
        {"drop primary key", [](Database& d) { d.dropIndex("T", "PrimaryKey"); }, {}, fields, {"Ad", "Kod"}},
        {"rename index",
         [](Database& d) { d.renameIndex("T", "Ad", "indAd"); },
         {},
         fields,
         {"indAd", "Kod", "PrimaryKey"}},
    };
    database_.reset();
    const fs::path original = file("original.mdb");
    fs::copy_file(file("a.mdb"), original);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        database_.reset();
        fs::remove(file("a.mdb"));
        fs::copy_file(original, file("a.mdb"));
        reopen();
        const auto before = rows(c.touched), other = rowsOf(*database_, "Diğer");
        c.statement(*database_);
        for (int pass = 0; pass < 2; ++pass) {
            EXPECT_EQ(rows(c.touched), before);
            EXPECT_EQ(rowsOf(*database_, "Diğer"), other);
            EXPECT_EQ(fieldNames(*database_, "T"), c.fieldsAfter);
            std::vector<std::string> names;
            for (const IndexDef& i : database_->tableDef("T").indexes) {
                names.push_back(i.name);
                EXPECT_EQ(along(*database_, "T", i.name, "Id").size(), size_t{kRows}) << i.name;
            }
            std::sort(names.begin(), names.end(),
                      [](const auto& a, const auto& b) { return jet::foldName(a) < jet::foldName(b); });
            EXPECT_EQ(names, c.indexesAfter);
            EXPECT_EQ(faultsOf(*database_), "");
            if (pass == 0) reopen();
        }
        if (haveMdbtools()) {
            EXPECT_EQ(exported(file("a.mdb"), "T").size(), size_t{kRows});
            EXPECT_EQ(exported(file("a.mdb"), "Diğer").size(), other.size());
        }
        // The table goes on taking rows, in every index.
        jet::Table table = database_->openTable("T");
        const size_t ad = table.def().findField("Ad").value();
        std::vector<Value> row(table.def().fields.size());
        row[ad] = "sonraki";
        row[table.def().findField("Puan").value_or(0)] = 1e6;
        for (const char* name : {"Kod", "Öğrenci Kodu"})
            if (const auto at = table.def().findField(name)) row[*at] = "99999";
        const size_t id = table.def().findField("Id").value();
        if (!table.def().fields[id].autoNumber) row[id] = 5000;
        table.insert(row);
        EXPECT_EQ(faultsOf(*database_), "");
    }
}

TEST_F(Alter, RefusedStatementsChangeNothing) {
    const std::string tooLong(65, 'a');
    FieldDef counter = field("Sayaç", Type::Long);
    counter.autoNumber = true;
    IndexDef unique = index("Tekil", {2});
    unique.unique = true;
    IndexDef key = primaryKey(1);
    key.name = "Baska";
    IndexDef needed = index("Gerekli", {2});
    needed.required = true;
    struct Case {
        const char* what;
        std::function<void(Database&)> statement;
        int number;
    };
    const Case cases[] = {
        {"add existing", [](Database& d) { d.addField("T", field("KOD", Type::Long)); }, 3191},
        {"add long name", [&](Database& d) { d.addField("T", field(tooLong, Type::Long)); }, 3125},
        {"add second autonumber", [&](Database& d) { d.addField("T", counter); }, 3001},
        {"add to no table", [](Database& d) { d.addField("Yok", field("A", Type::Long)); }, 3078},
        {"drop indexed", [](Database& d) { d.dropField("T", "Kod"); }, 3001},
        {"drop unknown", [](Database& d) { d.dropField("T", "Yok"); }, 3265},
        {"drop last",
         [](Database& d) {
             d.dropIndex("Diğer", "PrimaryKey");
             d.dropField("Diğer", "A");
         },
         3001},
        {"rename to taken", [](Database& d) { d.renameField("T", "Kod", "ad"); }, 3191},
        {"rename unknown", [](Database& d) { d.renameField("T", "Yok", "X"); }, 3265},
        {"text to long, no numbers",
         [](Database& d) {
             d.dropIndex("T", "Ad");
             d.alterField("T", "Ad", field("Ad", Type::Long));
         },
         3421},
        {"narrow too far", [](Database& d) { d.alterField("T", "Ad", field("Ad", Type::Text, 4)); }, 3163},
        {"memo to text too long",
         [](Database& d) { d.alterField("T", "Not", field("Not", Type::Text, 255)); }, 3163},
        {"indexed text to OLE", [](Database& d) { d.alterField("T", "Kod", field("Kod", Type::Ole)); }, 3001},
        {"lossy key",
         [](Database& d) {
             IndexDef i = index("P", {3});
             i.unique = true;
             d.createIndex("T", i);
             d.alterField("T", "Puan", field("Puan", Type::Integer));
         },
         3022},
        {"unique over equal", [&](Database& d) { d.createIndex("T", unique); }, 3022},
        {"required over null", [&](Database& d) { d.createIndex("T", needed); }, 3058},
        {"second key", [&](Database& d) { d.createIndex("T", key); }, 3283},
        {"index exists", [](Database& d) { d.createIndex("T", index("ad", {1})); }, 3284},
        {"drop unknown index", [](Database& d) { d.dropIndex("T", "Yok"); }, 3265},
        {"rename index to taken", [](Database& d) { d.renameIndex("T", "Ad", "KOD"); }, 3284},
        {"order of unknown",
         [](Database& d) {
             d.setFieldOrder("T", {"Ad", "Yok"});
         },
         3265},
    };
    const auto before = rows();
    const auto names = fieldNames(*database_, "T");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        database_->pages().beginWrite();
        EXPECT_EQ(errorOf([&] { c.statement(*database_); }), c.number);
        database_->pages().rollbackWrite(); // what a case prepared
        EXPECT_EQ(rows(), before);
        EXPECT_EQ(fieldNames(*database_, "T"), names);
        EXPECT_EQ(database_->tableDef("T").indexes.size(), 3u);
    }
    // Outside a batch the failed statement alone must undo itself, on the disk as well.
    database_->dropIndex("T", "Ad");
    database_.reset();
    const std::string bytes = bytesOf(file("a.mdb"));
    reopen();
    EXPECT_EQ(errorOf([&] { database_->alterField("T", "Ad", field("Ad", Type::Long)); }), 3421);
    database_.reset();
    EXPECT_TRUE(bytesOf(file("a.mdb")) == bytes);
}

TEST_F(Alter, NewIndexOrdersRows) {
    database_->createIndex("T", index("Yeni", {1}));
    auto values = along(*database_, "T", "Yeni", "Kod");
    EXPECT_EQ(values.size(), size_t{kRows});
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    IndexDef down = index("Ters", {3, 0});
    down.fields[0].descending = true;
    database_->createIndex("T", down);
    EXPECT_EQ(along(*database_, "T", "Ters", "Puan").front(), "174.75");
    EXPECT_EQ(along(*database_, "T", "Ters", "Puan").back(), "0");
}

TEST_F(Alter, AutoNumberAddedToRowsCountsThemAndGoesOn) {
    FieldDef counter = field("Sıra", Type::Long);
    counter.autoNumber = true;
    database_->addField("Diğer", counter);
    database_->createIndex("Diğer", index("Sıra", {1}));
    EXPECT_EQ(along(*database_, "Diğer", "Sıra", "Sıra"), (std::vector<std::string>{"1", "2", "3", "4"}));
    database_->openTable("Diğer").insert(std::vector<Value>{"beş", Value()}, std::array{true, false});
    EXPECT_EQ(along(*database_, "Diğer", "Sıra", "Sıra").back(), "5");
}

TEST_F(Alter, ManyDropsAndAddsKeepRowsReadable) {
    for (int i = 0; i < 40; ++i) {
        database_->addField(
            "T", field("Geçici" + std::to_string(i), i % 2 ? Type::Text : Type::Long, i % 2 ? 10 : 0));
        jet::Table table = database_->openTable("T");
        table.moveFirst();
        table.edit();
        table.set("Geçici" + std::to_string(i), i % 2 ? Value("dolu") : Value(i));
        table.update();
        if (i >= 2) database_->dropField("T", "Geçici" + std::to_string(i - 2));
    }
    EXPECT_EQ(rows().size(), size_t{kRows});
    const auto after = rows();
    EXPECT_EQ(std::count_if(after.begin(), after.end(),
                            [](const std::string& row) {
                                return row.find("Geçici38=38|Geçici39=dolu|") != std::string::npos;
                            }),
              1);
    EXPECT_EQ(faultsOf(*database_), "");
}

} // namespace
} // namespace catalog_test
