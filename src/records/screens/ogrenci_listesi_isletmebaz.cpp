// records/screens/ogrenci_listesi_isletmebaz.cpp — the columns of the list by workplace.
#include "records/screens/ogrenci_listesi_isletmebaz.h"

namespace orvan {

namespace {

RosterLook byWorkplace() {
    RosterLook look;
    look.window = QStringLiteral("ogrenci_listesi_isletmebaz");
    look.list = QStringLiteral("isletmeOgrencileri");
    look.groupBy = QStringLiteral("İşlet&me:");
    look.ungrouped = QStringLiteral("(işletmesi olmayanlar)");
    look.columns = {
        {QStringLiteral("numara"), QStringLiteral("Kütük No"), ListKind::Text, 11},
        {QStringLiteral("adi"), QStringLiteral("Adı"), ListKind::Text, 12},
        {QStringLiteral("soyadi"), QStringLiteral("Soyadı"), ListKind::Text, 12},
        {QStringLiteral("isyeri"), QStringLiteral("İşletme"), ListKind::Text, 26},
        {QStringLiteral("sinif"), QStringLiteral("Sınıf"), ListKind::Text, 7},
        {QStringLiteral("meslek"), QStringLiteral("Meslek"), ListKind::Text, 22},
        {QStringLiteral("ustaOgretici"), QStringLiteral("Usta Öğretici"), ListKind::Text, 18},
        {QStringLiteral("koordinator"), QStringLiteral("Koordinatör"), ListKind::Text, 18},
        {QStringLiteral("giris"), QStringLiteral("İşe Giriş"), ListKind::Date, 10},
        {QStringLiteral("cikis"), QStringLiteral("İşten Çıkış"), ListKind::Date, 10},
        {QStringLiteral("adres"), QStringLiteral("Adres"), ListKind::Text, 26, false},
    };
    look.groupOf = [](const StudentListRow& student) { return student.workplace; };
    look.rowOf = [](const StudentListRow& student) -> ListRow {
        return {student.number,    student.name,       student.surname, student.workplace,
                student.className, student.profession, student.master,  student.coordinator,
                student.workStart, student.workEnd,    student.address};
    };
    return look;
}

} // namespace

ogrenci_listesi_isletmebaz::ogrenci_listesi_isletmebaz(const QString& title, DatabaseSet& databases,
                                                       Dialogs& dialogs, UserMemory& memory,
                                                       const Clock& clock, QWidget* parent)
    : StudentRoster(byWorkplace(), title, databases, dialogs, memory, clock, parent) {}

} // namespace orvan
