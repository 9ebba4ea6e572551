// The entry grid by keys: entering, refusing, undoing, blocks to and from spreadsheets, what counts as
// changed.
#include "support/keyboard.h"
#include "widgets/edit_grid.h"
#include "widgets/qt_dialogs.h"
#include "widgets/text_block.h"

#include <QAction>
#include <QClipboard>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalSpy>
#include <QTableView>
#include <QTemporaryDir>
#include <QVBoxLayout>

namespace orvan {
namespace {

using namespace orvan_test;

class EditGridTest : public testing::Test {
  protected:
    void SetUp() override {
        open();
        grid->setRows({{"0101", "Işıl", "85", "100.5000", "", "a", "0"},
                       {"0102", "Ali", "", "", "01.02.2008", "", "1"},
                       {"0103", "İnci", "40", "", "", "b", ""}});
        grid->makeCurrent(0, "not");
        grid->view()->setFocus();
    }
    void open() {
        window = std::make_unique<QWidget>();
        auto* layout = new QVBoxLayout(window.get());
        EditColumn mark{"not", "1. Sınav", CellKind::Number, 6};
        mark.limits = {0, 100, 0};
        EditColumn section{"sube", "Şube", CellKind::Choice, 8};
        section.choices = {{"a", "Aşçılık"}, {"b", "Kuaförlük"}};
        grid = new EditGrid("notlar",
                            {{"no", "Kütük No", CellKind::ReadOnly, 8},
                             {"ad", "Adı", CellKind::Text, 12, 10},
                             mark,
                             {"ucret", "Ücret", CellKind::Money, 10},
                             {"tarih", "Tarih", CellKind::Date, 10},
                             section,
                             {"muaf", "Muaf", CellKind::Check, 6}},
                            dialogs, memory, window.get());
        layout->addWidget(grid);
        layout->addWidget(after = new QLineEdit(window.get()));
        window->resize(800, 500);
        showActive(*window);
    }
    QString shown(int row, int column) const {
        return grid->view()->model()->index(row, column).data().toString();
    }
    QString at() const {
        const auto cell = grid->currentCell();
        return cell ? QString("%1/%2").arg(cell->row).arg(cell->column) : QString();
    }
    QString label(const char* name) const { return find<QLabel>(*grid, name)->text(); }
    QStringList refusedList() const {
        QStringList lines;
        const auto* list = find<QListWidget>(*grid, "alinmayanlar");
        for (int i = 0; list->isVisible() && i < list->count(); ++i)
            lines << list->item(i)->text();
        return lines;
    }
    void paste(const QString& text) {
        QApplication::clipboard()->setText(text);
        press(Qt::Key_V, Qt::ControlModifier);
    }
    QTemporaryDir folder;
    UserMemory memory{folder.filePath("ekran.ini")};
    QtDialogs dialogs;
    std::unique_ptr<QWidget> window;
    EditGrid* grid = nullptr;
    QLineEdit* after = nullptr;
};

TEST_F(EditGridTest, TypingReplacesAndEnterGoesOnDownThenToTheNextColumn) {
    QSignalSpy edited(grid, &EditGrid::edited);
    QSignalSpy done(grid, &EditGrid::lastCellDone);
    type("90");
    press(Qt::Key_Return);
    type("70");
    press(Qt::Key_Enter);
    EXPECT_EQ(at(), QString("2/2"));
    press(Qt::Key_Return); // unchanged: goes on as well
    EXPECT_EQ(at(), QString("0/3"));
    EXPECT_EQ(grid->value(0, "not"), QString("90"));
    EXPECT_EQ(grid->value(1, "not"), QString("70"));
    EXPECT_EQ(edited.size(), 2);
    EXPECT_EQ(grid->changedRows(), (std::vector<size_t>{0, 1}));
    grid->makeCurrent(2, "muaf");
    press(Qt::Key_Return);
    EXPECT_EQ(done.size(), 1);
}

TEST_F(EditGridTest, EnterGoesRightWhenSoChosenAndSkipsWhatTakesNoInput) {
    grid->setEntryDirection(EntryDirection::Right);
    grid->setCellLocked([](CellPlace place) { return place.row == 1 && place.column < 4; });
    grid->makeCurrent(0, "muaf");
    press(Qt::Key_Return);
    EXPECT_EQ(at(), QString("1/4"));
    press(Qt::Key_Left);
    type("5");
    EXPECT_EQ(grid->value(1, "ucret"), QString());
    EXPECT_TRUE(label("neden").contains("değiştirilemez"));
}

TEST_F(EditGridTest, ValuesOfEachKindAsTyped) {
    const struct {
        const char *column, *typed, *value;
        int place;
        const char* shows;
    } cases[] = {
        {"ad", "Şule", "Şule", 1, "Şule"},
        {"not", "007", "7", 2, "7"},
        {"ucret", "1250,5", "1250.5000", 3, "1.250,50"},
        {"tarih", "05092008", "05.09.2008", 4, "05.09.2008"},
        {"sube", "kua", "b", 5, "Kuaförlük"},
    };
    for (const auto& c : cases) {
        grid->makeCurrent(0, c.column);
        type(c.typed);
        press(Qt::Key_Return);
        EXPECT_EQ(grid->value(0, c.column), QString(c.value));
        EXPECT_EQ(shown(0, c.place), QString(c.shows));
        EXPECT_NE(at(), QString("0/%1").arg(c.place)) << c.column;
    }
}

TEST_F(EditGridTest, KeysInsideACell) {
    press(Qt::Key_F2);
    press(Qt::Key_Left); // F2: arrows stay inside
    type("1");
    press(Qt::Key_Escape);
    EXPECT_EQ(grid->value(0, "not"), QString("85"));
    EXPECT_FALSE(grid->isDirty());
    type("9");
    press(Qt::Key_Right); // typed over: arrows leave
    EXPECT_EQ(at(), QString("0/3"));
    EXPECT_EQ(grid->value(0, "not"), QString("9"));
    type("1");
    press(Qt::Key_Down);
    EXPECT_EQ(at(), QString("1/3"));
    type("2");
    press(Qt::Key_Tab); // leaves the grid, the text is taken
    EXPECT_EQ(grid->value(1, "ucret"), QString("2.0000"));
    EXPECT_FALSE(grid->isAncestorOf(QApplication::focusWidget()) &&
                 QApplication::focusWidget() == grid->view());
    grid->view()->setFocus();
    press(Qt::Key_Home);
    EXPECT_EQ(at(), QString("1/0"));
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(at(), QString("2/6"));
}

TEST_F(EditGridTest, ARefusedTextStaysMarkedAndTheValueIsTheOldOne) {
    type("101");
    press(Qt::Key_Return);
    EXPECT_EQ(at(), QString("0/2")); // not left
    EXPECT_EQ(shown(0, 2), QString("101"));
    EXPECT_EQ(grid->value(0, "not"), QString("85"));
    EXPECT_TRUE(label("neden").contains("0 ile 100"));
    EXPECT_EQ(refusedList().size(), 1);
    EXPECT_TRUE(refusedList()[0].contains("1. satır (0101), 1. Sınav: \"101\""))
        << refusedList()[0].toStdString();
    EXPECT_TRUE(grid->view()->model()->index(0, 2).data(Qt::ToolTipRole).toString().contains("0 ile 100"));
    EXPECT_TRUE(grid->isDirty());
    EXPECT_TRUE(grid->changedCells().empty());
    grid->makeCurrent(2, "ad");
    EXPECT_FALSE(grid->settle());
    EXPECT_EQ(at(), QString("0/2"));
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(grid->view(), &escape);
    EXPECT_EQ(shown(0, 2), QString("85"));
    EXPECT_FALSE(grid->isDirty());
    EXPECT_TRUE(refusedList().isEmpty());
}

TEST_F(EditGridTest, TheScreensOwnCheckSeesTheValueAndOtherCells) {
    grid->setValidator("ucret", [&](CellPlace place, const QString& value) {
        if (grid->value(place.row, "muaf") == "1")
            return CellCheck::refuse("Muaf öğrenciye ücret yazılamaz.");
        return CellCheck::take(value);
    });
    const struct {
        size_t row;
        const char* value;
    } cases[] = {{0, "50.0000"}, {1, ""}};
    for (const auto& c : cases) {
        grid->makeCurrent(c.row, "ucret");
        type("50");
        EXPECT_EQ(grid->settle(), *c.value != 0);
        EXPECT_EQ(grid->value(c.row, "ucret"), QString(c.value));
    }
    EXPECT_EQ(grid->refusedCells().front().reason, QString("Muaf öğrenciye ücret yazılamaz."));
}

TEST_F(EditGridTest, OldOddValuesAreKeptUntilTheyAreEdited) {
    grid->setRows({{"0101", "on karakterden uzun bir ad", "150", "12 TL", "00.00.0000", "z", "Belirsiz"}});
    for (const char* column : {"ad", "not", "ucret", "tarih", "sube"}) {
        grid->makeCurrent(0, column);
        press(Qt::Key_F2);
        press(Qt::Key_Return);
    }
    EXPECT_FALSE(grid->isDirty());
    EXPECT_TRUE(grid->settle());
}

TEST_F(EditGridTest, DeleteClearsTheSelectionAndUndoGivesItBackInOneStep) {
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_TRUE(label("sayilar").contains("Seçili hücre: 6")) << label("sayilar").toStdString();
    press(Qt::Key_Delete);
    EXPECT_EQ(grid->value(0, "not") + grid->value(2, "not") + grid->value(0, "ucret"), QString());
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(grid->isDirty());
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(grid->changedCells().size(), 3u);
    grid->revert();
    EXPECT_EQ(grid->value(2, "not"), QString("40"));
    press(Qt::Key_Z, Qt::ControlModifier); // reverting is undone as well
    EXPECT_EQ(grid->value(2, "not"), QString());
}

TEST_F(EditGridTest, SpaceTicksTheSelectionTheSameWay) {
    grid->makeCurrent(0, "muaf");
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Up); // current again the first; selection is one cell
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Space); // the current one is ticked: both become unticked
    EXPECT_EQ(grid->value(0, "muaf") + grid->value(1, "muaf"), QString("00"));
    press(Qt::Key_Space);
    EXPECT_EQ(grid->value(0, "muaf") + grid->value(1, "muaf"), QString("11"));
    type("h");
    EXPECT_EQ(grid->value(1, "muaf"), QString("0"));
}

TEST_F(EditGridTest, ABlockGoesOutAndComesBackThroughTheClipboard) {
    grid->makeCurrent(0, "not");
    press(Qt::Key_Down, Qt::ShiftModifier);
    for (int i = 0; i < 4; ++i)
        press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_C, Qt::ControlModifier);
    const QString block = QApplication::clipboard()->text();
    EXPECT_EQ(block, QString("85\t100,50\t\tAşçılık\tHayır\n\t\t01.02.2008\t\tEvet\n"));
    grid->makeCurrent(1, "not");
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(grid->row(1), (EditRow{"0102", "Ali", "85", "100.5000", "", "a", "0"}));
    EXPECT_EQ(grid->row(2), (EditRow{"0103", "İnci", "", "", "01.02.2008", "", "1"}));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(grid->isDirty());
}

TEST_F(EditGridTest, APasteIsCheckedCellByCellAndSaysWhatWasNotTaken) {
    grid->makeCurrent(1, "no");
    paste("0102\tVeli\t105\t12,5\r\n0999\tCan\t55\tyok\r\n1\t2\t3\t4\r\n");
    EXPECT_EQ(grid->value(1, "ad"), QString("Veli"));
    EXPECT_EQ(grid->value(1, "not"), QString());
    EXPECT_EQ(shown(1, 2), QString("105"));
    EXPECT_EQ(grid->value(1, "ucret"), QString("12.5000"));
    EXPECT_EQ(grid->value(2, "not"), QString("55"));
    const QStringList lines = refusedList();
    ASSERT_EQ(lines.size(), 4) << lines.join("\n").toStdString();
    EXPECT_TRUE(lines[0].contains("\"105\""));
    EXPECT_TRUE(lines[1].contains("\"yok\""));
    EXPECT_TRUE(lines[2].contains("0999") && lines[2].contains("değiştirilemez"));
    EXPECT_TRUE(lines[3].contains("dışında kalan 4 hücre"));
    auto* list = find<QListWidget>(*grid, "alinmayanlar");
    list->setFocus();
    list->setCurrentRow(1);
    press(Qt::Key_Return);
    EXPECT_EQ(at(), QString("2/3"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(grid->isDirty());
    EXPECT_TRUE(refusedList().isEmpty());
}

TEST_F(EditGridTest, OneValueFillsTheSelection) {
    press(Qt::Key_Down, Qt::ShiftModifier);
    press(Qt::Key_Down, Qt::ShiftModifier);
    paste("60");
    EXPECT_EQ(grid->value(0, "not") + grid->value(1, "not") + grid->value(2, "not"), QString("606060"));
}

TEST_F(EditGridTest, ChangesOfTheProgramAreCheckedAndUndoneTogether) {
    grid->applyChanges({{0, "ucret", "1250.5000"}, {1, "not", "500"}, {2, "sube", "a"}});
    EXPECT_EQ(grid->value(0, "ucret"), QString("1250.5000"));
    EXPECT_EQ(grid->value(2, "sube"), QString("a"));
    EXPECT_EQ(grid->refusedCells().size(), 1u);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_FALSE(grid->isDirty());
}

TEST_F(EditGridTest, SortingMovesRowsNotPlaces) {
    type("7");
    press(Qt::Key_Return);
    grid->view()->horizontalHeader()->setSortIndicator(2, Qt::DescendingOrder); // 40, 7, empty
    EXPECT_EQ(shown(0, 1), QString("İnci"));
    EXPECT_EQ(grid->value(0, "not"), QString("7"));
    EXPECT_EQ(grid->changedRows(), (std::vector<size_t>{0}));
    grid->makeCurrent(2, "not");
    type("41");
    press(Qt::Key_Return);
    EXPECT_EQ(grid->value(2, "not"), QString("41"));
    EXPECT_EQ(grid->sheet().rows[0][1], QVariant("İnci"));
    EXPECT_EQ(grid->sheet().rows[0][2], QVariant(41));
}

TEST_F(EditGridTest, SavedCellsAreNoLongerChanged) {
    QSignalSpy dirty(grid, &EditGrid::dirtyChanged);
    type("7");
    EXPECT_TRUE(grid->settle()); // Ctrl+S with an open cell
    EXPECT_EQ(grid->changedCells(), (std::vector<CellPlace>{{0, 2}}));
    grid->acceptAsLoaded();
    EXPECT_FALSE(grid->isDirty());
    grid->setValue(0, "ucret", "5.0000");
    EXPECT_FALSE(grid->isDirty());
    EXPECT_EQ(dirty.size(), 2);
    grid->showWrong(1, "not", "Sınav notu eksik.");
    EXPECT_EQ(at(), QString("1/2"));
    EXPECT_FALSE(grid->settle());
    type("5");
    press(Qt::Key_Return);
    EXPECT_TRUE(grid->settle());
}

TEST_F(EditGridTest, WithoutTheWriteRightNothingChanges) {
    grid->setReadOnly(true);
    type("5");
    press(Qt::Key_Delete);
    paste("1\t2\n3\t4");
    grid->makeCurrent(0, "muaf");
    press(Qt::Key_Space);
    EXPECT_FALSE(grid->isDirty());
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QString("Hayır\n"));
}

TEST_F(EditGridTest, FindGoesToRowsRoundAndRound) {
    press(Qt::Key_F, Qt::ControlModifier);
    type("i"); // Ali
    EXPECT_EQ(at(), QString("1/2"));
    press(Qt::Key_Return);
    EXPECT_EQ(at(), QString("2/2"));
    type("x");
    EXPECT_TRUE(label("neden").contains("bulunamadı"));
    press(Qt::Key_Escape);
    EXPECT_TRUE(grid->view()->hasFocus());
}

TEST_F(EditGridTest, PinnedColumnsStayAndCellsAreNotLeftUnderThem) {
    window->resize(420, 400);
    grid->setPinnedColumns(2);
    grid->makeCurrent(0, "muaf");
    QCoreApplication::processEvents();
    auto* pinned = find<QTableView>(*grid, "sabitSutunlar");
    ASSERT_TRUE(pinned->isVisible());
    EXPECT_FALSE(pinned->isColumnHidden(1));
    EXPECT_TRUE(pinned->isColumnHidden(2));
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    const QTableView* view = grid->view();
    EXPECT_GE(view->visualRect(view->currentIndex()).left(), pinned->isVisible() ? pinned->width() : 0);
    press(Qt::Key_Home);
    press(Qt::Key_Right);
    type("Zeki"); // an editor in a pinned column is not covered
    QCoreApplication::processEvents();
    EXPECT_FALSE(pinned->isVisible());
    press(Qt::Key_Return);
    EXPECT_EQ(grid->value(0, "ad"), QString("Zeki"));
}

TEST_F(EditGridTest, DirectionAndColumnsAreRememberedPerUser) {
    find<QAction>(*window, "kopyala"); // there is a context menu entry
    for (QAction* action : grid->findChildren<QAction*>())
        if (action->text().contains("Sağdaki")) action->trigger();
    grid->view()->setColumnWidth(1, grid->view()->fontMetrics().averageCharWidth() * 30);
    window.reset();
    open();
    grid->setEntryDirection(EntryDirection::Down); // the user's own choice holds
    grid->setRows({{"1", "", "", "", "", "", ""}, {"2", "", "", "", "", "", ""}});
    grid->makeCurrent(0, "ad");
    grid->view()->setFocus();
    press(Qt::Key_Return);
    EXPECT_EQ(at(), QString("0/2"));
    EXPECT_EQ(grid->view()->columnWidth(1), grid->view()->fontMetrics().averageCharWidth() * 30);
}

TEST_F(EditGridTest, FiveThousandRowsOfTwentyColumnsStayQuick) {
    std::vector<EditColumn> columns{{"no", "No", CellKind::ReadOnly, 8}};
    for (int i = 1; i < 20; ++i)
        columns.push_back({QString("n%1").arg(i), QString("Not %1").arg(i), CellKind::Decimal, 6});
    auto* large = new EditGrid("buyuk", columns, dialogs, memory, window.get());
    window->layout()->addWidget(large);
    std::vector<EditRow> rows(5000, EditRow(20, "50"));
    QElapsedTimer clock;
    clock.start();
    large->setRows(rows);
    large->view()->setFocus();
    large->makeCurrent(0, "n1");
    QCoreApplication::processEvents();
    EXPECT_LT(clock.restart(), 1000);
    QString block;
    for (int row = 0; row < 5000; ++row)
        block += QString("61,5\t").repeated(18) + (row % 10 ? "7\n" : "yok\n");
    QApplication::clipboard()->setText(block);
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_LT(clock.restart(), 4000);
    EXPECT_EQ(large->changedCells().size(), 5000u * 18 + 4500);
    EXPECT_EQ(large->refusedCells().size(), 500u);
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_LT(clock.restart(), 2000);
    EXPECT_FALSE(large->isDirty());
    for (int i = 0; i < 20; ++i) {
        type("9");
        press(Qt::Key_Return);
    }
    EXPECT_LT(clock.elapsed(), 2000);
    EXPECT_EQ(large->changedRows().size(), 20u);
}

TEST(TextBlock, AsSpreadsheetsWriteIt) {
    const struct {
        const char* text;
        std::vector<QStringList> rows;
    } cases[] = {
        {"a\tb\r\nc\td\r\n", {{"a", "b"}, {"c", "d"}}},
        {"a", {{"a"}}},
        {"a\t\n\tb", {{"a", ""}, {"", "b"}}},
        {"a\n\nb\n", {{"a"}, {""}, {"b"}}},
        {"\"iki\nsatır\"\t\"tırnak \"\" içinde\"\n", {{"iki\nsatır", "tırnak \" içinde"}}},
        {"5\" boru\tx", {{"5\" boru", "x"}}},
        {"\"açık", {{"\"açık"}}},
        {"", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(readTextBlock(c.text), c.rows) << c.text;
}

} // namespace
} // namespace orvan
