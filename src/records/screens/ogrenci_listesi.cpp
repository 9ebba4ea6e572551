// records/screens/ogrenci_listesi.cpp — the columns of the list by class.
#include "records/screens/ogrenci_listesi.h"

namespace orvan {

namespace {

RosterLook byClass() {
    RosterLook look;
    look.window = QStringLiteral("ogrenci_listesi");
    look.list = QStringLiteral("ogrenciler");
    look.groupBy = QStringLiteral("Sını&f:");
    look.ungrouped = QStringLiteral("(sınıfı olmayanlar)");
    look.columns = {
        {QStringLiteral("numara"), QStringLiteral("Kütük No"), ListKind::Text, 11},
        {QStringLiteral("adi"), QStringLiteral("Adı"), ListKind::Text, 16},
        {QStringLiteral("soyadi"), QStringLiteral("Soyadı"), ListKind::Text, 16},
        {QStringLiteral("sinif"), QStringLiteral("Sınıf"), ListKind::Text, 8},
        {QStringLiteral("meslek"), QStringLiteral("Meslek"), ListKind::Text, 24},
        {QStringLiteral("seviye"), QStringLiteral("Seviye"), ListKind::Text, 9},
        {QStringLiteral("kayitNo"), QStringLiteral("Kayıt No"), ListKind::Number, 8},
        {QStringLiteral("kimlikNo"), QStringLiteral("T.C. Kimlik No"), ListKind::Text, 12},
        {QStringLiteral("isyeri"), QStringLiteral("İşyeri"), ListKind::Text, 30},
    };
    look.groupOf = [](const StudentListRow& student) { return student.className; };
    look.rowOf = [](const StudentListRow& student) -> ListRow {
        return {student.number,         student.name,       student.surname,
                student.className,      student.profession, student.stage,
                student.registrationNo, student.identityNo, student.workplace};
    };
    return look;
}

} // namespace

ogrenci_listesi::ogrenci_listesi(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                 UserMemory& memory, const Clock& clock, QWidget* parent)
    : StudentRoster(byClass(), title, databases, dialogs, memory, clock, parent) {}

} // namespace orvan
