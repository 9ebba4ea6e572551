// records/student_choices.h — the fixed lists from which fields of a student are chosen; the stored value is
// the text that is shown.
#pragma once

#include <QStringList>

namespace orvan {

// "Mesleki Eğitim" …; the three kinds of the equivalence files only there.
QStringList registrationKinds(bool equivalence);
QStringList leavingReasons();
QStringList yesNoTexts(); // "Evet", "Hayır"

} // namespace orvan
