// app/regional_formats.cpp — see regional_formats.h.
#include "app/regional_formats.h"

#include <QLocale>

#ifdef _WIN32
#include <windows.h>
#endif

namespace orvan {
namespace {

#ifdef _WIN32
struct Format {
    LCTYPE kind;
    const char* value;
};
constexpr Format kFormats[] = {
    {LOCALE_SDECIMAL, ","}, {LOCALE_STHOUSAND, "."}, {LOCALE_SSHORTDATE, "dd.MM.yyyy"}};

void setSystemFormats() {
    const LCID locale = GetSystemDefaultLCID();
    bool changed = false;
    for (const Format& format : kFormats) {
        char present[80] = {};
        const bool known = GetLocaleInfoA(locale, format.kind, present, sizeof present) > 0;
        if (known && QByteArrayView(present) == QByteArrayView(format.value)) continue;
        changed = SetLocaleInfoA(locale, format.kind, format.value) || changed;
    }
    if (changed) PostMessageA(HWND_BROADCAST, WM_SETTINGCHANGE, 0, 0);
}
#else
void setSystemFormats() {} // the formats of the computer are its user's own
#endif

} // namespace

void setRegionalFormats() {
    QLocale::setDefault(QLocale(QLocale::Turkish, QLocale::Turkey));
    setSystemFormats();
}

} // namespace orvan
