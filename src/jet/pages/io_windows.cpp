// jet/pages/io.h on Windows: positioned ReadFile/WriteFile, FlushFileBuffers and LockFileEx.
#ifdef _WIN32

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef _WIN32_WINNT
#define _WIN32_WINNT 0x0A00
#endif

#include "jet/pages/io.h"
#include "jet/pages/io_error.h"

#include <algorithm>
#include <string_view>
#include <windows.h>

namespace jet {

namespace {

namespace fs = std::filesystem;

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr size_t kLargestTransfer = 1u << 24;
constexpr int kRetries = 30; // of 10 ms each: virus scanners and deletions under way hold a name for a moment
constexpr DWORD kRetryMs = 10;
constexpr DWORD kQuotaExceeded = 1295; // not in every SDK's headers

std::string reasonText(DWORD code) {
    wchar_t text[512] = {};
    DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code,
                                  0, text, static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && (text[length - 1] <= L' ' || text[length - 1] == L'.'))
        --length;
    if (length == 0) return std::to_string(code);
    return pathText(fs::path(std::wstring(text, length)));
}

Err errorNumber(DWORD code) {
    switch (code) {
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
    case kQuotaExceeded: return Err::DiskFull;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
    case ERROR_WRITE_PROTECT: return Err::CannotOpen;
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS: return Err::DatabaseExists;
    case ERROR_FILE_NOT_FOUND: return Err::FileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_DIRECTORY:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_FILENAME_EXCED_RANGE: return Err::PathNotValid;
    default: return Err::DiskIO;
    }
}

[[noreturn]] void fail(IoAction action, const fs::path& path, DWORD code = GetLastError()) {
    throwIoError(errorNumber(code), action, path, reasonText(code));
}

OVERLAPPED at(uint64_t offset) {
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>(offset);
    place.OffsetHigh = static_cast<DWORD>(offset >> 32);
    return place;
}

DWORD low(uint64_t v) { return static_cast<DWORD>(v); }
DWORD high(uint64_t v) { return static_cast<DWORD>(v >> 32); }

// A name whose file is being deleted refuses everything, its attributes too; a protected file still shows
// them.
bool deletionUnderWay(const fs::path& path) {
    return GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES &&
           GetLastError() == ERROR_ACCESS_DENIED;
}

// The whole name as the disk has it, links followed and in its own spelling, so that stations of every kind
// make the files beside it under one name. Empty when there is nothing of that name or the system does not
// tell.
fs::path nameOnDisk(const fs::path& path) {
    const HANDLE handle = CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_BACKUP_SEMANTICS, nullptr); // folders too
    if (handle == INVALID_HANDLE_VALUE) return {};
    std::wstring name(32768, L'\0');
    const DWORD length = GetFinalPathNameByHandleW(handle, name.data(), static_cast<DWORD>(name.size()), 0);
    CloseHandle(handle);
    if (length == 0 || length >= name.size()) return {};
    name.resize(length);
    constexpr std::wstring_view kShare = L"\\\\?\\UNC\\", kPlain = L"\\\\?\\";
    if (name.starts_with(kShare)) return fs::path(L"\\\\" + name.substr(kShare.size()));
    if (name.starts_with(kPlain)) name.erase(0, kPlain.size());
    return fs::path(name);
}

class WindowsFile final : public IoFile {
  public:
    WindowsFile(HANDLE handle, fs::path path) : handle_(handle), path_(std::move(path)) {}
    ~WindowsFile() override { CloseHandle(handle_); }
    WindowsFile(const WindowsFile&) = delete;
    WindowsFile& operator=(const WindowsFile&) = delete;

    size_t read(uint64_t offset, std::span<uint8_t> into) override {
        size_t done = 0;
        while (done < into.size()) {
            OVERLAPPED place = at(offset + done);
            const auto wanted = static_cast<DWORD>(std::min(into.size() - done, kLargestTransfer));
            DWORD n = 0;
            if (!ReadFile(handle_, into.data() + done, wanted, &n, &place)) {
                if (GetLastError() == ERROR_HANDLE_EOF) break;
                fail(IoAction::Read, path_);
            }
            if (n == 0) break;
            done += n;
        }
        return done;
    }

    void write(uint64_t offset, std::span<const uint8_t> from) override {
        size_t done = 0;
        while (done < from.size()) {
            OVERLAPPED place = at(offset + done);
            const auto wanted = static_cast<DWORD>(std::min(from.size() - done, kLargestTransfer));
            DWORD n = 0;
            if (!WriteFile(handle_, from.data() + done, wanted, &n, &place)) fail(IoAction::Write, path_);
            if (n == 0) fail(IoAction::Write, path_, ERROR_DISK_FULL);
            done += n;
        }
    }

    uint64_t size() override {
        LARGE_INTEGER found{};
        if (!GetFileSizeEx(handle_, &found)) fail(IoAction::Read, path_);
        return static_cast<uint64_t>(found.QuadPart);
    }

    void truncate(uint64_t size) override {
        FILE_END_OF_FILE_INFO end{};
        end.EndOfFile.QuadPart = static_cast<LONGLONG>(size);
        if (!SetFileInformationByHandle(handle_, FileEndOfFileInfo, &end, sizeof end))
            fail(IoAction::Truncate, path_);
    }

    void sync() override {
        if (!FlushFileBuffers(handle_)) fail(IoAction::Sync, path_);
    }

    bool tryLock(uint64_t offset, uint64_t length, LockKind kind) override {
        OVERLAPPED place = at(offset);
        const DWORD flags =
            LOCKFILE_FAIL_IMMEDIATELY | (kind == LockKind::Exclusive ? LOCKFILE_EXCLUSIVE_LOCK : 0u);
        if (LockFileEx(handle_, flags, 0, low(length), high(length), &place)) return true;
        const DWORD code = GetLastError();
        if (code == ERROR_LOCK_VIOLATION || code == ERROR_IO_PENDING) return false;
        throwIoError(Err::LockFailed, IoAction::Lock, path_, reasonText(code));
    }

    void unlock(uint64_t offset, uint64_t length) override {
        OVERLAPPED place = at(offset);
        if (UnlockFileEx(handle_, 0, low(length), high(length), &place)) return;
        const DWORD code = GetLastError();
        if (code != ERROR_NOT_LOCKED) throwIoError(Err::LockFailed, IoAction::Lock, path_, reasonText(code));
    }

    bool lockedByOther(uint64_t offset, uint64_t length) override {
        if (!tryLock(offset, length, LockKind::Exclusive)) return true;
        unlock(offset, length);
        return false;
    }

    uint64_t changeStamp() override {
        FILETIME written{};
        if (!GetFileTime(handle_, nullptr, nullptr, &written)) fail(IoAction::Read, path_);
        const uint64_t time = uint64_t{written.dwHighDateTime} << 32 | written.dwLowDateTime;
        return time ^ size() << 32;
    }

    bool isStillAt(const fs::path& path) override {
        const HANDLE there = CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING, 0, nullptr);
        if (there == INVALID_HANDLE_VALUE) return false;
        BY_HANDLE_FILE_INFORMATION a{}, b{};
        const bool known = GetFileInformationByHandle(handle_, &a) && GetFileInformationByHandle(there, &b);
        CloseHandle(there);
        return known && a.dwVolumeSerialNumber == b.dwVolumeSerialNumber &&
               a.nFileIndexHigh == b.nFileIndexHigh && a.nFileIndexLow == b.nFileIndexLow;
    }

  private:
    HANDLE handle_;
    fs::path path_;
};

class WindowsIo final : public Io {
  public:
    std::unique_ptr<IoFile> open(const fs::path& path, OpenMode mode) override {
        const DWORD access = GENERIC_READ | (mode == OpenMode::ReadOnly ? 0u : GENERIC_WRITE);
        const DWORD how = mode == OpenMode::CreateNew ? CREATE_NEW : OPEN_EXISTING;
        for (int tries = 0;; ++tries) {
            const HANDLE handle =
                CreateFileW(path.c_str(), access, kShareAll, nullptr, how, FILE_ATTRIBUTE_NORMAL, nullptr);
            if (handle != INVALID_HANDLE_VALUE) return std::make_unique<WindowsFile>(handle, path);
            const DWORD code = GetLastError();
            const bool passing = code == ERROR_ACCESS_DENIED && deletionUnderWay(path);
            if (!passing || tries >= kRetries) fail(IoAction::Open, path, code);
            Sleep(kRetryMs);
        }
    }

    bool exists(const fs::path& path) override { // a file that is being deleted does not count
        return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
    }

    void remove(const fs::path& path) override {
        for (int tries = 0; !DeleteFileW(path.c_str()); ++tries) {
            const DWORD code = GetLastError();
            if (code == ERROR_FILE_NOT_FOUND || deletionUnderWay(path)) return;
            if (code != ERROR_SHARING_VIOLATION || tries >= kRetries) fail(IoAction::Remove, path, code);
            Sleep(kRetryMs);
        }
    }

    void rename(const fs::path& from, const fs::path& to) override {
        constexpr DWORD flags = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
        for (int tries = 0; !MoveFileExW(from.c_str(), to.c_str(), flags); ++tries) {
            const DWORD code = GetLastError(); // refused while anybody has either file open
            const bool passing = code == ERROR_SHARING_VIOLATION || code == ERROR_ACCESS_DENIED;
            if (!passing || tries >= kRetries) fail(IoAction::Rename, from, code);
            Sleep(kRetryMs);
        }
    }

    void syncFolder(const fs::path&) override {} // the file system's own log keeps names in order

    fs::path resolve(const fs::path& path) override {
        if (const fs::path found = nameOnDisk(path); !found.empty()) return found;
        const fs::path folder = nameOnDisk(path.has_parent_path() ? path.parent_path() : fs::path(L"."));
        if (!folder.empty()) return folder / path.filename(); // the file is yet to be made
        std::error_code error;
        fs::path known = fs::weakly_canonical(path, error);
        return error ? path : known;
    }

    std::string computerName() override {
        wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = {};
        auto length = static_cast<DWORD>(std::size(name));
        if (!GetComputerNameW(name, &length)) return "WINDOWS";
        return pathText(fs::path(std::wstring(name, length)));
    }

    void sleepMilliseconds(int ms) override { Sleep(static_cast<DWORD>(ms)); }
    uint64_t tickMilliseconds() override { return GetTickCount64(); }
};

} // namespace

std::shared_ptr<Io> systemIo() { return std::make_shared<WindowsIo>(); }

} // namespace jet

#endif
