// records/screens/frm_ogrencibilgi_kontrol.h — which students have missing or contradictory data: the checks
// are ticked, the findings listed, a finding opens its student's record.
#pragma once

#include "core/clock.h"
#include "core/database_set.h"
#include "records/record_checks.h"
#include "widgets/screen.h"

class QLabel;
class QListWidget;

namespace orvan {

class ListGrid;
class UserMemory;

class Frm_ogrencibilgi_kontrol : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    Frm_ogrencibilgi_kontrol(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                             UserMemory& memory, const Clock& clock, QWidget* parent = nullptr);

    void refresh() override; // runs again what was run last

  private:
    void build(UserMemory& memory);
    QWidget* buildChecks();
    QWidget* buildFindings(UserMemory& memory);
    QStringList ticked() const;
    void tickAll(bool ticked);
    void start();
    void run();
    void open(size_t row);

    DatabaseSet& databases_;
    const Clock& clock_;
    QStringList running_; // keys of the checks whose findings are listed
    RecordFindings findings_;
    QListWidget* checks_ = nullptr;
    ListGrid* grid_ = nullptr;
    QLabel* result_ = nullptr;
};

} // namespace orvan
