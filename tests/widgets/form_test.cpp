// The keys of entering data, what counts as changed, and how a wrong field is shown.
#include "support/keyboard.h"
#include "widgets/choice_list.h"
#include "widgets/form.h"

#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

namespace orvan {
namespace {

using namespace orvan_test;

class FormTest : public testing::Test {
  protected:
    void SetUp() override {
        const FormField fields[] = {
            {"meslek", "&Meslek:", FieldKind::Choice, 0, 20},
            {"kayitNo", "Kayıt No:", FieldKind::Display, 0, 8},
            {"no", "&Kütük No:", FieldKind::Code, 9, 9},
            {"ad", "&Adı:", FieldKind::Text, 5, 10},
            {"soyad", "&Soyadı:", FieldKind::Text, 0, 10},
        };
        auto* layout = new QVBoxLayout(&window);
        form = new EntryForm(fields, &window);
        layout->addWidget(form);
        form->choiceList("meslek")->setChoices({{"0101", "Kuaför"}, {"0102", "Aşçı"}});
        form->setValue("kayitNo", "17");
        form->setValue("no", "010100001");
        showActive(window);
        form->focusFirst();
    }
    QString focused() const { return QApplication::focusWidget()->objectName(); }
    QLineEdit* line(const char* name) const { return find<QLineEdit>(*form, name); }
    QWidget window;
    EntryForm* form = nullptr;
};

TEST_F(FormTest, EnterWalksTheFieldsThatTakeInputAndEndsAfterTheLast) {
    QSignalSpy done(form, &EntryForm::lastFieldDone);
    EXPECT_EQ(focused(), QString("meslek"));
    type("aş");
    press(Qt::Key_Return);
    EXPECT_EQ(form->value("meslek"), QString("0102"));
    EXPECT_EQ(focused(), QString("no")); // the read-only field takes no input
    EXPECT_EQ(line("no")->selectedText(), QString("010100001"));
    press(Qt::Key_Enter);
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), QString("soyad"));
    EXPECT_EQ(done.size(), 0);
    press(Qt::Key_Return);
    EXPECT_EQ(done.size(), 1);
}

TEST_F(FormTest, HeldEnterDoesNotRun) {
    line("no")->setFocus();
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, "\r", true);
    QApplication::sendEvent(line("no"), &held);
    EXPECT_EQ(focused(), QString("no"));
}

TEST_F(FormTest, TabGoesInReadingOrderThroughEveryField) {
    QStringList order{focused()};
    for (int i = 0; i < 4; ++i) {
        press(Qt::Key_Tab);
        order << focused();
    }
    EXPECT_EQ(order, (QStringList{"meslek", "kayitNo", "no", "ad", "soyad"}));
}

TEST_F(FormTest, OverlongTextIsRefusedWhileTypingAndSaidSo) {
    line("ad")->setFocus();
    type("İsmail");
    EXPECT_EQ(form->value("ad"), QString("İsmai"));
    EXPECT_TRUE(find<QLabel>(*form, "ad-uyari")->text().contains("en çok 5"));
    press(Qt::Key_Home, Qt::ShiftModifier);
    type("Ayşe"); // replaces the selection: fits
    EXPECT_EQ(form->value("ad"), QString("Ayşe"));
    EXPECT_EQ(find<QLabel>(*form, "ad-uyari")->text(), QString());
    QApplication::clipboard()->setText("Abdurrahman");
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(form->value("ad"), QString("Ayşe")); // not cut: not taken
    EXPECT_FALSE(find<QLabel>(*form, "ad-uyari")->text().isEmpty());
}

TEST_F(FormTest, EscapeGivesTheOldValueBackThenBelongsToTheWindow) {
    form->setValue("ad", "Ali");
    line("ad")->setFocus(Qt::TabFocusReason);
    type("ye");
    EXPECT_EQ(form->value("ad"), QString("Aliye"));
    QKeyEvent first(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(line("ad"), &first);
    EXPECT_TRUE(first.isAccepted());
    EXPECT_EQ(form->value("ad"), QString("Ali"));
    EXPECT_FALSE(form->isDirty());
    QKeyEvent second(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    second.accept();
    QApplication::sendEvent(line("ad"), &second);
    EXPECT_FALSE(second.isAccepted());
}

TEST_F(FormTest, DirtyFollowsValuesNotKeys) {
    QSignalSpy changed(form, &EntryForm::dirtyChanged);
    form->setValue("ad", "Ali");
    EXPECT_EQ(changed.size(), 0);
    line("ad")->setFocus(Qt::TabFocusReason);
    type("x");
    EXPECT_TRUE(form->isDirty());
    press(Qt::Key_Backspace);
    EXPECT_FALSE(form->isDirty());
    EXPECT_EQ(changed.size(), 2);
    type("x");
    form->acceptAsLoaded();
    EXPECT_FALSE(form->isDirty());
    EXPECT_EQ(form->value("ad"), QString("Alix"));
}

TEST_F(FormTest, CtrlZUndoesTypingThenTheWholeRecord) {
    form->setValue("ad", "Ali");
    form->setValue("soyad", "Ak");
    line("ad")->setFocus(Qt::TabFocusReason);
    type("m");
    line("soyad")->setFocus(Qt::TabFocusReason);
    type("ın");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form->value("soyad"), QString("Ak"));
    EXPECT_EQ(form->value("ad"), QString("Alim"));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(form->value("ad"), QString("Ali"));
    EXPECT_FALSE(form->isDirty());
}

TEST_F(FormTest, WrongFieldHasTheCaretAndTheReasonUntilItIsEdited) {
    form->showWrong("soyad", "Soyadı boş olamaz.");
    EXPECT_EQ(focused(), QString("soyad"));
    EXPECT_TRUE(find<QLabel>(*form, "soyad-uyari")->text().contains("Soyadı boş olamaz."));
    EXPECT_EQ(line("soyad")->accessibleDescription(), QString("Soyadı boş olamaz."));
    form->showWrong("ad", "Adı boş olamaz.");
    EXPECT_EQ(find<QLabel>(*form, "soyad-uyari")->text(), QString());
    type("A");
    EXPECT_EQ(find<QLabel>(*form, "ad-uyari")->text(), QString());
    EXPECT_EQ(line("ad")->toolTip(), QString());
}

TEST_F(FormTest, EveryEditorHasALabelAndANameForScreenReaders) {
    for (const QLabel* label : form->findChildren<QLabel*>()) {
        if (label->objectName().endsWith("-uyari")) continue;
        ASSERT_NE(label->buddy(), nullptr) << label->text().toStdString();
        EXPECT_FALSE(label->buddy()->accessibleName().isEmpty());
    }
}

} // namespace
} // namespace orvan
