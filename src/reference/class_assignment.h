// reference/class_assignment.h — puts many students into a class at once: choose by profession, stage and
// present class, tick, choose the class, write. Speaks through Dialogs; writes only what the user may write.
#pragma once

#include "core/database_set.h"
#include "reference/code_lists.h"

namespace orvan {

struct ClassSelection {
    QString profession;  // code
    int version = 0;     // curriculum
    QStringList stages;  // at least one
    QStringList classes; // present classes; empty: all. The empty text: students without a class
};

struct ClassStudent {
    jet::RowId row;
    QString number, name, surname, stage, className; // as read
};

enum class Marks { Heed, Ignore };

struct AssignmentResult {
    size_t changed = 0;
    QStringList skipped; // changed or deleted by another station since they were listed: "Ayşe Işık (number)"
};

class ClassAssignment {
  public:
    // `title`: the screen's title, under which the right to write is stored. All must outlive it. REQUIRES:
    // databases are connected whenever a function is called.
    ClassAssignment(DatabaseSet& databases, Dialogs& dialogs, QString title);

    std::vector<Profession> professions();                       // that some student has
    QStringList stages();                                        // that some student has
    QStringList classes(const QString& profession, int version); // present classes of its students
    QStringList targets();                                       // defined classes
    // By number. Nothing when no profession or no stage is chosen; the person has been told.
    std::optional<std::vector<ClassStudent>> students(const ClassSelection& selection);

    // Asks and writes under one lock. `marked`: by place in `listed`; all count with Marks::Ignore. Tells the
    // result. Nothing when it is refused or declined.
    std::optional<AssignmentResult> assign(const QString& target, const std::vector<ClassStudent>& listed,
                                           const std::vector<size_t>& marked, Marks marks);
    bool mayWrite();

  private:
    QStringList column(const char* sql, std::span<const jet::Value> parameters = {});
    bool confirms(const QString& target, size_t chosen, size_t listed, Marks marks);
    AssignmentResult write(const QString& target, const std::vector<ClassStudent>& chosen);

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
};

} // namespace orvan
