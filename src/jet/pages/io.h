// jet/pages/io.h — the one seam between the engine and the operating system: files, byte-range locks,
// deletion. Nothing above pages/ does I/O. Implementations: io_posix.cpp, io_windows.cpp, and MemoryIo for
// tests.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace jet {

// CreateNew: read-write, fails with DatabaseExists when the file is there.
enum class OpenMode { ReadOnly, ReadWrite, CreateNew };
enum class LockKind { Shared, Exclusive };

// An open file. All errors are jet::Error (DiskIO, DiskFull, CannotOpen, …) carrying the path.
class IoFile {
  public:
    virtual ~IoFile() = default; // closes; releases every lock of this handle
    // Reads up to `into.size()` bytes at `offset`; returns how many (short only at the end of the file).
    virtual size_t read(uint64_t offset, std::span<uint8_t> into) = 0;
    virtual void write(uint64_t offset, std::span<const uint8_t> from) = 0; // extends the file as needed
    virtual uint64_t size() = 0;
    virtual void truncate(uint64_t size) = 0;
    virtual void sync() = 0; // returns when the data are on the disk
    // Byte-range locks held by this handle, not by the process (open-file-description locks on Linux,
    // LockFileEx on Windows). Ranges past the end of the file are allowed. Never waits: false = somebody else
    // is in the way.
    virtual bool tryLock(uint64_t offset, uint64_t length, LockKind kind) = 0;
    virtual void unlock(uint64_t offset, uint64_t length) = 0;
    // True when another handle holds a lock that stands against an exclusive lock on the range.
    // REQUIRES: this handle holds no lock in the range.
    virtual bool lockedByOther(uint64_t offset, uint64_t length) = 0;
    // Differs from an earlier answer when the bytes were changed by anybody since; may differ without that.
    virtual uint64_t changeStamp() = 0;
    // True while the path still names this very file (it may have been deleted or replaced meanwhile).
    virtual bool isStillAt(const std::filesystem::path& path) = 0;
};

// The operating system. One instance is shared by everything; it holds no state of a database.
class Io {
  public:
    virtual ~Io() = default;
    virtual std::unique_ptr<IoFile> open(const std::filesystem::path& path, OpenMode mode) = 0;
    virtual bool exists(const std::filesystem::path& path) = 0;
    virtual void remove(const std::filesystem::path& path) = 0; // not an error when it is not there
    virtual void rename(const std::filesystem::path& from,
                        const std::filesystem::path& to) = 0; // replaces `to`
    // Makes creation, deletion and renaming of files in the folder durable (no-op where the system does it).
    virtual void syncFolder(const std::filesystem::path& folder) = 0;
    // The one true name of a file, links followed: the files beside it must be the same for everybody.
    virtual std::filesystem::path resolve(const std::filesystem::path& path) { return path; }
    // Lets those who may use `from` use `to` as well, as far as we are allowed to; never an error.
    virtual void copyAccess(const std::filesystem::path& /*from*/, const std::filesystem::path& /*to*/) {}
    virtual std::string computerName() = 0;
    virtual void sleepMilliseconds(int ms) = 0;
    virtual void sleepMicroseconds(int us) { sleepMilliseconds((us + 999) / 1000); } // or a little longer
    virtual uint64_t tickMilliseconds() = 0;                                         // monotonic
};

// The real one of this system.
std::shared_ptr<Io> systemIo();

} // namespace jet
