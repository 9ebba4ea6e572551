// Another main profession for students: which are offered, the question with their number, other stations.
#include "reference/main_profession_change.h"

#include "core/users.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

struct MainProfessionChangeTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    void SetUp() override {
        centre.databases.connect();
        createUser(centre.databases.constants().database(), "müdür", "1");
        grantAll(centre.databases.constants().database(), "müdür", {true, true});
        centre.session.user = "müdür";
        centre.level().execute(
            "INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama,ID) "
            "VALUES ('AnaMeslek','1100','Motorlu Araçlar',4)");
        centre.addStudent("110100001", 1, "1101", "Ayşe", "O'Brien");
        centre.addStudent("110100002", 2, "1101", "Işıl", "Öz");
        centre.addStudent("140100001", 3, "1401", "Ali", "Can");
        centre.level().execute("UPDATE OgrenciBilgisi SET DersID = 3 WHERE Ogr_Numarasi = '140100001'");
    }
    MainProfessionChange change() { return {centre.databases, dialogs, "Ana Meslekler"}; }
    QString stored() {
        const auto rows =
            centre.level().query("SELECT Ogr_AnaMeslek_Kod FROM OgrenciBilgisi ORDER BY Ogr_Kayit_No");
        QStringList all;
        for (size_t i = 0; i < rows.rowCount(); ++i)
            all << trimmedText(rows.at(i, size_t{0}));
        return all.join('|');
    }
};

TEST_F(MainProfessionChangeTest, ChangesTheChosenOnesAfterTheCountIsConfirmed) {
    EXPECT_EQ(change().students(4, "").size(), 2u);
    EXPECT_EQ(change().students(4, "1401").size(), 0u);
    EXPECT_EQ(change().students(3, "1401").size(), 1u);
    EXPECT_EQ(change().students(4, "11'01").size(), 0u);
    const auto seen = change().students(4, "1101");
    const QString both = "2 öğrencinin ana mesleği “1100 - Motorlu Araçlar” olarak değiştirilecek:\n\n"
                         "110100001 Ayşe O'Brien\n110100002 Işıl Öz\n\nDevam etmek istiyor musunuz?";
    dialogs.expectYesNo(both, Answer::No, "Uyarı");
    EXPECT_EQ(change().change(seen, 4, "1100"), std::nullopt);
    EXPECT_EQ(stored(), "||");
    dialogs.expectYesNo("1 öğrencinin ana mesleği “1100 - Motorlu Araçlar” olarak değiştirilecek:\n\n"
                        "110100002 Işıl Öz\n\nDevam etmek istiyor musunuz?",
                        Answer::Yes);
    EXPECT_EQ(change().change({seen[1]}, 4, "1100"), 1);
    EXPECT_EQ(stored(), "|1100|");
    // one was changed meanwhile: it is left alone and named
    dialogs.expectYesNo(both, Answer::Yes);
    dialogs.expectMessage(
        "1 öğrenci değiştirilmedi; kaydı bu arada başka bir bilgisayarda değişti veya silindi:"
        "\n\n110100002 Işıl Öz");
    EXPECT_EQ(change().change(seen, 4, "1100"), 1);
    EXPECT_EQ(stored(), "1100|1100|");
}

TEST_F(MainProfessionChangeTest, NothingIsWrittenWithoutChoiceTicksOrRight) {
    const auto seen = change().students(4, "");
    dialogs.expectMessage("Yeni ana mesleği listeden seçiniz.");
    EXPECT_EQ(change().change(seen, 4, ""), std::nullopt);
    dialogs.expectMessage("Ana mesleği değişecek öğrencileri işaretleyiniz.");
    EXPECT_EQ(change().change({}, 4, "1100"), std::nullopt);
    centre.session.user = "yok";
    dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.", "Uyarı");
    EXPECT_EQ(change().change(seen, 4, "1100"), std::nullopt);
    EXPECT_EQ(stored(), "||");
}

TEST_F(MainProfessionChangeTest, ALongListIsNamedInPart) {
    std::vector<MainProfessionStudent> many;
    for (int i = 0; i < 12; ++i) {
        const QString number = QString::number(150100001 + i);
        centre.addStudent(number, 10 + i, "1501", "Ad", QString::number(i));
        many.push_back({number, "Ad", QString::number(i), "1501", ""});
    }
    QString names;
    for (int i = 0; i < 10; ++i)
        names += QString("%1 Ad %2\n").arg(150100001 + i).arg(i);
    dialogs.expectYesNo("12 öğrencinin ana mesleği “1100 - Motorlu Araçlar” olarak değiştirilecek:\n\n" +
                            names + "… ve 2 öğrenci daha\n\nDevam etmek istiyor musunuz?",
                        Answer::Yes);
    EXPECT_EQ(change().change(many, 4, "1100"), 12);
}

} // namespace
