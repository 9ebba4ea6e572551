// reference/course_pool.h — DersHavuzu: every course once in each curriculum version. Lookups, and the rule
// behind the window of the pool.
#pragma once

#include "reference/listed_records.h"

namespace orvan {

struct Course {
    QString code, name, shortName;
    int weeklyHours = 0, totalHours = 0;
    QString kind; // "K" or "M"
    bool practical = false, turkish = false;
};

// The courses of a version, by kind and name.
std::vector<Course> courses(jet::SqlSession& level, int version);
// Of the newest version that has the code: "M" or "K", empty when no version has it; and whether the course
// is practical.
QString courseKind(jet::SqlSession& level, const QString& courseCode);
bool isPractical(jet::SqlSession& level, const QString& courseCode);

inline constexpr auto kPracticeCourse = "PUYG."; // looked up by its code
inline constexpr auto kCoursePoolTable = "DersHavuzu";

class CoursePool : public ListedRecords {
  public:
    // `title`: the screen's title, under which the right to write is stored. All must outlive it.
    // REQUIRES: databases are connected.
    CoursePool(DatabaseSet& databases, Dialogs& dialogs, QString title);

    std::vector<StoredRow> rows() override; // by kind, name, version
    // Adds or changes; a new course whose code the version has already is asked about and changes that one.
    SaveOutcome save(std::optional<StoredRow>& row, FieldTexts wanted) override;
    // Asks; then the course is gone from every version.
    bool remove(const StoredRow& row) override;
    QString one() const override { return QStringLiteral("ders"); }
    QString nameOf(const FieldTexts& values) const override;
    const QStringList& fields() const override { return fields_; }
    QString versionField() const override { return QStringLiteral("ID"); }

  private:
    StoredRows stored();
    SaveOutcome check(const FieldTexts& wanted);
    SaveOutcome add(std::optional<StoredRow>& row, const FieldTexts& wanted);
    std::optional<StoredRow> find(const FieldTexts& values);
    int uses(const QString& code, const QString& version);
    bool acceptsNewCode(const StoredRow& before, const FieldTexts& wanted);

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
    QStringList fields_;
};

} // namespace orvan
