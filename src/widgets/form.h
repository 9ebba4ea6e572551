// widgets/form.h — a form made from a table of fields. Knows the keys of entering data, what changed, and how
// a wrong field is shown. Values are texts, as the records hold them; it knows no table and no rule.
//   Enter: next field, after the last one lastFieldDone. Esc: gives the field its old value back; a field
//   that has not changed leaves Esc to the window. Ctrl+Z: undoes typing, then the whole unsaved record.
#pragma once

#include <QWidget>
#include <span>
#include <vector>

class QGridLayout;
class QLabel;

namespace orvan {

class ChoiceList;

enum class FieldKind {
    Text,    // free text
    Code,    // code or number: selected whole on entering
    Choice,  // one of a list; the value is the code
    Display, // read only, can be copied
};

struct FormField {
    QString name;  // key and object name
    QString label; // with an Alt letter
    FieldKind kind = FieldKind::Text;
    int maxLength = 0; // characters, 0 = no limit; from the table's declaration
    int width = 20;    // characters shown
};

class EntryForm : public QWidget {
    Q_OBJECT

  public:
    EntryForm(std::span<const FormField> fields, QWidget* parent = nullptr);

    QString value(const QString& name) const;
    // Sets the value as loaded: not a change of the user's. Emits nothing.
    void setValue(const QString& name, const QString& value);
    ChoiceList* choiceList(const QString& name) const; // nullptr when the field is no Choice
    QWidget* editor(const QString& name) const;

    bool isDirty() const;  // some value differs from the loaded one
    void acceptAsLoaded(); // what stands in the fields is saved
    void revert();         // every field as loaded

    void focusField(const QString& name);
    void focusFirst();

    // One field at a time is wrong: framed, the reason beside it, the caret in it. Goes when the field is
    // edited.
    void showWrong(const QString& name, const QString& reason);
    void clearWrong();

  signals:
    void edited(const QString& name); // by the user's own hand
    void dirtyChanged(bool dirty);
    void lastFieldDone();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    struct Field {
        FormField about;
        QWidget* editor = nullptr;
        QLabel* note = nullptr;
        QString loaded;  // value to compare with for "changed"
        QString entered; // value when the focus came in
    };
    void addField(const FormField& about, QGridLayout* layout);
    QWidget* makeEditor(const FormField& about);
    QString valueOf(const Field& field) const;
    void put(const Field& field, const QString& value);
    Field& find(const QString& name);
    const Field& find(const QString& name) const;
    bool handleKey(Field& field, int key, Qt::KeyboardModifiers modifiers, bool held);
    void goOn(const Field& from);
    void wasEdited(const QString& name);
    void checkDirty();

    std::vector<Field> fields_;
    QString wrong_;
    bool wasDirty_ = false;
};

} // namespace orvan
