// The shared widgets side by side in one window, with contents as in the program: nothing is cut at any
// letter size, all is reached by Tab and has a name. With ORVAN_GALLERY=FOLDER its pictures are saved there.
#include "support/keyboard.h"
#include "support/window_checks.h"
#include "widgets/choice_list.h"
#include "widgets/edit_grid.h"
#include "widgets/form_pages.h"
#include "widgets/qt_dialogs.h"
#include "widgets/splash.h"
#include "widgets/tick_list.h"

#include <memory>
#include <QTableView>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QVBoxLayout>

namespace orvan {
namespace {

using namespace orvan_test;

FormField placed(FormField field, int column, const char* group) {
    field.column = column;
    field.group = group;
    return field;
}

std::vector<FormField> personFields() {
    FormField fee{"ucret", "&Ücret:", FieldKind::Money, 0, 12};
    return {placed({"ad", "&Adı:", FieldKind::Text, 25, 18}, 0, "Kimlik"),
            placed({"tarih", "&Doğum tarihi:", FieldKind::Date}, 0, "Kimlik"),
            placed({"cins", "&Cinsiyeti:", FieldKind::Choice, 0, 10}, 0, "Kimlik"),
            placed(fee, 0, "Ücret"),
            placed({"oran", "&Kesinti oranı:", FieldKind::Decimal, 0, 8}, 0, "Ücret"),
            placed({"gun", "Gü&n:", FieldKind::Number, 0, 5}, 0, "Ücret"),
            placed({"yatili", "&Yatılı öğrenci", FieldKind::Check}, 1, ""),
            placed({"no", "Kayıt No:", FieldKind::Display, 0, 8}, 1, ""),
            placed({"not", "A&çıklama:", FieldKind::Memo, 200, 24}, 1, ""),
            placed({"parola", "&Parola:", FieldKind::Password, 10, 10}, 1, "")};
}

class GalleryTest : public testing::Test {
  public:
    void TearDown() override { QApplication::setFont(usual); }
    void shoot(QWidget& shown, const QString& name) {
        QCoreApplication::processEvents();
        const QString album = qEnvironmentVariable("ORVAN_GALLERY");
        if (!album.isEmpty()) {
            EXPECT_TRUE(shown.grab().save(album + '/' + name + ".png"));
        }
    }
    FormPages* makeForm(QWidget* parent) {
        std::vector<FormField> simple{{"kod", "&Kodu:", FieldKind::Code, 6, 6},
                                      {"bas", "&Başlangıç:", FieldKind::Date},
                                      {"tutar", "&Tutar:", FieldKind::Money, 0, 14},
                                      {"acik", "A&çıklama:", FieldKind::Memo, 100, 30}};
        auto* pages = new FormPages("kart", {{"kisi", "Ki&şi", personFields()}, {"donem", "Döne&m", simple}},
                                    memory, parent);
        pages->choiceList("cins")->setChoices({{"E", "Erkek"}, {"K", "Kız"}});
        pages->setValue("ad", "Işıl Gülümser");
        pages->setValue("tarih", "05.09.1991");
        pages->setValue("cins", "K");
        pages->setValue("ucret", "1250.5000");
        pages->setValue("oran", "0.00759");
        pages->setValue("no", "1234");
        pages->setValue("not", "Ustası ile görüşüldü.\r\nDosyası tamam.");
        return pages;
    }
    EditGrid* makeGrid(QWidget* parent) {
        std::vector<EditColumn> columns{{"no", "Kütük No", CellKind::ReadOnly, 10},
                                        {"ad", "Adı Soyadı", CellKind::ReadOnly, 18}};
        for (int i = 1; i <= 8; ++i) {
            EditColumn mark{QString("n%1").arg(i), QString("%1. Not").arg(i), CellKind::Number, 6};
            mark.limits = {0, 100, 0};
            columns.push_back(mark);
        }
        columns.push_back({"ucret", "Ücret", CellKind::Money, 10});
        columns.push_back({"muaf", "Muaf", CellKind::Check, 5});
        columns.push_back({"tarih", "Tarih", CellKind::Date, 10});
        auto* grid = new EditGrid("notlar", columns, dialogs, memory, parent);
        grid->setPinnedColumns(2);
        std::vector<EditRow> rows;
        for (int i = 1; i <= 30; ++i)
            rows.push_back({QString("0101%1").arg(i, 5, 10, QChar('0')), "Işıl Gülümser", "85", "70", "", "",
                            "", "", "", "", "1250.5000", i % 3 ? "0" : "1", "05.09.2008"});
        grid->setRows(rows);
        return grid;
    }
    TickList* makeTree(QWidget* parent) {
        auto* tree = new TickList("haklar", {{"ad", "Program", ListKind::Text, 34}},
                                  {{"giris", "Giriş"}, {"yazma", "Yazma"}}, dialogs, memory, parent);
        std::vector<TickRow> rows;
        for (const char* menu : {"Öğrenci", "Not ve Sınav", "İşletme"}) {
            rows.push_back({menu, "", {menu}, {}});
            for (int i = 1; i <= 4; ++i)
                rows.push_back({QString("%1-%2").arg(menu).arg(i),
                                menu,
                                {QString("%1 işlemi %2").arg(menu).arg(i)},
                                {i < 4, i == 2}});
        }
        tree->setRows(rows);
        return tree;
    }
    std::unique_ptr<QWidget> makeWindow(QWidget* (GalleryTest::*make)(QWidget*)) {
        auto shown = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(shown.get());
        layout->addWidget((this->*make)(shown.get()));
        return shown;
    }
    QWidget* form(QWidget* parent) { return makeForm(parent); }
    QWidget* grid(QWidget* parent) { return makeGrid(parent); }
    QWidget* tree(QWidget* parent) { return makeTree(parent); }

    QTemporaryDir folder;
    UserMemory memory{folder.filePath("ekran.ini")};
    QtDialogs dialogs;
    QFont usual = QApplication::font();
};

TEST_F(GalleryTest, NothingIsCutAtAnyLetterSizeAndTabReachesAll) {
    const struct {
        const char* name;
        QWidget* (GalleryTest::*make)(QWidget*);
    } widgets[] = {{"form", &GalleryTest::form}, {"tablo", &GalleryTest::grid}, {"agac", &GalleryTest::tree}};
    for (const double letters : {1.0, 1.5}) {
        QFont font = usual;
        font.setPointSizeF(usual.pointSizeF() * letters);
        QApplication::setFont(font);
        for (const auto& widget : widgets) {
            const QString name = QString("%1-%2").arg(widget.name).arg(letters * 100);
            SCOPED_TRACE(name.toStdString());
            auto shown = makeWindow(widget.make);
            shown->resize(shown->sizeHint().boundedTo(QSize(1024, 768)));
            showActive(*shown);
            if (auto* pages = shown->findChild<FormPages*>())
                pages->focusFirst();
            else
                shown->findChild<QWidget*>("ara")->setFocus();
            onEachPage(*shown, [&](const QString& page) {
                const QStringList complaints = cutComplaints(*shown) + nameComplaints(*shown) +
                                               letterComplaints(*shown, {}) + languageComplaints(*shown);
                EXPECT_TRUE(complaints.isEmpty()) << complaints.join("\n").toStdString();
                shoot(*shown, name + (page.isEmpty() ? QString() : QString("-2")));
            });
            const QStringList complaints = tabComplaints(*shown);
            EXPECT_TRUE(complaints.isEmpty()) << complaints.join("\n").toStdString();
        }
    }
}

TEST_F(GalleryTest, RefusedAndScrolledStatesAreSeen) {
    QWidget shown;
    auto* layout = new QVBoxLayout(&shown);
    auto* marks = makeGrid(&shown);
    layout->addWidget(marks);
    shown.resize(640, 480);
    showActive(shown);
    marks->view()->setFocus();
    marks->makeCurrent(1, "n2");
    type("101");
    press(Qt::Key_Return);
    marks->makeCurrent(0, "tarih");
    marks->makeCurrent(1, "n2");
    shoot(shown, "tablo-reddedilen");
    EXPECT_TRUE(cutComplaints(shown).isEmpty()) << cutComplaints(shown).join("\n").toStdString();
    marks->makeCurrent(2, "tarih");
    type("0");
    shoot(shown, "tablo-kaydirilmis");

    QWidget card;
    auto* cardLayout = new QVBoxLayout(&card);
    auto* pages = makeForm(&card);
    cardLayout->addWidget(pages);
    showActive(card);
    pages->focusField("tarih");
    type("31.02.2008");
    press(Qt::Key_Return);
    shoot(card, "form-yanlis");
    EXPECT_TRUE(cutComplaints(card).isEmpty()) << cutComplaints(card).join("\n").toStdString();
    press(Qt::Key_Escape);
    press(Qt::Key_F4);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    shoot(*QApplication::activePopupWidget(), "takvim");
    press(Qt::Key_Escape);

    Splash splash("ORVAN", "Mesleki Eğitim Merkezi Öğrenci Takip Programı", "7.3.1");
    splash.setSchool(
        "Kahramanmaraş Şehit Öğretmen Abdülkadir Çağlayancerit Mesleki Eğitim Merkezi Müdürlüğü");
    splash.showStep("Veritabanları açılıyor…");
    shoot(splash, "acilis");
}

} // namespace
} // namespace orvan
