// jet/pages/page_file.h: opening, creating, entering a read or a write, and rolling back what a dead process
// left.
#include "jet/pages/page_file_impl.h"

#include "jet/pages/io_error.h"
#include "jet/pages/wait.h"

#include <algorithm>
#include <cassert>

namespace jet {

namespace {
constexpr size_t kProbeBytes = 4096;
using Level = LockProtocol::Level;
} // namespace

PageFile::Impl::Impl(std::shared_ptr<Io> system, std::filesystem::path name, const PageFileOptions& wanted)
    : io(std::move(system)), path(std::move(name)), realPath(io->resolve(path)), options(wanted),
      readOnly(wanted.readOnly), locks(*io, realPath, wanted.securityName, wanted.lockTimeoutMs),
      journal(*io, realPath), cache(wanted.cacheBytes) {}

std::unique_ptr<PageFile> PageFile::open(std::shared_ptr<Io> io, const std::filesystem::path& path,
                                         const PageFileOptions& options, const Probe& probe) {
    std::unique_ptr<PageFile> made(new PageFile(std::make_unique<Impl>(std::move(io), path, options)));
    Impl& m = *made->impl_;
    m.openFile();
    m.join();
    m.enterRead(Impl::JournalCheck::Always);
    try {
        m.probe(probe);
    } catch (...) {
        m.locks.unlockShared();
        throw;
    }
    m.locks.unlockShared();
    return made;
}

std::unique_ptr<PageFile> PageFile::create(std::shared_ptr<Io> io, const std::filesystem::path& path,
                                           const PageFileOptions& options, size_t pageSize) {
    assert(!options.readOnly && pageSize == 4096);
    std::unique_ptr<PageFile> made(new PageFile(std::make_unique<Impl>(std::move(io), path, options)));
    Impl& m = *made->impl_;
    if (m.io->exists(m.realPath) && !m.journal.exists() &&
        m.io->open(m.realPath, OpenMode::ReadOnly)->size() > 0)
        throwIoError(Err::DatabaseExists, IoAction::Open, path, "");
    if (m.locks.file().join() != Membership::Joined) throwIoError(Err::CannotOpen, IoAction::Open, path, "");
    m.locks.lockWriter(); // until the creation is committed or undone
    try {
        m.locks.lockExclusive();
        m.takeEmptyFile();
    } catch (...) {
        if (m.locks.level() == Level::Exclusive) m.locks.unlockExclusive(Level::None);
        m.locks.unlockWriter();
        throw;
    }
    m.locks.unlockExclusive(Level::None);
    m.setPageSize(pageSize);
    return made;
}

// The new file, or the empty one that a creator left who died. A journal without its database must not be
// rolled back into the new one; that of a creation which was being committed empties the file.
// REQUIRES: EXCLUSIVE.
void PageFile::Impl::takeEmptyFile() {
    if (io->exists(realPath)) {
        file = io->open(realPath, OpenMode::ReadWrite);
        if (journal.exists()) journal.rollBack(*file);
        if (file->size() > 0) throwIoError(Err::DatabaseExists, IoAction::Open, path, "");
    } else {
        io->remove(journal.path());
        file = io->open(realPath, OpenMode::CreateNew);
    }
    created = true;
}

void PageFile::Impl::openFile() {
    if (!options.readOnly) {
        try {
            file = io->open(realPath, OpenMode::ReadWrite);
            return;
        } catch (const Error& error) {
            if (error.number() != Err::CannotOpen) throw;
        }
    }
    file = io->open(realPath, OpenMode::ReadOnly);
    fileReadOnly = readOnly = true;
}

void PageFile::Impl::join() {
    if (locks.file().join() != Membership::Joined) readOnly = true;
}

void PageFile::Impl::probe(const Probe& probe) {
    std::vector<uint8_t> first(kProbeBytes);
    first.resize(file->read(0, first));
    try {
        setPageSize(probe(first));
    } catch (Error& error) {
        error.inFile(pathText(path));
        throw;
    }
    if (pageSize != 4096) readOnly = true;
    pageCount = committedCount = static_cast<PageNo>(file->size() / pageSize);
}

void PageFile::Impl::setPageSize(size_t bytes) {
    assert(bytes == 2048 || bytes == 4096);
    pageSize = bytes;
    cache.setPageSize(bytes);
    savepoints = Savepoints(bytes);
    spill.emplace(*io, spillPath(locks.file().slot()));
}

std::filesystem::path PageFile::Impl::spillPath(size_t slot) const {
    std::filesystem::path path = realPath;
    path += "-spill" + std::to_string(slot);
    return path;
}

void PageFile::Impl::requireFile() const {
    if (!file) throwIoError(Err::FileNotFound, IoAction::Open, path, "");
}

void PageFile::Impl::enterRead(JournalCheck check) {
    requireFile();
    if (locks.file().membership() == Membership::Alone) waitForJournalToGo();
    locks.lockShared();
    if (locks.takeUnsure()) counterKnown = false;
    const bool look = locks.takeLooked() || check == JournalCheck::Always;
    try {
        for (;;) {
            const uint64_t counter = locks.counter();
            const bool moved = !counterKnown || counter != seenCounter ||
                               (look && pageSize != 0 && file->changeStamp() != seenStamp);
            // An unmoved counter says that no page was written since: a journal there is of a commit that had
            // not begun. A writer looks all the same, lest a count lost with its machine harms what it
            // builds.
            if (!moved && check == JournalCheck::WhenMoved) return;
            if (!journal.exists()) {
                if (moved) refresh(counter);
                return;
            }
            recover();
            counterKnown = false;
        }
    } catch (...) {
        if (locks.level() == Level::Shared) locks.unlockShared();
        throw;
    }
}

void PageFile::Impl::refresh(uint64_t counter) {
    if (!file->isStillAt(realPath))
        throw Error(Err::CannotOpen,
                    "Dosya silinmiş ya da yerine başka bir dosya konmuş; yeniden açılmalıdır.")
            .inFile(pathText(path));
    const uint64_t size = file->size();
    if (size > kLargestDatabase)
        throw Error(Err::DiskIO, "Dosya 2 GB sınırından büyük; veritabanı olarak açılamaz.")
            .inFile(pathText(path));
    cache.clear(PageCache::Keep::Nothing);
    if (pageSize != 0) pageCount = committedCount = static_cast<PageNo>(size / pageSize);
    seenCounter = counter;
    seenStamp = file->changeStamp();
    counterKnown = true;
    ++generation;
    ++changeCount;
}

// Rolls back a hot journal. REQUIRES: SHARED is held. It is given up meanwhile and held again on return; when
// it throws the level may be None.
void PageFile::Impl::recover() {
    if (locks.file().membership() != Membership::Joined) throwNeedsRecovery();
    std::unique_ptr<IoFile> writable;
    if (fileReadOnly) {
        try {
            writable = io->open(realPath, OpenMode::ReadWrite);
        } catch (const Error&) {
            throwNeedsRecovery();
        }
    }
    const bool wasWriter = locks.isWriter();
    if (!wasWriter) {
        locks.unlockShared();
        locks.lockWriter();
    }
    try {
        locks.lockExclusive();
        if (journal.exists()) journal.rollBack(writable ? *writable : *file); // else another was quicker
    } catch (...) {
        if (locks.level() == Level::Exclusive) locks.unlockExclusive(Level::None);
        if (!wasWriter) locks.unlockWriter();
        throw;
    }
    locks.unlockExclusive(Level::Shared);
    if (!wasWriter) locks.unlockWriter();
}

// Without locks a journal may belong to a living writer: it gets the time of a lock wait.
void PageFile::Impl::waitForJournalToGo() {
    Wait wait(*io, options.lockTimeoutMs);
    while (journal.exists())
        if (!wait.again()) throwNeedsRecovery();
}

void PageFile::Impl::throwNeedsRecovery() const {
    throw Error(Err::CannotOpen,
                "Dosyada yarım kalmış bir yazma işlemi var ve dosya ya da klasörü salt okunur olduğu "
                "için geri alınamıyor. Dosyayı yazma izni olan bir kullanıcı bir kez açmalıdır.")
        .inFile(pathText(path));
}

void PageFile::Impl::beginOutermostWrite() {
    requireFile();
    if (readOnly)
        throw Error(Err::ReadOnly, "Dosya salt okunur açıldı; değiştirilemez.").inFile(pathText(path));
    if (locks.file().membership() != Membership::Joined) { // the .ldb was lost and could not be made again
        locks.file().leave();
        if (readDepth > 0 || locks.file().join() != Membership::Joined)
            throw Error(Err::ReadOnly, "Kilit dosyası oluşturulamıyor; dosya değiştirilemez.")
                .inFile(pathText(path));
        counterKnown = false;
    }
    if (!created) locks.lockWriter();
    try {
        if (readDepth == 0) enterRead(JournalCheck::Always);
        if (!file->isStillAt(realPath))
            throw Error(Err::CannotOpen,
                        "Dosya silinmiş ya da yerine başka bir dosya konmuş; yeniden açılmalıdır.")
                .inFile(pathText(path));
    } catch (...) {
        if (readDepth == 0 && locks.level() == Level::Shared) locks.unlockShared();
        if (!created) locks.unlockWriter();
        throw;
    }
    writing = true;
    broken = nullptr;
}

} // namespace jet
