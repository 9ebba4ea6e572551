// jetdb as a person at a terminal uses it: output forms, exit status, and bad input that changes nothing.
#include "jet/database.h"
#include "peer/peer.h"
#include "support/shared_samples.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

struct Outcome {
    int status;
    std::string output; // stdout and stderr
};

class Jetdb : public testing::Test {
  protected:
    void SetUp() override {
        folder_ = fs::temp_directory_path() / ("orvan-jetdb-" + std::to_string(::getpid()));
        fs::create_directories(folder_);
        centre_ = folder_ / "merkez.mdb";
        jet::Database::create(centre_);
        sql("CREATE TABLE Ogrenci (No TEXT(15) NOT NULL, Ad TEXT(10), Puan DOUBLE, Kayit DATETIME, Aktif "
            "YESNO)");
        sql("CREATE UNIQUE INDEX indNo ON Ogrenci (No)");
        sql("INSERT INTO Ogrenci VALUES ('100100001', 'Gül \"G\"', 85.5, #2026-11-22#, TRUE)");
        sql("INSERT INTO Ogrenci (No) VALUES ('100100002')");
    }
    void TearDown() override { fs::remove_all(folder_); }

    static Outcome run(const std::string& arguments) {
        int status = 0;
        std::string output =
            peer::runCommand(peer::shellQuoted(peer::program("jetdb")) + " " + arguments + " 2>&1", status);
        return {WEXITSTATUS(status), std::move(output)};
    }
    Outcome sql(const std::string& statement) const {
        return run("sql " + peer::shellQuoted(centre_) + " " + peer::shellQuoted(statement));
    }
    static std::string bytesOf(const fs::path& file) {
        std::stringstream all;
        all << std::ifstream(file, std::ios::binary).rdbuf();
        return all.str();
    }
    fs::path write(const std::string& name, const std::string& bytes) const {
        std::ofstream(folder_ / name, std::ios::binary) << bytes;
        return folder_ / name;
    }

    fs::path folder_, centre_;
};

TEST_F(Jetdb, showsTablesStructureRowsAndQueries) {
    const std::string file = peer::shellQuoted(centre_);
    EXPECT_EQ(run("tables " + file).output, "Ogrenci\n");
    EXPECT_EQ(run("schema " + file + " Ogrenci").output,
              "CREATE TABLE [Ogrenci] (\n  [No] TEXT(15) NOT NULL,\n  [Ad] TEXT(10),\n  [Puan] DOUBLE,\n"
              "  [Kayit] DATETIME,\n  [Aktif] YESNO\n);\nCREATE UNIQUE INDEX [indNo] ON [Ogrenci] ([No]);\n");
    EXPECT_EQ(run("dump " + file + " ogrenci").output,
              "No,Ad,Puan,Kayit,Aktif\n"
              "\"100100001\",\"Gül \"\"G\"\"\",85.5,\"2026-11-22\",1\n"
              "\"100100002\",,,,0\n");
    EXPECT_EQ(run("dump " + file + " Ogrenci --json").output,
              "[\n{\"No\":\"100100001\",\"Ad\":\"Gül "
              "\\\"G\\\"\",\"Puan\":85.5,\"Kayit\":\"2026-11-22\",\"Aktif\":true},\n"
              "{\"No\":\"100100002\",\"Ad\":null,\"Puan\":null,\"Kayit\":null,\"Aktif\":false}\n]\n");
    EXPECT_EQ(sql("SELECT Count(*) AS Kac, Max(Puan) AS Enb FROM Ogrenci").output, "Kac,Enb\n2,85.5\n");
    EXPECT_EQ(sql("UPDATE Ogrenci SET Ad='Ömür' WHERE No='100100002'").output, "1 kayıt işlendi.\n");
    const Outcome check = run("check " + file);
    EXPECT_EQ(check.status, 0) << check.output;
    EXPECT_NE(check.output.find("kusur yok"), std::string::npos);
    for (int i = 10; i < 30; ++i) // a table of two rows is read through rather than searched
        sql("INSERT INTO Ogrenci (No) VALUES ('1001000" + std::to_string(i) + "')");
    const Outcome plan = run("explain " + file + " \"SELECT * FROM Ogrenci WHERE No='100100012'\"");
    EXPECT_NE(plan.output.find("indNo"), std::string::npos) << plan.output;
}

TEST_F(Jetdb, setsTestsAndRemovesAPassword) {
    const std::string file = peer::shellQuoted(centre_);
    EXPECT_EQ(run("password " + file + " --set 'Şifre12'").status, 0);
    for (const char* command : {"tables ", "check "}) {
        const Outcome refused = run(command + file);
        EXPECT_EQ(refused.status, 1);
        EXPECT_NE(refused.output.find("3031"), std::string::npos) << refused.output;
    }
    EXPECT_EQ(run("password " + file + " --test --password şifre12").status, 1); // case counts
    EXPECT_EQ(run("password " + file + " --test --password 'Şifre12'").status, 0);
    EXPECT_EQ(run("tables " + file + " --password 'Şifre12'").output, "Ogrenci\n");
    EXPECT_EQ(run("password " + file + " --remove --password 'Şifre12'").status, 0);
    EXPECT_EQ(run("tables " + file).status, 0);
}

TEST_F(Jetdb, badFilesAreNamedByNumberAndStayUntouched) {
    const std::string whole = bytesOf(centre_);
    std::string newer = whole;
    newer[0x14] = 2;
    struct {
        const char* name;
        std::string bytes;
        const char* error;
    } const cases[] = {
        {"metin.mdb", "Bu bir veritabanı değildir.\n" + std::string(5000, 'x'), "3343"},
        {"bos.mdb", "", "3343"},
        {"kirpik.mdb", whole.substr(0, 3000), "3049"},
        {"yarim.mdb", whole.substr(0, whole.size() / 2), "30"}, // 3049: a page is missing
        {"yeni.accdb", newer, "3847"},
    };
    for (const auto& c : cases) {
        const fs::path file = write(c.name, c.bytes);
        for (const char* command : {"dump ", "sql "}) {
            const std::string last = *command == 'd' ? " Ogrenci" : " \"DELETE FROM Ogrenci\"";
            const Outcome outcome = run(command + peer::shellQuoted(file) + last);
            EXPECT_EQ(outcome.status, 1) << c.name << outcome.output;
            EXPECT_NE(outcome.output.find(std::string("hata ") + c.error), std::string::npos)
                << outcome.output;
            EXPECT_EQ(bytesOf(file), c.bytes) << c.name;
        }
    }
    const Outcome missing = run("tables " + peer::shellQuoted(folder_ / "yok.mdb"));
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.output.find("3024"), std::string::npos) << missing.output;
    EXPECT_NE(missing.output.find("yok.mdb"), std::string::npos) << missing.output;
}

TEST_F(Jetdb, olderFormatOpensReadOnlyAndSaysWhy) {
    ORVAN_NEED_SAMPLES();
    const fs::path file = folder_ / "eski.mdb";
    fs::copy_file(orvan_test::sharedFolder() / "jet/samples/test-jet3.mdb", file);
    fs::permissions(file, fs::perms::owner_write, fs::perm_options::add);
    const std::string before = bytesOf(file);
    const Outcome refused = run("sql " + peer::shellQuoted(file) + " \"DELETE FROM Table1\"");
    EXPECT_EQ(refused.status, 1);
    EXPECT_NE(refused.output.find("3027"), std::string::npos) << refused.output;
    EXPECT_NE(refused.output.find("Access 97"), std::string::npos) << refused.output;
    EXPECT_EQ(bytesOf(file), before);
}

TEST_F(Jetdb, refusedStatementsSayWhyAndChangeNothing) {
    const std::string before = run("dump " + peer::shellQuoted(centre_) + " Ogrenci").output;
    struct {
        const char* statement;
        const char* error;
        const char* named; // what the text must point at
    } const cases[] = {
        {"INSERT INTO Ogrenci (No, Ad) VALUES ('3', 'on karakterden uzun')", "3163", "Ad"},
        {"INSERT INTO Ogrenci (No) VALUES ('100100001')", "3022", "indNo"},
        {"INSERT INTO Ogrenci (Ad) VALUES ('Numarasız')", "3314", "No"},
        {"INSERT INTO Ogrenci (No, Puan) VALUES ('4', 'yüz')", "3421", "Puan"},
        {"INSERT INTO Ogrenci (No, Kayit) VALUES ('5', '31.02.2010')", "3421", "Kayit"},
        {"SELECT * FROM Ogrenci WHERE", "3075", "WHERE"},
        {"SELCT * FROM Ogrenci", "3075", "SELCT"},
        {"SELECT * FROM Ogretmen", "3078", "Ogretmen"},
        {"SELECT Soyad FROM Ogrenci", "30", "Soyad"},
        {"UPDATE Ogrenci SET No = Null", "3314", "No"},
        {"CREATE TABLE Ogrenci (A LONG)", "3010", "Ogrenci"},
        {"DROP INDEX yok ON Ogrenci", "3265", "yok"},
    };
    for (const auto& c : cases) {
        const Outcome outcome = sql(c.statement);
        EXPECT_EQ(outcome.status, 1) << c.statement << "\n" << outcome.output;
        EXPECT_NE(outcome.output.find(std::string("hata ") + c.error), std::string::npos)
            << c.statement << "\n"
            << outcome.output;
        EXPECT_NE(outcome.output.find(c.named), std::string::npos) << c.statement << "\n" << outcome.output;
    }
    EXPECT_EQ(run("dump " + peer::shellQuoted(centre_) + " Ogrenci").output, before);
    EXPECT_EQ(run("check " + peer::shellQuoted(centre_)).status, 0);
}

TEST_F(Jetdb, compactsAndConvertsIntoANewFile) {
    const fs::path out = folder_ / "yeni.mdb", older = folder_ / "eski.mdb",
                   converted = folder_ / "çevrilmiş.mdb";
    const std::string both = peer::shellQuoted(centre_) + " " + peer::shellQuoted(out);
    run("password " + peer::shellQuoted(centre_) + " --set gizli");
    const std::string before = bytesOf(centre_);

    struct {
        std::string call;
        const char* error;
    } const refused[] = {
        {"compact " + both, "3031"},                       // without the password
        {"convert " + both + " --password gizli", "3001"}, // not an older file
        {"compact " + peer::shellQuoted(folder_ / "yok.mdb") + " x", "3024"},
        {"compact " + peer::shellQuoted(centre_) + " " + peer::shellQuoted(centre_) + " --password gizli",
         "3204"},
    };
    for (const auto& c : refused) {
        const Outcome outcome = run(c.call);
        EXPECT_EQ(outcome.status, 1) << outcome.output;
        EXPECT_NE(outcome.output.find(std::string("hata ") + c.error), std::string::npos) << outcome.output;
        EXPECT_FALSE(fs::exists(out));
    }
    const Outcome done = run("compact " + both + " --password gizli");
    EXPECT_EQ(done.status, 0) << done.output;
    EXPECT_EQ(done.output, "1 tablo, 2 kayıt yazıldı; " + std::to_string(before.size()) + " bayttan " +
                               std::to_string(fs::file_size(out)) + " bayta.\n"); // and no progress in a file
    EXPECT_EQ(bytesOf(centre_), before);
    const std::string password = " Ogrenci --password gizli";
    EXPECT_EQ(run("dump " + peer::shellQuoted(out) + password).output,
              run("dump " + peer::shellQuoted(centre_) + password).output);
    EXPECT_EQ(run("check " + peer::shellQuoted(out) + " --password gizli").status, 0);

    ORVAN_NEED_SAMPLES();
    fs::copy_file(orvan_test::sharedFolder() / "jet/samples/indexTest-jet3.mdb", older);
    fs::permissions(older, fs::perms::owner_write, fs::perm_options::add);
    const Outcome compacted = run("compact " + peer::shellQuoted(older) + " " + peer::shellQuoted(converted));
    EXPECT_NE(compacted.output.find("hata 3027"), std::string::npos) << compacted.output;
    EXPECT_EQ(run("convert " + peer::shellQuoted(older) + " " + peer::shellQuoted(converted)).status, 0);
    EXPECT_EQ(run("schema " + peer::shellQuoted(converted)).output,
              run("schema " + peer::shellQuoted(older)).output);
    EXPECT_EQ(run("check " + peer::shellQuoted(converted)).status, 0);
}

TEST_F(Jetdb, wrongCallsShowTheUsage) {
    for (const char* call : {"", "uydur x", "tables", "dump x", "tables x --yok", "tables x --password"}) {
        const Outcome outcome = run(call);
        EXPECT_EQ(outcome.status, 2) << call;
        EXPECT_NE(outcome.output.find("Kullanım"), std::string::npos) << call;
    }
}

} // namespace
