// jet/pages/io_memory.h — files in memory for tests: shared by all handles of one MemoryIo, with locks
// between them, a clock that only sleeping moves, and a hook before every operation, from which failures are
// injected. It keeps what a power failure would leave: bytes synced, names synced with their folder, and the
// rest at chance. May be used from several threads; the hook is called outside of the inner lock.
#pragma once

#include "jet/pages/io.h"
#include "jet/pages/shared_bytes.h"

#include <functional>
#include <map>
#include <mutex>
#include <vector>

namespace jet {

class MemoryIo final : public Io {
  public:
    enum class Op { Open, Exists, Read, Write, Truncate, Sync, Lock, Remove, Rename, SyncFolder, Sleep };
    struct Step {
        Op op;
        const std::filesystem::path& path;  // empty for Sleep
        uint64_t offset = 0;                // Read, Write, Lock; the size for Truncate
        std::span<const uint8_t> data = {}; // Write
    };
    // Called before each operation (one object, so it may keep count); what it throws is the operation's
    // failure, and then nothing was done.
    using Hook = std::function<void(const Step&)>;
    void setHook(Hook hook);

    // What another machine finds on the disk after this one lost power: no locks, no handles.
    enum class Survives {
        Everything, // only the process died
        Synced,     // exactly what was synced
        Chance,     // each unsynced write, torn into sectors, and each unsynced name by the dice of `seed`
    };
    std::shared_ptr<MemoryIo> afterCrash(Survives what, uint64_t seed = 0) const;

    // Direct access, without hook.
    std::vector<std::filesystem::path> names() const;
    std::vector<uint8_t>
    contents(const std::filesystem::path& path) const; // empty when there is no such file
    bool contains(const std::filesystem::path& path) const;
    uint64_t sizeOf(const std::filesystem::path& path) const;                // 0 when there is no such file
    void put(const std::filesystem::path& path, std::vector<uint8_t> bytes); // creates or replaces, durable
    void erase(const std::filesystem::path& path);                           // as if removed
    void patch(const std::filesystem::path& path, uint64_t offset,
               std::span<const uint8_t> bytes); // as if written

    std::unique_ptr<IoFile> open(const std::filesystem::path& path, OpenMode mode) override;
    bool exists(const std::filesystem::path& path) override;
    void remove(const std::filesystem::path& path) override;
    void rename(const std::filesystem::path& from, const std::filesystem::path& to) override;
    void syncFolder(const std::filesystem::path& folder) override;
    std::string computerName() override { return "BELLEK"; }
    void sleepMilliseconds(int ms) override;
    uint64_t tickMilliseconds() override;

  private:
    friend class MemoryFile;
    struct Change { // since the last sync
        uint64_t offset;
        std::vector<uint8_t> bytes;
        bool truncation; // to `offset`
    };
    struct Lock {
        const void* owner;
        uint64_t offset, length;
        LockKind kind;
    };
    struct Content {
        SharedBytes live, durable;
        std::vector<Change> unsynced;
        uint64_t changes = 0; // ever made
        std::vector<Lock> locks;
    };
    using Names = std::map<std::filesystem::path, std::shared_ptr<Content>>;

    void before(const Step& step) const;
    static void apply(SharedBytes& bytes, const Change& change);

    mutable std::mutex mutex_;
    Names names_, durableNames_;
    std::shared_ptr<const Hook> hook_;
    uint64_t clock_ = 0;
};

} // namespace jet
