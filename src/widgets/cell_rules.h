// widgets/cell_rules.h — what may stand in a cell of an entry grid, and how it is shown. Pure; values are
// texts as in EntryForm: dates "dd.MM.yyyy", money "1234.5000", checks "1" / "0", choices their code.
#pragma once

#include "widgets/choice_list.h"
#include "widgets/list_sheet.h"
#include "widgets/number_edit.h"
#include "widgets/yes_no.h"

namespace orvan {

enum class CellKind { Text, Code, Number, Money, Decimal, Date, Choice, Check, ReadOnly };

struct EditColumn {
    QString key;   // stable name: settings, tests
    QString title; // shown in the header
    CellKind kind = CellKind::Text;
    int width = 10;                    // characters of usual content; the user may change it
    int maxLength = 0;                 // characters of Text and Code, 0 = no limit
    NumberLimits limits = {};          // Number, Money, Decimal
    std::vector<Choice> choices = {};  // Choice
    ListKind shownAs = ListKind::Text; // ReadOnly: how it is aligned, sorted and exported
};

// What a check says about a typed or pasted text: the value it stands for, or why not, in Turkish words that
// say what to do.
struct CellCheck {
    QString value;
    QString refusal; // empty: taken

    bool taken() const { return refusal.isEmpty(); }
    static CellCheck take(QString value) { return {std::move(value), {}}; }
    static CellCheck refuse(QString reason) { return {{}, std::move(reason)}; }
};

// The column's own check. Empty texts are taken. A choice is found by code or by text (Turkish case), a check
// by 1/0, Evet/Hayır, E/H, X, Doğru/Yanlış.
CellCheck checkCell(const EditColumn& column, const QString& typed);

// What a person sees in the cell, and reads on paper.
QString shownCell(const EditColumn& column, const QString& value);
// The same for the clipboard: numbers without thousands.
QString copiedCell(const EditColumn& column, const QString& value);
// For sorting, spreadsheets and paper.
ListKind listKind(const EditColumn& column);
QVariant listCell(const EditColumn& column, const QString& value);

} // namespace orvan
