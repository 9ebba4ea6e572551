// records/screens/ogrenci_bilgi_kayit.h — the registration form in its two arrangements:
// `ogrenci_bilgi_kayit` with a tab for each family of fields, `ogrenci_bilgi_kayit_2` with everything on two
// pages. The commands open the second; the first is opened from it.
#pragma once

#include "records/screens/registration_screen.h"

namespace orvan {

inline constexpr auto kTabbedRegistrationKey = "ogrenci_bilgi_kayit";
inline constexpr auto kTabbedRegistrationTitle = "Öğrenci Bilgileri Kayıt - Sekmeli Form";

class ogrenci_bilgi_kayit : public RegistrationScreen {
    Q_OBJECT

  public:
    // As RegistrationScreen's; `rights`: title of the right to write.
    ogrenci_bilgi_kayit(const QString& rights, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                        const Clock& clock, QWidget* parent = nullptr);
};

class ogrenci_bilgi_kayit_2 : public RegistrationScreen {
    Q_OBJECT

  public:
    // The same; `title`: of its command, for caption and rights.
    ogrenci_bilgi_kayit_2(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                          const Clock& clock, QWidget* parent = nullptr);
};

} // namespace orvan
