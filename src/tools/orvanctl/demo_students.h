// tools/orvanctl/demo_students.h — the invented students of one level database, with their earlier
// workplaces.
#pragma once

#include "tools/orvanctl/demo_workplaces.h"

namespace orvanctl {

enum class DemoLevel { Journeyman, Master, Instructor };

struct DemoPlaces {
    std::vector<Workplace> workplaces;        // their counts grow with the students
    std::map<QString, int> studentsOfTeacher; // by the coordinator's full name
    QString schoolYear;                       // "2024-2025"
    QDate today;                              // nothing happens after it
    int firstPerson = 0; // serial of the first person, so that two levels never share an identity number
};

// Numbers of the students made, in their order.
QStringList fillStudents(orvan::Connection& level, DemoLevel kind, DemoRandom& random, DemoPlaces& places,
                         const std::vector<DemoClass>& classes, int count);

} // namespace orvanctl
