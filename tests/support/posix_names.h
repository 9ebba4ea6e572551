// support/posix_names.h — put before every test program's source on Windows: the few names of other systems
// that tests use for temporary folders and for running a program.
#pragma once

#include <codecvt>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <locale>
#include <random>
#include <string>
#include <unistd.h>

// Makes a folder out of a name that ends in XXXXXX; the letters are replaced in place.
inline char* mkdtemp(char* pattern) {
    std::string name = pattern;
    std::random_device dice;
    for (int tries = 0; tries < 100; ++tries) {
        for (size_t i = name.size() - 6; i < name.size(); ++i)
            name[i] = static_cast<char>('a' + dice() % 26);
        if (!std::filesystem::create_directory(std::filesystem::path(name))) continue;
        name.copy(pattern, name.size());
        return pattern;
    }
    return nullptr;
}

inline int WEXITSTATUS(int status) { return status; } // pclose gives it as it is

// What a path gives back as narrow text is UTF-8.
inline const bool utf8FileNames =
    (std::locale::global(std::locale(std::locale::classic(), new std::codecvt_utf8_utf16<wchar_t>)), true);
