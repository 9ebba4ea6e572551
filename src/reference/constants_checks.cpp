// reference/constants_checks.cpp — see constants_checks.h.
#include "reference/constants_checks.h"

#include "core/clock.h"
#include "core/values.h"
#include "reference/field_texts.h"
#include "reference/school_year.h"

#include <algorithm>

namespace orvan {
namespace {

bool isDigits(const QString& text) {
    return std::all_of(text.begin(), text.end(),
                       [](QChar letter) { return letter >= QLatin1Char('0') && letter <= QLatin1Char('9'); });
}

QString digitsProblem(const QString& text, int count) {
    if (text.size() == count && isDigits(text)) return {};
    return QStringLiteral("%1 rakam olmalı.").arg(count);
}
QString postcodeProblem(const QString& text) { return digitsProblem(text, 5); }
QString identityProblem(const QString& text) { return digitsProblem(text, 11); }
QString taxNumberProblem(const QString& text) {
    return text.size() >= 10 && text.size() <= 11 && isDigits(text)
               ? QString()
               : QStringLiteral("10 rakam (kimlik numarasıysa 11 rakam) olmalı.");
}
QString mailProblem(const QString& text) {
    const qsizetype at = text.indexOf(QLatin1Char('@'));
    const bool whole = at > 0 && text.indexOf(QLatin1Char('.'), at) > at + 1 &&
                       !text.endsWith(QLatin1Char('.')) && !text.contains(QLatin1Char(' '));
    return whole ? QString() : QStringLiteral("ad@alan.tr biçiminde olmalı.");
}
QString dayProblem(const QString& text) {
    return dateFromText(text) ? QString() : QStringLiteral("gg.aa.yyyy biçiminde bir tarih olmalı.");
}

QString rangeProblem(const QString& text, double least, double most) {
    bool isNumber = false;
    const double value = text.toDouble(&isNumber);
    if (isNumber && value >= least && value <= most) return {};
    return QStringLiteral("%1 ile %2 arasında bir sayı olmalı.").arg(least).arg(most);
}
QString percentProblem(const QString& text) { return rangeProblem(text, 0, 100); }
QString smallNumberProblem(const QString& text) { return rangeProblem(text, 0, 255); }
QString serialProblem(const QString& text) { return rangeProblem(text, 1, 10); }
QString limitProblem(const QString& text) { return rangeProblem(text, 0, 366); }
QString unitProblem(const QString& text) {
    if (isDigits(text) && text.toLongLong() > 0) return {};
    return QStringLiteral("sıfırdan büyük tam sayı olmalı.");
}

bool isOneOf(const QString& text, std::initializer_list<const char*> allowed) {
    return std::any_of(allowed.begin(), allowed.end(),
                       [&](const char* one) { return text == QLatin1String(one); });
}
QString roundingProblem(const QString& text) {
    return isOneOf(text, {"1", "2", "3"}) ? QString() : QStringLiteral("1, 2 veya 3 olmalı.");
}
QString ageRuleProblem(const QString& text) {
    return isOneOf(text, {"B", "K", "G"}) ? QString() : QStringLiteral("B, K veya G olmalı.");
}

struct Check {
    const char* field; // a part of the name when it ends with '*'
    QString (*problem)(const QString& text);
};

constexpr Check kChecks[] = {
    {"SB_PostaKodu", postcodeProblem},
    {"SB_TCKimlikNo", identityProblem},
    {"SB_VergiNo", taxNumberProblem},
    {"SB_EPosta", mailProblem},
    {"SB_Ders_Yili", schoolYearProblem},
    {"SB_Donem_Baslama_Tarihi", dayProblem},
    {"SB_Donem_Bitis_Tarihi", dayProblem},
    {"SB_NotTarihi", dayProblem},
    {"KutukHane", serialProblem},
    {"SB_KalfaDevamsiz*", limitProblem},
    {"SB_UstaDevamsiz*", limitProblem},
    {"SB_PrimHesaplamaTipi", smallNumberProblem},
    {"SB_AyHesap", smallNumberProblem},
    {"SB_YasHesaplamaUclu", ageRuleProblem},
    {"SB_ORAN", percentProblem},
    {"SB_prim_*", percentProblem},
    {"SB_Yuvarlama_Katsayisi", unitProblem},
    {"SB_Prime_Esas_*", roundingProblem},
    {"SB_Prim_Kesintileri_*", roundingProblem},
    {"SB_IzinRapor_*", roundingProblem},
};

bool concerns(const Check& check, const QString& field) {
    const QLatin1String name(check.field);
    return name.endsWith(QLatin1Char('*')) ? field.startsWith(name.chopped(1)) : field == name;
}

QString problemOf(const FieldDeclaration& field, const QString& name, const QString& text) {
    const QString unfit = fieldProblem(field, text);
    if (!unfit.isEmpty() || text.isEmpty()) return unfit;
    const QString label = fromUtf8(field.label);
    for (const Check& check : kChecks) {
        if (!concerns(check, name)) continue;
        const QString problem = check.problem(text);
        if (!problem.isEmpty()) return label + QStringLiteral(": ") + problem;
    }
    const bool isNumber =
        field.type == jet::Type::Double || field.type == jet::Type::Currency || field.type == jet::Type::Long;
    if (isNumber && text.toDouble() < 0) return label + QStringLiteral(" sıfırdan küçük olamaz.");
    return {};
}

SaveOutcome checkPeriod(const FieldTexts& after, const FieldTexts& changed) {
    const QString from = QStringLiteral("SB_Donem_Baslama_Tarihi");
    const QString to = QStringLiteral("SB_Donem_Bitis_Tarihi");
    if (!changed.contains(from) && !changed.contains(to)) return SaveOutcome::done();
    const auto begin = dateFromText(after.at(from)), end = dateFromText(after.at(to));
    if (!begin || !end || *begin < *end) return SaveOutcome::done();
    return SaveOutcome::refused(
        to,
        QStringLiteral("Dönem bitiş tarihi, başlama tarihinden (%1) sonra olmalı.").arg(dateText(*begin)));
}

// A warning that comes after the student has failed warns nobody.
SaveOutcome checkLimits(const FieldTexts& after, const FieldTexts& changed) {
    for (const char* level : {"Kalfa", "Usta"})
        for (const char* suffix : {"", "4"}) {
            const QString start = QStringLiteral("SB_") + QLatin1String(level) + QStringLiteral("Devamsiz");
            const QString warning = start + QStringLiteral("UyariSiniri") + QLatin1String(suffix);
            const QString limit = start + QStringLiteral("KalmaSiniri") + QLatin1String(suffix);
            if (!changed.contains(warning) && !changed.contains(limit)) continue;
            if (after.at(warning).isEmpty() || after.at(limit).isEmpty()) continue;
            if (after.at(warning).toDouble() <= after.at(limit).toDouble()) continue;
            return SaveOutcome::refused(warning,
                                        QStringLiteral("Uyarı sınırı, kalma sınırından (%1) büyük olamaz.")
                                            .arg(QString(after.at(limit)).replace(u'.', u',')));
        }
    return SaveOutcome::done();
}

} // namespace

SaveOutcome checkConstants(const TableDeclaration& table, const FieldTexts& stored,
                           const FieldTexts& changed) {
    for (const FieldDeclaration& field : table.fields) {
        const QString name = fromUtf8(field.name);
        const auto wanted = changed.find(name);
        if (wanted == changed.end()) continue;
        const QString problem = problemOf(field, name, wanted->second);
        if (!problem.isEmpty()) return SaveOutcome::refused(name, problem);
    }
    FieldTexts after;
    for (const FieldDeclaration& field : table.fields)
        after[fromUtf8(field.name)] = {};
    for (const auto& [name, text] : stored)
        after[name] = text;
    for (const auto& [name, text] : changed)
        after[name] = text;
    const SaveOutcome period = checkPeriod(after, changed);
    return period.saved ? checkLimits(after, changed) : period;
}

} // namespace orvan
