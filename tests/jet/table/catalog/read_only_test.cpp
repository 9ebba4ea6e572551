// A folder or file that this user may not write: the database opens for reading and says why it refuses to be
// written. Run by a child process without rights, so that it holds for the administrator's test runs, too.
#include "catalog_fixture.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace catalog_test {
namespace {

using jet::Database;
using jet::Type;
using jet::Value;

constexpr uid_t kNobody = 65534;

class ReadOnly : public Files {
  protected:
    // Runs `look` as a user without rights; what it returns comes back. "-" when there is no such user to be.
    static std::string asNobody(const std::function<std::string()>& look) {
        int pipe[2];
        if (::pipe(pipe) != 0) return "no pipe";
        const pid_t child = ::fork();
        if (child == 0) {
            std::string told = "-";
            if (::geteuid() != 0 || ::setresuid(kNobody, kNobody, kNobody) == 0) told = look();
            ::_exit(::write(pipe[1], told.data(), told.size()) == static_cast<ssize_t>(told.size()) ? 0 : 1);
        }
        ::close(pipe[1]);
        std::string told;
        char buffer[4096];
        for (ssize_t n = 0; (n = ::read(pipe[0], buffer, sizeof buffer)) > 0;)
            told.append(buffer, static_cast<size_t>(n));
        ::close(pipe[0]);
        ::waitpid(child, nullptr, 0);
        return told;
    }

    // "rows|number of a refused insert|is the reason told in it".
    static std::string readAndTryToWrite(const fs::path& path) {
        try {
            const auto database = Database::open(path);
            jet::Table table = database->openTable("T");
            const std::string rows = std::to_string(rowsOf(*database, "T").size());
            if (!database->readOnly()) return rows + "|writable";
            const std::string& reason = database->readOnlyReason();
            for (const auto& write : std::vector<std::function<void()>>{
                     [&] { table.insert(std::vector<Value>{2}); },
                     [&] { database->createTable("U", {field("A", Type::Long)}); },
                     [&] { const jet::WriteBatch batch(*database); }}) {
                try {
                    write();
                    return rows + "|written";
                } catch (const jet::Error& error) {
                    if (error.code() != 3027 || reason.empty()) return rows + "|" + error.what();
                    if (error.message() != reason) return rows + "|another reason: " + error.message();
                }
            }
            return rows + "|refused";
        } catch (const std::exception& error) {
            return error.what();
        }
    }
};

TEST_F(ReadOnly, FolderOrFileIsReadAndRefusesWritesWithItsReason) {
    const struct {
        const char* what;
        mode_t folder, file;
        bool othersThere; // somebody who may write has it open, and so there is a .ldb
        const char* seen;
    } cases[] = {
        {"nothing may be written", 0555, 0444, false, "1|refused"},
        {"the file might, but no lock file can be made", 0555, 0666, false, "1|refused"},
        {"the file may not", 0777, 0444, false, "1|refused"},
        {"nothing may be written, and others are there", 0555, 0444, true, "1|refused"},
        {"the file may not, and others are there", 0777, 0444, true, "1|refused"},
        {"all may be written", 0777, 0666, false, "1|writable"},
    };
    for (size_t i = 0; i < std::size(cases); ++i) {
        const auto& c = cases[i];
        SCOPED_TRACE(c.what);
        const fs::path folder = file("klasor" + std::to_string(i));
        fs::create_directory(folder);
        ::chmod(folder.parent_path().c_str(), 0755);
        const fs::path path = folder / "KALFA.MDB";
        auto database = Database::create(path);
        database->createTable("T", {field("A", Type::Long)});
        database->openTable("T").insert(std::vector<Value>{1});
        if (!c.othersThere) database.reset();
        ::chmod(path.c_str(), c.file);
        ::chmod(folder.c_str(), c.folder);
        const std::string seen = asNobody([&] { return readAndTryToWrite(path); });
        ::chmod(folder.c_str(), 0755);
        if (seen == "-") GTEST_SKIP() << "this system does not let us become a user without rights";
        EXPECT_EQ(seen, c.seen);
        if (database) { // those who may write are not disturbed by the reader
            database->openTable("T").insert(std::vector<Value>{3});
            EXPECT_EQ(rowsOf(*database, "T").size(), 2u);
        }
    }
}

} // namespace
} // namespace catalog_test
