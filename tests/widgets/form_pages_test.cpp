// Several pages that behave as one form: Enter goes over the pages, wrong fields bring their page, one undo
// for the whole record, the page is remembered.
#include "support/keyboard.h"
#include "widgets/form_pages.h"

#include <QSignalSpy>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QVBoxLayout>

namespace orvan {
namespace {

using namespace orvan_test;

class FormPagesTest : public testing::Test {
  protected:
    void SetUp() override { open(); }
    void open() {
        window = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(window.get());
        pages =
            new FormPages("ogrenciSayfalari",
                          {{"kimlik",
                            "&Kimlik",
                            {{"ad", "&Adı:", FieldKind::Text, 0, 10}, {"tarih", "&Tarih:", FieldKind::Date}}},
                           {"adres", "A&dres", {{"il", "İ&li:", FieldKind::Text, 0, 10}}}},
                          memory);
        layout->addWidget(pages);
        own = new QLineEdit;
        own->setObjectName("kendi");
        pages->addPage("ek", "&Ek", own);
        showActive(*window);
        pages->focusFirst();
    }
    QString focused() const { return QApplication::focusWidget()->objectName(); }
    QTemporaryDir folder;
    UserMemory memory{folder.filePath("ekran.ini")};
    std::unique_ptr<QWidget> window;
    FormPages* pages = nullptr;
    QLineEdit* own = nullptr;
};

TEST_F(FormPagesTest, EnterGoesOverThePages) {
    QSignalSpy done(pages, &FormPages::lastFieldDone);
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), QString("tarih"));
    press(Qt::Key_Return);
    EXPECT_EQ(pages->page(), QString("adres"));
    EXPECT_EQ(focused(), QString("il"));
    EXPECT_EQ(done.size(), 0);
    press(Qt::Key_Return);
    EXPECT_EQ(done.size(), 1);
}

TEST_F(FormPagesTest, KeysTurnPagesAndTheFocusFollows) {
    press(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(focused(), QString("il"));
    press(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(focused(), QString("kendi"));
    press(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(focused(), QString("ad"));
    press(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(pages->page(), QString("ek"));
}

TEST_F(FormPagesTest, AWrongFieldBringsItsPage) {
    pages->showWrong("il", "İl boş olamaz.");
    EXPECT_EQ(pages->page(), QString("adres"));
    EXPECT_EQ(focused(), QString("il"));
    pages->focusField("tarih");
    type("99");
    pages->showPage("ek");
    EXPECT_FALSE(pages->settle());
    EXPECT_EQ(focused(), QString("tarih"));
}

TEST_F(FormPagesTest, CtrlZWithNothingTypedHereGivesTheWholeRecordBack) {
    QSignalSpy dirty(pages, &FormPages::dirtyChanged);
    pages->setValue("ad", "Ali");
    type("ye");
    pages->focusField("il");
    type("Van");
    EXPECT_TRUE(pages->isDirty());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(pages->value("il"), QString());
    EXPECT_EQ(pages->value("ad"), QString("Aliye"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(pages->value("ad"), QString("Ali"));
    EXPECT_FALSE(pages->isDirty());
    EXPECT_EQ(dirty.size(), 2);
}

TEST_F(FormPagesTest, ThePageIsRememberedAlsoOneOfTheScreensOwn) {
    for (const char* page : {"adres", "ek", "kimlik"}) {
        pages->showPage(page);
        window.reset();
        open();
        EXPECT_EQ(pages->page(), QString(page));
    }
}

} // namespace
} // namespace orvan
