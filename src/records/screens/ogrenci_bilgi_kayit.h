// records/screens/ogrenci_bilgi_kayit.h — the registration form in its two arrangements:
// `ogrenci_bilgi_kayit` with a tab for each family of fields, `ogrenci_bilgi_kayit_2` with everything on two
// pages. The commands open the second; the first is opened from it.
#pragma once

#include "records/screens/registration_screen.h"

namespace orvan {

class ogrenci_bilgi_kayit : public RegistrationScreen {
    Q_OBJECT

  public:
    // As RegistrationScreen's.
    ogrenci_bilgi_kayit(DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory, const Clock& clock,
                        QWidget* parent = nullptr);
    static QString caption();
    static QString key(); // of this window, for those who open it
};

class ogrenci_bilgi_kayit_2 : public RegistrationScreen {
    Q_OBJECT

  public:
    // The same; `title`: of its command, caption and rights.
    ogrenci_bilgi_kayit_2(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                          const Clock& clock, QWidget* parent = nullptr);
};

} // namespace orvan
