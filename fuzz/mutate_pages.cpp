// fuzz/mutate_pages.h: where the numbers lie comes from the engine's own table of offsets.
#include "mutate_pages.h"

#include "jet/pages/journal.h"

#include <algorithm>
#include <cstring>

extern "C" size_t LLVMFuzzerMutate(uint8_t* data, size_t size, size_t maxSize);

namespace fuzz {

namespace {
constexpr size_t kVersionAt = 0x14, kMaskedAt = 0x18, kMaskedEnd = 0x98;

const jet::Layout& layoutOf(const Bytes& file) {
    return file.size() > kVersionAt && file[kVersionAt] == 0 ? jet::kJet3 : jet::kJet4;
}
} // namespace

PageMutator::PageMutator(Bytes& file, size_t room, uint32_t seed)
    : file_(file), room_(room), random_(seed), layout_(layoutOf(file)) {}

void PageMutator::mutate() {
    for (size_t steps = 1 + below(4); steps > 0; --steps)
        step();
}

void PageMutator::step() {
    if (pages() < 2 || oneIn(12)) return wholePages();
    if (oneIn(20)) return headerPage();
    const size_t page = (1 + below(pages() - 1)) * layout_.pageSize;
    if (oneIn(24)) return byte(page); // its type
    if (oneIn(8)) return nearby(page + below(layout_.pageSize - 16), 16);
    switch (file_[page]) {
    case jet::PageType::kData: return dataPage(page);
    case jet::PageType::kTableDef: return definition(page);
    case jet::PageType::kIndexNode:
    case jet::PageType::kIndexLeaf: return index(page);
    default: return byte(page + 4 + below(layout_.pageSize - 4));
    }
}

uint16_t PageMutator::get16(size_t at) const {
    uint16_t v = 0;
    if (at + sizeof v <= file_.size()) std::memcpy(&v, &file_[at], sizeof v);
    return v;
}

uint32_t PageMutator::get32(size_t at) const {
    uint32_t v = 0;
    if (at + sizeof v <= file_.size()) std::memcpy(&v, &file_[at], sizeof v);
    return v;
}

void PageMutator::number32(size_t at) {
    if (at + 4 > file_.size()) return;
    const uint32_t old = get32(at);
    const uint32_t choices[] = {0,           1,           old + 1,
                                old - 1,     old * 2,     old ^ (1u << below(32)),
                                255,         0x7FFFFFFFu, 0xFFFFFFFFu,
                                0x80000000u, 0x00FFFFFFu, static_cast<uint32_t>(random_()),
                                old / 2,     0x10000u,    static_cast<uint32_t>(below(4096))};
    const uint32_t v = choices[below(std::size(choices))];
    std::memcpy(&file_[at], &v, sizeof v);
}

void PageMutator::number16(size_t at) {
    if (at + 2 > file_.size()) return;
    const uint16_t old = get16(at);
    const size_t choices[] = {0,
                              1,
                              old + 1u,
                              old - 1u,
                              old * 2u,
                              old ^ (size_t{1} << below(16)),
                              255,
                              0x7FFF,
                              0xFFFF,
                              0x8000,
                              layout_.pageSize,
                              below(65536),
                              256,
                              below(layout_.pageSize),
                              old + 4 - below(9)};
    const auto v = static_cast<uint16_t>(choices[below(std::size(choices))]);
    std::memcpy(&file_[at], &v, sizeof v);
}

void PageMutator::byte(size_t at) {
    if (at >= file_.size()) return;
    const uint8_t old = file_[at];
    const size_t choices[] = {
        0, 1, below(6), 0xFF, 0x80, 0x7F, old + 1u, old - 1u, old ^ (size_t{1} << below(8)), below(256)};
    file_[at] = static_cast<uint8_t>(choices[below(std::size(choices))]);
}

void PageMutator::pageNumber(size_t at) {
    if (at + 4 > file_.size()) return;
    if (oneIn(4)) return number32(at);
    const auto v = static_cast<uint32_t>(below(pages() + 2));
    std::memcpy(&file_[at], &v, sizeof v);
}

void PageMutator::rowPointer(size_t at) {
    if (at + 4 > file_.size()) return;
    if (oneIn(4)) return number32(at);
    const auto row = static_cast<uint32_t>(oneIn(8) ? below(256) : below(8));
    const uint32_t page = oneIn(3) ? get32(at) >> 8 : static_cast<uint32_t>(below(pages() + 1));
    const uint32_t v = page << 8 | row;
    std::memcpy(&file_[at], &v, sizeof v);
}

void PageMutator::nearby(size_t at, size_t length) {
    if (at + length > file_.size()) return;
    Bytes some(file_.begin() + static_cast<ptrdiff_t>(at),
               file_.begin() + static_cast<ptrdiff_t>(at + length));
    const size_t made = LLVMFuzzerMutate(some.data(), length, length);
    std::memcpy(&file_[at], some.data(), std::min(made, length));
}

// Pages appended, cut off, copied, swapped, emptied; the end of the file inside a page.
void PageMutator::wholePages() {
    const size_t size = layout_.pageSize, count = pages();
    if (count == 0) {
        if (file_.empty()) return;
        file_.resize(LLVMFuzzerMutate(file_.data(), file_.size(), file_.size()));
        return;
    }
    const auto at = [&](size_t page) { return file_.begin() + static_cast<ptrdiff_t>(page * size); };
    const size_t a = below(count), b = below(count);
    switch (below(6)) {
    case 0:
        if (file_.size() + size > room_) return;
        file_.resize(count * size);
        file_.insert(file_.end(), size, 0);
        std::copy_n(at(a), size, at(count));
        break;
    case 1: file_.resize((1 + below(count)) * size); break;
    case 2: std::copy_n(at(a), size, at(b)); break;
    case 3: std::swap_ranges(at(a), at(a + 1), at(b == a ? count - 1 : b)); break;
    case 4: std::fill_n(at(a), size, uint8_t{0}); break;
    default:
        if (oneIn(4)) file_.resize(file_.size() - below(std::min(file_.size(), size)));
    }
}

void PageMutator::headerPage() {
    if (oneIn(3)) return nearby(kMaskedAt + below(kMaskedEnd - kMaskedAt - 8), 8);
    byte(oneIn(4) ? kVersionAt : oneIn(2) ? below(kMaskedAt) : kMaskedAt + below(kMaskedEnd - kMaskedAt));
}

void PageMutator::dataPage(size_t page) {
    const size_t table = page + layout_.dataRowTable;
    const size_t rows = std::min<size_t>(get16(page + layout_.dataRowCount), 255), chosen = below(rows);
    switch (rows == 0 ? below(3) : below(12)) {
    case 0: return number16(page + layout_.dataFree);
    case 1: return pageNumber(page + layout_.dataOwner);
    case 2: return number16(page + layout_.dataRowCount);
    case 3: return number16(table + 2 * chosen);
    case 4: file_[table + 2 * chosen + 1] ^= static_cast<uint8_t>(1u << (5 + below(3))); return; // its flags
    default: break;
    }
    const size_t start = get16(table + 2 * chosen) & 0x1FFF;
    const size_t end = chosen == 0 ? layout_.pageSize : get16(table + 2 * (chosen - 1)) & 0x1FFF;
    if (start < end && end <= layout_.pageSize) row(page, page + start, page + end);
}

// Any row: a pointer to where it moved, counts at both ends, a field (perhaps a long value's header), a usage
// map.
void PageMutator::row(size_t page, size_t start, size_t end) {
    const size_t length = end - start;
    if (get32(page + layout_.dataOwner) <= 1 || oneIn(16)) return usageMap(start, end);
    if (length < 8) return byte(start + below(length));
    if (get32(page + layout_.dataOwner) == jet::kOwnerLongValues && oneIn(2)) return rowPointer(start);
    const size_t counts = layout_.rowCountSize, mask = (get16(start) % 256 + 7) / 8;
    const size_t variable = end - std::min(length, mask + counts); // how many; their offsets lie before it
    switch (below(6)) {
    case 0: return counts == 2 ? number16(start) : byte(start);
    case 1: return counts == 2 ? number16(variable) : byte(variable);
    case 2: return number16(variable - std::min(variable - start, counts * (1 + below(8))));
    case 3: return byte(end - 1 - below(std::min(length, mask + 1)));
    case 4: return byte(start + below(length));
    default: break;
    }
    if (layout_.version != 4 || variable < start + 6) return rowPointer(start);
    const size_t field = start + get16(variable - 2 * (1 + below(std::max<size_t>(get16(variable) % 16, 1))));
    if (field + 12 > end) return;
    switch (below(3)) { // as the header of a long value
    case 0: return number32(field);
    case 1: return byte(field + 3);
    default: return rowPointer(field + 4);
    }
}

void PageMutator::usageMap(size_t start, size_t end) {
    if (end - start < 5 || oneIn(4)) return byte(start + below(std::min<size_t>(end - start, 2)));
    if (oneIn(2)) return pageNumber(start + 1 + (oneIn(3) ? 4 * below((end - start - 1) / 4) : 0));
    byte(start + 5 + below(end - start - 5));
}

void PageMutator::definition(size_t page) {
    const jet::Layout& l = layout_;
    const size_t columns = get16(page + l.tdefColumns) % 256,
                 realIndexes = get32(page + l.tdefRealIndexes) % 33;
    const size_t firstColumn = page + l.tdefStart + realIndexes * l.realIndexCountEntry;
    const size_t names = firstColumn + columns * l.columnEntry;
    const size_t end = page + std::min<size_t>(get32(page + l.tdefLength) + 8, l.pageSize);
    switch (below(16)) {
    case 0: return pageNumber(page + l.tdefNext);
    case 1: return number32(page + l.tdefLength);
    case 2: return number32(page + (oneIn(2) ? l.tdefRowCount : l.tdefAutoNumber));
    case 3: return number16(page + (oneIn(2) ? l.tdefMaxColumns : l.tdefVariableColumns));
    case 4: return number16(page + l.tdefColumns);
    case 5: return number32(page + (oneIn(2) ? l.tdefLogicalIndexes : l.tdefRealIndexes));
    case 6:
    case 7: return rowPointer(page + (oneIn(2) ? l.tdefOwnedMap : l.tdefFreeMap));
    case 8:
    case 9:
    case 10: {
        if (columns == 0) return;
        const size_t column = firstColumn + below(columns) * l.columnEntry;
        const size_t numbers[] = {l.column.number,      l.column.variableIndex, l.column.ordinal,
                                  l.column.fixedOffset, l.column.length,        l.column.locale};
        if (oneIn(4)) return byte(column); // type
        if (oneIn(4)) return byte(column + (oneIn(2) ? l.column.flags : l.column.flags2));
        return number16(column + numbers[below(std::size(numbers))]);
    }
    case 11: return number16(names + below(64)); // a length of a name, now and then
    default:                                     // indexes, their names, maps of long values
        if (names >= end) return;
        switch (const size_t at = names + below(end - names); below(4)) {
        case 0: return rowPointer(at);
        case 1: return pageNumber(at);
        case 2: return number16(at);
        default: return byte(at);
        }
    }
}

void PageMutator::index(size_t page) {
    const jet::Layout& l = layout_;
    switch (below(12)) {
    case 0: return number16(page + l.indexFree);
    case 1: return pageNumber(page + l.indexOwner);
    case 2: return pageNumber(page + l.indexPrevious);
    case 3: return pageNumber(page + l.indexNext);
    case 4: return pageNumber(page + l.indexTail);
    case 5: return number16(page + l.indexPrefix);
    case 6: return byte(page + l.indexMask + below(l.indexMaskSize));
    default: break;
    }
    size_t end = page + l.indexEntries; // of some entry, found in the mask
    const size_t wanted = below(l.pageSize - l.indexEntries);
    for (size_t bit = 0; bit < l.pageSize - l.indexEntries; ++bit)
        if (file_[page + l.indexMask + bit / 8] >> (bit % 8) & 1) {
            end = page + l.indexEntries + bit;
            if (bit >= wanted) break;
        }
    if (end < page + l.indexEntries + 8) return;
    if (oneIn(3)) return byte(page + l.indexEntries + below(end - page - l.indexEntries));
    const uint32_t child = static_cast<uint32_t>(below(pages() + 1)); // big-endian; of a leaf: page and row
    if (file_[page] == jet::PageType::kIndexNode)
        for (size_t i = 0; i < 4; ++i)
            file_[end - 1 - i] = static_cast<uint8_t>(child >> (8 * i));
    else
        byte(end - 1 - below(4));
}

void sealJournal(Bytes& journal) {
    constexpr size_t header = 64, summed = 56, recordHead = 16;
    if (journal.size() < header) return;
    std::memcpy(journal.data(), "ORVJRNL1", 8);
    uint32_t pageSize, records;
    uint64_t nonce;
    std::memcpy(&pageSize, &journal[8], 4);
    std::memcpy(&records, &journal[12], 4);
    std::memcpy(&nonce, &journal[24], 8);
    const std::span<const uint8_t> bytes(journal);
    if (pageSize == 2048 || pageSize == 4096)
        for (size_t at = header; records > 0 && at + recordHead + pageSize <= journal.size(); --records) {
            uint32_t page;
            std::memcpy(&page, &journal[at], 4);
            const uint64_t sum =
                jet::journalRecordChecksum(nonce, page, bytes.subspan(at + recordHead, pageSize));
            std::memcpy(&journal[at + 8], &sum, 8);
            at += recordHead + pageSize;
        }
    const uint64_t sum = jet::journalChecksum(nonce, bytes.first(summed));
    std::memcpy(&journal[summed], &sum, 8);
}

namespace {

// Decodes pages of an encoded file for as long as it lives.
class Decoded {
  public:
    explicit Decoded(Bytes& file) : file_(file) {
        refusable([&] {
            pageSize_ = jet::probePageSize(file);
            if (file.size() >= pageSize_) codec_ = jet::makePageCodec(jet::readHeader(file).encodingKey);
        });
        each([&](uint32_t no, std::span<uint8_t> page) { codec_->decode(no, page); });
    }
    ~Decoded() {
        each([&](uint32_t no, std::span<uint8_t> page) { codec_->encode(no, page); });
    }

  private:
    template <class Visit> void each(Visit visit) {
        if (!codec_) return;
        for (size_t no = 1; (no + 1) * pageSize_ <= file_.size(); ++no)
            visit(static_cast<uint32_t>(no), std::span(file_).subspan(no * pageSize_, pageSize_));
    }
    Bytes& file_;
    size_t pageSize_ = 0;
    std::unique_ptr<jet::PageCodec> codec_;
};

// A small part of the input, bytes not pages.
void mutateBytes(Bytes& part, size_t longest, size_t room) {
    const size_t length = part.size();
    if (length == 0) { // LLVMFuzzerMutate wants something to change
        if (longest > 0 && room > 0) part.push_back(0);
        return;
    }
    longest = std::min(longest, length + room);
    part.resize(std::max(longest, length));
    part.resize(LLVMFuzzerMutate(part.data(), length, part.size()));
}

void mutateJournal(Bytes& journal, std::minstd_rand& random) {
    if (random() % 16 == 0) return mutateBytes(journal, journal.size(), 0); // sums and all
    if (journal.size() < 64) return;
    size_t fields[] = {8, 12, 16, 20, 64, 64 + 16 + 4096, 64 + 16 + random() % 4096};
    const size_t at = fields[random() % std::size(fields)];
    if (at + 4 > journal.size()) return;
    uint32_t v;
    std::memcpy(&v, &journal[at], 4);
    const uint32_t choices[] = {0,           1,        v + 1, v - 1, v ^ (1u << (random() % 32)),
                                0xFFFFFFFFu, v + 4096, 2048,  4096};
    v = choices[random() % std::size(choices)];
    std::memcpy(&journal[at], &v, 4);
    sealJournal(journal);
}

} // namespace

} // namespace fuzz

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t* data, size_t size, size_t maxSize, unsigned seed) {
    fuzz::HostileFile parts = fuzz::split({data, size});
    std::minstd_rand random(seed);
    const size_t room = maxSize - std::min(maxSize, size);
    switch (random() % 16) {
    case 0: fuzz::mutateJournal(parts.journal, random); break;
    case 1: fuzz::mutateBytes(parts.lock, parts.lock.size(), 0); break;
    case 2:
    case 3: fuzz::mutateBytes(parts.steps, 16, room > 64 ? room - 64 : 0); break;
    default: {
        const fuzz::Decoded decoded(parts.file);
        fuzz::PageMutator(parts.file, parts.file.size() + room, static_cast<uint32_t>(random())).mutate();
    }
    }
    const fuzz::Bytes made = fuzz::join(parts);
    if (made.empty() || made.size() > maxSize) return size;
    std::memcpy(data, made.data(), made.size());
    return made.size();
}

// Pages of the second file at the same or another place of the first.
extern "C" size_t LLVMFuzzerCustomCrossOver(const uint8_t* first, size_t firstSize, const uint8_t* second,
                                            size_t secondSize, uint8_t* out, size_t maxSize, unsigned seed) {
    fuzz::HostileFile parts = fuzz::split({first, firstSize});
    const fuzz::HostileFile other = fuzz::split({second, secondSize});
    std::minstd_rand random(seed);
    const size_t pageSize = jet::kJet4.pageSize, ours = parts.file.size() / pageSize,
                 theirs = other.file.size() / pageSize;
    for (size_t n = 1 + random() % 3; n > 0 && ours > 0 && theirs > 0; --n) {
        const size_t from = random() % theirs, to = random() % 2 && from < ours ? from : random() % ours;
        std::copy_n(other.file.begin() + static_cast<ptrdiff_t>(from * pageSize), pageSize,
                    parts.file.begin() + static_cast<ptrdiff_t>(to * pageSize));
    }
    if (random() % 4 == 0) parts.journal = other.journal;
    if (random() % 4 == 0) parts.steps = other.steps;
    const fuzz::Bytes made = fuzz::join(parts);
    if (made.size() > maxSize) return 0;
    std::memcpy(out, made.data(), made.size());
    return made.size();
}
