// Random edits by us, on files of ours and on files made elsewhere: our own reader, mdbtools and the checker
// agree.
#include "jet/copy/compact.h"
#include "peer/peer.h"
#include "peer/random_edits.h"
#include "support/shared_samples.h"

#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using jet::Type;

constexpr const char* kPasswordOfSamples = "Şifre12"; // ignored by the files that have none

class Edits : public testing::Test {
  protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() / ("orvan-edits-" + std::to_string(::getpid()));
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    // Reads the file anew and by every other way; all must equal the model. `known`: faults it had before our
    // edits.
    void expectEverybodyReads(const fs::path& file, const std::string& table, const peer::Model& model,
                              const std::set<std::string>& known = {}) {
        using peer::Detail;
        jet::OpenOptions options;
        options.readOnly = true;
        const auto database = jet::Database::open(file, options);
        const jet::TableDef def = database->tableDef(table);
        const peer::Rows ours = peer::fromModel(peer::readModel(*database, table), def, Detail::Exact);
        EXPECT_EQ(peer::difference(ours, peer::fromModel(model, def, Detail::Exact)), "");
        EXPECT_EQ(database->openTable(table).rowCount(), model.size());
        if (peer::haveMdbTools()) {
            EXPECT_EQ(peer::difference(peer::fromModel(model, def, Detail::AsMdbTools),
                                       peer::exportedByMdbTools(file, def)),
                      "");
        }
        for (const std::string& fault : peer::faultsOf(file))
            EXPECT_TRUE(known.contains(fault)) << fault;
    }

    fs::path folder_;
};

jet::FieldDef field(const char* name, Type type, uint16_t size = 0) {
    jet::FieldDef def;
    def.name = name;
    def.type = type;
    def.size = size;
    return def;
}

jet::IndexDef index(const char* name, std::vector<jet::IndexField> fields) {
    jet::IndexDef def;
    def.name = name;
    def.fields = std::move(fields);
    return def;
}

// Every type of the system and every kind of index.
void createWideTable(jet::Database& database) {
    jet::FieldDef id = field("Sıra", Type::Long);
    id.autoNumber = true;
    jet::FieldDef name = field("Adı", Type::Text, 40);
    name.required = true;
    std::vector<jet::FieldDef> fields{id,
                                      name,
                                      field("Açıklama", Type::Memo),
                                      field("Evet", Type::Boolean),
                                      field("Küçük", Type::Byte),
                                      field("Tam", Type::Integer),
                                      field("Uzun", Type::Long),
                                      field("Para", Type::Currency),
                                      field("Tek", Type::Single),
                                      field("Çift", Type::Double),
                                      field("Tarih", Type::Date),
                                      field("Resim", Type::Ole),
                                      field("Kod", Type::Text, 8),
                                      field("İkili", Type::Binary, 20)};
    std::vector<jet::IndexDef> indexes{index("PrimaryKey", {{0, false}}),
                                       index("indAd", {{1, false}, {12, false}}),
                                       index("indTers", {{1, true}}),
                                       index("indKarma", {{5, false}, {6, true}}),
                                       index("indTek", {{6, false}, {9, false}}),
                                       index("indPara", {{7, true}}),
                                       index("indTarih", {{10, false}}),
                                       index("indKod", {{12, false}}),
                                       index("indBit", {{3, false}, {4, false}, {8, false}}),
                                       index("indIkili", {{13, false}})};
    indexes[0].primary = indexes[0].unique = true;
    indexes[4].unique = true;
    indexes[7].ignoreNulls = true;
    database.createTable("Geniş", fields, indexes);
}

TEST_F(Edits, twentyThousandRowsOfEveryTypeAgreeWithTheModelMdbToolsAndTheCheck) {
    const fs::path file = folder_ / "wide.mdb";
    peer::Model model;
    {
        const auto database = jet::Database::create(file);
        createWideTable(*database);
        peer::RandomEdits edits(*database, "Geniş", 20261122);
        for (int round = 0; edits.model().size() < 20'000; ++round) {
            jet::WriteBatch batch(*database);
            for (int i = 0; i < 2000; ++i)
                edits.step(0.9);
            batch.commit();
            ASSERT_LT(round, 100);
        }
        jet::WriteBatch batch(*database);
        for (int i = 0; i < 20'000; ++i)
            edits.step(0.5);
        batch.commit();
        model = edits.model();
    }
    expectEverybodyReads(file, "Geniş", model);
}

// In clear and encoded; with so little memory that pages go through the spill file.
TEST_F(Edits, tableEmptiedRowByRowIsSoundAndFillsAgain) {
    for (const uint32_t key : {0u, 0x7B1D03C4u}) {
        SCOPED_TRACE(key);
        const fs::path file = folder_ / ("emptied" + std::to_string(key) + ".mdb");
        peer::Model model;
        {
            jet::CreateOptions options;
            options.encodingKey = key;
            options.pages.cacheBytes = 100 * 4096;
            const auto database = jet::Database::create(file, options);
            createWideTable(*database);
            peer::RandomEdits edits(*database, "Geniş", 7);
            jet::WriteBatch batch(*database);
            for (int i = 0; i < 3000; ++i)
                edits.step(1.0);
            for (int i = 0; i < 40'000 && !edits.model().empty(); ++i)
                edits.step(0.0);
            EXPECT_LT(edits.model().size(), 10u);
            for (int i = 0; i < 1000; ++i)
                edits.step(0.9);
            batch.commit();
            model = edits.model();
        }
        std::ifstream in(file, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(in), {}};
        EXPECT_EQ(bytes.find(std::string("G\0e\0n\0i\0", 8)) == std::string::npos, key != 0);
        expectEverybodyReads(file, "Geniş", model);
    }
}

TEST_F(Edits, filesMadeElsewhereStaySoundUnderOurEdits) {
    ORVAN_NEED_SAMPLES();
    size_t tables = 0;
    for (const auto& sample : orvan_test::samples()) {
        const fs::path file = folder_ / sample.filename();
        fs::copy_file(sample, file);
        fs::permissions(file, fs::perms::owner_write, fs::perm_options::add);
        jet::OpenOptions options;
        options.ignorePassword = true;
        std::map<std::string, peer::Model> models;
        const std::set<std::string> known = peer::faultsOf(sample, kPasswordOfSamples);
        {
            const auto database = jet::Database::open(file, options);
            if (database->readOnly()) continue; // older format: said by its reason
            for (const std::string& name : database->tableNames()) {
                if (!database->tableDef(name).readOnlyReason().empty()) continue;
                peer::RandomEdits edits(*database, name, 42);
                jet::WriteBatch batch(*database);
                for (int i = 0; i < 1500; ++i)
                    edits.step(0.6);
                batch.commit();
                models[name] = edits.model();
                ++tables;
            }
            if (!database->header().password.empty())
                database->changePassword(database->header().password, "");
        }
        for (const auto& [name, model] : models) {
            SCOPED_TRACE(sample.filename().string() + " " + name);
            expectEverybodyReads(file, name, model, known);
        }
        jet::compactInPlace(file); // known faults stay behind with the room they took
        for (const auto& [name, model] : models) {
            SCOPED_TRACE(sample.filename().string() + " compacted, " + name);
            expectEverybodyReads(file, name, model);
        }
    }
    EXPECT_GT(tables, 20u);
}

} // namespace
