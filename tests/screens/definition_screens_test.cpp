// The windows of coded definitions by keys only: adding, changing, deleting; bad input, unsaved work, another
// station, a user without the right to write.
#include "screens/program_fixture.h"

#include "reference/code_lists.h"
#include "widgets/choice_list.h"
#include "widgets/grid.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace orvan_test {
namespace {

using orvan::Answer;

class DefinitionScreensTest : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        signIn();
    }
    void open(const char* command, const char* window) {
        choose(command);
        form = screen(window);
        ASSERT_NE(form, nullptr) << command;
    }
    void addDistrict(const char* code, const char* name) {
        centre.level().execute(
            "INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama) VALUES (?,?,?)",
            orvan::Parameters{"Semt Kodu", code, name});
    }
    QString text(const char* field) const { return find<QLineEdit>(*form, field)->text(); }
    QString note(const char* field) const {
        return find<QLabel>(*form, qPrintable(QString("%1-uyari").arg(field)))->text();
    }
    QString result() const { return find<QLabel>(*form, "sonuc")->text(); }
    QString districts() { return orvan::descriptions(centre.level(), "Semt Kodu").join('|'); }
    // A button pressed by its Alt letter is seen going down before it acts.
    void pressButton(Qt::Key letter) {
        press(letter, Qt::AltModifier);
        QTest::qWait(kButtonDown);
    }
    static constexpr int kButtonDown = 150; // milliseconds
    void toList() { form->findChild<QTableView*>()->setFocus(); }

    const char* kCode = "Ta_Tanim_Kod";
    const char* kName = "Ta_tanim_aciklama";
    const QString unsaved = "Yapmış olabileceğiniz değişiklikleri kaydetmeden çıkmak "
                            "üzeresiniz.\nBilgileriniz kayıt edilsin mi?";
    orvan::Screen* form = nullptr;
};

TEST_F(DefinitionScreensTest, ADistrictIsAddedByKeysOnly) {
    addDistrict("07", "Çarşı");
    open("IsletmeSemt", "frmSemt");
    EXPECT_EQ(focused(), QString("ara"));
    EXPECT_EQ(text(kName), QString("Çarşı"));
    pressButton(Qt::Key_E);
    EXPECT_EQ(focused(), QString(kCode));
    EXPECT_EQ(text(kCode), QString("08"));
    EXPECT_FALSE(form->isWindowModified());
    press(Qt::Key_Return);
    type("Şirinevler 'İç'");
    EXPECT_TRUE(form->isWindowModified());
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), QString("kaydet"));
    press(Qt::Key_Return);
    EXPECT_FALSE(form->isWindowModified());
    EXPECT_EQ(result(), QString("Eklendi: 08 - Şirinevler 'İç'"));
    EXPECT_EQ(orvan::descriptionOf(centre.level(), "Semt Kodu", "08"), QString("Şirinevler 'İç'"));
    auto* list = form->findChild<orvan::ListGrid*>();
    EXPECT_EQ(list->totalCount(), 2u);
    EXPECT_EQ(list->sheet().rows[*list->currentRow()][0], QVariant("08"));
    press(Qt::Key_S, Qt::ControlModifier); // a second time there is nothing to save
    EXPECT_EQ(districts(), QString("Çarşı|Şirinevler 'İç'"));
}

TEST_F(DefinitionScreensTest, RefusedInputStaysInItsField) {
    addDistrict("01", "Çarşı");
    open("IsletmeSemt", "frmSemt");
    press(Qt::Key_N, Qt::ControlModifier);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(focused(), QString(kName));
    EXPECT_TRUE(note(kName).contains("boş olamaz")) << note(kName).toStdString();
    type("çarşı");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(note(kName).contains("01 - Çarşı"));
    EXPECT_EQ(text(kName), QString("çarşı"));
    type(QString(120, u'x')); // refused while it is typed
    EXPECT_EQ(text(kName).size(), 100);
    EXPECT_EQ(districts(), QString("Çarşı"));
    dialogs.expectYesNo(unsaved, Answer::No);
    form->closeWindow();
    EXPECT_EQ(districts(), QString("Çarşı"));
}

TEST_F(DefinitionScreensTest, MovingInTheListAsksAboutUnsavedWork) {
    addDistrict("01", "Çarşı");
    addDistrict("02", "İstasyon");
    addDistrict("03", "Sanayi");
    open("IsletmeSemt", "frmSemt");
    auto* list = form->findChild<orvan::ListGrid*>();
    find<QLineEdit>(*form, kName)->setFocus();
    type(" Meydanı");
    toList();
    dialogs.expectYesNo(unsaved, Answer::Yes);
    press(Qt::Key_Down);
    EXPECT_EQ(text(kCode), QString("02"));
    EXPECT_EQ(*list->currentRow(), 1u);
    EXPECT_EQ(districts(), QString("Çarşı Meydanı|İstasyon|Sanayi"));

    find<QLineEdit>(*form, kName)->setFocus();
    type("x");
    toList();
    dialogs.expectYesNo(unsaved, Answer::No);
    press(Qt::Key_Down);
    EXPECT_EQ(text(kCode), QString("03"));
    EXPECT_EQ(districts(), QString("Çarşı Meydanı|İstasyon|Sanayi"));

    // a save that is refused keeps the person where he is
    find<QLineEdit>(*form, kName)->setFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    toList();
    dialogs.expectYesNo(unsaved, Answer::Yes);
    press(Qt::Key_Up);
    QCoreApplication::processEvents();
    EXPECT_EQ(text(kCode), QString("03"));
    EXPECT_EQ(*list->currentRow(), 2u);
    EXPECT_EQ(focused(), QString(kName));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(form->isWindowModified());
}

TEST_F(DefinitionScreensTest, DeletingAsksAndGoesOnWithTheNextRow) {
    addDistrict("01", "Çarşı");
    addDistrict("02", "İstasyon");
    open("IsletmeSemt", "frmSemt");
    dialogs.expectYesNo("“01 - Çarşı” tanımı silinsin mi?", Answer::No, "Dikkat");
    pressButton(Qt::Key_S);
    EXPECT_EQ(districts(), QString("Çarşı|İstasyon"));
    dialogs.expectYesNo("“01 - Çarşı” tanımı silinsin mi?", Answer::Yes, "Dikkat");
    pressButton(Qt::Key_S);
    EXPECT_EQ(districts(), QString("İstasyon"));
    EXPECT_EQ(text(kCode), QString("02"));
    dialogs.expectYesNo("“02 - İstasyon” tanımı silinsin mi?", Answer::Yes);
    pressButton(Qt::Key_S);
    EXPECT_EQ(text(kCode), QString());
    EXPECT_FALSE(find<QPushButton>(*form, "sil")->isEnabled()); // there is nothing left
    EXPECT_FALSE(form->isWindowModified());
}

TEST_F(DefinitionScreensTest, AnotherStationsValueIsShownWhereNothingWasTyped) {
    centre.level().execute(
        "INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama,Ta_Tanim_Tescil_No) "
        "VALUES ('MeslekOda','01','Berberler','1')");
    open("MeslekOdalari", "frmMeslek_Odasi");
    find<QLineEdit>(*form, kName)->setFocus();
    type(" Odası");
    centre.level().execute(
        "UPDATE Parametrik_giris SET Ta_Tanim_Tescil_No='77' WHERE Ta_Tanim_Grup='MeslekOda'");
    dialogs.expectChoice("Bu kayıt, siz açtıktan sonra başka bir bilgisayarda değiştirildi:\n\n"
                         "Tescil no: “1” yerine “77”",
                         std::nullopt);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(text(kName), QString("Berberler Odası")); // nothing typed is lost
    EXPECT_EQ(text("Ta_Tanim_Tescil_No"), QString("77"));
    EXPECT_TRUE(form->isWindowModified());
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(form->isWindowModified());
    EXPECT_EQ(orvan::descriptions(centre.level(), "MeslekOda").join('|'), QString("Berberler Odası"));
}

TEST_F(DefinitionScreensTest, WithoutTheRightToWriteTypedTextStays) {
    addDistrict("01", "Çarşı");
    orvan::grantAll(centre.databases.constants().database(), kUser, {true, false});
    open("IsletmeSemt", "frmSemt");
    find<QLineEdit>(*form, kName)->setFocus();
    type("x");
    const QString denied = "Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.";
    dialogs.expectMessage(denied, "Uyarı").expectMessage(denied, "Uyarı");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(text(kName), QString("Çarşıx"));
    pressButton(Qt::Key_S);
    EXPECT_EQ(districts(), QString("Çarşı"));
    dialogs.expectYesNo(unsaved, Answer::No);
    form->closeWindow();
}

TEST_F(DefinitionScreensTest, AProfessionTakesItsVersionAndRates) {
    open("Meslekler", "frmBolumTanimi");
    press(Qt::Key_N, Qt::ControlModifier);
    type("0301");
    press(Qt::Key_Return);
    type("Kuyumculuk");
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    type("4");
    press(Qt::Key_Return);
    find<QLineEdit>(*form, "TA_Tanim_prim_is_kazalari_hastalik_sigortasi")->setFocus();
    type("1,25");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(result(), QString("Eklendi: 0301 - Kuyumculuk (4. program)"));
    const auto row = centre.level().query(
        "SELECT ID, YururlulukTarihi, TA_Tanim_prim_is_kazalari_hastalik_sigortasi AS Oran FROM "
        "Parametrik_giris WHERE Ta_Tanim_Kod='0301'");
    ASSERT_EQ(row.rowCount(), 1u);
    EXPECT_EQ(row.at(0, 0).toInt(), 4);
    EXPECT_EQ(row.at(0, 1).toText(), "15.09.2017");
    EXPECT_DOUBLE_EQ(row.at(0, 2).toDouble(), 1.25);
}

TEST_F(DefinitionScreensTest, ASpoiltSchoolingListIsRenewedByItsButton) {
    centre.level().execute("UPDATE Parametrik_giris SET Ta_tanim_aciklama='Bozuk' WHERE "
                           "Ta_Tanim_Grup='ÖğrenimDr' AND Ta_Tanim_Kod='01'");
    open("OgrenimDurum", "frmOgrenimDurum");
    EXPECT_EQ(text(kName), QString("Bozuk"));
    dialogs.expectYesNo("Öğrenim durumu listesi silinip güncel 22 satır yazılacak.\n\nListeden çıkacak 1 "
                        "tanım:\n01 - Bozuk\n\nDevam edilsin mi?",
                        Answer::Yes);
    pressButton(Qt::Key_N);
    EXPECT_EQ(form->findChild<orvan::ListGrid*>()->totalCount(), 22u);
    EXPECT_EQ(text(kName), QString("İlköğretim Mezunu"));
}

TEST_F(DefinitionScreensTest, EachWindowRemembersTheColumnsOfItsOwnList) {
    const auto columns = [this] {
        QStringList keys;
        for (const auto& column : form->findChild<orvan::ListGrid*>()->sheet().columns)
            keys << column.key;
        return keys.join(',');
    };
    open("Meslekler", "frmBolumTanimi");
    const QString professions = columns();
    form->closeWindow();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    open("AnaMeslek", "frmAnaMeslek");
    form->closeWindow();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    open("Meslekler", "frmBolumTanimi");
    EXPECT_EQ(columns(), professions);
}

TEST_F(DefinitionScreensTest, EachWindowOpensWithItsOwnList) {
    const struct {
        const char *command, *window;
        size_t rows;
    } cases[] = {{"DonemBilgileri", "FrmDonem", 13},      {"KanunMaddeleri", "frmKanunMaddesi", 2},
                 {"PratikEgitim", "frmPratikEgitim", 0},  {"OgrenimDurum", "frmOgrenimDurum", 22},
                 {"MeslekOdalari", "frmMeslek_Odasi", 0}, {"IsletmeSemt", "frmSemt", 0},
                 {"AnaMeslek", "frmAnaMeslek", 0},        {"Meslekler", "frmBolumTanimi", 2}};
    for (const auto& each : cases) {
        open(each.command, each.window);
        EXPECT_EQ(form->findChild<orvan::ListGrid*>()->totalCount(), each.rows) << each.window;
        EXPECT_FALSE(form->isWindowModified()) << each.window;
        form->closeWindow();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace
} // namespace orvan_test
