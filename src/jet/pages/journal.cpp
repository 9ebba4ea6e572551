// jet/pages/journal.h: written in one stream, read back twice (checked wholly before a byte of the database
// is touched).
#include "jet/pages/journal.h"

#include "jet/error.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>
#include <random>

namespace jet {

namespace {

static_assert(std::endian::native == std::endian::little, "the journal is written as it lies in memory");

constexpr size_t kHeaderBytes = 64;
constexpr size_t kHeaderSummed = 56; // bytes before the checksum
constexpr size_t kRecordHead = 16;
constexpr uint32_t kRunPages = 64;        // read from the database at once
constexpr size_t kFlushBytes = 512 << 10; // written to the journal at once
constexpr uint64_t kLargestFile = 1ull << 32;
constexpr size_t kMagicBytes = 8;
constexpr char kMagic[kMagicBytes] = {'O', 'R', 'V', 'J', 'R', 'N', 'L', '1'};
constexpr char kRetired[kMagicBytes] = {'O', 'R', 'V', 'E', 'N', 'D', 'E', 'D'};
constexpr uint64_t kKeptBytes = 1 << 20; // a longer journal is removed rather than retired

template <class T> T load(const uint8_t* from) {
    T v;
    std::memcpy(&v, from, sizeof v);
    return v;
}
template <class T> void store(uint8_t* to, T v) { std::memcpy(to, &v, sizeof v); }

uint64_t freshNonce() {
    std::random_device device;
    return uint64_t{device()} << 32 | device();
}

} // namespace

// Four independent chains, so that a page costs a fraction of a microsecond.
uint64_t journalChecksum(uint64_t seed, std::span<const uint8_t> bytes) {
    constexpr uint64_t prime = 0x9E3779B97F4A7C15ull;
    uint64_t h[4] = {seed, seed ^ prime, seed + prime, ~seed};
    for (size_t i = 0; i < bytes.size(); i += 8) {
        uint64_t& lane = h[(i >> 3) & 3];
        lane = std::rotl((lane ^ load<uint64_t>(bytes.data() + i)) * prime, 29);
    }
    uint64_t sum = bytes.size();
    for (const uint64_t lane : h)
        sum = std::rotl((sum ^ lane) * prime, 31);
    return sum ^ (sum >> 32);
}

uint64_t journalRecordChecksum(uint64_t nonce, uint32_t page, std::span<const uint8_t> bytes) {
    return journalChecksum(nonce + page * 0xC2B2AE3D27D4EB4Full, bytes);
}

Journal::Journal(Io& io, const std::filesystem::path& database)
    : io_(io), path_(database), database_(database) {
    path_ += "-journal";
}

void Journal::write(IoFile& database, size_t pageSize, std::span<const uint32_t> pages) {
    try {
        writeWhole(database, pageSize, pages);
    } catch (...) {
        file_.reset();
        throw;
    }
}

void Journal::writeWhole(IoFile& database, size_t pageSize, std::span<const uint32_t> pages) {
    Header header{static_cast<uint32_t>(pageSize), 0, database.size(), freshNonce()};
    const auto existing =
        std::lower_bound(pages.begin(), pages.end(), header.fileSize,
                         [&](uint32_t no, uint64_t size) { return uint64_t{no} * pageSize < size; });
    header.records = static_cast<uint32_t>(existing - pages.begin());

    const bool kept = takeRetired();
    if (!kept) {
        io_.remove(path_); // one left by a commit that had not begun
        file_ = io_.open(path_, OpenMode::CreateNew);
        io_.copyAccess(database_, path_);
    }
    buffer_.assign(kHeaderBytes, 0);
    end_ = 0;
    std::memcpy(buffer_.data(), kMagic, sizeof kMagic);
    store(buffer_.data() + 8, header.pageSize);
    store(buffer_.data() + 12, header.records);
    store(buffer_.data() + 16, header.fileSize);
    store(buffer_.data() + 24, header.nonce);
    store(buffer_.data() + kHeaderSummed,
          journalChecksum(header.nonce, std::span(buffer_).first(kHeaderSummed)));
    for (size_t i = 0; i < header.records;) {
        uint32_t run = 1;
        while (run < kRunPages && i + run < header.records && pages[i + run] == pages[i] + run)
            ++run;
        copyRun(database, header, pages[i], run);
        i += run;
    }
    flush();
    file_->sync();
    if (!kept) syncFolder(); // the name of a retired one is durable: a commit with it has succeeded
}

// Opens a retired journal for writing; false when there is none.
bool Journal::takeRetired() {
    if (!io_.exists(path_)) return false;
    try {
        file_ = io_.open(path_, OpenMode::ReadWrite);
        if (isRetired(*file_)) return true;
    } catch (const Error&) {
        // What cannot be opened is removed, or its removal fails.
    }
    file_.reset();
    return false;
}

bool Journal::isRetired(IoFile& journal) const {
    uint8_t magic[kMagicBytes];
    return journal.read(0, magic) == kMagicBytes && std::memcmp(magic, kRetired, kMagicBytes) == 0;
}

bool Journal::exists() const {
    if (!io_.exists(path_)) return false;
    try {
        return !isRetired(*io_.open(path_, OpenMode::ReadOnly));
    } catch (const Error& error) {
        return error.number() != Err::FileNotFound; // one that cannot be looked into may count
    }
}

bool Journal::counts(IoFile& journal) const {
    try {
        Header header;
        return readHeader(journal, header) && isWhole(journal, header);
    } catch (const Error&) {
        return true; // as far as anybody knows
    }
}

void Journal::copyRun(IoFile& database, const Header& header, uint32_t first, uint32_t count) {
    pages_.assign(size_t{count} * header.pageSize, 0); // a part of a page at the end of the file is filled up
    database.read(uint64_t{first} * header.pageSize, pages_);
    for (uint32_t i = 0; i < count; ++i) {
        const auto page = std::span(pages_).subspan(size_t{i} * header.pageSize, header.pageSize);
        const size_t at = buffer_.size();
        buffer_.resize(at + kRecordHead);
        store(buffer_.data() + at, first + i);
        store(buffer_.data() + at + 4, uint32_t{0});
        store(buffer_.data() + at + 8, journalRecordChecksum(header.nonce, first + i, page));
        buffer_.insert(buffer_.end(), page.begin(), page.end());
    }
    if (buffer_.size() >= kFlushBytes) flush();
}

void Journal::flush() {
    if (!buffer_.empty()) file_->write(end_, buffer_);
    end_ += buffer_.size();
    buffer_.clear();
}

void Journal::rollBack(IoFile& database) {
    file_.reset();
    const auto journal = io_.open(path_, OpenMode::ReadOnly);
    Header header;
    if (readHeader(*journal, header) && isWhole(*journal, header)) restore(*journal, header, database);
    remove();
}

bool Journal::readHeader(IoFile& journal, Header& header) const {
    uint8_t bytes[kHeaderBytes];
    if (journal.read(0, bytes) < kHeaderBytes || std::memcmp(bytes, kMagic, sizeof kMagic) != 0) return false;
    header = {load<uint32_t>(bytes + 8), load<uint32_t>(bytes + 12), load<uint64_t>(bytes + 16),
              load<uint64_t>(bytes + 24)};
    if (load<uint64_t>(bytes + kHeaderSummed) !=
        journalChecksum(header.nonce, std::span(bytes).first(kHeaderSummed)))
        return false;
    return (header.pageSize == 2048 || header.pageSize == 4096) && header.fileSize <= kLargestFile &&
           journal.size() >= kHeaderBytes + uint64_t{header.records} * (kRecordHead + header.pageSize);
}

bool Journal::isWhole(IoFile& journal, const Header& header) const {
    std::vector<uint8_t> record(kRecordHead + header.pageSize);
    for (uint32_t i = 0; i < header.records; ++i) {
        if (journal.read(kHeaderBytes + uint64_t{i} * record.size(), record) < record.size()) return false;
        const auto page = load<uint32_t>(record.data());
        if (uint64_t{page} * header.pageSize >= header.fileSize) return false;
        if (load<uint64_t>(record.data() + 8) !=
            journalRecordChecksum(header.nonce, page, std::span(record).subspan(kRecordHead)))
            return false;
    }
    return true;
}

void Journal::restore(IoFile& journal, const Header& header, IoFile& database) const {
    // A commit never makes the file smaller: when it is smaller than before, it was cut by somebody else, and
    // what is missing is not filled up with zeros.
    const uint64_t present = database.size();
    std::vector<uint8_t> record(kRecordHead + header.pageSize);
    for (uint32_t i = 0; i < header.records; ++i) {
        if (journal.read(kHeaderBytes + uint64_t{i} * record.size(), record) < record.size())
            throw Error(Err::DiskIO, "Geri alma günlüğü okunamadı.");
        const uint64_t offset = uint64_t{load<uint32_t>(record.data())} * header.pageSize;
        if (offset < present) database.write(offset, std::span(record).subspan(kRecordHead));
    }
    if (database.size() > header.fileSize) database.truncate(header.fileSize);
    database.sync();
}

void Journal::retire() {
    if (end_ > kKeptBytes) return remove();
    try {
        uint8_t header[kHeaderBytes] = {}; // the sums too: half a new header must not bring back the old one
        std::memcpy(header, kRetired, kMagicBytes);
        file_->write(0, header);
    } catch (const Error&) {
        if (counts(*file_)) throw; // else it is retired, whatever the system said
    }
}

void Journal::settle() noexcept {
    try {
        if (file_) file_->sync();
    } catch (...) {
        // It is retired for everybody; only a power failure right now could undo that, and with it the state
        // before comes back, whole.
    }
    file_.reset();
}

void Journal::removeRetired() {
    if (io_.exists(path_) && !exists()) io_.remove(path_);
}

void Journal::remove() {
    file_.reset();
    try {
        io_.remove(path_);
    } catch (const Error&) {
        if (io_.exists(path_)) throw; // else it is gone, whatever the system said
    }
    try {
        syncFolder();
    } catch (const Error&) {
        // The removal stands for everybody; only a power failure right now could bring the journal back, and
        // with it the state before, whole.
    }
}

void Journal::syncFolder() const { io_.syncFolder(path_.parent_path()); }

} // namespace jet
