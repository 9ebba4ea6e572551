// tools/orvanctl/demo_students.h — the invented students of one level database.
#pragma once

#include "tools/orvanctl/demo_lists.h"

namespace orvanctl {

struct DemoPlaces {
    QStringList classes;
    std::vector<Workplace> workplaces;
    std::vector<Coordinator> coordinators;
    QString schoolYear;  // "2024-2025"
    int firstPerson = 0; // serial of the first person, so that two levels never share an identity number
};

void fillStudents(orvan::Connection& level, DemoRandom& random, const DemoPlaces& places, int count);

} // namespace orvanctl
