// The printed lists of students at the screen: the choice of a class or workplace, the counts, and the pages
// of the register.
#include "records/screens/register_print.h"
#include "screens/program_fixture.h"
#include "widgets/choice_list.h"
#include "widgets/grid.h"

#include <QFile>
#include <QLabel>
#include <QPrinter>

namespace orvan_test {
namespace {

class StudentListsScreenTest : public ProgramTest {
  protected:
    void SetUp() override {
        ProgramTest::SetUp();
        signIn();
        centre.level().execute(
            "UPDATE OgrenciBilgisi SET Ogr_Sinif = '2-Ş', Ogr_calistigi_isyerinin_adi = 'Işık Oto', "
            "Ogr_Cinsiyeti = 'K' WHERE Ogr_Numarasi = '010100001'");
    }
};

TEST_F(StudentListsScreenTest, AGroupIsChosenAndCounted) {
    const struct {
        const char *key, *window, *list, *group, *without;
    } cases[] = {
        {"OgrenciListesiSinifBaz", "ogrenci_listesi", "ogrenciler", "2-Ş", "(sınıfı olmayanlar)"},
        {"OgrenciListesiIsletmeBaz", "ogrenci_listesi_isletmebaz", "isletmeOgrencileri", "Işık Oto",
         "(işletmesi olmayanlar)"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.key);
        choose(c.key);
        auto* list = screen(c.window);
        ASSERT_NE(list, nullptr);
        auto* grid = find<orvan::ListGrid>(*list, c.list);
        auto* groups = find<orvan::ChoiceList>(*list, "grup");
        EXPECT_EQ(grid->totalCount(), 2u);
        const auto take = [&](const char* text) {
            groups->setFocus();
            press(Qt::Key_A, Qt::ControlModifier);
            type(text);
            press(Qt::Key_Return);
            return grid->totalCount() == 1 ? grid->sheet().rows[0][0].toString() : QString();
        };
        EXPECT_EQ(take(c.group), "010100001");
        EXPECT_EQ(find<QLabel>(*list, "mevcut")->text(), "1 öğrenci: 1 kız, 0 erkek");
        EXPECT_TRUE(grid->sheet().notes.last().contains(c.group));
        EXPECT_EQ(take(c.without), "020500001");
        EXPECT_EQ(find<QLabel>(*list, "mevcut")->text(), "1 öğrenci: 0 kız, 0 erkek");
    }
}

TEST_F(StudentListsScreenTest, RegisterPagesHoldEveryStudentOnce) {
    orvan::RegisterSheet sheet{"Öğrenci Kütük Defteri", {"Örnek Merkez"}, {}};
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(centre.path("\\kutuk.pdf"));
    EXPECT_EQ(orvan::printRegister(sheet, printer),
              1); // an empty register is a page that says so by its heading
    orvan::RegisterEntry entry;
    entry.number = "010100001";
    entry.columns = {{{"Adı", QString("uzun ").repeated(400)}}, {{"Meslek", "Kaynakçılık"}}, {}};
    sheet.entries.assign(3, entry); // each taller than half a page
    EXPECT_EQ(orvan::printRegister(sheet, printer), 3);
    entry.columns[0][0].text = "Işıl";
    sheet.entries.assign(100, entry);
    const int pages = orvan::printRegister(sheet, printer);
    EXPECT_GT(pages, 2);
    EXPECT_LT(pages, 10);
    EXPECT_GT(QFile(centre.path("\\kutuk.pdf")).size(), 1000);
    EXPECT_THROW(orvan::writeRegisterPdf(sheet, centre.path("\\yok\\kutuk.pdf")), jet::Error);
}

} // namespace
} // namespace orvan_test
