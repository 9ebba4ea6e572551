// jet/pages/io_memory.h
#include "jet/pages/io_memory.h"

#include "jet/pages/io_error.h"

#include <algorithm>
#include <random>
#include <set>

namespace jet {

namespace {
namespace fs = std::filesystem;
constexpr size_t kSector = 512; // the disk writes these wholly or not at all
} // namespace

class MemoryFile final : public IoFile {
  public:
    MemoryFile(MemoryIo& io, fs::path path, std::shared_ptr<MemoryIo::Content> content, bool writable)
        : io_(io), path_(std::move(path)), content_(std::move(content)), writable_(writable) {}

    ~MemoryFile() override {
        const std::lock_guard guard(io_.mutex_);
        std::erase_if(content_->locks, [this](const auto& lock) { return lock.owner == this; });
    }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    size_t read(uint64_t offset, std::span<uint8_t> into) override {
        io_.before({MemoryIo::Op::Read, path_, offset});
        const std::lock_guard guard(io_.mutex_);
        return content_->live.read(offset, into);
    }

    void write(uint64_t offset, std::span<const uint8_t> from) override {
        requireWritable(IoAction::Write);
        io_.before({MemoryIo::Op::Write, path_, offset, from});
        const std::lock_guard guard(io_.mutex_);
        change({offset, {from.begin(), from.end()}, false});
    }

    uint64_t size() override {
        const std::lock_guard guard(io_.mutex_);
        return content_->live.size();
    }

    void truncate(uint64_t size) override {
        requireWritable(IoAction::Truncate);
        io_.before({MemoryIo::Op::Truncate, path_, size});
        const std::lock_guard guard(io_.mutex_);
        change({size, {}, true});
    }

    void sync() override {
        io_.before({MemoryIo::Op::Sync, path_});
        const std::lock_guard guard(io_.mutex_);
        for (const auto& each : content_->unsynced)
            MemoryIo::apply(content_->durable, each);
        content_->unsynced.clear();
    }

    bool tryLock(uint64_t offset, uint64_t length, LockKind kind) override {
        if (kind == LockKind::Exclusive) requireWritable(IoAction::Lock);
        io_.before({MemoryIo::Op::Lock, path_, offset});
        const std::lock_guard guard(io_.mutex_);
        if (conflict(offset, length, kind)) return false;
        release(offset, length);
        content_->locks.push_back({this, offset, length, kind});
        return true;
    }

    void unlock(uint64_t offset, uint64_t length) override {
        const std::lock_guard guard(io_.mutex_);
        release(offset, length);
    }

    bool lockedByOther(uint64_t offset, uint64_t length) override {
        const std::lock_guard guard(io_.mutex_);
        return conflict(offset, length, LockKind::Exclusive);
    }

    uint64_t changeStamp() override {
        const std::lock_guard guard(io_.mutex_);
        return content_->changes;
    }

    bool isStillAt(const fs::path& path) override {
        const std::lock_guard guard(io_.mutex_);
        const auto found = io_.names_.find(path);
        return found != io_.names_.end() && found->second == content_;
    }

  private:
    void requireWritable(IoAction action) const {
        if (!writable_) throwIoError(Err::DiskIO, action, path_, "salt okunur açıldı");
    }
    void change(MemoryIo::Change made) {
        MemoryIo::apply(content_->live, made);
        ++content_->changes;
        content_->unsynced.push_back(std::move(made));
    }
    bool conflict(uint64_t offset, uint64_t length, LockKind kind) const {
        return std::any_of(content_->locks.begin(), content_->locks.end(), [&](const auto& lock) {
            return lock.owner != this && lock.offset < offset + length &&
                   offset < lock.offset + lock.length &&
                   (kind == LockKind::Exclusive || lock.kind == LockKind::Exclusive);
        });
    }
    void release(uint64_t offset, uint64_t length) {
        std::erase_if(content_->locks, [&](const auto& lock) {
            return lock.owner == this && lock.offset == offset && lock.length == length;
        });
    }

    MemoryIo& io_;
    fs::path path_;
    std::shared_ptr<MemoryIo::Content> content_;
    bool writable_;
};

void MemoryIo::setHook(Hook hook) {
    const std::lock_guard guard(mutex_);
    hook_ = hook ? std::make_shared<const Hook>(std::move(hook)) : nullptr;
}

void MemoryIo::before(const Step& step) const {
    std::shared_ptr<const Hook> hook;
    {
        const std::lock_guard guard(mutex_);
        hook = hook_;
    }
    if (hook) (*hook)(step);
}

void MemoryIo::apply(SharedBytes& bytes, const Change& change) {
    if (change.truncation)
        bytes.resize(change.offset);
    else
        bytes.write(change.offset, change.bytes);
}

std::shared_ptr<MemoryIo> MemoryIo::afterCrash(Survives what, uint64_t seed) const {
    const std::lock_guard guard(mutex_);
    std::mt19937_64 dice(seed);
    const auto survives = [&] {
        return what == Survives::Everything || (what == Survives::Chance && (dice() & 1) != 0);
    };
    const auto keep = [&](const Content& content) {
        SharedBytes bytes = content.durable;
        for (const Change& change : content.unsynced) {
            if (change.truncation) {
                if (survives()) apply(bytes, change);
                continue;
            }
            for (size_t at = 0; at < change.bytes.size(); at += kSector) {
                if (!survives()) continue;
                const size_t n = std::min(kSector, change.bytes.size() - at);
                bytes.write(change.offset + at, std::span(change.bytes).subspan(at, n));
            }
        }
        return bytes;
    };
    std::set<fs::path> all;
    for (const auto& entry : names_)
        all.insert(entry.first);
    for (const auto& entry : durableNames_)
        all.insert(entry.first);
    auto left = std::make_shared<MemoryIo>();
    for (const fs::path& name : all) {
        const auto live = names_.find(name);
        const auto durable = durableNames_.find(name);
        const bool now =
            live != names_.end() && durable != durableNames_.end() && live->second == durable->second;
        const bool useLive = now || survives();
        const auto& from = useLive ? live : durable;
        if (from == (useLive ? names_.end() : durableNames_.end())) continue;
        auto content = std::make_shared<Content>();
        content->live = content->durable = keep(*from->second);
        left->names_[name] = left->durableNames_[name] = content;
    }
    return left;
}

std::vector<fs::path> MemoryIo::names() const {
    const std::lock_guard guard(mutex_);
    std::vector<fs::path> found;
    for (const auto& entry : names_)
        found.push_back(entry.first);
    return found;
}

std::vector<uint8_t> MemoryIo::contents(const fs::path& path) const {
    const std::lock_guard guard(mutex_);
    const auto found = names_.find(path);
    return found == names_.end() ? std::vector<uint8_t>() : found->second->live.all();
}

bool MemoryIo::contains(const fs::path& path) const {
    const std::lock_guard guard(mutex_);
    return names_.contains(path);
}

uint64_t MemoryIo::sizeOf(const fs::path& path) const {
    const std::lock_guard guard(mutex_);
    const auto found = names_.find(path);
    return found == names_.end() ? 0 : found->second->live.size();
}

void MemoryIo::put(const fs::path& path, std::vector<uint8_t> bytes) {
    const std::lock_guard guard(mutex_);
    auto content = std::make_shared<Content>();
    content->live = content->durable = SharedBytes(bytes);
    names_[path] = durableNames_[path] = content;
}

void MemoryIo::erase(const fs::path& path) {
    const std::lock_guard guard(mutex_);
    names_.erase(path);
}

void MemoryIo::patch(const fs::path& path, uint64_t offset, std::span<const uint8_t> bytes) {
    const std::lock_guard guard(mutex_);
    const auto found = names_.find(path);
    if (found == names_.end()) throwIoError(Err::FileNotFound, IoAction::Write, path, "");
    Change change{offset, {bytes.begin(), bytes.end()}, false};
    apply(found->second->live, change);
    ++found->second->changes;
    found->second->unsynced.push_back(std::move(change));
}

std::unique_ptr<IoFile> MemoryIo::open(const fs::path& path, OpenMode mode) {
    before({Op::Open, path});
    const std::lock_guard guard(mutex_);
    auto found = names_.find(path);
    if (mode == OpenMode::CreateNew) {
        if (found != names_.end()) throwIoError(Err::DatabaseExists, IoAction::Open, path, "");
        found = names_.emplace(path, std::make_shared<Content>()).first;
    } else if (found == names_.end()) {
        throwIoError(Err::FileNotFound, IoAction::Open, path, "");
    }
    return std::make_unique<MemoryFile>(*this, path, found->second, mode != OpenMode::ReadOnly);
}

bool MemoryIo::exists(const fs::path& path) {
    before({Op::Exists, path});
    return contains(path);
}

void MemoryIo::remove(const fs::path& path) {
    before({Op::Remove, path});
    erase(path);
}

void MemoryIo::rename(const fs::path& from, const fs::path& to) {
    before({Op::Rename, from});
    const std::lock_guard guard(mutex_);
    const auto found = names_.find(from);
    if (found == names_.end()) throwIoError(Err::FileNotFound, IoAction::Rename, from, "");
    names_[to] = found->second;
    names_.erase(from);
}

void MemoryIo::syncFolder(const fs::path& folder) {
    before({Op::SyncFolder, folder});
    const std::lock_guard guard(mutex_);
    const auto inFolder = [&](const auto& entry) { return entry.first.parent_path() == folder; };
    std::erase_if(durableNames_, inFolder);
    for (const auto& entry : names_)
        if (inFolder(entry)) durableNames_.insert(entry);
}

void MemoryIo::sleepMilliseconds(int ms) {
    static const fs::path none;
    {
        const std::lock_guard guard(mutex_);
        clock_ += static_cast<uint64_t>(ms);
    }
    before({Op::Sleep, none});
}

uint64_t MemoryIo::tickMilliseconds() {
    const std::lock_guard guard(mutex_);
    return clock_;
}

} // namespace jet
