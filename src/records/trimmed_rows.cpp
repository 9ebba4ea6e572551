// records/trimmed_rows.cpp — see trimmed_rows.h.
#include "records/trimmed_rows.h"

#include "core/turkish_text.h"

#include <algorithm>
#include <memory>

namespace orvan {
namespace {

size_t placeOf(const jet::TableDef& def, const std::string& field) {
    if (const auto place = def.findField(field)) return *place;
    jet::Error error(jet::Err::NoSuchItem, "Alan bulunamadı: " + field);
    throw error.inTable(def.name);
}

// An index that begins with the field; empty when there is none that can be walked.
std::string indexBeginningWith(const jet::TableDef& def, size_t field) {
    for (const jet::IndexDef& index : def.indexes)
        if (!index.fields.empty() && index.fields.front().field == field && index.readOnlyReason.empty() &&
            !index.ignoreNulls)
            return index.name;
    return {};
}

void collect(jet::Table& table, const std::string& index, const jet::Value& key,
             std::vector<jet::RowId>& rows) {
    for (jet::Scan scan = table.scan(index, jet::KeyRange{{key}, {key}}); scan.next();)
        rows.push_back(scan.id());
}

template <class Matches> std::vector<jet::RowId> scanFor(jet::Table& table, const Matches& matches) {
    std::vector<jet::RowId> rows;
    for (jet::Scan scan = table.scan(); scan.next();)
        if (matches(scan)) rows.push_back(scan.id());
    return rows;
}

std::vector<jet::RowId> inFileOrder(std::vector<jet::RowId> rows) {
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

} // namespace

std::vector<jet::RowId> rowsByText(jet::Database& database, const std::string& tableName,
                                   const std::string& field, const QString& text) {
    jet::Table table = database.openTable(tableName);
    const jet::ReadScope scope(database.pages());
    const jet::TableDef& def = table.def();
    const size_t place = placeOf(def, field);
    const QString wanted = trimBlanks(text);
    const auto width = static_cast<qsizetype>(def.fields[place].size);
    if (wanted.size() > width && def.fields[place].type == jet::Type::Text) return {};
    const std::string index = indexBeginningWith(def, place);
    if (index.empty() || def.fields[place].type != jet::Type::Text)
        return scanFor(table, [&](jet::Scan& scan) {
            return !scan.row().isNull(place) && sameTurkish(trimmedText(scan.value(place)), wanted);
        });
    std::vector<jet::RowId> rows;
    try {
        const qsizetype mostBlanks = wanted.isEmpty() ? 0 : width - wanted.size();
        for (qsizetype blanks = 0; blanks <= mostBlanks; ++blanks)
            collect(table, index, textValue(QString(blanks, QLatin1Char(' ')) + wanted), rows);
    } catch (const jet::Error& error) {
        // a character that no index key can hold: no row can have it in this field
        if (error.number() != jet::Err::InvalidArgument) throw;
        return {};
    }
    return inFileOrder(std::move(rows));
}

std::vector<jet::RowId> rowsByNumber(jet::Database& database, const std::string& tableName,
                                     const std::string& field, int number) {
    jet::Table table = database.openTable(tableName);
    const jet::ReadScope scope(database.pages());
    const size_t place = placeOf(table.def(), field);
    const std::string index = indexBeginningWith(table.def(), place);
    if (index.empty())
        return scanFor(table, [&](jet::Scan& scan) {
            return !scan.row().isNull(place) && toText(scan.value(place)) == QString::number(number);
        });
    std::vector<jet::RowId> rows;
    collect(table, index, jet::Value(number), rows);
    return inFileOrder(std::move(rows));
}

std::vector<QString> trimmedTexts(jet::Table& table, jet::RowId row, const std::vector<std::string>& fields) {
    const std::vector<jet::Value> values = table.read(row);
    const jet::TableDef& def = table.def();
    std::vector<QString> texts;
    for (const std::string& field : fields) {
        const auto place = def.findField(field);
        texts.push_back(place ? trimmedText(values[*place]) : QString());
    }
    return texts;
}

void changeRow(jet::Table& table, jet::RowId row, const std::vector<NewValue>& values) {
    const jet::TableDef& def = table.def();
    const size_t count = def.fields.size();
    std::vector<jet::Value> given(count);
    const auto changed = std::make_unique<bool[]>(count);
    for (const NewValue& value : values) {
        const size_t place = placeOf(def, value.field);
        given[place] = value.value;
        changed[place] = true;
    }
    table.update(row, given, {changed.get(), count});
}

} // namespace orvan
