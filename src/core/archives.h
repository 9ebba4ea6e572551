// core/archives.h — which school years lie in the archives: read from the names of the files in \Data
// ("MKAL2008.MDB" holds the graduates of 2008-2009 at level Kalfa). Opens no file.
#pragma once

#include "core/dialogs.h"
#include "core/program_folder.h"
#include "core/session.h"

#include <QStringList>
#include <vector>

namespace orvan {

struct ArchiveYear {
    QString schoolYear; // "2008-2009"
    QStringList levels; // words of the levels that have a file, in the program's order
};

// The newest year first. REQUIRES: mode is an archive.
std::vector<ArchiveYear> archiveYears(const ProgramFolder& folder, DataSetMode mode);

// Asks which year to open. Nothing when there is none (the person is told) or when he cancels.
std::optional<QString> chooseArchiveYear(const ProgramFolder& folder, DataSetMode mode, Dialogs& dialogs);

} // namespace orvan
