// records/registration.h — the rule of the registration forms: a new student, the save in its fixed order of
// checks, the delete. Speaks only through Dialogs. Every refusal leaves the form as it was typed.
//   Save: rules between fields, article 16, write right, required fields, identity number, same student,
//   archive, numbers taken meanwhile, write with the new name in every dependent table (one write), last the
//   `afterSave` of the final examinations.
#pragma once

#include "records/registration_checks.h"

#include <functional>

namespace orvan {

class Clock;

inline constexpr auto kRegistrationTitle = "Öğrenci Bilgileri Kayıt"; // rights title and caption

// What stands on the form.
struct RegistrationForm {
    StudentRecord stored;    // as read; new: not stored yet
    FieldTexts values;       // as they stand on the form
    StudentNumbers proposed; // of a new record; tells a typed number from a proposed one

    QString text(const char* field) const;
};

struct RegistrationResult {
    enum What {
        Saved,
        Refused,  // nothing written; the form stays (a new record may have taken fresh numbers)
        Replaced, // nothing written; the form holds what another station has saved
        Dropped,  // nothing written; the student is gone and so is the form
    };
    What what = Refused;
    QString field;  // where the caret belongs; empty: nowhere in particular
    QString reason; // short words for beside that field
};

class Registration {
  public:
    using AfterSave = std::function<void(const StudentRecord&)>;
    // `title`: the screen's, under which the right to write is stored. All must outlive it. REQUIRES:
    // databases are connected whenever a function is called. `afterSave` runs last, for the saved student.
    Registration(DatabaseSet& databases, Dialogs& dialogs, const Clock& clock, QString title,
                 AfterSave afterSave = {});

    // A form with the next numbers of the profession; nothing, and a message, when none is chosen.
    std::optional<RegistrationForm> startNew(const Profession& profession);
    static RegistrationForm formOf(StudentRecord stored);

    // On Saved the form holds what was written. Database errors are thrown as jet::Error; then nothing was
    // written.
    RegistrationResult save(RegistrationForm& form);
    // Asks, then deletes the student with all that bears his number and name, and his photo.
    bool remove(const RegistrationForm& form);
    // Why the field may not stay as it is, when the person leaves it; empty when it may.
    QString fault(const RegistrationForm& form, const QString& field);

    StudentRecords& records() { return records_; }

  private:
    using Result = RegistrationResult;
    enum class Obstacle { None, Numbers, Identity, Password, Changed, Gone };
    bool edited(const RegistrationForm& form, std::initializer_list<const char*> fields) const;
    Result refuse(const QString& text, const char* field, const QString& reason);
    std::optional<Result> checkFields(const RegistrationForm& form);
    std::optional<Result> checkLawArticle(const RegistrationForm& form);
    std::optional<Result> checkIdentityNumber(const RegistrationForm& form);
    std::optional<Result> checkSameStudent(const RegistrationForm& form);
    bool acceptsArchive();
    Result writeWhenFree(RegistrationForm& form);
    Obstacle lookAndWrite(RegistrationForm& form, std::optional<StudentRecord>& theirs);
    bool numbersTaken(const RegistrationForm& form);
    bool acceptFreshNumbers(RegistrationForm& form);
    std::optional<Result> settleChange(RegistrationForm& form, const StudentRecord& theirs);
    std::optional<Result> settleGone(RegistrationForm& form);
    Result identityTaken(const RegistrationForm& form, const StudentRecord& holder);
    QString lawArticle(const RegistrationForm& form);

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    const Clock& clock_;
    QString title_;
    AfterSave afterSave_;
    StudentRecords records_;
    OtherStudents others_;
};

} // namespace orvan
