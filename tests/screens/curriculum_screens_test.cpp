// The windows of the course pool, of a profession's courses and of students' main professions, by keys: what
// is typed stays through adding, moving and removing; unsaved work is asked about; one window opens the
// other.
#include "screens/program_fixture.h"

#include "widgets/choice_list.h"
#include "widgets/edit_grid.h"
#include "widgets/grid.h"
#include "widgets/tick_list.h"

#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace orvan_test {
namespace {

using orvan::Answer;

class CurriculumScreensTest : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        signIn();
        for (const char* code : {"AKM", "MAT", "TDE"})
            centre.level().execute("INSERT INTO DersHavuzu (ID,DersKodu,DersAdi,DersTuru,DersHaftalikSaat) "
                                   "VALUES (4,?,?,'M',2)",
                                   orvan::Parameters{code, QString(code) + " dersi"});
        int order = 0;
        for (const char* code : {"MAT", "TDE", "AKM"})
            centre.level().execute(
                "INSERT INTO MeslekDersHavuzu (ID,MeslekKodu,MeslekOgrenciTuru,MeslekOgrenimDurumu,"
                "MeslekOgrenimYili,MeslekDersKodu,MeslekDersSaat,MeslekKayitSira) "
                "VALUES (4,'0101','Kalfa','İ',?,?,2,?)",
                orvan::Parameters{order < 2 ? 1 : 2, code, order + 1}),
                ++order;
    }
    void open(const char* command, const char* window) {
        choose(command);
        form = screen(window);
        ASSERT_NE(form, nullptr) << command;
    }
    orvan::EditGrid* grid() const { return find<orvan::EditGrid>(*form, "meslekDersleri"); }
    // "MAT1 TDE1": as they are stored, in their order.
    QString stored() {
        const auto rows =
            centre.level().query("SELECT MeslekDersKodu, MeslekOgrenimYili FROM MeslekDersHavuzu "
                                 "WHERE MeslekOgrenimDurumu = 'İ' ORDER BY MeslekKayitSira");
        QStringList all;
        for (size_t i = 0; i < rows.rowCount(); ++i)
            all << orvan::toText(rows.at(i, size_t{0})) + orvan::toText(rows.at(i, 1));
        return all.join(' ');
    }
    QString hours(const char* code) {
        const auto rows = centre.level().query("SELECT MeslekDersSaat FROM MeslekDersHavuzu WHERE "
                                               "MeslekDersKodu = ? AND MeslekOgrenimDurumu = 'İ'",
                                               orvan::Parameters{code});
        return rows.empty() ? QString("-") : orvan::toText(rows.at(0, size_t{0}));
    }
    QString result() const { return find<QLabel>(*form, "sonuc")->text(); }
    void click(const char* button) {
        find<QPushButton>(*form, button)->click();
        QCoreApplication::processEvents();
    }
    void takeChoice(const char* list, const QString& code) {
        auto* choices = find<orvan::ChoiceList>(*form, list);
        choices->setCode(code);
        emit choices->codeChanged(code); // as the user's own hand does it
        QCoreApplication::processEvents();
    }
    const QString unsaved = "Yapmış olabileceğiniz değişiklikleri kaydetmeden çıkmak "
                            "üzeresiniz.\nBilgileriniz kayıt edilsin mi?";
    orvan::Screen* form = nullptr;
};

TEST_F(CurriculumScreensTest, WhatIsTypedStaysThroughMovingAddingAndRemoving) {
    open("MeslekDers", "FrmMeslekDersHavuzu");
    EXPECT_EQ(find<orvan::ChoiceList>(*form, "meslek")->code(), "0101");
    ASSERT_EQ(grid()->rowCount(), 3u);
    grid()->view()->setFocus();
    grid()->makeCurrent(1, "MeslekDersSaat");
    type("7");
    press(Qt::Key_Return);
    EXPECT_TRUE(form->isWindowModified());
    grid()->makeCurrent(1, "MeslekDersSaat");
    press(Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(stored(), "TDE1 MAT1 AKM2");
    EXPECT_EQ(grid()->value(0, "MeslekDersSaat"), "7") << "typed and not saved";
    EXPECT_EQ(hours("TDE"), "2");
    EXPECT_EQ(grid()->currentCell()->row, 0u);
    press(Qt::Key_Up, Qt::AltModifier); // it is the first already
    EXPECT_EQ(stored(), "TDE1 MAT1 AKM2");

    find<orvan::ListGrid>(*form, "programinHavuzu")->makeCurrent("AKM");
    click("ekle");
    EXPECT_EQ(stored(), "TDE1 MAT1 AKM1 AKM2") << "into the current row's year";
    EXPECT_EQ(grid()->value(0, "MeslekDersSaat"), "7");

    grid()->makeCurrent(1, "MeslekDersSaat");
    dialogs.expectYesNo("2. MAT - MAT dersi satırındaki bilgi silinecek.\nDevam etmek istiyor musunuz?",
                        Answer::Yes);
    click("sil");
    EXPECT_EQ(stored(), "TDE1 AKM1 AKM2");
    EXPECT_TRUE(form->isWindowModified());
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(hours("TDE"), "7");
    EXPECT_FALSE(form->isWindowModified());
    EXPECT_EQ(result(), "Kaydedildi: 1 satır.");
}

TEST_F(CurriculumScreensTest, ARowIsDraggedByItsNumberWithinTheYearOnView) {
    open("MeslekDers", "FrmMeslekDersHavuzu");
    auto* numbers = grid()->view()->verticalHeader();
    numbers->moveSection(0, 2); // as the mouse does it
    QCoreApplication::processEvents();
    EXPECT_EQ(stored(), "TDE1 AKM2 MAT1");
    EXPECT_EQ(grid()->value(2, "MeslekDersKodu"), "MAT");
    EXPECT_EQ(numbers->visualIndex(0), 0) << "the header itself stays in order";
    takeChoice("yil", "1");
    ASSERT_EQ(grid()->rowCount(), 2u);
    numbers->moveSection(1, 0);
    QCoreApplication::processEvents();
    EXPECT_EQ(stored(), "MAT1 AKM2 TDE1") << "the other year's row keeps its place";
}

TEST_F(CurriculumScreensTest, RefusedInputAndAnotherChoiceLoseNothing) {
    open("MeslekDers", "FrmMeslekDersHavuzu");
    grid()->view()->setFocus();
    grid()->makeCurrent(0, "MeslekDersSaat");
    type("x5");
    press(Qt::Key_Return);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(hours("MAT"), "5") << "letters do not get into a number";
    centre.level().execute("UPDATE MeslekDersHavuzu SET MeslekDersKodu = 'MAT' WHERE MeslekDersKodu = 'AKM'");
    press(Qt::Key_F5);
    grid()->applyChanges({{2, "MeslekOgrenimYili", "1"}}); // MAT would stand twice in the first year
    dialogs.expectYesNo(unsaved, Answer::Yes);
    takeChoice("ogrenim", "L");
    EXPECT_EQ(find<orvan::ChoiceList>(*form, "ogrenim")->code(), "İ") << "the refused save keeps the choice";
    EXPECT_EQ(grid()->value(2, "MeslekOgrenimYili"), "1");
    dialogs.expectYesNo(unsaved, Answer::No);
    takeChoice("ogrenim", "L");
    EXPECT_EQ(grid()->rowCount(), 0u);
    EXPECT_EQ(stored(), "MAT1 TDE1 MAT2");
}

TEST_F(CurriculumScreensTest, FinalExamsAndReadyCoursesAreLoadedFromTheWindow) {
    open("MeslekDers", "FrmMeslekDersHavuzu");
    dialogs.expectYesNo("Bitirme Derslerini Oluştururken Daha Önce Tanımlanan Tüm Bitirme Dersleri "
                        "Silinecek!\nOnaylıyor musunuz?",
                        Answer::Yes);
    click("bitirme");
    EXPECT_EQ(result(), "3 bitirme dersi oluşturuldu (Öğrenim: BİTİRME).");
    takeChoice("ogrenim", "B");
    EXPECT_EQ(grid()->rowCount(), 3u);
    takeChoice("meslek", "0205");
    EXPECT_EQ(grid()->rowCount(), 0u);
    takeChoice("ogrenim", "L");
    dialogs.expectYesNo("Kuaförlük Mesleğinin hazır dersleri yüklenecek.\nDevam Etmek İstiyor musunuz?",
                        Answer::Yes);
    dialogs.expectMessage("Şu derslerin kodu havuzda başka bir adla kayıtlı; havuzdaki adlar kaldı:\n\n"
                          "MAT: havuzda “MAT dersi”, hazır derslerde “MATEMATİK”\n"
                          "TDE: havuzda “TDE dersi”, hazır derslerde “TÜRK DİLİ VE EDEBİYATI”");
    click("hazir");
    EXPECT_GT(grid()->rowCount(), 5u);
    EXPECT_TRUE(result().startsWith("Hazır derslerden ")) << result().toStdString();
}

TEST_F(CurriculumScreensTest, AnEmptyListOfProfessionsIsSaid) {
    centre.level().execute("DELETE FROM Parametrik_giris WHERE Ta_Tanim_Grup = 'Bölüm'");
    open("MeslekDers", "FrmMeslekDersHavuzu");
    EXPECT_EQ(result(), "Bu programda tanımlı meslek yok. Önce “Meslekler…” ile tanımlayınız.");
    dialogs.expectMessage("Hazır dersleri yüklemek için önce mesleği seçiniz.");
    click("hazir");
    click("meslekler"); // the definitions of that version open beside it
    form = screen("frmBolumTanimi2");
    ASSERT_NE(form, nullptr);
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(find<orvan::ChoiceList>(*form, "ID")->code(), "4");
    find<QLineEdit>(*form, "Ta_Tanim_Kod")->setFocus();
    type("0303");
    press(Qt::Key_Return);
    type("Usta'lık");
    press(Qt::Key_S, Qt::ControlModifier);
    form = screen("FrmMeslekDersHavuzu");
    EXPECT_EQ(find<orvan::ChoiceList>(*form, "meslek")->code(), "0303") << "offered without opening it again";
}

TEST_F(CurriculumScreensTest, ThePoolShowsOneVersionAndAddsToIt) {
    open("DersHavuzu", "frmDersHavuzu");
    auto* list = form->findChild<orvan::ListGrid*>();
    EXPECT_EQ(list->totalCount(), 3u);
    takeChoice("program", "3");
    EXPECT_EQ(list->totalCount(), 1u);
    press(Qt::Key_N, Qt::ControlModifier);
    type("FİZ");
    press(Qt::Key_Return);
    type(QString(300, u'ş')); // refused while it is typed
    EXPECT_EQ(find<QLineEdit>(*form, "DersAdi")->text().size(), 100);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(focused(), "DersTuru");
    EXPECT_EQ(list->totalCount(), 1u) << "without a kind it is not saved";
    type("Meslek");
    press(Qt::Key_Return);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(list->totalCount(), 2u);
    EXPECT_FALSE(form->isWindowModified());
}

TEST_F(CurriculumScreensTest, TheMainProfessionOfTickedStudentsChanges) {
    centre.level().execute("INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama,ID) "
                           "VALUES ('AnaMeslek','1100','Yapı',4)");
    open("AnaMeslek", "frmAnaMeslek");
    click("anaMeslekDegistir");
    form = screen("frmAnaMeslekDegistir");
    ASSERT_NE(form, nullptr);
    dialogs.expectMessage("Yeni ana mesleği listeden seçiniz.");
    press(Qt::Key_S, Qt::ControlModifier);
    takeChoice("anaMeslek", "1100");
    form->showRecord("020500001");
    auto* list = form->findChild<orvan::TickList*>();
    EXPECT_EQ(list->tickedRows().join(' '), "020500001");
    dialogs.expectYesNo(
        "1 öğrencinin ana mesleği “1100 - Yapı” olarak değiştirilecek:\n\n020500001 Ali Öz\n\n"
        "Devam etmek istiyor musunuz?",
        Answer::Yes);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(result(), "1 öğrencinin ana mesleği değişti.");
    EXPECT_TRUE(list->tickedRows().isEmpty());
    form->showRecord("yok'");
    EXPECT_EQ(result(), "yok' numaralı öğrenci bu dosyada yok.");
}

} // namespace
} // namespace orvan_test
