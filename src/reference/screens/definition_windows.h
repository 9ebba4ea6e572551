// reference/screens/definition_windows.h — the windows of coded definitions and of the course pool, by their
// own names.
#pragma once

#include "reference/screens/definition_screen.h"

namespace orvan {

class FrmDonem : public DefinitionScreen {
    Q_OBJECT
  public:
    FrmDonem(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
             QWidget* parent = nullptr)
        : DefinitionScreen(QStringLiteral("FrmDonem"), QStringLiteral("DonemBilgileri"), title, databases,
                           dialogs, memory, parent) {}
};

class frmKanunMaddesi : public DefinitionScreen {
    Q_OBJECT
  public:
    frmKanunMaddesi(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                    QWidget* parent = nullptr)
        : DefinitionScreen(QStringLiteral("frmKanunMaddesi"), QStringLiteral("KanunMaddeleri"), title,
                           databases, dialogs, memory, parent) {}
};

class frmPratikEgitim : public DefinitionScreen {
    Q_OBJECT
  public:
    frmPratikEgitim(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                    QWidget* parent = nullptr)
        : DefinitionScreen(QStringLiteral("frmPratikEgitim"), QStringLiteral("PratikEgitim"), title,
                           databases, dialogs, memory, parent) {}
};

// With "Listeyi Yenile", which puts the current list of prior schooling in the place of an old or spoilt one.
class frmOgrenimDurum : public DefinitionScreen {
    Q_OBJECT
  public:
    frmOgrenimDurum(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                    QWidget* parent = nullptr);

  private:
    void renew(const QString& title);
};

class frmMeslek_Odasi : public DefinitionScreen {
    Q_OBJECT
  public:
    frmMeslek_Odasi(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                    QWidget* parent = nullptr)
        : DefinitionScreen(QStringLiteral("frmMeslek_Odasi"), QStringLiteral("MeslekOdalari"), title,
                           databases, dialogs, memory, parent) {}
};

class frmSemt : public DefinitionScreen {
    Q_OBJECT
  public:
    frmSemt(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
            QWidget* parent = nullptr)
        : DefinitionScreen(QStringLiteral("frmSemt"), QStringLiteral("IsletmeSemt"), title, databases,
                           dialogs, memory, parent) {}
};

// With "Ana Meslek Değiştir…", which opens the window that changes students' main professions.
class frmAnaMeslek : public DefinitionScreen {
    Q_OBJECT
  public:
    frmAnaMeslek(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                 QWidget* parent = nullptr);
};

// The professions of every curriculum version.
class frmBolumTanimi : public DefinitionScreen {
    Q_OBJECT
  public:
    frmBolumTanimi(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                   QWidget* parent = nullptr)
        : DefinitionScreen(QStringLiteral("frmBolumTanimi"), QStringLiteral("Meslekler"), title, databases,
                           dialogs, memory, parent) {}
};

// The professions of one version at a time, lengths of training by class: opened beside a curriculum, at its
// version.
class frmBolumTanimi2 : public DefinitionScreen {
    Q_OBJECT
  public:
    // `title`: that of the right to write.
    frmBolumTanimi2(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                    QWidget* parent = nullptr);
    void showRecord(const QString& version) override;
};

// The course pool, one version at a time.
class frmDersHavuzu : public DefinitionScreen {
    Q_OBJECT
  public:
    frmDersHavuzu(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                  QWidget* parent = nullptr);
};

} // namespace orvan
