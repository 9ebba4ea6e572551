// app/regional_formats.cpp — see regional_formats.h.
#include "app/regional_formats.h"

#include <QLocale>

#ifdef _WIN32
#include <iterator>
#include <string_view>
#include <windows.h>
#endif

namespace orvan {
namespace {

#ifdef _WIN32
struct Format {
    LCTYPE kind;
    const wchar_t* value;
};
constexpr Format kFormats[] = {
    {LOCALE_SDECIMAL, L","}, {LOCALE_STHOUSAND, L"."}, {LOCALE_SSHORTDATE, L"dd.MM.yyyy"}};

// Not every release of the system takes this notice without waiting; then each window is waited for a moment,
// those that hang not at all.
void tellEverybody() {
    constexpr UINT kWaitMs = 100;
    if (PostMessageW(HWND_BROADCAST, WM_SETTINGCHANGE, 0, 0)) return;
    SendMessageTimeoutW(HWND_BROADCAST, WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"intl"),
                        SMTO_ABORTIFHUNG, kWaitMs, nullptr);
}

// What is set for the system's locale holds for the user's formats, so those are what is compared: where they
// are right already nothing is written and the other programs are left in peace.
void setSystemFormats() {
    bool changed = false;
    for (const Format& format : kFormats) {
        wchar_t present[80] = {};
        const bool known = GetLocaleInfoW(LOCALE_USER_DEFAULT, format.kind, present,
                                          static_cast<int>(std::size(present))) > 0;
        if (known && std::wstring_view(present) == format.value) continue;
        changed = SetLocaleInfoW(GetSystemDefaultLCID(), format.kind, format.value) || changed;
    }
    if (changed) tellEverybody();
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
