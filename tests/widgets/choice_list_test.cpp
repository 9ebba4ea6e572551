// Choosing from a list by typing.
#include "support/keyboard.h"
#include "widgets/choice_list.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace orvan {
namespace {

using namespace orvan_test;

class ChoiceListTest : public testing::Test {
  protected:
    void SetUp() override {
        auto* layout = new QVBoxLayout(&window);
        list = new ChoiceList(20, &window);
        other = new QLineEdit(&window);
        layout->addWidget(list);
        layout->addWidget(other);
        list->setChoices({{"0101", "Kuaför"},
                          {"0102", "İnşaat"},
                          {"0103", "Isıtma"},
                          {"0104", "Oto Elektrik"},
                          {"0105", "Elektrik Tesisat"}});
        showActive(window);
        list->setFocus();
    }
    QStringList offered() const {
        QStringList texts;
        const auto* model = list->completer()->popup()->model();
        for (int row = 0; row < model->rowCount(); ++row)
            texts << model->index(row, 0).data().toString();
        return texts;
    }
    QWidget window;
    ChoiceList* list = nullptr;
    QLineEdit* other = nullptr;
};

TEST_F(ChoiceListTest, TypingNarrowsByTurkishRulesAndEnterTakesTheFirst) {
    const struct {
        const char* typed;
        QStringList offered;
        const char* code;
    } cases[] = {
        {"i", {"İnşaat", "Oto Elektrik", "Elektrik Tesisat"}, "0102"},
        {"ı", {"Isıtma"}, "0103"},
        {"ELEK", {"Elektrik Tesisat", "Oto Elektrik"}, "0105"},
        {"oto elektrik", {"Oto Elektrik"}, "0104"},
        {"kuaf", {"Kuaför"}, "0101"},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.typed);
        list->setCode({});
        QSignalSpy changed(list, &ChoiceList::codeChanged);
        QSignalSpy entered(list, &ChoiceList::enterPressed);
        type(QString::fromUtf8(one.typed));
        EXPECT_TRUE(list->completer()->popup()->isVisible());
        EXPECT_EQ(offered(), one.offered);
        press(Qt::Key_Return);
        EXPECT_FALSE(list->completer()->popup()->isVisible());
        EXPECT_EQ(list->code(), QString(one.code));
        EXPECT_TRUE(list->isSettled());
        EXPECT_EQ(changed.size(), 1);
        EXPECT_EQ(entered.size(), 1);
    }
}

TEST_F(ChoiceListTest, ArrowInTheOpenListChooses) {
    type("elek");
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(list->code(), QString("0104"));
}

TEST_F(ChoiceListTest, TabTakesTheFirstMatchAndGoesOn) {
    type("isı");
    press(Qt::Key_Escape); // no such choice: closes nothing, text stays
    EXPECT_FALSE(list->isSettled());
    list->setCode({});
    type("ısı");
    press(Qt::Key_Tab);
    EXPECT_EQ(list->code(), QString("0103"));
    EXPECT_TRUE(other->hasFocus());
}

TEST_F(ChoiceListTest, TextThatIsNoChoiceStaysAndIsNotSettled) {
    list->setCode("0101");
    list->lineEdit()->selectAll();
    type("yok böyle");
    other->setFocus();
    EXPECT_EQ(list->currentText(), QString("yok böyle"));
    EXPECT_FALSE(list->isSettled());
}

TEST_F(ChoiceListTest, EmptyTextChoosesNothing) {
    list->setCode("0101");
    QSignalSpy changed(list, &ChoiceList::codeChanged);
    list->lineEdit()->selectAll();
    press(Qt::Key_Delete);
    other->setFocus();
    EXPECT_EQ(list->code(), QString());
    EXPECT_EQ(changed.size(), 1);
}

TEST_F(ChoiceListTest, ProgramAndPassingThroughChangeNothing) {
    QSignalSpy changed(list, &ChoiceList::codeChanged);
    list->setCode("0102");
    list->setCode("yok");
    EXPECT_EQ(list->code(), QString());
    list->setCode("0104");
    press(Qt::Key_Tab);
    press(Qt::Key_Tab, Qt::ShiftModifier);
    other->setFocus();
    QWheelEvent wheel(QPointF(5, 5), list->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(list, &wheel);
    EXPECT_EQ(list->code(), QString("0104"));
    EXPECT_EQ(changed.size(), 0);
}

TEST_F(ChoiceListTest, NewChoicesKeepTheChosenCodeWhileItExists) {
    list->setCode("0104");
    list->setChoices({{"0104", "Oto Elektrik ve Elektronik"}, {"0200", "Aşçı"}});
    EXPECT_EQ(list->code(), QString("0104"));
    EXPECT_EQ(list->currentText(), QString("Oto Elektrik ve Elektronik"));
    list->setChoices({{"0200", "Aşçı"}});
    EXPECT_EQ(list->code(), QString());
    EXPECT_EQ(list->currentText(), QString());
}

} // namespace
} // namespace orvan
