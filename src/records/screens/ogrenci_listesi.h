// records/screens/ogrenci_listesi.h — the students of the open level by class, to be printed or to find one
// by number, name or class.
#pragma once

#include "records/screens/student_roster.h"

namespace orvan {

class ogrenci_listesi : public StudentRoster {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    ogrenci_listesi(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                    const Clock& clock, QWidget* parent = nullptr);
};

} // namespace orvan
