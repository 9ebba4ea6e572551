// jet/pages/lock_protocol.h. A lock is always released before it is taken in another kind: not every system
// can convert one in place, and PENDING keeps others out of the gap.
#include "jet/pages/lock_protocol.h"

#include "jet/error.h"
#include "jet/pages/io_error.h"
#include "jet/pages/wait.h"

#include <array>
#include <cassert>

namespace jet {

namespace {
constexpr char kBeingWritten[] = "Dosyaya şu anda başka bir kullanıcı yazıyor";
constexpr char kBeingRead[] =
    "Dosya şu anda başka bir kullanıcı tarafından okunuyor, değişiklikler yazılamadı";
constexpr char kForeign[] =
    "Dosya başka bir programda (örneğin Access'te) açık; orada kapatılana kadar yazılamaz";
constexpr uint64_t kLookMs = 500;
constexpr int kForeignLooks = 3, kForeignPauseMs = 5; // one of us who looks at the same time is gone by then
} // namespace

void LockProtocol::lockShared() {
    assert(level_ == Level::None);
    // The .ldb goes only if a person deletes it: a reader need not ask the system at every read.
    if (file_.membership() == Membership::Alone || io_.tickMilliseconds() >= nextLook_) {
        seesForeign();
        joinIfLost();
    }
    if (file_.membership() != Membership::Alone) {
        Wait wait(io_, timeoutMs_);
        while (!tryShared())
            if (!wait.again()) throwLocked(kBeingWritten);
    }
    level_ = Level::Shared;
}

bool LockProtocol::tryShared() {
    if (!file_.file().tryLock(ldb::kPendingByte, 1, LockKind::Shared)) return false;
    bool locked = false;
    try {
        locked = file_.file().tryLock(ldb::kSharedByte, 1, LockKind::Shared);
    } catch (...) {
        unlock(ldb::kPendingByte);
        throw;
    }
    unlock(ldb::kPendingByte);
    return locked;
}

void LockProtocol::unlockShared() noexcept {
    assert(level_ == Level::Shared);
    level_ = Level::None;
    if (file_.membership() != Membership::Alone) unlock(ldb::kSharedByte);
}

void LockProtocol::lockWriter() {
    assert(!writer_ && file_.membership() == Membership::Joined);
    bool turn = false;
    try {
        Wait wait(io_, timeoutMs_);
        while (!tryWriter(turn))
            if (!wait.again()) throwLocked(kBeingWritten);
        unlock(ldb::kTurnByte);
        turn = false;
        writer_ = true;
        refuseForeign();
    } catch (...) {
        if (turn) unlock(ldb::kTurnByte);
        if (writer_) unlockWriter();
        throw;
    }
}

bool LockProtocol::tryWriter(bool& turn) {
    if (level_ == Level::None && joinIfLost()) turn = false; // that was in another .ldb
    if (file_.membership() != Membership::Joined)
        throw Error(Err::ReadOnly, "Kilit dosyası silindi ve yeniden oluşturulamadı; dosyaya yazılamaz.")
            .inFile(pathText(file_.path()));
    IoFile& file = file_.file();
    if (!turn) turn = file.tryLock(ldb::kTurnByte, 1, LockKind::Exclusive);
    if (turn && file.tryLock(ldb::kWriterByte, 1, LockKind::Exclusive)) return true;
    // Does a commit wait for us to end reading? Then we would wait for each other.
    if (level_ == Level::Shared) {
        if (!file.tryLock(ldb::kPendingByte, 1, LockKind::Shared)) throwLocked(kBeingWritten);
        unlock(ldb::kPendingByte);
    }
    return false;
}

void LockProtocol::refuseForeign() {
    for (int look = 1; seesForeign(); ++look) {
        if (look == kForeignLooks) throwLocked(kForeign);
        io_.sleepMilliseconds(kForeignPauseMs);
    }
}

void LockProtocol::unlockWriter() noexcept {
    assert(writer_ && level_ != Level::Exclusive);
    writer_ = false;
    unlock(ldb::kWriterByte);
}

void LockProtocol::lockExclusive() {
    assert(writer_ && level_ != Level::Exclusive);
    refuseForeign(); // may have come since the write began
    lockWaiting(ldb::kPendingByte, LockKind::Exclusive, kBeingRead);
    if (level_ == Level::Shared) unlock(ldb::kSharedByte);
    try {
        lockWaiting(ldb::kSharedByte, LockKind::Exclusive, kBeingRead);
    } catch (...) {
        // With WRITER and PENDING ours only readers can be in the way, so the shared lock is free for us.
        try {
            if (level_ == Level::Shared) file_.file().tryLock(ldb::kSharedByte, 1, LockKind::Shared);
        } catch (...) {
            // The first error is the one to tell; without its lock this handle can still not commit.
        }
        unlock(ldb::kPendingByte);
        throw;
    }
    level_ = Level::Exclusive;
}

void LockProtocol::unlockExclusive(Level next) noexcept {
    assert(level_ == Level::Exclusive && next != Level::Exclusive);
    unlock(ldb::kSharedByte);
    level_ = next;
    try {
        if (next == Level::Shared) file_.file().tryLock(ldb::kSharedByte, 1, LockKind::Shared);
    } catch (...) {
        // The disk is gone: every later read of this handle fails by itself.
    }
    unlock(ldb::kPendingByte);
}

uint64_t LockProtocol::counter() {
    if (file_.membership() == Membership::Alone) return 0;
    std::array<uint8_t, 8> bytes{};
    file_.file().read(ldb::kCounterOffset, bytes);
    uint64_t value = 0;
    for (size_t i = 8; i-- > 0;)
        value = value << 8 | bytes[i];
    return value;
}

uint64_t LockProtocol::moveCounter() {
    assert(level_ == Level::Exclusive);
    const uint64_t value = counter() + 1;
    std::array<uint8_t, 8> bytes{};
    for (size_t i = 0; i < 8; ++i)
        bytes[i] = static_cast<uint8_t>(value >> (8 * i));
    file_.file().write(ldb::kCounterOffset, bytes);
    return value;
}

bool LockProtocol::seesForeign() {
    nextLook_ = io_.tickMilliseconds() + kLookMs;
    looked_ = true;
    foreign_ = file_.foreignHere();
    unsure_ = unsure_ || foreign_;
    return foreign_;
}

bool LockProtocol::joinIfLost() {
    const bool alone = file_.membership() == Membership::Alone;
    if (alone ? !file_.appeared() : !file_.isLost()) return false;
    if (writer_) // somebody deleted the .ldb under a running write
        throw Error(Err::LockFailed, "Kilit dosyası silindiği için işlem durduruldu.")
            .inFile(pathText(file_.path()));
    unsure_ = unsure_ || !alone;
    file_.leave();
    file_.join();
    unsure_ = unsure_ || file_.membership() != Membership::Alone;
    return true;
}

void LockProtocol::lockWaiting(uint64_t byte, LockKind kind, const char* what) {
    Wait wait(io_, timeoutMs_);
    while (!file_.file().tryLock(byte, 1, kind))
        if (!wait.again()) throwLocked(what);
}

void LockProtocol::unlock(uint64_t byte) noexcept {
    try {
        file_.file().unlock(byte, 1);
    } catch (...) {
        // Releasing fails only with the disk or the network; the lock ends with the handle then.
    }
}

void LockProtocol::throwLocked(const char* what) {
    std::string message = what;
    std::string names;
    for (const std::string& user : file_.users(LockFile::Whom::Others))
        names += (names.empty() ? "" : "; ") + user;
    message += names.empty() ? "." : " (dosyayı açık tutanlar: " + names + ").";
    throw Error(Err::LockedByOther, message).inFile(pathText(file_.database()));
}

} // namespace jet
