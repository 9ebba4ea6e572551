// Usage maps in both forms, and the allocator on top of the global one.
#include "jet/error.h"
#include "jet/format/scratch_file.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

namespace {

using namespace jet;
using format_test::ScratchFile;

std::vector<PageNo> pagesOf(const UsageMap& map) {
    std::vector<PageNo> pages;
    map.forEach([&pages](PageNo page) { pages.push_back(page); });
    return pages;
}

std::vector<PageNo> listed(const std::set<PageNo>& set) { return {set.begin(), set.end()}; }

void grow(PageFile& file, size_t pages) {
    while (file.pageCount() < pages)
        file.append();
}

TEST(UsageMap, RandomPagesAgreeWithASetInEveryForm) {
    struct Range {
        PageNo from, to;
        bool paged;
    };
    // Inside the first range, moved range, wider than an inline map holds, over several bitmap pages.
    for (const Range range :
         {Range{6, 500, false}, {3000, 3400, false}, {100, 4000, true}, {6, 70000, true}}) {
        ScratchFile scratch(6, 8u << 20);
        WriteScope write(*scratch.file);
        const RowId at = scratch.allocator->createMap();
        grow(*scratch.file, range.to + 10);
        UsageMap map(*scratch.file, kJet4, at);
        std::set<PageNo> model;
        std::mt19937 random(5);
        for (int step = 0; step < 700; ++step) {
            const PageNo page = range.from + static_cast<PageNo>(random() % (range.to - range.from));
            if (random() % 3) {
                map.add(page, *scratch.allocator);
                model.insert(page);
            } else {
                map.remove(page);
                model.erase(page);
            }
            ASSERT_EQ(map.contains(page), model.contains(page));
        }
        EXPECT_EQ(pagesOf(map), listed(model));
        EXPECT_EQ(map.count(), model.size());
        EXPECT_EQ(map.last(), *model.rbegin());
        EXPECT_EQ(map.next(*model.begin() + 1), *std::next(model.begin()));
        EXPECT_EQ(!map.bitmapPages().empty(), range.paged);
        const auto bitmaps = map.bitmapPages();
        map.clear(*scratch.allocator);
        EXPECT_EQ(map.count(), 0u);
        EXPECT_EQ(map.last(), std::nullopt);
        const UsageMap global(*scratch.file, kJet4, {kGlobalMapPage, 0});
        for (const PageNo bitmap : bitmaps)
            EXPECT_TRUE(global.contains(bitmap));
    }
}

TEST(UsageMap, PagesPastTheEndAreNotShown) {
    ScratchFile scratch;
    const UsageMap global(*scratch.file, kJet4, {kGlobalMapPage, 0});
    ReadScope read(*scratch.file);
    EXPECT_EQ(pagesOf(global), std::vector<PageNo>{});
    EXPECT_EQ(global.last(), std::nullopt);
}

TEST(UsageMap, DamagedMapsAreCorrupt) {
    ScratchFile scratch;
    WriteScope write(*scratch.file);
    const RowId at = scratch.allocator->createMap();
    const UsageMap map(*scratch.file, kJet4, at);
    PageEdit page = scratch.file->edit(at.page);
    const Slot slot = data_page::slot(kJet4, page.bytes(), at.row);
    page.data()[slot.start] = 1;            // paged form …
    put32(page.bytes(), slot.start + 1, 2); // … naming a page that is no bitmap
    EXPECT_THROW(map.next(0), Error);
    put32(page.bytes(), slot.start + 1, 0x7FFFFFFF); // … naming one outside the file
    EXPECT_THROW(map.next(0), Error);
    page.data()[slot.start] = 9;
    EXPECT_THROW(map.next(0), Error);
    EXPECT_THROW(UsageMap(*scratch.file, kJet4, {at.page, 200}).next(0), Error);
    EXPECT_THROW(UsageMap(*scratch.file, kJet4, {0x00FFFFFF, 0}).next(0), Error);
}

TEST(PageAllocator, NeverGivesAPageTwiceAndTakesFreedOnesFirst) {
    ScratchFile scratch;
    std::set<PageNo> used;
    std::mt19937 random(9);
    WriteScope write(*scratch.file);
    for (int step = 0; step < 3000; ++step) {
        if (random() % 4 || used.empty()) {
            PageEdit page = scratch.allocator->allocate();
            ASSERT_TRUE(used.insert(page.number()).second);
            ASSERT_TRUE(
                std::all_of(page.bytes().begin(), page.bytes().end(), [](uint8_t b) { return b == 0; }));
            page.data()[100] = 1;
        } else {
            const auto victim = std::next(used.begin(), static_cast<ptrdiff_t>(random() % used.size()));
            scratch.allocator->free(*victim);
            used.erase(victim);
        }
    }
    // Every page is used, free or one of the map's own.
    const UsageMap global(*scratch.file, kJet4, {kGlobalMapPage, 0});
    std::set<PageNo> accounted(used);
    for (const PageNo page : pagesOf(global))
        EXPECT_TRUE(accounted.insert(page).second) << page;
    for (const PageNo page : global.bitmapPages())
        EXPECT_TRUE(accounted.insert(page).second) << page;
    EXPECT_FALSE(global.bitmapPages().empty()) << "the file outgrew the inline map";
    EXPECT_EQ(accounted.size(), scratch.file->pageCount() - 6);
    const PageNo before = scratch.file->pageCount();
    for (size_t i = global.count(); i > 0; --i)
        scratch.allocator->allocate();
    EXPECT_EQ(scratch.file->pageCount(), before) << "free pages come before new ones";
}

TEST(PageAllocator, GlobalMapGrowsBeyondOneBitmapPage) {
    ScratchFile scratch(6, 8u << 20);
    WriteScope write(*scratch.file);
    const PageNo wanted = static_cast<PageNo>(kJet4.pagesPerBitmap()) + 300;
    std::set<PageNo> used;
    while (scratch.file->pageCount() < wanted)
        ASSERT_TRUE(used.insert(scratch.allocator->allocate().number()).second);
    const UsageMap global(*scratch.file, kJet4, {kGlobalMapPage, 0});
    EXPECT_EQ(global.bitmapPages().size(), 2u);
    EXPECT_EQ(global.count(), 0u);
    for (const PageNo page : global.bitmapPages())
        EXPECT_FALSE(used.contains(page));
    const PageNo highest = *used.rbegin();
    scratch.allocator->free(highest);
    EXPECT_EQ(pagesOf(global), std::vector<PageNo>{highest});
    EXPECT_EQ(scratch.allocator->allocate().number(), highest);
}

TEST(PageAllocator, HintsDoNotOutliveARollback) {
    ScratchFile scratch;
    PageNo kept = 0;
    {
        WriteScope write(*scratch.file);
        kept = scratch.allocator->allocate().number();
        write.commit();
    }
    {
        WriteScope write(*scratch.file);
        scratch.allocator->createMap();
        scratch.allocator->free(kept);
    } // undone
    WriteScope write(*scratch.file);
    EXPECT_NE(scratch.allocator->allocate().number(), kept);
    EXPECT_NO_THROW(scratch.allocator->createMap());
}

TEST(PageAllocator, RefusesToFreeWhatIsFreeOrTheSystems) {
    ScratchFile scratch;
    WriteScope write(*scratch.file);
    const PageNo page = scratch.allocator->allocate().number();
    scratch.allocator->free(page);
    EXPECT_THROW(scratch.allocator->free(page), Error);
    EXPECT_THROW(scratch.allocator->free(2), Error);
    EXPECT_THROW(scratch.allocator->free(100000), Error);
}

TEST(PageAllocator, MapsSharePagesAndGiveThemBack) {
    ScratchFile scratch;
    WriteScope write(*scratch.file);
    std::vector<RowId> maps;
    std::set<PageNo> pages;
    for (int i = 0; i < 100; ++i) {
        maps.push_back(scratch.allocator->createMap());
        pages.insert(maps.back().page);
    }
    EXPECT_LE(pages.size(), 2u);
    for (const RowId map : maps)
        scratch.allocator->deleteMap(map);
    const UsageMap global(*scratch.file, kJet4, {kGlobalMapPage, 0});
    EXPECT_EQ(pagesOf(global), listed(pages));
    EXPECT_NO_THROW(scratch.allocator->createMap());
}

} // namespace
