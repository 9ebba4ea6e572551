// jet/format/long_value.h. Header in the row: u24 length, kind, row pointer, stamp. Data lie behind the
// header, in one row of a long-value page, or in a chain of rows that each begin with the pointer to the next
// one.
#include "jet/format/long_value.h"

#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/data_page.h"

#include <algorithm>

namespace jet {

namespace {

constexpr size_t kHeaderSize = 12, kPointerAt = 4, kKindAt = 3, kLinkSize = 4;
constexpr uint8_t kInline = 0x80, kOnePage = 0x40, kChain = 0x00;
constexpr size_t kMaxInline = 64, kMaxLength = 0xFFFFFF;
constexpr size_t kHardlyRoom = 128; // a page with less left is taken off the column's free map
constexpr size_t kPagesTried = 3;   // of the free map, before a new page is taken

[[noreturn]] void corrupt(const char* why) { throw Error(Err::Corrupt, why); }

struct Header {
    size_t length;
    uint8_t kind;
    RowId first;
};

Header readHeader(std::span<const uint8_t> bytes) {
    if (bytes.size() < kHeaderSize) corrupt("Uzun alanın başlığı kısa.");
    Header header{get24(bytes, 0), bytes[kKindAt], RowId::fromPacked(get32(bytes, kPointerAt))};
    if (header.kind != kInline && header.kind != kOnePage && header.kind != kChain)
        corrupt("Uzun alanın türü tanınmıyor.");
    if (header.kind == kInline && header.length > bytes.size() - kHeaderSize)
        corrupt("Uzun alan, satırında yazdığından kısa.");
    return header;
}

// The bytes of one row of a long-value page.
std::span<const uint8_t> partAt(const Layout& layout, const PageRef& page, RowId at) {
    try {
        if (data_page::slotCount(layout, page.bytes()) <= at.row ||
            data_page::owner(layout, page.bytes()) != kOwnerLongValues)
            corrupt("Uzun alan, uzun değer sayfası olmayan bir sayfayı gösteriyor.");
        const Slot slot = data_page::slot(layout, page.bytes(), at.row);
        if (slot.deleted || slot.pointer) corrupt("Uzun alan silinmiş bir parçayı gösteriyor.");
        return page.bytes().subspan(slot.start, slot.length);
    } catch (Error& error) {
        throw error.onPage(at.page);
    }
}

// Calls `part` with each row of a value that does not lie inline. A ring of links is found after a few
// rounds: now and then a link is marked, and met again.
void walk(PageFile& file, const Layout& layout, const Header& header,
          const std::function<void(RowId, std::span<const uint8_t>)>& part) {
    if (header.length > file.pageCount() * layout.pageSize) corrupt("Uzun alan dosyadan uzun.");
    RowId at = header.first, marked;
    size_t seen = 0, links = 0, nextMark = 1;
    while (seen < header.length) {
        if (!at) corrupt("Uzun alanın zinciri erken bitiyor.");
        if (at == marked) corrupt("Uzun alanın zinciri döngü oluşturuyor.");
        if (++links == nextMark) {
            marked = at;
            nextMark *= 2;
        }
        const PageRef page = file.read(at.page);
        auto bytes = partAt(layout, page, at);
        RowId next;
        if (header.kind == kChain) {
            if (bytes.size() <= kLinkSize)
                throw Error(Err::Corrupt, "Uzun alanın bir parçası boş.").onPage(at.page);
            next = RowId::fromPacked(get32(bytes, 0));
            bytes = bytes.subspan(kLinkSize);
        }
        seen += bytes.size();
        if (seen > header.length || bytes.empty() || (header.kind == kOnePage && seen != header.length))
            throw Error(Err::Corrupt, "Uzun alanın parçaları yazan uzunluğu tutmuyor.").onPage(at.page);
        part(at, bytes);
        at = next;
    }
    if (header.kind == kChain && at) corrupt("Uzun alanın zinciri yazan uzunluktan sonra da sürüyor.");
}

// Long-value pages of one column.
class Store {
  public:
    Store(PageAllocator& allocator, const FieldDef& field)
        : allocator_(allocator), file_(allocator.file()), layout_(allocator.layout()),
          owned_(file_, layout_, {field.ownedMapPage, field.ownedMapRow}),
          free_(file_, layout_, {field.freeMapPage, field.freeMapRow}) {
        if (field.ownedMapPage == 0 || field.freeMapPage == 0)
            throw Error(Err::Corrupt, "'" + field.name + "' alanının sayfa haritası yok.");
    }

    RowId put(std::span<const uint8_t> row) {
        PageEdit page = pageFor(row.size());
        const uint8_t slot = data_page::insert(layout_, page.bytes(), row);
        const PageNo number = page.number();
        if (data_page::freeBytes(layout_, page.bytes()) < kHardlyRoom)
            free_.remove(number);
        else if (!free_.contains(number))
            free_.add(number, allocator_);
        return {number, slot};
    }

    void erase(RowId at) {
        bool unused = false;
        {
            PageEdit page = file_.edit(at.page);
            data_page::erase(layout_, page.bytes(), at.row);
            unused = data_page::empty(layout_, page.bytes());
        }
        if (unused) {
            owned_.remove(at.page);
            free_.remove(at.page);
            allocator_.free(at.page);
        } else if (!free_.contains(at.page)) {
            free_.add(at.page, allocator_);
        }
    }

  private:
    bool fits(PageNo number, size_t length) {
        const PageRef page = file_.read(number);
        return page.data()[0] == PageType::kData &&
               data_page::owner(layout_, page.bytes()) == kOwnerLongValues &&
               data_page::fits(layout_, page.bytes(), length);
    }

    PageEdit pageFor(size_t length) {
        if (length < layout_.longValueChunk) { // a full link needs a page of its own
            auto candidate = free_.last();
            for (size_t tried = 0; candidate && tried < kPagesTried; ++tried) {
                if (fits(*candidate, length)) return file_.edit(*candidate);
                candidate = free_.next(tried == 0 ? 0 : *candidate + 1);
            }
        }
        PageEdit page = allocator_.allocate();
        data_page::initialise(layout_, page.bytes(), kOwnerLongValues);
        owned_.add(page.number(), allocator_);
        return page;
    }

    PageAllocator& allocator_;
    PageFile& file_;
    const Layout& layout_;
    UsageMap owned_, free_;
};

// Links are written from the last one to the first, so that each knows the next.
RowId putChain(Store& store, size_t chunk, std::span<const uint8_t> stored) {
    RowId next;
    Bytes row;
    for (size_t begin = (stored.size() - 1) / chunk * chunk;; begin -= chunk) {
        const auto part = stored.subspan(begin, std::min(chunk, stored.size() - begin));
        row.resize(kLinkSize);
        put32(row, 0, static_cast<uint32_t>(next.packed()));
        row.insert(row.end(), part.begin(), part.end());
        next = store.put(row);
        if (begin == 0) return next;
    }
}

} // namespace

Bytes readLongValue(PageFile& file, const Layout& layout, std::span<const uint8_t> bytes) {
    const Header header = readHeader(bytes);
    if (header.kind == kInline) {
        const auto data = bytes.subspan(kHeaderSize, header.length);
        return {data.begin(), data.end()};
    }
    Bytes value;
    walk(file, layout, header, [&value](RowId, std::span<const uint8_t> part) {
        value.insert(value.end(), part.begin(), part.end());
    });
    return value;
}

Bytes writeLongValue(PageAllocator& allocator, const FieldDef& field, std::span<const uint8_t> stored) {
    if (stored.size() > kMaxLength)
        throw Error(Err::FieldTooLong, "'" + field.name + "' alanına en çok 16 MB veri yazılabilir.");
    Bytes header(kHeaderSize);
    put32(header, 0, static_cast<uint32_t>(stored.size()));
    if (stored.size() <= kMaxInline) {
        header[kKindAt] = kInline;
        header.resize(kHeaderSize + stored.size());
        std::copy(stored.begin(), stored.end(), header.begin() + kHeaderSize);
        return header;
    }
    Store store(allocator, field);
    const bool onePage = stored.size() <= allocator.layout().maxRowSize;
    const RowId first =
        onePage ? store.put(stored) : putChain(store, allocator.layout().longValueChunk, stored);
    header[kKindAt] = onePage ? kOnePage : kChain;
    put32(header, kPointerAt, static_cast<uint32_t>(first.packed()));
    return header;
}

void freeLongValue(PageAllocator& allocator, const FieldDef& field, std::span<const uint8_t> header) {
    std::vector<RowId> rows;
    forEachLongValueRow(allocator.file(), allocator.layout(), header,
                        [&rows](RowId row) { rows.push_back(row); });
    if (rows.empty()) return;
    Store store(allocator, field);
    for (const RowId row : rows)
        store.erase(row);
}

void forEachLongValueRow(PageFile& file, const Layout& layout, std::span<const uint8_t> bytes,
                         const std::function<void(RowId)>& visit) {
    const Header header = readHeader(bytes);
    if (header.kind != kInline)
        walk(file, layout, header, [&visit](RowId at, std::span<const uint8_t>) { visit(at); });
}

} // namespace jet
