// jet/copy/salvage_pages.h
#include "jet/copy/salvage_pages.h"

#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/data_page.h"
#include "jet/format/database_header.h"
#include "jet/format/table_def.h"

#include <algorithm>
#include <utility>

namespace jet {

namespace {

constexpr const Layout& kLayout = kJet4;
constexpr size_t kSampledPages = 512;

// What is put right in the head of one page.
struct Heal {
    PageNo page;
    uint8_t type;
    uint16_t slots; // Data only
};

class HealingCodec final : public PageCodec {
  public:
    HealingCodec(uint32_t key, std::vector<Heal> heals)
        : inner_(makePageCodec(key)), heals_(std::move(heals)) {}
    void decode(PageNo no, std::span<uint8_t> page) const override {
        if (inner_) inner_->decode(no, page);
        const auto heal = std::ranges::lower_bound(heals_, no, {}, &Heal::page);
        if (heal == heals_.end() || heal->page != no) return;
        page[0] = heal->type;
        page[1] = 1;
        if (heal->type == PageType::kData) put16(page, kLayout.dataRowCount, heal->slots);
    }
    void encode(PageNo, std::span<uint8_t>) const override {} // these files are never written

  private:
    std::unique_ptr<PageCodec> inner_;
    std::vector<Heal> heals_; // by page
};

bool isZero(std::span<const uint8_t> page) {
    return std::ranges::all_of(page, [](uint8_t byte) { return byte == 0; });
}

bool isSoundData(std::span<const uint8_t> page) { return data_page::contradiction(kLayout, page).empty(); }

bool isPlausible(std::span<const uint8_t> page) {
    if (page[1] != 1) return false;
    switch (page[0]) {
    case PageType::kData: return isSoundData(page);
    case PageType::kTableDef: return hasDefinitionMark(kLayout, page);
    case PageType::kIndexNode:
    case PageType::kIndexLeaf:
        return get16(page, kLayout.indexFree) <= kLayout.pageSize - kLayout.indexEntries &&
               get16(page, kLayout.indexPrefix) <= kLayout.pageSize - kLayout.indexEntries;
    default: return false;
    }
}

template <class F> size_t countSampled(PageFile& file, uint32_t encodingKey, F wanted) {
    file.setCodec(makePageCodec(encodingKey));
    const size_t pages = file.pageCount(), stride = pages / kSampledPages + 1;
    size_t found = 0;
    for (size_t page = 1; page < pages; page += stride)
        found += wanted(file.read(static_cast<PageNo>(page)).bytes());
    return found;
}

// The slot count under which the page agrees with its own field of free bytes; the stored one when there is
// no such count.
uint16_t healedSlotCount(std::span<const uint8_t> page) {
    constexpr uint16_t kStartMask = 0x1FFF;
    const uint16_t stored = get16(page, kLayout.dataRowCount);
    const size_t free = data_page::freeBytes(kLayout, page);
    size_t lowest = kLayout.pageSize;
    for (uint16_t count = 0; count <= kMaxRowsPerPage; ++count) {
        const size_t table = kLayout.dataRowTable + 2u * count;
        if (lowest < table + 2) break;
        if (count > 0 && lowest - table == free) return count;
        const size_t start = get16(page, table) & kStartMask;
        if (start > lowest || start < table + 2) break;
        lowest = start;
    }
    return stored;
}

class Surveyor {
  public:
    Surveyor(PageFile& file, PageSurvey& survey) : file_(file), survey_(survey), copy_(kLayout.pageSize) {}

    void look(PageNo number) {
        const PageRef page = file_.read(number);
        std::ranges::copy(page.bytes(), copy_.begin());
        bool sound = true;
        const PageKind kind = kindOf(sound);
        survey_.kinds[number] = kind;
        if (kind == PageKind::Data) survey_.owners[number] = data_page::owner(kLayout, copy_);
        if (kind == PageKind::LongValues) ++survey_.longValuePages;
        if (!sound) survey_.damaged[number] = true;
        if (std::ranges::equal(std::span(copy_).first(kLayout.dataRowTable),
                               page.bytes().first(kLayout.dataRowTable)))
            return;
        heals_.push_back({number, copy_[0], get16(copy_, kLayout.dataRowCount)});
    }
    std::vector<Heal> takeHeals() { return std::move(heals_); }

  private:
    // A data page proves itself by its free bytes and a definition by its mark, whatever their type byte
    // says.
    PageKind kindOf(bool& sound) {
        const uint8_t type = std::exchange(copy_[0], PageType::kData),
                      second = std::exchange(copy_[1], uint8_t{1});
        sound = second == 1;
        if (isSoundData(copy_) && (type == PageType::kData || data_page::slotCount(kLayout, copy_) > 0)) {
            sound = sound && type == PageType::kData;
            return dataKind();
        }
        if (hasDefinitionMark(kLayout, copy_)) {
            sound = sound && type == PageType::kTableDef;
            copy_[0] = PageType::kTableDef;
            return PageKind::Definition;
        }
        if (type == PageType::kData) {
            sound = false;
            put16(copy_, kLayout.dataRowCount, healedSlotCount(copy_));
            return dataKind();
        }
        copy_[0] = type;
        copy_[1] = second;
        if (sound && type == PageType::kTableDef) return PageKind::Definition;
        if (sound && type == PageType::kUsageBitmap) return PageKind::Bitmap;
        if (isPlausible(copy_)) return PageKind::Index;
        sound = isZero(copy_);
        return sound ? PageKind::Empty : PageKind::Unknown;
    }

    PageKind dataKind() const {
        const uint32_t owner = data_page::owner(kLayout, copy_);
        if (owner == kOwnerLongValues) return PageKind::LongValues;
        return owner == kOwnerUsageMaps || owner == kOwnerGlobalMap ? PageKind::Maps : PageKind::Data;
    }

    PageFile& file_;
    PageSurvey& survey_;
    Bytes copy_;
    std::vector<Heal> heals_;
};

} // namespace

size_t countPlausiblePages(PageFile& file, uint32_t encodingKey) {
    return countSampled(file, encodingKey, isPlausible);
}

size_t countMarkedDefinitions(PageFile& file, uint32_t encodingKey) {
    return countSampled(file, encodingKey, [](std::span<const uint8_t> page) {
        return page[0] == PageType::kTableDef && hasDefinitionMark(kLayout, page);
    });
}

PageSurvey surveyPages(PageFile& file, uint32_t encodingKey, const std::function<void()>& step) {
    file.setCodec(makePageCodec(encodingKey));
    PageSurvey survey;
    survey.kinds.assign(file.pageCount(), PageKind::Unknown);
    survey.owners.assign(file.pageCount(), 0);
    survey.damaged.assign(file.pageCount(), false);
    Surveyor surveyor(file, survey);
    for (PageNo page = 1; page < file.pageCount(); ++page) {
        surveyor.look(page);
        step();
    }
    file.setCodec(std::make_unique<HealingCodec>(encodingKey, surveyor.takeHeals()));
    return survey;
}

} // namespace jet
