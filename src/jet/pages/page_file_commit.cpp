// jet/pages/page_file.h: the end of a write, by commit or by rollback.
#include "jet/pages/page_file_impl.h"

#include <algorithm>
#include <cassert>
#include <cstring>

namespace jet {

namespace {
constexpr size_t kRunPages = 64; // written at once
using Level = LockProtocol::Level;
} // namespace

void PageFile::Impl::commitOutermost() {
    if (broken) {
        const std::exception_ptr error = broken;
        rollbackOutermost();
        std::rethrow_exception(error);
    }
    const std::vector<PageNo> pages = sortedModified();
    if (pages.empty()) { // what was appended, if anything, is undone already
        clearWriteState();
        return releaseLocks();
    }
    bool journalBegun = false;
    try {
        locks.lockExclusive();
        journalBegun = true;
        journal.write(*file, pageSize, pages);
        const uint64_t counter = locks.moveCounter();
        counterKnown = false; // until the commit stands
        writePages(pages);
        file->sync();
        const uint64_t stamp = file->changeStamp();
        journal.retire();
        seenCounter = counter;
        seenStamp = stamp;
        counterKnown = true;
    } catch (...) {
        const std::exception_ptr error = std::current_exception();
        const bool restored = !journalBegun || restoreFile();
        forgetWrite();
        if (!restored) { // the journal stays: whoever comes next, perhaps we, rolls it back
            cache.clear(PageCache::Keep::Nothing);
            counterKnown = false;
        }
        releaseLocks();
        std::rethrow_exception(error);
    }
    locks.unlockExclusive(readDepth > 0 ? Level::Shared : Level::None);
    journal.settle(); // readers need not wait for it; the next writer does
    created = false;
    committedCount = pageCount;
    clearWriteState();
    releaseLocks();
}

// Ascending, without the pages that were appended and undone.
std::vector<PageNo> PageFile::Impl::sortedModified() {
    std::vector<PageNo> pages;
    pages.reserve(modified.size());
    for (const PageNo no : modified)
        if (no < pageCount) pages.push_back(no);
    std::sort(pages.begin(), pages.end());
    return pages;
}

void PageFile::Impl::writePages(const std::vector<PageNo>& pages) {
    for (size_t i = 0; i < pages.size();) {
        size_t run = 1;
        while (run < kRunPages && i + run < pages.size() && pages[i + run] == pages[i] + run)
            ++run;
        runBuffer.resize(run * pageSize);
        for (size_t k = 0; k < run; ++k)
            copyForFile(pages[i + k], std::span(runBuffer).subspan(k * pageSize, pageSize));
        file->write(uint64_t{pages[i]} * pageSize, runBuffer);
        i += run;
    }
}

void PageFile::Impl::copyForFile(PageNo no, std::span<uint8_t> into) {
    if (const Frame* frame = cache.peek(no))
        std::memcpy(into.data(), frame->data, frame->size);
    else
        spill->get(marks[no].spillSlot, into);
    if (codec && no != 0) codec->encode(no, into);
}

bool PageFile::Impl::restoreFile() noexcept {
    try {
        if (journal.exists()) journal.rollBack(*file);
        return true;
    } catch (...) {
        return false;
    }
}

void PageFile::Impl::rollbackOutermost() noexcept {
    forgetWrite();
    releaseLocks();
}

void PageFile::Impl::forgetWrite() noexcept {
    const bool changed = !modified.empty();
    for (const PageNo no : modified)
        if (Frame* frame = cache.find(no)) cache.detach(*frame);
    pageCount = committedCount;
    clearWriteState();
    if (created) removeCreated();
    if (!changed) return;
    ++generation;
    ++changeCount;
}

void PageFile::Impl::clearWriteState() noexcept {
    for (const PageNo no : modified) {
        marks[no].modified = false;
        marks[no].spillSlot = SpillFile::kNone;
        if (Frame* frame = cache.find(no)) frame->dirty = false;
    }
    modified.clear();
    savepoints.clear();
    nestedWrites.clear();
    broken = nullptr;
    if (spill) spill->clear();
}

// The creation is undone: the name goes, and with it everything of this file.
void PageFile::Impl::removeCreated() noexcept {
    created = false;
    cache.clear(PageCache::Keep::Nothing);
    pageCount = committedCount = 0;
    try {
        const bool ours = file && file->isStillAt(realPath);
        file.reset();
        if (ours) io->remove(realPath);
    } catch (...) {
        // An empty file stays behind; it is no database and opens as none.
    }
}

void PageFile::Impl::releaseLocks() noexcept {
    writing = false;
    if (locks.level() == Level::Exclusive)
        locks.unlockExclusive(readDepth > 0 ? Level::Shared : Level::None);
    else if (readDepth == 0 && locks.level() == Level::Shared)
        locks.unlockShared();
    if (!created) locks.unlockWriter();
}

} // namespace jet
