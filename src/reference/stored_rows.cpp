// reference/stored_rows.cpp — see stored_rows.h.
#include "reference/stored_rows.h"

#include "core/values.h"
#include "reference/field_texts.h"

#include <cassert>

namespace orvan {
namespace {

size_t placeOf(jet::Table& table, const std::string& field) {
    if (const auto place = table.def().findField(field)) return *place;
    jet::Error error(jet::Err::NoSuchItem, "Alan bulunamadı: " + field);
    throw error.inTable(table.def().name);
}

} // namespace

FieldTexts changedTexts(const FieldTexts& stored, const FieldTexts& wanted) {
    FieldTexts changed;
    for (const auto& [name, text] : wanted) {
        const auto before = stored.find(name);
        if (before == stored.end() || before->second != text) changed[name] = text;
    }
    return changed;
}

StoredRows::StoredRows(jet::Database& database, const TableDeclaration& table, QStringList fields,
                       QStringList keys)
    : database_(database), table_(table), fields_(std::move(fields)), keys_(std::move(keys)) {}

const FieldDeclaration& StoredRows::field(const QString& name) const {
    const FieldDeclaration* found = table_.field(utf8(name));
    assert(found);
    return *found;
}

StoredRow StoredRows::readRow(jet::Table& table, const jet::Scan& scan) const {
    StoredRow row;
    row.id = scan.id();
    for (const QString& name : fields_)
        row.values[name] = fieldText(scan.value(placeOf(table, utf8(name))));
    return row;
}

std::vector<StoredRow> StoredRows::all() {
    std::vector<StoredRow> rows;
    jet::Table table = database_.openTable(table_.name);
    const jet::ReadScope scope(database_.pages());
    for (jet::Scan scan = table.scan(); scan.next();)
        rows.push_back(readRow(table, scan));
    return rows;
}

std::vector<StoredRow> StoredRows::having(const std::string& index, const std::string& field,
                                          const QString& value) {
    return having(index, {{fromUtf8(field), value}});
}

std::vector<StoredRow> StoredRows::having(const std::string& index,
                                          const std::vector<std::pair<QString, QString>>& key) {
    std::vector<StoredRow> rows;
    jet::Table table = database_.openTable(table_.name);
    const jet::ReadScope scope(database_.pages());
    jet::KeyRange range;
    std::vector<size_t> places;
    for (const auto& [name, value] : key) {
        range.lower.push_back(fieldValue(field(name), value));
        places.push_back(placeOf(table, utf8(name)));
    }
    range.upper = range.lower;
    for (jet::Scan scan = table.def().findIndex(index) ? table.scan(index, range) : table.scan();
         scan.next();) {
        bool same = true;
        for (size_t i = 0; same && i < key.size(); ++i)
            same = fieldText(scan.value(places[i])) == key[i].second;
        if (same) rows.push_back(readRow(table, scan));
    }
    return rows;
}

bool StoredRows::isSameRow(const FieldTexts& a, const FieldTexts& b) const {
    for (const QString& key : keys_)
        if (a.at(key) != b.at(key)) return false;
    return true;
}

std::optional<StoredRow> StoredRows::read(jet::RowId id) {
    jet::Table table = database_.openTable(table_.name);
    StoredRow row{id, {}};
    try {
        const std::vector<jet::Value> values = table.read(id);
        for (const QString& name : fields_)
            row.values[name] = fieldText(values[placeOf(table, utf8(name))]);
    } catch (const jet::Error& error) {
        if (error.number() != jet::Err::NoCurrentRecord) throw;
        return std::nullopt;
    }
    return row;
}

std::optional<StoredRow> StoredRows::now(const StoredRow& row) {
    auto fresh = read(row.id);
    if (!fresh || !isSameRow(row.values, fresh->values)) return std::nullopt;
    return fresh;
}

StoredRow StoredRows::add(const FieldTexts& values) {
    jet::Table table = database_.openTable(table_.name);
    table.addNew();
    for (const auto& [name, text] : values)
        table.set(utf8(name), fieldValue(field(name), text));
    table.update();
    StoredRow row{table.lastModified(), {}};
    for (const QString& name : fields_)
        row.values[name] = values.contains(name) ? values.at(name) : QString();
    return row;
}

// False: the row is no longer as it was seen.
bool StoredRows::writeFields(const StoredRow& seen, const FieldTexts& changed) {
    jet::Table table = database_.openTable(table_.name);
    try {
        table.goTo(seen.id);
        table.edit();
        for (const QString& name : fields_)
            if (fieldText(table.value(utf8(name))) != seen.values.at(name)) return false;
        for (const auto& [name, text] : changed)
            table.set(utf8(name), fieldValue(field(name), text));
        table.update();
        return true;
    } catch (const jet::Error& error) {
        if (error.number() != jet::Err::DataChanged && error.number() != jet::Err::NoCurrentRecord) throw;
        return false;
    }
}

bool StoredRows::writeOver(const StoredRow& seen, const FieldTexts& changed,
                           const std::function<void()>& also) {
    if (!also) return writeFields(seen, changed);
    database_.requireWritable();
    jet::WriteScope scope(database_.pages());
    if (!writeFields(seen, changed)) return false;
    also();
    scope.commit();
    return true;
}

bool StoredRows::asksForMine(const FieldTexts& before, const FieldTexts& theirs, const FieldTexts& changed,
                             Dialogs& dialogs) const {
    QStringList lines;
    for (const auto& [name, text] : theirs) {
        const auto mine = changed.find(name);
        QString line =
            QStringLiteral("%1: “%2” yerine “%3”").arg(fromUtf8(field(name).label), before.at(name), text);
        if (mine != changed.end()) line += QStringLiteral(" (siz “%1” yazdınız)").arg(mine->second);
        lines << line;
    }
    const QStringList choices{QStringLiteral("Benim yazdıklarım kaydedilsin"),
                              QStringLiteral("Onun değişikliği kalsın, yazdıklarım ekranda dursun")};
    const auto chosen = dialogs.choose(
        QStringLiteral("Bu kayıt, siz açtıktan sonra başka bir bilgisayarda değiştirildi:\n\n") +
            lines.join(QLatin1Char('\n')),
        QStringLiteral("Uyarı"), choices, 1);
    return chosen == 0;
}

RowChange StoredRows::change(StoredRow& row, const FieldTexts& wanted, Clash clash, Dialogs& dialogs,
                             const std::function<void()>& also) {
    const FieldTexts changed = changedTexts(row.values, wanted);
    for (;;) {
        const auto fresh = now(row);
        if (!fresh) return RowChange::Gone;
        FieldTexts theirs = changedTexts(row.values, fresh->values);
        std::erase_if(theirs, [&](const auto& entry) {
            const auto mine = changed.find(entry.first);
            return mine == changed.end() ? clash == Clash::SameField : mine->second == entry.second;
        });
        const bool mine = theirs.empty() || asksForMine(row.values, theirs, changed, dialogs);
        row = *fresh;
        if (!mine) return RowChange::Kept;
        if (!writeOver(row, changed, also)) continue;
        for (const auto& [name, text] : changed)
            row.values[name] = text;
        return RowChange::Saved;
    }
}

bool StoredRows::remove(const StoredRow& row) {
    if (!now(row)) return false;
    jet::Table table = database_.openTable(table_.name);
    table.remove(row.id);
    return true;
}

} // namespace orvan
