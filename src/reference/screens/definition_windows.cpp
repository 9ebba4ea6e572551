// reference/screens/definition_windows.cpp — what single windows have beside the common ones.
#include "reference/screens/definition_windows.h"

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

} // namespace orvan
