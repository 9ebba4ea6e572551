// Opening: what is no database, passwords, read-only files, batches.
#include "catalog_fixture.h"

namespace catalog_test {

namespace {

using jet::Database;
using jet::Err;

class Open : public Files {};

TEST_F(Open, FilesThatAreNoDatabaseGiveTheirNumberAndStayAsTheyAre) {
    const std::string jet4Start("\x00\x01\x00\x00Standard Jet DB\x00\x01\x00\x00\x00", 24);
    const std::string aceStart("\x00\x01\x00\x00Standard ACE DB\x00\x02\x00\x00\x00", 24);
    struct Case {
        const char* name;
        std::string content;
        std::vector<Err> expected;
    };
    const Case cases[] = {
        {"bos.mdb", "", {Err::NotADatabase}},
        {"metin.mdb", "bu bir veritabanı değil\n", {Err::NotADatabase}},
        {"uzunmetin.mdb", std::string(10000, 'x'), {Err::NotADatabase}},
        {"sifirlar.mdb", std::string(8192, '\0'), {Err::NotADatabase}},
        {"ace.accdb", aceStart + std::string(8192, '\0'), {Err::NewerFormat}},
        {"kisa.mdb", jet4Start, {Err::NotADatabase, Err::Corrupt}},
    };
    for (const Case& c : cases) {
        writeFile(file(c.name), c.content);
        const int number = errorOf([&] { Database::open(file(c.name)); });
        EXPECT_TRUE(std::any_of(c.expected.begin(), c.expected.end(),
                                [&](Err e) { return static_cast<int>(e) == number; }))
            << c.name << " gave " << number;
        EXPECT_TRUE(bytesOf(file(c.name)) == c.content) << c.name;
    }
    EXPECT_EQ(errorOf([&] { Database::open(file("yok.mdb")); }), 3024);
    EXPECT_FALSE(fs::exists(file("yok.mdb")));
}

TEST_F(Open, TruncatedDatabasesGiveAnErrorAndStayAsTheyAre) {
    const fs::path path = file("kisalan.mdb");
    Database::create(path)->createTable("T", {field("A", jet::Type::Long)});
    const std::string whole = bytesOf(path);
    for (const size_t length : {size_t{4096}, size_t{8192}, size_t{5 * 4096}, size_t{7 * 4096 + 100}}) {
        const std::string part = whole.substr(0, length);
        writeFile(path, part);
        const int number = errorOf([&] {
            auto database = Database::open(path);
            database->tableDef("T");
        });
        EXPECT_NE(number, 0) << length;
        EXPECT_TRUE(bytesOf(path) == part) << length;
    }
}

TEST_F(Open, ErrorNamesTheFile) {
    try {
        Database::open(file("x").replace_filename(u8"Öğrenci.mdb"));
        FAIL();
    } catch (const jet::Error& error) {
        EXPECT_NE(error.path().find("Öğrenci.mdb"), std::string::npos) << error.what();
    }
}

TEST_F(Open, PasswordIsSetChangedRemovedAndTested) {
    const fs::path path = file("parola.mdb");
    Database::create(path)->createTable("T", {field("A", jet::Type::Long)});
    const std::string before = bytesOf(path);
    const auto opens = [&](const std::string& password) {
        jet::OpenOptions options;
        options.password = password;
        return errorOf([&] { Database::open(path, options)->tableDef("T"); });
    };
    const auto change = [&](const std::string& from, const std::string& to) {
        jet::OpenOptions options;
        options.password = from;
        return errorOf([&] { Database::open(path, options)->changePassword(from, to); });
    };
    EXPECT_EQ(opens("herhangi"), 0); // ignored where none is set

    EXPECT_EQ(change("", "Şifre12"), 0);
    EXPECT_EQ(opens(""), 3031);
    EXPECT_EQ(opens("şifre12"), 3031);
    EXPECT_EQ(opens("Şifre12 "), 3031);
    EXPECT_EQ(opens("Şifre12"), 0);

    EXPECT_EQ(change("Şifre12", "QZRTM081573209461234"), 0); // 20 characters: the longest
    EXPECT_EQ(opens("QZRTM081573209461234"), 0);
    EXPECT_EQ(change("QZRTM081573209461234", "QZRTM0815732094612345"), 3001);
    EXPECT_EQ(opens("QZRTM081573209461234"), 0);

    auto database = Database::open(path, [] {
        jet::OpenOptions options;
        options.password = "QZRTM081573209461234";
        return options;
    }());
    EXPECT_EQ(errorOf([&] { database->changePassword("başka", ""); }), 3031);
    database->changePassword("QZRTM081573209461234", "");
    database.reset();
    EXPECT_EQ(opens(""), 0);
    EXPECT_TRUE(bytesOf(path) == before); // nothing but those 40 bytes was touched
}

TEST_F(Open, PasswordOfAForeignFile) {
    ORVAN_NEED_SAMPLES();
    const fs::path path = copyOf(orvan_test::sharedFolder() / "jet/samples/tr-password-Sifre12.mdb");
    EXPECT_EQ(errorOf([&] { Database::open(path); }), 3031);
    jet::OpenOptions options;
    options.password = "Şifre12";
    auto database = Database::open(path, options);
    EXPECT_TRUE(database->hasTable("kişiler"));
    database->changePassword("Şifre12", "");
    database.reset();
    EXPECT_EQ(rowsOf(*Database::open(path), "Kodlar").size(), 22u);
    options.password.clear();
    options.ignorePassword = true;
    EXPECT_EQ(Database::open(path, options)->header().password, "");
}

TEST_F(Open, Jet3FilesAreReadOnlyWithAReason) {
    ORVAN_NEED_SAMPLES();
    const fs::path path = copyOf(orvan_test::sharedFolder() / "jet/samples/test-jet3.mdb");
    const std::string before = bytesOf(path);
    auto database = Database::open(path);
    EXPECT_TRUE(database->readOnly());
    EXPECT_FALSE(database->readOnlyReason().empty());
    EXPECT_EQ(database->tableNames(), (std::vector<std::string>{"Table1", "Table2", "Table3", "Table4"}));
    EXPECT_EQ(rowsOf(*database, "Table1").size(), 2u);
    EXPECT_EQ(errorOf([&] { database->createTable("X", {field("A", jet::Type::Long)}); }), 3027);
    EXPECT_NE(errorOf([&] { jet::WriteBatch batch(*database); }), 0);
    database.reset();
    EXPECT_TRUE(bytesOf(path) == before);
}

TEST_F(Open, AskedReadOnlyRefusesEveryChange) {
    const fs::path path = file("a.mdb");
    Database::create(path)->createTable("T", {field("A", jet::Type::Long)});
    jet::OpenOptions options;
    options.readOnly = true;
    auto database = Database::open(path, options);
    EXPECT_TRUE(database->readOnly());
    EXPECT_EQ(errorOf([&] { database->dropTable("T"); }), 3027);
    EXPECT_EQ(errorOf([&] { database->changePassword("", "x"); }), 3027);
    EXPECT_TRUE(database->hasTable("T"));
}

TEST_F(Open, BatchKeepsWhatWasWrittenBeforeAnError) {
    const fs::path path = file("a.mdb");
    auto database = Database::create(path);
    database->createTable("T", {field("A", jet::Type::Text, 5)}, {primaryKey(0)});
    const int number = errorOf([&] {
        jet::WriteBatch batch(*database);
        jet::Table table = database->openTable("T");
        table.insert(std::vector<jet::Value>{"bir"});
        database->addField("T", field("B", jet::Type::Long));
        EXPECT_EQ(errorOf([&] { database->renameField("T", "A", "B"); }), 3191);
        EXPECT_EQ(errorOf([&] { database->createTable("T", {field("A", jet::Type::Long)}); }), 3010);
        table.insert(std::vector<jet::Value>{"iki", 2});
        table.insert(std::vector<jet::Value>{"iki", 3});
    });
    EXPECT_EQ(number, 3022);
    database.reset();
    database = Database::open(path);
    EXPECT_EQ(rowsOf(*database, "T"), (std::vector<std::string>{"A=bir|B=(null)|", "A=iki|B=2|"}));
    EXPECT_EQ(faultsOf(*database), "");
}

} // namespace
} // namespace catalog_test
