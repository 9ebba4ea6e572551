// The road of a new student by keys only: sign in, quick form, list; then another program reads the row from
// the file.
#include "screens/program_fixture.h"
#include "widgets/grid.h"

#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QTableView>

namespace orvan_test {
namespace {

class QuickRegistrationScreenTest : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        signIn();
        press(Qt::Key_F6);
        form = screen("hizli_ogrenci_kayit");
        ASSERT_NE(form, nullptr);
    }
    QString text(const char* field) const { return find<QLineEdit>(*form, field)->text(); }
    QString note(const char* field) const {
        return form->findChild<QLabel*>(QString("%1-uyari").arg(field))->text();
    }
    int studentCount() {
        return static_cast<int>(centre.level().query("SELECT COUNT(*) FROM OgrenciBilgisi").at(0, 0).toInt());
    }
    orvan::Screen* form = nullptr;
};

TEST_F(QuickRegistrationScreenTest, ANewStudentIsTypedSavedFoundAndReadByAnotherProgram) {
    EXPECT_EQ(focused(), QString("meslek"));
    type("i"); // finds İnşaat
    press(Qt::Key_Return);
    EXPECT_EQ(text("kutukNo"), QString("010100002"));
    EXPECT_EQ(text("kayitNo"), QString("3"));
    EXPECT_FALSE(form->isWindowModified());
    press(Qt::Key_Return); // the proposed number stays
    EXPECT_EQ(focused(), QString("adi"));
    type("Şule İnci");
    EXPECT_TRUE(form->isWindowModified());
    press(Qt::Key_Return);
    type("Yığıt'oğlu");
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), QString("kaydet"));
    press(Qt::Key_Return);

    EXPECT_TRUE(find<QLabel>(*form, "sonuc")->text().contains("010100002  Şule İnci Yığıt'oğlu"));
    EXPECT_FALSE(form->isWindowModified());
    EXPECT_EQ(focused(), QString("adi")); // ready for the next one of the same profession
    EXPECT_EQ(text("adi"), QString());
    EXPECT_EQ(text("kutukNo"), QString("010100003"));
    EXPECT_EQ(text("kayitNo"), QString("4"));

    press(Qt::Key_F7);
    auto* list = screen("ogrenci_listesi");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(focused(), QString("ara"));
    type("ığıt");
    auto* grid = find<orvan::ListGrid>(*list, "ogrenciler");
    ASSERT_EQ(grid->shownCount(), 1u);
    EXPECT_EQ(grid->totalCount(), 3u);
    const orvan::ListSheet sheet = grid->sheet();
    EXPECT_EQ(sheet.rows[0][0], QVariant("010100002"));
    EXPECT_EQ(sheet.rows[0][4], QVariant("İnşaat Teknolojisi"));

#ifndef Q_OS_WIN // where mdbtools are
    const QString file = centre.databases.levelFile();
    window.reset();
    centre.databases.close();
    QProcess reader;
    reader.start("mdb-export", {"-H", file, "OgrenciBilgisi"});
    ASSERT_TRUE(reader.waitForFinished()) << "mdb-export did not run";
    const QString rows = QString::fromUtf8(reader.readAllStandardOutput());
    const auto saved = rows.split('\n').filter("010100002");
    ASSERT_EQ(saved.size(), 1) << rows.toStdString();
    for (const char* cell : {"\"Şule İnci\"", "\"Yığıt'oğlu\"", "\"0101\"", "\"15.09.2008\""})
        EXPECT_TRUE(saved[0].contains(QString::fromUtf8(cell))) << cell << " in " << saved[0].toStdString();
#endif
}

TEST_F(QuickRegistrationScreenTest, MissingNamesAreRefusedAndShownOnTheField) {
    const QString refusal =
        "Öğrenci Numarası, Adı ve Soyadı boş girilemez. Lütfen ilgili yerleri doldurunuz.";
    type("kuaf");
    press(Qt::Key_Return);
    dialogs.expectMessage(refusal, "Uyarı");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(focused(), QString("adi"));
    EXPECT_FALSE(note("adi").isEmpty());
    type("Can");
    dialogs.expectMessage(refusal, "Uyarı");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(focused(), QString("soyadi"));
    EXPECT_EQ(text("adi"), QString("Can"));
    EXPECT_EQ(studentCount(), 2);
}

TEST_F(QuickRegistrationScreenTest, WithoutAProfessionNothingIsSaved) {
    dialogs.expectMessage("Yeni kayıt yapmak için önce meslek seçimi yapmalısınız.", "Uyarı");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(focused(), QString("meslek"));
    EXPECT_FALSE(note("meslek").isEmpty());
}

TEST_F(QuickRegistrationScreenTest, NumbersTakenMeanwhileAreReplacedWhenAccepted) {
    type("kuaf");
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    type("Can");
    press(Qt::Key_Return);
    type("Ün");
    centre.addStudent("020500002", 3, "0205", "Başka", "Biri"); // by another station
    dialogs.expectYesNo(
        "Bu kayıt ve/veya kütük numarası kayıt işleminden önce\nbaşka bir kullanıcı tarafından "
        "kullanılmış!\nBunların yerine;\nYeni Kayıt No : 4\nYeni Kütük No : 020500003\nyeni numaraları "
        "kullanmak ister misiniz?",
        orvan::Answer::No);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(text("soyadi"), QString("Ün"));
    EXPECT_EQ(studentCount(), 3);
    dialogs.expectYesNo(
        "Bu kayıt ve/veya kütük numarası kayıt işleminden önce\nbaşka bir kullanıcı tarafından "
        "kullanılmış!\nBunların yerine;\nYeni Kayıt No : 4\nYeni Kütük No : 020500003\nyeni numaraları "
        "kullanmak ister misiniz?",
        orvan::Answer::Yes);
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(studentCount(), 4);
    EXPECT_TRUE(find<QLabel>(*form, "sonuc")->text().contains("020500003"));
}

TEST_F(QuickRegistrationScreenTest, ADoubleClickSavesOnce) {
    type("kuaf");
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    type("Can");
    press(Qt::Key_Return);
    type("Ün");
    auto* save = find<QPushButton>(*form, "kaydet");
    QTest::mouseClick(save, Qt::LeftButton);
    QTest::mouseClick(save, Qt::LeftButton); // no message about empty names either: none is scripted
    EXPECT_EQ(studentCount(), 3);
}

TEST_F(QuickRegistrationScreenTest, AnOpenListShowsTheNewStudentAtOnce) {
    press(Qt::Key_F7);
    press(Qt::Key_F6);
    type("kuaf");
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    type("Can");
    press(Qt::Key_Return);
    type("Ün");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(find<orvan::ListGrid>(*screen("ogrenci_listesi"), "ogrenciler")->totalCount(), 3u);
}

TEST_F(QuickRegistrationScreenTest, WithoutTheWriteRightNothingIsSavedAndNothingIsLost) {
    orvan::grantAll(centre.databases.constants().database(), kUser, {true, false});
    type("kuaf");
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    type("Can");
    press(Qt::Key_Return);
    type("Ün");
    dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.", "Uyarı");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(studentCount(), 2);
    EXPECT_EQ(text("adi"), QString("Can"));
}

TEST_F(QuickRegistrationScreenTest, ListRefreshesWithF5AndKeepsFilterAndCurrentRow) {
    press(Qt::Key_F7);
    auto* grid = find<orvan::ListGrid>(*screen("ogrenci_listesi"), "ogrenciler");
    type("0101");
    press(Qt::Key_Down);
    centre.addStudent("010100009", 9, "0101", "Zeki", "Ak");
    press(Qt::Key_F5);
    EXPECT_EQ(grid->shownCount(), 2u);
    EXPECT_EQ(grid->filter(), QString("0101"));
    const auto selected = grid->selectedRows();
    ASSERT_EQ(selected.size(), 1u);
    const auto current = grid->view()->currentIndex();
    EXPECT_EQ(current.sibling(current.row(), 0).data().toString(), QString("010100001"));
}

} // namespace
} // namespace orvan_test
