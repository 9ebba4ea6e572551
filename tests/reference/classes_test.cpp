// Classes on a real level database: what is refused, what a new name and a deletion do to the students, the
// week, the assignment of many students, and what another station does meanwhile.
#include "reference/class_assignment.h"
#include "reference/classes.h"

#include "core/users.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

constexpr auto kTaken = "Bu isimle bir sınıf kayıtlı !";

struct ClassesTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    std::optional<ClassList> classes;
    std::optional<ClassAssignment> assignment;

    void SetUp() override {
        centre.databases.connect();
        centre.session.user = "müdür";
        auto& constants = centre.databases.constants().database();
        createUser(constants, centre.session.user, "1");
        grantAll(constants, centre.session.user, {true, true});
        classes.emplace(centre.databases, dialogs, "Sınıf Bilgileri");
        assignment.emplace(centre.databases, dialogs, "Sınıf İşleme");
        centre.addProfession("0101", "Oto Boya");
        centre.addProfession("0205", "Kuaförlük");
    }
    StoredRow add(const QString& name, FieldTexts more = {}) {
        std::optional<StoredRow> row;
        more["SinifAdi"] = name;
        const SaveOutcome outcome = classes->save(row, more);
        EXPECT_TRUE(outcome.saved) << outcome.reason.toStdString();
        return row.value();
    }
    void student(int number, const char* className, const char* stage = "1", const char* code = "0101") {
        centre.addStudent(QString("%1%2").arg(code).arg(number, 5, 10, QChar(u'0')), number, code);
        centre.level().execute(
            "UPDATE OgrenciBilgisi SET Ogr_Sinif = ?, Ogr_Seviye = ? WHERE Ogr_Kayit_No = ?",
            Parameters{className, stage, number});
    }
    QString students() { // their classes, by registration number
        QStringList names;
        const auto rows = centre.level().query("SELECT Ogr_Sinif FROM OgrenciBilgisi ORDER BY Ogr_Kayit_No");
        for (size_t i = 0; i < rows.rowCount(); ++i)
            names << toText(rows.at(i, 0));
        return names.join('|');
    }
    QString defined() {
        QStringList names;
        for (const StoredRow& row : classes->rows())
            names << row.values.at("SinifAdi");
        return names.join('|');
    }
    static QString renameQuestion(const QString& from, const QString& to) {
        return from + " isimli sinif " + to + " olarak değiştirilecektir ! \nBu işlem sonucu öğrencilerde " +
               to + " olarak değiştirilecektir !\nOnaylıyor musunuz?";
    }
};

TEST_F(ClassesTest, ANameThatExistsIsRefusedBeforeAnyStudentIsTouched) {
    student(1, "9-A");
    std::optional<StoredRow> first = add("9-A");
    add("Ş'li");
    std::optional<StoredRow> fresh;
    for (const char* name : {"9-A", " 9-a ", "ş'Lİ"}) {
        dialogs.expectMessage(kTaken, "Uyarı");
        EXPECT_EQ(classes->save(fresh, {{"SinifAdi", name}}).field, "SinifAdi");
    }
    dialogs.expectMessage(kTaken, "Uyarı");
    EXPECT_FALSE(classes->save(first, {{"SinifAdi", "Ş'Lİ"}}).saved);
    EXPECT_EQ(students(), "9-A");
    EXPECT_EQ(defined(), "9-A|Ş'li");
}

TEST_F(ClassesTest, ANewNameGoesIntoTheStudentsRecordsWhenAccepted) {
    student(1, "9-A");
    student(2, "9-A ");
    student(3, "9-AB");
    std::optional<StoredRow> row = add("9-A", {{"SinifOgretmeni", "Ali Can"}});
    dialogs.expectYesNo(renameQuestion("9-A", "Işık'ın Sınıfı"), Answer::No);
    EXPECT_FALSE(classes->save(row, {{"SinifAdi", "Işık'ın Sınıfı"}}).saved);
    EXPECT_EQ(students(), "9-A|9-A |9-AB");
    dialogs.expectYesNo(renameQuestion("9-A", "Işık'ın Sınıfı"), Answer::Yes);
    EXPECT_TRUE(classes->save(row, {{"SinifAdi", "Işık'ın Sınıfı"}, {"SinifOgretmeni", "Veli Er"}}).saved);
    EXPECT_EQ(students(), "Işık'ın Sınıfı|Işık'ın Sınıfı|9-AB");
    EXPECT_EQ(classes->rows()[0].values.at("SinifOgretmeni"), "Veli Er");
    dialogs.expectYesNo(renameQuestion("Işık'ın Sınıfı", "IŞIK'IN SINIFI"),
                        Answer::Yes); // other letters only
    EXPECT_TRUE(classes->save(row, {{"SinifAdi", "IŞIK'IN SINIFI"}}).saved);
    EXPECT_EQ(students(), "IŞIK'IN SINIFI|IŞIK'IN SINIFI|9-AB");
}

TEST_F(ClassesTest, DeletingEmptiesTheStudentsClassAndKeepsTheStudents) {
    student(1, "9-A");
    student(2, "9-A");
    student(3, "9-B");
    const StoredRow full = add("9-A"), empty = add("10-C");
    const QString question = "9-A isimli Sınıf 2 öğrencide kayıtlıdır !\nSınıfı silerseniz aynı anda öğrenci "
                             "bilgisinden de bu sınıf silinecektir!\nSilme işlemini onaylıyor musunuz ?";
    dialogs.expectYesNo(question, Answer::No);
    EXPECT_FALSE(classes->remove(full));
    EXPECT_EQ(students(), "9-A|9-A|9-B");
    dialogs.expectYesNo(question, Answer::Yes);
    EXPECT_TRUE(classes->remove(full));
    EXPECT_EQ(students(), "||9-B");
    dialogs.expectYesNo("10-C isimli Sınıf silinecektir !\nSilme işlemini onaylıyor musunuz ?", Answer::Yes);
    EXPECT_TRUE(classes->remove(empty));
    EXPECT_EQ(defined(), "");
    dialogs.expectYesNo("9-A isimli Sınıf silinecektir !\nSilme işlemini onaylıyor musunuz ?", Answer::Yes)
        .expectMessage("9-A sınıfı başka bir bilgisayarda zaten silinmiş veya adı değiştirilmiş; liste "
                       "yenilendi.");
    EXPECT_TRUE(classes->remove(full));
}

TEST_F(ClassesTest, ClassesThatOnlyStudentsKnowAreListedWithTheirNumber) {
    for (const char* name : {"9-A", "", " ", "Ü-1", "ü-1", "9-A", "9-C"})
        student(centre.level().query("SELECT COUNT(*) FROM OgrenciBilgisi").at(0, size_t{0}).toInt() + 1,
                name);
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Sinif = NULL WHERE Ogr_Kayit_No = 3");
    add("9-C");
    const auto shown = [&] {
        QStringList all;
        for (const UndefinedClass& name : classes->undefined())
            all << QString("%1:%2").arg(name.name).arg(name.students);
        return all.join(' ');
    };
    EXPECT_EQ(shown(), "9-A:2 Ü-1:2");
    add("9-A");
    EXPECT_EQ(shown(), "Ü-1:2");
}

TEST_F(ClassesTest, SlotsAreCheckedWhereTheyAreEdited) {
    const struct {
        FieldTexts slot;
        QString field; // refused; empty: saved
    } cases[] = {
        {{{"EgtGunu_6", "Cuma"}, {"EgtBaslangic_6", "930"}, {"EgtBitis_6", "12"}}, ""},
        {{{"EgtGunu_1", "Salı"}, {"EgtBaslangic_1", "25:00"}}, "EgtBaslangic_1"},
        {{{"EgtGunu_1", "Salı"}, {"EgtBitis_1", "öğlen"}}, "EgtBitis_1"},
        {{{"EgtGunu_1", "Salı"}, {"EgtBaslangic_1", "12:00"}, {"EgtBitis_1", "09:00"}}, "EgtBitis_1"},
        {{{"EgtGunu_1", "Salı"}, {"EgtBaslangic_1", "09:00"}, {"EgtBitis_1", "9"}}, "EgtBitis_1"},
        {{{"EgtDerslik_2", "Atölye"}}, "EgtGunu_2"},
        {{{"EgtGunu_3", "Salı"}, {"EgtDerslik_3", QString(31, u'x')}}, "EgtDerslik_3"},
        {{{"SinifAdi", QString(31, u'x')}}, "SinifAdi"},
        {{{"SinifAdi", "  "}}, "SinifAdi"},
    };
    int number = 0;
    for (const auto& c : cases) {
        std::optional<StoredRow> row;
        FieldTexts values = c.slot;
        values.try_emplace("SinifAdi", QString::number(++number));
        const SaveOutcome outcome = classes->save(row, values);
        EXPECT_EQ(outcome.saved, c.field.isEmpty()) << c.field.toStdString() << outcome.reason.toStdString();
        EXPECT_EQ(outcome.field, c.field);
    }
    EXPECT_EQ(classes->rows().at(0).values.at("EgtBaslangic_6"), "09:30");
    EXPECT_EQ(classes->rows().at(0).values.at("EgtBitis_6"), "12:00");
    // an old odd time stays until it is edited itself
    centre.level().execute("UPDATE Sinif SET EgtBaslangic_2 = 'sabah'");
    std::optional<StoredRow> row = classes->rows().at(0);
    EXPECT_TRUE(classes->save(row, {{"SinifOgretmeni", "Ali Can"}}).saved);
}

TEST_F(ClassesTest, TimesAreUnderstoodAsTheyAreTyped) {
    const char* const cases[][2] = {{"9", "09:00"},    {"930", "09:30"},  {"0930", "09:30"},
                                    {"9.30", "09:30"}, {"9:05", "09:05"}, {"23 59", "23:59"},
                                    {"24", ""},        {"9:60", ""},      {"9:5", ""},
                                    {"-1", ""},        {"", ""},          {"09:30:00", ""}};
    for (const auto& c : cases)
        EXPECT_EQ(timeFromText(c[0]), c[1]) << c[0];
}

TEST_F(ClassesTest, TheTimetableGoesByDayAndHourAndNamesWhoIsAtTwoPlaces) {
    add("9-B", {{"EgtGunu_1", "Salı"},
                {"EgtDerslik_1", "D1"},
                {"EgtBaslangic_1", "10:00"},
                {"EgtBitis_1", "12:00"},
                {"EgtOgretmen_1", "Ali Can"},
                {"EgtGunu_2", "Cuma"}}); // no room: not in the list
    add("9-A", {{"EgtGunu_3", "Salı"},
                {"EgtDerslik_3", "d1"},
                {"EgtBaslangic_3", "09:00"},
                {"EgtBitis_3", "10:30"},
                {"EgtGunu_1", "Çarşamba"},
                {"EgtDerslik_1", "D2"},
                {"EgtBaslangic_1", "10:00"},
                {"EgtBitis_1", "12:00"},
                {"EgtOgretmen_1", "Ali Can"}});
    add("9-C", {{"EgtGunu_1", "Pazartesi"},
                {"EgtDerslik_1", "D1"},
                {"EgtGunu_2", "Salı"},
                {"EgtDerslik_2", "D3"},
                {"EgtBaslangic_2", "12:00"},
                {"EgtBitis_2", "13:00"},
                {"EgtOgretmen_2", "Ali Can"}}); // begins when the other ends
    QStringList lines;
    for (const TeachingHour& hour : classes->timetable())
        lines << QString("%1 %2 %3").arg(hour.day, hour.start, hour.className);
    EXPECT_EQ(lines.join(','),
              "Pazartesi  9-C,Salı 09:00 9-A,Salı 10:00 9-B,Salı 12:00 9-C,Çarşamba 10:00 9-A");
    EXPECT_EQ(hourClashes(classes->timetable()).join('|'),
              "d1 aynı saatte 9-A ve 9-B sınıflarında: Salı 09:00-10:30 ve 10:00-12:00.");
}

TEST_F(ClassesTest, AnotherStationsRenameLeavesTheStudentsAlone) {
    student(1, "9-A");
    const StoredRow read = add("9-A");
    centre.level().execute("UPDATE Sinif SET SinifAdi = '9-Z'");
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Sinif = '9-Z'");
    std::optional<StoredRow> row = read;
    dialogs.expectYesNo(renameQuestion("9-A", "9-B"), Answer::Yes)
        .expectYesNo(
            "9-A sınıfı, siz açtıktan sonra başka bir bilgisayarda silindi veya adı değiştirildi.\n\n"
            "Yazdıklarınız yeni bir sınıf olarak kaydedilsin mi?",
            Answer::No);
    EXPECT_FALSE(classes->save(row, {{"SinifAdi", "9-B"}}).saved);
    EXPECT_EQ(students(), "9-Z");
    EXPECT_EQ(defined(), "9-Z");
}

TEST_F(ClassesTest, NothingIsWrittenWithoutTheRight) {
    student(1, "9-A");
    std::optional<StoredRow> row = add("9-A");
    grantAll(centre.databases.constants().database(), centre.session.user, {true, false});
    for (int i = 0; i < 3; ++i)
        dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.",
                              "Uyarı");
    EXPECT_FALSE(classes->save(row, {{"SinifAdi", "9-B"}}).saved);
    EXPECT_FALSE(classes->remove(*row));
    EXPECT_FALSE(assignment->assign("9-A", {}, {}, Marks::Ignore));
    EXPECT_EQ(students(), "9-A");
}

struct AssignmentTest : ClassesTest {
    std::vector<ClassStudent> listed;

    void SetUp() override {
        ClassesTest::SetUp();
        for (const char* name : {"10-A", "O'Class"})
            add(name);
        student(1, "9-A");
        student(2, "");
        student(3, "10-A", "2");
        student(4, "9-A", "3");
        student(5, "9-A", "1", "0205");
        listed = select({"1", "2"});
    }
    std::vector<ClassStudent> select(QStringList stages, QStringList from = {}) {
        return assignment->students({"0101", 4, std::move(stages), std::move(from)}).value();
    }
    static QString question(const QString& target, const char* words) {
        return target + QString::fromUtf8(words) + "\nİşleme Devam mı?";
    }
};

TEST_F(AssignmentTest, OnlyWhatStudentsHaveCanBeChosen) {
    const auto professions = assignment->professions();
    ASSERT_EQ(professions.size(), 2u);
    EXPECT_EQ(professions[0].name, "Kuaförlük");
    EXPECT_EQ(assignment->stages().join(','), "1,2,3");
    EXPECT_EQ(assignment->classes("0101", 4).join(','), ",10-A,9-A");
    EXPECT_EQ(assignment->targets().join(','), "10-A,O'Class");
    const struct {
        QStringList stages, classes;
        const char* numbers;
    } cases[] = {{{"1", "2"}, {}, "1 2 3"}, {{"1"}, {"9-A"}, "1"}, {{"1", "2"}, {"", "10-A"}, "2 3"}};
    for (const auto& c : cases) {
        QStringList numbers;
        for (const ClassStudent& s : select(c.stages, c.classes))
            numbers << s.number.right(1);
        EXPECT_EQ(numbers.join(' '), c.numbers);
    }
    dialogs.expectMessage("Dönem Seçimi Yapılmamış.");
    EXPECT_FALSE(assignment->students({"0101", 4, {}, {}}));
}

TEST_F(AssignmentTest, MarkedOrAllStudentsGoToTheClassAfterTheQuestions) {
    constexpr auto kMarked = " Sınıf İşaretli Öğrencilere Aktarılacak.";
    constexpr auto kAll = " Sınıf Öğrencilere Aktarılacak.";
    dialogs.expectYesNo(question("O'Class", kMarked), Answer::No).expectMessage("Kayıt İşlemi Yapılmadı.");
    EXPECT_FALSE(assignment->assign("O'Class", listed, {0, 2}, Marks::Heed));
    EXPECT_EQ(students(), "9-A||10-A|9-A|9-A");

    dialogs.expectYesNo(question("O'Class", kMarked), Answer::Yes).expectMessage("Kayıt İşlemi Tamamlandı.");
    EXPECT_EQ(assignment->assign("O'Class", listed, {0, 2}, Marks::Heed)->changed, 2u);
    EXPECT_EQ(students(), "O'Class||O'Class|9-A|9-A");

    listed = select({"1", "2"});
    const QString twice =
        "İşaretli Olsun veya Olmasın 3 Adet Öğrencinin Sınıfı Değiştirilecek!\nİşleme Devam "
        "Etmek İstiyor musunuz?";
    dialogs.expectYesNo(question("10-A", kAll), Answer::Yes)
        .expectYesNo(twice, Answer::No)
        .expectMessage("Kayıt İşlemi Yapılmadı.");
    EXPECT_FALSE(assignment->assign("10-A", listed, {}, Marks::Ignore));
    dialogs.expectYesNo(question("10-A", kAll), Answer::Yes)
        .expectYesNo(twice, Answer::Yes)
        .expectMessage("Kayıt İşlemi Tamamlandı.");
    EXPECT_EQ(assignment->assign("10-A", listed, {}, Marks::Ignore)->changed, 3u);
    EXPECT_EQ(students(), "10-A|10-A|10-A|9-A|9-A");

    listed = select({"1", "2"});
    dialogs.expectMessage("Sınıf Bilgisi Değişen Öğrenci Yok!"); // nobody is marked: nothing to ask
    EXPECT_EQ(assignment->assign("10-A", listed, {}, Marks::Heed)->changed, 0u);
    dialogs.expectYesNo(question("10-A", kAll), Answer::Yes)
        .expectMessage("Sınıf Bilgisi Değişen Öğrenci Yok!");
    EXPECT_EQ(assignment->assign("10-A", listed, {0, 1, 2}, Marks::Heed)->changed, 0u);
}

TEST_F(AssignmentTest, WhomAnotherStationChangedMeanwhileIsLeftAloneAndNamed) {
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Sinif = '11-F' WHERE Ogr_Kayit_No = 1");
    centre.level().execute("DELETE FROM OgrenciBilgisi WHERE Ogr_Kayit_No = 2");
    dialogs.expectYesNo(question("O'Class", " Sınıf Öğrencilere Aktarılacak."), Answer::Yes)
        .expectMessage("Kayıt İşlemi Tamamlandı.");
    const auto result = assignment->assign("O'Class", listed, {0, 1, 2}, Marks::Heed);
    EXPECT_EQ(result->changed, 1u);
    EXPECT_EQ(result->skipped.join(','), "Ayşe Işık (010100001),Ayşe Işık (010100002)");
    EXPECT_EQ(students(), "11-F|O'Class|9-A|9-A");
    centre.level().execute("DELETE FROM Sinif WHERE SinifAdi = 'O''Class'");
    dialogs.expectYesNo(question("O'Class", " Sınıf Öğrencilere Aktarılacak."), Answer::Yes)
        .expectMessage("Sınıf Bilgisi Değişen Öğrenci Yok!");
    EXPECT_EQ(assignment->assign("O'Class", select({"3"}), {0}, Marks::Heed)->skipped.size(), 1);
}

} // namespace
