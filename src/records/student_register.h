// records/student_register.h — the register of students (kütük defteri): what is printed of each student, as
// labels and the texts that people read. Two queries, whatever the number of students.
#pragma once

#include "records/bulk_edit.h"

namespace orvan {

struct RegisterLine {
    QString label, text;
};

struct RegisterEntry {
    QString number, name; // of the student
    QString sex;          // "E", "K"
    QString profession, className, stage, registered, identityNo, father, birthPlace, birthDate, workplace;
    std::vector<std::vector<RegisterLine>> columns; // of the printed block, side by side; no empty texts
};

// The students of the selection, by number.
std::vector<RegisterEntry> studentRegister(jet::SqlSession& level, const BulkSelection& selection);

} // namespace orvan
