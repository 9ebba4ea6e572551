// records/related_rows.h — what the other tables hold of one student, for showing beside his record.
#pragma once

#include "core/database_set.h"
#include "records/student_record.h"

#include <QVariant>

namespace orvan {

struct RelatedField {
    const char* field;
    bool number = false; // compared by value
};
struct RelatedList {
    const char* name;  // object name
    const char* title; // words a person reads
    const char* table;
    std::vector<RelatedField> fields;
};

// Earlier workplaces, marks, absences, final exams.
const std::vector<RelatedList>& relatedLists();
// The rows of the list that bear the student's number, first name and surname, a cell for each field.
std::vector<std::vector<QVariant>> relatedRows(DatabaseSet& databases, const RelatedList& list,
                                               const StudentRecord& student);

} // namespace orvan
