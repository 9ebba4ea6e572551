// records/screens/frm_sinif_ogrenci_sayilari.h — how many students each class has: girls, boys, stages.
#pragma once

#include "core/clock.h"
#include "core/database_set.h"
#include "widgets/screen.h"

class QCheckBox;
class QLabel;

namespace orvan {

class ListGrid;
class UserMemory;

class Frm_SinifOgrenciSayilari : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    Frm_SinifOgrenciSayilari(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                             UserMemory& memory, const Clock& clock, QWidget* parent = nullptr);

    void refresh() override;

  private:
    void build(UserMemory& memory);
    void load();

    DatabaseSet& databases_;
    const Clock& clock_;
    QCheckBox* inTraining_ = nullptr;
    ListGrid* grid_ = nullptr;
    QLabel* sum_ = nullptr;
};

} // namespace orvan
