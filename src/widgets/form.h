// widgets/form.h — a form made from a table of fields. Knows the keys of entering data, what changed, and how
// a wrong field is shown. Values are texts, as the records hold them; it knows no table and no rule.
//   Enter: next field, after the last one lastFieldDone (in a Memo: Ctrl+Enter). Esc: gives the field its old
//   value back; a field that has not changed leaves Esc to the window. Ctrl+Z: undoes typing, then the whole
//   unsaved record. A typed date or number that cannot be one is refused by Enter and Tab: the text stays,
//   the reason is shown; the mouse may leave it. What was loaded and not edited is never refused nor
//   rewritten.
#pragma once

#include "widgets/number_edit.h"
#include "widgets/yes_no.h"

#include <functional>
#include <memory>
#include <QWidget>
#include <span>
#include <vector>

class QKeyEvent;
class QLabel;

namespace orvan {

class ChoiceList;
class FieldEditor;
class FormLayout;

enum class FieldKind {
    Text,     // free text
    Code,     // code or number: selected whole on entering
    Choice,   // one of a list; the value is the code
    Display,  // read only, can be copied
    Date,     // value "dd.MM.yyyy"; how it may be typed: date_edit.h
    Number,   // whole number; value "1234"
    Money,    // shown "1.234,50"; value "1234.5000"
    Decimal,  // a rate, shown "0,00759"; value "0.00759"
    Check,    // yes or no; value "1" or "0", or the field's own pair; carries its label itself
    Memo,     // several lines
    Password, // not shown
};

struct FormField {
    QString name;  // key and object name
    QString label; // with an Alt letter
    FieldKind kind = FieldKind::Text;
    int maxLength = 0; // characters, 0 = no limit; from the table's declaration
    int width = 20;    // characters shown

    // Where it stands. Fields of one column stand below each other, columns side by side; neighbours with the
    // same group title share a framed group. The order of the fields is the order of Tab and Enter: give them
    // column by column.
    int column = 0;
    QString group = {};

    int lines = 4;            // Memo: lines shown
    NumberLimits limits = {}; // Number, Money, Decimal
    QString yes = kYesText;   // Check
    QString no = kNoText;     // Check; any other loaded value counts as no, and stays until it is edited
    QString tip = {};         // shown while the pointer rests on the field
};

class EntryForm : public QWidget {
    Q_OBJECT

  public:
    EntryForm(std::span<const FormField> fields, QWidget* parent = nullptr);
    ~EntryForm() override;

    // Of a date or number that cannot be one: the text as it stands. An empty field has the empty value.
    QString value(const QString& name) const;
    // Sets the value as loaded: not a change of the user's. Emits nothing.
    void setValue(const QString& name, const QString& value);
    // Puts a value as if the user had entered it: the record is changed by it. Emits no edited().
    void enterValue(const QString& name, const QString& value);
    ChoiceList* choiceList(const QString& name) const; // nullptr when the field is no Choice
    QWidget* editor(const QString& name) const;
    bool has(const QString& name) const;
    void setReadOnly(const QString& name, bool readOnly); // can still be entered and copied
    void setAllReadOnly(bool readOnly);                   // Display fields stay as they are

    // Call it first of all when saving: takes what is half typed (Ctrl+S does not leave the field). False: a
    // field's text cannot be taken; it is shown as wrong and has the focus.
    bool settle();

    bool isDirty() const;  // some value differs from the loaded one
    void acceptAsLoaded(); // what stands in the fields is saved
    void revert();         // every field as loaded

    void focusField(const QString& name);
    void focusFirst();

    // One field at a time is wrong: framed, the reason beside it, the caret in it. Goes when the field is
    // edited.
    void showWrong(const QString& name, const QString& reason);
    void clearWrong();
    QString wrongField() const { return wrong_; } // empty when none is

    // The form is a part of a larger record: Ctrl+Z with nothing typed in its field calls this instead of
    // revert().
    void setRevert(std::function<void()> revert) { revertAll_ = std::move(revert); }

  signals:
    void edited(const QString& name); // by the user's own hand
    void dirtyChanged(bool dirty);
    void lastFieldDone();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void focusInEvent(QFocusEvent* event) override; // on to the first field

  private:
    struct Field {
        FormField about;
        std::unique_ptr<FieldEditor> editor;
        QLabel* note = nullptr;
        QString loaded;  // value to compare with for "changed"
        QString entered; // value when the focus came in
        bool readOnly = false;
    };
    void addField(const FormField& about, FormLayout& layout);
    std::unique_ptr<FieldEditor> makeEditor(const FormField& about);
    Field& find(const QString& name);
    const Field& find(const QString& name) const;
    Field* fieldOf(const QObject* editor);
    bool handleKey(Field& field, const QKeyEvent& key);
    bool handleEscape(Field& field);
    bool handleUndo(const Field& field);
    bool mayLeave(Field& field);
    void left(Field& field);
    void enterPressed(const QString& name);
    void goOn(const Field& from);
    void say(const Field& field, const QString& words);
    void mark(Field& field, const QString& reason);
    void wasEdited(const QString& name);
    void checkDirty();

    std::vector<Field> fields_;
    QString wrong_;
    std::function<void()> revertAll_;
    bool wasDirty_ = false;
};

} // namespace orvan
