// tools/orvanctl/demo_people.h — invented people with Turkish names.
#pragma once

#include "tools/orvanctl/demo_random.h"

#include <QDate>
#include <QString>

namespace orvanctl {

struct Person {
    bool girl = false;
    QString name, surname, father, mother;
    QString identityNo; // right check digits
    QDate birth;
    QString birthPlace, street, phone;
};

// First serials of those who are no students: no two people share an identity number.
inline constexpr int kFirstTeacher = 1'000'000;
inline constexpr int kFirstClassTeacher = 1'100'000;
inline constexpr int kFirstOwner = 1'200'000; // of workplaces, and their supervisors

// `serial` makes the identity number unique; `birthYear` is the year of birth.
Person makePerson(DemoRandom& random, int serial, int birthYear);
QString fullName(const Person& person);

} // namespace orvanctl
