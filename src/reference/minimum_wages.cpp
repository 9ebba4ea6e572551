// reference/minimum_wages.cpp — see minimum_wages.h.
#include "reference/minimum_wages.h"

#include "core/users.h"
#include "core/values.h"

#include <algorithm>
#include <cassert>
#include <set>

namespace orvan {
namespace {

constexpr auto kTable = "AsgariUcret";
constexpr int kMonths = 12;
const QString kYear = QStringLiteral("Yil");
const QString kMonth = QStringLiteral("Ay");
const QString kAdult = QLatin1String(kAdultWage);
const QString kYoung = QLatin1String(kYoungWage);
const QString kNewLira = QStringLiteral("YtlVar");
const QString kYes = QStringLiteral("E");
const QString kNo = QStringLiteral("H");

constexpr const char* kMonthNames[] = {"Ocak",   "Şubat",   "Mart",  "Nisan", "Mayıs", "Haziran",
                                       "Temmuz", "Ağustos", "Eylül", "Ekim",  "Kasım", "Aralık"};

int serial(WagePeriod period) { return period.year * kMonths + period.month - 1; }
WagePeriod periodOf(int serial) { return {serial / kMonths, serial % kMonths + 1}; }

QString monthsText(const std::vector<int>& months) {
    QStringList parts;
    for (size_t i = 0; i < months.size();) {
        size_t last = i;
        while (last + 1 < months.size() && months[last + 1] == months[last] + 1)
            ++last;
        parts << (last == i ? monthName(months[i])
                            : monthName(months[i]) + QLatin1Char('-') + monthName(months[last]));
        i = last + 1;
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace

QString monthName(int month) {
    assert(month >= 1 && month <= kMonths);
    return QString::fromUtf8(kMonthNames[month - 1]);
}

std::vector<WagePeriod> missingWages(const std::vector<WagePeriod>& stored, QDate today) {
    std::vector<WagePeriod> missing;
    if (stored.empty()) return missing;
    const std::set<WagePeriod> present(stored.begin(), stored.end());
    const int last = std::max(serial(*present.rbegin()), serial({today.year(), today.month()}));
    for (int at = serial(*present.begin()); at <= last; ++at)
        if (!present.contains(periodOf(at))) missing.push_back(periodOf(at));
    return missing;
}

QString periodsText(const std::vector<WagePeriod>& periods) {
    std::map<int, std::vector<int>> years;
    for (const WagePeriod& period : periods)
        years[period.year].push_back(period.month);
    QStringList parts;
    for (const auto& [year, months] : years)
        parts << QStringLiteral("%1: %2").arg(year).arg(months.size() == kMonths ? QStringLiteral("tümü")
                                                                                 : monthsText(months));
    return parts.join(QStringLiteral("; "));
}

MinimumWages::MinimumWages(DatabaseSet& databases, Dialogs& dialogs, QString title)
    : databases_(databases), dialogs_(dialogs), title_(std::move(title)) {}

bool MinimumWages::mayWrite() {
    return orvan::mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_);
}

StoredRows MinimumWages::stored() const {
    return {databases_.constants().database(),
            databases_.schema().table(kTable),
            {kYear, kMonth, kAdult, kYoung, kNewLira},
            {kYear, kMonth}};
}

std::vector<WagePeriod> MinimumWages::periods() {
    const auto rows = databases_.constants().sql().query(
        "SELECT Yil, Ay FROM AsgariUcret WHERE Ay BETWEEN 1 AND 12 AND Yil > 0 ORDER BY Yil, Ay");
    std::vector<WagePeriod> periods;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        periods.push_back(
            {static_cast<int>(rows.at(i, size_t{0}).toInt()), static_cast<int>(rows.at(i, 1).toInt())});
    return periods;
}

std::vector<WageMonth> MinimumWages::load(int year) {
    year_ = year;
    rows_.clear();
    loaded_.clear();
    for (int month = 1; month <= kMonths; ++month)
        loaded_.push_back({month, {}, {}, isNewLira(year)});
    for (StoredRow& row : stored().having("indYilAy", "Yil", QString::number(year))) {
        const int month = row.values.at(kMonth).toInt();
        if (month < 1 || month > kMonths || rows_.contains(month)) continue;
        before(month) = {month, row.values.at(kAdult), row.values.at(kYoung),
                         row.values.at(kNewLira) == kYes};
        rows_.emplace(month, std::move(row));
    }
    return loaded_;
}

WageOutcome MinimumWages::check(const std::vector<WageMonth>& wanted) const {
    for (const WageMonth& month : wanted) {
        if (month.isEmpty() || month == before(month.month)) continue;
        const auto refuse = [&](const char* field, const QString& reason) {
            return WageOutcome{false, month.month, QLatin1String(field),
                               monthName(month.month) + QStringLiteral(": ") + reason};
        };
        if (month.adult.toDouble() <= 0)
            return refuse(kAdultWage, QStringLiteral("16 yaşından büyükler için sıfırdan büyük bir günlük "
                                                     "ücret yazınız."));
        if (month.young.toDouble() <= 0)
            return refuse(kYoungWage, QStringLiteral("16 yaşından küçükler için sıfırdan büyük bir günlük "
                                                     "ücret yazınız."));
        if (month.young.toDouble() > month.adult.toDouble())
            return refuse(kYoungWage,
                          QStringLiteral("16 yaşından küçüklerin ücreti büyüklerinkinden fazla olamaz."));
    }
    return {true, 0, {}, {}};
}

int MinimumWages::insuranceRows(int month) {
    const auto rows = databases_.level().sql().query(
        "SELECT COUNT(*) FROM Sigorta_Devamsizlik WHERE D_Yil = ? AND Val(D_Ay_Kod) = ?",
        Parameters{QString::number(year_), month});
    return static_cast<int>(rows.at(0, size_t{0}).toInt());
}

bool MinimumWages::acceptsDeletes(const std::vector<WageMonth>& wanted) {
    std::vector<WagePeriod> deleted;
    int insured = 0;
    for (const WageMonth& month : wanted) {
        if (!month.isEmpty() || !rows_.contains(month.month)) continue;
        deleted.push_back({year_, month.month});
        insured += insuranceRows(month.month);
    }
    if (deleted.empty()) return true;
    QString question =
        QStringLiteral("%1 ayın asgari ücreti silinecek (%2).").arg(deleted.size()).arg(periodsText(deleted));
    if (insured > 0)
        question += QStringLiteral("\nBu aylar için işlenmiş %1 sigorta günü kaydı var.").arg(insured);
    return dialogs_.confirms(question + QStringLiteral("\n\nSilinsin mi?"), QStringLiteral("Dikkat"));
}

FieldTexts MinimumWages::textsOf(const WageMonth& wanted) const {
    return {{kYear, QString::number(year_)},
            {kMonth, QString::number(wanted.month)},
            {kAdult, wanted.adult},
            {kYoung, wanted.young},
            {kNewLira, wanted.newLira ? kYes : kNo}};
}

// False: the person has left another station's amounts standing.
bool MinimumWages::store(const WageMonth& wanted) {
    StoredRows table = stored();
    const auto row = rows_.find(wanted.month);
    if (wanted.isEmpty()) {
        if (row != rows_.end()) table.remove(row->second);
        rows_.erase(wanted.month);
        return true;
    }
    FieldTexts texts = textsOf(wanted);
    if (row != rows_.end()) {
        if (wanted.newLira == before(wanted.month).newLira) texts.erase(kNewLira);
        const RowChange change = table.change(row->second, texts, Clash::AnyField, dialogs_);
        if (change != RowChange::Gone) return change == RowChange::Saved;
        rows_.erase(row);
        return store(wanted);
    }
    try {
        rows_[wanted.month] = table.add(texts);
        return true;
    } catch (const jet::Error& error) {
        if (error.number() != jet::Err::DuplicateKey) throw;
    }
    // another station was first: its row is asked about as one that was empty here
    for (const StoredRow& theirs : table.having("indYilAy", "Yil", QString::number(year_)))
        if (theirs.values.at(kMonth).toInt() == wanted.month) {
            StoredRow seen = theirs;
            for (const QString& field : {kAdult, kYoung})
                seen.values[field].clear();
            rows_[wanted.month] = std::move(seen);
        }
    return store(wanted);
}

WageOutcome MinimumWages::save(const std::vector<WageMonth>& wanted) {
    assert(wanted.size() == kMonths);
    if (!mayWrite()) return {};
    if (WageOutcome checked = check(wanted); !checked.saved) return checked;
    if (!acceptsDeletes(wanted)) return {};
    bool all = true;
    for (const WageMonth& month : wanted)
        if (month != before(month.month)) all = store(month) && all;
    load(year_);
    return {all, 0, {}, {}};
}

} // namespace orvan
