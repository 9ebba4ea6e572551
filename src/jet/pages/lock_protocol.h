// jet/pages/lock_protocol.h — many readers or one commit: the locks on the .ldb that order the users of one
// file.
//
//   WRITER     exclusive, from beginning to end of a write: one writer at a time. Readers do not mind it.
//   SHARED     shared by every reader for the length of its read; a commit holds it exclusively (EXCLUSIVE)
//   while it
//              changes the database file.
//   PENDING    taken shared for a moment by who wants SHARED, exclusively by a commit before it asks for
//   EXCLUSIVE: new
//              readers wait, so those who read now end one after the other and the writer is not starved.
//
// Order: WRITER, PENDING, SHARED. EXCLUSIVE needs WRITER and PENDING. Who waits holds nothing that the other
// needs, but for one case: a reader that wants to become the writer while a commit waits for it. It is
// refused at once.
#pragma once

#include "jet/pages/lock_file.h"

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

    // Waits end with Err::LockedByOther. lockShared and lockWriter return true when the .ldb had to be joined
    // anew: counters read before mean nothing any more. REQUIRES: level None.
    bool lockShared();
    void unlockShared() noexcept;
    // REQUIRES: Joined, not the writer yet.
    bool lockWriter();
    void unlockWriter() noexcept;
    // From None or Shared; when it fails the level is as before. REQUIRES: isWriter().
    void lockExclusive();
    void unlockExclusive(Level next) noexcept; // next: None or Shared

    // The change counter. Read it under SHARED, move it under EXCLUSIVE.
    uint64_t counter();
    uint64_t moveCounter(); // returns the new value

    [[noreturn]] void throwLocked(const char* what); // "what" is a Turkish sentence without its full stop

  private:
    bool tryShared();
    bool refresh(); // joins again when the .ldb is gone or (Alone) has come; true = other .ldb than before
    void lockWaiting(uint64_t byte, LockKind kind, const char* what);
    void unlock(uint64_t byte) noexcept;

    Io& io_;
    LockFile file_;
    int timeoutMs_;
    Level level_ = Level::None;
    bool writer_ = false;
};

} // namespace jet
