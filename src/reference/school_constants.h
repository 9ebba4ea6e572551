// reference/school_constants.h — SabitBilgiler, the one row of the school's constants: read whole, saved with
// checks and only the fields that were changed. An empty table is legal: each reader has its own defaults.
#pragma once

#include "core/database_set.h"
#include "reference/stored_rows.h"

namespace orvan {

inline constexpr auto kConstantsTable = "SabitBilgiler";

class SchoolConstants {
  public:
    bool exists = false; // the table has its row
    FieldTexts values;   // every declared field, trimmed; empty without a row

    QString text(const char* field) const;
    int number(const char* field, int otherwise = 0) const; // `otherwise` when it holds no number
    double decimal(const char* field, double otherwise = 0) const;
    bool yes(const char* field) const;
};

SchoolConstants readConstants(Connection& constants, const Schema& schema);
// The same, and the session takes the school's name and, while none is chosen, its current year.
SchoolConstants readConstants(DatabaseSet& databases);

// The record behind the two constants screens. All must outlive it. REQUIRES: databases are connected.
class ConstantsRecord {
  public:
    ConstantsRecord(DatabaseSet& databases, Dialogs& dialogs, QString title);
    const SchoolConstants& load();
    const SchoolConstants& loaded() const { return loaded_; }
    // Texts of the fields on the screen; the others stay as they are. Adds the row when there is none.
    SaveOutcome save(FieldTexts wanted);
    bool mayWrite();
    int width(const QString& field) const;

  private:
    SaveOutcome check(const FieldTexts& wanted);
    RowChange store(FieldTexts wanted);
    StoredRows stored() const;

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
    SchoolConstants loaded_;
    std::optional<StoredRow> row_;
};

// --- provinces and districts
struct Place {
    QString code, name;
};
std::vector<Place> provinces(jet::SqlSession& constants); // by name
std::vector<Place> districtsOf(jet::SqlSession& constants, const QString& provinceCode);

} // namespace orvan
