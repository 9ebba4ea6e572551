// The programs as a person at a terminal sees them: a demo centre that the rules and other programs can read.
#include "catalog/all_tables.h"
#include "core/clock.h"
#include "core/database_set.h"
#include "core/users.h"
#include "core/values.h"
#include "jet/check/check.h"
#include "records/identity_number.h"
#include "records/student_list.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QSet>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace orvan;

namespace {

struct Outcome {
    int status;
    QString out, err;
};

Outcome run(const QString& program, const QStringList& words) {
    QProcess process;
    const QString own =
        QStandardPaths::findExecutable(program, {qEnvironmentVariable("ORVAN_BIN_DIR")}); // with .exe too
    process.start(own.isEmpty() ? program : own, words);
    EXPECT_TRUE(process.waitForFinished(120000)) << program.toStdString();
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()).remove(QLatin1Char(13)),
            QString::fromUtf8(process.readAllStandardError())};
}

struct DemoTest : testing::Test {
    QTemporaryDir temporary;
    QString folder = temporary.filePath("demo");
    Outcome make(const QStringList& more = {}) {
        return run("orvanctl", QStringList{"demo", folder, "--students", "60"} + more);
    }
};

TEST_F(DemoTest, CentreIsWholeAndTheSignInWorks) {
    const Outcome outcome = make();
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const ProgramFolder program(folder);
    Session session;
    DatabaseSet databases(program, session, allTables());
    databases.connect();
    EXPECT_FALSE(session.schoolName.isEmpty());
    EXPECT_EQ(checkSignIn(databases.constants().database(), "yonetici", "orvan").outcome, SignIn::Accepted);
    EXPECT_EQ(rightsOf(databases.constants().sql(), "yonetici", "Hızlı Öğrenci Kayıt"), (Rights{true, true}));
    EXPECT_EQ(rightsOf(databases.constants().sql(), "memur", "Hızlı Öğrenci Kayıt"), (Rights{true, false}));
    for (const char* file :
         {"Sabit.mdb", "Isletme.mdb", "Koord.mdb", "KALFA.MDB", "USTA.MDB", "USTAOGR.MDB"}) {
        const auto database = jet::Database::open(filePath(folder + "/Data/" + file));
        for (const jet::Fault& fault : jet::checkDatabase(*database).faults)
            ADD_FAILURE() << file << ": " << fault.table << ' ' << fault.text;
    }
}

TEST_F(DemoTest, StudentsOfAllLevelsAreConsistent) {
    ASSERT_EQ(make().status, 0);
    const ProgramFolder program(folder);
    Session session;
    DatabaseSet databases(program, session, allTables());
    QSet<QString> identities;
    const struct {
        Level level;
        size_t students;
        int youngest; // at registration
    } levels[] = {{Level::Kalfa, 44, 13}, {Level::Usta, 12, 18}, {Level::UstaOgretici, 4, 22}};
    for (const auto& each : levels) {
        SCOPED_TRACE(levelText(each.level).toStdString());
        session.level = each.level;
        databases.connect();
        auto& level = databases.level().sql();
        const auto list = studentList(level);
        ASSERT_EQ(list.size(), each.students);
        QSet<QString> numbers, classes;
        const auto defined = level.query("SELECT SinifAdi, EgtGunu_1, EgtBaslangic_2 FROM Sinif");
        for (size_t i = 0; i < defined.rowCount(); ++i) {
            classes << toText(defined.at(i, size_t{0}));
            EXPECT_FALSE(toText(defined.at(i, 1)).isEmpty() || toText(defined.at(i, 2)).isEmpty());
        }
        for (const StudentListRow& row : list) {
            EXPECT_TRUE(isIdentityNumber(row.identityNo)) << row.identityNo.toStdString();
            EXPECT_TRUE(row.number.startsWith(row.professionCode));
            EXPECT_FALSE(row.profession.isEmpty());
            EXPECT_TRUE(classes.contains(row.className)) << row.className.toStdString();
            EXPECT_EQ(row.workplace.isEmpty(), row.master.isEmpty() || row.coordinator.isEmpty());
            identities << row.identityNo;
            numbers << row.number;
        }
        EXPECT_EQ(numbers.size(), static_cast<qsizetype>(each.students));
        const auto dates =
            level.query("SELECT Ogr_Dogum_Tarihi, Ogr_Kayit_Tarihi, Ogr_calistigi_ise_giris_tarihi, "
                        "Ogr_calistigi_isden_ayrilis_tarihi, Ogr_Ayrilis_Nedeni FROM OgrenciBilgisi");
        for (size_t i = 0; i < dates.rowCount(); ++i) {
            const auto day = [&](size_t column) { return dateFromText(toText(dates.at(i, column))); };
            ASSERT_TRUE(day(0) && day(1));
            EXPECT_LE(day(0)->addYears(each.youngest), *day(1));
            EXPECT_LE(*day(1), day(2).value_or(*day(1)));
            EXPECT_LE(day(2).value_or(QDate()), day(3).value_or(QDate::currentDate()));
            EXPECT_EQ(day(3).has_value(), !toText(dates.at(i, 4)).isEmpty());
            for (size_t column = 0; column < 4; ++column)
                EXPECT_LE(day(column).value_or(QDate()), QDate::currentDate());
        }
        EXPECT_FALSE(level.query("SELECT * FROM MeslekDersHavuzu WHERE ID = 4").empty());
    }
    EXPECT_EQ(identities.size(), 60);
}

// A workplace's numbers of students are those of the students who name it, and the same of the teachers.
TEST_F(DemoTest, CountsOfWorkplacesAndTeachersAreThoseOfTheStudents) {
    ASSERT_EQ(make().status, 0);
    const ProgramFolder program(folder);
    Session session;
    DatabaseSet databases(program, session, allTables());
    std::map<QString, int> atWorkplace, ofTeacher;
    for (const Level level : {Level::Kalfa, Level::Usta, Level::UstaOgretici}) {
        session.level = level;
        databases.connect();
        for (const StudentListRow& row : studentList(databases.level().sql())) {
            if (row.workplace.isEmpty()) continue;
            ++atWorkplace[row.workplace];
            ++ofTeacher[row.coordinator];
        }
    }
    const auto places = databases.workplaces().sql().query(
        "SELECT K_Adi, K_Toplam_Ogrenci_Sayisi, K_Toplam_Ogrenci_Sayisi2, K_Toplam_Ogrenci_Sayisi3, "
        "K_egitim_Sorumlusu FROM isletme_Bilgisi");
    const auto number = [](const jet::Value& value) {
        return value.isNull() ? 0 : static_cast<int>(value.toInt());
    };
    for (size_t i = 0; i < places.rowCount(); ++i) {
        EXPECT_EQ(number(places.at(i, 1)) + number(places.at(i, 2)) + number(places.at(i, 3)),
                  atWorkplace[toText(places.at(i, size_t{0}))]);
        EXPECT_FALSE(toText(places.at(i, 4)).isEmpty());
    }
    const auto teachers = databases.coordinators().sql().query(
        "SELECT KO_Ogretmen_Adi & ' ' & KO_Ogretmen_Soyadi, ko_toplam_ogrenci FROM KoordinatorBilgisi");
    for (size_t i = 0; i < teachers.rowCount(); ++i)
        EXPECT_EQ(number(teachers.at(i, 1)), ofTeacher[toText(teachers.at(i, size_t{0}))]);
    const QStringList photos = QDir(program.resolve("\\data\\fotograf")).entryList({"*.jpg"});
    EXPECT_EQ(photos.size(), 4);
    for (const QString& photo : photos)
        EXPECT_FALSE(QImage(program.resolve("\\data\\fotograf\\" + photo)).isNull());
}

TEST_F(DemoTest, OtherProgramsReadTheRows) {
    if (QStandardPaths::findExecutable("mdb-export").isEmpty()) GTEST_SKIP() << "mdb-export is not installed";
    ASSERT_EQ(make().status, 0);
    const Outcome exported = run("mdb-export", {"-H", folder + "/Data/KALFA.MDB", "OgrenciBilgisi"});
    EXPECT_EQ(exported.out.count('\n'), 44);
    EXPECT_TRUE(exported.out.contains("Mesleki Eğitim"));
}

TEST_F(DemoTest, SameSeedSameCentreAndItMayBeMadeAgain) {
    const auto students = [&] {
        const auto database = jet::Database::open(filePath(folder + "/Data/KALFA.MDB"));
        jet::SqlSession sql(*database);
        QStringList names;
        for (const StudentListRow& row : studentList(sql, StudentOrder::ByNumber))
            names << row.number + row.name + row.surname;
        return names;
    };
    ASSERT_EQ(make().status, 0);
    const QStringList first = students();
    ASSERT_EQ(make().status, 0);
    EXPECT_EQ(students(), first);
    ASSERT_EQ(make({"--seed", "7"}).status, 0);
    EXPECT_NE(students(), first);
}

TEST_F(DemoTest, ForeignFolderIsLeftAlone) {
    QDir().mkpath(folder + "/Data");
    QFile precious(folder + "/Data/KALFA.MDB");
    ASSERT_TRUE(precious.open(QIODevice::WriteOnly));
    precious.write("kurumun verisi");
    precious.close();
    const Outcome outcome = make();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err.count('\n'), 1) << outcome.err.toStdString();
    ASSERT_TRUE(precious.open(QIODevice::ReadOnly));
    EXPECT_EQ(precious.readAll(), "kurumun verisi");
    EXPECT_EQ(QDir(folder).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList{"Data"});
}

TEST(Commands, AreATableInDispatchOrderWithoutADisplay) {
    const Outcome outcome = run("orvanctl", {"commands"});
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    const QStringList lines = outcome.out.split('\n', Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 149 + 1 + 6 + 3 + 5);
    EXPECT_EQ(lines.first().section('\t', 0, 1), "SabitBilgiler\tKuruma Ait Bilgiler");
    EXPECT_EQ(lines.last(), "Kullanım Kılavuzu\t-\t-");
    EXPECT_TRUE(lines.contains("HizliOgrenciKayit\tHızlı Öğrenci Kayıt\thizli_ogrenci_kayit"));
    EXPECT_TRUE(lines.contains("MezunlarArsiv\tMezunlar Arşivi\t-"));
    for (const QString& line : lines)
        EXPECT_EQ(line.count('\t'), 2) << line.toStdString();
}

TEST(Shots, AreTakenOfADemoCentreByTheProgramBeside) {
    const QTemporaryDir folder;
    const Outcome outcome = run("orvanctl", {"shots", folder.filePath("resimler")});
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    for (const char* name :
         {"acilis", "giris", "ana_pencere", "menuCalisma", "hizli_ogrenci_kayit-HizliOgrenciKayit"})
        EXPECT_TRUE(outcome.out.contains(folder.filePath("resimler/%1.png").arg(name))) << name;
    const Outcome refused =
        run("orvanctl", {"shots", folder.filePath("x"), "--folder", folder.filePath("yok")});
    EXPECT_EQ(refused.status, 1);
    EXPECT_TRUE(refused.err.contains("Resimler alınamadı")) << refused.err.toStdString();
}

TEST(OrvanctlWords, WrongOnesGiveStatusTwo) {
    for (const QStringList& words : {QStringList{},
                                     {"yok"},
                                     {"demo"},
                                     {"demo", "a", "b"},
                                     {"demo", "a", "--bilinmez", "1"},
                                     {"demo", "a", "--students"},
                                     {"demo", "a", "--students", "çok"},
                                     {"demo", "a", "--students", "-1"},
                                     {"commands", "a"},
                                     {"shots"}}) {
        const Outcome outcome = run("orvanctl", words);
        EXPECT_EQ(outcome.status, 2) << words.join(' ').toStdString();
        EXPECT_FALSE(outcome.err.isEmpty());
        EXPECT_TRUE(outcome.out.isEmpty());
    }
    EXPECT_FALSE(QDir("a").exists());
}

TEST(TemplateMaker, WritesTheSevenTemplates) {
    const QTemporaryDir folder;
    const Outcome outcome = run("mdxmaker", {folder.filePath("yeni/Mdx")});
    ASSERT_EQ(outcome.status, 0) << outcome.err.toStdString();
    EXPECT_EQ(QDir(folder.filePath("yeni/Mdx")).entryList(QDir::Files).size(), 7);
    EXPECT_EQ(run("mdxmaker", {}).status, 2);
    EXPECT_EQ(run("mdxmaker", {"/proc/olmaz"}).status, 1);
}

} // namespace
