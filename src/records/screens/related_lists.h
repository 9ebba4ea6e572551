// records/screens/related_lists.h — earlier workplaces, marks, absences and exams of the student on view, a
// list each. Read when the lists are on view, not before.
#pragma once

#include "records/related_rows.h"
#include "widgets/grid.h"

class QTabWidget;

namespace orvan {

class RelatedLists : public QWidget {
    Q_OBJECT

  public:
    // All must outlive it.
    RelatedLists(DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory, QWidget* parent = nullptr);

    void showStudent(const StudentRecord& student);

  protected:
    void showEvent(QShowEvent* event) override;
    void focusInEvent(QFocusEvent* event) override; // on to the list on view

  private:
    void load();

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    StudentRecord student_;
    QTabWidget* tabs_;
    std::vector<ListGrid*> grids_; // one for each of relatedLists()
    bool fresh_ = false;
};

} // namespace orvan
