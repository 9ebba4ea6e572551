#include "proof/repair/known_file.h"

#include "jet/format/bytes.h"
#include "jet/format/long_value.h"
#include "jet/table/row_reader.h"

#include <algorithm>
#include <random>

namespace proof_repair {

using namespace jet;

namespace {

std::vector<PageNo> definitionPages(Database& database, PageNo first) {
    std::vector<PageNo> pages;
    for (PageNo page = first; page != 0;
         page = get32(database.pages().read(page).bytes(), database.layout().tdefNext))
        pages.push_back(page);
    return pages;
}

KnownRow knownRow(Database& database, RowReader& reader, Scan& scan, std::vector<Value>& values) {
    KnownRow known;
    known.pages.push_back(scan.id().page);
    std::span<const uint8_t> bytes;
    RowReader::Place place;
    reader.find(scan.id(), bytes, &place);
    known.pages.push_back(place.body.page);
    for (const RowId between : place.between)
        known.pages.push_back(between.page);
    const TableDef& def = scan.row().def();
    for (size_t i = 0; i < values.size(); ++i) {
        values[i] = scan.value(i);
        if (def.fields[i].isLongValue() && !scan.row().isNull(i))
            forEachLongValueRow(database.pages(), database.layout(), scan.row().raw(i),
                                [&](RowId part) { known.pages.push_back(part.page); });
    }
    known.text = rowText(values);
    std::ranges::sort(known.pages);
    known.pages.erase(std::ranges::unique(known.pages).begin(), known.pages.end());
    return known;
}

KnownTable learnTable(Database& database, const std::string& name) {
    KnownTable known{.name = name, .definition = {}, .rows = {}};
    const PageNo page = database.tableDef(name).page;
    known.definition = definitionPages(database, page);
    Table table = database.openTable(name);
    std::vector<Value> values(table.def().fields.size());
    RowReader reader(database.pages(), database.layout(), page);
    Scan scan = table.scan();
    while (scan.next())
        known.rows.push_back(knownRow(database, reader, scan, values));
    return known;
}

FieldDef field(const char* name, Type type, uint16_t size = 0) {
    FieldDef made;
    made.name = name;
    made.type = type;
    made.size = size;
    return made;
}

IndexDef index(const char* name, uint16_t at, bool primary) {
    IndexDef made;
    made.name = name;
    made.fields = {{at, false}};
    made.primary = made.unique = made.required = primary;
    return made;
}

// Every third has none; inline, one page, chain.
Value memo(int number, std::mt19937& dice) {
    if (number % 3 == 0) return {};
    const size_t sizes[] = {20, 20, 20, 300, 300, 1500, 9000};
    std::string text = "Not " + std::to_string(number) + ": ";
    text.append(number % 50 == 0 ? sizes[6] : sizes[dice() % 6], static_cast<char>('a' + number % 26));
    return text;
}

} // namespace

std::string rowText(std::span<const Value> values) {
    std::string text;
    for (const Value& value : values)
        text += std::to_string(value.data().index()) + ':' + (value.isNull() ? "" : value.toText()) + '\x1f';
    return text;
}

std::unique_ptr<Database> openInMemory(const std::shared_ptr<MemoryIo>& io, const std::string& name) {
    OpenOptions options;
    options.io = io;
    options.readOnly = options.ignorePassword = true;
    return Database::open(name, options);
}

KnownFile learnFile(const std::string& name, std::vector<uint8_t> bytes, const std::string& password) {
    KnownFile known{
        .name = name, .password = password, .bytes = std::move(bytes), .tables = {}, .catalogPages = {}};
    const auto io = std::make_shared<MemoryIo>();
    io->put("in.mdb", known.bytes);
    const auto database = openInMemory(io, "in.mdb");
    const ReadScope read(database->pages());
    known.encoded = database->header().encodingKey != 0;
    for (const std::string& table : database->tableNames())
        if (!table.starts_with("MSys")) known.tables.push_back(learnTable(*database, table));
    const KnownTable catalog = learnTable(*database, "MSysObjects");
    known.catalogPages = catalog.definition;
    for (const KnownRow& row : catalog.rows)
        known.catalogPages.insert(known.catalogPages.end(), row.pages.begin(), row.pages.end());
    return known;
}

std::unordered_map<std::string, RowCounts> readAll(Database& database) {
    const ReadScope read(database.pages());
    std::unordered_map<std::string, RowCounts> all;
    for (const std::string& name : database.tableNames()) {
        RowCounts& rows = all[name];
        Table table = database.openTable(name);
        std::vector<Value> values(table.def().fields.size());
        Scan scan = table.scan();
        while (scan.next()) {
            for (size_t i = 0; i < values.size(); ++i)
                values[i] = scan.value(i);
            ++rows[rowText(values)];
        }
    }
    return all;
}

std::vector<uint8_t> makeLargeFile(int rows) {
    const auto io = std::make_shared<MemoryIo>();
    CreateOptions options;
    options.io = io;
    {
        const auto database = Database::create("okul.mdb", options);
        WriteBatch batch(*database);
        database->createTable("Ogrenci",
                              {field("No", Type::Long), field("Ad", Type::Text, 200),
                               field("Dogum", Type::Date), field("Ucret", Type::Currency),
                               field("Aktif", Type::Boolean), field("Not", Type::Memo)},
                              {index("Anahtar", 0, true), index("AdaGore", 1, false)});
        database->createTable("Not",
                              {field("Ogrenci", Type::Long), field("Ders", Type::Text, 30),
                               field("Puan", Type::Double), field("Belge", Type::Ole)},
                              {index("OgrenciyeGore", 0, false)});
        database->createTable("Sinif", {field("Kod", Type::Text, 10), field("Ad", Type::Text, 50)},
                              {index("Anahtar", 0, true)});
        std::mt19937 dice(1);
        Table students = database->openTable("Ogrenci"), marks = database->openTable("Not"),
              classes = database->openTable("Sinif");
        std::vector<RowId> ids;
        for (int i = 0; i < rows / 2; ++i)
            ids.push_back(students.insert(std::vector<Value>{i, "Öğrenci " + std::to_string(i),
                                                             Date{30000.0 + i % 9000}, Currency{i * 12345LL},
                                                             i % 2 == 0, memo(i, dice)}));
        for (int i = 0; i < rows / 2; ++i)
            marks.insert(std::vector<Value>{i / 4, "Ders " + std::to_string(i % 4), (i % 1000) / 10.0,
                                            i % 40 == 0 ? Value(Bytes(static_cast<size_t>(i % 6000), 0x5A))
                                                        : Value()});
        for (int i = 0; i < 40; ++i)
            classes.insert(std::vector<Value>{"S" + std::to_string(i), "Sınıf " + std::to_string(i)});
        const bool onlyName[] = {false, true, false, false, false, false};
        for (size_t i = 0; i < ids.size(); i += 17) { // grown rows move
            std::vector<Value> changed(6);
            changed[1] = "Uzun ad " + std::string(150, 'x') + std::to_string(i);
            students.update(ids[i], changed, onlyName);
        }
        for (size_t i = 5; i < ids.size(); i += 101)
            students.remove(ids[i]);
        batch.commit();
    }
    return io->contents("okul.mdb");
}

} // namespace proof_repair
