// The list grid by keys and mouse: sorting, finding, counts, copying, what stays over a refresh and over a
// restart.
#include "support/keyboard.h"
#include "widgets/grid.h"
#include "widgets/qt_dialogs.h"

#include <memory>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QToolButton>
#include <QVBoxLayout>

namespace orvan {
namespace {

using namespace orvan_test;

std::vector<ListRow> students() {
    return {{"010100001", "Çiğdem", 12},
            {"010100002", "Ali", 9},
            {"010100003", "İnci", 100},
            {"020500001", "Işık", 1}};
}

class GridTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(folder.isValid());
        memory = std::make_unique<UserMemory>(folder.filePath("ekran.ini"));
        memory->setUser("ayşe/1");
        open();
    }
    void open() {
        window = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(window.get());
        grid = new ListGrid("ogrenciler",
                            {{"no", "Kütük No", ListKind::Text, 10},
                             {"ad", "Adı", ListKind::Text, 15},
                             {"gun", "Gün", ListKind::Number, 5}},
                            dialogs, *memory, window.get());
        layout->addWidget(grid);
        window->resize(700, 400);
        showActive(*window);
        grid->setRows(students());
        view()->setFocus();
    }
    QTableView* view() const { return grid->view(); }
    QLineEdit* findLine() const { return find<QLineEdit>(*grid, "ara"); }
    QString counts() const { return find<QLabel>(*grid, "sayilar")->text(); }
    QStringList column(int logical) const {
        QStringList texts;
        for (int row = 0; row < view()->model()->rowCount(); ++row)
            texts << view()->model()->index(row, logical).data().toString();
        return texts;
    }
    void clickHeader(int logical) {
        QHeaderView* header = view()->horizontalHeader();
        const int x = header->sectionViewportPosition(logical) + 10;
        QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier,
                          QPoint(x, header->height() / 2));
    }
    QTemporaryDir folder;
    QtDialogs dialogs;
    std::unique_ptr<UserMemory> memory;
    std::unique_ptr<QWidget> window;
    ListGrid* grid = nullptr;
};

TEST_F(GridTest, HeaderClickSortsByValueAndTheSecondReverses) {
    clickHeader(1);
    EXPECT_EQ(column(1), (QStringList{"Ali", "Çiğdem", "Işık", "İnci"}));
    clickHeader(1);
    EXPECT_EQ(column(1), (QStringList{"İnci", "Işık", "Çiğdem", "Ali"}));
    clickHeader(2);
    EXPECT_EQ(column(2), (QStringList{"1", "9", "12", "100"}));
}

TEST_F(GridTest, TypingInTheTableFindsAndArrowsGoBackToIt) {
    type("in");
    EXPECT_TRUE(findLine()->hasFocus());
    EXPECT_EQ(column(1), QStringList{"İnci"});
    EXPECT_TRUE(counts().startsWith("4 kayıttan gösterilen: 1")) << counts().toStdString();
    press(Qt::Key_Down);
    EXPECT_TRUE(view()->hasFocus());
    ASSERT_TRUE(grid->currentRow());
    EXPECT_EQ(*grid->currentRow(), 2u);
    press(Qt::Key_F, Qt::ControlModifier);
    EXPECT_TRUE(findLine()->hasFocus());
    press(Qt::Key_Escape);
    EXPECT_EQ(grid->shownCount(), 4u);
    EXPECT_EQ(*grid->currentRow(), 2u); // still on the one that was found
}

TEST_F(GridTest, EmptyResultSaysWhy) {
    auto* empty = find<QLabel>(*grid, "bosListe");
    EXPECT_FALSE(empty->isVisible());
    type("yok");
    EXPECT_TRUE(empty->isVisible());
    EXPECT_TRUE(empty->text().contains("yok"));
    grid->setFilter({});
    grid->setEmptyText("Bu düzeyde kayıtlı öğrenci yok.");
    grid->setRows({});
    EXPECT_EQ(empty->text(), QString("Bu düzeyde kayıtlı öğrenci yok."));
    EXPECT_FALSE(grid->currentRow());
}

TEST_F(GridTest, EnterAndDoubleClickOpenTheRow) {
    clickHeader(2);
    QSignalSpy opened(grid, &ListGrid::activated);
    view()->setCurrentIndex(view()->model()->index(1, 0));
    press(Qt::Key_Return);
    const QRect cell = view()->visualRect(view()->model()->index(3, 1));
    QTest::mouseClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    QTest::mouseDClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, cell.center());
    ASSERT_EQ(opened.size(), 2);
    EXPECT_EQ(opened[0][0].value<size_t>(), 1u); // Ali, 9 days
    EXPECT_EQ(opened[1][0].value<size_t>(), 2u); // İnci, 100 days
}

TEST_F(GridTest, CopyGivesShownColumnsOfSelectedRowsInTheirOrder) {
    clickHeader(1);
    view()->horizontalHeader()->moveSection(1, 0);
    view()->setColumnHidden(2, true);
    view()->setCurrentIndex(view()->model()->index(0, 0));
    press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_TRUE(counts().endsWith("Seçili: 2")) << counts().toStdString();
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QString("Ali\t010100002\nÇiğdem\t010100001\n"));
}

TEST_F(GridTest, SelectionAndCurrentRowFollowTheRecordOverRefreshAndSorting) {
    grid->makeCurrent("010100003");
    clickHeader(1);
    EXPECT_EQ(*grid->currentRow(), 2u);
    auto rows = students();
    rows.insert(rows.begin(), ListRow{"000000001", "Aaa", 1});
    rows.pop_back();
    grid->setRows(rows);
    EXPECT_EQ(*grid->currentRow(), 3u);
    EXPECT_EQ(grid->selectedRows(), (std::vector<size_t>{3}));
    rows.pop_back(); // the selected one is gone: the first shown row is current
    grid->setRows(rows);
    EXPECT_EQ(*grid->currentRow(), 0u);
}

TEST_F(GridTest, SheetHasWhatIsShown) {
    clickHeader(2);
    view()->horizontalHeader()->moveSection(2, 0);
    view()->setColumnHidden(1, true);
    grid->setFilter("0101");
    grid->setTitle("Öğrenciler");
    const ListSheet sheet = grid->sheet();
    ASSERT_EQ(sheet.columns.size(), 2u);
    EXPECT_EQ(sheet.columns[0].key, QString("gun"));
    ASSERT_EQ(sheet.rows.size(), 3u);
    EXPECT_EQ(sheet.rows[0][0], QVariant(9));
    EXPECT_EQ(sheet.rows[2][1], QVariant("010100003"));
    EXPECT_EQ(sheet.notes, QStringList{"Süzgeç: 0101"});
}

TEST_F(GridTest, LayoutIsRememberedPerUser) {
    view()->horizontalHeader()->moveSection(2, 0);
    view()->setColumnHidden(1, true);
    view()->setColumnWidth(0, view()->fontMetrics().averageCharWidth() * 30);
    clickHeader(0);
    clickHeader(0);
    window.reset();
    open();
    EXPECT_EQ(view()->horizontalHeader()->logicalIndex(0), 2);
    EXPECT_TRUE(view()->isColumnHidden(1));
    EXPECT_EQ(view()->columnWidth(0), view()->fontMetrics().averageCharWidth() * 30);
    EXPECT_EQ(column(0).first(), QString("020500001"));
    memory->setUser("başka biri");
    window.reset(); // writes to the other user's layout, so the first user's stays as it was only in his own
    memory->setUser("üçüncü");
    open();
    EXPECT_EQ(view()->horizontalHeader()->logicalIndex(0), 0);
    EXPECT_FALSE(view()->isColumnHidden(1));
}

TEST_F(GridTest, TheLastShownColumnCannotBeHidden) {
    view()->setColumnHidden(0, true);
    view()->setColumnHidden(1, true);
    auto* menu = find<QToolButton>(*grid, "sutunlar")->menu();
    emit menu->aboutToShow();
    EXPECT_FALSE(menu->findChild<QAction*>("sutun-gun")->isEnabled());
    menu->findChild<QAction*>("sutun-ad")->trigger();
    EXPECT_FALSE(view()->isColumnHidden(1));
}

} // namespace
} // namespace orvan
