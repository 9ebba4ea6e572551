// Random statements on a table with every type of field, held against a model in memory.
#include "table_fixture.h"

#include <map>
#include <random>
#include <set>

namespace jet_rows {
namespace {

enum Column {
    Id,
    Name,
    City,
    Flag,
    Small,
    Short,
    Money,
    Ratio,
    Real,
    Day,
    Code,
    Note,
    Picture,
    Key,
    Number,
    kColumns
};

std::vector<FieldDef> allTypes() {
    std::vector<FieldDef> fields{
        field("Id", Type::Long),        field("Ad", Type::Text, 60),    field("Şehir", Type::Text, 20),
        field("Var", Type::Boolean),    field("Byte", Type::Byte),      field("Kısa", Type::Integer),
        field("Tutar", Type::Currency), field("Oran", Type::Single),    field("Gerçek", Type::Double),
        field("Gün", Type::Date),       field("Kod", Type::Binary, 40), field("Not", Type::Memo),
        field("Resim", Type::Ole),      field("Anahtar", Type::Guid),   field("No", Type::Long)};
    return fields;
}

std::vector<IndexDef> manyIndexes() {
    return {index("PrimaryKey", {{Id, false}}, Primary),
            index("No", {{Number, false}}, Unique),
            index("ŞehirTutar", {{City, false}, {Money, true}}),
            index("AdTers", {{Name, true}, {Id, false}}),
            index("Gün", {{Day, false}}, IgnoreNulls),
            index("Karışık", {{Flag, false}, {Short, true}, {Real, false}, {Key, false}, {Code, false}})};
}

class Model : public TableFixture {
  protected:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); }

    std::string text(int length) {
        static const char* const kLetters[] = {"a", "b", "ç", "ğ", "ı", "i", "İ",
                                               "ş", "Z", " ", "é", "Ö", "-", "'"};
        std::string s;
        for (int i = 0; i < length; ++i)
            s += kLetters[pick(0, std::size(kLetters) - 1)];
        return s;
    }
    Bytes bytes(int length) {
        Bytes b;
        for (int i = 0; i < length; ++i)
            b.push_back(static_cast<uint8_t>(pick(0, 255)));
        return b;
    }
    int longLength() {
        static const int kLengths[] = {0, 1, 30, 31, 64, 65, 900, 3000, 4076, 4077, 20'000};
        return pick(0, 300) == 0 ? 200'000 : kLengths[pick(0, std::size(kLengths) - 1)];
    }
    Value value(int column) {
        if (column != Id && pick(0, 5) == 0) return column == Flag ? Value(false) : Value();
        switch (column) {
        case Id: return pick(1, 3000);
        case Name: return text(pick(0, 60));
        case City: return text(pick(1, 2));
        case Flag: return pick(0, 1) == 1;
        case Small: return pick(0, 255);
        case Short: return pick(-5, 5);
        case Money: return Currency{pick(-30, 30) * 2500LL};
        case Ratio: return static_cast<float>(pick(-1000, 1000)) / 8;
        case Real: return pick(-1000, 1000) / 7.0;
        case Day: return Date{static_cast<double>(pick(-100, 45'000)) + 0.25};
        case Code: return bytes(pick(1, 40));
        case Note: return text(longLength() / 4);
        case Picture: return bytes(longLength());
        case Key: {
            Guid guid;
            for (auto& byte : guid.bytes)
                byte = static_cast<uint8_t>(pick(0, 255));
            return guid;
        }
        default: return pick(-200, 2000);
        }
    }

    // Would these values collide with another row of the model?
    bool collides(const std::vector<Value>& values, RowId self) const {
        for (const auto& [id, row] : model) {
            if (id == self) continue;
            if (row[Id] == values[Id] || (!values[Number].isNull() && row[Number] == values[Number]))
                return true;
        }
        return false;
    }

    void insertOne(Table& table) {
        std::vector<Value> values;
        for (int c = 0; c < kColumns; ++c)
            values.push_back(value(c));
        const bool refused = collides(values, {});
        RowId id;
        const int error = errorOf([&] { id = table.insert(values); });
        ASSERT_EQ(error, refused ? 3022 : 0);
        const bool added = refused || model.emplace(id, values).second;
        ASSERT_TRUE(added) << "two rows in one place";
    }
    void updateOne(Table& table) {
        if (model.empty()) return;
        auto row = std::next(model.begin(), pick(0, static_cast<int>(model.size()) - 1));
        std::vector<Value> wanted = row->second, given(kColumns);
        bool changed[kColumns] = {};
        for (int n = pick(1, 4); n > 0; --n) {
            const int c = pick(0, kColumns - 1);
            changed[c] = true;
            wanted[c] = given[c] = value(c);
        }
        const bool refused = collides(wanted, row->first);
        ASSERT_EQ(errorOf([&] { table.update(row->first, given, changed); }), refused ? 3022 : 0);
        if (!refused) row->second = wanted;
    }
    void removeOne(Table& table) {
        if (model.empty()) return;
        auto row = std::next(model.begin(), pick(0, static_cast<int>(model.size()) - 1));
        table.remove(row->first);
        model.erase(row);
    }
    void compare(Table& table) {
        const ReadScope scope(db->pages());
        std::set<RowId> met;
        Scan scan = table.scan();
        while (scan.next()) {
            ASSERT_TRUE(met.insert(scan.id()).second);
            const auto row = model.find(scan.id());
            ASSERT_NE(row, model.end());
            for (int c = 0; c < kColumns; ++c)
                ASSERT_TRUE(scan.value(c) == row->second[c]) << "column " << c;
            ASSERT_TRUE(table.read(scan.id()) == row->second);
        }
        ASSERT_EQ(met.size(), model.size());
    }

    std::mt19937 random{20240901};
    std::map<RowId, std::vector<Value>> model;
};

TEST_F(Model, RandomStatementsLeaveRowsAndIndexesAsTheModelSays) {
    Table table = make("Hepsi", allTypes(), manyIndexes());
    for (int round = 0; round < 16; ++round) {
        {
            WriteBatch batch(*db);
            const bool shrinking = round % 5 == 4;
            for (int step = 0; step < 150; ++step) {
                const int kind = pick(0, 9);
                if (kind < (shrinking ? 1 : 5))
                    insertOne(table);
                else if (kind < 7)
                    updateOne(table);
                else
                    removeOne(table);
                ASSERT_FALSE(HasFatalFailure());
            }
            batch.commit();
        }
        compare(table);
        checkTable(*db, "Hepsi");
        ASSERT_FALSE(HasFailure()) << "round " << round;
    }
    db.reset();
    db = Database::open(path);
    Table again = db->openTable("hepsi");
    compare(again);
    checkTable(*db, "Hepsi");
    while (!model.empty())
        removeOne(again);
    checkTable(*db, "Hepsi");
}

} // namespace
} // namespace jet_rows
