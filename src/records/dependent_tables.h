// records/dependent_tables.h — which tables of a level database repeat a student's number and name, and in
// which fields. Renumbering, a change of name and deletion go through these lists.
#pragma once

#include "core/values.h"

#include <span>

namespace orvan {

struct DependentTable {
    const char* table;
    const char* number;
    const char* name; // nullptr: the table has the number alone
    const char* surname;
};

// In the order in which a new number is carried into them: final exams, absences, marks, term averages,
// workplaces.
std::span<const DependentTable> numberedTables();
// What goes by number, name and surname, or by number alone, beside these: insurance months, daily absences.
std::span<const DependentTable> dayTables();
// In the order in which a new name is carried into them: insurance months, absences, marks, workplaces, final
// exams, term averages.
std::span<const DependentTable> namedTables();

// Rows of the table that bear the number (compared trimmed) — and, when `ofThisName`, first name and surname
// too, where the table has them. A table that the database lacks has no rows.
struct StudentName {
    QString name, surname;
    bool operator==(const StudentName&) const = default;
};
std::vector<jet::RowId> dependentRows(jet::Database& level, const DependentTable& table,
                                      const QString& number, const StudentName* ofThisName = nullptr);

// Carries a new name into every dependent table: rows of that number, name and surname. Returns how many
// rows. REQUIRES: a WriteBatch on `level` is open.
size_t carryName(jet::Database& level, const QString& number, const StudentName& from, const StudentName& to);

} // namespace orvan
