// widgets/choice_list.h — choosing one of many by typing part of it: "i" finds "İ", "ı" finds "I". Each
// choice has a code (the value) and a text (what is shown).
#pragma once

#include <QComboBox>
#include <vector>

class QCompleter;
class QStringListModel;

namespace orvan {

struct Choice {
    QString code; // value; not empty, unique in the list
    QString text; // shown; unique in the list
};

class ChoiceList : public QComboBox {
    Q_OBJECT

  public:
    explicit ChoiceList(int width, QWidget* parent = nullptr); // width in characters

    void
    setChoices(std::vector<Choice> choices); // keeps the chosen code while it is still there; emits nothing
    const std::vector<Choice>& choices() const { return choices_; }

    QSize sizeHint() const override;

    void setReadOnly(bool readOnly); // can still be entered and copied

    QString code() const { return code_; } // empty: nothing chosen
    void setCode(const QString& code);     // a code that is not in the list chooses nothing; emits nothing
    // The same, but a code that the list lacks is shown as it is and stays the code until something is
    // chosen.
    void setLoadedCode(const QString& code);
    bool isSettled() const; // false while the typed text is no choice
    void settle();          // takes the first choice that matches what is typed

  signals:
    void codeChanged(const QString& code); // by the user's own hand only
    void enterPressed();                   // Enter, after settling

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void showPopup() override;

  private:
    void choose(int index);
    int matchOf(
        const QString& text) const; // exact text, then start of a text, then start of a word, then anywhere
    void showMatches(const QString& typed);
    std::vector<Choice> choices_;
    QString code_;
    QCompleter* completer_;
    QStringListModel* matches_;
    int width_;
    bool readOnly_ = false;
    bool keepsUnknown_ = false; // code_ came from a record and is not in the list
};

} // namespace orvan
