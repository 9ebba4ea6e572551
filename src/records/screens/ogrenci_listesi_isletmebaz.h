// records/screens/ogrenci_listesi_isletmebaz.h — the students of the open level by the workplace where they
// train.
#pragma once

#include "records/screens/student_roster.h"

namespace orvan {

class ogrenci_listesi_isletmebaz : public StudentRoster {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    ogrenci_listesi_isletmebaz(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                               UserMemory& memory, const Clock& clock, QWidget* parent = nullptr);
};

} // namespace orvan
