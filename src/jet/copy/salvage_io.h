// jet/copy/salvage_io.h — the way repair looks at a damaged file: nothing is ever written to it nor put
// beside it. Locks are taken where a lock file is there already; bytes that the disk refuses read as zeros; a
// file cut inside a page is filled up with zeros, one past the engine's limit ends there.
#pragma once

#include "jet/pages/page_file.h"

namespace jet {

class ReadOnlyIo final : public Io {
  public:
    explicit ReadOnlyIo(std::shared_ptr<Io> io) : io_(std::move(io)) {}

    std::unique_ptr<IoFile> open(const std::filesystem::path& path, OpenMode mode) override;
    bool exists(const std::filesystem::path& path) override { return io_->exists(path); }
    void remove(const std::filesystem::path&) override {}
    void rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
    void syncFolder(const std::filesystem::path&) override {}
    std::filesystem::path resolve(const std::filesystem::path& path) override { return io_->resolve(path); }
    std::string computerName() override { return io_->computerName(); }
    void sleepMilliseconds(int ms) override { io_->sleepMilliseconds(ms); }
    uint64_t tickMilliseconds() override { return io_->tickMilliseconds(); }

  private:
    std::shared_ptr<Io> io_;
};

// A file that goes when this object goes.
class TemporaryCopy {
  public:
    // Copies `from` and, if it is there, its journal to `to`, which must not exist, and rolls the journal
    // back.
    TemporaryCopy(std::shared_ptr<Io> io, const std::filesystem::path& from, std::filesystem::path to);
    ~TemporaryCopy();
    TemporaryCopy(const TemporaryCopy&) = delete;
    TemporaryCopy& operator=(const TemporaryCopy&) = delete;
    const std::filesystem::path& path() const { return path_; }

  private:
    void remove() noexcept;

    std::shared_ptr<Io> io_;
    std::filesystem::path path_;
};

struct DamagedFile {
    std::unique_ptr<TemporaryCopy> copy; // when a half-done write had to be rolled back
    std::unique_ptr<PageFile> pages;     // goes before the copy
};
// `copyPath`: where a private copy may be made when a journal lies beside the file. Pages are 4096 bytes,
// whatever the header says. Errors: FileNotFound, CannotOpen, NotADatabase for a file without a whole page.
DamagedFile openDamaged(const std::shared_ptr<Io>& io, const std::filesystem::path& path,
                        const std::filesystem::path& copyPath);

} // namespace jet
