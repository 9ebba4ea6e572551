// The current record: moves, bookmarks, addNew / edit / update / remove, and two handles on one file.
#include "table_fixture.h"

#include <cmath>

namespace jet_rows {
namespace {

class CurrentRecord : public TableFixture {
  protected:
    void SetUp() override {
        table.emplace(make("T",
                           {field("Id", Type::Long), field("Ad", Type::Text, 20), field("Not", Type::Memo),
                            field("Var", Type::Boolean)},
                           {index("PrimaryKey", {{0, false}}, Primary), index("Ad", {{1, false}})}));
        const char* const names[] = {"Zeynep", "Ali", "Çağrı"};
        for (int i = 0; i < 3; ++i)
            table->insert(std::vector<Value>{i + 1, names[i], Value(), false});
    }
    std::string name() { return table->value("Ad").toText(); }
    std::optional<Table> table;
};

TEST_F(CurrentRecord, MovesInPageOrderAndAlongAnIndex) {
    EXPECT_EQ(name(), "Zeynep") << "a new handle stands on the first record";
    EXPECT_TRUE(table->moveLast());
    EXPECT_EQ(name(), "Çağrı");
    EXPECT_FALSE(table->moveNext());
    EXPECT_TRUE(table->eof());
    EXPECT_FALSE(table->bof());
    EXPECT_EQ(errorOf([&] { name(); }), 3021);
    EXPECT_FALSE(table->moveNext());
    EXPECT_TRUE(table->movePrevious());
    EXPECT_EQ(name(), "Çağrı");
    table->setIndex("ad");
    std::string names;
    for (; !table->eof(); table->moveNext())
        names += name() + " ";
    EXPECT_EQ(names, "Ali Çağrı Zeynep ");
    EXPECT_TRUE(table->moveFirst());
    EXPECT_FALSE(table->movePrevious());
    EXPECT_TRUE(table->bof());
    EXPECT_TRUE(table->moveNext());
    EXPECT_EQ(name(), "Ali");
    EXPECT_EQ(errorOf([&] { table->setIndex("Yok"); }), 3265);
    EXPECT_EQ(errorOf([&] { table->value("Yok"); }), 3265);
}

TEST_F(CurrentRecord, EmptyTableIsAtBothEnds) {
    Table empty = make("Boş", {field("A", Type::Long)}, {index("A", {{0, false}})});
    for (const char* index : {"", "A"}) {
        empty.setIndex(index);
        EXPECT_TRUE(empty.eof() && empty.bof());
        EXPECT_FALSE(empty.moveFirst());
        EXPECT_FALSE(empty.moveLast());
        EXPECT_TRUE(empty.eof() && empty.bof());
        EXPECT_EQ(errorOf([&] { empty.edit(); }), 3021);
        EXPECT_EQ(errorOf([&] { empty.remove(); }), 3021);
        EXPECT_EQ(errorOf([&] { empty.bookmark(); }), 3021);
    }
    empty.addNew();
    empty.set("A", 5);
    empty.update();
    EXPECT_TRUE(empty.moveFirst());
    EXPECT_FALSE(empty.bof() || empty.eof());
}

TEST_F(CurrentRecord, BookmarksComeBackAndDieWithTheirRecord) {
    table->setIndex("Ad");
    table->moveLast();
    const RowId last = table->bookmark();
    table->moveFirst();
    const RowId first = table->bookmark();
    table->goTo(last);
    EXPECT_EQ(name(), "Zeynep");
    EXPECT_TRUE(table->movePrevious());
    EXPECT_EQ(name(), "Çağrı") << "a bookmark is a place in the index, too";
    table->goTo(first);
    table->remove();
    EXPECT_EQ(errorOf([&] { table->goTo(first); }), 3021);
}

TEST_F(CurrentRecord, AddNewKeepsThePlaceAndTellsWhereTheRecordIs) {
    table->moveFirst();
    table->addNew();
    EXPECT_TRUE(table->value("Ad").isNull());
    EXPECT_EQ(table->value("Var"), Value(false));
    table->set("Id", "9");
    EXPECT_EQ(table->value("Id"), Value(9)) << "the buffer holds the field's type";
    table->set("Ad", "Demet");
    table->update();
    EXPECT_EQ(name(), "Zeynep");
    table->goTo(table->lastModified());
    EXPECT_EQ(name(), "Demet");
    EXPECT_EQ(errorOf([&] { table->update(); }), 3020);
    EXPECT_EQ(errorOf([&] { table->set("Ad", "x"); }), 3020);
    checkTable(*db, "T");
}

TEST_F(CurrentRecord, EditWritesOnUpdateOnlyAndFollowsItsKey) {
    table->setIndex("Ad");
    table->moveFirst();
    table->edit();
    table->set("Ad", "Yavuz");
    EXPECT_EQ(name(), "Yavuz");
    table->cancelUpdate();
    EXPECT_EQ(name(), "Ali");
    table->edit();
    table->set("Ad", "Yavuz");
    EXPECT_TRUE(table->moveNext()) << "moving throws the edit away";
    EXPECT_TRUE(table->moveFirst());
    EXPECT_EQ(name(), "Ali");
    table->edit();
    table->set("Ad", "Yavuz");
    table->set("Not", std::string(5000, 'n'));
    table->update();
    EXPECT_EQ(name(), "Yavuz");
    EXPECT_TRUE(table->moveNext());
    EXPECT_EQ(name(), "Zeynep") << "the record took its new place in the index";
    EXPECT_FALSE(table->moveNext());
    checkTable(*db, "T");
}

TEST_F(CurrentRecord, SetRefusesAtOnceAndTheBufferStays) {
    table->moveFirst();
    table->edit();
    table->set("Ad", "Yeni");
    EXPECT_EQ(errorOf([&] { table->set("Ad", std::string(21, 'x')); }), 3163);
    EXPECT_EQ(errorOf([&] { table->set("Id", "bir"); }), 3421);
    EXPECT_EQ(errorOf([&] { table->set("Yok", 1); }), 3265);
    EXPECT_EQ(name(), "Yeni");
    table->set("Id", 2);
    EXPECT_EQ(errorOf([&] { table->update(); }), 3022);
    table->set("Id", 20);
    table->update();
    EXPECT_EQ(table->value("Id").toInt(), 20);
}

TEST_F(CurrentRecord, RemoveLeavesTheWayToTheNextRecord) {
    for (const char* index : {"", "Ad", "PrimaryKey"}) {
        SCOPED_TRACE(index);
        table->insert(std::vector<Value>{100, "Mert", "not", true});
        table->insert(std::vector<Value>{101, "Mine", "not", true});
        table->setIndex("PrimaryKey");
        ASSERT_TRUE(table->seek(SeekOp::Equal, std::vector<Value>{100}));
        const RowId mert = table->bookmark();
        table->setIndex(index);
        table->goTo(mert);
        table->remove();
        EXPECT_EQ(errorOf([&] { name(); }), 3021);
        EXPECT_FALSE(table->eof());
        EXPECT_EQ(errorOf([&] { table->remove(); }), 3021);
        EXPECT_TRUE(table->moveNext());
        EXPECT_EQ(name(), "Mine");
        table->remove();
        table->movePrevious();
        EXPECT_NE(name(), "Mine");
    }
    table->setIndex("");
    table->moveFirst();
    while (!table->eof()) {
        table->remove();
        table->moveNext();
    }
    EXPECT_EQ(table->rowCount(), 0u);
    checkTable(*db, "T");
}

TEST_F(CurrentRecord, StructureChangesKeepThePlaceAndADroppedIndexIsTold) {
    table->setIndex("Ad");
    table->moveFirst();
    db->addField("T", field("Yeni", Type::Text, 10));
    EXPECT_EQ(name(), "Ali");
    EXPECT_TRUE(table->value("Yeni").isNull());
    table->edit();
    table->set("Yeni", "x");
    table->update();
    EXPECT_TRUE(table->moveNext());
    EXPECT_EQ(name(), "Çağrı");
    db->renameField("T", "Ad", "İsim");
    EXPECT_EQ(table->value("İsim").toText(), "Çağrı");
    EXPECT_EQ(errorOf([&] { name(); }), 3265);
    db->dropIndex("T", "Ad");
    EXPECT_EQ(errorOf([&] { table->moveNext(); }), 3265);
    EXPECT_TRUE(table->moveFirst());
    EXPECT_EQ(table->value("İsim").toText(), "Zeynep") << "page order now";
    table->edit();
    table->set("Not", "yazılan");
    db->dropField("T", "Not");
    EXPECT_EQ(errorOf([&] { table->update(); }), 3265) << "what was typed has no place any more";
    checkTable(*db, "T");
    db->dropTable("T");
    EXPECT_EQ(errorOf([&] { table->moveFirst(); }), 3078);
}

TEST_F(CurrentRecord, ARecordThatHoldsNotANumberCanBeEdited) {
    Table reals = make("R", {field("D", Type::Double), field("S", Type::Single), field("N", Type::Long)});
    reals.insert(std::vector<Value>{std::nan(""), std::nanf(""), 1});
    reals.edit();
    reals.set("N", 2);
    reals.update();
    EXPECT_EQ(reals.value("N").toInt(), 2);
}

TEST_F(CurrentRecord, TwoHandlesSeeEachOtherAndConflictsAreTold) {
    auto other = Database::open(path);
    Table theirs = other->openTable("T");
    table->moveFirst();
    theirs.moveFirst();
    const bool note[] = {false, false, true, false};
    const RowId id = table->bookmark();
    table->update(id, std::vector<Value>{1, "", std::string(3000, 'a'), false}, note);

    theirs.edit();
    theirs.set("Ad", "Onlar");
    table->edit();
    table->set("Var", true);
    table->update();
    EXPECT_EQ(errorOf([&] { theirs.update(); }), 3197);
    EXPECT_EQ(theirs.value("Ad").toText(), "Onlar") << "what was typed is not lost";
    theirs.cancelUpdate();
    EXPECT_EQ(theirs.value("Var"), Value(true)) << "a handle is live";

    theirs.edit(); // a long value of the same length at the same place is a change, too
    theirs.set("Ad", "Onlar");
    table->update(id, std::vector<Value>{1, "", std::string(3000, 'b'), false}, note);
    EXPECT_EQ(errorOf([&] { theirs.update(); }), 3197);

    theirs.edit();
    theirs.set("Ad", "Onlar");
    theirs.update();
    EXPECT_EQ(name(), "Onlar");

    theirs.edit();
    theirs.set("Ad", "x");
    table->remove();
    EXPECT_EQ(errorOf([&] { theirs.update(); }), 3021);
    theirs.cancelUpdate();
    EXPECT_TRUE(theirs.moveNext());
    EXPECT_EQ(theirs.value("Ad").toText(), "Ali");
    EXPECT_EQ(theirs.rowCount(), 2u);
    checkTable(*other, "T");
}

} // namespace
} // namespace jet_rows
