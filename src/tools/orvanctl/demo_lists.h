// tools/orvanctl/demo_lists.h — the code lists, courses, classes, workplaces and teachers of the demo centre.
#pragma once

#include "tools/orvanctl/demo_people.h"

#include "core/database_set.h"

#include <QDate>
#include <vector>

namespace orvanctl {

struct DemoProfession {
    const char* code;     // four characters
    const char* mainCode; // main profession
    const char* name;
};
std::span<const DemoProfession> demoProfessions();
inline constexpr int kDemoVersion = 4; // curriculum version of the demo students

struct Workplace {
    QString name, address, master, masterPhone;
    QString chamber;
};
struct Coordinator {
    QString name, surname;
};

// Lists of the open level database.
void fillCodeLists(orvan::Connection& level);
void fillCourses(orvan::Connection& level, const QString& levelName);
QStringList fillClasses(orvan::Connection& level, DemoRandom& random); // names, "1-A" …

std::vector<Workplace> fillWorkplaces(orvan::Connection& workplaces, DemoRandom& random, int count);
std::vector<Coordinator> fillCoordinators(orvan::Connection& coordinators, DemoRandom& random, int count);
void fillSchool(orvan::Connection& constants, const QString& schoolYear);
// Daily minimum wages up to today: made-up figures, with one month left out. `today` ends the list.
void fillMadeUpWages(orvan::Connection& constants, QDate today);

} // namespace orvanctl
