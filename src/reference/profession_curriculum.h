// reference/profession_curriculum.h — the rule behind the window of a profession's courses: list, change, add
// from the pool, remove, order, final-exam courses. Speaks through Dialogs; each job is wholly written or not
// at all, and looks under the lock whether another station was faster.
#pragma once

#include "core/database_set.h"
#include "reference/course_pool.h"
#include "reference/curricula.h"

namespace orvan {

namespace curriculum_field {
inline const QString kYear = QStringLiteral("MeslekOgrenimYili");
inline const QString kTerm = QStringLiteral("Donem");
inline const QString kCourse = QStringLiteral("MeslekDersKodu");
inline const QString kHours = QStringLiteral("MeslekDersSaat");
inline const QString kTotalHours = QStringLiteral("MeslekToplamSaat");
inline const QString kPassMark = QStringLiteral("MeslekDersGecmeNotu");
inline const QString kPractical = QStringLiteral("MeslekUygulama");
inline const QString kTurkish = QStringLiteral("MeslekTurkce");
inline const QString kExempt = QStringLiteral("MeslekBitirmeMuaf");
inline const QString kOrder = QStringLiteral("MeslekKayitSira");
} // namespace curriculum_field

struct RowSave {
    bool saved = false;
    size_t row = 0; // of the refused value
    QString field;  // empty: the person has decided or been told, or it is saved
    QString reason;
};

class ProfessionCurriculum {
  public:
    // `title`: the screen's title, under which the right to write is stored. All must outlive it.
    // REQUIRES: databases are connected.
    ProfessionCurriculum(DatabaseSet& databases, Dialogs& dialogs, QString title);

    // By order and year; where some row has a term: by term, year and order.
    std::vector<StoredRow> rows(const CurriculumKey& key);
    static bool usesTerms(const std::vector<StoredRow>& rows);

    // Writes the changed values of rows that rows() gave; `wanted` has one entry per row.
    RowSave save(const std::vector<StoredRow>& rows, const std::vector<FieldTexts>& wanted);
    // Courses of the pool's same version, behind the others of that year and term (0: none). One that the
    // year and term has already is left out and named. Returns how many were added.
    int add(const CurriculumKey& key, const QStringList& courseCodes, int year, int term);
    // `words`: how the window shows the row. Asks; true: the row is gone.
    bool remove(const StoredRow& row, const QString& words);
    // Writes the order 1, 2, … of `wanted`, which holds every row of the key. False: told why, nothing
    // written.
    bool reorder(const CurriculumKey& key, const std::vector<StoredRow>& wanted);
    // Replaces the final-exam rows of the key's level, profession and version by one per course, after
    // asking. How many there are now; nothing when the person declines or there is no course.
    std::optional<int> makeFinalExam(const CurriculumKey& key);

    bool mayWrite();

  private:
    StoredRows stored();
    std::vector<StoredRow>
    rowsOfVersion(const CurriculumKey& key); // every track of level, profession, version
    RowSave check(const std::vector<StoredRow>& rows, const std::vector<FieldTexts>& wanted);
    FieldTexts newRow(const CurriculumKey& key, const Course& course, int year, int term) const;
    bool writeAll(const std::vector<StoredRow>& rows, const std::vector<FieldTexts>& wanted);
    bool writeOrder(const CurriculumKey& key, std::vector<StoredRow> wanted);
    int writeFinalExam(const CurriculumKey& key);
    void number(std::vector<StoredRow>& rows);
    void tellOther(); // another station has changed the rows meanwhile

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
};

} // namespace orvan
