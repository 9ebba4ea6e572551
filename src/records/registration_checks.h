// records/registration_checks.h — what the registration forms look at before they save: rules between fields,
// who else has a number, a name or a password. Reads, asks nobody.
#pragma once

#include "records/student_numbers.h"
#include "records/student_record.h"
#include "reference/code_lists.h"

#include <QDate>

namespace orvan {

inline constexpr qsizetype kPasswordLength = 4;

// --- rules between fields of one student; a sentence for a person, empty when all is well
QString workDatesFault(const FieldTexts& student);    // a leaving date needs a start date
QString lastPaymentFault(const FieldTexts& student);  // a last payment date needs a leaving date
QString passwordLengthFault(const QString& password); // empty is no password
// Article 16 with a workplace needs the date of starting work. `article`: the words of the law article.
QString lawArticleFault(const FieldTexts& student, const QString& article);
QString requiredFault(const FieldTexts& student);     // number, name, surname
QString ageOn(QDate today, const QString& birthDate); // whole years; empty when it is no date before today

// --- other students of the open level database
class OtherStudents {
  public:
    explicit OtherStudents(DatabaseSet& databases) : databases_(databases) {}

    // The student of another number who holds the identity number.
    std::optional<StudentRecord> withIdentityNumber(const QString& identityNo, const QString& ownNumber);
    bool passwordTaken(const QString& password, const QString& ownNumber);
    // Somebody of that first name and surname, written together, is in another profession.
    bool namesakeInOtherProfession(const FieldTexts& student);
    bool hasNumber(const QString& number, const QString& curriculum); // number and curriculum
    bool hasRegistrationNo(int registrationNo);
    // The next numbers of the profession.
    StudentNumbers freeNumbers(const Profession& profession);

  private:
    DatabaseSet& databases_;
};

// "12345678901 Tc.Kimlik Numarası ile 110100001 numarasına Ayşe Işık adlı öğrenci kayıtlı bulunmaktadır."
QString identityTakenText(const QString& identityNo, const StudentRecord& holder);
QString sameNumberText(const QString& number);
QString passwordTakenText();
QString numbersTakenQuestion(const StudentNumbers& fresh);

} // namespace orvan
