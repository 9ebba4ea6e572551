// jet/pages/page_file.h.
//
// Terms
//   database file   the pages, encoded by the codec; changed only in state Committing or by a recovery.
//   committed state what the database file holds when no journal that counts stands beside it; a retired one
//   counts for nothing.
//   modified page   edited or appended in the running write; its newest bytes are in a frame or in the spill
//   file. hot journal     a journal found under SHARED: who wrote it held EXCLUSIVE and is gone.
//
// Invariants (assertState() is the same in code)
//   1. Reading is allowed exactly in states other than Idle; then SHARED (or EXCLUSIVE) is held, unless we
//   are Alone.
//   2. WRITER is held exactly in Writing and Committing, and by a creator from the start. EXCLUSIVE is held
//   only inside commitWrite() and recover().
//   3. The database file changes only under EXCLUSIVE, after its before-images are durable in the journal and
//   the
//      change counter has moved. Retiring the journal is the commit point; it is durable before WRITER is
//      given up, so nobody builds on a commit that a power failure could undo.
//   4. Whoever holds SHARED and saw the counter unmoved has a cache that agrees with the file. Whoever saw it
//   moved
//      drops the cache, after rolling back the journal if one is there.
//   5. A journal is retired or removed only by who holds WRITER and EXCLUSIVE, so never under the hands of a
//   living writer; a retired one is removed by the last who leaves.
//   6. A frame is dirty only if its page is modified. A modified page below pageCount has a frame or a spill
//   slot.
//   7. No page at or past pageCount is cached. pageCount equals committedCount outside of a write.
//   8. A pinned frame keeps its place and bytes' address; dropping its page only takes it out of the table.
//   9. Savepoints exist only in a write; nested write scopes are savepoints.
//
// States and transitions
//
//             beginRead: lock SHARED, compare counter [recover, refresh]
//      Idle ------------------------------------------------------------> Reading
//       | ^  <----------------------------------------------------------   |  ^
//       | |           endRead (outermost): unlock SHARED                   |  | endWrite with open reads
//       | |                                                                v  |
//       | +-- rollbackWrite: forgetWrite, unlock ------------------------ Writing <--+ edit, append,
//       savepoint, |                                                                  |  |  ^   + undoTo
//       +--- beginWrite: lock WRITER, then as beginRead -------------------+  |
//                                                                             | commitWrite: lock EXCLUSIVE
//      Idle/Reading <-- journal retired ------------------------------ Committing
//      Idle/Reading <-- failed: restoreFile, forgetWrite, error thrown -------+
//
// Commit: EXCLUSIVE (bounded wait) - Journal::write (synced, folder synced) - moveCounter - writePages - sync
// - Journal::retire - unlock - Journal::settle (synced) - WRITER unlocked. A process that dies in between
// leaves a hot journal; the next enterRead() of anybody sees the counter moved (or opens the file, or begins
// a write) and calls recover().
#include "jet/pages/page_file_impl.h"

#include "jet/pages/io_error.h"

#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace jet {

PageFile::PageFile(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}

PageFile::~PageFile() {
    if (impl_->writing) impl_->rollbackOutermost();
    if (impl_->created) impl_->removeCreated();
    impl_->locks.file().leave([this] { impl_->tidyUp(); });
}

// What others left who died goes with the last who leaves.
void PageFile::Impl::tidyUp() noexcept {
    try {
        for (size_t slot = 0, end = locks.file().slotsUsed(); slot < end; ++slot)
            io->remove(spillPath(slot));
        journal.removeRetired();
    } catch (const Error&) {
        // Harms nobody; the .ldb is to go all the same.
    }
}

const std::filesystem::path& PageFile::path() const { return impl_->path; }
size_t PageFile::pageSize() const { return impl_->pageSize; }
bool PageFile::readOnly() const { return impl_->readOnly; }
PageNo PageFile::pageCount() const { return impl_->pageCount; }
uint64_t PageFile::changeCount() const { return impl_->changeCount; }
uint64_t PageFile::generation() const { return impl_->generation; }
bool PageFile::inWrite() const { return impl_->writing; }
void PageFile::letFileGo() {
    assert(impl_->writing && impl_->modified.empty());
    impl_->file.reset();
}

std::vector<std::string> PageFile::users() { return impl_->locks.file().users(LockFile::Whom::All); }

void PageFile::setCodec(std::unique_ptr<PageCodec> codec) {
    impl_->codec = std::move(codec);
    impl_->cache.clear(PageCache::Keep::Dirty); // modified pages are in plain form already
    ++impl_->changeCount;
}

// --- reading

PageRef PageFile::read(PageNo no) {
    Impl& m = *impl_;
    assert(m.readDepth > 0 || m.writing);
    if (Frame* frame = m.cache.find(no)) return PageRef(frame, no);
    return PageRef(&m.load(no), no);
}

Frame& PageFile::Impl::load(PageNo no) {
    if (no >= pageCount)
        throw Error(Err::Corrupt, "Dosya bozuk: olmayan bir sayfaya başvuruluyor.")
            .inFile(pathText(path))
            .onPage(no);
    Frame& frame = takeFrame(no);
    try {
        fill(frame, no);
    } catch (...) {
        cache.detach(frame);
        throw;
    }
    return frame;
}

Frame& PageFile::Impl::takeFrame(PageNo no) {
    Frame* frame = cache.victim();
    if (frame->dirty) {
        Mark& old = mark(frame->page);
        old.spillSlot = spill->put(old.spillSlot, {frame->data, frame->size});
        frame->dirty = false;
    }
    cache.detach(*frame);
    cache.attach(*frame, no);
    return *frame;
}

void PageFile::Impl::fill(Frame& frame, PageNo no) {
    const std::span<uint8_t> bytes(frame.data, frame.size);
    if (no < marks.size() && marks[no].spillSlot != SpillFile::kNone) {
        spill->get(marks[no].spillSlot, bytes);
        return;
    }
    if (file->read(uint64_t{no} * pageSize, bytes) < bytes.size())
        throw Error(Err::Corrupt, "Dosya bozuk: sayfa eksik.").inFile(pathText(path)).onPage(no);
    if (codec && no != 0) codec->decode(no, bytes);
}

// --- writing

PageEdit PageFile::edit(PageNo no) {
    Impl& m = *impl_;
    m.requireWriting();
    PageRef ref = read(no);
    m.markModified(*ref.frame_, no);
    return PageEdit(std::move(ref));
}

PageEdit PageFile::append() {
    Impl& m = *impl_;
    m.requireWriting();
    const PageNo no = m.pageCount;
    if ((uint64_t{no} + 1) * m.pageSize > kLargestDatabase)
        throw Error(Err::DiskIO, "Veritabanı dosyası 2 GB sınırına ulaştı; yeni kayıt eklenemez.")
            .inFile(pathText(m.path));
    m.mark(no);
    Frame& frame = m.takeFrame(no);
    std::memset(frame.data, 0, frame.size);
    PageRef ref(&frame, no);
    ++m.pageCount;
    m.markModified(frame, no);
    return PageEdit(std::move(ref));
}

PageFile::Impl::Mark& PageFile::Impl::mark(PageNo no) {
    if (no >= marks.size()) marks.resize(std::max<size_t>(size_t{no} + 1, marks.size() + marks.size() / 2));
    return marks[no];
}

void PageFile::Impl::markModified(Frame& frame, PageNo no) {
    Mark& known = mark(no);
    if (savepoints.wants(no, known.stamp)) savepoints.save(no, known.stamp, frame.data);
    if (!known.modified) {
        modified.push_back(no);
        known.modified = true;
    }
    frame.dirty = true;
    ++changeCount;
}

void PageFile::Impl::requireWriting() const {
    assert(writing);
    if (broken) std::rethrow_exception(broken);
}

// --- savepoints

size_t PageFile::savepoint() {
    impl_->requireWriting();
    return impl_->savepoints.push(impl_->pageCount);
}

void PageFile::releaseSavepoint(size_t depth) {
    Impl& m = *impl_;
    assert(m.writing && depth >= 1);
    while (m.savepoints.depth() >= depth)
        m.savepoints.release([&m](PageNo no) -> uint64_t& { return m.marks[no].stamp; });
}

void PageFile::rollbackToSavepoint(size_t depth) {
    Impl& m = *impl_;
    assert(m.writing && depth >= 1);
    if (m.broken || depth > m.savepoints.depth()) return;
    try {
        m.undoTo(depth);
    } catch (...) {
        m.broken = std::current_exception(); // half undone: only the whole write can go now
        throw;
    }
}

void PageFile::Impl::undoTo(size_t depth) {
    const PageNo count = savepoints.pageCountAt(depth);
    const auto images = savepoints.imagesFrom(depth);
    const bool changed = !images.empty() || pageCount != count;
    if (pageCount != count) {
        cache.dropFrom(count);
        pageCount = count;
    }
    for (size_t i = images.size(); i-- > 0;) {
        const Savepoints::Image& image = images[i];
        marks[image.page].stamp = image.savedBefore;
        if (image.page >= count) continue; // appended after the outer savepoint, edited in an inner one
        Frame* frame = cache.find(image.page);
        if (!frame) frame = &takeFrame(image.page);
        std::memcpy(frame->data, image.bytes.get(), pageSize);
        frame->dirty = true;
    }
    savepoints.pop(depth);
    if (!changed) return;
    ++generation;
    ++changeCount;
}

// --- scopes

void PageFile::beginRead() {
    Impl& m = *impl_;
    if (m.readDepth == 0 && !m.writing) m.enterRead(Impl::JournalCheck::WhenMoved);
    ++m.readDepth;
}

void PageFile::endRead() noexcept {
    Impl& m = *impl_;
    assert(m.readDepth > 0);
    if (--m.readDepth == 0 && !m.writing) m.locks.unlockShared();
}

void PageFile::beginWrite() {
    Impl& m = *impl_;
    if (m.writing)
        m.nestedWrites.push_back(savepoint());
    else
        m.beginOutermostWrite();
}

void PageFile::commitWrite() {
    Impl& m = *impl_;
    assert(m.writing);
    if (m.nestedWrites.empty()) return m.commitOutermost();
    const size_t depth = m.nestedWrites.back();
    m.nestedWrites.pop_back();
    releaseSavepoint(depth);
    if (m.broken) std::rethrow_exception(m.broken);
}

void PageFile::rollbackWrite() noexcept {
    Impl& m = *impl_;
    assert(m.writing);
    if (m.nestedWrites.empty()) return m.rollbackOutermost();
    const size_t depth = m.nestedWrites.back();
    m.nestedWrites.pop_back();
    try {
        rollbackToSavepoint(depth);
    } catch (...) {
        // kept in `broken`: every further step of this write throws it
    }
}

// --- self-check

namespace {
void require(bool holds, const char* invariant) {
    if (holds) return;
    std::fprintf(stderr, "PageFile: invariant broken: %s\n", invariant);
    std::abort();
}
} // namespace

void PageFile::assertState() const {
    const Impl& m = *impl_;
    const auto level = m.locks.level();
    const bool reading = m.readDepth > 0 || m.writing;
    require(reading == (level != LockProtocol::Level::None), "1: a lock is held exactly while reading");
    require(m.locks.isWriter() == (m.writing || m.created), "2: WRITER is held exactly while writing");
    require(level != LockProtocol::Level::Exclusive, "2: EXCLUSIVE only inside a commit or a recovery");
    require(m.writing || (m.modified.empty() && m.savepoints.depth() == 0),
            "9: no changes outside of a write");
    require(m.writing || m.pageCount == m.committedCount, "7: pages appended only in a write");
    for (const Frame* frame : m.cache.frames()) {
        if (frame->page == Frame::kNoPage) continue;
        require(m.cache.peek(frame->page) == frame, "8: a frame with a page is in the table");
        require(frame->page < m.pageCount, "7: no page past the end is cached");
        require(!frame->dirty || (frame->page < m.marks.size() && m.marks[frame->page].modified),
                "6: a dirty frame's page is modified");
    }
    for (const PageNo no : m.modified) {
        require(m.marks[no].modified, "6: a listed page is marked");
        const bool kept = m.cache.peek(no) || m.marks[no].spillSlot != SpillFile::kNone;
        require(no >= m.pageCount || kept, "6: a modified page has a frame or a spill slot");
    }
}

} // namespace jet
