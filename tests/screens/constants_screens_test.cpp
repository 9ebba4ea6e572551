// The window of the school's constants by keys: province and district, checks, values that must survive.
#include "screens/program_fixture.h"

#include "reference/school_constants.h"
#include "widgets/choice_list.h"
#include "widgets/edit_grid.h"
#include "widgets/form_pages.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTabWidget>

namespace orvan_test {
namespace {

class ConstantsScreensTest : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        signIn();
    }
    void open() {
        choose("SabitBilgiler");
        form = screen("frmSabitBilgiler");
        ASSERT_NE(form, nullptr);
        pages = form->findChild<orvan::FormPages*>();
    }
    void enter(const char* field) { pages->focusField(field); }
    orvan::SchoolConstants stored() {
        return orvan::readConstants(centre.databases.constants(), centre.databases.schema());
    }
    void save() { press(Qt::Key_S, Qt::ControlModifier); }

    orvan::Screen* form = nullptr;
    orvan::FormPages* pages = nullptr;
};

TEST_F(ConstantsScreensTest, AnEmptyTableGetsItsRowWithProvinceAndDistrict) {
    open();
    EXPECT_FALSE(form->isWindowModified());
    save();
    EXPECT_FALSE(stored().exists); // nothing typed, nothing made
    enter("SB_Okul_Adi");
    type("Işık MEM");
    enter("SB_il_kodu");
    type("ankara");
    press(Qt::Key_Return);
    EXPECT_EQ(pages->choiceList("SB_ilce_kodu")->choices().size(), 25u);
    type("çank");
    press(Qt::Key_Return);
    save();
    const auto now = stored();
    EXPECT_EQ(now.text("SB_Okul_Adi"), QString("Işık MEM"));
    EXPECT_EQ(now.text("SB_il_kodu"), QString("06"));
    EXPECT_EQ(now.text("SB_il_adi"), QString("ANKARA"));
    EXPECT_EQ(now.text("SB_ilce_adi"), QString("ÇANKAYA"));
    EXPECT_TRUE(now.text("SB_ilce_kodu").startsWith("06"));
    EXPECT_EQ(centre.session.schoolName, QString("Işık MEM"));
    EXPECT_FALSE(form->isWindowModified());

    // another province takes the district with it
    enter("SB_il_kodu");
    type("izmir");
    press(Qt::Key_Return);
    EXPECT_EQ(pages->value("SB_ilce_kodu"), QString());
    press(Qt::Key_Z, Qt::ControlModifier); // and the undone change brings it back
    EXPECT_EQ(pages->value("SB_il_kodu"), QString("06"));
    EXPECT_EQ(pages->value("SB_ilce_kodu"), now.text("SB_ilce_kodu"));
    EXPECT_FALSE(form->isWindowModified());
}

TEST_F(ConstantsScreensTest, OldValuesThatTheListsLackSurviveOtherChanges) {
    centre.constants().execute("INSERT INTO SabitBilgiler "
                               "(SB_il_adi,SB_il_kodu,SB_ilce_adi,SB_ilce_kodu,SB_Donem,SB_PostaKodu) VALUES "
                               "('Ankara','6','Yenikent','99','GÜZ','x')");
    open();
    EXPECT_EQ(pages->choiceList("SB_il_kodu")->currentText(), QString("ANKARA")); // by its name
    EXPECT_EQ(pages->choiceList("SB_ilce_kodu")->currentText(), QString("Yenikent"));
    EXPECT_EQ(pages->choiceList("SB_Donem")->currentText(), QString("GÜZ"));
    EXPECT_FALSE(form->isWindowModified());
    enter("SB_Telefon");
    type("0312");
    save();
    const auto now = stored();
    EXPECT_EQ(now.text("SB_Telefon"), QString("0312"));
    EXPECT_EQ(now.text("SB_il_kodu"), QString("6"));
    EXPECT_EQ(now.text("SB_ilce_kodu"), QString("99"));
    EXPECT_EQ(now.text("SB_Donem"), QString("GÜZ"));
    EXPECT_EQ(now.text("SB_PostaKodu"), QString("x"));
}

TEST_F(ConstantsScreensTest, ARefusedFieldOfAnotherPageIsBroughtUp) {
    open();
    enter("SB_Ders_Yili");
    type("2008-2010");
    enter("SB_Okul_Adi");
    type("Işık MEM");
    save();
    EXPECT_EQ(pages->page(), QString("yil"));
    EXPECT_EQ(focused(), QString("SB_Ders_Yili"));
    EXPECT_EQ(pages->value("SB_Okul_Adi"), QString("Işık MEM"));
    EXPECT_FALSE(stored().exists);
    press(Qt::Key_A, Qt::ControlModifier);
    type("2008-2009");
    save();
    EXPECT_EQ(stored().text("SB_Ders_Yili"), QString("2008-2009"));
}

TEST_F(ConstantsScreensTest, WithoutTheRightToWriteTypedTextStays) {
    orvan::grantAll(centre.databases.constants().database(), kUser, {true, false});
    open();
    enter("SB_Okul_Adi");
    type("Işık");
    dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.", "Uyarı");
    save();
    EXPECT_EQ(pages->value("SB_Okul_Adi"), QString("Işık"));
    EXPECT_TRUE(form->isWindowModified());
    EXPECT_FALSE(stored().exists);
    dialogs.expectYesNo("Yapmış olabileceğiniz değişiklikleri kaydetmeden çıkmak "
                        "üzeresiniz.\nBilgileriniz kayıt edilsin mi?",
                        orvan::Answer::No);
    form->closeWindow();
}

// The insurance constants with the grid of minimum wages. Today is 15.09.2008.
class InsuranceConstantsTest : public ConstantsScreensTest {
  protected:
    void open() {
        choose("ToolSigortaSabit");
        form = screen("frmSigortaSabit");
        ASSERT_NE(form, nullptr);
        pages = form->findChild<orvan::FormPages*>();
        pages->showPage("asgariUcret");
        grid = form->findChild<orvan::EditGrid*>();
        grid->view()->setFocus();
    }
    QString wages() {
        const auto rows = centre.constants().query(
            "SELECT Yil,Ay,BuyukGunluk,KucukGunluk,YtlVar FROM AsgariUcret ORDER BY Yil,Ay");
        QStringList texts;
        for (size_t i = 0; i < rows.rowCount(); ++i)
            texts << QString("%1/%2 %3 %4 %5")
                         .arg(orvan::toText(rows.at(i, 0)), orvan::toText(rows.at(i, 1)),
                              orvan::toText(rows.at(i, 2)), orvan::toText(rows.at(i, 3)),
                              orvan::toText(rows.at(i, 4)));
        return texts.join('|');
    }
    QString missing() const { return find<QLabel>(*form, "eksikAylar")->text(); }

    orvan::EditGrid* grid = nullptr;
};

TEST_F(InsuranceConstantsTest, WagesAreTypedAndTheirGapsNamed) {
    open();
    EXPECT_EQ(missing(), QString("Henüz asgari ücret girilmemiş."));
    grid->makeCurrent(5, "BuyukGunluk"); // June
    type("21,29");
    press(Qt::Key_Return);
    type("18,02");
    press(Qt::Key_Return);
    EXPECT_EQ(grid->value(5, "durum"), QString());
    EXPECT_TRUE(form->isWindowModified());
    save();
    EXPECT_EQ(wages(), QString("2008/6 21.2900 18.0200 E"));
    EXPECT_EQ(missing(), QString("Eksik aylar - 2008: Temmuz-Eylül"));
    EXPECT_FALSE(form->isWindowModified());
    grid->makeCurrent(5, "BuyukGunluk");
    find<QPushButton>(*form, "kopyala")->click();
    save();
    EXPECT_EQ(missing(), QString("Eksik ay yok."));
    EXPECT_TRUE(wages().endsWith("2008/12 21.2900 18.0200 E")) << wages().toStdString();
}

TEST_F(InsuranceConstantsTest, ARefusedWageStaysAndNothingOfThePageIsSaved) {
    open();
    grid->makeCurrent(0, "BuyukGunluk");
    type("10");
    press(Qt::Key_Return);
    save(); // the second amount is missing
    ASSERT_EQ(grid->refusedCells().size(), 1u);
    EXPECT_EQ(grid->refusedCells()[0].place, (orvan::CellPlace{0, 2}));
    EXPECT_EQ(wages(), QString());
    grid->makeCurrent(0, "KucukGunluk");
    type("11"); // more than for grown-ups
    press(Qt::Key_Return);
    save();
    ASSERT_EQ(grid->refusedCells().size(), 1u);
    EXPECT_TRUE(grid->refusedCells()[0].reason.contains("fazla olamaz"));
    EXPECT_EQ(wages(), QString());
    grid->makeCurrent(0, "KucukGunluk");
    type("9");
    press(Qt::Key_Return);
    save();
    EXPECT_EQ(wages(), QString("2008/1 10.0000 9.0000 E"));
}

TEST_F(InsuranceConstantsTest, AnotherYearAsksAboutUnsavedWages) {
    open();
    grid->makeCurrent(0, "BuyukGunluk");
    type("10");
    press(Qt::Key_Return);
    auto* years = find<orvan::ChoiceList>(*form, "yil");
    const QString unsaved = "Yapmış olabileceğiniz değişiklikleri kaydetmeden çıkmak "
                            "üzeresiniz.\nBilgileriniz kayıt edilsin mi?";
    dialogs.expectYesNo(unsaved, orvan::Answer::Yes); // refused: the second amount is missing
    years->setFocus();
    type("2007");
    press(Qt::Key_Return);
    EXPECT_EQ(years->code(), QString("2008"));
    EXPECT_EQ(grid->value(0, "BuyukGunluk"), QString("10.0000"));
    dialogs.expectYesNo(unsaved, orvan::Answer::No);
    years->setFocus();
    type("2007");
    press(Qt::Key_Return);
    EXPECT_EQ(years->code(), QString("2007"));
    EXPECT_EQ(grid->value(0, "BuyukGunluk"), QString());
    EXPECT_FALSE(form->isWindowModified());
    EXPECT_EQ(wages(), QString());
}

TEST_F(InsuranceConstantsTest, SwitchesAndRatesGoToTheSameRowAsTheSchool) {
    centre.constants().execute("INSERT INTO SabitBilgiler (SB_Okul_Adi,SB_PrimHesaplamaTipi,SB_ORAN) VALUES "
                               "('Işık MEM',7,'%50')");
    open();
    EXPECT_EQ(pages->value("SB_PrimHesaplamaTipi"), QString("7")); // a type the list does not know
    enter("SB_IzinSigortadanDusulsun");
    press(Qt::Key_Space);
    enter("SB_prim_hastalik_sigortasi");
    type("12,5");
    save();
    const auto now = stored();
    EXPECT_TRUE(now.yes("SB_IzinSigortadanDusulsun"));
    EXPECT_DOUBLE_EQ(now.decimal("SB_prim_hastalik_sigortasi"), 12.5);
    EXPECT_EQ(now.text("SB_PrimHesaplamaTipi"), QString("7"));
    EXPECT_EQ(now.text("SB_ORAN"), QString("%50"));
    EXPECT_EQ(now.text("SB_Okul_Adi"), QString("Işık MEM"));
}

} // namespace
} // namespace orvan_test
