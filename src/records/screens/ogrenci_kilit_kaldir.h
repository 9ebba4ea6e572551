// records/screens/ogrenci_kilit_kaldir.h — who has which database open, and the removal of lock files that
// were left behind.
#pragma once

#include "core/database_set.h"
#include "widgets/screen.h"

class QLabel;
class QPushButton;

namespace orvan {

class ListGrid;
class UserMemory;

class OgrenciKilitKaldir : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    OgrenciKilitKaldir(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                       QWidget* parent = nullptr);

    void refresh() override;

  private:
    void build(UserMemory& memory);
    void load();
    void removeLeft();

    DatabaseSet& databases_;
    ListGrid* grid_ = nullptr;
    QLabel* result_ = nullptr;
    QPushButton* remove_ = nullptr;
};

} // namespace orvan
