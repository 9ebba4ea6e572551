// What the program takes from Windows: the computer's formats, the system's secure connections.
#include "app/regional_formats.h"

#include <gtest/gtest.h>
#include <QSslSocket>
#include <string>
#include <windows.h>

namespace {

int notices = 0; // what the other programs hear

LRESULT CALLBACK listen(HWND window, UINT message, WPARAM a, LPARAM b) {
    if (message == WM_SETTINGCHANGE) ++notices;
    return DefWindowProcW(window, message, a, b);
}

int noticesAfter(void (*action)()) {
    notices = 0;
    action();
    MSG message;
    for (int i = 0; i < 20; ++i, Sleep(10))
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
    return notices;
}

std::wstring format(LCTYPE kind) {
    wchar_t text[80] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, kind, text, 80);
    return text;
}

TEST(Windows, FormatsOfTheComputerAreSetAndToldOnlyWhenTheyDiffer) {
    WNDCLASSW kind{};
    kind.lpfnWndProc = listen;
    kind.lpszClassName = L"orvan-dinleyen";
    RegisterClassW(&kind);
    const HWND other = CreateWindowW(kind.lpszClassName, L"", WS_OVERLAPPEDWINDOW, 0, 0, 1, 1, nullptr,
                                     nullptr, nullptr, nullptr);
    ASSERT_NE(other, nullptr);
    struct Case {
        const wchar_t *decimal, *thousands, *date;
        int told;
    };
    constexpr Case cases[] = {
        {L".", L",", L"M/d/yyyy", 1}, {L",", L".", L"dd.MM.yyyy", 0}, {L",", L".", L"d.MM.yyyy", 1}};
    for (const Case& c : cases) {
        SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SDECIMAL, c.decimal);
        SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_STHOUSAND, c.thousands);
        SetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, c.date);
        EXPECT_EQ(noticesAfter(orvan::setRegionalFormats), c.told);
        EXPECT_EQ(format(LOCALE_SDECIMAL), L",");
        EXPECT_EQ(format(LOCALE_STHOUSAND), L".");
        EXPECT_EQ(format(LOCALE_SSHORTDATE), L"dd.MM.yyyy");
    }
    DestroyWindow(other);
}

TEST(Windows, SecureConnectionsAreTheSystems) {
    EXPECT_EQ(QSslSocket::activeBackend(), QString("schannel"));
    EXPECT_TRUE(QSslSocket::supportsSsl());
}

} // namespace
