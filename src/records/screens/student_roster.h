// records/screens/student_roster.h — what the printed lists of students have in common: the students of the
// open level in one list, a choice of one class or workplace below it, and their counts. Enter opens the
// student.
#pragma once

#include "core/clock.h"
#include "core/database_set.h"
#include "records/student_list.h"
#include "widgets/list_sheet.h"
#include "widgets/screen.h"
#include "widgets/user_memory.h"

#include <functional>

class QLabel;

namespace orvan {

class ChoiceList;
class ListGrid;

// How a roster looks at a student.
struct RosterLook {
    QString window;    // name of the window
    QString list;      // name of the list, under which its columns are remembered
    QString groupBy;   // "Sınıf", with an Alt letter and a colon: the label of the choice
    QString ungrouped; // the choice of students without a group: "(sınıfı olmayanlar)"
    std::vector<ListColumn> columns;
    std::function<QString(const StudentListRow&)> groupOf;
    std::function<ListRow(const StudentListRow&)> rowOf; // a cell per column
};

class StudentRoster : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    StudentRoster(RosterLook look, const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                  UserMemory& memory, const Clock& clock, QWidget* parent = nullptr);

    void refresh() override;

  private:
    void build(UserMemory& memory);
    void load();
    void showChosen();

    RosterLook look_;
    DatabaseSet& databases_;
    const Clock& clock_;
    std::vector<StudentListRow> students_;
    std::vector<size_t> shown_; // places in students_ of the list's rows
    ChoiceList* groups_ = nullptr;
    QLabel* counts_ = nullptr;
    ListGrid* grid_ = nullptr;
};

} // namespace orvan
