// jet/pages/page_file_impl.h — the inside of PageFile, shared by page_file.cpp, page_file_open.cpp and
// page_file_commit.cpp. Invariants and states: head of page_file.cpp.
#pragma once

#include "jet/pages/journal.h"
#include "jet/pages/lock_protocol.h"
#include "jet/pages/page_cache.h"
#include "jet/pages/page_file.h"
#include "jet/pages/savepoints.h"
#include "jet/pages/spill_file.h"

#include <exception>
#include <optional>

namespace jet {

inline constexpr uint64_t kLargestDatabase = 1ull << 31; // bytes, Jet's limit

struct PageFile::Impl {
    Impl(std::shared_ptr<Io> io, std::filesystem::path path, const PageFileOptions& options);

    // What a write knows of one page. Kept from write to write; only pages of `modified` differ from the
    // default.
    struct Mark {
        uint64_t stamp = 0; // of the innermost savepoint that has its image, see savepoints.h
        uint32_t spillSlot = SpillFile::kNone; // its newest bytes, unless a dirty frame has newer ones
        bool modified = false;                 // in `modified`
    };

    std::shared_ptr<Io> io;
    std::filesystem::path path;     // as the caller named it
    std::filesystem::path realPath; // links followed; journal and .ldb stand beside it
    PageFileOptions options;
    std::unique_ptr<IoFile> file; // empty when the creation was undone
    bool fileReadOnly = false;    // the handle cannot write
    bool readOnly = false;        // this PageFile does not write
    bool created = false;         // made by us, nothing committed yet; WRITER is held
    size_t pageSize = 0;          // 0 until the probe told it
    std::unique_ptr<PageCodec> codec;

    LockProtocol locks;
    Journal journal;
    PageCache cache;
    std::optional<SpillFile> spill;
    Savepoints savepoints;
    std::vector<Mark> marks;        // by page number; may be shorter than the file
    std::vector<PageNo> modified;   // pages edited or appended in this write, each once, in no order
    std::vector<uint8_t> runBuffer; // pages on their way to the file

    PageNo pageCount = 0;      // as seen now
    PageNo committedCount = 0; // of the file
    size_t readDepth = 0;
    bool writing = false;
    std::vector<size_t> nestedWrites; // savepoint depths of the write scopes inside the outermost
    std::exception_ptr broken;        // undoing a part failed: the write must be rolled back
    uint64_t changeCount = 0;
    uint64_t generation = 1;
    uint64_t seenCounter = 0;
    uint64_t seenStamp = 0;    // of the file, as IoFile::changeStamp(): others may write without counting
    bool counterKnown = false; // seenCounter belongs to what the cache holds

    // page_file.cpp
    Frame& load(PageNo no);
    Frame& takeFrame(PageNo no); // a frame for a page that is not cached, its bytes undefined
    void fill(Frame& frame, PageNo no);
    Mark& mark(PageNo no);
    void markModified(Frame& frame, PageNo no);
    void requireWriting() const;
    void tidyUp() noexcept; // REQUIRES: nobody else has the database open
    void undoTo(size_t depth);

    // page_file_open.cpp: entering a state of the file
    enum class JournalCheck { WhenMoved, Always };
    void openFile();
    void takeEmptyFile();
    void join();
    void probe(const Probe& probe);
    void setPageSize(size_t bytes);
    std::filesystem::path spillPath(size_t slot) const;
    void requireFile() const;
    void enterRead(JournalCheck check);
    void refresh(uint64_t counter);
    void recover();
    void waitForJournalToGo();
    void beginOutermostWrite();
    [[noreturn]] void throwNeedsRecovery() const;

    // page_file_commit.cpp: leaving a write
    void commitOutermost();
    void rollbackOutermost() noexcept;
    std::vector<PageNo> sortedModified();
    void writePages(const std::vector<PageNo>& pages);
    void copyForFile(PageNo no, std::span<uint8_t> into);
    bool restoreFile() noexcept; // from the journal; false = that failed too
    void forgetWrite() noexcept;
    void clearWriteState() noexcept;
    void removeCreated() noexcept;
    void releaseLocks() noexcept;
};

} // namespace jet
