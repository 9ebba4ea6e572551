// records/quick_registration.h — the rule of the quick form: profession, number, name and surname make a new
// student. Speaks only through Dialogs, in the system's order: write right, required fields, same number,
// numbers taken, write.
#pragma once

#include "core/clock.h"
#include "core/database_set.h"
#include "records/student_numbers.h"
#include "reference/code_lists.h"

#include <vector>

namespace orvan {

inline constexpr auto kQuickRegistrationTitle = "Hızlı Öğrenci Kayıt"; // rights title and caption

using ProfessionChoice = Profession;

struct QuickForm {
    ProfessionChoice profession;
    int registrationNo = 0;
    QString studentNo;
    QString name, surname;
    StudentNumbers proposed; // what was proposed; tells a typed number from a proposed one
};

enum class QuickSave { Saved, Refused };

class QuickRegistration {
  public:
    // All must outlive it. REQUIRES: databases are connected whenever a function is called.
    QuickRegistration(DatabaseSet& databases, Dialogs& dialogs, const Clock& clock);

    std::vector<ProfessionChoice> professions(); // group 'Bölüm' of the level database, by name
    // A form with the next numbers of that profession; names empty.
    QuickForm propose(const ProfessionChoice& profession);
    // Writes the student. Refused: the person has been told why and the form holds what he should see next
    // (fresh numbers when he took them). On Saved the form holds what was written. Database errors are thrown
    // as jet::Error.
    QuickSave save(QuickForm& form);

    int nameWidth() const; // characters
    int surnameWidth() const;
    int numberWidth() const;

  private:
    StudentNumbers numbersFor(const Profession& profession);
    bool requiredFieldsFilled(const QuickForm& form);
    bool typedNumberIsFree(const QuickForm& form);
    bool writeWhenFree(const QuickForm& form);
    bool acceptFreshNumbers(QuickForm& form);
    void write(const QuickForm& form);
    int widthOf(const char* field) const;
    DatabaseSet& databases_;
    Dialogs& dialogs_;
    const Clock& clock_;
};

} // namespace orvan
