// tools/orvanctl/demo_workplaces.h — the invented workplaces with their supervisors, and the teachers who
// visit them.
#pragma once

#include "tools/orvanctl/demo_lists.h"

#include <map>

namespace orvanctl {

struct Supervisor {
    QString name, phone;
    int girls = 0, boys = 0; // students he trains
};
struct Workplace {
    jet::RowId row;
    size_t profession = 0; // place in demoProfessions()
    QString name, address;
    std::vector<Supervisor> supervisors;
    QString coordinator; // full name of the teacher who visits it
};

// Every profession has some. Each workplace is given to a teacher of its profession, or to any where there is
// none.
std::vector<Workplace> fillWorkplaces(orvan::Connection& workplaces, DemoRandom& random, int count,
                                      const std::vector<QString>& coordinators);
// Full names, in the order of the professions they teach.
std::vector<QString> fillCoordinators(orvan::Connection& coordinators, DemoRandom& random, int count);
// The numbers of students, when these are known.
void writeStudentCounts(orvan::Connection& workplaces, const std::vector<Workplace>& places);
void writeStudentCounts(orvan::Connection& coordinators, const std::map<QString, int>& students);

} // namespace orvanctl
