// Trees with damaged pages: the check names each fault, and nothing crashes, hangs or throws anything but
// jet::Error.
#include "jet/error.h"
#include "jet/format/bytes.h"
#include "tree_fixture.h"

#include <functional>
#include <random>

using namespace jet;
using namespace orvan_test;

namespace {

Bytes keyOf(uint32_t number) {
    return {0x7F, static_cast<uint8_t>(number >> 16), static_cast<uint8_t>(number >> 8),
            static_cast<uint8_t>(number)};
}

class DamagedTree : public TreeFixture {
  protected:
    void fill() {
        for (uint32_t i = 0; i < 3000; ++i)
            insert(keyOf(i * 7), {100 + i, 1});
        TreePosition at;
        tree_->first(at);
        firstLeaf_ = at.leaf;
        tree_->last(at);
        lastLeaf_ = at.leaf;
        ASSERT_NE(firstLeaf_, root_);
    }
    std::vector<std::string> faults() {
        std::vector<std::string> found;
        tree_->verify([](std::span<const uint8_t>, RowId) {},
                      [&](PageNo, const std::string& text) { found.push_back(text); });
        return found;
    }
    std::span<uint8_t> bytes(PageNo page) { return file_->edit(page).bytes(); }
    PageNo firstLeaf_ = 0, lastLeaf_ = 0;
};

} // namespace

TEST_F(DamagedTree, EveryFaultIsNamed) {
    fill();
    const struct {
        const char* expected; // part of a fault
        std::function<void()> damage;
    } cases[] = {
        {"dizin sayfası değil", [&] { bytes(firstLeaf_)[0] = PageType::kData; }},
        {"başka bir tabloya", [&] { put32(bytes(firstLeaf_), kJet4.indexOwner, 77); }},
        {"maskesi kayıtlarla uyuşmuyor", [&] { put16(bytes(lastLeaf_), kJet4.indexFree, 1); }},
        {"sığmıyor", [&] { put16(bytes(lastLeaf_), kJet4.indexFree, 5000); }},
        {"ön ek uzunluğu", [&] { put16(bytes(lastLeaf_), kJet4.indexPrefix, 3616); }},
        {"sıralı değil", [&] { bytes(firstLeaf_)[kJet4.indexEntries + 2] = 0xEE; }},
        {"önceki yaprağa bağlantısı", [&] { put32(bytes(lastLeaf_), kJet4.indexPrevious, firstLeaf_); }},
        {"sonraki yaprağa bağlantısı", [&] { put32(bytes(firstLeaf_), kJet4.indexNext, lastLeaf_); }},
        {"ardında başka bir yaprak", [&] { put32(bytes(lastLeaf_), kJet4.indexNext, firstLeaf_); }},
        {"iki yerden", [&] { put32(bytes(root_), kJet4.indexTail, firstLeaf_); }},
        {"iki yerden", [&] { put32(bytes(root_), kJet4.indexTail, root_); }},
        {"ulaşılamıyor", [&] { put32(bytes(root_), kJet4.indexTail, 0); }},
        {"sayfa haritasında yok", [&] { UsageMap(*file_, kJet4, map_).remove(firstLeaf_); }},
        {"komşu bağlantısı", [&] { put32(bytes(root_), kJet4.indexNext, firstLeaf_); }},
        {"son kaydından küçük",
         [&] {
             IndexPage(kJet4, root_, bytes(root_)).end(0);
             bytes(root_)[kJet4.indexEntries + 1] = 0;
             bytes(root_)[kJet4.indexEntries + 2] = 0;
         }},
    };
    for (const auto& c : cases) {
        const size_t point = file_->savepoint();
        c.damage();
        bool named = false;
        std::string all;
        for (const std::string& text : faults()) {
            named = named || text.find(c.expected) != std::string::npos;
            all += text + " | ";
        }
        EXPECT_TRUE(named) << c.expected << ": " << all;
        file_->rollbackToSavepoint(point);
        EXPECT_TRUE(faults().empty());
    }
}

TEST_F(DamagedTree, LinksInACircleEndInAnError) {
    fill();
    put32(bytes(lastLeaf_), kJet4.indexNext, firstLeaf_);
    put32(bytes(firstLeaf_), kJet4.indexPrevious, lastLeaf_);
    TreePosition at;
    const auto walk = [&](bool forward) {
        for (bool more = forward ? tree_->first(at) : tree_->last(at); more;)
            more = forward ? tree_->next(at) : tree_->previous(at);
    };
    EXPECT_THROW(walk(true), Error);
    EXPECT_THROW(walk(false), Error);
    put32(bytes(root_), kJet4.indexTail, root_);
    EXPECT_THROW(tree_->last(at), Error);
    EXPECT_THROW(tree_->insert(keyOf(0xFFFFFF), {9, 9}), Error);
}

TEST_F(DamagedTree, RandomDamageNeverCrashes) {
    fill();
    const auto pages = treePages();
    std::mt19937 random(21);
    size_t refused = 0;
    for (int round = 0; round < 300; ++round) {
        const size_t point = file_->savepoint();
        for (size_t n = 1 + random() % 3; n > 0; --n) {
            const auto page = bytes(pages[random() % pages.size()]);
            const size_t where = random() % 2 == 0 ? random() % 0x1E0 : random() % page.size();
            page[where] = static_cast<uint8_t>(random() % 4 == 0 ? 0xFF : random());
        }
        faults();
        try {
            TreePosition at;
            size_t steps = 0;
            for (bool more = tree_->first(at); more && steps < 20'000; more = tree_->next(at))
                ++steps;
            EXPECT_LT(steps, 20'000u);
            for (int i = 0; i < 60; ++i) {
                tree_->seekBefore(keyOf(random() % 21'000), at);
                tree_->insert(keyOf(random() % 21'000), {50, static_cast<uint8_t>(i)});
                tree_->erase(keyOf(random() % 3000 * 7), {100 + static_cast<uint32_t>(random() % 3000), 1});
            }
            for (uint32_t i = 0; i < 200; ++i)
                tree_->erase(keyOf(i * 7), {100 + i, 1});
        } catch (const Error& error) {
            ++refused;
        }
        faults();
        file_->rollbackToSavepoint(point);
    }
    EXPECT_GT(refused, 20u);
    expectSound();
}

TEST_F(DamagedTree, CanStillBeDestroyed) {
    fill();
    const PageNo stranger = allocator_->allocate().number();
    UsageMap(*file_, kJet4, map_).add(stranger, *allocator_); // the map names a page that is not the tree's
    bytes(firstLeaf_)[0] = PageType::kData;
    put32(bytes(root_), kJet4.indexTail, root_);
    tree_->destroy();
    const UsageMap free(*file_, kJet4, {1, 0});
    EXPECT_TRUE(free.contains(root_));
    EXPECT_FALSE(free.contains(stranger));
}
