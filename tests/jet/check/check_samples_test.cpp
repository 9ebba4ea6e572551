// Files of the original engine have no faults; the numbers of the report are those of the file.
#include "jet/check/check.h"
#include "jet/database.h"
#include "support/shared_samples.h"

#include <gtest/gtest.h>

namespace {

using namespace jet;

std::unique_ptr<Database> openSample(const std::filesystem::path& path) {
    OpenOptions options;
    options.readOnly = true;
    options.ignorePassword = true;
    return Database::open(path, options);
}

// Files that really have lost space: the first one lost pages of replaced properties to the original engine,
// the second one parts of replaced pictures to the library that wrote it. Nothing else is wrong with them.
bool isLostSpace(const std::string& file, const Fault& fault) {
    if (file == "test-jet4.mdb") return fault.text.find("hiçbir tablonun değil") != std::string::npos;
    if (file == "tr-password-Sifre12.mdb")
        return fault.text.starts_with("'Resim' alanının") &&
               fault.text.ends_with("gösteren hiçbir kayıt yok.");
    return false;
}

TEST(CheckSamples, GenuineFilesHaveNoFaults) {
    ORVAN_NEED_SAMPLES();
    for (const auto& path : orvan_test::samples()) {
        const std::string name = path.filename().string();
        const auto database = openSample(path);
        const CheckReport report = checkDatabase(*database);
        for (const Fault& fault : report.faults)
            EXPECT_TRUE(isLostSpace(name, fault))
                << name << ": " << fault.table << " [" << fault.page << "] " << fault.text;
        EXPECT_EQ(report.tables, database->tableNames(TableKinds::All).size()) << name;
        EXPECT_EQ(report.pages, database->pages().pageCount());
        EXPECT_GT(report.indexEntries, 50u);
    }
}

TEST(CheckSamples, ProgressRunsUpwardsAndStopsTheWalk) {
    ORVAN_NEED_SAMPLES();
    const auto database = openSample(orvan_test::samples().front());
    size_t calls = 0, last = 0;
    CheckOptions options;
    options.progress = [&](size_t done, size_t total) {
        EXPECT_GE(done, last);
        EXPECT_LE(done, total);
        last = done;
        return ++calls < 5;
    };
    checkDatabase(*database, options);
    EXPECT_EQ(calls, 5u);
}

} // namespace
