// Ticking by keys: lists and trees with several tick columns, what is changed, what is printed.
#include "support/keyboard.h"
#include "widgets/qt_dialogs.h"
#include "widgets/tick_list.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace orvan {
namespace {

using namespace orvan_test;

class TickListTest : public testing::Test {
  protected:
    void show(std::vector<TickColumn> ticks, std::vector<TickRow> rows) {
        auto* layout = new QVBoxLayout(&window);
        list = new TickList("haklar", {{"ad", "Adı", ListKind::Text, 30}, {"no", "No", ListKind::Number, 6}},
                            ticks, dialogs, memory, &window);
        layout->addWidget(list);
        window.resize(600, 400);
        showActive(window);
        list->setRows(std::move(rows));
        list->view()->setFocus();
    }
    void showTree() {
        show({{"giris", "Giriş"}, {"yazma", "Yazma"}}, {{"m1", "", {"Öğrenci", {}}, {}},
                                                        {"hizli", "m1", {"Hızlı Kayıt", 1}, {true, false}},
                                                        {"liste", "m1", {"Öğrenci Listesi", 2}, {true, true}},
                                                        {"m2", "", {"Not", {}}, {}},
                                                        {"giris", "m2", {"Not Girişi", 3}, {false, false}}});
    }
    void showFlat() {
        show({{"secili", "Seçili"}}, {{"a", "", {"Işıl", 30}, {false}},
                                      {"b", "", {"İnci", 4}, {true}},
                                      {"c", "", {"Ali", 200}, {false}}});
    }
    QString counts() const { return find<QLabel>(*list, "sayilar")->text(); }
    int state(const char* row, int column) {
        list->makeCurrent(row);
        return list->view()->currentIndex().siblingAtColumn(column).data(Qt::CheckStateRole).toInt();
    }
    QTemporaryDir folder;
    UserMemory memory{folder.filePath("ekran.ini")};
    QtDialogs dialogs;
    QWidget window;
    TickList* list = nullptr;
};

TEST_F(TickListTest, SpaceTicksTheSelectedRows) {
    showFlat();
    QSignalSpy ticked(list, &TickList::tickChanged);
    QSignalSpy dirty(list, &TickList::dirtyChanged);
    press(Qt::Key_Down, Qt::ShiftModifier); // a and b; the current one is ticked: both lose it
    press(Qt::Key_Space);
    EXPECT_EQ(list->tickedRows(), QStringList());
    press(Qt::Key_Space);
    EXPECT_EQ(list->tickedRows(), (QStringList{"a", "b"}));
    EXPECT_EQ(list->changes(), (std::vector<TickChange>{{"a", "secili", true}}));
    EXPECT_EQ(ticked.size(), 2);
    EXPECT_TRUE(counts().contains("İşaretli: 2")) << counts().toStdString();
    list->acceptAsLoaded();
    EXPECT_FALSE(list->isDirty());
    press(Qt::Key_Space);
    list->revert();
    EXPECT_EQ(list->tickedRows(), (QStringList{"a", "b"}));
    EXPECT_EQ(dirty.size(), 4);
}

TEST_F(TickListTest, AClickAnywhereInTheTickCellTicks) {
    showFlat();
    const QRect cell = list->view()->visualRect(list->view()->model()->index(2, 2));
    QTest::mouseClick(list->view()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      cell.topLeft() + QPoint(3, 3));
    EXPECT_EQ(list->tickedRows(), (QStringList{"b", "c"}));
}

TEST_F(TickListTest, TypingFindsByTurkishRulesAndAllMeansTheShownOnes) {
    showFlat();
    type("i");
    EXPECT_TRUE(find<QLineEdit>(*list, "ara")->hasFocus());
    EXPECT_TRUE(counts().startsWith("3 satırdan gösterilen: 2")) << counts().toStdString(); // İnci, Ali
    QTest::mouseClick(find<QPushButton>(*list, "tumunuIsaretle"), Qt::LeftButton);
    EXPECT_EQ(list->tickedRows(), (QStringList{"b", "c"}));
    list->setFilter("zzz");
    EXPECT_TRUE(find<QLabel>(*list, "bosListe")->isVisible());
    list->setFilter({});
    QTest::mouseClick(find<QPushButton>(*list, "tumunuKaldir"), Qt::LeftButton);
    EXPECT_EQ(list->tickedRows(), QStringList());
}

TEST_F(TickListTest, ParentsShowAndTickWhatIsBelowThem) {
    showTree();
    EXPECT_EQ(state("m1", 2), Qt::Checked);
    EXPECT_EQ(state("m1", 3), Qt::PartiallyChecked);
    EXPECT_EQ(state("m2", 2), Qt::Unchecked);
    list->makeCurrent("m1");
    list->view()->setCurrentIndex(list->view()->currentIndex().siblingAtColumn(3));
    press(Qt::Key_Space);
    EXPECT_EQ(list->tickedRows("yazma"), (QStringList{"hizli", "liste"}));
    EXPECT_EQ(list->tickedRows("giris"), (QStringList{"hizli", "liste"})); // the other column is as it was
    press(Qt::Key_Space);
    EXPECT_EQ(state("m1", 3), Qt::Unchecked);
    EXPECT_EQ(list->changes(), (std::vector<TickChange>{{"liste", "yazma", false}}));
    EXPECT_EQ(list->rowCount(), 3u);
}

TEST_F(TickListTest, TickingAParentLeavesWhatTheFilterHides) {
    showTree();
    list->setFilter("liste");
    list->makeCurrent("m1");
    list->view()->setFocus();
    press(Qt::Key_Space); // the first tick column: partly on, so on for all shown below
    list->setTicked("m1", "giris", false);
    list->setFilter({});
    EXPECT_EQ(list->tickedRows("giris"), QStringList{"hizli"});
}

TEST_F(TickListTest, AMenuTicksAllOfOneColumnOrOfEach) {
    showTree();
    const auto choose = [&](const char* button, const QString& text) {
        for (QAction* action : find<QToolButton>(*list, button)->menu()->actions())
            if (action->text().remove('&') == text) action->trigger();
    };
    choose("tumunuIsaretle", "Yazma");
    EXPECT_EQ(list->tickedRows("yazma").size(), 3);
    EXPECT_EQ(list->tickedRows("giris").size(), 2);
    choose("tumunuKaldir", "Hepsi");
    EXPECT_TRUE(list->tickedRows("yazma").isEmpty() && list->tickedRows("giris").isEmpty());
}

TEST_F(TickListTest, WhatIsTickedGoesToPaperWithItsParents) {
    showTree();
    list->setTicked("hizli", "giris", false);
    const ListSheet sheet = list->sheet();
    ASSERT_EQ(sheet.rows.size(), 2u); // "Not" has nothing ticked below it, "Hızlı Kayıt" nothing at all
    EXPECT_EQ(sheet.rows[0][0], QVariant("Öğrenci"));
    EXPECT_EQ(sheet.rows[0][2], QVariant());
    EXPECT_EQ(sheet.rows[1][0], QVariant("    Öğrenci Listesi"));
    EXPECT_EQ(sheet.rows[1][3], QVariant("X"));
    EXPECT_EQ(sheet.columns[2].title, QString("Giriş"));
}

TEST_F(TickListTest, ReadOnlyTakesNoTicks) {
    showFlat();
    list->setReadOnly(true);
    press(Qt::Key_Space);
    EXPECT_FALSE(list->isDirty());
    EXPECT_FALSE(find<QPushButton>(*list, "tumunuIsaretle")->isEnabled());
}

} // namespace
} // namespace orvan
