// records/registration_choices.h — what the choice fields of the registration forms offer: fixed lists, coded
// definitions, classes, teachers, workplaces of the register. Reads only.
#pragma once

#include "core/database_set.h"

#include <QStringList>
#include <vector>

namespace orvan {

struct FormChoice {
    QString code; // what is stored
    QString text; // what is shown; unique in its list
};

// Fields of a student that are chosen from a list, in the order of the declaration of the lists.
const QStringList& chosenFields();
// The choices of one of them. REQUIRES: databases are connected.
std::vector<FormChoice> choicesOf(DatabaseSet& databases, const QString& field);
// Professions by name; the code is "1101/4" (profession and curriculum).
std::vector<FormChoice> professionChoices(DatabaseSet& databases);
// What a stored code means to the list: sex and marital status in capitals.
QString listCode(const QString& field, const QString& stored);

// A workplace of the register as the form takes it over.
struct WorkplaceFacts {
    QString address1, address2;
    struct Supervisor {
        QString name, mobile;
    };
    std::vector<Supervisor> supervisors; // master-instructors, in their order; without empty ones
};
std::optional<WorkplaceFacts> workplaceFacts(DatabaseSet& databases, const QString& name);

} // namespace orvan
