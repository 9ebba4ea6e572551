// records/registration_addresses.cpp — see registration_addresses.h.
#include "records/registration_addresses.h"

namespace orvan {
namespace {

struct Pair {
    const char *student, *guardian;
};
constexpr Pair kPairs[] = {{"Ogr_Adresi1", "Ogr_Veli_Adresi1"},
                           {"Ogr_Adresi2", "Ogr_Veli_Adresi2"},
                           {"Ogr_Semt", "Ogr_Veli_semt"},
                           {"Ogr_ili", "Ogr_Veli_il"}};

} // namespace

bool copyAddress(FieldTexts& student, AddressCopy direction, Dialogs& dialogs) {
    const bool toGuardian = direction == AddressCopy::StudentToGuardian;
    const QString what = toGuardian
                             ? QStringLiteral("Öğrenci Adres Bilgisi Veli Adres Bilgisine kopyalanacaktır.")
                             : QStringLiteral("Veli bilgisi Öğrenci Adres Bilgisine kopyalanacaktır.");
    if (!dialogs.confirms(what + QStringLiteral("\nDevam Etmek İstiyor musunuz ?"), QStringLiteral("Uyarı")))
        return false;
    for (const Pair& pair : kPairs) {
        const char* from = toGuardian ? pair.student : pair.guardian;
        const char* to = toGuardian ? pair.guardian : pair.student;
        student[QLatin1String(to)] = student[QLatin1String(from)];
    }
    return true;
}

} // namespace orvan
