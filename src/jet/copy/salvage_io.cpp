// jet/copy/salvage_io.h
#include "jet/copy/salvage_io.h"

#include "jet/format/layout.h"
#include "jet/pages/io_error.h"
#include "jet/pages/journal.h"

#include <algorithm>

namespace jet {

namespace {

namespace fs = std::filesystem;

constexpr size_t kPage = 4096;
constexpr size_t kCopyBytes = 1u << 20;
constexpr int kLockTimeoutMs = 3000;

class ReadOnlyFile final : public IoFile {
  public:
    ReadOnlyFile(std::unique_ptr<IoFile> file, fs::path path)
        : file_(std::move(file)), path_(std::move(path)) {}

    size_t read(uint64_t offset, std::span<uint8_t> into) override {
        const uint64_t end = size();
        if (offset >= end) return 0;
        into = into.first(static_cast<size_t>(std::min<uint64_t>(into.size(), end - offset)));
        for (size_t done = 0; done < into.size(); done += kPage)
            readPiece(offset + done, into.subspan(done, std::min(kPage, into.size() - done)));
        return into.size();
    }
    uint64_t size() override {
        return std::min<uint64_t>((file_->size() + kPage - 1) / kPage * kPage, kMaxFileSize);
    }
    void write(uint64_t, std::span<const uint8_t>) override { refuse(IoAction::Write); }
    void truncate(uint64_t) override { refuse(IoAction::Truncate); }
    void sync() override {}
    bool tryLock(uint64_t offset, uint64_t length, LockKind kind) override {
        return file_->tryLock(offset, length, kind);
    }
    void unlock(uint64_t offset, uint64_t length) override { file_->unlock(offset, length); }
    bool lockedByOther(uint64_t offset, uint64_t length) override {
        return file_->lockedByOther(offset, length);
    }
    uint64_t changeStamp() override { return file_->changeStamp(); }
    bool isStillAt(const fs::path& path) override { return file_->isStillAt(path); }

  private:
    [[noreturn]] void refuse(IoAction action) const { throwIoError(Err::CannotOpen, action, path_, ""); }
    void readPiece(uint64_t offset, std::span<uint8_t> into) {
        size_t got = 0;
        try {
            got = file_->read(offset, into);
        } catch (const Error& error) {
            if (error.number() != Err::DiskIO) throw;
        }
        std::fill(into.begin() + static_cast<ptrdiff_t>(got), into.end(), uint8_t{0});
    }

    std::unique_ptr<IoFile> file_;
    fs::path path_;
};

// Bytes that the disk refuses become zeros in the copy.
void copyFile(Io& io, const fs::path& from, const fs::path& to) {
    const auto source = io.open(from, OpenMode::ReadOnly);
    const auto target = io.open(to, OpenMode::CreateNew);
    std::vector<uint8_t> buffer(kCopyBytes);
    for (uint64_t at = 0;;) {
        const size_t got = source->read(at, buffer);
        if (got == 0) return;
        target->write(at, std::span(buffer).first(got));
        at += got;
    }
}

fs::path journalOf(Io& io, const fs::path& database) { return Journal(io, database).path(); }

std::unique_ptr<PageFile> openPages(const std::shared_ptr<Io>& io, const fs::path& path) {
    PageFileOptions options;
    options.readOnly = true;
    options.lockTimeoutMs = kLockTimeoutMs;
    return PageFile::open(
        std::make_shared<ReadOnlyIo>(io), path, options, [](std::span<const uint8_t> first) {
            if (first.size() < kPage)
                throw Error(Err::NotADatabase, "Dosya boş; içinde kurtarılacak bir şey yok.");
            return kPage;
        });
}

} // namespace

std::unique_ptr<IoFile> ReadOnlyIo::open(const fs::path& path, OpenMode mode) {
    if (mode == OpenMode::CreateNew) throwIoError(Err::CannotOpen, IoAction::Open, path, "");
    auto file = io_->open(path, OpenMode::ReadOnly); // a missing file is told apart from a refused one
    if (mode == OpenMode::ReadWrite) throwIoError(Err::CannotOpen, IoAction::Open, path, "");
    return std::make_unique<ReadOnlyFile>(std::move(file), path);
}

void ReadOnlyIo::rename(const fs::path& from, const fs::path&) {
    throwIoError(Err::CannotOpen, IoAction::Rename, from, "");
}

TemporaryCopy::TemporaryCopy(std::shared_ptr<Io> io, const fs::path& from, fs::path to)
    : io_(std::move(io)), path_(std::move(to)) {
    try {
        const fs::path real = io_->resolve(from);
        copyFile(*io_, real, path_);
        const fs::path journal = journalOf(*io_, real);
        if (!io_->exists(journal)) return; // rolled back by another meanwhile
        copyFile(*io_, journal, journalOf(*io_, path_));
        const auto copy = io_->open(path_, OpenMode::ReadWrite);
        Journal(*io_, path_).rollBack(*copy);
    } catch (...) {
        remove();
        throw;
    }
}

TemporaryCopy::~TemporaryCopy() { remove(); }

void TemporaryCopy::remove() noexcept {
    for (const fs::path& path : {path_, journalOf(*io_, path_)}) {
        try {
            io_->remove(path);
        } catch (const Error&) { // a leftover of ours, not of the user's; nobody to tell here
        }
    }
}

DamagedFile openDamaged(const std::shared_ptr<Io>& io, const fs::path& path, const fs::path& copyPath) {
    if (!io->exists(path))
        throw Error(Err::FileNotFound, "Veritabanı dosyası bulunamadı.").inFile(pathText(path));
    DamagedFile opened;
    try {
        opened.pages = openPages(io, path); // waits for a commit that is under way
    } catch (const Error& error) {
        if (error.number() != Err::CannotOpen || !io->exists(journalOf(*io, io->resolve(path)))) throw;
        opened.copy = std::make_unique<TemporaryCopy>(io, path, copyPath);
        opened.pages = openPages(io, copyPath);
    }
    return opened;
}

} // namespace jet
