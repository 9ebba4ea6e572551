// reference/classes.h — the classes of the open level database: name, teacher, weekly teaching slots. A class
// is known to the students by its name, so a new name is carried into their records and a deleted one is
// emptied there. Speaks through Dialogs; writes only what the user may write.
#pragma once

#include "core/database_set.h"
#include "reference/stored_rows.h"

#include <array>

namespace orvan {

inline constexpr int kTeachingSlots = 6; // a class

// The fields of one slot of the week.
struct SlotFields {
    QString day, room, start, end, teacher;
};
const std::array<SlotFields, kTeachingSlots>& slotFields();
const QStringList& weekDays(); // "Pazartesi" … "Pazar"

// The time of day meant by a typed text, as "HH:mm": "9", "930", "9.30", "09:30". Empty when it means none.
QString timeFromText(const QString& text);

// One taught hour of one class.
struct TeachingHour {
    QString className;
    QString day, room, start, end, teacher;
    int slot = 0; // 1..kTeachingSlots
};
// The slots of a class that say something, in the order of the week.
std::vector<TeachingHour> hoursOf(const FieldTexts& row);
// Who or what is at two places at once: a class, a teacher, a room. Sentences; empty: nobody. `className`,
// when given: only clashes in which that class takes part.
QStringList hourClashes(const std::vector<TeachingHour>& hours, const QString& className = {});

struct UndefinedClass {
    QString name;
    int students = 0;
};

struct TimetableStudent {
    QString number, name, surname, className;
    QString hours; // "Salı 09:00-12:00 D1; Cuma …"
};

class ClassList {
  public:
    // `title`: the screen's title, under which the right to write is stored. All must outlive it. REQUIRES:
    // databases are connected whenever a function is called.
    ClassList(DatabaseSet& databases, Dialogs& dialogs, QString title);

    std::vector<StoredRow> rows();           // by name
    std::vector<UndefinedClass> undefined(); // names that students bear and no class has; by name
    int studentCount(const QString& name);

    // Adds (`row` empty) or changes; afterwards `row` is as it is stored. Texts are trimmed, times brought
    // into their form. A new name asks and goes into the students' records with it.
    SaveOutcome save(std::optional<StoredRow>& row, FieldTexts wanted);
    bool remove(const StoredRow& row); // asks; true: the row is gone, and its students have no class

    // The hours of all classes that are taught in a room, by day, start and class.
    std::vector<TeachingHour> timetable();
    std::vector<TimetableStudent> timetableStudents(); // of those classes, by class and number

    const QStringList& fields() const { return fields_; }
    int width(const QString& field) const;
    bool mayWrite();

  private:
    StoredRows stored();
    SaveOutcome check(FieldTexts& wanted, const StoredRow* before);
    SaveOutcome checkSlot(const FieldTexts& wanted, const SlotFields& slot) const;
    bool nameTaken(const QString& name, const StoredRow* self);
    SaveOutcome refuseTaken();
    bool acceptsNewName(const QString& before, const QString& now);
    SaveOutcome write(std::optional<StoredRow>& row, const FieldTexts& wanted);
    SaveOutcome add(std::optional<StoredRow>& row, const FieldTexts& wanted);

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
    QStringList fields_;
};

} // namespace orvan
