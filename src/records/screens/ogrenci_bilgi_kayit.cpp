// records/screens/ogrenci_bilgi_kayit.cpp — see ogrenci_bilgi_kayit.h.
#include "records/screens/ogrenci_bilgi_kayit.h"

#include "records/screens/registration_pages.h"

namespace orvan {

QString ogrenci_bilgi_kayit::caption() { return QStringLiteral("Öğrenci Bilgileri Kayıt - Sekmeli Form"); }
QString ogrenci_bilgi_kayit::key() { return QStringLiteral("ogrenci_bilgi_kayit"); }

ogrenci_bilgi_kayit::ogrenci_bilgi_kayit(DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                                         const Clock& clock, QWidget* parent)
    : RegistrationScreen({QStringLiteral("ogrenci_bilgi_kayit"), caption(),
                          QString::fromUtf8(kRegistrationTitle), QStringLiteral("ogrencikayit"),
                          QStringLiteral("&İki Sayfalı Form")},
                         tabbedPages(databases.schema()), databases, dialogs, memory, clock, parent) {}

ogrenci_bilgi_kayit_2::ogrenci_bilgi_kayit_2(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                             UserMemory& memory, const Clock& clock, QWidget* parent)
    : RegistrationScreen({QStringLiteral("ogrenci_bilgi_kayit_2"), title, title, ogrenci_bilgi_kayit::key(),
                          QStringLiteral("&Sekmeli Form")},
                         twoPages(databases.schema()), databases, dialogs, memory, clock, parent) {}

} // namespace orvan
