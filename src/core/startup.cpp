// core/startup.cpp — the steps of the start, in order.
#include "core/startup.h"

#include "core/passwords.h"
#include "core/structure_check.h"
#include "core/users.h"
#include "core/values.h"

namespace orvan {

void prepareStart(const ProgramFolder& folder, Session& session) {
    session.level = Level::Kalfa;
    if (!folder.exists(QStringLiteral("\\Data")) && !folder.createFolder(QStringLiteral("\\Data"))) {
        jet::Error error(jet::Err::PathNotValid, "Klasör oluşturulamadı.");
        throw error.inFile(utf8(folder.resolve(QStringLiteral("\\Data"))));
    }
    sweepPasswords(folder, session);
}

void openAfterSignIn(DatabaseSet& databases, Dialogs& dialogs) {
    const ProgramFolder& folder = databases.folder();
    Session& session = databases.session();
    clearAllPasswords(folder, session);
    QString argument;
    try {
        databases.connect();
    } catch (const jet::Error& error) {
        // Files of an older release lack tables or fields that Connect opens: the upgrade brings them.
        if (error.number() != jet::Err::NoSuchTable && error.number() != jet::Err::NoSuchItem) throw;
        argument = QStringLiteral("Check1");
    }
    session.upgradeNeeded = needsStructureCheck(folder, argument);
    if (session.upgradeNeeded) {
        databases.close(); // the upgrade has the files to itself
        checkStructure(folder, session, databases.schema(), dialogs, argument);
        databases.connect();
    }
    renameStoredRights(databases.constants().sql());
}

} // namespace orvan
