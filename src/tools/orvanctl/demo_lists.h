// tools/orvanctl/demo_lists.h — the code lists, classes, school constants and wages of the demo centre. Its
// professions are some of those with ready-made curricula.
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
    const char* trade; // what a workplace of it calls itself
};
struct DemoDefinition {
    const char* code;
    const char* name;
};
std::span<const DemoProfession> demoProfessions();
std::span<const DemoDefinition> demoDistricts();
std::span<const DemoDefinition> demoChambers();
inline constexpr int kDemoVersion = 4; // curriculum version of the demo students

struct DemoClass {
    int year = 1; // of training
    QString name; // "1-A"
    QString day;  // on which it comes to school
};

// Lists of the open level database.
void fillCodeLists(orvan::Connection& level);
// `branches` classes for each year, each with a morning and an afternoon on its day.
std::vector<DemoClass> fillClasses(orvan::Connection& level, DemoRandom& random, int years, int branches);

void fillSchool(orvan::Connection& constants, const QString& schoolYear);
// Daily minimum wages up to today: made-up figures, with one month left out. `today` ends the list.
void fillMadeUpWages(orvan::Connection& constants, QDate today);

} // namespace orvanctl
