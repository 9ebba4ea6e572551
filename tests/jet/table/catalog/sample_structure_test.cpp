// Structure statements on copies of files that other programs made.
#include "catalog_fixture.h"

#include "jet/format/layout.h"

#include <map>

namespace catalog_test {
namespace {

using jet::Database;
using jet::Type;
using jet::Value;

class SampleStructure : public Files {};

jet::OpenOptions passwordOf(const fs::path& sample) {
    jet::OpenOptions options;
    if (sample.filename() == "tr-password-Sifre12.mdb") options.password = "Şifre12";
    return options;
}

std::map<std::string, std::vector<std::string>> everything(Database& database) {
    std::map<std::string, std::vector<std::string>> all;
    for (const std::string& name : database.tableNames())
        all[name] = rowsOf(database, name);
    return all;
}

TEST_F(SampleStructure, EveryJet4SampleTakesStructureChanges) {
    ORVAN_NEED_SAMPLES();
    size_t changed = 0;
    for (const fs::path& sample : orvan_test::samples()) {
        SCOPED_TRACE(sample.filename().string());
        const fs::path path = copyOf(sample);
        auto database = Database::open(path, passwordOf(sample));
        if (database->layout().version != 4) continue;
        auto expected = everything(*database);
        const std::string faults = faultsOf(*database);

        database->createTable("Yeni Tablo", {field("A", Type::Text, 20), field("B", Type::Memo)},
                              {primaryKey(0)});
        database->openTable("Yeni Tablo").insert(std::vector<Value>{"ılık", "not"});
        expected["Yeni Tablo"] = {"A=ılık|B=not|"};
        for (auto& [name, rows] : expected) {
            if (!database->tableDef(name).readOnlyReason().empty()) continue;
            if (database->tableDef(name).indexes.size() >= jet::kMaxIndexes) continue;
            database->addField(name, field("Eklenen", Type::Long));
            const auto position = static_cast<uint16_t>(database->tableDef(name).fields.size() - 1);
            database->createIndex(name, index("indEklenen", {position}));
            database->renameField(name, "Eklenen", "Yeniden Adlandırılan");
            EXPECT_EQ(along(*database, name, "indEklenen", "Yeniden Adlandırılan").size(), rows.size())
                << name;
            database->dropIndex(name, "indEklenen");
            database->alterField(name, "Yeniden Adlandırılan", field("", Type::Text, 30));
            database->dropField(name, "Yeniden Adlandırılan");
            ++changed;
        }
        database.reset();
        database = Database::open(path, passwordOf(sample));
        EXPECT_EQ(everything(*database), expected);
        database->dropTable("Yeni Tablo");
        expected.erase("Yeni Tablo");
        EXPECT_EQ(everything(*database), expected);
        // Rows written anew even lose the orphaned long values that one of the files came with.
        for (const std::string& fault : lines(faultsOf(*database)))
            EXPECT_NE(faults.find(fault + "\n"), std::string::npos) << fault;
        database.reset();
        if (!haveMdbtools()) continue;
        for (const auto& [name, rows] : expected) {
            if (sample.filename() == "encoded-jet4.mdb") continue;
            EXPECT_EQ(exported(path, name), exported(sample, name)) << name;
        }
    }
    EXPECT_GT(changed, 20u);
}

TEST_F(SampleStructure, RelationsAreCarriedAlongAndProtectTheirTables) {
    ORVAN_NEED_SAMPLES();
    const fs::path path = copyOf(orvan_test::sharedFolder() / "jet/samples/tr-provinces.mdb");
    auto database = Database::open(path);
    const auto relation = [&](const std::string& part) {
        const auto rows = rowsOf(*database, "MSysRelationships");
        return std::any_of(rows.begin(), rows.end(),
                           [&](const auto& r) { return r.find(part) != std::string::npos; });
    };
    EXPECT_EQ(errorOf([&] { database->dropTable("iller"); }), 3001);
    EXPECT_EQ(errorOf([&] { database->dropTable("ilceler"); }), 3001);
    EXPECT_EQ(errorOf([&] { database->dropField("ilceler", "sehir"); }), 3001);
    EXPECT_EQ(errorOf([&] { database->alterField("ilceler", "sehir", field("", Type::Text, 20)); }), 3001);
    database->renameTable("iller", "Şehirler");
    database->renameField("ilceler", "sehir", "il_no");
    EXPECT_TRUE(relation("szReferencedObject=Şehirler|"));
    EXPECT_TRUE(relation("szColumn=il_no|"));
    EXPECT_FALSE(relation("=iller|"));
    EXPECT_EQ(along(*database, "MSysRelationships", "szReferencedObject", "szReferencedObject").back(),
              "Şehirler");
    EXPECT_EQ(rowsOf(*database, "Şehirler").size(), 81u);
}

TEST_F(SampleStructure, ForeignIndexesOfEnforcedRelationsStay) {
    ORVAN_NEED_SAMPLES();
    const fs::path path = copyOf(orvan_test::sharedFolder() / "jet/samples/indexTest-jet4.mdb");
    auto database = Database::open(path);
    size_t foreign = 0;
    for (const std::string& name : database->tableNames()) {
        const auto indexes = database->tableDef(name).indexes;
        for (const jet::IndexDef& i : indexes) {
            if (!i.foreign) continue;
            ++foreign;
            EXPECT_EQ(errorOf([&] { database->dropIndex(name, i.name); }), 3001);
            EXPECT_EQ(errorOf([&] { database->dropTable(name); }), 3001);
            const std::string used = database->tableDef(name).fields[i.fields[0].field].name;
            database->addField(name, field("X", Type::Long));
            database->alterField(name, "X", field("", Type::Double)); // rows written anew
            database->dropField(name, "X");
            const auto& after = *database->tableDef(name).findIndex(i.name);
            EXPECT_TRUE(after.foreign);
            EXPECT_EQ(after.number, i.number);
            EXPECT_EQ(after.relatedIndex, i.relatedIndex);
            EXPECT_EQ(after.relatedTable, i.relatedTable);
            EXPECT_EQ(after.cascadeUpdate, i.cascadeUpdate);
            EXPECT_EQ(database->tableDef(name).fields[after.fields[0].field].name, used);
        }
    }
    EXPECT_GT(foreign, 0u);
}

TEST_F(SampleStructure, CatalogRowsFollowTheFilesOwn) {
    ORVAN_NEED_SAMPLES();
    // How many security ids the container "Tables" hands on: user, users and, in the first, administrators.
    for (const auto& [name, handedOn] :
         {std::pair{"tr-provinces.mdb", 3u}, std::pair{"test2-jet4.mdb", 2u}}) {
        const fs::path path = copyOf(orvan_test::sharedFolder() / "jet/samples" / name);
        auto database = Database::open(path);
        const size_t permissions = rowsOf(*database, "MSysACEs").size();
        database->createTable("Yeni", {field("A", Type::Long)});
        EXPECT_EQ(rowsOf(*database, "MSysACEs").size(), permissions + handedOn) << name;
        const auto rows = rowsOf(*database, "MSysObjects");
        const auto row = std::find_if(rows.begin(), rows.end(), [](const auto& r) {
            return r.find("|Name=Yeni|") != std::string::npos;
        });
        ASSERT_NE(row, rows.end());
        for (const char* part : {"ParentId=251658241|", "Type=1|", "Flags=0|"})
            EXPECT_NE(row->find(part), std::string::npos) << part;
        EXPECT_EQ(row->find("Owner=(null)"), std::string::npos);
        EXPECT_EQ(row->find("DateCreate=(null)"), std::string::npos);
        database->dropTable("Yeni");
        EXPECT_EQ(rowsOf(*database, "MSysACEs").size(), permissions);
    }
}

} // namespace
} // namespace catalog_test
