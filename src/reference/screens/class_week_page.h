// reference/screens/class_week_page.h — the teaching slots of one class in a grid, a row each, and what looks
// wrong in them. Checks are those of ClassList.
#pragma once

#include "core/dialogs.h"
#include "reference/classes.h"
#include "widgets/user_memory.h"

#include <QWidget>

namespace orvan {

class EditGrid;

class ClassWeekPage : public QWidget {
    Q_OBJECT

  public:
    // All must outlive it.
    ClassWeekPage(const ClassList& classes, Dialogs& dialogs, UserMemory& memory, QWidget* parent = nullptr);

    void show(const FieldTexts* row);        // nullptr: a new class
    void takeOver(const FieldTexts& row);    // where nothing is typed
    void addTo(FieldTexts& wanted) const;    // what stands in the slots
    std::vector<TeachingHour> hours() const; // as they stand
    bool settle();
    bool isDirty() const;
    void revert();
    bool showWrong(const QString& field, const QString& reason); // false: no field of a slot

  signals:
    void changed();

  private:
    EditGrid* grid_;
};

} // namespace orvan
