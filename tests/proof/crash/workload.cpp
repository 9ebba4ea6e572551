#include "workload.h"

#include "faults.h"
#include "jet/copy/compact.h"

#include <random>

namespace proof {

using jet::Value;

void Workplace::open() {
    jet::OpenOptions options;
    options.io = io_;
    options.ignorePassword = true;
    if (cachePages_ != 0) options.pages.cacheBytes = cachePages_ * 4096;
    database_ = jet::Database::open(kDatabase, options);
    session_ = std::make_unique<jet::SqlSession>(*database_);
}

void Workplace::create(const std::string& password) {
    jet::CreateOptions options;
    options.io = io_;
    options.password = password;
    database_ = jet::Database::create(kDatabase, options);
    session_ = std::make_unique<jet::SqlSession>(*database_);
}

void Workplace::close() {
    session_.reset();
    database_.reset();
}

void Workplace::finishedOne() {
    if (++finished_ == stopAfter_) throw StopHere{};
}

namespace {

constexpr const char* kInsertPupil =
    "INSERT INTO Ogrenci (Ad, Soyad, Tc, Bolum, Anahtar, Adres, Aciklama, Ucret, Aktif, Kayit) "
    "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?)";

// The same rows at every call with the same number.
std::string words(std::mt19937& dice, size_t length) {
    static constexpr const char* kLetters[] = {"a", "b", "c", "ç", "e", "g", "ğ", "h", "ı", "i", "k",
                                               "l", "m", "n", "o", "ö", "r", "s", "ş", "u", "ü", "z"};
    std::string text;
    for (size_t i = 0; i < length; ++i)
        text += kLetters[dice() % std::size(kLetters)];
    return text;
}

std::string citizenNumber(int row) { return std::to_string(10'000'000'000LL + row * 7919LL); }

std::vector<Value> pupil(int row) {
    std::mt19937 dice(static_cast<uint32_t>(row));
    return {words(dice, 3 + dice() % 10),
            words(dice, 4 + dice() % 12),
            citizenNumber(row),
            row % 17,
            words(dice, 200),
            words(dice, dice() % 30),
            row % 5 == 0 ? Value(words(dice, dice() % 400)) : Value(),
            jet::Currency{row * 12345LL},
            row % 3 == 0,
            jet::Date{39000.0 + row}};
}

void insertPupil(Workplace& place, int row) { place.execute(kInsertPupil, pupil(row)); }

std::string longText(size_t length, uint32_t seed) {
    std::mt19937 dice(seed);
    return words(dice, length);
}

jet::Bytes picture(size_t length) {
    jet::Bytes bytes(length);
    std::mt19937 dice(static_cast<uint32_t>(length));
    for (uint8_t& byte : bytes)
        byte = static_cast<uint8_t>(dice());
    return bytes;
}

void insertDocument(Workplace& place, const std::string& name, size_t memo, size_t bytes) {
    const std::vector<Value> row{name, longText(memo, 7), bytes == 0 ? Value() : Value(picture(bytes))};
    place.execute("INSERT INTO Belge (Ad, Govde, Resim) VALUES (?, ?, ?)", row);
}

void makeTables(Workplace& place) {
    place.execute("CREATE TABLE Ogrenci (No COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, Ad TEXT(60), Soyad "
                  "TEXT(60), Tc TEXT(11) CONSTRAINT Tc UNIQUE, Bolum LONG, Anahtar TEXT(200), Adres "
                  "TEXT(255), Aciklama MEMO, Kayit DATETIME, Ucret CURRENCY, Aktif YESNO)");
    place.execute("CREATE INDEX AdSoyad ON Ogrenci (Soyad, Ad DESC)");
    place.execute("CREATE INDEX Anahtar ON Ogrenci (Anahtar)");
    place.execute("CREATE TABLE Notlar (Ogrenci LONG, Ders TEXT(20), Puan DOUBLE, CONSTRAINT PrimaryKey "
                  "PRIMARY KEY (Ogrenci, Ders))");
    place.execute("CREATE TABLE Belge (Ad TEXT(50) CONSTRAINT PrimaryKey PRIMARY KEY, Govde MEMO, Resim "
                  "OLEOBJECT)");
    place.execute("CREATE TABLE Once (Deger LONG, Metin TEXT(255))");
    place.execute("CREATE TABLE Sinama (Sira COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, Ileti TEXT(40))");
}

void fill(Workplace& place, int rows) {
    jet::WriteBatch batch(place.database());
    for (int row = 0; row < rows; ++row)
        insertPupil(place, row);
    for (int row = 0; row < rows; ++row)
        for (const char* lesson : {"Matematik", "Türkçe", "Iş güvenliği"}) {
            const std::vector<Value> mark{row, lesson, (row * 37 % 1000) / 10.0};
            place.execute("INSERT INTO Notlar VALUES (?, ?, ?)", mark);
        }
    for (int i = 0; i < 60; ++i) {
        const std::vector<Value> values{i, longText(240, static_cast<uint32_t>(i))};
        place.execute("INSERT INTO Once VALUES (?, ?)", values);
    }
    constexpr size_t kMemos[] = {0, 10, 60, 900, 1500, 3000, 8000, 20'000, 70, 1};
    for (size_t i = 0; i < std::size(kMemos); ++i)
        insertDocument(place, "belge " + std::to_string(i), kMemos[i], i % 3 * 2500);
    batch.commit();
}

// Inserts until one row makes the file grow by a leaf, a node and a root at once; returns that row's number,
// and the disk as it was before it.
int findDeepSplit(std::shared_ptr<jet::MemoryIo>& disk, int row) {
    for (;; ++row) {
        auto before = disk->afterCrash(jet::MemoryIo::Survives::Everything);
        Workplace place(disk);
        place.open();
        const jet::PageNo pages = place.database().pages().pageCount();
        insertPupil(place, row);
        if (place.database().pages().pageCount() < pages + 3 && row < 5000) continue;
        disk = before;
        return row;
    }
}

// A row that stands against a unique index: refused, and the batch goes on.
void insertDuplicate(Workplace& place) {
    try {
        insertPupil(place, 3);
    } catch (const jet::Error& error) {
        if (error.number() != jet::Err::DuplicateKey) throw;
    }
}

jet::FieldDef field(const std::string& name, jet::Type type, uint16_t size = 0) {
    jet::FieldDef def;
    def.name = name;
    def.type = type;
    def.size = size;
    return def;
}

std::vector<Statement> rowStatements(int first) {
    return {
        {"insert that splits leaf, node and root", [=](Workplace& w) { insertPupil(w, first); }},
        {"insert with memo and picture in chains",
         [](Workplace& w) { insertDocument(w, "yeni belge", 14'000, 9'000); }},
        {"INSERT ... SELECT of many rows",
         [](Workplace& w) {
             w.execute("INSERT INTO Ogrenci (Ad, Soyad, Anahtar, Adres, Ucret) SELECT Soyad, Ad, Adres & "
                       "Anahtar, Ad, Ucret FROM Ogrenci WHERE No <= 60 AND Len(Adres & Anahtar) <= 200 "
                       "OR No < 40 AND Len(Adres) = 0");
         }},
        {"update that moves rows to other pages",
         [](Workplace& w) {
             const std::vector<Value> text{longText(240, 1)};
             w.execute("UPDATE Ogrenci SET Adres = ? WHERE No BETWEEN 20 AND 44", text);
         }},
        {"update that brings moved rows back",
         [](Workplace& w) { w.execute("UPDATE Ogrenci SET Adres = 'x' WHERE No BETWEEN 20 AND 44"); }},
        {"update of a memo: chain to short",
         [](Workplace& w) {
             w.execute("UPDATE Belge SET Govde = 'kısa', Resim = NULL WHERE Ad = 'belge 7'");
         }},
        {"update of memos: short to chain",
         [](Workplace& w) {
             const std::vector<Value> text{longText(11'000, 2)};
             w.execute("UPDATE Belge SET Govde = ? WHERE Ad IN ('belge 1', 'belge 3', 'belge 7')", text);
         }},
        {"update of keys",
         [](Workplace& w) {
             w.execute("UPDATE Ogrenci SET Soyad = Ad & Soyad, Tc = Right('00' & Tc, 11) WHERE Bolum = 3");
         }},
        {"edit through a record",
         [](Workplace& w) {
             jet::Table table = w.database().openTable("Ogrenci");
             table.setIndex("PrimaryKey");
             const Value key = 11;
             table.seek(jet::SeekOp::Equal, {&key, 1});
             table.edit();
             table.set("Aciklama", longText(5000, 3));
             table.set("Ad", "Çiğdem");
             table.update();
         }},
        {"delete of some rows", [](Workplace& w) { w.execute("DELETE FROM Ogrenci WHERE Bolum = 5"); }},
        {"delete that empties pages",
         [](Workplace& w) { w.execute("DELETE FROM Notlar WHERE Ogrenci BETWEEN 20 AND 260"); }},
        {"delete of long values",
         [](Workplace& w) { w.execute("DELETE FROM Belge WHERE Len(Govde) > 2000"); }},
    };
}

std::vector<Statement> structureStatements() {
    return {
        {"create table",
         [](Workplace& w) {
             w.execute("CREATE TABLE Gecici (Id COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, Metin TEXT(50), "
                       "Uzun MEMO, Tutar CURRENCY, CONSTRAINT Tek UNIQUE (Metin, Tutar))");
         }},
        {"add field", [](Workplace& w) { w.execute("ALTER TABLE Ogrenci ADD COLUMN Telefon TEXT(20)"); }},
        {"add field with long values and default",
         [](Workplace& w) {
             jet::FieldDef def = field("Dusunce", jet::Type::Memo);
             def.defaultValue = "\"yok\"";
             def.allowZeroLength = false;
             w.database().addField("Belge", def);
         }},
        {"alter field: width only",
         [](Workplace& w) { w.database().alterField("Ogrenci", "Ad", field("", jet::Type::Text, 90)); }},
        {"alter field: rows rewritten",
         [](Workplace& w) { w.execute("ALTER TABLE Ogrenci ALTER COLUMN Bolum TEXT(12)"); }},
        {"alter field: text to memo",
         [](Workplace& w) { w.execute("ALTER TABLE Ogrenci ALTER COLUMN Adres MEMO"); }},
        {"create index",
         [](Workplace& w) { w.execute("CREATE INDEX Bolumler ON Ogrenci (Bolum, Kayit DESC)"); }},
        {"create unique index",
         [](Workplace& w) { w.execute("CREATE UNIQUE INDEX AdTc ON Ogrenci (Ad, Soyad, Tc, No)"); }},
        {"rename field, index, order of fields",
         [](Workplace& w) {
             jet::WriteBatch batch(w.database());
             w.database().renameField("Ogrenci", "Telefon", "CepTelefonu");
             w.finishedOne();
             w.database().renameIndex("Ogrenci", "AdTc", "AdVeTc");
             w.finishedOne();
             w.database().setFieldOrder("Ogrenci", {"Tc", "Ad"});
             w.finishedOne();
             batch.commit();
         }},
        {"drop index", [](Workplace& w) { w.execute("DROP INDEX Anahtar ON Ogrenci"); }},
        {"drop field", [](Workplace& w) { w.execute("ALTER TABLE Belge DROP COLUMN Resim"); }},
        {"rename table", [](Workplace& w) { w.database().renameTable("Gecici", "Kalıcı"); }},
        {"set password", [](Workplace& w) { w.database().changePassword("", "gizli çay"); }},
        {"change password", [](Workplace& w) { w.database().changePassword("gizli çay", "Yeni"); }},
        {"clear password", [](Workplace& w) { w.database().changePassword("Yeni", ""); }},
    };
}

std::vector<Statement> batchStatements(int first, int rows) {
    return {
        {"batch of many rows, more than the cache holds",
         [=](Workplace& w) {
             jet::WriteBatch batch(w.database());
             for (int i = 0; i < rows; ++i) {
                 const std::vector<Value> mark{1000 + i, "Sınav", i / 8.0};
                 w.execute("INSERT INTO Notlar VALUES (?, ?, ?)", mark);
                 w.finishedOne();
                 if (i % 10 == 0) insertPupil(w, first + i), w.finishedOne();
             }
             batch.commit();
         },
         48},
        {"batch with a refused statement inside",
         [=](Workplace& w) {
             jet::WriteBatch batch(w.database());
             for (int i = 0; i < 12; ++i) {
                 insertPupil(w, first + 5000 + i);
                 w.finishedOne();
                 insertDuplicate(w);
             }
             w.execute("DELETE FROM Ogrenci WHERE Bolum = '7'");
             w.finishedOne();
             batch.commit();
         }},
        {"batch left by an error: what was finished stays",
         [=](Workplace& w) {
             try {
                 jet::WriteBatch batch(w.database());
                 for (int i = 0; i < 4; ++i) {
                     insertPupil(w, first + 6000 + i);
                     w.finishedOne();
                 }
                 insertPupil(w, 3);
             } catch (const jet::Error& error) {
                 if (error.number() != jet::Err::DuplicateKey) throw;
             }
         },
         0, Statement::Kind::Changes, true},
        {"batch of rows and structure",
         [](Workplace& w) {
             jet::WriteBatch batch(w.database());
             w.execute("CREATE TABLE Ara (Id LONG CONSTRAINT PrimaryKey PRIMARY KEY, Metin MEMO)");
             w.finishedOne();
             for (int i = 0; i < 20; ++i) {
                 const std::vector<Value> row{i, longText(static_cast<size_t>(i) * 150, 4)};
                 w.execute("INSERT INTO Ara VALUES (?, ?)", row);
                 w.finishedOne();
             }
             w.execute("ALTER TABLE Ara ADD COLUMN Ek LONG");
             w.finishedOne();
             w.execute("UPDATE Ara SET Ek = Id * 2, Metin = NULL WHERE Id > 10");
             w.finishedOne();
             w.execute("DROP TABLE Kalıcı");
             w.finishedOne();
             batch.commit();
         }},
        {"drop table", [](Workplace& w) { w.execute("DROP TABLE Ogrenci"); }},
        {"delete of every row", [](Workplace& w) { w.execute("DELETE FROM Notlar"); }},
    };
}

std::vector<Statement> compactions(size_t memory) {
    const auto small = [memory](const Workplace& w) {
        jet::CopyOptions options;
        options.io = w.io();
        options.memoryBytes = memory;
        return options;
    };
    return {
        {"compact into a new file", [=](Workplace& w) { jet::compactDatabase(kSource, kDatabase, small(w)); },
         0, Statement::Kind::Copies},
        {"compact in place", [=](Workplace& w) { jet::compactInPlace(kDatabase, small(w)); }, 0,
         Statement::Kind::Replaces},
    };
}

void append(std::vector<Statement>& all, std::vector<Statement> more) {
    for (Statement& each : more)
        all.push_back(std::move(each));
}

} // namespace

Workload makeWorkload(const Scale& scale) {
    Workload made;
    made.disk = std::make_shared<jet::MemoryIo>();
    {
        Workplace place(made.disk);
        place.create();
        makeTables(place);
        fill(place, scale.rows);
    }
    const int row = findDeepSplit(made.disk, scale.rows);
    made.statements.push_back(
        {"create database", [](Workplace& w) { w.create("ilk"); }, 0, Statement::Kind::Creates});
    append(made.statements, rowStatements(row));
    append(made.statements, structureStatements());
    append(made.statements, compactions(scale.copyBytes));
    append(made.statements, batchStatements(row + 100, scale.batchRows));
    for (size_t i = 0; i < made.statements.size(); ++i)
        made.statements[i].commitsBefore = i % 3 != 0;
    return made;
}

void insertProbe(Workplace& place) {
    if (!place.database().hasTable("Sinama"))
        place.execute("CREATE TABLE Sinama (Sira COUNTER CONSTRAINT PrimaryKey PRIMARY KEY, Ileti TEXT(40))");
    place.execute("INSERT INTO Sinama (Ileti) VALUES ('sonraki')");
}

bool probeIsThere(Workplace& place) {
    jet::Table table = place.database().openTable("Sinama");
    return table.rowCount() == 1 && table.value("Ileti") == Value("sonraki");
}

} // namespace proof
