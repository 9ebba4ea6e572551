// core/general_error.cpp — text and outcome of the general error dialog.
#include "core/general_error.h"

#include "core/values.h"
#include "jet/error.h"

namespace orvan {
namespace {

// What the person can do about it; empty when the text of the error says all.
const char* adviceFor(jet::Err number) {
    switch (number) {
    case jet::Err::FileNotFound: return "Dosya silinmişse yedeğini aynı klasöre kopyalayınız.";
    case jet::Err::InvalidPassword:
        return "Dosya, bu programın bilmediği bir parolayla korunuyor. Parolayı koyan kişiye başvurunuz.";
    case jet::Err::LockedByOther:
    case jet::Err::FileInUse:
    case jet::Err::LockFailed:
        return "Dosyayı kullanan öbür bilgisayarlarda işlem bitince yeniden deneyiniz.";
    case jet::Err::CannotOpen:
    case jet::Err::PathNotValid:
    case jet::Err::ReadOnly:
        return "Dosyaya ve klasörüne yazma izniniz olduğunu, dosyanın başka bir programda açık olmadığını "
               "denetleyiniz.";
    case jet::Err::Corrupt:
    case jet::Err::NotADatabase:
        return "Dosya bozulmuş olabilir. Kopyasını saklayıp son yedeği geri yükleyiniz ya da dosyayı "
               "onarınız (jetdb repair).";
    case jet::Err::NewerFormat: return "Dosyayı Access 2000-2003 biçiminde kaydedip yeniden deneyiniz.";
    case jet::Err::DiskFull: return "Diskte yer açıp yeniden deneyiniz; yarım kalan bir kayıt yoktur.";
    case jet::Err::DiskIO: return "Disk ve ağ bağlantısını denetleyip yeniden deneyiniz.";
    default: return "";
    }
}

} // namespace

GeneralError GeneralError::from(const std::exception& error, const QString& routine) {
    GeneralError general;
    general.program = QStringLiteral("ORVAN");
    general.routine = routine;
    general.description = errorText(error);
    const auto* engine = dynamic_cast<const jet::Error*>(&error);
    if (!engine) return general;
    general.number = engine->code();
    const QString advice = QString::fromUtf8(adviceFor(engine->number()));
    if (!advice.isEmpty()) general.description += QStringLiteral("\n\n") + advice;
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
