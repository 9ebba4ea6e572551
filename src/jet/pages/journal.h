// jet/pages/journal.h — the rollback journal "<database>-journal": what the pages held before a commit
// touched them. Works on raw file bytes. Every call REQUIRES the exclusive lock of lock_protocol.h, but for
// exists() and those that say what they require.
//
//   header  64 bytes: magic 8, page size u32, record count u32, file size before u64, nonce u64, unused 24,
//   checksum u64 record  16 bytes: page number u32, zero u32, checksum u64; then the page
//
// Integers are little-endian. The checksums include the nonce, so records of an older journal on the same
// place of the disk do not pass. A journal counts only when header and all records are there and right; it
// was synced before the database file was touched, so one that does not count belongs to a commit that had
// not begun. A small journal is kept for the next commit, with a header that holds other magic and nothing
// else: it is retired. That costs one write where removing and making it anew would cost two flushes of the
// folder.
#pragma once

#include "jet/pages/io.h"

#include <filesystem>
#include <memory>
#include <span>
#include <vector>

namespace jet {

// Sum over `bytes`, a multiple of 8 of them. The header's seed is the nonce.
uint64_t journalChecksum(uint64_t seed, std::span<const uint8_t> bytes);
// Sum of a record: its page number and its page.
uint64_t journalRecordChecksum(uint64_t nonce, uint32_t page, std::span<const uint8_t> bytes);

class Journal {
  public:
    Journal(Io& io, const std::filesystem::path& database);

    bool exists() const; // and is not retired
    const std::filesystem::path& path() const { return path_; }

    // Writes the before-images of `pages` (ascending; those past the end of the file have none) and makes
    // them durable.
    void write(IoFile& database, size_t pageSize, std::span<const uint32_t> pages);

    // Brings the database file back to what the journal says, durably, then removes the journal. A journal
    // that does not count is only removed. Doing it twice does no harm.
    void rollBack(IoFile& database);

    // The commit point: retires the journal that write() made; after it the commit stands for everybody.
    // settle() makes that durable, and REQUIRES only that no other journal is written meanwhile.
    void retire();
    void settle() noexcept;
    void remove();
    void removeRetired(); // REQUIRES: nobody else has the database open

  private:
    struct Header {
        uint32_t pageSize = 0, records = 0;
        uint64_t fileSize = 0, nonce = 0;
    };
    void writeWhole(IoFile& database, size_t pageSize, std::span<const uint32_t> pages);
    void copyRun(IoFile& database, const Header& header, uint32_t first, uint32_t count);
    void flush();
    bool takeRetired();
    bool counts(IoFile& journal) const;
    bool isRetired(IoFile& journal) const;
    bool readHeader(IoFile& journal, Header& header) const;
    bool isWhole(IoFile& journal, const Header& header) const;
    void restore(IoFile& journal, const Header& header, IoFile& database) const;
    void syncFolder() const;

    Io& io_;
    std::filesystem::path path_;
    std::filesystem::path database_;
    std::unique_ptr<IoFile> file_; // open while writing
    std::vector<uint8_t> buffer_;  // records not yet in the file
    std::vector<uint8_t> pages_;   // a run of pages read from the database
    uint64_t end_ = 0;             // of what was written to the file
};

} // namespace jet
