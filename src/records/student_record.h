// records/student_record.h — one student of the open level database with all fields of his declared row, as
// texts: found by number, read, written, removed with everything that bears his number and name. Asks nobody.
#pragma once

#include "core/database_set.h"
#include "reference/stored_rows.h"

namespace orvan {

inline constexpr auto kStudentTable = "OgrenciBilgisi";

struct StudentRecord {
    std::optional<jet::RowId> id; // nothing: not stored yet
    QString storedNumber;         // Ogr_Numarasi with its blanks, as the index has it
    FieldTexts values;            // every declared field (field_texts.h)

    bool isNew() const { return !id.has_value(); }
    QString text(const char* field) const;
    QString number() const { return text("Ogr_Numarasi"); }
    QString fullName() const; // "Ayşe Işık"
};

// The date fields hold texts "dd.MM.yyyy"; their names say so.
bool isDateField(const QString& studentField);

class StudentRecords {
  public:
    // Must outlive it. REQUIRES: databases are connected whenever a function is called.
    explicit StudentRecords(DatabaseSet& databases);

    // --- finding. Numbers and texts are compared trimmed; the first row in the file where several fit.
    std::optional<StudentRecord> byNumber(const QString& number);
    std::optional<StudentRecord> byIdentityNumber(const QString& identityNo);
    std::optional<StudentRecord> byRegistrationNo(int registrationNo);
    // The next lower and next higher number in the order of the index; nothing at either end. An empty
    // record stands before the first and behind the last.
    std::optional<StudentRecord> previous(const StudentRecord& from);
    std::optional<StudentRecord> next(const StudentRecord& from);
    // The same student as the file has him now, also when he was given another number meanwhile; nothing when
    // he is gone.
    std::optional<StudentRecord> now(const StudentRecord& record);

    // --- writing. REQUIRES: a write on the level database is open; what stands against it was looked at.
    // Adds the student (`record` is new) or writes the fields in which `wanted` differs from the record; a
    // new name goes into every dependent table. Afterwards the record is as stored. Throws jet::Error.
    void write(StudentRecord& record, const FieldTexts& wanted);
    // Removes his rows in the dependent tables, then himself: those that bear number, first name and surname.
    // Returns how many rows of students went; 0 and nothing removed when there is none any more.
    size_t remove(const QString& number, const QString& name, const QString& surname);

    // Why the declared field cannot hold the text, naming it: too long, no number, no date. Empty when it
    // can.
    QString problem(const QString& field, const QString& text) const;
    QString label(const QString& field) const;
    const TableDeclaration& table() const;

  private:
    enum class Side { Below, Above };
    std::optional<StudentRecord> beside(const StudentRecord& from, Side side);
    std::optional<StudentRecord> besideWithoutIndex(const QString& number, Side side);
    std::optional<StudentRecord> first(const std::vector<jet::RowId>& rows);
    StudentRecord read(const std::vector<jet::Value>& row);
    jet::Database& level() { return databases_.level().database(); }

    DatabaseSet& databases_;
};

} // namespace orvan
