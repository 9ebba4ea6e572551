// Ranges along an index and DAO's Seek: ascending, descending, composite, prefixes, nulls; walks that survive
// changes.
#include "table_fixture.h"

#include <random>

namespace jet_rows {
namespace {

class RowSeek : public TableFixture {
  protected:
    // Id, A, B: A ascending or descending, B the other way round; ids in the order of insertion.
    void SetUp() override {
        table.emplace(make("T", {field("Id", Type::Long), field("A", Type::Long), field("B", Type::Text, 20)},
                           {index("Artan", {{1, false}}), index("Azalan", {{1, true}}),
                            index("Bileşik", {{1, false}, {2, true}}), index("Ad", {{2, false}})}));
        const std::vector<std::vector<Value>> rows = {
            {1, 10, "a"},      {2, 20, "b"},     {3, 20, "ç"}, {4, 30, "a"},
            {5, Value(), "i"}, {6, 20, Value()}, {7, 40, "İ"},
        };
        for (const auto& row : rows)
            table->insert(row);
    }
    std::optional<Table> table;
};

TEST_F(RowSeek, RangesGiveTheRowsBetweenTheirBounds) {
    const auto range = [](std::vector<Value> lower, std::vector<Value> upper, bool lowerIn = true,
                          bool upperIn = true) {
        return KeyRange{std::move(lower), std::move(upper), lowerIn, upperIn, false};
    };
    const Value null;
    const struct {
        const char* index;
        KeyRange range;
        const char* ids; // forwards
    } cases[] = {
        {"Artan", range({}, {}), "5 1 2 3 6 4 7"},
        {"Artan", range({20}, {}), "2 3 6 4 7"},
        {"Artan", range({20}, {}, false), "4 7"},
        {"Artan", range({}, {20}), "5 1 2 3 6"},
        {"Artan", range({}, {20}, true, false), "5 1"},
        {"Artan", range({20}, {20}), "2 3 6"},
        {"Artan", range({20}, {20}, false), ""},
        {"Artan", range({11}, {19}), ""},
        {"Artan", range({30}, {10}), ""},
        {"Artan", range({null}, {null}), "5"},
        {"Artan", range({null}, {}, false), "1 2 3 6 4 7"},
        {"Artan", range({null}, {10}, false), "1"},
        {"Artan", range({"20"}, {20.0}), "2 3 6"},
        {"Azalan", range({}, {}), "7 4 2 3 6 1 5"},
        {"Azalan", range({20}, {}), "7 4 2 3 6"},
        {"Azalan", range({20}, {}, false), "7 4"},
        {"Azalan", range({}, {20}), "2 3 6 1 5"},
        {"Azalan", range({10}, {30}, false, false), "2 3 6"},
        {"Azalan", range({null}, {20}, false), "2 3 6 1"},
        {"Azalan", range({20}, {20}), "2 3 6"},
        {"Bileşik", range({20}, {20}), "3 2 6"},
        {"Bileşik", range({20, "b"}, {20, "b"}), "2"},
        {"Bileşik", range({20, "b"}, {20}), "3 2"},
        {"Bileşik", range({20, "b"}, {20}, false), "3"},
        {"Bileşik", range({20}, {20, "b"}, true, true), "2 6"},
        {"Bileşik", range({20, null}, {20, null}), "6"},
        {"Bileşik", range({10}, {20}, false), "3 2 6"},
        {"Bileşik", range({20, "B"}, {20.0, "B"}), "2"},
        {"Ad", range({"a"}, {"a"}), "1 4"},
        {"Ad", range({"c"}, {"d"}), "3"},
        {"Ad", range({"i"}, {"i"}), "5 7"},
    };
    const ReadScope scope(db->pages());
    for (auto c : cases) {
        SCOPED_TRACE(std::string(c.index) + ": " + c.ids);
        EXPECT_EQ(list(*table, c.index, c.range, 0), c.ids);
        c.range.backwards = true;
        std::string back = list(*table, c.index, c.range, 0);
        std::reverse(back.begin(), back.end()); // ids are single digits
        EXPECT_EQ(back, c.ids);
    }
    EXPECT_EQ(errorOf([&] { table->scan("Yok", {}); }), 3265);
    EXPECT_EQ(errorOf([&] { table->scan("Artan", range({1, 2}, {})); }), 3001);
    EXPECT_EQ(errorOf([&] { table->scan("Artan", range({"on"}, {})); }), 3421);
}

TEST_F(RowSeek, SeekFindsTheFirstOrLastFittingRecord) {
    const Value null;
    const struct {
        const char* index;
        SeekOp op;
        std::vector<Value> keys;
        int id; // 0 = no match
    } cases[] = {
        {"Artan", SeekOp::Equal, {20}, 2},
        {"Artan", SeekOp::Equal, {25}, 0},
        {"Artan", SeekOp::Equal, {null}, 5},
        {"Artan", SeekOp::Greater, {20}, 4},
        {"Artan", SeekOp::GreaterOrEqual, {20}, 2},
        {"Artan", SeekOp::GreaterOrEqual, {21}, 4},
        {"Artan", SeekOp::Less, {20}, 1},
        {"Artan", SeekOp::LessOrEqual, {20}, 6},
        {"Artan", SeekOp::Greater, {40}, 0},
        {"Artan", SeekOp::Less, {null}, 0},
        {"Artan", SeekOp::LessOrEqual, {99}, 7},
        {"Azalan", SeekOp::Greater, {20}, 1},
        {"Azalan", SeekOp::Less, {20}, 4},
        {"Azalan", SeekOp::Equal, {30}, 4},
        {"Bileşik", SeekOp::Equal, {20}, 3},
        {"Bileşik", SeekOp::Equal, {20, "b"}, 2},
        {"Bileşik", SeekOp::Equal, {20, "中"}, 0}, // its place in the order is not known: no match, no error
        {"Bileşik", SeekOp::Equal, {20, "z"}, 0},
        {"Bileşik", SeekOp::Greater, {20}, 4},
        {"Bileşik", SeekOp::LessOrEqual, {20}, 6},
        {"Bileşik", SeekOp::Less, {20}, 1},
        {"Ad", SeekOp::Equal, {"Ç"}, 3},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.index) + " " + std::to_string(static_cast<int>(c.op)) + " " +
                     c.keys[0].toText());
        table->setIndex(c.index);
        EXPECT_EQ(table->seek(c.op, c.keys), c.id != 0);
        if (c.id != 0)
            EXPECT_EQ(table->value("id").toInt(), c.id);
        else
            EXPECT_EQ(errorOf([&] { table->value("Id"); }), 3021);
    }
    table->setIndex("Artan");
    ASSERT_TRUE(table->seek(SeekOp::Equal, std::vector<Value>{20}));
    std::string ids;
    for (; !table->eof(); table->moveNext())
        ids += table->value("Id").toText();
    EXPECT_EQ(ids, "23647") << "moves go on from the found record along the index";
    table->setIndex("");
    EXPECT_EQ(errorOf([&] { table->seek(SeekOp::Equal, std::vector<Value>{1}); }), 3001);
}

TEST_F(RowSeek, OneScanStartsAgainWithOtherBounds) {
    const ReadScope scope(db->pages());
    Scan scan = table->scan("Artan", {});
    for (const auto& [key, count] : {std::pair{20, 3}, {25, 0}, {10, 1}, {20, 3}}) {
        scan.restart({{key}, {key}, true, true, false});
        int met = 0;
        while (scan.next())
            ++met;
        EXPECT_EQ(met, count) << key;
        EXPECT_FALSE(scan.next()) << "the end stays the end";
    }
    Scan pages = table->scan();
    ASSERT_TRUE(pages.next());
    pages.restart();
    ASSERT_TRUE(pages.next());
    EXPECT_EQ(pages.value(0).toInt(), 1);
}

// Many rows: a walk meets each row once although the rows it stands on change or go.
TEST_F(RowSeek, WalksSurviveChangesAndDeletionsOfMetRows) {
    constexpr int kRows = 3000;
    for (const bool byIndex : {false, true}) {
        for (const bool backwards : {false, true}) {
            if (backwards && !byIndex) continue;
            SCOPED_TRACE(byIndex ? (backwards ? "index, backwards" : "index") : "pages");
            const std::string name = std::string("W") + (byIndex ? "i" : "p") + (backwards ? "b" : "f");
            Table walked = make(name, {field("Id", Type::Long), field("Metin", Type::Text, 200)},
                                {index("PrimaryKey", {{0, false}}, Primary), index("Metin", {{1, false}})});
            WriteBatch batch(*db);
            for (int i = 0; i < kRows; ++i)
                walked.insert(std::vector<Value>{i, "kısa"});
            KeyRange all;
            all.backwards = backwards;
            Scan scan = byIndex ? walked.scan("PrimaryKey", all) : walked.scan();
            std::mt19937 random(7);
            int met = 0, left = 0;
            const bool text[] = {false, true};
            while (scan.next()) {
                ASSERT_EQ(scan.value(0).toInt(), backwards ? kRows - 1 - met : met);
                ++met;
                const RowId id = scan.id();
                switch (random() % 3) {
                case 0: walked.remove(id); continue;
                case 1:
                    walked.update(id, std::vector<Value>{0, std::string(random() % 200, 'x')}, text);
                    break;
                default: break;
                }
                ++left;
            }
            EXPECT_EQ(met, kRows);
            EXPECT_EQ(walked.rowCount(), static_cast<uint32_t>(left));
            checkTable(*db, name);
        }
    }
}

} // namespace
} // namespace jet_rows
