// tests/jet/format/scratch_file.h — an empty Jet 4 file in memory: header, global map and unused system
// pages, so that maps and the allocator can be tried without a database above them.
#pragma once

#include "jet/format/bytes.h"
#include "jet/format/data_page.h"
#include "jet/format/usage_map.h"
#include "jet/pages/io_memory.h"

#include <memory>

namespace format_test {

struct ScratchFile {
    std::shared_ptr<jet::MemoryIo> io = std::make_shared<jet::MemoryIo>();
    std::unique_ptr<jet::PageFile> file;
    std::unique_ptr<jet::PageAllocator> allocator;

    // The global map says that every page from `firstFree` on is free.
    explicit ScratchFile(jet::PageNo firstFree = 6, size_t cacheBytes = 64u << 20) {
        using namespace jet;
        PageFileOptions options;
        options.cacheBytes = cacheBytes;
        file = PageFile::create(io, "deneme.mdb", options, kJet4.pageSize);
        WriteScope write(*file);
        for (int i = 0; i < 6; ++i)
            file->append();
        PageEdit page = file->edit(kGlobalMapPage);
        data_page::initialise(kJet4, page.bytes(), kOwnerGlobalMap);
        Bytes map(UsageMapForm::kRowSize);
        for (size_t bit = firstFree; bit < (map.size() - 5) * 8; ++bit)
            map[5 + bit / 8] |= static_cast<uint8_t>(1u << bit % 8);
        data_page::insert(kJet4, page.bytes(), map);
        write.commit();
        allocator = std::make_unique<PageAllocator>(*file, kJet4);
    }
};

} // namespace format_test
