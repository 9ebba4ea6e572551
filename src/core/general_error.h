// core/general_error.h — the general error dialog: what an unexpected error looks like to the person.
#pragma once

#include "core/dialogs.h"

#include <exception>

namespace orvan {

enum class AfterError { EndProgram, MayContinue };

struct GeneralError {
    QString program; // program's name
    QString routine; // what was being done
    int number = 0;  // engine's error number; 0 when not from the engine
    QString description;
    static GeneralError from(const std::exception& error, const QString& routine);
};

QString generalErrorText(const GeneralError& error);

// Shows the box with Tamam / İptal. İptal ends the program; so does any call that does not say MayContinue.
AfterError showGeneralError(Dialogs& dialogs, const GeneralError& error,
                            AfterError wish = AfterError::EndProgram,
                            const QString& title = QStringLiteral("Genel HATA"));

} // namespace orvan
