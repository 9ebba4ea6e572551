// widgets/date_edit.h — a date field that takes dates as they are typed at the number pad. F4, Alt+Down or
// the button opens a small calendar. Holds a text: what was loaded stays as it was until it is edited.
#pragma once

#include "widgets/text_edit.h"

#include <optional>
#include <QDate>

namespace orvan {

// The day meant by a typed text: "ggaayyyy", "ggaayy", "gg.aa.yy", "gg.aa.yyyy", also one-digit days and
// months, also with "/", "-" or blanks between. Years of two digits are 1930..2029. Nothing when there is no
// such day or its year is not 1900..2099.
std::optional<QDate> typedDate(const QString& text);

// Why a text is refused as a date, in words for a person; empty when it is a date or empty.
QString dateProblem(const QString& text);

class DateEdit : public TextEdit {
    Q_OBJECT

  public:
    explicit DateEdit(QWidget* parent = nullptr);

    QString value() const;               // "dd.MM.yyyy"; the text as it stands when it is no date
    void setValue(const QString& value); // as loaded; emits nothing
    QString problem() const;             // why the typed text is refused; empty when it is not
    void settle();                       // brings a typed date into its form

    void openCalendar();

  signals:
    void dateChosen(); // in the calendar, by the user's own hand

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    QString loaded_;
};

} // namespace orvan
