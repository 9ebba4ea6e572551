// core/general_error.cpp — text and outcome of the general error dialog.
#include "core/general_error.h"

#include "core/values.h"
#include "jet/error.h"

namespace orvan {

GeneralError GeneralError::from(const std::exception& error, const QString& routine) {
    GeneralError general;
    general.program = QStringLiteral("ORVAN");
    general.routine = routine;
    if (const auto* engine = dynamic_cast<const jet::Error*>(&error)) general.number = engine->code();
    general.description = errorText(error);
    return general;
}

QString generalErrorText(const GeneralError& error) {
    return QStringLiteral("\n HATA OLUSAN \n") + QStringLiteral(" Program Adi    : ") + error.program +
           QStringLiteral(" Rutin Adi      : ") + error.routine + QStringLiteral(" Hata Kodu      : ") +
           QString::number(error.number) + QStringLiteral("\n Hata Aciklamasi: ") + error.description;
}

AfterError showGeneralError(Dialogs& dialogs, const GeneralError& error, AfterError wish,
                            const QString& title) {
    const bool accepted = dialogs.askOkCancel(generalErrorText(error), title, Icon::Critical);
    return accepted && wish == AfterError::MayContinue ? AfterError::MayContinue : AfterError::EndProgram;
}

} // namespace orvan
