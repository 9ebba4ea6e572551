// Files that other programs made: every table as mdb-export prints it, and a clean check.
#include "peer/peer.h"
#include "support/shared_samples.h"

#include <gtest/gtest.h>

namespace {

std::string passwordOf(const std::filesystem::path& file) {
    return file.filename() == "tr-password-Sifre12.mdb" ? "Şifre12" : "";
}

jet::OpenOptions readOnlyWith(const std::string& password) {
    jet::OpenOptions options;
    options.password = password;
    options.readOnly = true;
    return options;
}

TEST(Samples, everyTableReadsAsMdbToolsReadsIt) {
    ORVAN_NEED_SAMPLES();
    if (!peer::haveMdbTools()) GTEST_SKIP() << "mdbtools is not installed";
    for (const auto& file : orvan_test::samples()) {
        const auto database = jet::Database::open(file, readOnlyWith(passwordOf(file)));
        const auto names = database->tableNames();
        EXPECT_FALSE(names.empty()) << file;
        for (const std::string& name : names) {
            SCOPED_TRACE(file.filename().string() + " " + name);
            const jet::TableDef& def = database->tableDef(name);
            EXPECT_EQ(peer::difference(peer::dumpedByJetdb(file, def, passwordOf(file)),
                                       peer::exportedByMdbTools(file, def)),
                      "");
        }
    }
}

TEST(Samples, checkFindsNoFault) {
    ORVAN_NEED_SAMPLES();
    for (const auto& file : orvan_test::samples())
        EXPECT_EQ(peer::faultsOf(file, passwordOf(file)), "") << file;
}

} // namespace
