// Where rows lie: growing, moving, coming home, long values of every length, pages taken and given back.
#include "jet/table/page_cursor.h"
#include "table_fixture.h"

#include <cmath>

namespace jet_rows {
namespace {

class RowStorage : public TableFixture {
  protected:
    std::vector<FieldDef> fields{field("Id", Type::Long), field("A", Type::Text, 255),
                                 field("B", Type::Text, 255), field("C", Type::Text, 255),
                                 field("D", Type::Text, 255)};
    std::vector<IndexDef> indexes{index("PrimaryKey", {{0, false}}, Primary)};

    static std::vector<Value> row(int id, size_t length) {
        // Letters outside Latin-1, so that the stored form is two bytes each.
        std::string wide;
        for (size_t i = 0; i < length; ++i)
            wide += "ğ";
        return {id, wide, wide, wide, wide};
    }
    size_t hiddenSlots(const TableDef& def) {
        const ReadScope scope(db->pages());
        size_t hidden = 0;
        UsageMap(db->pages(), db->layout(), RowId::fromPacked(def.ownedMapPointer)).forEach([&](PageNo no) {
            const PageRef page = db->pages().read(no);
            for (uint16_t i = 0; i < data_page::slotCount(db->layout(), page.bytes()); ++i)
                hidden += data_page::slot(db->layout(), page.bytes(), i).hidden;
        });
        return hidden;
    }
    size_t ownedPages(const TableDef& def) {
        const ReadScope scope(db->pages());
        return UsageMap(db->pages(), db->layout(), RowId::fromPacked(def.ownedMapPointer)).count();
    }
    static constexpr bool kAll[] = {true, true, true, true, true};
};

TEST_F(RowStorage, GrownRowMovesMovesAgainAndComesHome) {
    Table table = make("T", fields, indexes);
    std::vector<RowId> ids;
    WriteBatch batch(*db);
    for (int i = 0; i < 40; ++i)
        ids.push_back(table.insert(row(i, 20)));
    const size_t lengths[] = {100, 200, 255, 230, 20, 255, 1, 0};
    for (const size_t length : lengths) {
        SCOPED_TRACE(length);
        for (const int i : {0, 7, 13, 39}) {
            table.update(ids[i], row(i, length), kAll);
            EXPECT_EQ(table.read(ids[i]), row(i, length));
        }
        EXPECT_EQ(table.read(ids[8]), row(8, 20));
        checkTable(*db, "T");
    }
    EXPECT_EQ(hiddenSlots(table.def()), 0u) << "small again, all rows are back in their own slots";
    table.update(ids[5], row(5, 255), kAll);
    EXPECT_EQ(hiddenSlots(table.def()), 1u);
    EXPECT_EQ(list(table, 0).substr(0, 16), "0 1 2 3 4 5 6 7 ")
        << "a moved row is met where it was inserted, once";
    table.remove(ids[5]);
    EXPECT_EQ(hiddenSlots(table.def()), 0u);
    EXPECT_EQ(errorOf([&] { table.read(ids[5]); }), 3021);
    checkTable(*db, "T");
}

TEST_F(RowStorage, EmptiedPagesServeOtherTables) {
    Table first = make("Bir", fields, indexes);
    WriteBatch batch(*db);
    std::vector<RowId> ids;
    for (int i = 0; i < 400; ++i)
        ids.push_back(first.insert(row(i, 100)));
    const size_t full = ownedPages(first.def());
    const PageNo before = db->pages().pageCount();
    for (const RowId id : ids)
        first.remove(id);
    EXPECT_LE(ownedPages(first.def()), 1u);
    checkTable(*db, "Bir");
    Table second = make("İki", fields, indexes);
    for (int i = 0; i < 400; ++i)
        second.insert(row(i, 100));
    EXPECT_EQ(ownedPages(second.def()), full);
    EXPECT_LT(db->pages().pageCount(), before + full / 2)
        << "the second table lives on the first one's pages";
    first.insert(row(1, 5));
    checkTable(*db, "Bir");
    checkTable(*db, "İki");
}

TEST_F(RowStorage, RoomOfDeletedRowsIsUsedAgain) {
    Table table = make("T", fields, indexes);
    WriteBatch batch(*db);
    std::vector<RowId> ids;
    for (int i = 0; i < 300; ++i)
        ids.push_back(table.insert(row(i, 40)));
    const size_t full = ownedPages(table.def());
    for (int i = 0; i < 300; i += 2)
        table.remove(ids[i]);
    for (int i = 0; i < 300; i += 2)
        table.insert(row(i, 40));
    EXPECT_LE(ownedPages(table.def()), full + 1);
    checkTable(*db, "T");
}

TEST_F(RowStorage, ARowOfAnotherTableIsNoRowOfThisOne) {
    Table one = make("Bir", fields), two = make("İki", fields);
    const RowId id = one.insert(row(1, 3));
    EXPECT_EQ(errorOf([&] { two.read(id); }), 3021);
    EXPECT_EQ(errorOf([&] { two.remove(id); }), 3021);
    EXPECT_EQ(errorOf([&] { one.read({id.page, static_cast<uint8_t>(id.row + 1)}); }), 3021);
    EXPECT_EQ(errorOf([&] { one.read({0x00FFFFFF, 0}); }), 3021);
    EXPECT_EQ(errorOf([&] { one.read({}); }), 3021);
}

TEST_F(RowStorage, RowPastThePageIsRefusedAndNothingChanges) {
    auto wide = fields;
    for (int i = 0; i < 8; ++i)
        wide.push_back(field("E" + std::to_string(i), Type::Text, 255));
    wide.push_back(field("Not", Type::Memo));
    Table table = make("T", wide, indexes);
    std::vector<Value> values(wide.size(), row(0, 255)[1]);
    values[0] = 1;
    EXPECT_EQ(errorOf([&] { table.insert(values); }), 3047);
    EXPECT_EQ(table.rowCount(), 0u);
    checkTable(*db, "T");
    for (size_t i = 5; i < values.size(); ++i)
        values[i] = {};
    table.insert(values);
    checkTable(*db, "T");
}

TEST_F(RowStorage, LongValuesOfEveryLengthReadBackAndGiveTheirPagesBack) {
    Table table = make("T", {field("Id", Type::Long), field("Not", Type::Memo), field("Resim", Type::Ole)},
                       {index("PrimaryKey", {{0, false}}, Primary)});
    const size_t lengths[] = {0,    1,    31,   32,   33,   64,   65,   1000,   1024,   1025,
                              2038, 4000, 4075, 4076, 4077, 8152, 8153, 50'000, 200'000};
    std::vector<RowId> ids;
    std::vector<std::vector<Value>> rows;
    WriteBatch batch(*db);
    for (const size_t length : lengths) {
        std::string text;
        for (size_t i = 0; i < length; ++i)
            text += i % 5 == 4 ? "ş" : std::string(1, static_cast<char>('a' + i % 26));
        Bytes bytes(length);
        for (size_t i = 0; i < length; ++i)
            bytes[i] = static_cast<uint8_t>(i * 7 + length);
        rows.push_back({static_cast<int32_t>(rows.size()), text, bytes});
        ids.push_back(table.insert(rows.back()));
    }
    for (size_t i = 0; i < ids.size(); ++i)
        EXPECT_TRUE(table.read(ids[i]) == rows[i]) << lengths[i];
    const bool longOnes[] = {false, true, true};
    for (size_t i = 0; i < ids.size(); ++i) { // each gets the value of its opposite
        const auto& other = rows[rows.size() - 1 - i];
        table.update(ids[i], other, longOnes);
        EXPECT_TRUE(table.read(ids[i])[1] == other[1]) << lengths[i];
        EXPECT_TRUE(table.read(ids[i])[2] == other[2]) << lengths[i];
    }
    const PageNo highest = db->pages().pageCount();
    const std::vector<Value> empty{0, Value(), Value()};
    for (int round = 0; round < 3; ++round) {
        for (const RowId id : ids)
            table.update(id, empty, longOnes);
        for (size_t i = 0; i < ids.size(); ++i)
            table.update(ids[i], rows[i], longOnes);
    }
    EXPECT_LE(db->pages().pageCount(), highest + 4) << "freed chains are used again";
    for (const RowId id : ids)
        table.remove(id);
    checkTable(*db, "T");
}

} // namespace
} // namespace jet_rows
