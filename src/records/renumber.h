// records/renumber.h — gives students other numbers, everywhere the old ones stand. All changes of one call
// are one write: first everything is looked at, then everything is written.
#pragma once

#include "core/database_set.h"

#include <vector>

namespace orvan {

enum class RenumberMode { Number, RegistrationNo, Both };

struct Renumbering {
    QString oldNumber, newNumber; // Kütük No; compared trimmed
    QString newProfessionCode;    // empty: the student keeps his
    int oldRegistrationNo = 0, newRegistrationNo = 0;
    RenumberMode mode = RenumberMode::Number;

    bool changesNumber() const { return mode != RenumberMode::RegistrationNo; }
    bool changesRegistrationNo() const { return mode != RenumberMode::Number; }
};

enum class RenumberFault {
    TooShort,          // the new number has less than five characters
    TooLong,           // it does not fit into a table, or the registration number is not above 0
    NoSuchStudent,     // nobody has the old number (and the old registration number, where that changes)
    NumberTaken,       // another student has the new number, or two of the list would get it
    RegistrationTaken, // the same for the registration number
    BadCharacter,      // the new number holds something that is no letter, digit or plain sign
};
struct RenumberProblem {
    size_t which = 0; // place in the list
    RenumberFault fault = RenumberFault::NoSuchStudent;
};
QString problemText(const RenumberProblem& problem, const Renumbering& renumbering); // a sentence

struct RenumberReport {
    std::vector<RenumberProblem> problems; // not empty: nothing was written
    size_t students = 0;                   // rows of students changed
    size_t dependentRows = 0;              // rows of the dependent tables changed
    QStringList photos;                    // sentences about photos that could not take the new name

    bool done() const { return problems.empty(); }
};

// Numbered: final exams, absences, marks, term averages, workplaces, the student himself. AllOfHim: then the
// insurance months and daily absences too, which would otherwise stay behind under the old number.
enum class RenumberReach { Numbered, AllOfHim };

// What stands against the list, without writing: numbers that the list itself sets free count as free, so
// numbers can be swapped. At most one problem for each entry.
std::vector<RenumberProblem> renumberProblems(jet::Database& level, const std::vector<Renumbering>& list);

// Renumbers all of the list in one write, or none (see report.problems, looked at again under the lock).
// Where another student has the same old number, only rows of the renumbered one's name go with him. The
// photo data\fotograf\NUMBER.jpg takes the new number afterwards. Throws jet::Error.
RenumberReport renumberStudents(DatabaseSet& databases, const std::vector<Renumbering>& list,
                                RenumberReach reach = RenumberReach::AllOfHim);

// The same inside a write that is open already: REQUIRES a WriteBatch on `level`. Photos stay as they are:
// call carryPhotos() when the write has been committed.
RenumberReport renumberUnderLock(jet::Database& level, const std::vector<Renumbering>& list,
                                 RenumberReach reach);
QStringList carryPhotos(const ProgramFolder& folder, const std::vector<Renumbering>& list);

// One student in the numbered tables; false, and nothing written, when something stands against it.
bool renumberStudent(DatabaseSet& databases, const Renumbering& renumbering);

} // namespace orvan
