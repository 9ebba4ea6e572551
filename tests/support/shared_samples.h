// tests/support/shared_samples.h — finds the sample files that other programs made; they are not kept in this
// repository.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvan_test {

// Folder of facts and samples, or an empty path when this checkout stands alone.
inline std::filesystem::path sharedFolder() {
    namespace fs = std::filesystem;
    if (const char* set = std::getenv("ORVAN_SHARED")) return fs::path(set);
    if (const char* source = std::getenv("ORVAN_SOURCE_DIR")) {
        const fs::path beside = fs::path(source).parent_path() / "shared";
        if (fs::exists(beside / "jet")) return beside;
    }
    return {};
}

// All sample databases, by name; empty when there are none.
inline std::vector<std::filesystem::path> samples() {
    std::vector<std::filesystem::path> found;
    const auto folder = sharedFolder();
    if (folder.empty()) return found;
    for (const auto& entry : std::filesystem::directory_iterator(folder / "jet" / "samples"))
        if (entry.path().extension() == ".mdb") found.push_back(entry.path());
    std::sort(found.begin(), found.end());
    return found;
}

} // namespace orvan_test

// First line of a test that needs the samples.
#define ORVAN_NEED_SAMPLES()                                                                                 \
    if (orvan_test::samples().empty()) GTEST_SKIP() << "sample files are not beside this checkout"
