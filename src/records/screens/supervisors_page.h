// records/screens/supervisors_page.h — the seven supervisors of a workplace in a grid, with their students of
// the open level. Counts and questions are those of Workplaces.
#pragma once

#include "records/workplaces.h"
#include "widgets/user_memory.h"

#include <QWidget>

class QLabel;

namespace orvan {

class EditGrid;

class SupervisorsPage : public QWidget {
    Q_OBJECT

  public:
    // All must outlive it. `level`: words of the open level.
    SupervisorsPage(Workplaces& places, const QString& level, Dialogs& dialogs, UserMemory& memory,
                    QWidget* parent = nullptr);

    void show(const FieldTexts* row);     // nullptr: a new workplace
    void takeOver(const FieldTexts& row); // where nothing is typed
    void addTo(FieldTexts& wanted) const;
    bool settle();
    bool isDirty() const;
    void revert();
    bool showWrong(const QString& field, const QString& reason); // false: no field of a supervisor

  signals:
    void changed();

  private:
    void count();
    void removeCurrent();

    Workplaces& places_;
    QString level_, workplace_; // the name that the students bear
    Dialogs& dialogs_;
    EditGrid* grid_ = nullptr;
    QLabel* note_ = nullptr;
};

} // namespace orvan
