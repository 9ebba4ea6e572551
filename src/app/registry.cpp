// app/registry.cpp — a factory for each screen, under its command key.
#include "app/registry.h"

#include "core/screens/form_kullanici1.h"
#include "records/bulk_commands.h"
#include "records/screens/bulk_edit_screen.h"
#include "records/screens/frm_eskiisletme_isleme.h"
#include "records/screens/frm_ogrencibilgi_kontrol.h"
#include "records/screens/frm_sinif_ogrenci_sayilari.h"
#include "records/screens/hizli_ogrenci_kayit.h"
#include "records/screens/isletme_kayit_formu.h"
#include "records/screens/ogr_numara_adsoyad_degistir.h"
#include "records/screens/ogrenci_ara.h"
#include "records/screens/ogrenci_bilgi_kayit.h"
#include "records/screens/ogrenci_kilit_kaldir.h"
#include "records/screens/ogrenci_kutuk_defteri.h"
#include "records/screens/ogrenci_listesi.h"
#include "records/screens/ogrenci_listesi_isletmebaz.h"
#include "records/screens/toplu_kayitkutuk_isle.h"
#include "reference/screens/definition_windows.h"
#include "reference/screens/frm_ana_meslek_degistir.h"
#include "reference/screens/frm_meslek_ders_havuzu.h"
#include "reference/screens/frm_sabit_bilgiler.h"
#include "reference/screens/frm_sigorta_sabit.h"
#include "reference/screens/frm_sinif_tanimlama.h"
#include "reference/screens/screen_buttons.h"
#include "reference/screens/sinif_kodu_isleme.h"

namespace orvan {

namespace {

template <class Window> QString windowName() {
    return QString::fromLatin1(Window::staticMetaObject.className()).section(QLatin1String("::"), -1);
}

// A window that is made from `parts`, which outlive it.
template <class Window, class... Parts> void add(ScreenRegistry& registry, const char* key, Parts&... parts) {
    registry.add(QString::fromUtf8(key), windowName<Window>(),
                 [&parts...]() -> QWidget* { return new Window(parts...); });
}

// The same for a window that serves several keys and is told the title first.
template <class Window, class... Parts>
void addTitled(ScreenRegistry& registry, const char* key, Parts&... parts) {
    const QString name = QString::fromUtf8(key);
    registry.add(name, windowName<Window>(), [&registry, name, &parts...]() -> QWidget* {
        return new Window(registry.find(name)->title, parts...);
    });
}

// One window per declared bulk edit.
void addBulkEdits(ScreenRegistry& registry, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                  const Clock& clock) {
    for (const BulkCommand& command : bulkCommands())
        registry.add(QString::fromUtf8(command.key), QString::fromUtf8(command.window), [&]() -> QWidget* {
            return new BulkEditScreen(command, registry.find(QString::fromUtf8(command.key))->title,
                                      databases, dialogs, memory, clock);
        });
}

// A window that other windows open; it is told the title of its rights.
template <class Window, class... Parts>
void addInner(ScreenRegistry& registry, const char* key, const char* title, const char* rights,
              Parts&... parts) {
    const QString rightsTitle = QString::fromUtf8(rights);
    registry.addInner({QString::fromUtf8(key), windowName<Window>(), QString::fromUtf8(title), rightsTitle,
                       [rightsTitle, &parts...]() -> QWidget* { return new Window(rightsTitle, parts...); }});
}

} // namespace

void registerScreens(ScreenRegistry& registry, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                     const Clock& clock) {
    add<hizli_ogrenci_kayit>(registry, "HizliOgrenciKayit", databases, dialogs, clock);
    for (const char* key : {"ogrencikayit", "İşyeri Açma"})
        addTitled<ogrenci_bilgi_kayit_2>(registry, key, databases, dialogs, memory, clock);
    addInner<ogrenci_bilgi_kayit>(registry, kTabbedRegistrationKey, kTabbedRegistrationTitle,
                                  kRegistrationTitle, databases, dialogs, memory, clock);
    addTitled<ogrenci_listesi>(registry, "OgrenciListesiSinifBaz", databases, dialogs, memory, clock);
    addTitled<ogrenci_listesi_isletmebaz>(registry, "OgrenciListesiIsletmeBaz", databases, dialogs, memory,
                                          clock);
    addTitled<ogrenci_kutuk_defteri>(registry, "OgrenciKutuk", databases, dialogs, memory, clock);

    addTitled<OgrenciARA>(registry, "OgrenciARA", databases, dialogs, memory);
    addTitled<Frm_ogrencibilgi_kontrol>(registry, "OgrenciKontrol", databases, dialogs, memory, clock);
    addTitled<Ogr_Numara_AdSoyad_Degistir>(registry, "AdSoyadNumaraDegistirme", databases, dialogs, memory);
    addTitled<Toplu_KayitKutuk_Isle>(registry, "TopluKayitKutukDuzenleme", databases, dialogs, memory);
    addTitled<Frm_SinifOgrenciSayilari>(registry, "SinifOgrenciSayilari", databases, dialogs, memory, clock);
    addTitled<OgrenciKilitKaldir>(registry, "OgrenciKilitKaldir", databases, dialogs, memory);

    addTitled<isletme_kayit_formu>(registry, "Isletme", databases, dialogs, memory);
    addTitled<frm_eskiisletme_isleme>(registry, "TopluEskiIsletmeIsleme", databases, dialogs, memory);
    addTitled<frmSabitBilgiler>(registry, "SabitBilgiler", databases, dialogs, memory);
    addTitled<frmSigortaSabit>(registry, "ToolSigortaSabit", databases, dialogs, memory, clock);
    addTitled<FrmDonem>(registry, "DonemBilgileri", databases, dialogs, memory);
    addTitled<frmKanunMaddesi>(registry, "KanunMaddeleri", databases, dialogs, memory);
    addTitled<frmPratikEgitim>(registry, "PratikEgitim", databases, dialogs, memory);
    addTitled<frmOgrenimDurum>(registry, "OgrenimDurum", databases, dialogs, memory);
    addTitled<frmMeslek_Odasi>(registry, "MeslekOdalari", databases, dialogs, memory);
    addTitled<frmSemt>(registry, "IsletmeSemt", databases, dialogs, memory);
    addTitled<frmAnaMeslek>(registry, "AnaMeslek", databases, dialogs, memory);
    addTitled<frmBolumTanimi>(registry, "Meslekler", databases, dialogs, memory);
    addTitled<frmDersHavuzu>(registry, "DersHavuzu", databases, dialogs, memory);
    addTitled<FrmMeslekDersHavuzu>(registry, "MeslekDers", databases, dialogs, memory);
    addInner<frmBolumTanimi2>(registry, kProfessionsOfVersionKey, "Programın Meslekleri", "Meslekler",
                              databases, dialogs, memory);
    addInner<frmAnaMeslekDegistir>(registry, kMainProfessionChangeKey, "Ana Meslek Değiştirme",
                                   "Ana Meslekler", databases, dialogs, memory);
    addTitled<Frm_Sinif_Tanimlama>(registry, "Sinif", databases, dialogs, memory);
    addTitled<sinif_kodu_isleme>(registry, "TopluSinifIsleme", databases, dialogs, memory);
    add<Form_Kullanici1>(registry, "Kullanici", databases, dialogs, memory);
    addBulkEdits(registry, databases, dialogs, memory, clock);
}

} // namespace orvan
