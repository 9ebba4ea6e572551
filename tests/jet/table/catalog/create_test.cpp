// A new database: as Access lays one out, readable by others.
#include "catalog_fixture.h"

#include "jet/format/layout.h"
#include "jet/table/definition_store.h"

namespace catalog_test {
namespace {

using jet::Database;

class Create : public Files {};

TEST_F(Create, OtherToolsReadTheFile) {
    if (!haveMdbtools()) GTEST_SKIP() << "mdbtools is not installed";
    const fs::path path = file("yeni.mdb");
    Database::create(path);
    EXPECT_EQ(lines(run("mdb-ver '" + path.string() + "'")), std::vector<std::string>{"JET4"});
    EXPECT_EQ(run("mdb-tables -S -1 '" + path.string() + "'"),
              "MSysObjects\nMSysACEs\nMSysQueries\nMSysRelationships\n");
    EXPECT_EQ(lines(run("mdb-tables -1 '" + path.string() + "'")).size() <= 1, true);
    EXPECT_EQ(exported(path, "MSysObjects").size(), 16u);
    const auto permissions = exported(path, "MSysACEs");
    EXPECT_EQ(permissions.size(), 36u);
    EXPECT_EQ(exported(path, "MSysRelationships").size(), 0u);
}

TEST_F(Create, HeaderAndCatalogAreReadBack) {
    struct Case {
        const char* name;
        jet::SortOrder order;
        uint16_t codePage;
        const char* password;
    };
    for (const Case& c :
         {Case{"tr.mdb", jet::kTurkishSort, 1254, ""}, Case{"en.mdb", jet::kGeneralSort, 1252, "Gizli"}}) {
        jet::CreateOptions options;
        options.sortOrder = c.order;
        options.codePage = c.codePage;
        options.password = c.password;
        EXPECT_EQ(Database::create(file(c.name), options)->tableNames(jet::TableKinds::All).size(), 4u);

        EXPECT_EQ(errorOf([&] { Database::create(file(c.name), options); }), 3204);
        jet::OpenOptions open;
        open.password = c.password;
        auto database = Database::open(file(c.name), open);
        EXPECT_EQ(database->header().sortOrder, c.order);
        EXPECT_EQ(database->header().codePage, c.codePage);
        EXPECT_EQ(database->header().password, c.password);
        EXPECT_FALSE(database->readOnly());
        EXPECT_TRUE(database->tableNames().empty());
        EXPECT_EQ(database->tableNames(jet::TableKinds::All),
                  (std::vector<std::string>{"MSysACEs", "MSysObjects", "MSysQueries", "MSysRelationships"}));
        EXPECT_EQ(along(*database, "MSysObjects", "ParentIdName", "Name").size(), 16u);
        EXPECT_EQ(along(*database, "MSysObjects", "Id", "Id").front(), "-2147483648");
        EXPECT_EQ(faultsOf(*database), "");
    }
    jet::CreateOptions unknown;
    unknown.sortOrder = {0x0411, 0};
    EXPECT_EQ(errorOf([&] { Database::create(file("jp.mdb"), unknown); }), 3001);
    EXPECT_FALSE(fs::exists(file("jp.mdb")));
}

jet::TableDef definitionOn(Database& database, jet::PageNo page) {
    const jet::ReadScope read(database.pages());
    return jet::parseTableDef(jet::kJet4, page, jet::readDefinition(database.pages(), jet::kJet4, page));
}

// One line per column and index, with everything but the places that differ from file to file.
std::string shape(const jet::TableDef& def) {
    std::string text = "type " + std::to_string(def.tableType) + " max " + std::to_string(def.maxColumns) +
                       " variable " + std::to_string(def.variableColumns) + "\n";
    std::vector<const jet::FieldDef*> fields;
    for (const auto& f : def.fields)
        fields.push_back(&f);
    std::sort(fields.begin(), fields.end(),
              [](auto* a, auto* b) { return a->storedPosition < b->storedPosition; });
    for (const auto* f : fields) {
        text += f->name;
        for (const int part : {int(f->type), int(f->size), int(f->columnNumber), int(f->variableIndex),
                               f->fixedLength ? int(f->fixedOffset) : -1, int(f->flags), int(f->flags2),
                               int(f->ordinal), int(f->sortOrder.lcid)})
            text += " " + std::to_string(part);
        text += "\n";
    }
    for (const auto& i : def.indexes) {
        text += i.name;
        for (const auto& part : i.fields)
            text += " " + def.fields[part.field].name + (part.descending ? "-" : "+");
        for (const int part : {int(i.number), int(i.realNumber), int(i.type), int(i.relType), i.relatedIndex,
                               int(i.relatedTable), int(i.cascadeUpdate), int(i.cascadeDelete)})
            text += " " + std::to_string(part);
        text += i.unique ? " unique" : "";
        text += i.ignoreNulls ? " ignoreNulls" : "";
        text += "\n";
    }
    return text;
}

TEST_F(Create, SystemTablesAreThoseOfAnAccessFile) {
    ORVAN_NEED_SAMPLES();
    auto ours = Database::create(file("yeni.mdb"));
    auto theirs = Database::open(copyOf(orvan_test::sharedFolder() / "jet/samples/tr-provinces.mdb"));
    for (const jet::PageNo page : {2u, 3u, 4u, 5u})
        EXPECT_EQ(shape(definitionOn(*ours, page)), shape(definitionOn(*theirs, page)));
    for (const jet::PageNo page : {0u, 1u}) { // type, mark; the free map's frame
        const jet::ReadScope a(ours->pages()), b(theirs->pages());
        const auto left = ours->pages().read(page), right = theirs->pages().read(page);
        EXPECT_TRUE(std::equal(left.data(), left.data() + 0x18, right.data())) << page;
    }
}

TEST_F(Create, AFailedCreationLeavesNoFile) {
    EXPECT_NE(errorOf([&] { Database::create(file("yok/yeni.mdb")); }), 0);
    jet::CreateOptions options;
    options.password = "123456789012345678901";
    EXPECT_EQ(errorOf([&] { Database::create(file("uzun.mdb"), options); }), 3001);
    EXPECT_FALSE(fs::exists(file("uzun.mdb")));
}

} // namespace
} // namespace catalog_test
