// records/record_book.h — the students of a level as texts, and what their codes must be found in: what the
// checks of records look at.
#pragma once

#include "core/clock.h"
#include "core/database_set.h"

#include <array>
#include <set>
#include <span>
#include <vector>

namespace orvan {

// The fields that checks look at; the order of kBookFields.
enum class BookField {
    Number,
    RegistrationNo,
    Name,
    Surname,
    IdentityNo,
    Password,
    Profession,
    MainProfession,
    Curriculum,
    ClassName,
    LawArticle,
    Workplace,
    Sex,
    FatherName,
    MobilePhone,
    RegistrationDate,
    WorkStart,
    WorkEnd,
    ContractStart,
    ContractEnd,
    InsuranceStart,
    InsuranceLastPaid,
    InsuranceStopped,
    BirthDate,
    RegistryBirthDate,
    IdentityCardDate,
    GuardianBirthDate,
    ExamDate,
    CertificateDate,
    LeavingDocumentDate,
    Count
};
std::span<const BookField> dateFields(); // those that hold dates

class BookStudent {
  public:
    const QString& operator[](BookField field) const { return texts_[static_cast<size_t>(field)]; }
    bool has(BookField field) const { return !(*this)[field].isEmpty(); }
    std::optional<QDate> date(BookField field) const { return dateFromText((*this)[field]); }
    QString professionName; // empty when the code has none

  private:
    friend struct RecordBook;
    std::array<QString, static_cast<size_t>(BookField::Count)> texts_; // without blanks at both ends
};

struct RecordBook {
    std::vector<BookStudent> students;     // by number
    std::set<QString> mainProfessions;     // codes
    std::set<QString> classes, workplaces; // names in Turkish capitals
    QDate today;

    // Reads students and codes of the open level and the workplaces. Throws jet::Error.
    static RecordBook read(DatabaseSet& databases, QDate today);
};

QString bookLabel(const Schema& schema, BookField field); // words of the field's declaration

} // namespace orvan
