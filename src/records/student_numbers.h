// records/student_numbers.h — how registration numbers ("Kayıt No") and student numbers ("Kütük No") are
// given out. Reads outside any transaction: two users may be given the same; registration checks again when
// it saves.
#pragma once

#include "jet/sql/session.h"

#include <QString>

namespace orvan {

struct StudentNumbers {
    int registrationNo = 0; // highest + 1; 1 in an empty table
    QString studentNo;      // profession code + serial from character 5
};

struct NumberingOptions {
    int serialLength = 0; // the serial is padded to at least this many digits; 0 = not set
};

NumberingOptions numberingOptions(jet::SqlSession& constants); // KutukHane of the school constants
int nextRegistrationNo(jet::SqlSession& level);
// The highest serial of the profession plus one, at its width; a number that a student of another profession
// holds already is passed over.
QString nextStudentNo(jet::SqlSession& level, const QString& professionCode,
                      const NumberingOptions& options = {});
StudentNumbers nextNumbers(jet::SqlSession& level, const QString& professionCode,
                           const NumberingOptions& options = {});

} // namespace orvan
