// records/registration_absences.h — absences that the registration forms delete: those of one term, and those
// of a student who left and starts again (with his leaving reason and date). Speaks only through Dialogs.
#pragma once

#include "records/student_record.h"

namespace orvan {

class RegistrationAbsences {
  public:
    // `title`: the screen's, under which the right to write is stored. All must outlive it. REQUIRES:
    // databases are connected.
    RegistrationAbsences(DatabaseSet& databases, Dialogs& dialogs, QString title);

    std::vector<int> terms(const StudentRecord& student); // that have absences, in order
    // Deletes the absences of one term, which is asked for when there are several. True: something was
    // written.
    bool removeTerm(const StudentRecord& student);
    // Deletes the absences of the repeated term and clears leaving reason and leaving date.
    bool startAgain(const StudentRecord& student);

  private:
    bool mayWrite();
    // The term to work on: the only one, or the one that the person takes; nothing when he cancels.
    std::optional<int> chooseTerm(const std::vector<int>& terms, const QString& text);
    void removeRows(const StudentRecord& student, int term);

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
};

} // namespace orvan
