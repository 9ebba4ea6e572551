// tests/jet/pages/page_fixture.h — small databases of numbered pages, in memory or on disk.
#pragma once

#include "jet/pages/io_memory.h"
#include "jet/pages/page_file.h"

#include <cstring>
#include <gtest/gtest.h>

namespace orvan_test {

inline constexpr size_t kPage = 4096;
inline const std::filesystem::path kPath = "/veri/KALFA.MDB";

inline jet::PageFile::Probe anyFile() {
    return [](std::span<const uint8_t>) { return kPage; };
}

// Every page carries one number, at both ends, so that a torn page shows.
inline void setValue(const jet::PageEdit& page, uint64_t value) {
    std::memcpy(page.data(), &value, sizeof value);
    std::memcpy(page.data() + kPage - sizeof value, &value, sizeof value);
}
inline uint64_t valueOf(const uint8_t* page) {
    uint64_t first = 0, last = 0;
    std::memcpy(&first, page, sizeof first);
    std::memcpy(&last, page + kPage - sizeof last, sizeof last);
    EXPECT_EQ(first, last) << "torn page";
    return first;
}
inline uint64_t valueOf(jet::PageFile& file, jet::PageNo no) {
    const jet::ReadScope scope(file);
    return valueOf(file.read(no).data());
}
inline std::vector<uint64_t> allValues(jet::PageFile& file) {
    const jet::ReadScope scope(file);
    std::vector<uint64_t> values;
    for (jet::PageNo no = 0; no < file.pageCount(); ++no)
        values.push_back(valueOf(file.read(no).data()));
    return values;
}

inline std::unique_ptr<jet::PageFile> open(const std::shared_ptr<jet::Io>& io,
                                           jet::PageFileOptions options = {},
                                           const std::filesystem::path& path = kPath) {
    return jet::PageFile::open(io, path, options, anyFile());
}

// A new database whose page n holds the number 100 + n.
inline std::unique_ptr<jet::PageFile> make(const std::shared_ptr<jet::Io>& io, size_t pages,
                                           jet::PageFileOptions options = {},
                                           const std::filesystem::path& path = kPath) {
    auto file = jet::PageFile::create(io, path, options, kPage);
    jet::WriteScope write(*file);
    for (size_t i = 0; i < pages; ++i)
        setValue(file->append(), 100 + i);
    write.commit();
    return file;
}

// Runs `what` and returns the number of the jet::Error it throws; 0 when it throws none.
template <class F> int errorOf(F what) {
    try {
        what();
        return 0;
    } catch (const jet::Error& error) {
        EXPECT_FALSE(error.message().empty());
        return error.code();
    }
}
inline int code(jet::Err number) { return static_cast<int>(number); }

} // namespace orvan_test
