// records/registration_checks.cpp — see registration_checks.h.
#include "records/registration_checks.h"

#include "core/clock.h"
#include "core/turkish_text.h"
#include "core/values.h"
#include "records/trimmed_rows.h"

namespace orvan {
namespace {

QString textOf(const FieldTexts& student, const char* field) {
    const auto found = student.find(QLatin1String(field));
    return found == student.end() ? QString() : trimBlanks(found->second);
}

} // namespace

QString workDatesFault(const FieldTexts& student) {
    if (textOf(student, "Ogr_calistigi_isden_ayrilis_tarihi").isEmpty() ||
        !textOf(student, "Ogr_calistigi_ise_giris_tarihi").isEmpty())
        return {};
    return QStringLiteral("İşe giriş tarihi olmadan işten çıkış tarihi girilemez.\n"
                          "Lütfen önce işe giriş tarihini doldurunuz.");
}

QString lastPaymentFault(const FieldTexts& student) {
    if (textOf(student, "Ogr_SSK_SonOdeme_Tarihi").isEmpty() ||
        !textOf(student, "Ogr_calistigi_isden_ayrilis_tarihi").isEmpty())
        return {};
    return QStringLiteral("İşten çıkış tarihi olmadan SSK en son ödeme tarihi girilemez.\n"
                          "Lütfen önce işten çıkış tarihini doldurunuz.");
}

QString passwordLengthFault(const QString& password) {
    if (password.isEmpty() || password.size() == kPasswordLength) return {};
    return QStringLiteral("Lütfen öğrenci şifresini 4 uzunluğunda giriniz.");
}

QString lawArticleFault(const FieldTexts& student, const QString& article) {
    if (!article.contains(QLatin1String("16.")) || textOf(student, "Ogr_calistigi_isyerinin_adi").isEmpty() ||
        dateFromText(textOf(student, "Ogr_calistigi_ise_giris_tarihi")))
        return {};
    return QStringLiteral("16.madde ile kayıt olan öğrencilerde (İŞE GİRİŞ TARİHİ) doldurulması zorunlu "
                          "alandır.");
}

QString requiredFault(const FieldTexts& student) {
    if (!textOf(student, "Ogr_Numarasi").isEmpty() && !textOf(student, "Ogr_Adi").isEmpty() &&
        !textOf(student, "Ogr_Soyadi").isEmpty())
        return {};
    return QStringLiteral("Öğrenci Numarası, Adı ve Soyadı boş girilemez. Lütfen ilgili yerleri doldurunuz.");
}

QString ageOn(QDate today, const QString& birthDate) {
    const auto birth = dateFromText(birthDate);
    if (!birth || *birth > today) return {};
    const bool hadBirthday = today >= birth->addYears(today.year() - birth->year());
    const int age = today.year() - birth->year() - (hadBirthday ? 0 : 1);
    return age < 150 ? QString::number(age) : QString();
}

std::optional<StudentRecord> OtherStudents::withIdentityNumber(const QString& identityNo,
                                                               const QString& ownNumber) {
    jet::Database& level = databases_.level().database();
    jet::Table students = level.openTable(kStudentTable);
    for (const jet::RowId row : rowsByText(level, kStudentTable, "Ogr_Mernis", identityNo)) {
        const auto texts = trimmedTexts(students, row, {"Ogr_Numarasi", "Ogr_Adi", "Ogr_Soyadi"});
        if (texts[0] == trimBlanks(ownNumber)) continue;
        StudentRecord holder;
        holder.id = row;
        holder.values = {{QStringLiteral("Ogr_Numarasi"), texts[0]},
                         {QStringLiteral("Ogr_Adi"), texts[1]},
                         {QStringLiteral("Ogr_Soyadi"), texts[2]}};
        return holder;
    }
    return std::nullopt;
}

bool OtherStudents::passwordTaken(const QString& password, const QString& ownNumber) {
    const auto rows = databases_.level().sql().query("SELECT COUNT(*) AS Kac_Tane FROM OgrenciBilgisi "
                                                     "WHERE Ogr_Sifre = ? AND trim(Ogr_Numarasi) <> ?",
                                                     Parameters{password, trimBlanks(ownNumber)});
    return rows.at(0, "Kac_Tane").toInt() > 0;
}

bool OtherStudents::namesakeInOtherProfession(const FieldTexts& student) {
    const QString whole = textOf(student, "Ogr_Adi") + QLatin1Char(' ') + textOf(student, "Ogr_Soyadi");
    const auto rows = databases_.level().sql().query(
        "SELECT Ogr_MeslekKod FROM OgrenciBilgisi WHERE (trim(Ogr_Adi) & ' ' & trim(Ogr_Soyadi)) = ?",
        Parameters{whole});
    for (size_t i = 0; i < rows.rowCount(); ++i)
        if (trimmedText(rows.at(i, size_t{0})) != textOf(student, "Ogr_MeslekKod")) return true;
    return false;
}

bool OtherStudents::hasNumber(const QString& number, const QString& curriculum) {
    jet::Database& level = databases_.level().database();
    jet::Table students = level.openTable(kStudentTable);
    for (const jet::RowId row : rowsByText(level, kStudentTable, "Ogr_Numarasi", number))
        if (trimmedTexts(students, row, {"DersID"})[0] == curriculum) return true;
    return false;
}

bool OtherStudents::hasRegistrationNo(int registrationNo) {
    return !rowsByNumber(databases_.level().database(), kStudentTable, "Ogr_Kayit_No", registrationNo)
                .empty();
}

StudentNumbers OtherStudents::freeNumbers(const Profession& profession) {
    return nextNumbers(databases_.level().sql(), profession.code,
                       numberingOptions(databases_.constants().sql()));
}

QString identityTakenText(const QString& identityNo, const StudentRecord& holder) {
    const QString begin = identityNo + QStringLiteral(" Tc.Kimlik Numarası ile ") + holder.number() +
                          QStringLiteral(" numarasına ");
    if (holder.fullName().isEmpty()) return begin + QStringLiteral(" kayıtlı bulunmaktadır.");
    return begin + holder.fullName() + QStringLiteral(" adlı öğrenci kayıtlı bulunmaktadır.");
}

QString sameNumberText(const QString& number) {
    return number + QStringLiteral(" numarasıyla zaten kayıtlı bulunmaktadır. ");
}

QString passwordTakenText() {
    return QStringLiteral("Bu şifre başka bir öğrenciye verilmiş durumda!\n"
                          "Lütfen değiştirerek tekrar deneyiniz.");
}

QString numbersTakenQuestion(const StudentNumbers& fresh) {
    return QStringLiteral("Bu kayıt ve/veya kütük numarası kayıt işleminden önce\n"
                          "başka bir kullanıcı tarafından kullanılmış!\n"
                          "Bunların yerine;\n"
                          "Yeni Kayıt No : %1\n"
                          "Yeni Kütük No : %2\n"
                          "yeni numaraları kullanmak ister misiniz?")
        .arg(QString::number(fresh.registrationNo), fresh.studentNo);
}

} // namespace orvan
