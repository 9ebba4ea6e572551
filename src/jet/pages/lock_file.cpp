// jet/pages/lock_file.h. Joining and leaving exclude each other by kMutexByte; who got it checks that the
// file still has its name, because the one before may have deleted it.
#include "jet/pages/lock_file.h"

#include "jet/error.h"
#include "jet/pages/io_error.h"
#include "jet/pages/wait.h"

#include <algorithm>
#include <array>
#include <cctype>

namespace jet {

namespace {

namespace fs = std::filesystem;

constexpr int kLeaveTimeoutMs = 500;

// KALFA.MDB and KALFA.mdb share KALFA.ldb; any other file keeps its whole name, so that a copy being made
// beside the original (KALFA.tmp) has locks of its own.
fs::path lockFilePath(const fs::path& database) {
    std::string extension = pathText(database.extension());
    std::transform(extension.begin(), extension.end(), extension.begin(), [](unsigned char c) {
        return c < 0x80 ? static_cast<char>(std::tolower(c)) : static_cast<char>(c);
    });
    fs::path path = database;
    if (extension == ".mdb") return path.replace_extension(".ldb");
    path += ".ldb";
    return path;
}

// At most kNameBytes - 1 bytes, cut between characters.
std::string_view cutName(std::string_view name) {
    if (name.size() < ldb::kNameBytes) return name;
    size_t end = ldb::kNameBytes - 1;
    while (end > 0 && (static_cast<uint8_t>(name[end]) & 0xC0) == 0x80)
        --end;
    return name.substr(0, end);
}

std::string readName(std::span<const uint8_t> field) {
    std::string name;
    for (const uint8_t byte : field) {
        if (byte == 0) break;
        name += byte < 0x20 || byte == 0x7F ? '?' : static_cast<char>(byte);
    }
    while (!name.empty() && name.back() == ' ')
        name.pop_back();
    return name;
}

} // namespace

LockFile::LockFile(Io& io, const fs::path& database, std::string securityName, int timeoutMs)
    : io_(io), database_(database), path_(lockFilePath(database)), securityName_(std::move(securityName)),
      timeoutMs_(timeoutMs) {}

LockFile::~LockFile() { leave(); }

Membership LockFile::join() {
    Wait wait(io_, timeoutMs_);
    while (!tryJoin()) {
        file_.reset();
        if (wait.again()) continue;
        Error error(Err::LockFailed, "Kilit dosyası başka bir kullanıcı tarafından tutuluyor.");
        error.inFile(pathText(path_));
        throw error;
    }
    return membership_;
}

bool LockFile::look() {
    try {
        file_ = io_.open(path_, OpenMode::ReadOnly);
    } catch (const Error& error) {
        if (error.number() != Err::FileNotFound && error.number() != Err::CannotOpen) throw;
        return false;
    }
    membership_ = Membership::Listening;
    return true;
}

bool LockFile::tryJoin() {
    if (openLockFile() == Opened::TryAgain) return false;
    if (membership_ == Membership::Alone) return true;
    const LockKind kind = membership_ == Membership::Joined ? LockKind::Exclusive : LockKind::Shared;
    if (!file_->tryLock(ldb::kMutexByte, 1, kind) || !file_->isStillAt(path_)) return false;
    if (!file_->tryLock(ldb::kPresentByte, 1, LockKind::Shared)) return false;
    if (membership_ == Membership::Joined) takeSlot();
    file_->unlock(ldb::kMutexByte, 1);
    return true;
}

LockFile::Opened LockFile::openLockFile() {
    membership_ = Membership::Alone;
    try {
        file_ = io_.open(path_, OpenMode::ReadWrite);
        membership_ = Membership::Joined;
        return Opened::Yes;
    } catch (const Error& error) {
        if (error.number() == Err::FileNotFound) return createLockFile();
        if (error.number() == Err::CannotOpen) return openReading();
        throw;
    }
}

LockFile::Opened LockFile::createLockFile() {
    try {
        file_ = io_.open(path_, OpenMode::CreateNew);
        membership_ = Membership::Joined;
        io_.copyAccess(database_, path_);
        return Opened::Yes;
    } catch (const Error& error) {
        if (error.number() == Err::DatabaseExists) return Opened::TryAgain; // another was quicker
        if (error.number() == Err::CannotOpen) return Opened::Yes;          // Alone
        throw;
    }
}

LockFile::Opened LockFile::openReading() {
    try {
        file_ = io_.open(path_, OpenMode::ReadOnly);
        membership_ = Membership::Listening;
        return Opened::Yes;
    } catch (const Error& error) {
        if (error.number() == Err::FileNotFound) return Opened::TryAgain;
        if (error.number() == Err::CannotOpen) return Opened::Yes; // Alone
        throw;
    }
}

void LockFile::takeSlot() {
    for (slot_ = 0; slot_ < ldb::kMaxUsers; ++slot_) {
        if (!file_->tryLock(ldb::kOwnUserLock + slot_, 1, LockKind::Exclusive)) continue;
        if (file_->tryLock(ldb::kUserLock + slot_, 1, LockKind::Exclusive)) return writeEntry();
        file_->unlock(ldb::kOwnUserLock + slot_, 1);
    }
    file_.reset();
    membership_ = Membership::Alone;
    throw Error(Err::CannotOpen, "Dosyayı aynı anda en çok 255 kullanıcı açabilir.")
        .inFile(pathText(database_));
}

void LockFile::writeEntry() {
    std::array<uint8_t, ldb::kEntryBytes> entry;
    entry.fill(' ');
    const auto put = [&entry](size_t offset, std::string_view name) {
        name = cutName(name);
        std::copy(name.begin(), name.end(), entry.begin() + static_cast<ptrdiff_t>(offset));
        entry[offset + name.size()] = 0;
    };
    put(0, io_.computerName());
    put(ldb::kNameBytes, securityName_);
    try {
        file_->write(slot_ * ldb::kEntryBytes, entry);
    } catch (const Error& error) {
        if (error.number() != Err::DiskFull) throw; // on a full disk people must still be able to read
    }
}

void LockFile::leave(const std::function<void()>& tidyUp) noexcept {
    if (!file_) return;
    try {
        if (membership_ == Membership::Joined) {
            Wait wait(io_, kLeaveTimeoutMs);
            bool mine = file_->tryLock(ldb::kMutexByte, 1, LockKind::Exclusive);
            while (!mine && wait.again())
                mine = file_->tryLock(ldb::kMutexByte, 1, LockKind::Exclusive);
            if (mine) {
                file_->unlock(ldb::kPresentByte, 1);
                if (file_->tryLock(ldb::kPresentByte, 1, LockKind::Exclusive) && !foreignHere() &&
                    file_->isStillAt(path_)) {
                    if (tidyUp) tidyUp();
                    io_.remove(path_);
                }
            }
        }
    } catch (...) {
        // A .ldb that stays behind harms nobody: its locks end with the handle, the next user takes it over.
    }
    file_.reset();
    membership_ = Membership::Alone;
}

bool LockFile::isLost() { return file_ && !file_->isStillAt(path_); }

size_t LockFile::slotsUsed() {
    std::vector<uint8_t> bytes(ldb::kMaxUsers * ldb::kEntryBytes);
    bytes.resize(file_->read(0, bytes));
    const auto last = std::find_if(bytes.rbegin(), bytes.rend(), [](uint8_t byte) { return byte != 0; });
    const auto used = static_cast<size_t>(bytes.rend() - last);
    return std::max((used + ldb::kEntryBytes - 1) / ldb::kEntryBytes, slot_ + 1);
}

std::string LockFile::readEntry(size_t slot) {
    std::array<uint8_t, ldb::kEntryBytes> entry{};
    if (file_->read(slot * ldb::kEntryBytes, entry) < entry.size()) return {};
    const std::span<const uint8_t> bytes = entry;
    return readName(bytes.first(ldb::kNameBytes)) + " " + readName(bytes.subspan(ldb::kNameBytes));
}

std::vector<std::string> LockFile::users(Whom whom) {
    std::vector<std::string> found;
    if (!file_) return found;
    for (size_t slot = 0, end = entries(); slot < end; ++slot) {
        const bool ours = membership_ == Membership::Joined && slot == slot_;
        if (ours ? whom == Whom::Others : !file_->lockedByOther(ldb::kUserLock + slot, 1)) continue;
        found.push_back(readEntry(slot));
    }
    return found;
}

uint64_t LockFile::entries() { return std::min<uint64_t>(ldb::kMaxUsers, file_->size() / ldb::kEntryBytes); }

bool LockFile::foreignHere() {
    if (!file_ || !lockedByOther(ldb::kForeignBegin, ldb::kForeignEnd)) return false;
    const uint64_t known = ldb::kUserLock + entries();
    if (lockedByOther(ldb::kForeignBegin, ldb::kUserLock) || lockedByOther(known, ldb::kForeignEnd))
        return true;
    return foreignAmong(ldb::kUserLock, known);
}

// Asks for ranges: over a network every question costs. The lowest slots are taken first.
bool LockFile::foreignAmong(uint64_t begin, uint64_t end) {
    if (!lockedByOther(begin, end)) return false;
    if (end - begin == 1) return !file_->lockedByOther(begin - ldb::kUserLock + ldb::kOwnUserLock, 1);
    constexpr uint64_t kFew = 8;
    const uint64_t middle = begin + std::min(kFew, (end - begin) / 2);
    return foreignAmong(begin, middle) || foreignAmong(middle, end);
}

bool LockFile::lockedByOther(uint64_t begin, uint64_t end) {
    const auto locked = [this](uint64_t from, uint64_t to) {
        return from < to && file_->lockedByOther(from, to - from);
    };
    const uint64_t own = ldb::kUserLock + slot_;
    if (membership_ != Membership::Joined || own < begin || own >= end) return locked(begin, end);
    return locked(begin, own) || locked(own + 1, end);
}

} // namespace jet
