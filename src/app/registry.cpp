// app/registry.cpp — a factory for each screen, under its command key.
#include "app/registry.h"

#include "records/screens/hizli_ogrenci_kayit.h"
#include "records/screens/ogrenci_listesi.h"

namespace orvan {

void registerScreens(ScreenRegistry& registry, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                     const Clock& clock) {
    registry.add(QStringLiteral("HizliOgrenciKayit"), [&databases, &dialogs, &clock]() -> QWidget* {
        return new hizli_ogrenci_kayit(databases, dialogs, clock);
    });
    const QString studentList = QStringLiteral("OgrenciListesiSinifBaz");
    registry.add(studentList, [&, studentList]() -> QWidget* {
        return new ogrenci_listesi(registry.find(studentList)->title, databases, dialogs, memory, clock);
    });
}

} // namespace orvan
