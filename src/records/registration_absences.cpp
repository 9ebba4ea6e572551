// records/registration_absences.cpp — see registration_absences.h.
#include "records/registration_absences.h"

#include "core/users.h"
#include "core/values.h"
#include "records/dependent_tables.h"
#include "records/trimmed_rows.h"

#include <set>

namespace orvan {
namespace {

constexpr auto kAbsences = "Devam";
constexpr auto kTerm = "D_Donem";
constexpr DependentTable kByNumber{kAbsences, "D_Ogr_Numarasi", nullptr, nullptr};

QString termText(int term) { return QStringLiteral("%1. dönem").arg(term); }

} // namespace

RegistrationAbsences::RegistrationAbsences(DatabaseSet& databases, Dialogs& dialogs, QString title)
    : databases_(databases), dialogs_(dialogs), title_(std::move(title)) {}

std::vector<int> RegistrationAbsences::terms(const StudentRecord& student) {
    jet::Database& level = databases_.level().database();
    jet::Table absences = level.openTable(kAbsences);
    std::set<int> found;
    for (const jet::RowId row : dependentRows(level, kByNumber, student.number()))
        found.insert(trimmedTexts(absences, row, {kTerm})[0].toInt());
    return {found.begin(), found.end()};
}

bool RegistrationAbsences::mayWrite() {
    return orvan::mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_);
}

std::optional<int> RegistrationAbsences::chooseTerm(const std::vector<int>& terms, const QString& text) {
    if (terms.size() == 1) return terms.front();
    QStringList choices;
    for (const int term : terms)
        choices << termText(term);
    const auto chosen = dialogs_.choose(text, QStringLiteral("Uyarı"), choices, choices.size() - 1);
    if (!chosen) return std::nullopt;
    return terms[static_cast<size_t>(*chosen)];
}

void RegistrationAbsences::removeRows(const StudentRecord& student, int term) {
    jet::Database& level = databases_.level().database();
    jet::Table absences = level.openTable(kAbsences);
    for (const jet::RowId row : dependentRows(level, kByNumber, student.number()))
        if (trimmedTexts(absences, row, {kTerm})[0].toInt() == term) absences.remove(row);
}

bool RegistrationAbsences::removeTerm(const StudentRecord& student) {
    if (!mayWrite()) return false;
    const std::vector<int> all = terms(student);
    if (all.empty()) {
        dialogs_.message(
            QStringLiteral("%1 %2 için kayıtlı devamsızlık yok.").arg(student.number(), student.fullName()),
            QStringLiteral("Uyarı"));
        return false;
    }
    const auto term = chooseTerm(all, QStringLiteral("Hangi dönemin devamsızlıkları silinsin?"));
    if (!term) return false;
    const QString title =
        QStringLiteral("%1 %2, %3").arg(student.number(), student.fullName(), termText(*term));
    if (!dialogs_.confirms(QStringLiteral("Öğrencinin devamsızlıkları silinsin mi?"), title)) return false;
    jet::WriteBatch batch(databases_.level().database());
    jet::WriteScope whole(databases_.level().database().pages());
    removeRows(student, *term);
    whole.commit();
    batch.commit();
    return true;
}

bool RegistrationAbsences::startAgain(const StudentRecord& student) {
    if (!mayWrite()) return false;
    const std::vector<int> all = terms(student);
    std::optional<int> term;
    if (!all.empty()) {
        term = chooseTerm(all, QStringLiteral("Öğrenci hangi dönemi tekrar ediyor?"));
        if (!term) return false;
    }
    const QString question =
        QStringLiteral("Dikkat!!!\n%1 kütük numaralı %2 ait %3 devamsızlıkları silinecektir.\n"
                       "Devamsızlıktan kalan veya herhangi bir sebepten ayrılıpta tekrar işe ve okula "
                       "başlayan öğrencilerin,\n'Dönem Tekrarı' ile kayıtlı devamsızlıkları ve "
                       "Ayrılış Nedenleri temizlenir.\nİşleme devam etmek istiyor musunuz?")
            .arg(student.number(), student.fullName(), term ? termText(*term) : QString());
    if (!dialogs_.confirms(question, QStringLiteral("Dikkat"))) return false;
    jet::Database& level = databases_.level().database();
    {
        jet::WriteBatch batch(level);
        jet::WriteScope whole(level.pages());
        if (term) removeRows(student, *term);
        constexpr DependentTable kHimself{kStudentTable, "Ogr_Numarasi", "Ogr_Adi", "Ogr_Soyadi"};
        const StudentName who{student.text("Ogr_Adi"), student.text("Ogr_Soyadi")};
        jet::Table students = level.openTable(kStudentTable);
        for (const jet::RowId row : dependentRows(level, kHimself, student.number(), &who))
            changeRow(students, row,
                      {{"Ogr_Ayrilis_Nedeni", jet::Value("")},
                       {"Ogr_calistigi_isden_ayrilis_tarihi", jet::Value("")}});
        whole.commit();
        batch.commit();
    }
    dialogs_.message(QStringLiteral("Silme işlemi başarıyla tamamlanmıştır."), QStringLiteral("Uyarı"));
    return true;
}

} // namespace orvan
