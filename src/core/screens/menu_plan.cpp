// core/screens/menu_plan.cpp — the menus. The Alt letters of the menu bar (Ç Ö P Y) are not used in any
// screen.
#include "core/screens/menu_plan.h"

namespace orvan {

namespace {

constexpr MenuCommand kLine{nullptr, nullptr};

constexpr MenuCommand kWork[] = {
    {"ToolKalfa", "&Kalfa Adayları"},
    {"ToolUsta", "&Usta Adayları"},
    {"ToolUstaOgretici", "Usta &Öğretici Adayları"},
    {"Toolisyeriacma", "İş&yeri Açma"},
    {"ToolDenklikK", "Kalfa &Denklik Adayları"},
    {"ToolDenklikU", "Usta D&enklik Adayları"},
    kLine,
    {"NormalArsiv", "&Normal Arşiv"},
    {"MezunlarArsiv", "&Mezunlar Arşivi"},
    {"AyrilmaArsiv", "&Ayrılma Arşivi"},
    kLine,
    {"KullaniciDegis", "Kullanıcı Değiş&tir…"},
    {"Cikis", "&Çıkış"},
};

constexpr MenuCommand kStudents[] = {
    {"HizliOgrenciKayit", "&Hızlı Öğrenci Kayıt", "F6", "Hızlı Kayıt"},
    {"OgrenciListesiSinifBaz", "Öğrenci &Listesi", "F7", "Öğrenci Listesi"},
};

constexpr MenuPlan kMenus[] = {
    {"menuCalisma", "&Çalışma", kWork},
    {"menuOgrenci", "&Öğrenci", kStudents},
};

} // namespace

std::span<const MenuPlan> menuPlans() { return kMenus; }

} // namespace orvan
