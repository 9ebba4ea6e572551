// records/record_checks.h — looks through the students of the open level for missing and contradictory data.
// Reads each table once; writes nothing.
#pragma once

#include "core/clock.h"
#include "core/database_set.h"

#include <vector>

namespace orvan {

struct RecordCheck {
    QString key;   // stable: settings, tests
    QString title; // "T.C. kimlik numarası hatalı"
};
std::vector<RecordCheck> recordChecks(); // all there are, in the order they are run

struct RecordFinding {
    QString check; // title of the check
    QString number, name, surname, className, profession;
    QString text; // what is wrong, with the values: "31.02.2010 bir tarih değil (İşe giriş tarihi)"
};

struct RecordFindings {
    std::vector<RecordFinding> list; // check by check; within one by student number
    size_t students = 0;             // that were looked at
    bool stopped = false;            // the person stopped it: the checks after the last finding did not run
};

// Runs the checks with these keys; others do not count. With a progress of the dialogs. Throws jet::Error.
RecordFindings checkRecords(DatabaseSet& databases, const QStringList& keys, const Clock& clock,
                            Dialogs& dialogs);

} // namespace orvan
