// jet/pages/page_file.h — the pages of one database file: cache, locks, rollback journal, savepoints.
// It knows page numbers and bytes, never what a page means. Not thread safe: one PageFile per thread.
// The numbered invariants and the state diagram stand at the head of page_file.cpp.
#pragma once

#include "jet/error.h"
#include "jet/pages/frame.h"
#include "jet/pages/io.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace jet {

using PageNo =
    uint32_t; // page number = byte offset / page size; 0 is the header page and also "none" in links

// Transforms a page between file and cache (page encoding). `page` is transformed in place.
class PageCodec {
  public:
    virtual ~PageCodec() = default;
    virtual void decode(PageNo no, std::span<uint8_t> page) const = 0; // after a read
    virtual void encode(PageNo no, std::span<uint8_t> page) const = 0; // before a write
};

struct PageFileOptions {
    bool readOnly = false; // never writes, creates no journal; joins the lock protocol where it can
    size_t cacheBytes =
        64u << 20;              // bound of the page cache; dirty pages past it go to a temporary spill file
    int lockTimeoutMs = 10'000; // a wait longer than this ends with Err::LockedByOther
    std::string securityName = "Admin"; // second half of our .ldb entry
};

class PageFile;

// A pinned page: its bytes stay valid and in place while this object lives. Cheap to move, not copyable.
// Lives no longer than its PageFile.
class PageRef {
  public:
    PageRef() = default;
    PageRef(PageRef&& other) noexcept : frame_(std::exchange(other.frame_, nullptr)), no_(other.no_) {}
    PageRef& operator=(PageRef&& other) noexcept {
        std::swap(frame_, other.frame_);
        std::swap(no_, other.no_);
        return *this;
    }
    ~PageRef() {
        if (frame_) --frame_->pins;
    }
    PageNo number() const { return no_; }
    std::span<const uint8_t> bytes() const { return {frame_->data, frame_->size}; }
    const uint8_t* data() const { return frame_->data; }
    explicit operator bool() const { return frame_ != nullptr; }

  private:
    friend class PageFile;
    friend class PageEdit;
    PageRef(Frame* frame, PageNo no) : frame_(frame), no_(no) { ++frame->pins; }
    Frame* frame_ = nullptr;
    PageNo no_ = 0;
};

// The same page, to be changed; only inside a write. Keep it short: later edit() calls may copy a
// before-image.
class PageEdit {
  public:
    PageEdit(PageEdit&&) noexcept = default;
    PageEdit& operator=(PageEdit&&) noexcept = default;
    PageNo number() const { return ref_.number(); }
    std::span<uint8_t> bytes() const { return {ref_.frame_->data, ref_.frame_->size}; }
    uint8_t* data() const { return ref_.frame_->data; }

  private:
    friend class PageFile;
    explicit PageEdit(PageRef&& ref) : ref_(std::move(ref)) {}
    PageRef ref_;
};

class PageFile {
  public:
    // Opens an existing file. Rolls back a hot journal first (unless readOnly on a read-only folder: then
    // throws Err::LockedByOther-like CannotOpen with a text that says so). `pageSize` 2048 or 4096, told by
    // `probe`, which sees the first 4096 bytes (fewer when the file is shorter) and throws NotADatabase and
    // the like.
    using Probe = std::function<size_t(std::span<const uint8_t> firstBytes)>;
    static std::unique_ptr<PageFile> open(std::shared_ptr<Io> io, const std::filesystem::path& path,
                                          const PageFileOptions& options, const Probe& probe);
    // Creates a new file with no pages (Err::DatabaseExists when it is there and not empty: an empty one was
    // left by a creator who died). The creator appends pages in one write, others wait for its end; when it
    // fails or is rolled back the file is removed again.
    static std::unique_ptr<PageFile> create(std::shared_ptr<Io> io, const std::filesystem::path& path,
                                            const PageFileOptions& options, size_t pageSize);
    ~PageFile(); // rolls back an open write, leaves the .ldb, closes

    PageFile(const PageFile&) = delete;
    PageFile& operator=(const PageFile&) = delete;

    const std::filesystem::path& path() const;
    size_t pageSize() const;
    bool readOnly() const;
    PageNo pageCount() const; // as this handle sees it now (inside a write: with the pages appended so far)

    void setCodec(std::unique_ptr<PageCodec> codec); // drops the cache; page 0 is never transformed

    // --- reading. REQUIRES: inside a read or a write (see ReadScope / WriteScope).
    PageRef read(PageNo no); // Err::Corrupt when no >= pageCount()

    // --- writing. REQUIRES: inside a write.
    PageEdit edit(PageNo no); // page with its present content, will be written at commit
    PageEdit append();        // a new page of zeros at the end; Err::DiskIO with its own text past 2 GB
    // Journal sync, exclusive lock, change counter, pages, sync, journal retired: see page_file.cpp.

    // Savepoints nest; they cost one page copy per page first changed in them, in memory.
    size_t savepoint(); // returns its depth (1, 2, …)
    void releaseSavepoint(size_t depth);
    void rollbackToSavepoint(size_t depth); // undoes and releases it and deeper ones

    // Grows by one with every edit()/append() and when pages were dropped: cursors compare it and seek again.
    uint64_t changeCount() const;
    // Grows by one when anything cached above pages (definitions, maps) must be read anew: another process
    // committed, or a write or savepoint was rolled back.
    uint64_t generation() const;

    // --- scopes, counted; use the RAII classes below. A beginWrite() inside a write is a savepoint, its
    // commitWrite() or rollbackWrite() ends it. When undoing fails for want of disk space the whole write can
    // only be rolled back.
    void beginRead();
    void endRead() noexcept;
    void beginWrite();  // waits for the writer lock up to the timeout; ReadOnly file: Err::ReadOnly
    void commitWrite(); // outermost: writes all, or throws and has rolled back
    void rollbackWrite() noexcept; // outermost: forgets all changes
    bool inWrite() const;

    // Closes the database file and keeps the locks: its name may be given to another file, which some systems
    // refuse for an open one. REQUIRES: a write without changes. After it only the destructor may be called.
    void letFileGo();

    // Names in the .ldb that hold their lock now, as "COMPUTER user", ourselves included.
    std::vector<std::string> users();

    void assertState() const; // the invariants as code; for tests and debug builds

  private:
    struct Impl;
    explicit PageFile(std::unique_ptr<Impl> impl);
    std::unique_ptr<Impl> impl_;
};

// Everything read inside one ReadScope is one state of the file: writers wait with their commit until it
// ends.
class ReadScope {
  public:
    explicit ReadScope(PageFile& file) : file_(&file) { file.beginRead(); }
    ~ReadScope() { file_->endRead(); }
    ReadScope(const ReadScope&) = delete;
    ReadScope& operator=(const ReadScope&) = delete;

  private:
    PageFile* file_;
};

// One statement. Outermost: takes the writer lock, commit() makes it durable. Inside an open write (a batch)
// it is a savepoint: leaving without commit() undoes only what was done in this scope.
class WriteScope {
  public:
    explicit WriteScope(PageFile& file) : file_(&file) { file.beginWrite(); }
    ~WriteScope() { // without commit(): undone
        if (!done_) file_->rollbackWrite();
    }
    void commit() {
        done_ = true; // also when it throws: then all is undone already
        file_->commitWrite();
    }
    WriteScope(const WriteScope&) = delete;
    WriteScope& operator=(const WriteScope&) = delete;

  private:
    PageFile* file_;
    bool done_ = false;
};

} // namespace jet
