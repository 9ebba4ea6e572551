// Every sample that another program made, compacted or converted: the same content for our own reader and for
// mdbtools, a clean check, and no larger file.
#include "jet/check/check.h"
#include "jet/copy/compact.h"
#include "jet/copy/content.h"
#include "jet/copy/convert.h"
#include "peer/peer.h"
#include "support/shared_samples.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <sstream>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using copy_test::Of;

constexpr const char* kPassword = "Şifre12"; // ignored by the samples that have none

bool isJet3(const fs::path& file) { return file.filename().string().find("jet3") != std::string::npos; }

std::unique_ptr<jet::Database> openRead(const fs::path& file) {
    return jet::Database::open(file, {.password = kPassword, .readOnly = true});
}

std::vector<std::string> linesOf(const std::string& command) {
    int status = 0;
    std::istringstream output(peer::runCommand(command + " 2>&1", status));
    std::vector<std::string> lines;
    for (std::string line; std::getline(output, line);)
        lines.push_back(line);
    return lines;
}

class SampleCopies : public testing::Test {
  protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() / ("orvan-copies-" + std::to_string(::getpid()));
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    // Copies the samples for which `wanted` holds and looks at what came out in every way there is.
    void copyAll(bool jet3, Of compared,
                 jet::CopyReport (*copy)(const fs::path&, const fs::path&, const jet::CopyOptions&)) {
        for (const fs::path& file : orvan_test::samples()) {
            if (isJet3(file) != jet3) continue;
            SCOPED_TRACE(file.filename().string());
            const fs::path out = folder_ / file.filename();
            const jet::CopyReport report = copy(file, out, {.password = kPassword});
            EXPECT_TRUE(report.notes.empty()) << report.notes.front();
            EXPECT_EQ(report.bytesAfter, fs::file_size(out));
            if (!jet3) {
                EXPECT_LE(report.bytesAfter, report.bytesBefore);
            }
            const auto before = openRead(file), after = openRead(out);
            EXPECT_EQ(report.tables, before->tableNames().size());
            EXPECT_EQ(copy_test::difference(contentOf(*before, compared), contentOf(*after, compared)), "");
            const jet::CheckReport check = jet::checkDatabase(*after);
            EXPECT_EQ(check.faultCount, 0u) << check.faults.front().table << check.faults.front().text;
            if (peer::haveMdbTools()) expectSameForMdbTools(*before, file, out, jet3);
        }
        EXPECT_TRUE(std::all_of(fs::directory_iterator(folder_), fs::directory_iterator(),
                                [](const auto& entry) { return entry.path().extension() == ".mdb"; }));
    }

    // mdb-schema tells sizes of the older format otherwise, mdb-queries cannot read its queries.
    static void expectSameForMdbTools(jet::Database& before, const fs::path& file, const fs::path& out,
                                      bool jet3) {
        for (const std::string& name : before.tableNames()) {
            const jet::TableDef& def = before.tableDef(name);
            EXPECT_EQ(
                peer::difference(peer::exportedByMdbTools(file, def), peer::exportedByMdbTools(out, def)),
                "");
            if (jet3) continue;
            const std::string schema = "mdb-schema --default-values -T " + peer::shellQuoted(name) + " ";
            EXPECT_EQ(copy_test::difference(linesOf(schema + peer::shellQuoted(file)),
                                            linesOf(schema + peer::shellQuoted(out))),
                      "");
        }
        if (jet3) return;
        const auto queries = linesOf("mdb-queries -L -1 " + peer::shellQuoted(file));
        EXPECT_EQ(queries.size(), linesOf("mdb-queries -L -1 " + peer::shellQuoted(out)).size());
        for (const std::string& query : queries) {
            if (query.empty()) continue;
            const auto show = [&](const fs::path& from) {
                return linesOf("mdb-queries " + peer::shellQuoted(from) + " " + peer::shellQuoted(query));
            };
            EXPECT_EQ(copy_test::difference(show(file), show(out)), "");
        }
    }

    fs::path folder_;
};

TEST_F(SampleCopies, compactedFilesHoldTheSameInLessRoom) {
    ORVAN_NEED_SAMPLES();
    copyAll(false, Of::Everything, jet::compactDatabase);
}

TEST_F(SampleCopies, convertedFilesHoldTheSameTables) {
    ORVAN_NEED_SAMPLES();
    copyAll(true, Of::TablesOnly, jet::convertDatabase);
}

// The older format has one byte a character: the file's code page says which character.
TEST_F(SampleCopies, textOfTheOlderFormatIsReadByItsCodePage) {
    ORVAN_NEED_SAMPLES();
    struct Case {
        uint16_t codePage;
        const char* text;
    } cases[] = {{1252, "Ð ð Ý ý Þ þ"}, {1254, "Ğ ğ İ ı Ş ş"}};
    const fs::path sample = orvan_test::sharedFolder() / "jet/samples/test-jet3.mdb";
    std::string bytes;
    {
        std::FILE* in = std::fopen(sample.string().c_str(), "rb");
        bytes.resize(fs::file_size(sample));
        ASSERT_EQ(std::fread(bytes.data(), 1, bytes.size(), in), bytes.size());
        std::fclose(in);
    }
    const std::string text = "abcdefg"; // of a row; its bytes are changed in place
    const size_t at = bytes.find(text);
    ASSERT_NE(at, std::string::npos);
    const uint16_t was = jet::readHeader({reinterpret_cast<const uint8_t*>(bytes.data()), 2048}).codePage;
    for (const Case& c : cases) {
        std::string changed = bytes;
        constexpr size_t kCodePageAt =
            0x3C; // under a constant mask: changing bits of it changes those of the text
        changed[kCodePageAt] = static_cast<char>(changed[kCodePageAt] ^ (was ^ c.codePage));
        changed[kCodePageAt + 1] = static_cast<char>(changed[kCodePageAt + 1] ^ ((was ^ c.codePage) >> 8));
        for (size_t i = 0; i < 6; ++i)
            changed[at + i] = "\xD0\xF0\xDD\xFD\xDE\xFE"[i];
        const fs::path in = folder_ / ("eski" + std::to_string(c.codePage) + ".mdb");
        const fs::path out = folder_ / ("yeni" + std::to_string(c.codePage) + ".mdb");
        std::FILE* file = std::fopen(in.string().c_str(), "wb");
        std::fwrite(changed.data(), 1, changed.size(), file);
        std::fclose(file);
        jet::convertDatabase(in, out);
        std::string wanted = c.text;
        std::erase(wanted, ' ');
        for (const fs::path& each : {in, out}) {
            const auto database = openRead(each);
            EXPECT_EQ(database->header().codePage, c.codePage);
            const auto content = contentOf(*database, Of::TablesOnly);
            EXPECT_TRUE(std::any_of(content.begin(), content.end(), [&](const std::string& line) {
                return line.find(wanted) != std::string::npos;
            })) << each;
        }
    }
}

} // namespace
