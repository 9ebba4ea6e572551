// records/registration_addresses.h — the address of the student to his guardian and back.
#pragma once

#include "core/dialogs.h"
#include "reference/stored_rows.h"

namespace orvan {

enum class AddressCopy { StudentToGuardian, GuardianToStudent };

// Asks, then copies within the texts of the form. False: declined.
bool copyAddress(FieldTexts& student, AddressCopy direction, Dialogs& dialogs);

} // namespace orvan
