// jet/pages/lock_protocol.h — many readers or one commit: the locks on the .ldb that order the users of one
// file.
//
//   WRITER     exclusive, from beginning to end of a write: one writer at a time. Readers do not mind it.
//   TURN       exclusive, by the one who waits for WRITER; the others wait for TURN. Who has just written
//   cannot take WRITER again before him.
//   SHARED     shared by every reader for the length of its read; a commit holds it exclusively (EXCLUSIVE)
//   while it
//              changes the database file.
//   PENDING    taken shared for a moment by who wants SHARED, exclusively by a commit before it asks for
//   EXCLUSIVE: new
//              readers wait, so those who read now end one after the other and the writer is not starved.
//
// Order: TURN, WRITER, PENDING, SHARED. EXCLUSIVE needs WRITER and PENDING. Who waits holds nothing that the
// other needs, but for one case: a reader that wants to become the writer while a commit waits for it. It is
// refused at once.
#pragma once

#include "jet/pages/lock_file.h"

#include <utility>

namespace jet {

class LockProtocol {
  public:
    enum class Level { None, Shared, Exclusive };

    LockProtocol(Io& io, const std::filesystem::path& database, const std::string& securityName,
                 int timeoutMs)
        : io_(io), file_(io, database, securityName, timeoutMs), timeoutMs_(timeoutMs) {}

    LockFile& file() { return file_; }
    const LockFile& file() const { return file_; }
    Level level() const { return level_; }
    bool isWriter() const { return writer_; }

    // Waits end with Err::LockedByOther. lockShared REQUIRES: level None.
    void lockShared();
    void unlockShared() noexcept;
    // REQUIRES: Joined, not the writer yet.
    void lockWriter();
    void unlockWriter() noexcept;
    // From None or Shared; when it fails the level is as before. REQUIRES: isWriter().
    void lockExclusive();
    void unlockExclusive(Level next) noexcept; // next: None or Shared

    // True once after the .ldb had to be joined anew, and at every read while a foreign engine has the file
    // open: counters read before mean nothing then.
    bool takeUnsure() { return std::exchange(unsure_, foreign_); }
    // True once after each look (at every write, now and then at a read): time for the caller's own.
    bool takeLooked() { return std::exchange(looked_, false); }

    // The change counter. Read it under SHARED, move it under EXCLUSIVE.
    uint64_t counter();
    uint64_t moveCounter(); // returns the new value

    // Err::LockedByOther while a foreign engine has the file open: it would not see our locks.
    void refuseForeign();

    [[noreturn]] void throwLocked(const char* what); // "what" is a Turkish sentence without its full stop

  private:
    bool tryShared();
    bool joinIfLost(); // joins again when the .ldb is gone or (Alone) has come, and then returns true
    bool seesForeign();
    bool tryWriter(bool& turn);
    void lockWaiting(uint64_t byte, LockKind kind, const char* what);
    void unlock(uint64_t byte) noexcept;

    Io& io_;
    LockFile file_;
    int timeoutMs_;
    uint64_t nextLook_ = 0; // tick of the next look whether the .ldb is still there
    Level level_ = Level::None;
    bool writer_ = false;
    bool unsure_ = false;
    bool looked_ = false;
    bool foreign_ = false; // at the last look
};

} // namespace jet
