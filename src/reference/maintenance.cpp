// reference/maintenance.cpp — see maintenance.h.
#include "reference/maintenance.h"

#include "core/values.h"
#include "reference/school_constants.h"
#include "reference/school_year.h"
#include "reference/schooling.h"

namespace orvan {
namespace {

struct Supplied {
    const char* field;
    jet::Value value;
};

std::vector<Supplied> defaults(QDate today) {
    return {{"SMS_user", ""},
            {"SMS_password", ""},
            {"GSM_number", ""},
            {"GSM_prefix", ""},
            {"SMS_paket", ""},
            {"SB_PrimHesaplamaTipi", 0},
            {"SB_YasHesaplamaUclu", "B"},
            {"SB_AyHesap", 0},
            {"SB_IzinSigortadanDusulsun", false},
            {"SB_RaporSigortadanDusulsun", false},
            {"SB_Ders_Yili", textValue(schoolYearOf(today))}};
}

bool lacks(const jet::Value& present, const jet::Value& wanted) {
    return present.isNull() || (trimmedText(present).isEmpty() && !trimmedText(wanted).isEmpty());
}

} // namespace

int supplyConstants(Connection& constants, const Clock& clock) {
    jet::Table table = constants.database().openTable(kConstantsTable);
    if (!table.moveFirst()) return 0;
    std::vector<Supplied> missing;
    for (Supplied& supplied : defaults(clock.today()))
        if (lacks(table.value(supplied.field), supplied.value)) missing.push_back(std::move(supplied));
    if (missing.empty()) return 0;
    table.edit();
    for (Supplied& supplied : missing)
        table.set(supplied.field, std::move(supplied.value));
    table.update();
    return static_cast<int>(missing.size());
}

int markNewLira(Connection& constants) {
    const auto unmarked = constants.sql().query(
        "SELECT COUNT(*) FROM AsgariUcret WHERE Yil>2008 AND (YtlVar IS NULL OR YtlVar<>'E')");
    const auto count = static_cast<int>(unmarked.at(0, size_t{0}).toInt());
    if (count > 0) constants.sql().execute("UPDATE AsgariUcret set YtlVar='E' WHERE Yil>2008");
    return count;
}

void maintainReference(DatabaseSet& databases, Dialogs& dialogs, const Clock& clock) {
    try {
        supplyConstants(databases.constants(), clock);
        markNewLira(databases.constants());
    } catch (const jet::Error&) {
        // nothing the person could do about it now; the next sign-in tries again
    }
    readConstants(databases);
    if (!databases.session().upgradeNeeded) return;
    const QStringList left = rewriteOlderSchoolingEverywhere(databases.folder(), databases.session());
    if (left.isEmpty()) return;
    dialogs.message(
        QStringLiteral("Eski öğrenim durumu listesi şu dosyalarda yenilenemedi:\n%1\n\n"
                       "“Öğrenim Durumları” ekranındaki “Listeyi Yenile” düğmesi nedenini söyler.")
            .arg(left.join(QLatin1Char('\n'))),
        QStringLiteral("Uyarı"), Icon::Warning);
}

} // namespace orvan
