// records/bulk_renumber.cpp — see bulk_renumber.h.
#include "records/bulk_renumber.h"

#include "core/clock.h"
#include "core/turkish_text.h"
#include "core/users.h"
#include "core/values.h"
#include "records/student_numbers.h"

#include <algorithm>
#include <map>

namespace orvan {
namespace {

constexpr int kUsualSerialLength = 5;
constexpr qsizetype kCodeLength = 4;

const QString& title() {
    static const QString text = QString::fromUtf8(kBulkRenumberTitle);
    return text;
}

QString numberCode(const QString& professionCode) {
    return professionCode.rightJustified(kCodeLength, QLatin1Char('0')).left(kCodeLength);
}

const char* orderClause(RenumberOrder order) {
    switch (order) {
    case RenumberOrder::ByNumber: return " ORDER BY Ogr_Numarasi, Ogr_Kayit_No";
    case RenumberOrder::ByRegistrationNo: return " ORDER BY Ogr_Kayit_No, Ogr_Numarasi";
    default: return " ORDER BY Ogr_Adi, Ogr_Soyadi, Ogr_Numarasi";
    }
}

// Rows without a date come last.
bool registeredEarlier(const RenumberRow& a, const RenumberRow& b) {
    const auto first = dateFromText(a.registrationDate), second = dateFromText(b.registrationDate);
    return first && (!second || *first < *second);
}

struct Change {
    size_t row;
    Renumbering renumbering;
};

std::vector<Change> changesOf(const std::vector<RenumberRow>& rows, const std::vector<NewNumbers>& wanted) {
    std::vector<Change> changes;
    for (size_t i = 0; i < rows.size(); ++i) {
        const QString number = trimBlanks(wanted[i].number);
        if (number == rows[i].number && wanted[i].registrationNo == rows[i].registrationNo) continue;
        changes.push_back({i,
                           {rows[i].number,
                            number,
                            {},
                            rows[i].registrationNo,
                            wanted[i].registrationNo,
                            RenumberMode::Both}});
    }
    return changes;
}

} // namespace

std::vector<Profession> BulkRenumber::professions() {
    std::vector<Profession> all = orvan::professions(databases_.level().sql());
    std::vector<Profession> once;
    for (const Profession& each : all)
        if (std::none_of(once.begin(), once.end(), [&](const Profession& p) { return p.code == each.code; }))
            once.push_back(each);
    return once;
}

std::vector<RenumberRow> BulkRenumber::students(const QString& professionCode, RenumberOrder order) {
    std::string sql = "SELECT Ogr_Numarasi, Ogr_Kayit_No, Ogr_Adi, Ogr_Soyadi, Ogr_Sinif, Ogr_MeslekKod, "
                      "Ogr_Kayit_Tarihi FROM OgrenciBilgisi";
    if (!professionCode.isEmpty()) sql += " WHERE Ogr_MeslekKod = ?";
    sql += orderClause(order);
    const auto found = professionCode.isEmpty()
                           ? databases_.level().sql().query(sql)
                           : databases_.level().sql().query(sql, Parameters{professionCode});
    std::vector<RenumberRow> rows;
    rows.reserve(found.rowCount());
    for (size_t i = 0; i < found.rowCount(); ++i) {
        const auto text = [&](size_t column) { return trimmedText(found.at(i, column)); };
        rows.push_back({text(0), text(1).toInt(), text(2), text(3), text(4), text(5), text(6)});
    }
    if (order == RenumberOrder::ByRegistrationDate)
        std::stable_sort(rows.begin(), rows.end(), registeredEarlier);
    return rows;
}

std::vector<NewNumbers> BulkRenumber::inSequence(const std::vector<RenumberRow>& rows, int firstSerial,
                                                 int firstRegistrationNo) {
    const int configured = numberingOptions(databases_.constants().sql()).serialLength;
    const int width = configured > 0 ? configured : kUsualSerialLength;
    std::map<QString, int> next; // by the beginning of the number
    std::vector<NewNumbers> numbers;
    int registrationNo = firstRegistrationNo;
    for (const RenumberRow& row : rows) {
        NewNumbers given{row.number, row.registrationNo};
        if (firstSerial > 0) {
            const QString code = numberCode(row.professionCode);
            int& serial = next.try_emplace(code, firstSerial).first->second;
            given.number = code + QString::number(serial++).rightJustified(width, QLatin1Char('0'));
        }
        if (firstRegistrationNo > 0) given.registrationNo = registrationNo++;
        numbers.push_back(std::move(given));
    }
    return numbers;
}

QString BulkRenumber::numberFault(const RenumberRow& row, const QString& typed) {
    const QString number = trimBlanks(typed);
    if (number == row.number) return {};
    if (number.size() <= kCodeLength) return QStringLiteral("Kütük No en az beş karakter olmalı.");
    if (const QString code = numberCode(row.professionCode); !number.startsWith(code))
        return QStringLiteral("Kütük No meslek koduyla (%1) başlamalı.").arg(code);
    const QString serial = number.mid(kCodeLength);
    const bool digits = std::all_of(serial.begin(), serial.end(),
                                    [](QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); });
    return digits ? QString() : QStringLiteral("Meslek kodundan sonra yalnız rakam olmalı.");
}

BulkRenumberResult BulkRenumber::save(const std::vector<RenumberRow>& rows,
                                      const std::vector<NewNumbers>& wanted) {
    BulkRenumberResult result;
    if (!mayWrite(databases_.constants().sql(), databases_.session().user, title(), dialogs_)) return result;
    const std::vector<Change> changes = changesOf(rows, wanted);
    if (changes.empty()) {
        dialogs_.message(QStringLiteral("Değişen numara yok."), title());
        return result;
    }
    std::vector<Renumbering> list;
    for (const Change& change : changes)
        list.push_back(change.renumbering);
    const auto inRows = [&](std::vector<RenumberProblem> problems) {
        for (RenumberProblem& problem : problems)
            problem.which = changes[problem.which].row;
        return problems;
    };
    result.problems = inRows(renumberProblems(databases_.level().database(), list));
    if (!result.problems.empty()) return result;
    const QString question =
        QStringLiteral("%1 öğrencinin numarası değişecek (ilki: %2 → %3).\nNotları, "
                       "devamsızlıkları, sigorta günleri, işyerleri ve sınavları yeni "
                       "numarayı alacak.\n\nOnaylıyor musunuz?")
            .arg(QString::number(list.size()), list.front().oldNumber, list.front().newNumber);
    if (!dialogs_.confirms(question, title())) return result;
    const auto progress = dialogs_.beginProgress(QStringLiteral("Numaralar değiştiriliyor"), 0);
    const RenumberReport report = renumberStudents(databases_, list);
    result.problems = inRows(report.problems);
    result.saved = report.done();
    result.students = report.students;
    result.dependentRows = report.dependentRows;
    if (!report.photos.isEmpty())
        dialogs_.message(report.photos.mid(0, 20).join(QLatin1Char('\n')), title(), Icon::Warning);
    return result;
}

int BulkRenumber::numberWidth() const { return databases_.schema().width("OgrenciBilgisi", "Ogr_Numarasi"); }

} // namespace orvan
