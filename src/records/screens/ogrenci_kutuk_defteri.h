// records/screens/ogrenci_kutuk_defteri.h — the register of students: chosen by profession, stage and class,
// as a list and as printed pages with a block per student.
#pragma once

#include "core/clock.h"
#include "records/screens/register_print.h"
#include "widgets/screen.h"

class QLabel;

namespace orvan {

class ListGrid;
class StudentChoiceForm;

class ogrenci_kutuk_defteri : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    ogrenci_kutuk_defteri(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                          const Clock& clock, QWidget* parent = nullptr);

    void refresh() override;

  private:
    void build();
    void load();
    void showChosen();
    void printPages();
    void exportPages();
    RegisterSheet sheet() const;

    DatabaseSet& databases_;
    UserMemory& memory_;
    const Clock& clock_;
    BulkEdit choices_; // what can be chosen
    std::vector<RegisterEntry> entries_;
    StudentChoiceForm* choice_ = nullptr;
    QLabel* counts_ = nullptr;
    ListGrid* grid_ = nullptr;
};

} // namespace orvan
