// records/student_index.h — the students of one level database as a light list in memory, to find one while a
// person types: by number, name, identity number or registration number. Loaded in one walk; who holds it
// loads it again when students have changed.
#pragma once

#include "jet/database.h"

#include <QString>
#include <vector>

namespace orvan {

struct StudentKey {
    QString number, name, surname, identityNo, registrationNo;
    QString searched; // all of it in lower case

    QString shown() const; // "110100001  Ayşe Işık"
};

class StudentIndex {
  public:
    void load(jet::Database& level); // in the order of first name, surname
    size_t size() const { return keys_.size(); }

    // The students in whom every word of `typed` occurs, Turkish rules: first those whose number, identity or
    // registration number it is, then those with a word that begins so, then the others; at most `most`. None
    // for blanks.
    std::vector<const StudentKey*> find(const QString& typed, size_t most) const;

  private:
    std::vector<StudentKey> keys_;
};

} // namespace orvan
