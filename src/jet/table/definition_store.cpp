// jet/table/definition_store.h: chains of definition pages.
#include "jet/table/definition_store.h"

#include "jet/error.h"
#include "jet/format/bytes.h"

#include <algorithm>

namespace jet {

namespace {

// 255 fields and 32 indexes with the longest names need under 60 kB; relations may add indexes without a
// limit of ours.
constexpr size_t kMaxImage = 1u << 20;

[[noreturn]] void damaged(PageNo page, const char* reason) {
    throw Error(Err::Corrupt, std::string("Tablo tanımı bozuk: ") + reason + ".").onPage(page);
}

bool isDefinitionPage(std::span<const uint8_t> page) { return page[0] == PageType::kTableDef; }

// Pages of the chain, the first included. A first page that holds no definition gives an empty chain.
std::vector<PageNo> chainOf(PageFile& file, const Layout& layout, PageNo first) {
    std::vector<PageNo> chain;
    const size_t limit = kMaxImage / layout.pageSize;
    for (PageNo page = first; page != 0;) {
        if (page >= file.pageCount()) damaged(page, "sayfa zinciri dosyanın dışına çıkıyor");
        const PageRef ref = file.read(page);
        if (!isDefinitionPage(ref.bytes())) {
            if (chain.empty()) return chain;
            damaged(page, "zincirdeki sayfa bir tanım sayfası değil");
        }
        if (std::find(chain.begin(), chain.end(), page) != chain.end())
            damaged(page, "sayfa zinciri kendine dönüyor");
        if (chain.size() == limit) damaged(page, "sayfa zinciri çok uzun");
        chain.push_back(page);
        page = get32(ref.bytes(), layout.tdefNext);
    }
    return chain;
}

// Sets up one page of the chain with its share of the bytes.
void fillPage(const Layout& layout, std::span<uint8_t> page, PageNo next, size_t bodyAt,
              std::span<const uint8_t> body) {
    std::fill(page.begin(), page.end(), uint8_t{0});
    std::copy(body.begin(), body.end(), page.begin() + static_cast<std::ptrdiff_t>(bodyAt));
    page[0] = PageType::kTableDef;
    page[1] = 1;
    put16(page, layout.tdefFree, static_cast<uint16_t>(layout.pageSize - bodyAt - body.size()));
    put32(page, layout.tdefNext, next);
}

} // namespace

Bytes readDefinition(PageFile& file, const Layout& layout, PageNo first) {
    if (first == 0 || first >= file.pageCount())
        throw Error(Err::NoSuchTable, "Tablo bulunamadı: tanım sayfası dosyada yok.").onPage(first);
    const std::vector<PageNo> chain = chainOf(file, layout, first);
    if (chain.empty())
        throw Error(Err::NoSuchTable, "Tablo bulunamadı: tanım sayfası artık yok.").onPage(first);
    Bytes image;
    image.reserve(chain.size() * layout.pageSize);
    for (const PageNo page : chain) {
        const PageRef ref = file.read(page);
        const auto part = ref.bytes().subspan(page == first ? 0 : layout.tdefBodyOfNextPages);
        image.insert(image.end(), part.begin(), part.end());
    }
    return image;
}

void writeDefinition(PageAllocator& allocator, PageNo first, std::span<const uint8_t> image) {
    PageFile& file = allocator.file();
    const Layout& layout = allocator.layout();
    if (image.size() > kMaxImage)
        throw Error(Err::TooManyFields, "Tablo tanımı çok büyük: alan ve dizin sayısını azaltın.")
            .onPage(first);
    std::vector<PageNo> chain = chainOf(file, layout, first);
    if (chain.empty()) chain.push_back(first);

    const size_t perNext = layout.pageSize - layout.tdefBodyOfNextPages;
    const size_t rest = image.size() > layout.pageSize ? image.size() - layout.pageSize : 0;
    const size_t wanted = 1 + (rest + perNext - 1) / perNext;
    while (chain.size() < wanted)
        chain.push_back(allocator.allocate().number());
    while (chain.size() > wanted) {
        allocator.free(chain.back());
        chain.pop_back();
    }
    size_t done = 0;
    for (size_t i = 0; i < chain.size(); ++i) {
        const size_t bodyAt = i == 0 ? 0 : layout.tdefBodyOfNextPages;
        const size_t length = std::min(layout.pageSize - bodyAt, image.size() - done);
        PageEdit page = file.edit(chain[i]);
        fillPage(layout, page.bytes(), i + 1 < chain.size() ? chain[i + 1] : 0, bodyAt,
                 image.subspan(done, length));
        done += length;
    }
}

void freeDefinition(PageAllocator& allocator, PageNo first) {
    for (const PageNo page : chainOf(allocator.file(), allocator.layout(), first))
        allocator.free(page);
}

void blankCounters(const Layout& layout, Bytes& image) {
    if (image.size() < layout.tdefStart) return;
    const uint64_t counts = uint64_t{get32(image, layout.tdefRealIndexes)} * layout.realIndexCountEntry;
    const size_t end = static_cast<size_t>(std::min<uint64_t>(layout.tdefStart + counts, image.size()));
    put32(image, layout.tdefRowCount, 0);
    put32(image, layout.tdefAutoNumber, 0);
    std::fill(image.begin() + static_cast<std::ptrdiff_t>(layout.tdefStart),
              image.begin() + static_cast<std::ptrdiff_t>(end), uint8_t{0});
}

} // namespace jet
