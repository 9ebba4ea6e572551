// The window of the school's constants by keys: province and district, checks, values that must survive.
#include "screens/program_fixture.h"

#include "reference/school_constants.h"
#include "widgets/choice_list.h"
#include "widgets/form_pages.h"

#include <QLabel>
#include <QLineEdit>
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

} // namespace
} // namespace orvan_test
