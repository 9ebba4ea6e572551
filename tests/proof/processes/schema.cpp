// schema.h.
#include "schema.h"

namespace proof {

namespace {

uint32_t mixed(uint32_t a, uint32_t b) {
    uint64_t h = (uint64_t{a} << 32 | b) * 0x9E3779B97F4A7C15ull;
    h ^= h >> 29;
    h *= 0xBF58476D1CE4E5B9ull;
    return static_cast<uint32_t>(h >> 32);
}

std::string letters(uint32_t seed, size_t count) {
    std::string text;
    for (size_t i = 0; i < count; ++i)
        text += static_cast<char>('a' + mixed(seed, static_cast<uint32_t>(i)) % 26);
    return text;
}

std::string sumOf(std::string_view text) {
    uint32_t sum = 2166136261u;
    for (const char c : text)
        sum = (sum ^ static_cast<uint8_t>(c)) * 16777619u;
    return std::to_string(sum);
}

jet::FieldDef field(const char* name, jet::Type type, uint16_t size = 0) {
    jet::FieldDef made;
    made.name = name;
    made.type = type;
    made.size = size;
    return made;
}

jet::IndexDef index(const char* name, uint16_t at, bool primary) {
    jet::IndexDef made;
    made.name = name;
    made.fields = {{at, false}};
    made.primary = made.unique = made.required = primary;
    return made;
}

void fill(jet::Database& database, const char* table, int rows, int32_t value) {
    jet::Table handle = database.openTable(table);
    for (int32_t id = 1; id <= rows; ++id)
        handle.insert(std::vector<jet::Value>{id, value});
}

} // namespace

std::string nameOf(int32_t id, int32_t version) {
    const uint32_t seed = mixed(static_cast<uint32_t>(id), static_cast<uint32_t>(version));
    return letters(seed, 1 + seed % 40);
}

std::string noteOf(int32_t id, int32_t version) {
    const uint32_t seed = mixed(static_cast<uint32_t>(version), static_cast<uint32_t>(id));
    const size_t length =
        seed % 8 == 0 ? 4000 + seed % 5000 : seed % 600; // most beside the row, some on pages
    const std::string body = std::to_string(id) + "/" + std::to_string(version) + " " + letters(seed, length);
    return body + "#" + sumOf(body);
}

bool isWholeNote(const std::string& note) {
    const size_t mark = note.rfind('#');
    return mark != std::string::npos &&
           note.substr(mark + 1) == sumOf(std::string_view(note).substr(0, mark));
}

int batchRows(int32_t batch) { return 100 + batch % 7 * 60; }

void createDatabase(const std::filesystem::path& file, int workers) {
    using jet::Type;
    const auto database = jet::Database::create(file);
    jet::WriteBatch batch(*database);
    for (const char* name : {"Hesap", "Sayac", "Damga"})
        database->createTable(
            name, {field("Id", Type::Long), field(name[0] == 'H' ? "Bakiye" : "Deger", Type::Long)},
            {index("indId", 0, true)});
    fill(*database, "Hesap", kAccounts, kOpening);
    fill(*database, "Sayac", kCounters, 0);
    fill(*database, "Damga", workers, 0);
    database->createTable("Kayit",
                          {field("No", Type::Long), field("Kimlik", Type::Long), field("Surum", Type::Long),
                           field("Ad", Type::Text, 40), field("Aciklama", Type::Memo)},
                          {index("indNo", 0, true), index("indAd", 3, false)});
    database->createTable(
        "Yigin", {field("Parti", Type::Long), field("Sira", Type::Long), field("Metin", Type::Text, 80)},
        {index("indParti", 0, false)});
    database->createTable("Degisen", {field("Id", Type::Long), field("Metin", Type::Text, 20)},
                          {index("indId", 0, true)});
    batch.commit();
}

} // namespace proof
