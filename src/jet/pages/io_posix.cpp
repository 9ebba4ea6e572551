// jet/pages/io.h on Linux: pread/pwrite, fdatasync and open-file-description locks.
#ifndef _WIN32

#include "jet/pages/io.h"
#include "jet/pages/io_error.h"

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace jet {

namespace {

namespace fs = std::filesystem;

Err errorNumber(int code, const fs::path& path) {
    switch (code) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG: return Err::DiskFull;
    case EACCES:
    case EPERM:
    case EROFS:
    case ETXTBSY: return Err::CannotOpen;
    case EEXIST: return Err::DatabaseExists;
    case ENOTDIR:
    case ENAMETOOLONG:
    case ELOOP: return Err::PathNotValid;
    case ENOENT: {
        std::error_code ignored;
        const bool folderThere = !path.has_parent_path() || fs::is_directory(path.parent_path(), ignored);
        return folderThere ? Err::FileNotFound : Err::PathNotValid;
    }
    default: return Err::DiskIO;
    }
}

[[noreturn]] void fail(IoAction action, const fs::path& path, int code = errno) {
    throwIoError(errorNumber(code, path), action, path, std::system_category().message(code));
}

class PosixFile final : public IoFile {
  public:
    PosixFile(int fd, fs::path path) : fd_(fd), path_(std::move(path)) {}
    ~PosixFile() override { ::close(fd_); }
    PosixFile(const PosixFile&) = delete;
    PosixFile& operator=(const PosixFile&) = delete;

    size_t read(uint64_t offset, std::span<uint8_t> into) override {
        size_t done = 0;
        while (done < into.size()) {
            const ssize_t n =
                ::pread(fd_, into.data() + done, into.size() - done, static_cast<off_t>(offset + done));
            if (n == 0) break;
            if (n < 0 && errno != EINTR) fail(IoAction::Read, path_);
            if (n > 0) done += static_cast<size_t>(n);
        }
        return done;
    }

    void write(uint64_t offset, std::span<const uint8_t> from) override {
        size_t done = 0;
        while (done < from.size()) {
            const ssize_t n =
                ::pwrite(fd_, from.data() + done, from.size() - done, static_cast<off_t>(offset + done));
            if (n < 0 && errno != EINTR) fail(IoAction::Write, path_);
            if (n > 0) done += static_cast<size_t>(n);
        }
    }

    uint64_t size() override { return static_cast<uint64_t>(status().st_size); }

    void truncate(uint64_t size) override {
        while (::ftruncate(fd_, static_cast<off_t>(size)) != 0)
            if (errno != EINTR) fail(IoAction::Truncate, path_);
    }

    void sync() override {
        while (::fdatasync(fd_) != 0)
            if (errno != EINTR) fail(IoAction::Sync, path_);
    }

    bool tryLock(uint64_t offset, uint64_t length, LockKind kind) override {
        struct flock lock = range(offset, length, kind == LockKind::Shared ? F_RDLCK : F_WRLCK);
        if (control(F_OFD_SETLK, lock) == 0) return true;
        if (errno == EAGAIN || errno == EACCES) return false;
        throwIoError(Err::LockFailed, IoAction::Lock, path_, std::system_category().message(errno));
    }

    void unlock(uint64_t offset, uint64_t length) override {
        struct flock lock = range(offset, length, F_UNLCK);
        if (control(F_OFD_SETLK, lock) != 0)
            throwIoError(Err::LockFailed, IoAction::Lock, path_, std::system_category().message(errno));
    }

    bool lockedByOther(uint64_t offset, uint64_t length) override {
        struct flock lock = range(offset, length, F_WRLCK);
        if (control(F_OFD_GETLK, lock) != 0)
            throwIoError(Err::LockFailed, IoAction::Lock, path_, std::system_category().message(errno));
        return lock.l_type != F_UNLCK;
    }

    uint64_t changeStamp() override {
        const struct stat now = status();
        const auto seconds = static_cast<uint64_t>(now.st_mtim.tv_sec);
        return (seconds * 1'000'000'000 + static_cast<uint64_t>(now.st_mtim.tv_nsec)) ^
               static_cast<uint64_t>(now.st_size) << 32;
    }

    bool isStillAt(const fs::path& path) override {
        struct stat there {};
        if (::stat(path.c_str(), &there) != 0) return false;
        const struct stat here = status();
        return here.st_dev == there.st_dev && here.st_ino == there.st_ino;
    }

    struct stat status() const {
        struct stat found {};
        if (::fstat(fd_, &found) != 0) fail(IoAction::Read, path_);
        return found;
    }

  private:
    static struct flock range(uint64_t offset, uint64_t length, short type) {
        struct flock lock {};
        lock.l_type = type;
        lock.l_whence = SEEK_SET;
        lock.l_start = static_cast<off_t>(offset);
        lock.l_len = static_cast<off_t>(length);
        return lock;
    }

    int control(int command, struct flock& lock) const {
        int result = 0;
        do
            result = ::fcntl(fd_, command, &lock);
        while (result != 0 && errno == EINTR);
        return result;
    }

    int fd_;
    fs::path path_;
};

class PosixIo final : public Io {
  public:
    std::unique_ptr<IoFile> open(const fs::path& path, OpenMode mode) override {
        // O_NONBLOCK: a pipe in the file's place must not hang us; it changes nothing for plain files.
        int flags = O_CLOEXEC | O_NONBLOCK | (mode == OpenMode::ReadOnly ? O_RDONLY : O_RDWR);
        if (mode == OpenMode::CreateNew) flags |= O_CREAT | O_EXCL;
        int fd = -1;
        do
            fd = ::open(path.c_str(), flags, 0666);
        while (fd < 0 && errno == EINTR);
        if (fd < 0) fail(IoAction::Open, path, errno == EISDIR ? EACCES : errno);
        auto file = std::make_unique<PosixFile>(fd, path);
        if (!S_ISREG(file->status().st_mode))
            throwIoError(Err::CannotOpen, IoAction::Open, path, "bu ad bir dosyanın adı değil");
        return file;
    }

    bool exists(const fs::path& path) override {
        if (::access(path.c_str(), F_OK) == 0) return true;
        if (errno == ENOENT || errno == ENOTDIR) return false;
        fail(IoAction::Open, path);
    }

    void remove(const fs::path& path) override {
        if (::unlink(path.c_str()) != 0 && errno != ENOENT) fail(IoAction::Remove, path);
    }

    void rename(const fs::path& from, const fs::path& to) override {
        if (::rename(from.c_str(), to.c_str()) != 0) fail(IoAction::Rename, from);
    }

    void syncFolder(const fs::path& folder) override {
        const fs::path name = folder.empty() ? fs::path(".") : folder;
        const int fd = ::open(name.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        if (fd < 0) fail(IoAction::Folder, name);
        const int code = ::fsync(fd) == 0 ? 0 : errno;
        ::close(fd);
        // Some network file systems cannot sync a folder: there is nothing more that could be done.
        if (code != 0 && code != EINVAL && code != ENOTSUP) fail(IoAction::Folder, name, code);
    }

    fs::path resolve(const fs::path& path) override {
        std::error_code error;
        fs::path found = fs::weakly_canonical(path, error);
        return error ? path : found;
    }

    void copyAccess(const fs::path& from, const fs::path& to) override {
        struct stat found {};
        if (::stat(from.c_str(), &found) != 0) return;
        if (::chown(to.c_str(), static_cast<uid_t>(-1), found.st_gid) != 0) errno = 0; // only where we may
        if (::chmod(to.c_str(), found.st_mode & 0666) != 0) errno = 0;
    }

    std::string computerName() override {
        char name[256] = {};
        if (::gethostname(name, sizeof name - 1) != 0) return "LINUX";
        const std::string full = name;
        return full.substr(0, full.find('.'));
    }

    void sleepMicroseconds(int us) override { std::this_thread::sleep_for(std::chrono::microseconds(us)); }

    void sleepMilliseconds(int ms) override { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }

    uint64_t tickMilliseconds() override {
        const auto now = std::chrono::steady_clock::now().time_since_epoch();
        return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    }
};

} // namespace

std::shared_ptr<Io> systemIo() { return std::make_shared<PosixIo>(); }

} // namespace jet

#endif
