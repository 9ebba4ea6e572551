// records/identity_change.h — another number, name or surname for one student, carried into every table that
// repeats them. Speaks only through Dialogs.
#pragma once

#include "core/database_set.h"
#include "reference/code_lists.h"

#include <optional>

namespace orvan {

inline constexpr auto kIdentityChangeTitle = "Öğrenci Ad, Soyad ve Numara Değiştirme"; // rights title

// What a student is known by.
struct StudentIdentity {
    QString number;
    int registrationNo = 0;
    QString name, surname;
    QString professionCode;
    int curriculum = 0; // DersID
    bool operator==(const StudentIdentity&) const = default;
};

struct IdentityChangeResult {
    bool saved = false;
    QString field = {};       // of the refused value: "number", "registrationNo", "name", "surname"
    QString reason = {};      // empty: the person has decided, or has been told
    size_t changedRows = 0;   // rows of the dependent tables
    StudentIdentity now = {}; // as stored, when saved
};

class IdentityChange {
  public:
    // All must outlive it. REQUIRES: databases are connected whenever a function is called.
    IdentityChange(DatabaseSet& databases, Dialogs& dialogs) : databases_(databases), dialogs_(dialogs) {}

    std::vector<StudentIdentity> students(); // of the open level, by number
    // Professions of the student's curriculum: a change of profession does not change the curriculum.
    std::vector<Profession> professionsFor(const StudentIdentity& student);
    QString proposedNumber(const QString& professionCode); // the next one of that profession

    // Write right, required fields, what stands against the numbers, the question; then looks again and
    // writes under one lock. `before` must still be as it was read. Throws jet::Error.
    IdentityChangeResult save(const StudentIdentity& before, const StudentIdentity& wanted);

    int widthOf(const char* field) const; // characters of a field of OgrenciBilgisi

  private:
    IdentityChangeResult write(const StudentIdentity& before, const StudentIdentity& wanted);
    std::optional<jet::RowId> rowOf(const StudentIdentity& student);
    DatabaseSet& databases_;
    Dialogs& dialogs_;
};

} // namespace orvan
