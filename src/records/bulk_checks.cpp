// records/bulk_checks.cpp — see bulk_checks.h.
#include "records/bulk_checks.h"

#include "core/clock.h"
#include "records/identity_number.h"

namespace orvan {
namespace {

constexpr int kLastYear = 4; // of the longest training; a stage that is a bare number counts years
constexpr int kLastTerm = 8;

QString text(const FieldTexts& student, const char* field) {
    const auto found = student.find(QString::fromLatin1(field));
    return found == student.end() ? QString() : found->second;
}

std::optional<QDate> date(const FieldTexts& student, const char* field) {
    return dateFromText(text(student, field));
}

QString bornOn(const FieldTexts& student, const char* field, QDate today) {
    const auto birth = date(student, field);
    if (birth && *birth > today) return QStringLiteral("Doğum tarihi bugünden sonra olamaz.");
    return {};
}

QString wholeNumberUpTo(const FieldTexts& student, const char* field, int most) {
    const QString typed = text(student, field);
    bool isNumber = false;
    const int number = typed.toInt(&isNumber);
    if (typed.isEmpty() || (isNumber && number >= 0 && number <= most)) return {};
    return QStringLiteral("0 ile %1 arasında bir sayı olmalı.").arg(most);
}

constexpr auto kStart = "Ogr_calistigi_ise_giris_tarihi";
constexpr auto kLeft = "Ogr_calistigi_isden_ayrilis_tarihi";
constexpr auto kLastPayment = "Ogr_SSK_SonOdeme_Tarihi";

} // namespace

QString leavingDateFault(const FieldTexts& student, QDate) {
    const QString left = text(student, kLeft);
    if (left.isEmpty())
        return text(student, kLastPayment).isEmpty()
                   ? QString()
                   : QStringLiteral("İşten çıkış tarihi olmadan SSK en son ödeme tarihi girilemez.");
    if (text(student, kStart).isEmpty())
        return QStringLiteral("İşe giriş tarihi olmadan işten çıkış tarihi girilemez.");
    const auto from = date(student, kStart), to = dateFromText(left);
    if (from && to && *to < *from)
        return QStringLiteral("İşten çıkış tarihi, işe giriş tarihinden (%1) önce olamaz.")
            .arg(dateText(*from));
    return {};
}

QString lastPaymentFault(const FieldTexts& student, QDate) {
    if (text(student, kLastPayment).isEmpty() || !text(student, kLeft).isEmpty()) return {};
    return QStringLiteral("İşten çıkış tarihi olmadan SSK en son ödeme tarihi girilemez.");
}

QString insuranceStartFault(const FieldTexts& student, QDate) {
    const auto start = date(student, "Ogr_Sigorta_Giris_Tarihi"), birth = date(student, "Ogr_Dogum_Tarihi");
    if (start && birth && *start <= *birth)
        return QStringLiteral("Sigorta giriş tarihi, doğum tarihinden (%1) sonra olmalı.")
            .arg(dateText(*birth));
    return {};
}

QString birthDateFault(const FieldTexts& student, QDate today) {
    return bornOn(student, "Ogr_Dogum_Tarihi", today);
}

QString registryBirthDateFault(const FieldTexts& student, QDate today) {
    return bornOn(student, "Ogr_Nufus_Dogum_Tarihi", today);
}

QString identityFault(const FieldTexts& student, QDate) {
    const QString number = text(student, "Ogr_Mernis");
    qsizetype digits = 0;
    for (const QChar letter : number)
        digits += letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
    if (number.isEmpty() || (number.size() == kIdentityNumberLength && digits == number.size())) return {};
    return QStringLiteral("T.C. kimlik no 11 rakam olmalı.");
}

QString identityWarning(const FieldTexts& student, QDate) {
    const QString number = text(student, "Ogr_Mernis");
    if (number.isEmpty() || isIdentityNumber(number)) return {};
    return QStringLiteral("Denetim rakamları tutmuyor; numarayı kimlikten kontrol ediniz.");
}

QString lawArticleFault(const FieldTexts& student, QDate) {
    const bool needsStart = text(student, "Ogr_Kanun_Maddesi").contains(QLatin1String("16.")) &&
                            !text(student, "Ogr_calistigi_isyerinin_adi").isEmpty();
    if (!needsStart || date(student, kStart)) return {};
    return QStringLiteral(
        "16.madde ile kayıt olan öğrencilerde (İŞE GİRİŞ TARİHİ) doldurulması zorunlu alandır.");
}

QString yearsFault(const FieldTexts& student, QDate) {
    return wholeNumberUpTo(student, "Ogr_Isletme1_Yil", 60);
}

QString monthsFault(const FieldTexts& student, QDate) {
    return wholeNumberUpTo(student, "Ogr_Isletme1_Ay", 11);
}

QString daysFault(const FieldTexts& student, QDate) {
    return wholeNumberUpTo(student, "Ogr_Isletme1_Gun", 30);
}

QString stageOf(const FieldTexts& student, const QString& choice, QString& refusal) {
    if (choice != QLatin1String(kNextStage)) return choice;
    const QString stage = text(student, "Ogr_Seviye");
    qsizetype digits = 0;
    while (digits < stage.size() && stage[digits] >= QLatin1Char('0') && stage[digits] <= QLatin1Char('9'))
        ++digits;
    const int number = stage.left(digits).toInt();
    if (digits == 0)
        refusal = QStringLiteral("“%1” bir öğrenim dönemi değil; bir sonrakine geçirilemez.").arg(stage);
    else if (number >= (digits == stage.size() ? kLastYear : kLastTerm))
        refusal = QStringLiteral("Öğrenimin son dönemi; bir sonrakine geçirilemez.");
    else
        return QString::number(number + 1) + stage.mid(digits);
    return stage;
}

} // namespace orvan
