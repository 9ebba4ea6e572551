// records/screens/ogrenci_listesi.h — the students of the open level as a list, to find one by number, name
// or class.
#pragma once

#include "core/clock.h"
#include "core/database_set.h"
#include "widgets/screen.h"

namespace orvan {

class ListGrid;
class UserMemory;

class ogrenci_listesi : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    ogrenci_listesi(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                    const Clock& clock, QWidget* parent = nullptr);

    void refresh() override;

  private:
    void load();
    DatabaseSet& databases_;
    const Clock& clock_;
    ListGrid* grid_;
};

} // namespace orvan
