// tools/terminal.h — the words a program was started with and the texts it prints, UTF-8 on every system.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#include <shellapi.h>
#endif

namespace terminal {

// The words after the program's name. From here on what is printed in UTF-8 is read as such by the terminal.
inline std::vector<std::string> begin([[maybe_unused]] int argc, [[maybe_unused]] char** argv) {
#ifdef _WIN32
    SetConsoleOutputCP(CP_UTF8);
    std::vector<std::string> words;
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) {
        const std::u8string text = std::filesystem::path(wide[i]).u8string();
        words.emplace_back(text.begin(), text.end());
    }
    LocalFree(wide);
    return words;
#else
    return {argv + 1, argv + argc};
#endif
}

// A file's name as a person typed it.
inline std::filesystem::path fileNamed(const std::string& word) {
    return std::filesystem::path(std::u8string(word.begin(), word.end()));
}

} // namespace terminal
