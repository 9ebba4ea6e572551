// Damage done to a sound file of ours, one kind at a time: the check names it, with the table. And whatever
// the bytes are, the check ends and throws nothing.
#include "jet/check/check.h"
#include "jet/database.h"
#include "jet/format/bytes.h"
#include "jet/format/data_page.h"
#include "jet/format/long_value.h"
#include "jet/index/btree.h"
#include "jet/index/key.h"
#include "jet/pages/io_memory.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace {

using namespace jet;

constexpr int kRows = 400;

FieldDef field(const char* name, Type type, uint16_t size = 0) {
    FieldDef f;
    f.name = name;
    f.type = type;
    f.size = size;
    return f;
}

std::string memo(int id) {
    return std::string(static_cast<size_t>(id % 7 == 0 ? 9000 : 200), static_cast<char>('a' + id % 26));
}

// Two tables: Ogrenci with a key, a text index and a memo, some rows of it moved; Sinif, small.
std::shared_ptr<MemoryIo> makeFile() {
    auto io = std::make_shared<MemoryIo>();
    CreateOptions options;
    options.io = io;
    const auto database = Database::create("okul.mdb", options);
    IndexDef key, name;
    key.name = "Anahtar";
    key.fields = {{0, false}};
    key.primary = key.unique = key.required = true;
    name.name = "AdaGore";
    name.fields = {{1, false}};
    std::vector<FieldDef> fields = {field("No", Type::Long), field("Adi", Type::Text, 200),
                                    field("Not", Type::Memo)};
    fields[1].defaultValue = "\"?\"";
    database->createTable("Ogrenci", fields, {key, name});
    database->createTable("Sinif", {field("Kod", Type::Text, 10)});
    Table students = database->openTable("Ogrenci");
    std::vector<RowId> rows;
    for (int i = 0; i < kRows; ++i)
        rows.push_back(students.insert(std::vector<Value>{i, "Öğrenci " + std::to_string(i), memo(i)}));
    const bool onlyName[] = {false, true, false};
    for (int i = 0; i < kRows; i += 9)
        students.update(
            rows[static_cast<size_t>(i)],
            std::vector<Value>{Value(), "Uzun ad " + std::string(150, 'x') + std::to_string(i), Value()},
            onlyName);
    Table classes = database->openTable("Sinif");
    for (int i = 0; i < 20; ++i)
        classes.insert(std::vector<Value>{"S" + std::to_string(i)});
    return io;
}

// A fresh copy of the same file for each test.
class CheckDamage : public testing::Test {
  protected:
    CheckDamage() {
        static const std::vector<uint8_t> sound = makeFile()->contents("okul.mdb");
        bytes_ = sound;
        open();
    }

    void open() {
        database.reset();
        io_ = std::make_shared<MemoryIo>();
        io_->put("okul.mdb", bytes_);
        OpenOptions options;
        options.io = io_;
        database = Database::open("okul.mdb", options);
        def = database->tableDef("Ogrenci");
    }

    PageFile& file() { return database->pages(); }
    std::vector<PageNo> pagesOf(const TableDef& table) {
        std::vector<PageNo> pages;
        UsageMap(file(), kJet4, RowId::fromPacked(table.ownedMapPointer)).forEach([&](PageNo p) {
            pages.push_back(p);
        });
        return pages;
    }
    // First slot for which `wanted` holds.
    RowId find(const std::function<bool(const Slot&)>& wanted) {
        for (const PageNo number : pagesOf(def)) {
            const PageRef page = file().read(number);
            for (uint16_t i = 0; i < data_page::slotCount(kJet4, page.bytes()); ++i)
                if (wanted(data_page::slot(kJet4, page.bytes(), i))) return {number, static_cast<uint8_t>(i)};
        }
        ADD_FAILURE() << "the file has no such row";
        return {};
    }
    RowId plainRow() {
        return find([](const Slot& slot) { return !slot.deleted && !slot.hidden && !slot.pointer; });
    }
    BTree tree(const char* name) {
        const IndexDef* index = def.findIndex(name);
        return {database->allocator(), index->rootPage, def.page, RowId::fromPacked(index->usageMapPointer)};
    }
    // Key and row of the n-th entry.
    std::pair<Bytes, RowId> entry(const BTree& of, int n) {
        TreePosition at;
        EXPECT_TRUE(of.first(at));
        for (int i = 0; i < n; ++i)
            EXPECT_TRUE(of.next(at));
        std::pair<Bytes, RowId> found;
        of.read(at, found.first, found.second);
        return found;
    }
    // Stored header of the memo of a row whose memo has the wanted kind.
    std::pair<RowId, size_t> memoHeader(uint8_t kind) { // row and offset of the header on its page
        RowView view;
        std::pair<RowId, size_t> found;
        for (const PageNo number : pagesOf(def)) {
            const PageRef page = file().read(number);
            for (uint16_t i = 0; i < data_page::slotCount(kJet4, page.bytes()); ++i) {
                const Slot slot = data_page::slot(kJet4, page.bytes(), i);
                if (slot.deleted || slot.hidden || slot.pointer) continue;
                view.attach(kJet4, def, page.bytes().subspan(slot.start, slot.length));
                const auto raw = view.raw(2);
                if (raw.size() >= 12 && raw[3] == kind)
                    return {{number, static_cast<uint8_t>(i)}, static_cast<size_t>(raw.data() - page.data())};
            }
        }
        ADD_FAILURE() << "no such memo";
        return found;
    }
    void poke16(PageNo page, size_t at, uint16_t value) { put16(file().edit(page).bytes(), at, value); }
    void poke32(PageNo page, size_t at, uint32_t value) { put32(file().edit(page).bytes(), at, value); }

    // Does the damage and expects a fault with the text, in the table.
    void expectFault(const std::string& table, const std::string& text, const std::function<void()>& damage) {
        open();
        {
            WriteScope write(file());
            damage();
            write.commit();
        }
        const CheckReport report = checkDatabase(*database);
        std::string all;
        for (const Fault& fault : report.faults) {
            all += fault.table + " [" + std::to_string(fault.page) + "] " + fault.text + "\n";
            if (fault.table == table && fault.text.find(text) != std::string::npos) return;
        }
        ADD_FAILURE() << "wanted: " << text << "\nfound:\n" << all;
    }

    std::vector<uint8_t> bytes_;
    std::shared_ptr<MemoryIo> io_;
    std::unique_ptr<Database> database;
    TableDef def;
};

TEST_F(CheckDamage, SoundFileHasNoFaults) {
    const CheckReport report = checkDatabase(*database);
    for (const Fault& fault : report.faults)
        ADD_FAILURE() << fault.table << " [" << fault.page << "] " << fault.text;
    EXPECT_GT(report.rows, static_cast<size_t>(kRows));
    EXPECT_GT(report.longValues, static_cast<size_t>(kRows) - 1);
    ReadScope read(file());
    EXPECT_TRUE(find([](const Slot& slot) { return slot.pointer; })) << "moved rows are part of the test";
}

TEST_F(CheckDamage, CountsAndDefinitions) {
    expectFault("Ogrenci", "Tanımda 401 kayıt yazıyor, tabloda 400 kayıt var.",
                [&] { poke32(def.page, kJet4.tdefRowCount, kRows + 1); });
    expectFault("Ogrenci", "Tablo tanımı bozuk", [&] { poke16(def.page, kJet4.tdefColumns, 300); });
    expectFault("Ogrenci", "tanım sayfası artık yok", [&] { file().edit(def.page).data()[0] = 9; });
    expectFault("Ogrenci", "LvProp", [&] {
        for (PageNo page = 1; page < file().pageCount(); ++page) {
            const auto edit = file().edit(page);
            constexpr std::string_view mark("MR2\0", 4);
            for (auto at = edit.bytes().begin(); at != edit.bytes().end();) {
                at = std::search(at, edit.bytes().end(), mark.begin(), mark.end());
                if (at != edit.bytes().end()) *at = 'X';
            }
        }
    });
}

TEST_F(CheckDamage, PagesAndTheirOwners) {
    const auto map = [&](uint64_t pointer) { return UsageMap(file(), kJet4, RowId::fromPacked(pointer)); };
    expectFault("Sinif", "Sayfanın birden çok sahibi var", [&] {
        map(database->tableDef("Sinif").ownedMapPointer).add(pagesOf(def).front(), database->allocator());
    });
    expectFault("", "hiçbir tablonun değil", [&] { database->allocator().allocate(); });
    expectFault("", "birden çok sahibi var: 'Ogrenci' tablosunun verileri ve boş sayfalar", [&] {
        UsageMap(file(), kJet4, {kGlobalMapPage, 0}).add(pagesOf(def).back(), database->allocator());
    });
    expectFault("Ogrenci", "boş yeri olan sayfalar haritasında",
                [&] { map(def.freeMapPointer).add(def.page, database->allocator()); });
    expectFault("Ogrenci", "Veri sayfası kendini başka bir tablonun sayıyor (sayfa 2)",
                [&] { poke32(pagesOf(def).front(), kJet4.dataOwner, 2); });
    expectFault("Ogrenci", "kayıt var.", [&] { map(def.ownedMapPointer).remove(pagesOf(def).front()); });
    expectFault("Sinif", "Bir sayfa haritasının birden çok sahibi var", [&] {
        poke32(database->tableDef("Sinif").page, kJet4.tdefOwnedMap,
               static_cast<uint32_t>(def.ownedMapPointer));
    });
    expectFault("Ogrenci", "Sayfa haritasının biçimi tanınmıyor", [&] {
        const RowId at = RowId::fromPacked(def.ownedMapPointer);
        const PageEdit page = file().edit(at.page);
        page.data()[data_page::slot(kJet4, page.bytes(), at.row).start] = 7;
    });
}

TEST_F(CheckDamage, RowsAndSlots) {
    expectFault("Ogrenci", "satır", [&] { poke16(pagesOf(def).front(), kJet4.dataRowTable + 4, 0x1FFF); });
    expectFault("Ogrenci", "Boş yer alanı 9 bayt diyor",
                [&] { poke16(pagesOf(def).front(), kJet4.dataFree, 9); });
    expectFault("Ogrenci", "Satırın değişken boylu alan sayısı yanlış", [&] {
        const RowId row = plainRow();
        const PageEdit page = file().edit(row.page);
        put16(page.bytes(), data_page::slot(kJet4, page.bytes(), row.row).start, 200);
    });
    const auto isMoved = [](const Slot& slot) { return slot.pointer; };
    expectFault("Ogrenci", "Gizli satırı gösteren hiçbir kayıt yok", [&] {
        const RowId row = find(isMoved);
        data_page::erase(kJet4, file().edit(row.page).bytes(), row.row);
    });
    expectFault("Ogrenci", "satır taşınmış, ama tablonun olmayan bir sayfayı gösteriyor", [&] {
        const RowId row = find(isMoved);
        data_page::makePointer(kJet4, file().edit(row.page).bytes(), row.row, {def.page, 0});
    });
    expectFault("Ogrenci", "satır taşınmış, ama kendi başına duran bir satırı gösteriyor", [&] {
        const RowId row = find(isMoved);
        data_page::makePointer(kJet4, file().edit(row.page).bytes(), row.row, plainRow());
    });
}

TEST_F(CheckDamage, LongValues) {
    expectFault("Ogrenci", "Uzun alanın zinciri erken bitiyor", [&] {
        const auto [row, at] = memoHeader(0x00);
        const RowId link = RowId::fromPacked(get32(file().read(row.page).bytes(), at + 4));
        const PageEdit page = file().edit(link.page);
        put32(page.bytes(), data_page::slot(kJet4, page.bytes(), link.row).start, 0);
    });
    expectFault("Ogrenci", "Uzun alanın parçaları yazan uzunluğu tutmuyor", [&] {
        const auto [row, at] = memoHeader(0x40);
        file().edit(row.page).data()[at] += 1;
    });
    expectFault("Ogrenci", "parçasını gösteren hiçbir kayıt yok", [&] {
        const auto [row, at] = memoHeader(0x40);
        poke32(row.page, at, 0x80000000); // an empty inline value
    });
    expectFault("Ogrenci", "parçasını birden çok kayıt gösteriyor", [&] {
        const auto [row, at] = memoHeader(0x40);
        const Bytes header(file().read(row.page).data() + at, file().read(row.page).data() + at + 12);
        data_page::erase(kJet4, file().edit(row.page).bytes(), row.row); // so that another one is the first
        const auto [other, otherAt] = memoHeader(0x40);
        const PageEdit page = file().edit(other.page);
        std::copy(header.begin(), header.end(), page.bytes().begin() + static_cast<ptrdiff_t>(otherAt));
        const auto [third, thirdAt] = memoHeader(0x00);
        const PageEdit last = file().edit(third.page);
        std::copy(header.begin(), header.end(), last.bytes().begin() + static_cast<ptrdiff_t>(thirdAt));
    });
}

TEST_F(CheckDamage, Indexes) {
    expectFault("Ogrenci", "'Anahtar' dizini: kayıt dizinde yok", [&] {
        BTree keys = tree("Anahtar");
        const auto [key, row] = entry(keys, 30);
        keys.erase(key, row);
    });
    expectFault("Ogrenci", "'AdaGore' dizini: kayıt dizinde yanlış değerin altında", [&] {
        BTree names = tree("AdaGore");
        const auto [key, row] = entry(names, 30);
        names.erase(key, row);
        Bytes other = key;
        other[2] ^= 3;
        names.insert(other, row);
    });
    expectFault("Ogrenci", "'AdaGore' dizini: dizin, tabloda olmayan bir kaydı gösteriyor", [&] {
        BTree names = tree("AdaGore");
        names.insert(entry(names, 3).first, {pagesOf(def).front(), 250});
    });
    expectFault("Ogrenci", "'Anahtar' dizini: kayıt iki kez yazılı", [&] {
        BTree keys = tree("Anahtar");
        Bytes key = entry(keys, 5).first;
        key.back() ^= 0x80;
        keys.insert(key, entry(keys, 5).second);
    });
    expectFault("Ogrenci", "yinelenmemesi gereken bir değer iki kez var", [&] {
        BTree keys = tree("Anahtar");
        const auto [key, row] = entry(keys, 30);
        keys.erase(key, row);
        keys.insert(entry(keys, 40).first, row);
    });
    expectFault("Ogrenci", "'AdaGore' dizini: ", [&] { // the order of a leaf's entries
        const BTree names = tree("AdaGore");
        TreePosition at;
        ASSERT_TRUE(names.first(at));
        const PageEdit leaf = file().edit(at.leaf);
        leaf.data()[kJet4.indexEntries + get16(leaf.bytes(), kJet4.indexPrefix)] = 0xFE;
    });
}

TEST_F(CheckDamage, FaultsAreCountedPastTheLimit) {
    WriteScope write(file());
    for (const PageNo page : pagesOf(def))
        poke16(page, kJet4.dataFree, 1);
    CheckOptions options;
    options.maxFaults = 2;
    const CheckReport report = checkDatabase(*database, options);
    EXPECT_EQ(report.faults.size(), 2u);
    EXPECT_GE(report.faultCount, pagesOf(def).size());
    write.commit();
}

TEST_F(CheckDamage, AnyBytesEndInAReport) {
    std::mt19937 random(20);
    const std::vector<uint8_t> sound = bytes_;
    size_t opened = 0, found = 0;
    for (int round = 0; round < 250; ++round) {
        bytes_ = sound;
        for (int i = 0; i < 1 + round % 8; ++i) {
            const size_t page = random() % (bytes_.size() / 4096);
            // Mostly where structure lies: at the head of a page.
            const size_t at = page * 4096 + random() % (random() % 3 ? 64 : 4096);
            bytes_[at] = static_cast<uint8_t>(random() % 3 ? random() : 0xFF * (random() % 2));
        }
        io_ = std::make_shared<MemoryIo>();
        io_->put("okul.mdb", bytes_);
        OpenOptions options;
        options.io = io_;
        options.ignorePassword = true;
        try {
            database = Database::open("okul.mdb", options);
        } catch (const Error&) {
            continue; // header, catalog: refused with an error
        }
        ++opened;
        EXPECT_NO_THROW(found += checkDatabase(*database).faultCount > 0);
    }
    EXPECT_GT(opened, 100u);
    EXPECT_GT(found, opened / 2);
}

} // namespace
