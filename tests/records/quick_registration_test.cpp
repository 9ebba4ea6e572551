// The quick form: what it refuses, what it writes, and what happens when two stations register at once.
#include "records/quick_registration.h"

#include "core/users.h"
#include "records/student_list.h"
#include "support/declining_dialogs.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

const QString kTaken =
    "Bu kayıt ve/veya kütük numarası kayıt işleminden önce\nbaşka bir kullanıcı tarafından "
    "kullanılmış!\nBunların yerine;\nYeni Kayıt No : %1\nYeni Kütük No : %2\n"
    "yeni numaraları kullanmak ister misiniz?";

struct QuickRegistrationTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    FixedClock clock{QDate(2008, 9, 5)};
    QuickRegistration rule{centre.databases, dialogs, clock};

    void SetUp() override {
        centre.databases.connect();
        centre.session.user = "ali";
        centre.session.schoolYear = "2008-2009";
        centre.addProfession("1101", "Otomotiv Mekanikerliği");
        centre.addProfession("1201", "Çelik İşleri");
        setRight("1");
    }
    void setRight(const char* write) {
        centre.constants().execute("DELETE FROM ProgramHaklari");
        centre.constants().execute(
            "INSERT INTO ProgramHaklari (KullaniciAdi,ProgramAdi,GirisHakki,YazmaHakki) VALUES "
            "('ali','Hızlı Öğrenci Kayıt','1',?)",
            Parameters{write});
    }
    QuickForm filled(const char* name = "Ayşe", const char* surname = "Işık") {
        QuickForm form = rule.propose({"1101", 4, "Otomotiv Mekanikerliği"});
        form.name = name;
        form.surname = surname;
        return form;
    }
    size_t students() { return centre.databases.table("OgrenciBilgisi").rowCount(); }
};

TEST_F(QuickRegistrationTest, WritesTheNewStudent) {
    QuickForm form = filled("  O'Hara ", " Çağlar'ın ");
    ASSERT_EQ(rule.save(form), QuickSave::Saved);
    const auto rows = centre.level().query("SELECT * FROM OgrenciBilgisi");
    ASSERT_EQ(rows.rowCount(), 1u);
    struct Case {
        const char* field;
        const char* text;
    };
    for (const Case& c : {Case{"Ogr_Numarasi", "110100001"}, Case{"Ogr_Kayit_No", "1"},
                          Case{"Ogr_Kayit_Tarihi", "05.09.2008"}, Case{"Ogr_Adi", "O'Hara"},
                          Case{"Ogr_Soyadi", "Çağlar'ın"}, Case{"Ogr_MeslekKod", "1101"}, Case{"DersID", "4"},
                          Case{"Ogr_DersYili", "2008-2009"}, Case{"Ogr_Seviye", "1"}, Case{"Ogr_Durum", "0"}})
        EXPECT_EQ(toText(rows.at(0, c.field)).toStdString(), c.text) << c.field;
    for (const char* field :
         {"Ogr_calistigi_isden_ayrilis_tarihi", "Ogr_Ayrilis_Nedeni", "Ogr_Koordinator_Ogretmen"})
        EXPECT_EQ(rows.at(0, field), jet::Value(""))
            << field << ": lists test for the empty text, not for null";
}

TEST_F(QuickRegistrationTest, ProfessionsAreOfferedByNameAndNumbersFollowOn) {
    const auto offered = rule.professions();
    ASSERT_EQ(offered.size(), 2u);
    EXPECT_EQ(offered[0].name, "Çelik İşleri");
    EXPECT_EQ(rule.propose(offered[0]).studentNo, "120100001");
    QuickForm first = filled();
    ASSERT_EQ(rule.save(first), QuickSave::Saved);
    const QuickForm next = rule.propose({"1101", 4, ""});
    EXPECT_EQ(next.studentNo, "110100002");
    EXPECT_EQ(next.registrationNo, 2);
    EXPECT_EQ(rule.nameWidth(), 30);
    EXPECT_EQ(rule.numberWidth(), 15);
}

TEST_F(QuickRegistrationTest, RefusalsInTheirOrder) {
    const QString required =
        "Öğrenci Numarası, Adı ve Soyadı boş girilemez. Lütfen ilgili yerleri doldurunuz.";
    const QString right = "Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.";
    QuickForm none;
    dialogs.expectMessage("Yeni kayıt yapmak için önce meslek seçimi yapmalısınız.", "Uyarı");
    EXPECT_EQ(rule.save(none), QuickSave::Refused);

    setRight("0"); // before the fields are looked at
    QuickForm empty = filled("", "");
    dialogs.expectMessage(right, "Uyarı");
    EXPECT_EQ(rule.save(empty), QuickSave::Refused);

    setRight("1");
    QuickForm noNumber = filled();
    noNumber.studentNo = "  ";
    for (QuickForm form : {filled("", "Işık"), filled("Ayşe", "   "), noNumber}) {
        dialogs.expectMessage(required);
        EXPECT_EQ(rule.save(form), QuickSave::Refused);
    }
    EXPECT_EQ(students(), 0u);
}

TEST_F(QuickRegistrationTest, TypedNumberThatExistsIsRefused) {
    centre.addStudent(" 110100040 ", 1, "1101");
    QuickForm form = filled();
    form.studentNo = "110100040";
    dialogs.expectMessage("110100040 numarasıyla zaten kayıtlı bulunmaktadır. ");
    EXPECT_EQ(rule.save(form), QuickSave::Refused);
    EXPECT_EQ(form.studentNo, "110100040") << "the form stays as typed";
    form.studentNo = "110100077";
    EXPECT_EQ(rule.save(form), QuickSave::Saved);
}

TEST_F(QuickRegistrationTest, NumbersTakenMeanwhileAreOfferedAnew) {
    QuickForm mine = filled("Ayşe", "Işık");
    centre.addStudent("110100001", 1, "1101", "Öbür", "İstasyon");
    dialogs.expectYesNo(kTaken.arg("2", "110100002"), Answer::No)
        .expectYesNo(kTaken.arg("2", "110100002"), Answer::Yes);
    EXPECT_EQ(rule.save(mine), QuickSave::Refused);
    EXPECT_EQ(mine.studentNo, "110100001") << "declined: the form stays as it was";
    EXPECT_EQ(students(), 1u);
    EXPECT_EQ(rule.save(mine), QuickSave::Saved);
    EXPECT_EQ(mine.studentNo, "110100002");
    EXPECT_EQ(mine.registrationNo, 2);
    EXPECT_EQ(students(), 2u);
}

TEST_F(QuickRegistrationTest, RegistrationNumberAloneTakenKeepsTheStudentNumber) {
    QuickForm mine = filled();
    centre.addStudent("120100001", 1, "1201");
    dialogs.expectYesNo(kTaken.arg("2", "110100001"), Answer::Yes);
    EXPECT_EQ(rule.save(mine), QuickSave::Saved);
    EXPECT_EQ(mine.registrationNo, 2);
}

// Between the question and the write the other station strikes again.
TEST_F(QuickRegistrationTest, AnswerIsCheckedOnceMore) {
    struct OtherStation final : orvan_test::DecliningDialogs {
        explicit OtherStation(TestCentre& given) : centre(given) {}
        TestCentre& centre;
        int asked = 0;
        Answer askYesNo(const QString&, const QString&, Answer) override {
            ++asked;
            if (asked <= 2) centre.addStudent(QString("11010000%1").arg(asked + 1), asked + 1, "1101");
            return Answer::Yes;
        }
    } station(centre);
    QuickRegistration contested(centre.databases, station, clock);
    QuickForm mine = contested.propose({"1101", 4, ""});
    mine.name = "Ayşe";
    mine.surname = "Işık";
    centre.addStudent("110100001", 1, "1101");
    EXPECT_EQ(contested.save(mine), QuickSave::Saved);
    EXPECT_EQ(station.asked, 3);
    EXPECT_EQ(mine.studentNo, "110100004");
    EXPECT_EQ(students(), 4u);
}

TEST_F(QuickRegistrationTest, TwoProgramsOnTheSameFiles) {
    Session otherSession = centre.session;
    DatabaseSet otherSet(centre.folder, otherSession, allTables());
    otherSet.connect();
    ScriptedDialogs otherDialogs;
    QuickRegistration other(otherSet, otherDialogs, clock);
    QuickForm mine = filled("Ayşe", "Işık");
    QuickForm theirs = other.propose({"1101", 4, ""});
    theirs.name = "Çağrı";
    theirs.surname = "İnan";
    EXPECT_EQ(other.save(theirs), QuickSave::Saved);
    dialogs.expectYesNo(kTaken.arg("2", "110100002"), Answer::Yes);
    EXPECT_EQ(rule.save(mine), QuickSave::Saved);
    const auto list = studentList(otherSet.level().sql());
    ASSERT_EQ(list.size(), 2u);
    EXPECT_EQ(list[0].name, "Ayşe");
    EXPECT_EQ(list[1].number, "110100001");
}

TEST_F(QuickRegistrationTest, TooLongANameIsAnErrorAndLeavesNothing) {
    QuickForm form = filled();
    form.name = QString(31, 'a');
    EXPECT_THROW(rule.save(form), jet::Error);
    EXPECT_EQ(students(), 0u);
    form.name = "Ayşe";
    EXPECT_EQ(rule.save(form), QuickSave::Saved) << "the handle is usable again";
}

TEST_F(QuickRegistrationTest, ListIsInTurkishOrderWithProfessionNames) {
    const char* const names[] = {"Zafer", "Şule", "Çiğdem", "Işıl", "İpek", "Cem", "Sıla", "ayşe"};
    int registration = 0;
    for (const char* name : names) {
        ++registration;
        centre.addStudent(QString("11010000%1").arg(registration), registration,
                          registration % 2 ? "1101" : "9999", name);
    }
    QStringList listed;
    for (const StudentListRow& row : studentList(centre.level()))
        listed << row.name;
    EXPECT_EQ(listed.join(' ').toStdString(), "ayşe Cem Çiğdem Işıl İpek Sıla Şule Zafer");
    const auto byNumber = studentList(centre.level(), StudentOrder::ByNumber);
    EXPECT_EQ(byNumber[0].number, "110100001");
    EXPECT_EQ(byNumber[0].profession, "Otomotiv Mekanikerliği");
    EXPECT_EQ(byNumber[1].profession, "") << "a code without a row still lists the student";
}

} // namespace
