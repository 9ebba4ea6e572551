// tests/jet/index/tree_fixture.h — a small file in memory with one index tree, and a mirror of its entries.
#pragma once

#include "byte_order.h"
#include "jet/format/data_page.h"
#include "jet/index/btree.h"
#include "jet/index/index_page.h"
#include "jet/pages/io_memory.h"

#include <gtest/gtest.h>
#include <set>
#include <utility>

namespace orvan_test {

class TreeFixture : public ::testing::Test {
  protected:
    static constexpr jet::PageNo kOwner = 2;
    using Entry = ByteOrder::Entry;

    TreeFixture() {
        using namespace jet;
        file_ = PageFile::create(io_, "ağaç.mdb", {}, kJet4.pageSize);
        allocator_.emplace(*file_, kJet4);
        write_.emplace(*file_);
        for (int i = 0; i < 6; ++i)
            file_->append(); // header, global map, four system definitions
        {
            PageEdit map = file_->edit(1);
            data_page::initialise(kJet4, map.bytes(), 1);
            Bytes row(69, 0xFF); // an inline map from page 0 on: all free but the six
            std::fill(row.begin(), row.begin() + 5, uint8_t{0});
            row[5] = 0xC0;
            data_page::insert(kJet4, map.bytes(), row);
        }
        map_ = allocator_->createMap();
        root_ = BTree::create(*allocator_, kOwner, map_);
        tree_.emplace(*allocator_, root_, kOwner, map_);
    }
    // The write stays open: nothing of these tests needs a commit.
    ~TreeFixture() override { write_.reset(); }

    void insert(const jet::Bytes& key, jet::RowId row) {
        tree_->insert(key, row);
        ASSERT_TRUE(mirror_.insert({key, row}).second);
    }
    void erase(const Entry& entry) {
        ASSERT_TRUE(tree_->erase(entry.first, entry.second));
        mirror_.erase(entry);
    }

    // The check finds nothing, and the entries it walks are the mirror's.
    void expectSound() {
        auto expected = mirror_.begin();
        size_t wrong = 0;
        tree_->verify(
            [&](std::span<const uint8_t> key, jet::RowId row) {
                if (expected == mirror_.end() || jet::Bytes(key.begin(), key.end()) != expected->first ||
                    row != expected->second)
                    ++wrong;
                if (expected != mirror_.end()) ++expected;
            },
            [](jet::PageNo page, const std::string& text) {
                ADD_FAILURE() << "page " << page << ": " << text;
            });
        EXPECT_EQ(wrong, 0u);
        EXPECT_TRUE(expected == mirror_.end());
    }

    std::vector<jet::PageNo> treePages() {
        std::vector<jet::PageNo> pages;
        jet::UsageMap(*file_, jet::kJet4, map_).forEach([&](jet::PageNo page) { pages.push_back(page); });
        return pages;
    }

    std::shared_ptr<jet::MemoryIo> io_ = std::make_shared<jet::MemoryIo>();
    std::unique_ptr<jet::PageFile> file_;
    std::optional<jet::PageAllocator> allocator_;
    std::optional<jet::WriteScope> write_;
    std::optional<jet::BTree> tree_;
    jet::RowId map_;
    jet::PageNo root_ = 0;
    std::set<Entry, ByteOrder> mirror_;
};

} // namespace orvan_test
