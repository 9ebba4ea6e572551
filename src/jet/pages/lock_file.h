// jet/pages/lock_file.h — the .ldb beside a database: who has it open, and the bytes on which everybody
// locks. It knows joining, leaving and names; what the protocol bytes mean is lock_protocol.h's matter.
#pragma once

#include "jet/pages/io.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace jet {

// Places in the .ldb; all programs that share a file must agree on them, never change.
namespace ldb {
inline constexpr size_t kEntryBytes = 64;            // 32 computer name, 32 security name
inline constexpr size_t kNameBytes = 32;             // NUL after the name, then blanks
inline constexpr size_t kMaxUsers = 255;             // entries from offset 0
inline constexpr uint64_t kCounterOffset = 0x4000;   // 8 bytes, little-endian; absent reads as 0
inline constexpr uint64_t kUserLock = 0x10000001;    // + slot: held while that user has the file open
inline constexpr uint64_t kMutexByte = 0x20000000;   // joining and leaving
inline constexpr uint64_t kWriterByte = 0x20000001;  // the one writer
inline constexpr uint64_t kPendingByte = 0x20000002; // a writer waits for the readers to end
inline constexpr uint64_t kSharedByte = 0x20000003;  // readers share it, a commit excludes them
inline constexpr uint64_t kPresentByte = 0x20000004; // shared by everybody who has the file open
inline constexpr uint64_t kTurnByte = 0x20000005;    // who holds it is the next writer
inline constexpr uint64_t kOwnUserLock = 0x20000100; // + slot: tells that the user of the slot is one of us
// Every lock in here that is not the user lock of one of us is a foreign engine's. Only the place of the user
// locks is known of Jet's own; that its other locks lie in the same range is an assumption.
inline constexpr uint64_t kForeignBegin = 0x10000000, kForeignEnd = 0x20000000;
} // namespace ldb

// Joined: entry and all locks. Listening: the .ldb may only be read: shared locks, no entry. Alone: no .ldb
// could be opened or made (read-only folder): nothing is locked.
enum class Membership { Alone, Listening, Joined };

class LockFile {
  public:
    LockFile(Io& io, const std::filesystem::path& database, std::string securityName, int timeoutMs);
    ~LockFile(); // leaves
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;

    // Opens or makes the .ldb and becomes a user of it. Throws CannotOpen when 255 users are there.
    Membership join();
    // Opens the .ldb only to see who is in it (users(Others), foreignHere()): takes no lock and no entry.
    // False when there is none that can be read. REQUIRES: Alone.
    bool look();
    // Gives up entry and locks; the last one runs `tidyUp` and deletes the .ldb: nobody can come meanwhile.
    // What fails is left to the next who comes.
    void leave(const std::function<void()>& tidyUp = {}) noexcept;

    Membership membership() const { return membership_; }
    IoFile& file() { return *file_; }                   // REQUIRES: not Alone
    bool isLost();                                      // the .ldb was deleted or replaced under us
    bool appeared() const { return io_.exists(path_); } // REQUIRES: Alone
    size_t slot() const { return slot_; }               // REQUIRES: Joined
    const std::filesystem::path& path() const { return path_; }
    const std::filesystem::path& database() const { return database_; }

    size_t slotsUsed(); // one past the highest that anybody ever had in this .ldb

    enum class Whom { All, Others };
    std::vector<std::string> users(Whom whom); // "COMPUTER user" of those whose lock is held now
    // Whether an engine that does not follow our protocol has the file open. May say so for a moment when
    // one of us looks at the same time, on systems that can only try a lock.
    bool foreignHere();

  private:
    enum class Opened { Yes, TryAgain };
    Opened openLockFile();
    Opened createLockFile();
    Opened openReading();
    bool tryJoin();
    void takeSlot();
    void writeEntry();
    std::string readEntry(size_t slot);
    bool foreignAmong(uint64_t begin, uint64_t end);  // user locks
    bool lockedByOther(uint64_t begin, uint64_t end); // our own user lock left aside
    uint64_t entries();

    Io& io_;
    std::filesystem::path database_;
    std::filesystem::path path_;
    std::string securityName_;
    int timeoutMs_;
    Membership membership_ = Membership::Alone;
    std::unique_ptr<IoFile> file_;
    size_t slot_ = 0;
};

} // namespace jet
