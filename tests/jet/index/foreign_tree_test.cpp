// Trees in the forms that other programs leave: no tail, loose bounds, short prefixes, unlinked nodes, empty
// leaves.
#include "jet/format/bytes.h"
#include "jet/index/tree_editor.h"
#include "tree_fixture.h"

#include <random>

using namespace jet;
using namespace orvan_test;

namespace {

Bytes keyOf(uint32_t number) {
    return {0x7F, static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number)};
}
RowId rowOf(uint32_t number) { return {500 + number, 3}; }

class ForeignTree : public TreeFixture {
  protected:
    // A leaf with the numbers [from, to), one after the other, all stored whole.
    PageNo leafOf(uint32_t from, uint32_t to) {
        PageEdit page = TreeEditor({&*allocator_, root_, kOwner, map_}).newPage(0);
        for (uint32_t i = from; i < to; ++i) {
            const LeafEntry entry(keyOf(i), rowOf(i));
            const IndexPage view(kJet4, page.number(), page.bytes());
            EXPECT_TRUE(index_page::insert(kJet4, view, page.bytes(), view.used(), entry.span()));
            mirror_.insert({keyOf(i), rowOf(i)});
        }
        return page.number();
    }

    void link(const std::vector<PageNo>& leaves) {
        for (size_t i = 0; i < leaves.size(); ++i)
            index_page::setLinks(kJet4, file_->edit(leaves[i]).bytes(), i > 0 ? leaves[i - 1] : 0,
                                 i + 1 < leaves.size() ? leaves[i + 1] : 0);
    }

    void makeNode(PageNo page, size_t height, const std::vector<std::pair<uint32_t, PageNo>>& children,
                  PageNo tail) {
        PageEdit node = file_->edit(page);
        index_page::initialise(kJet4, node.bytes(), height, kOwner);
        index_page::setTail(kJet4, node.bytes(), tail);
        for (const auto& [bound, child] : children) {
            const LeafEntry key(keyOf(bound), rowOf(bound));
            Bytes entry(key.span().begin(), key.span().end());
            appendChild(child, entry);
            const IndexPage view(kJet4, page, node.bytes());
            EXPECT_TRUE(index_page::insert(kJet4, view, node.bytes(), view.used(), entry));
        }
    }
    PageNo newNode() { return TreeEditor({&*allocator_, root_, kOwner, map_}).newPage(1).number(); }

    // Fills every gap, then takes everything out, in random order.
    void expectUsable() {
        expectSound();
        std::mt19937 random(11);
        std::vector<uint32_t> missing;
        for (uint32_t i = 0; i < 9000; ++i)
            if (mirror_.count({keyOf(i), rowOf(i)}) == 0) missing.push_back(i);
        std::shuffle(missing.begin(), missing.end(), random);
        for (const uint32_t i : missing)
            insert(keyOf(i), rowOf(i));
        expectSound();
        TreePosition at;
        size_t walked = 0;
        for (bool more = tree_->first(at); more; more = tree_->next(at))
            ++walked;
        EXPECT_EQ(walked, 9000u);
        std::vector<Entry> all(mirror_.begin(), mirror_.end());
        std::shuffle(all.begin(), all.end(), random);
        for (const Entry& entry : all)
            erase(entry);
        expectSound();
        EXPECT_EQ(treePages(), std::vector<PageNo>{root_});
    }
};

} // namespace

TEST_F(ForeignTree, RootWithoutTail) {
    const PageNo a = leafOf(1000, 1100), b = leafOf(2000, 2100), c = leafOf(3000, 3100);
    link({a, b, c});
    makeNode(root_, 1, {{1099, a}, {2099, b}, {3099, c}}, 0);
    expectUsable();
}

TEST_F(ForeignTree, BoundsAboveTheLastEntries) {
    const PageNo a = leafOf(1000, 1100), b = leafOf(2000, 2100), c = leafOf(3000, 3100);
    link({a, b, c});
    makeNode(root_, 1, {{1500, a}, {2999, b}}, c);
    TreePosition at;
    ASSERT_TRUE(tree_->seek(keyOf(1200), at)); // the bound leads to leaf a, the entry stands in b
    EXPECT_EQ(tree_->rowAt(at), rowOf(2000));
    expectUsable();
}

TEST_F(ForeignTree, InnerNodesWithTightBoundsUnderALooseOne) {
    const PageNo a = leafOf(1000, 1100), b = leafOf(2000, 2100), c = leafOf(3000, 3100),
                 d = leafOf(4000, 4100);
    link({a, b, c, d});
    const PageNo left = newNode(), right = newNode(); // not linked with each other
    makeNode(left, 1, {{1099, a}, {2099, b}}, 0);
    makeNode(right, 1, {{3099, c}, {4099, d}}, 0);
    makeNode(root_, 2, {{2900, left}, {4099, right}}, 0);
    expectUsable(); // 2500 lies above the left node's last bound, 5000 above everything
}

TEST_F(ForeignTree, InnerNodesWithTailsAndEmptyLeaves) {
    const PageNo a = leafOf(1000, 1100), empty = leafOf(0, 0), c = leafOf(3000, 3100), last = leafOf(0, 0);
    link({a, empty, c, last});
    const PageNo left = newNode(), right = newNode();
    makeNode(left, 1, {{1099, a}}, empty);
    makeNode(right, 1, {{3099, c}}, last);
    makeNode(root_, 2, {{2999, left}}, right);
    TreePosition at;
    ASSERT_TRUE(tree_->seek(keyOf(1500), at));
    EXPECT_EQ(tree_->rowAt(at), rowOf(3000));
    ASSERT_TRUE(tree_->last(at));
    EXPECT_EQ(tree_->rowAt(at), rowOf(3099));
    EXPECT_FALSE(tree_->next(at));
    ASSERT_TRUE(tree_->seekBefore(keyOf(2999), at));
    EXPECT_EQ(tree_->rowAt(at), rowOf(1099));
    expectUsable();
}

TEST_F(ForeignTree, PrefixShorterThanItCouldBe) {
    EntryList list;
    for (uint32_t i = 0; i < 100; ++i) {
        const LeafEntry entry(keyOf(i), rowOf(i));
        list.add(entry.span());
        mirror_.insert({keyOf(i), rowOf(i)});
    }
    PageEdit root = file_->edit(root_);
    index_page::write(kJet4, root.bytes(), list, 0, 100);
    ASSERT_EQ(IndexPage(kJet4, root_, root.bytes()).prefix(), 2u);
    // The same page with a prefix of one byte: every later entry gets a byte back.
    index_page::initialise(kJet4, root.bytes(), 0, kOwner);
    put16(root.bytes(), kJet4.indexPrefix, 1);
    uint8_t* mask = root.data() + kJet4.indexMask;
    uint8_t* entries = root.data() + kJet4.indexEntries;
    size_t used = 0;
    for (size_t i = 0; i < 100; ++i) {
        const auto stored = list.at(i).subspan(i == 0 ? 0 : 1);
        std::copy(stored.begin(), stored.end(), entries + used);
        used += stored.size();
        mask[used / 8] |= static_cast<uint8_t>(1 << used % 8);
    }
    put16(root.bytes(), kJet4.indexFree, static_cast<uint16_t>(index_page::capacity(kJet4) - used));
    expectUsable();
}
