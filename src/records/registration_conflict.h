// records/registration_conflict.h — the questions when another station has changed or deleted the student who
// stands on the form.
#pragma once

#include "records/registration.h"

namespace orvan {

enum class ConflictChoice {
    Mine,   // what was typed is saved; fields that only the other one changed keep his values
    Theirs, // the form shows what the other one saved
    Stay,   // nothing happens, what was typed stays on the form
};

ConflictChoice askAboutChange(const RegistrationForm& form, const StudentRecord& theirs,
                              const StudentRecords& records, Dialogs& dialogs);
ConflictChoice askAboutDeletion(const RegistrationForm& form, Dialogs& dialogs);

} // namespace orvan
