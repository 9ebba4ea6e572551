// Changes inside one page against a sorted set, and views of pages whose bytes are damaged.
#include "byte_order.h"
#include "jet/error.h"
#include "jet/index/index_page.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

using namespace jet;
using namespace orvan_test;

namespace {

struct Page {
    Bytes bytes = Bytes(kJet4.pageSize);
    Page() { index_page::initialise(kJet4, bytes, 0, 2); }
    IndexPage view() const { return {kJet4, 7, bytes}; }
};

void expectHolds(const Page& page, const std::set<Bytes, ByteOrder>& entries) {
    EXPECT_EQ(page.view().contradiction(), "");
    EntryList list;
    page.view().collect(list);
    ASSERT_EQ(list.count(), entries.size());
    size_t i = 0;
    for (const Bytes& entry : entries) {
        const auto stored = list.at(i++);
        ASSERT_EQ(Bytes(stored.begin(), stored.end()), entry);
    }
}

} // namespace

TEST(IndexPage, RandomChangesKeepEntriesMaskAndPrefix) {
    for (uint32_t seed = 1; seed <= 12; ++seed) {
        std::mt19937 random(seed);
        Page page;
        std::set<Bytes, ByteOrder> entries;
        const size_t longest = seed % 3 == 0 ? 200 : 12;
        const auto newEntry = [&] {
            Bytes entry{0x7F, 0x4A, 0x4A}; // shared beginnings, so that prefixes come about
            entry.resize(3 + 4 + random() % longest, 0);
            for (size_t i = 3; i < entry.size(); ++i)
                entry[i] = static_cast<uint8_t>(random() % 4);
            return entry;
        };
        for (int step = 0; step < 4000; ++step) {
            const Bytes entry = newEntry();
            const size_t at = page.view().lowerBound(entry);
            const bool there = at < page.view().used() && page.view().equals(at, entry);
            ASSERT_EQ(there, entries.count(entry) != 0);
            if (there || (random() % 3 == 0 && at < page.view().used())) {
                Bytes victim;
                page.view().copyEntry(at, victim);
                index_page::erase(kJet4, page.view(), page.bytes, at);
                entries.erase(victim);
            } else if (index_page::insert(kJet4, page.view(), page.bytes, at, entry)) {
                entries.insert(entry);
            } else { // full, or another prefix
                EntryList list;
                page.view().collect(list, at, entry);
                if (index_page::fits(kJet4, true, list, 0, list.count())) {
                    index_page::write(kJet4, page.bytes, list, 0, list.count());
                    entries.insert(entry);
                }
            }
            if (step % 50 == 0) expectHolds(page, entries);
        }
        expectHolds(page, entries);
        while (!page.view().empty()) {
            Bytes victim;
            page.view().copyEntry(0, victim);
            index_page::erase(kJet4, page.view(), page.bytes, 0);
            entries.erase(victim);
            if (entries.size() % 20 == 0) expectHolds(page, entries);
        }
        Page fresh;
        EXPECT_EQ(page.bytes, fresh.bytes); // nothing is left behind
    }
}

TEST(IndexPage, WalksBothWaysAndFindsWithABeginningOnly) {
    Page page;
    EntryList list;
    for (uint8_t i = 0; i < 100; ++i)
        list.add(Bytes{0x7F, 0x10, static_cast<uint8_t>(2 * i), 0, 0, 1, i});
    index_page::write(kJet4, page.bytes, list, 0, list.count());
    const IndexPage view = page.view();
    EXPECT_EQ(view.prefix(), 2u);
    size_t at = 0, count = 0;
    for (; at < view.used(); at = view.end(at))
        EXPECT_EQ(view.row(at), (RowId{1, static_cast<uint8_t>(count++)}));
    EXPECT_EQ(count, 100u);
    for (at = view.used(); at > 0; --count)
        at = view.startBefore(at);
    EXPECT_EQ(count, 0u);

    const auto rowAtLowerBound = [&](Bytes target) { return view.row(view.lowerBound(target)).row; };
    EXPECT_EQ(rowAtLowerBound({}), 0);
    EXPECT_EQ(rowAtLowerBound({0x7F}), 0);
    EXPECT_EQ(rowAtLowerBound({0x7F, 0x0F, 0xFF}), 0);
    EXPECT_EQ(rowAtLowerBound({0x7F, 0x10, 8}), 4);
    EXPECT_EQ(rowAtLowerBound({0x7F, 0x10, 9}), 5);
    EXPECT_EQ(rowAtLowerBound({0x7F, 0x10, 198}), 99);
    EXPECT_EQ(view.lowerBound(Bytes{0x7F, 0x10, 199}), view.used());
    EXPECT_EQ(view.lowerBound(Bytes{0x80}), view.used());
    EXPECT_TRUE(view.hasKey(view.lowerBound(Bytes{0x7F, 0x10, 8}), Bytes{0x7F, 0x10, 8}));
    EXPECT_FALSE(view.hasKey(0, Bytes{0x7F, 0x10}));
}

// Whatever the bytes are: an answer or Err::Corrupt, never a step outside of the page (the sanitizers watch).
TEST(IndexPage, DamagedPagesEndInAnError) {
    Page good;
    EntryList list;
    for (uint8_t i = 0; i < 120; ++i)
        list.add(Bytes{0x7F, 0x10, i, 5, 5, 0, 0, 1, i});
    index_page::write(kJet4, good.bytes, list, 0, list.count());
    std::mt19937 random(3);
    for (int round = 0; round < 5000; ++round) {
        Page page = good;
        for (size_t n = 1 + random() % 4; n > 0; --n) {
            const size_t where = random() % 3 == 0 ? random() % 0x1B : random() % 700;
            page.bytes[where] = static_cast<uint8_t>(random());
        }
        page.bytes[0] = random() % 2 ? PageType::kIndexLeaf : PageType::kIndexNode;
        try {
            const IndexPage view = page.view();
            const std::string fault = view.contradiction();
            const Bytes target{0x7F, 0x10, static_cast<uint8_t>(random()), 5};
            const size_t at = view.lowerBound(target);
            if (at < view.used()) view.row(at);
            if (at > 0) view.child(view.startBefore(at));
            if (fault.empty()) { // sound enough to be changed
                index_page::insert(kJet4, view, page.bytes, at,
                                   Bytes{0x7F, 0x10, 7, 5, 9, 9, 9, 9, 9, 9, 9, 9});
                const IndexPage changed = page.view();
                if (changed.used() > 0) index_page::erase(kJet4, changed, page.bytes, changed.lastStart());
            }
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), Err::Corrupt);
            EXPECT_EQ(error.page(), 7u);
        }
    }
}
