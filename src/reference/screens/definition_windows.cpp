// reference/screens/definition_windows.cpp — what single windows have beside the common ones.
#include "reference/screens/definition_windows.h"

#include "reference/course_pool.h"
#include "reference/definition_list.h"
#include "reference/schooling.h"
#include "reference/screens/screen_buttons.h"

namespace orvan {

frmOgrenimDurum::frmOgrenimDurum(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                 UserMemory& memory, QWidget* parent)
    : DefinitionScreen(QStringLiteral("frmOgrenimDurum"), QStringLiteral("OgrenimDurum"), title, databases,
                       dialogs, memory, parent) {
    addButton(makeButton("listeyiYenile", QStringLiteral("Listeyi Ye&nile"),
                         QStringLiteral("Eski listeyi güncel öğrenim durumlarına çevirir (önce sorar)"), this,
                         [this, title] { renew(title); }));
}

void frmOgrenimDurum::renew(const QString& title) {
    if (!settleUnsaved()) return;
    attempt(QStringLiteral("Öğrenim durumlarını yenileme"), [&] {
        if (!renewSchooling(databases(), dialogs(), title)) return;
        refresh();
        afterChange(QStringLiteral("Liste yenilendi."));
    });
}

frmAnaMeslek::frmAnaMeslek(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                           QWidget* parent)
    : DefinitionScreen(QStringLiteral("frmAnaMeslek"), QStringLiteral("AnaMeslek"), title, databases, dialogs,
                       memory, parent) {
    addButton(makeButton("anaMeslekDegistir", QStringLiteral("Öğrencilerde Değiştir…"),
                         QStringLiteral("Öğrencilerin ana mesleğini toplu veya tek tek değiştirir"), this,
                         [this] { emit openRequested(QString::fromLatin1(kMainProfessionChangeKey), {}); }));
}

frmBolumTanimi2::frmBolumTanimi2(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                 UserMemory& memory, QWidget* parent)
    : DefinitionScreen(QStringLiteral("frmBolumTanimi2"), QStringLiteral("Programın Meslekleri"),
                       {std::make_unique<DefinitionList>(databases, dialogs,
                                                         definitionGroup(QStringLiteral("Meslekler")), title),
                        professionByClassLayout(databases.schema()), QStringLiteral("tanimlar-Program"),
                        true},
                       databases, dialogs, memory, parent) {}

void frmBolumTanimi2::showRecord(const QString& version) {
    if (version.toInt() > 0) showVersion(version.toInt());
}

frmDersHavuzu::frmDersHavuzu(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                             UserMemory& memory, QWidget* parent)
    : DefinitionScreen(QStringLiteral("frmDersHavuzu"), title,
                       {std::make_unique<CoursePool>(databases, dialogs, title),
                        coursePoolLayout(databases.schema()),
                        QStringLiteral("dersHavuzu"),
                        true,
                        QStringLiteral("ders"),
                        {{QStringLiteral("DersTuru"), courseKindChoices()}}},
                       databases, dialogs, memory, parent) {}

} // namespace orvan
