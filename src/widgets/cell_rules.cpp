// widgets/cell_rules.cpp — reading and showing the cells of an entry grid.
#include "widgets/cell_rules.h"

#include "core/clock.h"
#include "core/turkish_text.h"
#include "widgets/date_edit.h"

namespace orvan {

namespace {

NumberKind numberKind(CellKind kind) {
    if (kind == CellKind::Number) return NumberKind::Whole;
    return kind == CellKind::Money ? NumberKind::Money : NumberKind::Decimal;
}

bool isNumber(CellKind kind) {
    return kind == CellKind::Number || kind == CellKind::Money || kind == CellKind::Decimal;
}

CellCheck checkText(const EditColumn& column, const QString& typed) {
    const auto length = static_cast<int>(typed.size());
    if (column.maxLength <= 0 || length <= column.maxLength) return CellCheck::take(typed);
    return CellCheck::refuse(QStringLiteral("En çok %1 karakter olabilir; bu metin %2 karakter.")
                                 .arg(column.maxLength)
                                 .arg(length));
}

CellCheck checkNumber(const EditColumn& column, const QString& typed) {
    const NumberKind kind = numberKind(column.kind);
    const QString problem = numberProblem(typed, kind, column.limits);
    if (!problem.isEmpty()) return CellCheck::refuse(problem);
    return CellCheck::take(*typedNumber(typed, kind, column.limits.decimals));
}

CellCheck checkDate(const QString& typed) {
    const auto day = typedDate(typed);
    return day ? CellCheck::take(dateText(*day)) : CellCheck::refuse(dateProblem(typed));
}

CellCheck checkChoice(const EditColumn& column, const QString& typed) {
    for (const Choice& choice : column.choices)
        if (choice.code == typed) return CellCheck::take(choice.code);
    for (const Choice& choice : column.choices)
        if (sameTurkish(choice.text, typed)) return CellCheck::take(choice.code);
    return CellCheck::refuse(QStringLiteral("Listede \"%1\" yok.").arg(typed));
}

CellCheck checkYesNo(const QString& typed) {
    static const QStringList yes{"1", "evet", "e", "x", "doğru"}, no{"0", "hayır", "h", "yanlış"};
    const QString word = lowerTurkish(typed);
    if (yes.contains(word)) return CellCheck::take(kYesText);
    if (no.contains(word)) return CellCheck::take(kNoText);
    return CellCheck::refuse(QStringLiteral("Evet ya da Hayır olmalıdır."));
}

} // namespace

CellCheck checkCell(const EditColumn& column, const QString& typed) {
    if (column.kind == CellKind::ReadOnly)
        return CellCheck::refuse(QStringLiteral("Bu sütun değiştirilemez."));
    if (column.kind == CellKind::Text) return checkText(column, typed);
    const QString text = typed.trimmed();
    if (column.kind == CellKind::Check) return checkYesNo(text.isEmpty() ? kNoText : text);
    if (text.isEmpty()) return CellCheck::take({});
    if (isNumber(column.kind)) return checkNumber(column, text);
    switch (column.kind) {
    case CellKind::Date: return checkDate(text);
    case CellKind::Choice: return checkChoice(column, text);
    default: return checkText(column, text);
    }
}

QString shownCell(const EditColumn& column, const QString& value) {
    if (isNumber(column.kind)) return shownNumber(value, numberKind(column.kind));
    if (column.kind == CellKind::Check)
        return value == kYesText ? QStringLiteral("Evet") : QStringLiteral("Hayır");
    if (column.kind != CellKind::Choice) return value;
    for (const Choice& choice : column.choices)
        if (choice.code == value) return choice.text;
    return value;
}

QString copiedCell(const EditColumn& column, const QString& value) {
    const QString shown = shownCell(column, value);
    const bool hasThousands =
        column.kind == CellKind::Money && shown != value; // what is no number stays as it is
    return hasThousands ? QString(shown).remove(u'.') : shown;
}

ListKind listKind(const EditColumn& column) {
    switch (column.kind) {
    case CellKind::Number:
    case CellKind::Decimal: return ListKind::Number;
    case CellKind::Money: return ListKind::Money;
    case CellKind::Date: return ListKind::Date;
    case CellKind::ReadOnly: return column.shownAs;
    default: return ListKind::Text;
    }
}

QVariant listCell(const EditColumn& column, const QString& value) {
    if (value.isEmpty()) return {};
    if (isNumber(column.kind)) {
        bool ok = false;
        const double number = value.toDouble(&ok);
        if (!ok) return value;
        if (column.kind == CellKind::Number) return QVariant(static_cast<qlonglong>(number));
        return number;
    }
    return shownCell(column, value);
}

} // namespace orvan
