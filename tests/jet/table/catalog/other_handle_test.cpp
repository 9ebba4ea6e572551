// Several handles on one file: structure changes are seen, references stay good while nothing changes.
#include "catalog_fixture.h"

#include "jet/format/layout.h"
#include "jet/table/definition_store.h"

namespace catalog_test {
namespace {

using jet::Database;
using jet::Type;
using jet::Value;

class OtherHandle : public Files {};

TEST_F(OtherHandle, SeesEveryStructureChange) {
    auto a = Database::create(file("a.mdb"));
    a->createTable("T", {field("A", Type::Long)});
    auto b = Database::open(file("a.mdb"));
    jet::Table table = b->openTable("T");
    table.insert(std::vector<Value>{1});

    a->addField("T", field("B", Type::Text, 5));
    EXPECT_EQ(fieldNames(*b, "T"), (std::vector<std::string>{"A", "B"}));
    table.insert(std::vector<Value>{2, "iki"}); // the open table handle follows
    EXPECT_EQ(rowsOf(*a, "T"), (std::vector<std::string>{"A=1|B=(null)|", "A=2|B=iki|"}));

    a->createIndex("T", primaryKey(0));
    EXPECT_EQ(errorOf([&] { table.insert(std::vector<Value>{2, "üç"}); }), 3022);

    b->renameTable("T", "Yeni");
    EXPECT_FALSE(a->hasTable("T"));
    EXPECT_TRUE(a->hasTable("yeni"));
    a->renameField("Yeni", "B", "C");
    EXPECT_EQ(fieldNames(*b, "Yeni"), (std::vector<std::string>{"A", "C"}));
    a->dropTable("Yeni");
    EXPECT_FALSE(b->hasTable("Yeni"));
    EXPECT_EQ(errorOf([&] { table.insert(std::vector<Value>{3, "x"}); }), 3078);
    EXPECT_EQ(faultsOf(*b), "");
}

// Values that were typed stay with their fields, by name, whatever others do to the structure meanwhile.
TEST_F(OtherHandle, ChangesTheStructureUnderAnUnfinishedRecord) {
    struct Case {
        const char* what;
        std::function<void(Database&)> change;
        int error; // of update()
        const char *added, *edited;
    };
    const auto secondDefault = [] {
        jet::FieldDef made = field("Z", Type::Text, 5);
        made.defaultValue = "\"yeni\"";
        return made;
    };
    const Case cases[] = {
        {"a field more", [&](Database& d) { d.addField("T", secondDefault()); }, 0,
         "A=(null)|B=b|C=c|Z=yeni|", "A=1|B=b|C=c|Z=(null)|"},
        {"an unset field less", [](Database& d) { d.dropField("T", "A"); }, 0, "B=b|C=c|", "B=b|C=c|"},
        {"one goes and one comes",
         [&](Database& d) {
             d.dropField("T", "A");
             d.addField("T", secondDefault());
         },
         0, "B=b|C=c|Z=yeni|", "B=b|C=c|Z=(null)|"},
        {"another order",
         [](Database& d) {
             d.setFieldOrder("T", {"C", "B"});
         },
         0, "C=c|B=b|A=(null)|", "C=c|B=b|A=1|"},
        {"a set field less", [](Database& d) { d.dropField("T", "B"); }, 3265, "", ""},
    };
    for (const Case& c : cases)
        for (const bool editing : {false, true}) {
            SCOPED_TRACE(std::string(c.what) + (editing ? ", editing" : ", adding"));
            const fs::path path =
                file(std::string("u") + std::to_string(&c - cases) + (editing ? "e.mdb" : "a.mdb"));
            auto a = Database::create(path);
            a->createTable("T",
                           {field("A", Type::Long), field("B", Type::Text, 5), field("C", Type::Text, 5)});
            auto b = Database::open(path);
            jet::Table table = b->openTable("T");
            if (editing) {
                table.insert(std::vector<Value>{1, "x", "y"});
                table.moveFirst();
                table.edit();
            } else {
                table.addNew();
            }
            table.set("B", "b");
            table.set("C", "c");
            c.change(*a);
            EXPECT_EQ(errorOf([&] { table.update(); }), c.error);
            if (c.error == 0)
                EXPECT_EQ(rowsOf(*a, "T"), (std::vector<std::string>{editing ? c.edited : c.added}));
            else
                EXPECT_EQ(rowsOf(*a, "T").size(), editing ? 1u : 0u);
            table.cancelUpdate();
            EXPECT_EQ(faultsOf(*b), "");
        }
}

TEST_F(OtherHandle, DefinitionsStayWhereTheyAreWhileOnlyRowsChange) {
    auto a = Database::create(file("a.mdb"));
    a->createTable("T", {field("A", Type::Long)});
    auto b = Database::open(file("a.mdb"));
    const jet::TableDef* def = &b->tableDef("T");
    a->openTable("T").insert(std::vector<Value>{1});
    EXPECT_EQ(&b->tableDef("T"), def);
    a->addField("T", field("B", Type::Long));
    EXPECT_EQ(b->tableDef("T").fields.size(), 2u);
}

TEST_F(OtherHandle, RolledBackStructureIsForgotten) {
    auto a = Database::create(file("a.mdb"));
    a->createTable("T", {field("A", Type::Long)});
    a->pages().beginWrite();
    a->addField("T", field("B", Type::Long));
    a->createTable("Yarım", {field("A", Type::Long)});
    EXPECT_TRUE(a->hasTable("Yarım"));
    a->pages().rollbackWrite();
    EXPECT_FALSE(a->hasTable("Yarım"));
    EXPECT_EQ(fieldNames(*a, "T"), std::vector<std::string>{"A"});
    EXPECT_EQ(faultsOf(*a), "");
}

// A text index in an order whose keys nobody here can make keeps its table from being written, and only that
// one.
TEST_F(OtherHandle, AnIndexOfUnknownOrderMakesItsTableReadOnly) {
    const fs::path path = file("a.mdb");
    {
        auto database = Database::create(path);
        database->createTable("Yabancı", {field("A", Type::Text, 10)}, {primaryKey(0)});
        database->createTable("Bizim", {field("A", Type::Text, 10)}, {primaryKey(0)});
        database->openTable("Yabancı").insert(std::vector<Value>{"bir"});
        jet::TableDef def = database->tableDef("Yabancı");
        def.fields[0].sortOrder = {0x0411, 0};
        def.rowCount = 1; // in memory it is not kept up to date
        jet::WriteScope write(database->pages());
        jet::writeDefinition(database->allocator(), def.page, jet::serializeTableDef(jet::kJet4, def));
        write.commit();
    }
    auto database = Database::open(path);
    EXPECT_FALSE(database->readOnly());
    EXPECT_FALSE(database->tableDef("Yabancı").readOnlyReason().empty());
    jet::Table table = database->openTable("Yabancı");
    EXPECT_EQ(errorOf([&] { table.insert(std::vector<Value>{"iki"}); }), 3027);
    EXPECT_EQ(errorOf([&] { database->alterField("Yabancı", "A", field("", Type::Memo)); }), 3001);
    EXPECT_EQ(errorOf([&] { database->createIndex("Yabancı", index("Yeni", {0})); }), 3001);
    EXPECT_EQ(rowsOf(*database, "Yabancı").size(), 1u);
    EXPECT_EQ(errorOf([&] { database->openTable("Bizim").insert(std::vector<Value>{"iki"}); }), 0);

    database->dropIndex("Yabancı", "PrimaryKey"); // with it goes the obstacle
    EXPECT_EQ(errorOf([&] { table.insert(std::vector<Value>{"iki"}); }), 0);
    EXPECT_EQ(faultsOf(*database), "");
}

} // namespace
} // namespace catalog_test
