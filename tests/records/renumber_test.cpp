// New numbers for students: what goes with them, what stays, what is refused before anything is written.
#include "records/renumber.h"

#include "records/dependent_tables.h"
#include "records/student_photo.h"
#include "records/trimmed_rows.h"
#include "support/qt_print.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::TestCentre;

namespace {

struct RenumberTest : testing::Test {
    TestCentre centre;
    void SetUp() override { centre.databases.connect(); }

    // One row in every dependent table.
    void addDependents(const QString& number, const QString& name = "Ayşe", const QString& surname = "Işık") {
        const char* const statements[] = {
            "INSERT INTO BitirmeSinavlari (B_Ogr_Numarasi,B_Ogr_Adi,B_Ogr_Soyadi) VALUES (?,?,?)",
            "INSERT INTO Devam (D_Ogr_Numarasi,D_Ogr_Adi,D_Ogr_Soyadi) VALUES (?,?,?)",
            "INSERT INTO Notlar (N_Ogr_Numarasi,N_Ogr_Adi,N_Ogr_Soyadi) VALUES (?,?,?)",
            "INSERT INTO NotOrtalama (OgrNo,OgrAd,OgrSoyAd) VALUES (?,?,?)",
            "INSERT INTO Ogrenci_Isyerleri (Ogr_No,Ogr_Adi,Ogr_Soyadi) VALUES (?,?,?)",
            "INSERT INTO Sigorta_Devamsizlik (D_OgrNo,D_Ogr_Adi,D_Ogr_Soyadi) VALUES (?,?,?)"};
        for (const char* sql : statements)
            centre.level().execute(sql, Parameters{number, name, surname});
        centre.level().execute("INSERT INTO OkulDevamsizlik (OgrNo) VALUES (?)", Parameters{number});
    }
    // "table:rows" of the number, for those tables that have some.
    QString rowsOf(const QString& number) {
        QStringList counts;
        for (const auto& tables : {numberedTables(), dayTables()})
            for (const DependentTable& about : tables)
                if (const size_t rows =
                        dependentRows(centre.databases.level().database(), about, number).size())
                    counts << QStringLiteral("%1:%2").arg(about.table).arg(rows);
        return counts.join(' ');
    }
    // "number/registration number/profession" by registration number.
    QString students() {
        const auto rows = centre.level().query("SELECT Ogr_Numarasi,Ogr_Kayit_No,Ogr_MeslekKod FROM "
                                               "OgrenciBilgisi ORDER BY Ogr_Adi, Ogr_Kayit_No");
        QStringList all;
        for (size_t i = 0; i < rows.rowCount(); ++i)
            all << trimmedText(rows.at(i, 0)) + '/' + toText(rows.at(i, 1)) + '/' + toText(rows.at(i, 2));
        return all.join(' ');
    }
};

const QString kNumbered = "BitirmeSinavlari:1 Devam:1 Notlar:1 NotOrtalama:1 Ogrenci_Isyerleri:1";
const QString kDays = "Sigorta_Devamsizlik:1 OkulDevamsizlik:1";

TEST_F(RenumberTest, ModesChangeWhatTheyName) {
    struct Case {
        RenumberMode mode;
        const char* students;
        const char* numbered; // who has the dependent rows afterwards
    };
    const Case cases[] = {{RenumberMode::Number, "120200009/7/1202 110100002/8/1101", "120200009"},
                          {RenumberMode::RegistrationNo, "110100001/50/1101 110100002/8/1101", "110100001"},
                          {RenumberMode::Both, "120200009/50/1202 110100002/8/1101", "120200009"}};
    for (const Case& c : cases) {
        centre.level().execute("DELETE FROM OgrenciBilgisi");
        for (const auto& tables : {numberedTables(), dayTables()})
            for (const DependentTable& about : tables)
                centre.level().execute("DELETE FROM " + std::string(about.table));
        centre.addStudent(" 110100001 ", 7, "1101", "Ali", "Kaya"); // stored with blanks round it
        centre.addStudent("110100002", 8, "1101", "Veli", "O'Hara");
        addDependents("  110100001", "Ali", "Kaya");
        addDependents("110100002", "Veli", "O'Hara");
        EXPECT_TRUE(renumberStudent(centre.databases, {"110100001", "120200009", "1202", 7, 50, c.mode}));
        EXPECT_EQ(students(), QString(c.students));
        const bool moved = QString(c.numbered) == "120200009";
        EXPECT_EQ(rowsOf(c.numbered), moved ? kNumbered : kNumbered + ' ' + kDays);
        EXPECT_EQ(rowsOf("110100001"), moved ? kDays : kNumbered + ' ' + kDays);
        EXPECT_EQ(rowsOf("110100002"), kNumbered + ' ' + kDays) << "another student's rows stay";
    }
}

TEST_F(RenumberTest, AllOfHimTakesInsuranceAndDailyAbsencesAlong) {
    centre.addStudent("110100001", 1, "1101");
    addDependents("110100001");
    const auto report = renumberStudents(centre.databases, {{"110100001", "110100044", "", 1, 1}});
    ASSERT_TRUE(report.done());
    EXPECT_EQ(report.students, 1u);
    EXPECT_EQ(report.dependentRows, 7u);
    EXPECT_EQ(rowsOf("110100044"), kNumbered + ' ' + kDays);
    EXPECT_EQ(students(), "110100044/1/1101") << "without a new profession he keeps his";
}

TEST_F(RenumberTest, RefusalsWriteNothing) {
    centre.addStudent("110100001", 1, "1101", "Ali");
    centre.addStudent(" 110100002", 2, "1101", "Veli");
    addDependents("110100001");
    const QString before = students();
    struct Case {
        Renumbering wanted;
        RenumberFault fault;
    };
    using enum RenumberMode;
    const Case cases[] = {
        {{"110100001", "1101", "1101", 1, 1, Number}, RenumberFault::TooShort},
        {{"110100001", "   1101   ", "1101", 1, 1, Both}, RenumberFault::TooShort},
        {{"110100001", "", "1101", 1, 1, Number}, RenumberFault::TooShort},
        {{"110100001", QString(300, '1'), "1101", 1, 1, Number}, RenumberFault::TooLong},
        {{"110100001", "110100009", QString(16, '1'), 1, 1, Number}, RenumberFault::TooLong},
        {{"110100001", "110100001", "1101", 1, 0, RegistrationNo}, RenumberFault::TooLong},
        {{"110100001", "1101号0009", "1101", 1, 1, Number}, RenumberFault::BadCharacter},
        {{"110100009", "110100010", "1101", 9, 9, Number}, RenumberFault::NoSuchStudent},
        {{"110100001", "110100010", "1101", 2, 2, Both}, RenumberFault::NoSuchStudent},
        {{"1101号", "110100010", "1101", 1, 1, Number}, RenumberFault::NoSuchStudent},
        {{"' OR '1'='1", "110100010", "1101", 1, 1, Number}, RenumberFault::NoSuchStudent},
        {{"110100001", "110100002", "1101", 1, 1, Number}, RenumberFault::NumberTaken},
        {{"110100001", "", "", 1, 2, RegistrationNo}, RenumberFault::RegistrationTaken},
    };
    for (const Case& c : cases) {
        const auto report = renumberStudents(centre.databases, {c.wanted});
        ASSERT_EQ(report.problems.size(), 1u) << c.wanted.newNumber.toStdString();
        EXPECT_EQ(report.problems[0].fault, c.fault) << c.wanted.newNumber.toStdString();
        EXPECT_FALSE(problemText(report.problems[0], c.wanted).isEmpty());
        EXPECT_EQ(students(), before);
        EXPECT_EQ(rowsOf("110100001"), kNumbered + ' ' + kDays);
    }
}

TEST_F(RenumberTest, OneFaultInAListKeepsAllAsItWas) {
    centre.addStudent("110100001", 1, "1101", "Ali");
    centre.addStudent("110100002", 2, "1101", "Veli");
    const auto report = renumberStudents(
        centre.databases, {{"110100001", "110100007", "", 1, 1}, {"110100002", "110100007", "", 2, 2}});
    ASSERT_EQ(report.problems.size(), 1u);
    EXPECT_EQ(report.problems[0].which, 1u);
    EXPECT_EQ(report.problems[0].fault, RenumberFault::NumberTaken);
    EXPECT_EQ(students(), "110100001/1/1101 110100002/2/1101");
}

// 1 → 2 → 3 → 1, and a registration number that changes hands.
TEST_F(RenumberTest, NumbersCanBeExchangedWithinOneList) {
    for (int i = 1; i <= 3; ++i) {
        centre.addStudent(QString("11010000%1").arg(i), i, "1101", QString("Öğrenci %1").arg(i));
        addDependents(QString("11010000%1").arg(i), QString("Öğrenci %1").arg(i), "Işık");
    }
    QDir().mkpath(centre.path("\\Data") + "/fotograf");
    for (const char* number : {"110100001", "110100002"}) {
        QFile photo(photoFile(centre.folder, number));
        ASSERT_TRUE(photo.open(QFile::WriteOnly));
        photo.write(number);
    }
    const auto report =
        renumberStudents(centre.databases, {{"110100001", "110100002", "", 1, 2, RenumberMode::Both},
                                            {"110100002", "110100003", "", 2, 1, RenumberMode::Both},
                                            {"110100003", "110100001", "", 3, 3, RenumberMode::Both}});
    ASSERT_TRUE(report.done());
    EXPECT_EQ(students(), "110100002/2/1101 110100003/1/1101 110100001/3/1101");
    const auto marks = centre.level().query("SELECT N_Ogr_Adi FROM Notlar ORDER BY N_Ogr_Numarasi");
    ASSERT_EQ(marks.rowCount(), 3u);
    for (size_t i = 0; i < 3; ++i)
        EXPECT_EQ(marks.at(i, size_t{0}).toText(), "Öğrenci " + std::to_string((i + 2) % 3 + 1));
    EXPECT_EQ(report.photos, QStringList());
    for (const auto& [number, was] : {std::pair{"110100002", "110100001"}, {"110100003", "110100002"}}) {
        QFile photo(photoFile(centre.folder, number));
        ASSERT_TRUE(photo.open(QFile::ReadOnly)) << number;
        EXPECT_EQ(photo.readAll(), was);
    }
    EXPECT_FALSE(QFile::exists(photoFile(centre.folder, "110100001")));
}

TEST_F(RenumberTest, APhotoOfAnotherUnderTheNewNumberIsNotOverwritten) {
    centre.addStudent("110100001", 1, "1101");
    QDir().mkpath(centre.path("\\Data") + "/FOTOGRAF");
    for (const char* number : {"110100001", "110100005"})
        ASSERT_TRUE(QFile(photoFile(centre.folder, number)).open(QFile::WriteOnly));
    const auto report = renumberStudents(centre.databases, {{"110100001", "110100005", "", 1, 1}});
    EXPECT_TRUE(report.done());
    EXPECT_EQ(report.photos.size(), 1);
    EXPECT_TRUE(QFile::exists(photoFile(centre.folder, "110100001")));
}

// Two people with one number: a fault of old files that renumbering is to mend.
TEST_F(RenumberTest, OfTwoWithOneNumberOnlyTheNamedOneMoves) {
    centre.addStudent("110100001", 1, "1101", "Ali", "Kaya");
    centre.addStudent(" 110100001", 2, "1101", "Veli", "Çelik");
    addDependents("110100001", "Ali", "Kaya");
    addDependents("110100001", " VELİ", "Çelik ");
    ASSERT_TRUE(renumberStudents(centre.databases,
                                 {{"110100001", "110100002", "1101", 2, 2, RenumberMode::Both}},
                                 RenumberReach::Numbered)
                    .done());
    EXPECT_EQ(students(), "110100001/1/1101 110100002/2/1101");
    EXPECT_EQ(rowsOf("110100002"), kNumbered);
}

TEST_F(RenumberTest, ANewNameGoesToAllRowsOfNumberAndName) {
    addDependents("110100001", " Ayşe ", "Işık");
    addDependents("110100001", "Ayşe", "Kaya"); // of another
    addDependents("110100002", "Ayşe", "Işık"); // of another
    {
        jet::WriteBatch batch(centre.databases.level().database());
        EXPECT_EQ(carryName(centre.databases.level().database(), "110100001", {"Ayşe", "Işık"},
                            {"Ayşe Nur", "O'Hara"}),
                  6u);
        batch.commit();
    }
    const auto rows = centre.level().query("SELECT N_Ogr_Adi, N_Ogr_Soyadi, N_Ogr_Numarasi FROM Notlar WHERE "
                                           "N_Ogr_Soyadi = 'O''Hara'");
    ASSERT_EQ(rows.rowCount(), 1u);
    EXPECT_EQ(rows.at(0, size_t{0}).toText(), "Ayşe Nur");
    EXPECT_EQ(rows.at(0, size_t{2}).toText(), "110100001");
}

TEST_F(RenumberTest, RowsByTextWithAndWithoutAnIndex) {
    jet::Database& level = centre.databases.level().database();
    for (const char* name : {"Ali", " ali", "ALİ  ", "   Ali ", "Alı", "A li", ""})
        centre.level().execute(
            "INSERT INTO Ogrenci_Isyerleri (Ogr_isyerinin_adi, Ogr_Isyeri_Adresi1) VALUES (?,?)",
            Parameters{name, name});
    for (const char* field : {"Ogr_isyerinin_adi", "Ogr_Isyeri_Adresi1"}) { // the second one has no index
        EXPECT_EQ(rowsByText(level, "Ogrenci_Isyerleri", field, " Ali ").size(), 4u) << field;
        EXPECT_EQ(rowsByText(level, "Ogrenci_Isyerleri", field, "").size(), 1u) << field;
        EXPECT_EQ(rowsByText(level, "Ogrenci_Isyerleri", field, QString(300, 'x')).size(), 0u) << field;
    }
}

} // namespace
