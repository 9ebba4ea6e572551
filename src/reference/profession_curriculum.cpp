// reference/profession_curriculum.cpp — see profession_curriculum.h.
#include "reference/profession_curriculum.h"

#include "core/turkish_text.h"
#include "core/users.h"
#include "core/values.h"
#include "reference/definition_groups.h"
#include "reference/field_texts.h"

#include <algorithm>
#include <set>

namespace orvan {

using namespace curriculum_field;

namespace {

const QString kVersion = QStringLiteral("ID");
const QString kProfession = QStringLiteral("MeslekKodu");
const QString kLevel = QStringLiteral("MeslekOgrenciTuru");
const QString kTrack = QStringLiteral("MeslekOgrenimDurumu");
const QString kInForce = QStringLiteral("MeslekYururlulukTarihi");
const QString kWarning = QStringLiteral("Uyarı");
const QString kYes = QStringLiteral("1"), kNo = QStringLiteral("0");
constexpr int kUsualPassMark = 50;
constexpr int kFirstYear = 1, kLastYear = 9;
constexpr auto kIndex = "indMeslek";

const QStringList& allFields() {
    static const QStringList fields{kVersion,   kProfession, kLevel,  kTrack,      kYear,
                                    kTerm,      kCourse,     kHours,  kTotalHours, kPassMark,
                                    kPractical, kTurkish,    kExempt, kOrder,      kInForce};
    return fields;
}

int numberIn(const StoredRow& row, const QString& field) { return row.values.at(field).toInt(); }

bool sameCourse(const FieldTexts& a, const FieldTexts& b) {
    return a.at(kYear).toInt() == b.at(kYear).toInt() && a.at(kTerm).toInt() == b.at(kTerm).toInt() &&
           sameTurkish(a.at(kCourse), b.at(kCourse));
}

void sortRows(std::vector<StoredRow>& rows) {
    const bool terms = ProfessionCurriculum::usesTerms(rows);
    const std::vector<QString> fields =
        terms ? std::vector<QString>{kTerm, kYear, kOrder} : std::vector<QString>{kOrder, kYear};
    std::stable_sort(rows.begin(), rows.end(), [&](const StoredRow& a, const StoredRow& b) {
        for (const QString& field : fields)
            if (numberIn(a, field) != numberIn(b, field)) return numberIn(a, field) < numberIn(b, field);
        return false;
    });
}

} // namespace

ProfessionCurriculum::ProfessionCurriculum(DatabaseSet& databases, Dialogs& dialogs, QString title)
    : databases_(databases), dialogs_(dialogs), title_(std::move(title)) {}

bool ProfessionCurriculum::usesTerms(const std::vector<StoredRow>& rows) {
    return std::any_of(rows.begin(), rows.end(),
                       [](const StoredRow& row) { return numberIn(row, kTerm) > 0; });
}

bool ProfessionCurriculum::mayWrite() {
    return orvan::mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_);
}

StoredRows ProfessionCurriculum::stored() {
    return {databases_.level().database(), databases_.schema().table(kCurriculumTable), allFields(),
            allFields()};
}

std::vector<StoredRow> ProfessionCurriculum::rowsOfVersion(const CurriculumKey& key) {
    auto rows =
        stored().having(kIndex, {{kVersion, QString::number(key.version)}, {kProfession, key.profession}});
    std::erase_if(rows, [&](const StoredRow& row) { return row.values.at(kLevel) != key.level; });
    return rows;
}

std::vector<StoredRow> ProfessionCurriculum::rows(const CurriculumKey& key) {
    auto rows = rowsOfVersion(key);
    std::erase_if(rows, [&](const StoredRow& row) { return row.values.at(kTrack) != key.track; });
    sortRows(rows);
    return rows;
}

void ProfessionCurriculum::tellOther() {
    dialogs_.message(
        QStringLiteral("Bu mesleğin dersleri, siz açtıktan sonra başka bir bilgisayarda "
                       "değiştirildi; liste yenilendi.\nDeğişikliğinizi yeni listede tekrarlayınız."),
        kWarning, Icon::Warning);
}

// The first value that cannot stand, then a course that would stand twice.
RowSave ProfessionCurriculum::check(const std::vector<StoredRow>& rows,
                                    const std::vector<FieldTexts>& wanted) {
    struct Limit {
        const QString& field;
        int least, most;
    };
    const Limit limits[] = {{kYear, kFirstYear, kLastYear},
                            {kTerm, 0, 9},
                            {kHours, 0, 99},
                            {kTotalHours, 0, 9999},
                            {kPassMark, 0, 100}};
    const StoredRows table = stored();
    for (size_t i = 0; i < wanted.size(); ++i) {
        const FieldTexts changed = changedTexts(rows[i].values, wanted[i]);
        for (const auto& [field, text] : changed)
            if (const QString problem = fieldProblem(table.field(field), text); !problem.isEmpty())
                return {false, i, field, problem};
        for (const Limit& limit : limits) {
            if (!changed.contains(limit.field)) continue;
            const QString text = changed.at(limit.field);
            const bool mayBeEmpty = limit.field != kYear;
            if ((text.isEmpty() && mayBeEmpty) ||
                (!text.isEmpty() && text.toInt() >= limit.least && text.toInt() <= limit.most))
                continue;
            return {false, i, limit.field,
                    QStringLiteral("%1 %2 ile %3 arasında olmalı.")
                        .arg(fromUtf8(table.field(limit.field).label))
                        .arg(limit.least)
                        .arg(limit.most)};
        }
        if (changed.contains(kYear) || changed.contains(kTerm))
            for (size_t other = 0; other < wanted.size(); ++other)
                if (other != i && sameCourse(wanted[i], wanted[other]))
                    return {false, i, changed.contains(kYear) ? kYear : kTerm,
                            QStringLiteral("Bu ders o yıl ve dönemde zaten var.")};
    }
    return {true, 0, {}, {}};
}

RowSave ProfessionCurriculum::save(const std::vector<StoredRow>& rows,
                                   const std::vector<FieldTexts>& wanted) {
    if (!mayWrite()) return {};
    if (const RowSave checked = check(rows, wanted); !checked.saved) return checked;
    if (!writeAll(rows, wanted)) {
        tellOther();
        return {};
    }
    return {true, 0, {}, {}};
}

// False, and nothing written, when another station has touched one of the rows: every field is a key, so that
// it counts as gone.
bool ProfessionCurriculum::writeAll(const std::vector<StoredRow>& rows,
                                    const std::vector<FieldTexts>& wanted) {
    jet::WriteScope scope(databases_.level().database().pages());
    StoredRows table = stored();
    for (size_t i = 0; i < rows.size(); ++i) {
        if (changedTexts(rows[i].values, wanted[i]).empty()) continue;
        StoredRow row = rows[i];
        if (table.change(row, wanted[i], Clash::AnyField, dialogs_) != RowChange::Saved) return false;
    }
    scope.commit();
    return true;
}

FieldTexts ProfessionCurriculum::newRow(const CurriculumKey& key, const Course& course, int year,
                                        int term) const {
    return {{kVersion, QString::number(key.version)},
            {kProfession, key.profession},
            {kLevel, key.level},
            {kTrack, key.track},
            {kYear, QString::number(year)},
            {kTerm, term > 0 ? QString::number(term) : QString()},
            {kCourse, course.code},
            {kHours, QString::number(course.weeklyHours)},
            {kTotalHours, QString::number(course.totalHours)},
            {kPassMark, QString::number(kUsualPassMark)},
            {kPractical, course.practical ? kYes : kNo},
            {kTurkish, course.turkish ? kYes : kNo},
            {kExempt, kNo},
            {kInForce, versionInForceFrom(key.version)}};
}

// Gives the rows the order in which they stand. REQUIRES: inside a write.
void ProfessionCurriculum::number(std::vector<StoredRow>& rows) {
    StoredRows table = stored();
    int order = 0;
    for (StoredRow& row : rows)
        if (const QString text = QString::number(++order); row.values.at(kOrder) != text)
            table.change(row, {{kOrder, text}}, Clash::SameField, dialogs_);
}

int ProfessionCurriculum::add(const CurriculumKey& key, const QStringList& courseCodes, int year, int term) {
    if (key.profession.isEmpty()) {
        dialogs_.message(QStringLiteral("Ders eklemek için önce mesleği seçiniz."), kWarning, Icon::Warning);
        return 0;
    }
    if (courseCodes.isEmpty()) {
        dialogs_.message(QStringLiteral("Eklenecek dersi ders havuzundan seçiniz."), kWarning, Icon::Warning);
        return 0;
    }
    if (!mayWrite()) return 0;
    const auto pool = courses(databases_.level().sql(), key.version);
    QStringList there;
    int added = 0;
    {
        jet::WriteScope scope(databases_.level().database().pages());
        std::vector<StoredRow> present = rows(key);
        for (const QString& code : courseCodes) {
            const auto course =
                std::find_if(pool.begin(), pool.end(), [&](const Course& each) { return each.code == code; });
            if (course == pool.end()) continue; // deleted from the pool meanwhile
            const FieldTexts values = newRow(key, *course, year, term);
            if (std::any_of(present.begin(), present.end(),
                            [&](const StoredRow& row) { return sameCourse(row.values, values); })) {
                there << QStringLiteral("%1 - %2").arg(course->code, course->name);
                continue;
            }
            const auto behind = std::find_if(present.rbegin(), present.rend(), [&](const StoredRow& row) {
                return std::pair(numberIn(row, kYear), numberIn(row, kTerm)) <= std::pair(year, term);
            });
            present.insert(behind.base(), stored().add(values));
            ++added;
        }
        number(present);
        scope.commit();
    }
    if (!there.isEmpty())
        dialogs_.message(QStringLiteral("%1. yılda zaten bulunan dersler eklenmedi:\n\n%2")
                             .arg(year)
                             .arg(there.join(QLatin1Char('\n'))),
                         QStringLiteral("Açıklama"));
    return added;
}

bool ProfessionCurriculum::remove(const StoredRow& row, const QString& words) {
    if (!mayWrite()) return false;
    if (!dialogs_.confirms(
            words + QStringLiteral(" satırındaki bilgi silinecek.\nDevam etmek istiyor musunuz?"), kWarning))
        return false;
    if (!stored().remove(row)) tellOther();
    return true;
}

bool ProfessionCurriculum::reorder(const CurriculumKey& key, const std::vector<StoredRow>& wanted) {
    if (!mayWrite()) return false;
    if (writeOrder(key, wanted)) return true;
    tellOther();
    return false;
}

// False, and nothing written, when the rows are no longer those of `wanted`.
bool ProfessionCurriculum::writeOrder(const CurriculumKey& key, std::vector<StoredRow> wanted) {
    jet::WriteScope scope(databases_.level().database().pages());
    std::map<jet::RowId, FieldTexts> present;
    for (const StoredRow& row : rows(key))
        present[row.id] = row.values;
    if (present.size() != wanted.size()) return false;
    for (const StoredRow& row : wanted)
        if (const auto found = present.find(row.id); found == present.end() || found->second != row.values)
            return false;
    number(wanted);
    scope.commit();
    return true;
}

std::optional<int> ProfessionCurriculum::makeFinalExam(const CurriculumKey& key) {
    const auto refuse = [this](const QString& words) {
        dialogs_.message(words, kWarning, Icon::Warning);
        return std::optional<int>();
    };
    if (key.profession.isEmpty())
        return refuse(QStringLiteral("Bitirme derslerini oluşturmak için önce mesleği seçiniz."));
    if (!mayWrite()) return std::nullopt;
    if (!dialogs_.confirms(QStringLiteral("Bitirme Derslerini Oluştururken Daha Önce Tanımlanan Tüm Bitirme "
                                          "Dersleri Silinecek!\nOnaylıyor musunuz?"),
                           kWarning))
        return std::nullopt;
    const int made = writeFinalExam(key);
    if (made == 0) return refuse(QStringLiteral("Bu mesleğe ait ders yok; bitirme dersi oluşturulmadı."));
    return made;
}

// One row per course, in the order in which they are taught; a course of several years counts with its last
// one. 0, and nothing written, when no course is taught.
int ProfessionCurriculum::writeFinalExam(const CurriculumKey& key) {
    jet::WriteScope scope(databases_.level().database().pages());
    std::vector<StoredRow> taught = rowsOfVersion(key);
    std::erase_if(taught, [](const StoredRow& row) {
        return row.values.at(kTrack) == QLatin1String(track::finalExam);
    });
    if (taught.empty()) return 0;
    std::stable_sort(taught.begin(), taught.end(), [](const StoredRow& a, const StoredRow& b) {
        return std::pair(numberIn(a, kYear), numberIn(a, kOrder)) <
               std::pair(numberIn(b, kYear), numberIn(b, kOrder));
    });
    databases_.level().sql().execute(
        "DELETE FROM MeslekDersHavuzu WHERE MeslekOgrenciTuru=? AND MeslekKodu=? AND "
        "MeslekOgrenimDurumu = 'B' AND ID=?",
        Parameters{key.level, key.profession, key.version});
    std::set<QString> seen;
    std::vector<FieldTexts> exams;
    for (auto row = taught.rbegin(); row != taught.rend(); ++row)
        if (seen.insert(upperTurkish(row->values.at(kCourse))).second) exams.push_back(row->values);
    int order = 0;
    for (auto exam = exams.rbegin(); exam != exams.rend(); ++exam) {
        (*exam)[kTrack] = QLatin1String(track::finalExam);
        (*exam)[kTerm] = QString();
        (*exam)[kOrder] = QString::number(++order);
        stored().add(*exam);
    }
    scope.commit();
    return order;
}

} // namespace orvan
