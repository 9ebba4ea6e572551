// reference/class_hours.cpp — the week of the classes: slots, times, who is at two places at once. See
// classes.h.
#include "reference/classes.h"

#include "core/turkish_text.h"
#include "core/values.h"

#include <algorithm>
#include <map>
#include <QRegularExpression>

namespace orvan {
namespace {

constexpr int kLastHour = 23, kLastMinute = 59;

QString textOf(const FieldTexts& values, const QString& field) {
    const auto found = values.find(field);
    return found == values.end() ? QString() : found->second;
}

// Behind the days of the week, whatever else stands there.
qsizetype dayPlace(const QString& day) {
    const QStringList& days = weekDays();
    for (qsizetype i = 0; i < days.size(); ++i)
        if (sameTurkish(days[i], day)) return i;
    return days.size();
}

bool earlier(const TeachingHour& a, const TeachingHour& b) {
    const qsizetype first = dayPlace(a.day), second = dayPlace(b.day);
    if (first != second) return first < second;
    if (a.start != b.start) return a.start < b.start;
    return lessTurkish(a.className, b.className);
}

bool overlap(const TeachingHour& a, const TeachingHour& b) {
    const bool timed = !a.start.isEmpty() && !a.end.isEmpty() && !b.start.isEmpty() && !b.end.isEmpty();
    return timed && !a.day.isEmpty() && sameTurkish(a.day, b.day) && a.start < b.end && b.start < a.end;
}

QString when(const TeachingHour& a, const TeachingHour& b) {
    return QStringLiteral("%1 %2-%3 ve %4-%5").arg(a.day, a.start, a.end, b.start, b.end);
}

} // namespace

const std::array<SlotFields, kTeachingSlots>& slotFields() {
    static const std::array<SlotFields, kTeachingSlots> all = [] {
        std::array<SlotFields, kTeachingSlots> made;
        for (int i = 0; i < kTeachingSlots; ++i) {
            const QString n = QString::number(i + 1);
            made[static_cast<size_t>(i)] = {QStringLiteral("EgtGunu_") + n, QStringLiteral("EgtDerslik_") + n,
                                            QStringLiteral("EgtBaslangic_") + n,
                                            QStringLiteral("EgtBitis_") + n,
                                            QStringLiteral("EgtOgretmen_") + n};
        }
        return made;
    }();
    return all;
}

const QStringList& weekDays() {
    static const QStringList days{QStringLiteral("Pazartesi"), QStringLiteral("Salı"),
                                  QStringLiteral("Çarşamba"),  QStringLiteral("Perşembe"),
                                  QStringLiteral("Cuma"),      QStringLiteral("Cumartesi"),
                                  QStringLiteral("Pazar")};
    return days;
}

QString timeFromText(const QString& text) {
    static const QRegularExpression form(QStringLiteral("^(\\d{1,2})(?:[:., ]?(\\d{2}))?$"));
    const auto match = form.match(text.trimmed());
    if (!match.hasMatch()) return {};
    const int hour = match.captured(1).toInt(), minute = match.captured(2).toInt();
    if (hour > kLastHour || minute > kLastMinute) return {};
    return QStringLiteral("%1:%2").arg(hour, 2, 10, QLatin1Char('0')).arg(minute, 2, 10, QLatin1Char('0'));
}

std::vector<TeachingHour> hoursOf(const FieldTexts& row) {
    std::vector<TeachingHour> hours;
    int number = 0;
    for (const SlotFields& slot : slotFields()) {
        TeachingHour hour{textOf(row, QStringLiteral("SinifAdi")),
                          textOf(row, slot.day),
                          textOf(row, slot.room),
                          textOf(row, slot.start),
                          textOf(row, slot.end),
                          textOf(row, slot.teacher),
                          ++number};
        const bool empty = hour.day.isEmpty() && hour.room.isEmpty() && hour.start.isEmpty() &&
                           hour.end.isEmpty() && hour.teacher.isEmpty();
        if (!empty) hours.push_back(std::move(hour));
    }
    std::stable_sort(hours.begin(), hours.end(), earlier);
    return hours;
}

QStringList hourClashes(const std::vector<TeachingHour>& hours, const QString& className) {
    const auto concerns = [&](const TeachingHour& hour) {
        return className.isEmpty() || sameTurkish(hour.className, className);
    };
    QStringList clashes;
    for (size_t i = 0; i < hours.size(); ++i)
        for (size_t k = i + 1; k < hours.size(); ++k) {
            const TeachingHour &a = hours[i], &b = hours[k];
            if (!overlap(a, b) || !(concerns(a) || concerns(b))) continue;
            const auto same = [](const QString& one, const QString& other) {
                return !one.isEmpty() && sameTurkish(one, other);
            };
            if (same(a.className, b.className))
                clashes
                    << QStringLiteral("%1 sınıfının iki dersi çakışıyor: %2.").arg(a.className, when(a, b));
            else if (same(a.teacher, b.teacher))
                clashes << QStringLiteral("%1 aynı saatte %2 ve %3 sınıflarında: %4.")
                               .arg(a.teacher, a.className, b.className, when(a, b));
            else if (same(a.room, b.room))
                clashes << QStringLiteral("%1 aynı saatte %2 ve %3 sınıflarında: %4.")
                               .arg(a.room, a.className, b.className, when(a, b));
        }
    return clashes;
}

std::vector<TeachingHour> ClassList::timetable() {
    std::vector<TeachingHour> hours;
    for (const StoredRow& row : rows())
        for (TeachingHour& hour : hoursOf(row.values))
            if (!hour.room.isEmpty()) hours.push_back(std::move(hour));
    std::stable_sort(hours.begin(), hours.end(), earlier);
    return hours;
}

std::vector<TimetableStudent> ClassList::timetableStudents() {
    std::map<QString, QStringList> hours; // by the class in small letters
    for (const TeachingHour& hour : timetable()) {
        const bool timed = !hour.start.isEmpty() || !hour.end.isEmpty();
        const QString time = timed ? hour.start + QLatin1Char('-') + hour.end : QString();
        QStringList words{hour.day, time, hour.room};
        words.removeAll(QString());
        hours[lowerTurkish(hour.className)] << words.join(QLatin1Char(' '));
    }
    const auto found = databases_.level().sql().query(
        "SELECT Ogr_Numarasi, Ogr_Adi, Ogr_Soyadi, Ogr_Sinif FROM OgrenciBilgisi "
        "WHERE Trim(Ogr_Sinif) <> '' ORDER BY Ogr_Sinif, Ogr_Numarasi");
    std::vector<TimetableStudent> students;
    for (size_t i = 0; i < found.rowCount(); ++i) {
        const QString className = trimmedText(found.at(i, 3));
        const auto taught = hours.find(lowerTurkish(className));
        if (taught == hours.end()) continue;
        students.push_back({trimmedText(found.at(i, size_t{0})), trimmedText(found.at(i, 1)),
                            trimmedText(found.at(i, 2)), className,
                            taught->second.join(QStringLiteral("; "))});
    }
    return students;
}

} // namespace orvan
