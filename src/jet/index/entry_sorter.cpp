// jet/index/entry_sorter.h. An entry in a run: u32 length of the key, u32 page, u8 slot, u8 null, key.
#include "jet/index/entry_sorter.h"

#include "jet/error.h"
#include "jet/format/bytes.h"

#include <algorithm>
#include <compare>

namespace jet {

namespace {

constexpr size_t kEntryHead = 10, kReadBytes = 64u << 10, kWriteBytes = 1u << 20;

uint64_t headOf(std::span<const uint8_t> key) {
    uint64_t head = 0;
    for (size_t i = 0; i < sizeof head; ++i)
        head = head << 8 | (i < key.size() ? key[i] : 0);
    return head;
}

std::strong_ordering compareKeys(std::span<const uint8_t> a, std::span<const uint8_t> b) {
    const int order = std::memcmp(a.data(), b.data(), std::min(a.size(), b.size()));
    return order != 0 ? order <=> 0 : a.size() <=> b.size();
}

} // namespace

// Reads one sorted run from the file, a buffer at a time.
class EntrySorter::Run {
  public:
    Run(IoFile& file, uint64_t begin, uint64_t end) : file_(file), offset_(begin), end_(end) {}

    bool next() {
        if (at_ == have_ && offset_ == end_) return false;
        need(kEntryHead);
        const auto head = std::span<const uint8_t>(buffer_).subspan(at_, kEntryHead);
        const size_t length = get32(head, 0);
        entry_.row = {get32(head, 4), head[8]};
        entry_.hasNull = head[9] != 0;
        need(kEntryHead + length);
        entry_.key = std::span<const uint8_t>(buffer_).subspan(at_ + kEntryHead, length);
        at_ += kEntryHead + length;
        return true;
    }
    const SortedEntry& entry() const { return entry_; }

  private:
    void need(size_t bytes) {
        if (have_ - at_ >= bytes) return;
        std::copy(buffer_.begin() + static_cast<ptrdiff_t>(at_),
                  buffer_.begin() + static_cast<ptrdiff_t>(have_), buffer_.begin());
        have_ -= at_;
        at_ = 0;
        buffer_.resize(std::max({buffer_.size(), bytes, kReadBytes}));
        const size_t wanted = static_cast<size_t>(std::min<uint64_t>(buffer_.size() - have_, end_ - offset_));
        const size_t got = file_.read(offset_, std::span(buffer_).subspan(have_, wanted));
        offset_ += got;
        have_ += got;
        if (have_ < bytes) throw Error(Err::DiskIO, "Geçici dosya okunamadı.");
    }

    IoFile& file_;
    uint64_t offset_, end_;
    Bytes buffer_;
    size_t at_ = 0, have_ = 0;
    SortedEntry entry_;
};

EntrySorter::EntrySorter(size_t memoryBytes, MakeFile makeFile)
    : memoryBytes_(makeFile ? memoryBytes : SIZE_MAX), makeFile_(std::move(makeFile)) {}

EntrySorter::~EntrySorter() = default;

void EntrySorter::add(std::span<const uint8_t> key, RowId row, bool hasNull) {
    if (entries_.size() * sizeof(Entry) + keys_.size() + key.size() >= memoryBytes_ && !entries_.empty())
        writeRun();
    entries_.push_back({headOf(key), keys_.size(), static_cast<uint32_t>(key.size()), row, hasNull});
    keys_.insert(keys_.end(), key.begin(), key.end());
}

void EntrySorter::sortMemory() {
    std::sort(entries_.begin(), entries_.end(), [this](const Entry& a, const Entry& b) {
        if (a.head != b.head) return a.head < b.head;
        const auto order = compareKeys(keyOf(a), keyOf(b));
        return order != 0 ? order < 0 : a.row < b.row;
    });
}

void EntrySorter::writeRun() {
    if (!file_) file_ = makeFile_();
    sortMemory();
    const uint64_t begin = fileEnd_;
    Bytes out;
    const auto flush = [&] {
        file_->write(fileEnd_, out);
        fileEnd_ += out.size();
        out.clear();
    };
    for (const Entry& entry : entries_) {
        const size_t at = out.size();
        out.resize(at + kEntryHead);
        put32(out, at, entry.length);
        put32(out, at + 4, entry.row.page);
        out[at + 8] = entry.row.row;
        out[at + 9] = entry.hasNull;
        const auto key = keyOf(entry);
        out.insert(out.end(), key.begin(), key.end());
        if (out.size() >= kWriteBytes) flush();
    }
    flush();
    runs_.emplace_back(begin, fileEnd_);
    entries_.clear();
    keys_.clear();
}

void EntrySorter::start() {
    if (!runs_.empty() && !entries_.empty()) writeRun();
    if (runs_.empty()) {
        if (!sorted_) sortMemory();
        sorted_ = true;
        nextEntry_ = 0;
        return;
    }
    readers_.clear();
    heap_.clear();
    started_ = false;
    for (const auto& [begin, end] : runs_) {
        readers_.push_back(std::make_unique<Run>(*file_, begin, end));
        pushRun(readers_.size() - 1);
    }
}

bool EntrySorter::comesLater(size_t a, size_t b) const {
    const SortedEntry &x = readers_[a]->entry(), &y = readers_[b]->entry();
    const auto order = compareKeys(x.key, y.key);
    return order != 0 ? order > 0 : x.row > y.row;
}

// Reads the run's next entry and puts the run where it belongs; a run at its end goes.
void EntrySorter::pushRun(size_t run) {
    if (!readers_[run]->next()) return;
    heap_.push_back(run);
    std::push_heap(heap_.begin(), heap_.end(), [this](size_t a, size_t b) { return comesLater(a, b); });
}

bool EntrySorter::next(SortedEntry& entry) {
    if (runs_.empty()) {
        if (nextEntry_ == entries_.size()) return false;
        const Entry& found = entries_[nextEntry_++];
        entry = {keyOf(found), found.row, found.hasNull};
        return true;
    }
    if (started_) {
        const size_t given = heap_.back(); // pop_heap put it there
        heap_.pop_back();
        pushRun(given);
    }
    started_ = !heap_.empty();
    if (!started_) return false;
    std::pop_heap(heap_.begin(), heap_.end(), [this](size_t a, size_t b) { return comesLater(a, b); });
    entry = readers_[heap_.back()]->entry();
    return true;
}

} // namespace jet
