// The slotted page against a model: random inserts, changes, moves and deletions keep every row and the page
// sound.
#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/data_page.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <random>

namespace {

using namespace jet;

struct Page {
    Bytes bytes = Bytes(kJet4.pageSize);
    Page() { data_page::initialise(kJet4, bytes, 77); }
    Bytes row(uint8_t slot) const {
        const Slot at = data_page::slot(kJet4, bytes, slot);
        return {bytes.begin() + static_cast<ptrdiff_t>(at.start),
                bytes.begin() + static_cast<ptrdiff_t>(at.start + at.length)};
    }
};

Bytes filled(size_t length, uint32_t seed) {
    Bytes row(length);
    std::mt19937 random(seed);
    std::generate(row.begin(), row.end(), [&] { return static_cast<uint8_t>(random()); });
    return row;
}

TEST(DataPage, RandomChangesAgreeWithAModel) {
    for (const size_t longest : {12u, 200u, 4000u}) {
        std::mt19937 random(static_cast<uint32_t>(longest));
        Page page;
        std::map<uint8_t, Bytes> model;
        for (uint32_t step = 0; step < 4000; ++step) {
            const Bytes row = filled(4 + random() % longest, step);
            const unsigned action = random() % 10;
            if (action < 5) {
                if (!data_page::fits(kJet4, page.bytes, row.size())) continue;
                const uint8_t slot = data_page::insert(kJet4, page.bytes, row);
                ASSERT_FALSE(model.contains(slot)) << "a living slot was given away";
                model[slot] = row;
            } else if (!model.empty()) {
                auto at = std::next(model.begin(), static_cast<ptrdiff_t>(random() % model.size()));
                if (action < 7) {
                    data_page::erase(kJet4, page.bytes, at->first);
                    model.erase(at);
                } else if (const Bytes before = page.bytes;
                           data_page::replace(kJet4, page.bytes, at->first, row)) {
                    at->second = row;
                } else {
                    ASSERT_EQ(page.bytes, before);
                }
            }
            ASSERT_EQ(data_page::contradiction(kJet4, page.bytes), "");
        }
        for (const auto& [slot, row] : model)
            EXPECT_EQ(page.row(slot), row);
        EXPECT_EQ(data_page::empty(kJet4, page.bytes), model.empty());
        EXPECT_EQ(data_page::owner(kJet4, page.bytes), 77u);
    }
}

TEST(DataPage, HoldsAtMost255RowsAndReusesDeadSlotsThen) {
    Page page;
    for (int i = 0; i < 255; ++i) {
        ASSERT_TRUE(data_page::fits(kJet4, page.bytes, 4));
        data_page::insert(kJet4, page.bytes, filled(4, 1));
    }
    EXPECT_FALSE(data_page::fits(kJet4, page.bytes, 4));
    data_page::erase(kJet4, page.bytes, 100);
    EXPECT_TRUE(data_page::fits(kJet4, page.bytes, 4));
    EXPECT_EQ(data_page::insert(kJet4, page.bytes, filled(9, 2)), 100);
    EXPECT_EQ(page.row(100), filled(9, 2));
    EXPECT_EQ(page.row(254), filled(4, 1));
}

TEST(DataPage, MovedRowPointsToItsTargetAndComesBack) {
    Page page;
    const uint8_t first = data_page::insert(kJet4, page.bytes, filled(30, 1));
    const uint8_t second = data_page::insert(kJet4, page.bytes, filled(40, 2), true);
    data_page::makePointer(kJet4, page.bytes, first, {0x123456, 9});
    const Slot moved = data_page::slot(kJet4, page.bytes, first);
    EXPECT_TRUE(moved.pointer && !moved.hidden && !moved.deleted);
    EXPECT_EQ(data_page::pointerTarget(kJet4, page.bytes, first), (RowId{0x123456, 9}));
    EXPECT_TRUE(data_page::slot(kJet4, page.bytes, second).hidden);
    ASSERT_TRUE(data_page::replace(kJet4, page.bytes, first, filled(50, 3)));
    EXPECT_FALSE(data_page::slot(kJet4, page.bytes, first).pointer);
    ASSERT_TRUE(data_page::replace(kJet4, page.bytes, second, filled(5, 4)));
    EXPECT_TRUE(data_page::slot(kJet4, page.bytes, second).hidden);
    EXPECT_EQ(page.row(first), filled(50, 3));
    EXPECT_EQ(page.row(second), filled(5, 4));
    EXPECT_THROW(data_page::pointerTarget(kJet4, page.bytes, first), Error);
}

TEST(DataPage, DamageIsNamedAndNeverFollowed) {
    Page sound;
    for (uint32_t i = 0; i < 10; ++i)
        data_page::insert(kJet4, sound.bytes, filled(100, i));
    const size_t table = kJet4.dataRowTable;
    const std::vector<std::pair<size_t, uint16_t>> damages = {
        {kJet4.dataRowCount, 0xFFFF},
        {kJet4.dataRowCount, 300},
        {table + 6, 0x1FFF},
        {table + 6, 0},
        {table + 6, 4096},
        {table, 100},
        {kJet4.dataFree, 9},
        {table + 18, 0x2BB8},
    };
    for (const auto& [at, value] : damages) {
        Bytes page = sound.bytes;
        put16(page, at, value);
        EXPECT_NE(data_page::contradiction(kJet4, page), "") << at << " = " << value;
        for (int slot = 0; slot < 12; ++slot) {
            for (const size_t length : {size_t{0}, size_t{4}, size_t{3000}}) {
                Bytes copy = page;
                try {
                    const auto number = static_cast<uint8_t>(slot);
                    data_page::replace(kJet4, copy, number, Bytes(length, 1));
                    data_page::erase(kJet4, copy, number);
                    if (data_page::fits(kJet4, copy, length))
                        data_page::insert(kJet4, copy, Bytes(length, 2));
                } catch (const Error& error) {
                    EXPECT_EQ(error.number(), Err::Corrupt);
                }
            }
        }
    }
    EXPECT_EQ(data_page::contradiction(kJet4, sound.bytes), "");
}

} // namespace
