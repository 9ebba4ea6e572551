// Dates, numbers, checks and memos in a form: what keys do, what the value is, what is refused on leaving.
#include "support/keyboard.h"
#include "widgets/choice_list.h"
#include "widgets/form.h"

#include <QCalendarWidget>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace orvan {
namespace {

using namespace orvan_test;

class FormKindsTest : public testing::Test {
  protected:
    void SetUp() override {
        const FormField fields[] = {
            {"tarih", "&Tarih:", FieldKind::Date, 10, 12},
            {"gun", "&Gün:", FieldKind::Number, 0, 6, 0, {}, 4, {0, 31, 0}},
            {"ucret", "&Ücret:", FieldKind::Money, 0, 14},
            {"oran", "&Oran:", FieldKind::Decimal, 0, 10, 0, {}, 4, {0, 1, 5}},
            {"yatili", "&Yatılı", FieldKind::Check, 0, 0, 0, {}, 4, {}, "E", "H"},
            {"aciklama", "&Açıklama:", FieldKind::Memo, 20, 20},
            {"parola", "&Parola:", FieldKind::Password, 10, 10},
            {"bolum", "&Bölüm:", FieldKind::Choice, 0, 15},
        };
        auto* layout = new QVBoxLayout(&window);
        form = new EntryForm(fields, &window);
        layout->addWidget(form);
        form->choiceList("bolum")->setChoices({{"1", "Aşçılık"}, {"2", "Kuaförlük"}});
        window.resize(800, 500);
        showActive(window);
    }
    void enter(const char* name) { form->editor(name)->setFocus(Qt::TabFocusReason); }
    QString focused() const { return QApplication::focusWidget()->objectName(); }
    QString note(const char* name) const {
        return form->findChild<QLabel*>(QString("%1-uyari").arg(name))->text();
    }
    QString shown(const char* name) const { return find<QLineEdit>(*form, name)->text(); }
    QWidget window;
    EntryForm* form = nullptr;
};

TEST_F(FormKindsTest, WhatIsTypedBecomesItsFormOnLeaving) {
    const struct {
        const char *field, *typed, *shown, *value;
    } cases[] = {
        {"tarih", "05092008", "05.09.2008", "05.09.2008"},
        {"tarih", "5/9/08", "05.09.2008", "05.09.2008"},
        {"gun", "030", "30", "30"},
        {"ucret", "1250,5", "1.250,50", "1250.5000"},
        {"oran", "0,00759", "0,00759", "0.00759"},
    };
    for (const auto& c : cases) {
        form->setValue(c.field, {});
        enter(c.field);
        type(c.typed);
        EXPECT_EQ(form->value(c.field), QString(c.value)) << c.typed << ", still in the field"; // Ctrl+S
        press(Qt::Key_Tab);
        EXPECT_NE(focused(), QString(c.field)) << c.typed;
        EXPECT_EQ(shown(c.field), QString(c.shown));
        EXPECT_EQ(form->value(c.field), QString(c.value));
        EXPECT_TRUE(form->isDirty());
    }
}

TEST_F(FormKindsTest, ARefusedTextStaysWithItsReasonUntilCorrectedOrGivenBack) {
    const struct {
        const char *field, *loaded, *typed, *says;
        Qt::Key leave;
    } cases[] = {
        {"tarih", "01.02.2008", "31.02.2008", "29 arasında", Qt::Key_Tab},
        {"tarih", "", "3112", "gg.aa.yyyy", Qt::Key_Return},
        {"gun", "5", "32", "0 ile 31", Qt::Key_Backtab},
        {"ucret", "", "12.5", "virgül", Qt::Key_Return},
        {"bolum", "1", "zzz", "yok", Qt::Key_Tab},
        {"bolum", "1", "zzz", "yok", Qt::Key_Return},
    };
    for (const auto& c : cases) {
        form->setValue(c.field, c.loaded);
        const QString before = form->value(c.field);
        enter(c.field);
        type(c.typed);
        press(c.leave);
        EXPECT_EQ(focused(), QString(c.field)) << c.typed;
        EXPECT_TRUE(note(c.field).contains(QString(c.says)))
            << c.typed << ": " << note(c.field).toStdString();
        EXPECT_FALSE(form->settle());
        press(Qt::Key_Escape);
        EXPECT_EQ(form->value(c.field), before);
        EXPECT_EQ(note(c.field), QString());
        EXPECT_TRUE(form->settle());
        press(Qt::Key_Tab);
        EXPECT_NE(focused(), QString(c.field));
    }
}

TEST_F(FormKindsTest, TheMouseMayLeaveARefusedTextAndEscapeStillGivesTheOldBack) {
    form->setValue("tarih", "01.02.2008");
    enter("tarih");
    type("99");
    QTest::mouseClick(find<QLineEdit>(*form, "parola"), Qt::LeftButton);
    EXPECT_EQ(focused(), QString("parola"));
    EXPECT_FALSE(note("tarih").isEmpty());
    EXPECT_EQ(shown("tarih"), QString("99"));
    EXPECT_FALSE(form->settle());
    EXPECT_EQ(focused(), QString("tarih"));
    press(Qt::Key_Escape);
    EXPECT_EQ(shown("tarih"), QString("01.02.2008"));
    EXPECT_FALSE(form->isDirty());
}

TEST_F(FormKindsTest, LoadedOddValuesAreShownKeptAndNeverRefused) {
    const struct {
        const char *field, *value;
    } cases[] = {
        {"tarih", "00.00.0000"}, {"tarih", "1.5.2008"},  {"tarih", "05.09.2008 00:00:00"},
        {"gun", "007"},          {"gun", "99"},          {"gun", "yok"},
        {"ucret", "12 TL"},      {"ucret", "1.23456"},   {"oran", "0.1234567"},
        {"yatili", "Belirsiz"},  {"bolum", "97"},        {"bolum", "c"},
        {"aciklama", "a\r\nb"},  {"aciklama", "a\nb\n"}, {"aciklama", "yirmi karakterden uzun eski metin"},
    };
    for (const auto& c : cases) {
        form->setValue(c.field, c.value);
        enter(c.field);
        press(Qt::Key_Tab);
        EXPECT_NE(focused(), QString(c.field)) << c.value;
        EXPECT_EQ(form->value(c.field), QString(c.value));
        EXPECT_FALSE(form->isDirty()) << c.value;
        EXPECT_TRUE(form->settle()) << c.value;
    }
}

TEST_F(FormKindsTest, NumberPadDotIsACommaAndLettersAreRefused) {
    enter("ucret");
    type("12");
    QTest::keyEvent(QTest::Click, keyTarget(), Qt::Key_Period, Qt::KeypadModifier);
    type("5x");
    EXPECT_EQ(shown("ucret"), QString("12,5"));
    EXPECT_FALSE(note("ucret").isEmpty());
    EXPECT_TRUE(find<QLineEdit>(*form, "ucret")->alignment() & Qt::AlignRight);
}

TEST_F(FormKindsTest, CtrlZAfterLeavingGivesTheTypedFormBackNotTheWholeRecord) {
    form->setValue("gun", "3");
    enter("gun");
    type("4");
    enter("tarih");
    type("05092008");
    press(Qt::Key_Tab);
    enter("tarih");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown("tarih"), QString("05092008"));
    EXPECT_EQ(form->value("gun"), QString("4"));
}

TEST_F(FormKindsTest, CalendarGivesADayByKeysAndEscapeLeavesItAlone) {
    form->setValue("tarih", "05.09.2008");
    enter("tarih");
    QSignalSpy edited(form, &EntryForm::edited);
    press(Qt::Key_F4);
    ASSERT_NE(QApplication::activePopupWidget(), nullptr);
    press(Qt::Key_Escape);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(form->value("tarih"), QString("05.09.2008"));
    press(Qt::Key_F4);
    auto* days = QApplication::activePopupWidget()->findChild<QCalendarWidget*>();
    QWidget* table = days->findChild<QWidget*>("qt_calendar_calendarview");
    QTest::keyClick(table, Qt::Key_Right);
    QTest::keyClick(table, Qt::Key_Return);
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_EQ(form->value("tarih"), QString("06.09.2008"));
    EXPECT_GE(edited.size(), 1);
}

TEST_F(FormKindsTest, ACheckHasItsPairOfTextsAndGoesOnWithEnter) {
    form->setValue("yatili", "H");
    enter("yatili");
    press(Qt::Key_Space);
    EXPECT_EQ(form->value("yatili"), QString("E"));
    EXPECT_TRUE(form->isDirty());
    press(Qt::Key_Escape);
    EXPECT_EQ(form->value("yatili"), QString("H"));
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), QString("aciklama"));
    form->setReadOnly("yatili", true);
    enter("yatili");
    press(Qt::Key_Space);
    EXPECT_EQ(form->value("yatili"), QString("H"));
}

TEST_F(FormKindsTest, AMemoTakesEnterAndIsLeftByCtrlEnterAndTab) {
    enter("aciklama");
    type("bir");
    press(Qt::Key_Return);
    type("iki");
    EXPECT_EQ(form->value("aciklama"), QString("bir\r\niki"));
    type("345678901234567"); // eight with the line end's two; twenty in all
    EXPECT_EQ(form->value("aciklama").size(), 20);
    EXPECT_TRUE(note("aciklama").contains("en çok 20"));
    press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(focused(), QString("parola"));
    enter("aciklama");
    press(Qt::Key_Tab);
    EXPECT_EQ(focused(), QString("parola"));
    press(Qt::Key_Backtab);
    press(Qt::Key_Escape); // entered anew: nothing to give back
    EXPECT_EQ(form->value("aciklama").size(), 20);
}

TEST_F(FormKindsTest, ReadOnlyFieldsTakeNothingAndEnterPassesThem) {
    form->setValue("bolum", "1");
    form->setValue("tarih", "05.09.2008");
    form->setAllReadOnly(true);
    for (const char* field : {"tarih", "gun", "ucret", "aciklama", "parola", "bolum"}) {
        enter(field);
        type("2");
        press(Qt::Key_Down);
    }
    EXPECT_FALSE(form->isDirty());
    EXPECT_EQ(form->value("bolum"), QString("1"));
    QSignalSpy done(form, &EntryForm::lastFieldDone);
    enter("tarih");
    press(Qt::Key_Return);
    EXPECT_EQ(done.size(), 1);
    form->setAllReadOnly(false);
    enter("gun");
    type("2");
    EXPECT_EQ(form->value("gun"), QString("2"));
}

TEST(FormColumns, WordsAboutAFieldNameItOnTheCommonLine) {
    const FormField fields[] = {
        {"ad", "&Adı:", FieldKind::Text, 0, 10, 0, "Kimlik"},
        {"tarih", "&Tarihi:", FieldKind::Date, 0, 10, 0, "Kimlik"},
        {"il", "İ&li:", FieldKind::Text, 0, 10, 1, "Adres"},
    };
    QWidget window;
    auto* layout = new QVBoxLayout(&window);
    auto* form = new EntryForm(fields, &window);
    layout->addWidget(form);
    showActive(window);
    form->focusFirst();
    press(Qt::Key_Return);
    type("99");
    press(Qt::Key_Return);
    auto* note = find<QLabel>(window, "uyari");
    EXPECT_TRUE(note->text().startsWith("Tarihi: ")) << note->text().toStdString();
    press(Qt::Key_Escape);
    press(Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QString("il"));
    EXPECT_GT(form->editor("il")->mapTo(form, QPoint()).x(), form->editor("ad")->geometry().right());
    EXPECT_EQ(window.findChildren<QGroupBox*>().size(), 2);
}

} // namespace
} // namespace orvan
