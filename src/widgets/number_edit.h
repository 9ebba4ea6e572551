// widgets/number_edit.h — number fields: whole numbers, money, rates. Right-aligned; the comma is the decimal
// sign and the "." of the number pad gives one. Numbers travel as texts, digit by digit: nothing is rounded.
#pragma once

#include "widgets/text_edit.h"

#include <optional>

namespace orvan {

enum class NumberKind {
    Whole,   // "1234"
    Money,   // shown with thousands and at least two decimals; value always with four
    Decimal, // shown with the decimals it has
};

struct NumberLimits {
    double least = 0; // both included
    double most = 999'999'999'999.0;
    int decimals = 4; // most decimals that may be typed; money has at most 4
};

// Invariant text ("1234.5000") of a number as a person types it ("1.234,5"); the empty text of an empty one;
// nothing when it is no such number or has too many decimals. Dots between thousands must stand in their
// places; in a Decimal a single dot is a decimal sign.
std::optional<QString> typedNumber(const QString& text, NumberKind kind, int decimals);
// How the invariant text is shown; a text that is no number is shown as it is.
QString shownNumber(const QString& invariant, NumberKind kind);
// Why a typed text is refused, in words for a person; empty when it is taken.
QString numberProblem(const QString& text, NumberKind kind, const NumberLimits& limits);

class NumberEdit : public TextEdit {
    Q_OBJECT

  public:
    // width in characters; maxLength 0: as many as the limits need
    NumberEdit(NumberKind kind, NumberLimits limits, int maxLength, int width, QWidget* parent = nullptr);

    QString value() const;               // invariant; the text as it stands when it is no number
    void setValue(const QString& value); // as loaded, invariant; emits nothing
    QString problem() const;             // why the typed text is refused; empty when it is not
    void settle();                       // brings a typed number into its form

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

  private:
    NumberKind kind_;
    NumberLimits limits_;
    QString loaded_;
};

} // namespace orvan
