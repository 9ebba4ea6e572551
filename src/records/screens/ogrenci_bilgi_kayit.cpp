// records/screens/ogrenci_bilgi_kayit.cpp — see ogrenci_bilgi_kayit.h.
#include "records/screens/ogrenci_bilgi_kayit.h"

#include "records/screens/registration_pages.h"

namespace orvan {

ogrenci_bilgi_kayit::ogrenci_bilgi_kayit(const QString& rights, DatabaseSet& databases, Dialogs& dialogs,
                                         UserMemory& memory, const Clock& clock, QWidget* parent)
    : RegistrationScreen({QStringLiteral("ogrenci_bilgi_kayit"), QString::fromUtf8(kTabbedRegistrationTitle),
                          rights, QStringLiteral("ogrencikayit"), QStringLiteral("&İki Sayfalı Form")},
                         tabbedPages(databases.schema()), databases, dialogs, memory, clock, parent) {}

ogrenci_bilgi_kayit_2::ogrenci_bilgi_kayit_2(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                             UserMemory& memory, const Clock& clock, QWidget* parent)
    : RegistrationScreen({QStringLiteral("ogrenci_bilgi_kayit_2"), title, title,
                          QString::fromLatin1(kTabbedRegistrationKey), QStringLiteral("&Sekmeli Form")},
                         twoPages(databases.schema()), databases, dialogs, memory, clock, parent) {}

} // namespace orvan
