// The tree against a sorted set: every way rows come and go, searching, walking, building, restoring a place.
#include "jet/error.h"
#include "tree_fixture.h"

#include <algorithm>
#include <map>
#include <random>

using namespace jet;
using namespace orvan_test;

namespace {

Bytes numberKey(uint32_t number) {
    return {0x7F, static_cast<uint8_t>(number >> 24), static_cast<uint8_t>(number >> 16),
            static_cast<uint8_t>(number >> 8), static_cast<uint8_t>(number)};
}

RowId rowOf(uint32_t number) { return {1000 + number / 50, static_cast<uint8_t>(number % 50)}; }

class BTreeTest : public TreeFixture {};

struct Workload {
    const char* name;
    size_t shortest, longest; // key bytes behind the flag
    unsigned letters;         // different values of a byte: few make long common beginnings
    bool duplicates;          // equal keys with different rows
};

constexpr Workload kWorkloads[] = {
    {"short", 4, 4, 256, false},
    {"texts", 3, 30, 20, false},
    {"long common beginnings", 40, 120, 2, false},
    {"hugely different", 1, 1700, 3, false},
    {"few keys, many rows", 1, 2, 3, true},
    {"long keys, many rows", 300, 301, 1, true},
};

} // namespace

TEST_F(BTreeTest, RandomInsertsAndErases) {
    uint32_t seed = 1;
    for (const Workload& workload : kWorkloads) {
        SCOPED_TRACE(workload.name);
        std::mt19937 random(seed++);
        const size_t mean = (workload.shortest + workload.longest) / 2;
        const int steps = mean > 200 ? 1500 : 12'000;
        uint32_t nextRow = 0;
        const auto makeKey = [&] {
            Bytes key{0x7F};
            const size_t length = workload.shortest + random() % (workload.longest - workload.shortest + 1);
            for (size_t i = 0; i < length; ++i)
                key.push_back(static_cast<uint8_t>(1 + random() % workload.letters));
            key.push_back(0);
            return key;
        };
        for (int phase = 0; phase < 3; ++phase) { // grow, churn, shrink to nothing
            for (int step = 0; step < (phase == 2 ? 3 * steps : steps); ++step) {
                const unsigned eraseOf10 = phase == 0 ? 1 : phase == 1 ? 5 : 10;
                if (random() % 10 < eraseOf10 && !mirror_.empty()) {
                    auto victim = mirror_.lower_bound({makeKey(), RowId{}});
                    if (victim == mirror_.end()) victim = mirror_.begin();
                    erase(Entry(*victim));
                } else if (phase < 2) {
                    const Bytes key = makeKey();
                    if (workload.duplicates || !tree_->containsKey(key)) insert(key, rowOf(nextRow++));
                }
                if (HasFatalFailure()) return;
                if (step % (steps / 4) == 0) expectSound();
            }
            expectSound();
        }
        while (!mirror_.empty())
            erase(Entry(*mirror_.begin()));
        EXPECT_EQ(treePages(), std::vector<PageNo>{root_});
    }
}

TEST_F(BTreeTest, RisingFallingAndAlternatingRowsFillTheirPages) {
    const uint32_t count = 20'000;
    const size_t entrySize = 9;
    const std::pair<const char*, std::function<uint32_t(uint32_t)>> orders[] = {
        {"rising", [&](uint32_t i) { return i; }},
        {"falling", [&](uint32_t i) { return count - i; }},
        {"from both ends", [&](uint32_t i) { return i % 2 == 0 ? 1'000'000 + i : 1'000'000 - i; }},
    };
    for (const auto& [name, order] : orders) {
        SCOPED_TRACE(name);
        for (uint32_t i = 0; i < count; ++i)
            insert(numberKey(order(i)), rowOf(i));
        expectSound();
        const size_t least = count * (entrySize - 2) / index_page::capacity(kJet4);
        EXPECT_LT(treePages().size(), (least + 2) * 23 / 20);
        while (!mirror_.empty())
            erase(name == std::string("rising") ? *mirror_.begin() : *mirror_.rbegin());
        expectSound();
        EXPECT_EQ(treePages(), std::vector<PageNo>{root_});
    }
}

TEST_F(BTreeTest, ScatteredErasesJoinSparsePages) {
    for (uint32_t i = 0; i < 20'000; ++i)
        insert(numberKey(i), rowOf(i));
    const size_t full = treePages().size();
    for (uint32_t i = 0; i < 20'000; ++i)
        if (i % 20 != 0) erase({numberKey(i), rowOf(i)});
    expectSound();
    EXPECT_LT(treePages().size(), full / 4);
}

TEST_F(BTreeTest, SearchesAndWalksAsTheSortedSetDoes) {
    for (uint32_t i = 0; i < 3000; ++i)
        insert(numberKey(i / 3 * 7), rowOf(i));
    TreePosition at;
    Bytes key;
    RowId row;
    const auto standsOn = [&](decltype(mirror_)::const_iterator expected) {
        tree_->read(at, key, row);
        return Entry(key, row) == *expected && tree_->rowAt(at) == row;
    };
    for (uint32_t number = 0; number < 7100; number += 3) {
        const Bytes wanted = numberKey(number);
        const auto expected = mirror_.lower_bound({wanted, RowId{}});
        ASSERT_EQ(tree_->seek(wanted, at), expected != mirror_.end());
        ASSERT_TRUE(expected == mirror_.end() || standsOn(expected)) << number;
        ASSERT_EQ(tree_->seekBefore(wanted, at), expected != mirror_.begin());
        ASSERT_TRUE(expected == mirror_.begin() || standsOn(std::prev(expected))) << number;
        ASSERT_EQ(tree_->containsKey(wanted), number % 7 == 0 && number < 7000);
    }
    ASSERT_TRUE(tree_->seek(Bytes{0x7F, 0, 0, 0x0E}, at)); // the beginning of many keys
    EXPECT_TRUE(standsOn(mirror_.lower_bound({Bytes{0x7F, 0, 0, 0x0E}, RowId{}})));

    auto expected = mirror_.begin();
    for (bool more = tree_->first(at); more; more = tree_->next(at))
        ASSERT_TRUE(standsOn(expected++));
    EXPECT_TRUE(expected == mirror_.end());
    EXPECT_FALSE(tree_->next(at));
    for (bool more = tree_->last(at); more; more = tree_->previous(at))
        ASSERT_TRUE(standsOn(--expected));
    EXPECT_TRUE(expected == mirror_.begin());
}

TEST_F(BTreeTest, EmptyTreeHasNothing) {
    TreePosition at;
    EXPECT_FALSE(tree_->first(at));
    EXPECT_FALSE(tree_->last(at));
    EXPECT_FALSE(tree_->seek(numberKey(1), at));
    EXPECT_FALSE(tree_->seekBefore(numberKey(1), at));
    EXPECT_FALSE(tree_->containsKey(numberKey(1)));
    EXPECT_FALSE(tree_->erase(numberKey(1), rowOf(1)));
    expectSound();
}

TEST_F(BTreeTest, RestoreFindsThePlaceAgainAfterChanges) {
    for (uint32_t i = 0; i < 4000; ++i)
        insert(numberKey(i * 2), rowOf(i));
    TreePosition at;
    bool exact = false;
    RowId row;
    Bytes key;
    ASSERT_TRUE(tree_->seek(numberKey(2000), at));
    for (uint32_t i = 0; i < 4000; ++i)
        insert(numberKey(i * 2 + 1), rowOf(5000 + i)); // splits move everything
    EXPECT_NE(at.changeCount, file_->changeCount());
    ASSERT_TRUE(tree_->restore(numberKey(2000), rowOf(1000), at, exact));
    EXPECT_TRUE(exact);
    ASSERT_TRUE(tree_->next(at));
    tree_->read(at, key, row);
    EXPECT_EQ(key, numberKey(2001));

    erase({numberKey(2000), rowOf(1000)});
    ASSERT_TRUE(tree_->restore(numberKey(2000), rowOf(1000), at, exact));
    EXPECT_FALSE(exact);
    EXPECT_EQ(tree_->rowAt(at), rowOf(6000));
    EXPECT_FALSE(tree_->restore(numberKey(9000), rowOf(1), at, exact));
}

TEST_F(BTreeTest, BuildMakesFullSoundTreesOfAnySize) {
    for (const uint32_t count : {0u, 1u, 400u, 1000u, 60'000u})
        for (const size_t tailBytes : {size_t{0}, size_t{200}}) {
            if (count > 1000 && tailBytes > 0) continue;
            const size_t before = treePages().size();
            uint32_t i = 0;
            tree_->build([&](Bytes& key, RowId& row) {
                if (i == count) return false;
                key = numberKey(i * 3);
                key.insert(key.end(), tailBytes, static_cast<uint8_t>(i));
                row = rowOf(i++);
                mirror_.insert({key, row});
                return true;
            });
            expectSound();
            const size_t least = count * (9 + tailBytes - 3) / index_page::capacity(kJet4);
            EXPECT_LE(treePages().size() - before, (least + 2) * 11 / 10) << count;
            // And it is a tree like any other.
            std::mt19937 random(5);
            for (int n = 0; n < 500; ++n)
                insert(numberKey(static_cast<uint32_t>(random()) | 1u << 30), rowOf(n));
            for (int n = 0; n < 300; ++n)
                erase(Entry(*mirror_.begin()));
            expectSound();
            while (!mirror_.empty())
                erase(Entry(*mirror_.begin()));
        }
}

TEST_F(BTreeTest, BuildRefusesDisorderAndFilledTrees) {
    const auto errorOf = [&](std::vector<uint32_t> numbers) {
        size_t i = 0;
        try {
            tree_->build([&](Bytes& key, RowId& row) {
                if (i == numbers.size()) return false;
                key = numberKey(numbers[i++]);
                row = rowOf(1);
                return true;
            });
        } catch (const Error& error) {
            return error.number();
        }
        return Err{};
    };
    EXPECT_EQ(errorOf({1, 3, 2}), Err::InvalidArgument);
    EXPECT_EQ(errorOf({1, 1}), Err::InvalidArgument);
    insert(numberKey(1), rowOf(1));
    EXPECT_EQ(errorOf({5}), Err::InvalidArgument);
}

TEST_F(BTreeTest, RefusesDoubleEntriesAndTooLongKeys) {
    insert(numberKey(1), rowOf(1));
    insert(numberKey(1), rowOf(2));
    const auto errorOf = [&](const Bytes& key, RowId row) {
        try {
            tree_->insert(key, row);
        } catch (const Error& error) {
            return error.number();
        }
        return Err{};
    };
    EXPECT_EQ(errorOf(numberKey(1), rowOf(2)), Err::Corrupt);
    EXPECT_EQ(errorOf(Bytes(1801, 0x7F), rowOf(1)), Err::RecordTooLarge);
    EXPECT_EQ(errorOf(Bytes(5000, 0x7F), rowOf(1)), Err::RecordTooLarge);
    EXPECT_FALSE(tree_->erase(Bytes(5000, 0x7F), rowOf(1)));
    for (uint8_t i = 0; i < 40; ++i) { // the longest keys there may be, in any mixture with short ones
        insert(Bytes(1800, static_cast<uint8_t>(200 - i)), rowOf(i));
        insert(numberKey(100u + i), rowOf(i));
    }
    expectSound();
}

TEST_F(BTreeTest, DestroyGivesEveryPageBack) {
    for (uint32_t i = 0; i < 5000; ++i)
        insert(numberKey(i * 7919 % 5000), rowOf(i));
    const auto pages = treePages();
    EXPECT_GT(pages.size(), 5u);
    tree_->destroy();
    EXPECT_TRUE(treePages().empty());
    const UsageMap free(*file_, kJet4, {1, 0});
    for (const PageNo page : pages)
        EXPECT_TRUE(free.contains(page)) << page;
}
