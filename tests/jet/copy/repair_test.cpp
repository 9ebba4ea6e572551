// What repair decides, one kind of damage at a time. That it keeps every row without harm is proven
// elsewhere, on harmed files by the hundred.
#include "repair_fixture.h"

#include "jet/format/database_header.h"
#include "jet/format/usage_map_bits.h"

namespace repair_test {
namespace {

int errorOf(const std::function<void()>& body) {
    try {
        body();
    } catch (const Error& error) {
        return error.code();
    }
    return 0;
}

TEST_F(Repair, SoundFileComesOutWhole) {
    repair();
    EXPECT_TRUE(report.notes.empty()) << report.notes.front();
    EXPECT_EQ(report.pagesDamaged, 0u);
    for (const RepairedTable& table : report.tables)
        EXPECT_TRUE(table.whole()) << table.name;
    EXPECT_EQ(rowsOf("Ogrenci").size(), size_t{kStudents});
    EXPECT_EQ(result->tableDef("Ogrenci").primaryKey()->name, "Anahtar");
}

TEST_F(Repair, LostHeaderIsAssumedFromThePages) {
    std::ranges::fill(page(0), uint8_t{0});
    repair();
    EXPECT_EQ(report.notes.size(), 2u); // settings, password
    EXPECT_EQ(rowsOf("Ogrenci").size(), size_t{kStudents});
    EXPECT_EQ(result->header().sortOrder, kTurkishSort);
}

TEST_F(Repair, PasswordIsAskedForWhileItCanBeRead) {
    bytes = makeFile("Gizli");
    RepairOptions wrong, right;
    wrong.password = "gizli";
    right.password = "Gizli";
    EXPECT_EQ(errorOf([&] { repair(wrong); }), static_cast<int>(Err::InvalidPassword));
    repair(right);
    EXPECT_EQ(result->header().password, "Gizli");
    page(0)[0x44] ^= 0x55; // of the password
    page(0)[0x72] ^= 0xFF; // and of the date that masks it
    page(0)[0x78] ^= 0xFF;
    repair(wrong);
    EXPECT_EQ(result->header().password, "");
    EXPECT_FALSE(report.notes.empty());
}

TEST_F(Repair, CodedPagesStayCoded) {
    DatabaseHeader header = readHeader(page(0));
    header.encodingKey = 0xC0FFEE11;
    const auto codec = makePageCodec(header.encodingKey);
    for (size_t i = 1; i < pageCount(); ++i)
        codec->encode(static_cast<PageNo>(i), page(i));
    initialiseHeader(page(0), header);
    repair();
    EXPECT_EQ(rowsOf("Ogrenci").size(), size_t{kStudents});
    EXPECT_EQ(result->header().encodingKey, header.encodingKey);
    std::ranges::fill(page(0), uint8_t{0}); // and with it the key
    EXPECT_EQ(errorOf([&] { repair(); }), static_cast<int>(Err::NotADatabase));
}

TEST_F(Repair, LostCatalogGivesMadeUpNames) {
    const PageNo students = definitionOf("Ogrenci"), classes = definitionOf("Sinif");
    for (const size_t number : pagesOf(kCatalogPage))
        std::ranges::fill(page(number), uint8_t{0});
    repair();
    EXPECT_EQ(rowsOf("Kurtarılan_" + std::to_string(students)).size(), size_t{kStudents});
    EXPECT_EQ(rowsOf("Kurtarılan_" + std::to_string(classes)).size(), size_t{kClasses});
}

TEST_F(Repair, SystemDefinitionsAreKnownWithoutTheirPages) {
    for (PageNo number = 2; number <= 5; ++number)
        std::ranges::fill(page(number), uint8_t{0xEE});
    repair();
    EXPECT_EQ(rowsOf("Ogrenci").size(), size_t{kStudents});
    EXPECT_EQ(report.notes.size(), 4u);
}

TEST_F(Repair, RowsWithoutTheirDefinitionAreCounted) {
    std::ranges::fill(page(definitionOf("Sinif")), uint8_t{0});
    repair();
    EXPECT_FALSE(result->hasTable("Sinif"));
    EXPECT_EQ(told("Sinif").rowsLost, uint64_t{kClasses});
}

TEST_F(Repair, DamagedIndexPartOfADefinitionCostsTheIndexesAlone) {
    put32(page(definitionOf("Ogrenci")), kJet4.tdefLogicalIndexes, 77777);
    repair();
    EXPECT_EQ(rowsOf("Ogrenci").size(), size_t{kStudents});
    EXPECT_TRUE(result->tableDef("Ogrenci").indexes.empty());
    EXPECT_EQ(told("Ogrenci").notes.size(), 1u);
}

TEST_F(Repair, ExchangedDefinitionsAreToldApartByTheirMaps) {
    const auto students = page(definitionOf("Ogrenci")), classes = page(definitionOf("Sinif"));
    std::swap_ranges(students.begin(), students.end(), classes.begin());
    repair();
    EXPECT_EQ(rowsOf("Ogrenci").size(), size_t{kStudents});
    EXPECT_EQ(rowsOf("Sinif").size(), size_t{kClasses});
}

TEST_F(Repair, SmallHarmToAPagesHeadIsHealed) {
    const size_t data = pagesOf(definitionOf("Sinif")).front();
    struct Case {
        const char* name;
        size_t at;
        uint8_t bits;
    };
    for (const Case& c :
         {Case{"type", 0, 3}, Case{"second byte", 1, 0x40}, Case{"row count", kJet4.dataRowCount, 8},
          Case{"row count past the page", kJet4.dataRowCount + 1, 0x70},
          Case{"owner", kJet4.dataOwner + 1, 0x5A}}) {
        SCOPED_TRACE(c.name);
        page(data)[c.at] ^= c.bits;
        repair();
        EXPECT_EQ(rowsOf("Sinif").size(), size_t{kClasses});
        EXPECT_EQ(told("Sinif").pagesDamaged, 1u);
        page(data)[c.at] ^= c.bits;
    }
}

// A page that left the table keeps its mark until it is used again.
TEST_F(Repair, StalePagesAreUsedOnlyWhenTheMapCannotBeBelieved) {
    const PageNo classes = definitionOf("Sinif");
    const size_t data = pagesOf(classes).front();
    const std::vector<uint8_t> copy(page(data).begin(), page(data).end());
    bytes.insert(bytes.end(), copy.begin(), copy.end()); // in nobody's map
    map_bits::reset(row(kGlobalMapPage, 0).subspan(UsageMapForm::kInlineBits), pageCount() - 1); // nor free
    repair();
    EXPECT_EQ(rowsOf("Sinif").size(), size_t{kClasses});

    const auto map = RowId::fromPacked(get32(page(classes), kJet4.tdefOwnedMap));
    row(map.page, map.row)[0] = 0x77; // a form that no map has
    repair();
    EXPECT_EQ(rowsOf("Sinif").size(), size_t{2 * kClasses});
    EXPECT_FALSE(result->tableDef("Sinif").indexes.front().unique) << "every key is there twice";
    EXPECT_EQ(told("Sinif").notes.size(), 1u);
}

TEST_F(Repair, FreePagesAreLeftAloneUnlessTheirMapContradictsTheTables) {
    const PageNo classes = definitionOf("Sinif");
    const size_t data = pagesOf(classes).front();
    const std::vector<uint8_t> copy(page(data).begin(), page(data).end());
    bytes.insert(bytes.end(), copy.begin(), copy.end()); // free, as all pages past the old end
    const auto map = RowId::fromPacked(get32(page(classes), kJet4.tdefOwnedMap));
    row(map.page, map.row)[0] = 0x77;
    repair();
    EXPECT_EQ(rowsOf("Sinif").size(), size_t{kClasses});

    row(map.page, map.row)[0] = UsageMapForm::kInline;
    const auto free = row(kGlobalMapPage, 0).subspan(UsageMapForm::kInlineBits);
    map_bits::set(free, data);
    map_bits::set(free, definitionOf("Ogrenci"));
    repair();
    EXPECT_EQ(rowsOf("Sinif").size(), size_t{kClasses});
    EXPECT_EQ(rowsOf("Ogrenci").size(), size_t{kStudents});
    EXPECT_EQ(report.notes.size(), 1u);
}

TEST_F(Repair, DeletedRowsStayDeleted) {
    const size_t data = pagesOf(definitionOf("Sinif")).front();
    const size_t slot = kJet4.dataRowTable + 2 * 3;
    put16(page(data), slot, get16(page(data), slot) | 0xC000); // with its bytes still there
    repair();
    EXPECT_EQ(rowsOf("Sinif").size(), size_t{kClasses - 1});
}

TEST_F(Repair, MovedRowsComeOnceWithTheirPointerOrWithout) {
    const auto grown = std::make_shared<MemoryIo>();
    grown->put("x.mdb", bytes);
    {
        const auto database = open(grown, "x.mdb", false);
        Table students = database->openTable("Ogrenci");
        const bool onlyName[] = {false, true, false, false};
        for (students.moveFirst(); !students.eof(); students.moveNext())
            students.update(students.bookmark(), std::vector<Value>{{}, std::string(190, 'x'), {}, {}},
                            onlyName);
    }
    bytes = grown->contents("x.mdb");
    repair();
    EXPECT_EQ(rowsOf("Ogrenci").size(), size_t{kStudents});

    const std::vector<size_t> pages = pagesOf(definitionOf("Ogrenci"));
    std::ranges::fill(page(pages.front()), uint8_t{0});
    repair();
    size_t hidden = 0, shown = 0;
    for (size_t i = 1; i < pages.size(); ++i)
        for (uint16_t slot = 0; slot < data_page::slotCount(kJet4, page(pages[i])); ++slot) {
            const Slot at = data_page::slot(kJet4, page(pages[i]), slot);
            hidden += at.hidden;
            shown += !at.deleted && !at.hidden && !at.pointer;
        }
    EXPECT_GT(hidden, 0u);
    EXPECT_EQ(rowsOf("Ogrenci").size(), shown + hidden)
        << "bodies whose pointers are gone are rows all the same";
}

TEST_F(Repair, LostLongValueCostsTheFieldAlone) {
    const size_t values = pagesOf(kOwnerLongValues).back();
    std::ranges::fill(page(values), uint8_t{0});
    repair();
    const auto rows = rowsOf("Ogrenci");
    ASSERT_EQ(rows.size(), size_t{kStudents});
    const auto lost = std::ranges::count_if(rows, [](const auto& row) { return row[3].isNull(); });
    EXPECT_GT(lost, 0);
    EXPECT_EQ(told("Ogrenci").fieldsLost, static_cast<uint64_t>(lost));
    EXPECT_EQ(told("Ogrenci").rowsLost, 0u);
    ASSERT_EQ(report.losses.size(), static_cast<size_t>(lost));
    EXPECT_EQ(report.losses.front().field, "Not");
}

TEST_F(Repair, ValuesWithoutSenseAreKept) {
    const size_t data = pagesOf(definitionOf("Ogrenci")).front();
    storeLe(row(data, 0).data() + 2 + 4, 1e300); // behind the column count and No
    repair();
    EXPECT_EQ(rowsOf("Ogrenci").front()[2], Value(Date{1e300}));
}

TEST_F(Repair, RowThatCannotBeCutIntoFieldsIsListed) {
    const size_t data = pagesOf(definitionOf("Sinif")).front();
    put16(row(data, 4), 0, 9999);
    repair();
    EXPECT_EQ(rowsOf("Sinif").size(), size_t{kClasses - 1});
    EXPECT_EQ(told("Sinif").rowsLost, 1u);
    ASSERT_EQ(report.losses.size(), 1u);
    EXPECT_EQ(report.losses.front().page, data);
    EXPECT_EQ(report.losses.front().row, 4u);
}

TEST_F(Repair, NullInAPrimaryKeyMakesItPlain) {
    const size_t data = pagesOf(definitionOf("Sinif")).front();
    const auto bytesOfRow = row(data, 2);
    bytesOfRow[bytesOfRow.size() - 1] &= 0xFE; // Kod is null
    repair();
    EXPECT_EQ(rowsOf("Sinif").size(), size_t{kClasses});
    EXPECT_EQ(result->tableDef("Sinif").primaryKey(), nullptr);
    EXPECT_EQ(told("Sinif").notes.size(), 1u);
}

// The text index falls with the second of them, after the first one has cost it nothing but its uniqueness.
TEST_F(Repair, IndexWithNullAndWithAnUnknownCharacterIsLeftOut) {
    const auto io = std::make_shared<MemoryIo>();
    CreateOptions options;
    options.io = io;
    {
        const auto database = Database::create("x.mdb", options);
        database->createTable("T", {field("Kod", Type::Text, 20)}, {key("Anahtar")});
        Table table = database->openTable("T");
        for (const char* code : {"aaaş", "bbbş", "cccş"})
            table.insert(std::vector<Value>{code});
    }
    bytes = io->contents("x.mdb");
    const size_t data = pagesOf(definitionOf("T")).front();
    const auto first = row(data, 0), last = row(data, 2);
    first[first.size() - 1] &= 0xFE;
    const auto cedilla = std::ranges::search(last, std::array<uint8_t, 2>{0x5F, 0x01}); // ş
    ASSERT_FALSE(cedilla.empty());
    cedilla[1] = 0x7E; // U+7E5F
    repair();
    EXPECT_EQ(rowsOf("T").size(), 3u);
    EXPECT_TRUE(result->tableDef("T").indexes.empty());
    EXPECT_EQ(told("T").notes.size(), 1u);
}

TEST_F(Repair, FlagsCannotHideATable) {
    const size_t catalog = pagesOf(kCatalogPage).front();
    const auto id = static_cast<int32_t>(definitionOf("Sinif"));
    for (uint16_t slot = 0; slot < data_page::slotCount(kJet4, page(catalog)); ++slot)
        if (const auto object = row(catalog, slot); loadLe<int32_t>(object.data() + 2) == id)
            object[2 + 26 + 3] |= 0x80; // highest byte of Flags
    repair();
    EXPECT_EQ(result->tableNames(), (std::vector<std::string>{"Ogrenci", "Sinif"}));
}

TEST_F(Repair, KeyInTheHeaderThatThePagesDenyIsNotTakenOver) {
    DatabaseHeader header = readHeader(page(0));
    header.encodingKey = 0xBAD;
    initialiseHeader(page(0), header);
    repair();
    EXPECT_EQ(result->header().encodingKey, 0u);
    EXPECT_EQ(rowsOf("Ogrenci").size(), size_t{kStudents});
}

// Map of free pages, the table's own map and the catalog all lie: the table's count decides.
TEST_F(Repair, PagesCalledFreeAreUsedWhereOnlyTheyCanHoldTheRows) {
    const PageNo classes = definitionOf("Sinif");
    const size_t data = pagesOf(classes).front();
    const auto map = RowId::fromPacked(get32(page(classes), kJet4.tdefOwnedMap));
    row(map.page, map.row)[0] = 0x77;
    map_bits::set(row(kGlobalMapPage, 0).subspan(UsageMapForm::kInlineBits), data);
    repair();
    EXPECT_EQ(rowsOf("Sinif").size(), size_t{kClasses});
    for (const size_t number : pagesOf(kCatalogPage))
        std::ranges::fill(page(number), uint8_t{0});
    repair();
    EXPECT_EQ(rowsOf("Kurtarılan_" + std::to_string(classes)).size(), size_t{kClasses});
}

// One value behind every row must not make the new file grow without bounds.
TEST_F(Repair, LongValueSharedByAllRowsIsBounded) {
    const auto io = std::make_shared<MemoryIo>();
    CreateOptions options;
    options.io = io;
    {
        const auto database = Database::create("x.mdb", options);
        database->createTable("T", {field("M", Type::Memo)});
        WriteBatch batch(*database);
        Table table = database->openTable("T");
        table.insert(std::vector<Value>{std::string(400'000, 'x') + "ş"}); // about 200 parts
        for (int i = 0; i < 20'000; ++i)
            table.insert(std::vector<Value>{std::string(100, 'y') + "ş"});
        batch.commit();
    }
    bytes = io->contents("x.mdb");
    const PageNo table = definitionOf("T");
    const auto first = row(pagesOf(table).front(), 0);
    const std::vector<uint8_t> shared(first.begin(), first.end());
    for (const size_t number : pagesOf(table))
        for (uint16_t slot = 0; slot < data_page::slotCount(kJet4, page(number)); ++slot)
            std::ranges::copy(shared, row(number, slot).begin());
    repair();
    EXPECT_LT(this->io->contents("yeni.mdb").size(), 6 * bytes.size());
    EXPECT_EQ(rowsOf("T").size(), 20'001u);
    EXPECT_GT(told("T").fieldsLost, 10'000u);
}

TEST_F(Repair, StoppedByTheCallerLeavesNothing) {
    RepairOptions options;
    size_t asked = 0;
    options.progress = [&](size_t, size_t) { return ++asked < 40; };
    EXPECT_TRUE(repair(options).stopped);
    EXPECT_EQ(asked, 40u);
}

TEST_F(Repair, RefusesWhatItCannotDo) {
    const auto taken = std::make_shared<MemoryIo>();
    taken->put("bozuk.mdb", bytes);
    taken->put("yeni.mdb", {1, 2, 3});
    RepairOptions options;
    options.io = taken;
    EXPECT_EQ(errorOf([&] { repairDatabase("bozuk.mdb", "yeni.mdb", options); }),
              static_cast<int>(Err::DatabaseExists));
    EXPECT_EQ(errorOf([&] { repairDatabase("yok.mdb", "baska.mdb", options); }),
              static_cast<int>(Err::FileNotFound));
    EXPECT_EQ(taken->contents("yeni.mdb").size(), 3u);
    for (const std::vector<uint8_t>& hopeless :
         {std::vector<uint8_t>{}, std::vector<uint8_t>(100), std::vector<uint8_t>(100 * kPage),
          std::vector<uint8_t>(100 * kPage + 17, 0x41)}) {
        bytes = hopeless;
        EXPECT_EQ(errorOf([&] { repair(); }), static_cast<int>(Err::NotADatabase));
        EXPECT_EQ(io->names().size(), 1u);
    }
}

TEST_F(Repair, FileThatOthersHaveOpenIsReadBesideThem) {
    const auto shared = std::make_shared<MemoryIo>();
    shared->put("bozuk.mdb", bytes);
    RepairOptions options;
    options.io = shared;
    {
        const auto other = open(shared, "bozuk.mdb", false);
        WriteBatch unfinished(*other);
        other->openTable("Sinif").insert(std::vector<Value>{1000, "Yazılmakta"});
        report = repairDatabase("bozuk.mdb", "yeni.mdb", options);
        EXPECT_EQ(shared->contents("bozuk.mdb"), bytes);
        unfinished.commit();
        other->openTable("Sinif").insert(std::vector<Value>{1001, "Sonra"}); // no lock of repair's is left
    }
    EXPECT_EQ(shared->names().size(), 2u);
    result = open(shared, "yeni.mdb");
    EXPECT_EQ(rowsOf("Sinif").size(), size_t{kClasses});
}

// A process that died in a commit left its journal: the state before that commit is what is repaired.
TEST_F(Repair, HalfDoneWriteIsRolledBackInACopyOfOurOwn) {
    const auto live = std::make_shared<MemoryIo>();
    live->put("bozuk.mdb", bytes);
    std::shared_ptr<MemoryIo> crashed;
    {
        const auto database = open(live, "bozuk.mdb", false);
        WriteBatch batch(*database);
        Table classes = database->openTable("Sinif");
        for (int i = 100; i < 400; ++i)
            classes.insert(std::vector<Value>{i, "Yarım kalan"});
        live->setHook([&](const MemoryIo::Step& step) {
            if (step.op == MemoryIo::Op::Sync && step.path == "bozuk.mdb" && !crashed)
                crashed = live->afterCrash(MemoryIo::Survives::Everything);
        });
        batch.commit();
        live->setHook({});
    }
    ASSERT_TRUE(crashed && crashed->exists("bozuk.mdb-journal"));
    const auto before = crashed->names();
    const auto half = crashed->contents("bozuk.mdb");
    ASSERT_NE(half, bytes);
    RepairOptions options;
    options.io = crashed;
    report = repairDatabase("bozuk.mdb", "yeni.mdb", options);
    EXPECT_EQ(crashed->contents("bozuk.mdb"), half);
    EXPECT_EQ(crashed->names().size(), before.size() + 1);
    result = open(crashed, "yeni.mdb");
    EXPECT_EQ(rowsOf("Sinif").size(), size_t{kClasses});
    EXPECT_EQ(report.notes.size(), 1u);
}

} // namespace
} // namespace repair_test
