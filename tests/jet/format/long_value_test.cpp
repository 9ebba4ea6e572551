// Long values of every size, their pages, and chains that lie.
#include "jet/error.h"
#include "jet/format/long_value.h"
#include "jet/format/scratch_file.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace {

using namespace jet;
using format_test::ScratchFile;

class LongValue : public testing::Test {
  protected:
    LongValue() {
        field.name = "Not";
        field.type = Type::Memo;
        const RowId owned = scratch.allocator->createMap(), free = scratch.allocator->createMap();
        field.ownedMapPage = owned.page;
        field.ownedMapRow = owned.row;
        field.freeMapPage = free.page;
        field.freeMapRow = free.row;
    }

    Bytes put(const Bytes& value) { return writeLongValue(*scratch.allocator, field, value); }
    Bytes get(const Bytes& header) { return readLongValue(*scratch.file, kJet4, header); }
    UsageMap owned() { return {*scratch.file, kJet4, {field.ownedMapPage, field.ownedMapRow}}; }
    UsageMap free() { return {*scratch.file, kJet4, {field.freeMapPage, field.freeMapRow}}; }

    std::vector<RowId> rowsOf(const Bytes& header) {
        std::vector<RowId> rows;
        forEachLongValueRow(*scratch.file, kJet4, header, [&rows](RowId row) { rows.push_back(row); });
        return rows;
    }

    static Bytes value(size_t size) {
        Bytes bytes(size);
        std::mt19937 random(static_cast<uint32_t>(size));
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<uint8_t>(random()); });
        return bytes;
    }

    ScratchFile scratch;
    WriteScope write{*scratch.file};
    FieldDef field;
};

TEST_F(LongValue, EverySizeRoundTripsInItsForm) {
    struct Case {
        size_t size, rows;
        uint8_t kind;
    };
    for (const Case c : {Case{0, 0, 0x80},
                         {64, 0, 0x80},
                         {65, 1, 0x40},
                         {4060, 1, 0x40},
                         {4061, 1, 0},
                         {4076, 1, 0},
                         {4077, 2, 0},
                         {8152, 2, 0},
                         {8153, 3, 0},
                         {300000, 74, 0}}) {
        const Bytes header = put(value(c.size));
        EXPECT_EQ(get(header), value(c.size)) << c.size;
        EXPECT_EQ(header[3], c.kind) << c.size;
        EXPECT_EQ(rowsOf(header).size(), c.rows) << c.size;
        freeLongValue(*scratch.allocator, field, header);
    }
    EXPECT_EQ(owned().count(), 0u) << "freed values leave no page behind";
    EXPECT_EQ(free().count(), 0u);
}

TEST_F(LongValue, SmallValuesShareAPage) {
    std::vector<Bytes> headers;
    for (size_t i = 0; i < 60; ++i)
        headers.push_back(put(value(100 + i)));
    EXPECT_LE(owned().count(), 3u);
    for (size_t i = 0; i < 60; i += 2)
        freeLongValue(*scratch.allocator, field, headers[i]);
    for (size_t i = 0; i < 60; i += 2)
        headers[i] = put(value(100 + i));
    EXPECT_LE(owned().count(), 3u) << "room of freed values is used again";
    for (size_t i = 0; i < 60; ++i)
        EXPECT_EQ(get(headers[i]), value(100 + i));
}

TEST_F(LongValue, WhatDoesNotFitAHeaderIsRefused) {
    EXPECT_THROW(put(Bytes(16u << 20)), Error);
    FieldDef without = field;
    without.ownedMapPage = 0;
    EXPECT_THROW(writeLongValue(*scratch.allocator, without, value(500)), Error);
}

TEST_F(LongValue, LyingHeadersAndChainsAreCorrupt) {
    const Bytes chain = put(value(20000)), single = put(value(1000)), in = put(value(20));
    const auto refused = [this](Bytes header, const char* what) {
        EXPECT_THROW(get(header), Error) << what;
        EXPECT_THROW(freeLongValue(*scratch.allocator, field, header), Error) << what;
    };
    const auto changed = [](Bytes header, size_t at, uint8_t byte) {
        header[at] = byte;
        return header;
    };
    refused(changed(chain, 0, chain[0] + 1), "longer than the chain");
    refused(changed(chain, 0, chain[0] - 1), "shorter than the chain");
    refused(changed(chain, 1, 0x10), "much shorter");
    refused(changed(single, 1, 1), "single row of another length");
    refused(changed(single, 3, 0x33), "unknown kind");
    refused(changed(single, 4, 200), "no such row");
    refused(changed(single, 5, 2), "a page that holds no long values");
    refused(changed(single, 7, 0x7F), "a page outside the file");
    refused(Bytes(single.begin(), single.begin() + 11), "short header");
    EXPECT_THROW(get(changed(in, 0, 21)), Error);

    const std::vector<RowId> rows = rowsOf(chain);
    PageEdit page = scratch.file->edit(rows[1].page); // a ring
    const Slot slot = data_page::slot(kJet4, page.bytes(), rows[1].row);
    put32(page.bytes(), slot.start, static_cast<uint32_t>(rows[0].packed()));
    refused(chain, "ring");
}

// However small its links and however long it says it is: neither time nor memory past what the file holds.
TEST_F(LongValue, RingOfTinyLinksIsFoundSoon) {
    Bytes header = put(value(4077)); // the second link holds one byte
    const RowId last = rowsOf(header)[1];
    PageEdit page = scratch.file->edit(last.page);
    put32(page.bytes(), data_page::slot(kJet4, page.bytes(), last.row).start,
          static_cast<uint32_t>(last.packed()));
    for (const size_t length : {size_t{20000}, size_t{0xFFFFFF}}) {
        header[0] = static_cast<uint8_t>(length);
        header[1] = static_cast<uint8_t>(length >> 8);
        header[2] = static_cast<uint8_t>(length >> 16);
        size_t visited = 0;
        const auto count = [&visited](RowId) { ++visited; };
        EXPECT_THROW(forEachLongValueRow(*scratch.file, kJet4, header, count), Error) << length;
        EXPECT_LT(visited, 10u) << length;
    }
}

} // namespace
