// records/bulk_renumber.h — new registration and student numbers for many students at once: who they are, the
// numbers in sequence, what stands against a typed number, the one write. Speaks only through Dialogs.
#pragma once

#include "records/renumber.h"
#include "reference/code_lists.h"

#include <vector>

namespace orvan {

inline constexpr auto kBulkRenumberTitle = "Toplu Kayıt ve Kütük Numarası Düzenleme"; // rights title

struct RenumberRow {
    QString number; // Kütük No
    int registrationNo = 0;
    QString name, surname, className, professionCode;
    QString registrationDate; // dd.MM.yyyy, as stored
};
enum class RenumberOrder { ByNumber, ByRegistrationNo, ByName, ByRegistrationDate };

// A student's new numbers; equal to the old ones where nothing is to change.
struct NewNumbers {
    QString number;
    int registrationNo = 0;
};

struct BulkRenumberResult {
    bool saved = false;
    std::vector<RenumberProblem> problems; // `which` is the place in the rows given
    size_t students = 0, dependentRows = 0;
};

class BulkRenumber {
  public:
    // Must outlive it. REQUIRES: databases are connected whenever a function is called.
    BulkRenumber(DatabaseSet& databases, Dialogs& dialogs) : databases_(databases), dialogs_(dialogs) {}

    std::vector<Profession> professions(); // each code once
    // Students of a profession; an empty code: all.
    std::vector<RenumberRow> students(const QString& professionCode, RenumberOrder order);

    // Numbers in the order of the rows: each profession counts its own serials from `firstSerial` on, all of
    // them the registration numbers from `firstRegistrationNo` on. 0: that number stays.
    std::vector<NewNumbers> inSequence(const std::vector<RenumberRow>& rows, int firstSerial,
                                       int firstRegistrationNo);
    // Why the row cannot have that student number, as a sentence; empty when nothing in the number itself
    // stands against it. Whether it is free is looked at when saving.
    static QString numberFault(const RenumberRow& row, const QString& number);

    // Write right, what stands against the numbers, the question with the count, the write. Nothing was
    // written when there are problems or the person declines. REQUIRES: as many new numbers as rows.
    BulkRenumberResult save(const std::vector<RenumberRow>& rows, const std::vector<NewNumbers>& wanted);

    int numberWidth() const;

  private:
    DatabaseSet& databases_;
    Dialogs& dialogs_;
};

} // namespace orvan
