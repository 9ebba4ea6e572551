// core/structure_fields.cpp — see structure_fields.h.
#include "core/structure_fields.h"

#include "core/clock.h"
#include "core/values.h"

#include <algorithm>
#include <cmath>

namespace orvan {
namespace {

using jet::Type;

enum class Kind { Text, Whole, Money, Real, YesNo, Date, Other };

Kind kindOf(Type type) {
    switch (type) {
    case Type::Text:
    case Type::Memo: return Kind::Text;
    case Type::Byte:
    case Type::Integer:
    case Type::Long: return Kind::Whole;
    case Type::Currency: return Kind::Money;
    case Type::Single:
    case Type::Double: return Kind::Real;
    case Type::Boolean: return Kind::YesNo;
    case Type::Date: return Kind::Date;
    default: return Kind::Other;
    }
}

// Whether `present` holds everything that `wanted` can.
bool isWideEnough(const jet::FieldDef& present, const FieldDeclaration& wanted) {
    if (present.type == Type::Memo) return true;
    if (wanted.type == Type::Text) return present.size >= wanted.width;
    const auto rank = [](Type type) { // within a kind, narrowest first
        return type == Type::Byte                              ? 0
               : type == Type::Integer || type == Type::Single ? 1
               : type == Type::Text                            ? 2
                                                               : 3;
    };
    return rank(present.type) >= rank(wanted.type);
}

QString textOf(const jet::Value& value) {
    if (const auto* date = value.get<jet::Date>()) {
        const auto parts = date->parts();
        return dateText(QDate(parts.year, parts.month, parts.day));
    }
    if (const auto* yes = value.get<bool>()) return *yes ? QStringLiteral("-1") : QStringLiteral("0");
    QString text = toText(value).trimmed();
    if (value.get<std::string>()) return text;
    if (value.get<jet::Currency>()) // always four decimals
        while (text.endsWith(u'0') || text.endsWith(u'.'))
            if (const bool point = text.endsWith(u'.'); text.chop(1), point) break;
    return text.replace(u'.', u',');
}

std::optional<double> numberOf(const jet::Value& value) {
    if (!value.get<std::string>()) return value.toDouble();
    QString text = trimmedText(value);
    if (text.contains(u',')) text.remove(u'.').replace(u',', u'.');
    bool ok = false;
    const double number = text.toDouble(&ok);
    return ok && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

std::optional<jet::Value> yesNoOf(const jet::Value& value) {
    if (!value.get<std::string>()) return jet::Value(value.toBool());
    const QString text = trimmedText(value).toLower();
    for (const char* yes : {"-1", "1", "e", "evet", "true", "yes"})
        if (text == QLatin1String(yes)) return jet::Value(true);
    for (const char* no : {"0", "h", "hayır", "false", "no"})
        if (text == QString::fromUtf8(no)) return jet::Value(false);
    return std::nullopt;
}

std::optional<jet::Value> dateOf(const jet::Value& value) {
    if (value.get<jet::Date>()) return value;
    if (!value.get<std::string>()) return std::nullopt;
    const auto day = dateFromText(trimmedText(value));
    if (!day) return std::nullopt;
    return jet::Value(jet::Date::fromParts({day->year(), day->month(), day->day(), 0, 0, 0}));
}

std::optional<jet::Value> numberAs(Kind kind, double number) {
    if (kind == Kind::Real) return jet::Value(number);
    if (kind == Kind::Money) return jet::Value(jet::Currency::fromDouble(number)); // throws past the range
    if (number != std::floor(number) || std::abs(number) > 2147483647.0) return std::nullopt;
    return jet::Value(static_cast<int32_t>(number));
}

bool isBlankText(const jet::Value& value) { return value.get<std::string>() && trimmedText(value).isEmpty(); }

// The name that a replaced field gets.
std::string oldName(const std::string& name) { return name + 'X'; }

// They would keep the old field; declared ones are made anew on the new field.
void dropIndexesOn(jet::Database& database, const std::string& table, const std::string& field) {
    const jet::TableDef& def = database.tableDef(table);
    const size_t place = *def.findField(field);
    std::vector<std::string> names;
    for (const jet::IndexDef& index : def.indexes)
        if (std::any_of(index.fields.begin(), index.fields.end(),
                        [&](const auto& column) { return column.field == place; }))
            names.push_back(index.name);
    for (const std::string& name : names)
        database.dropIndex(table, name);
}

struct Carried {
    size_t values = 0; // written into the new field
    bool all = true;   // the old field holds nothing more than the new one
};

// Copies the values of `old` to where `field` has none.
Carried carryOver(jet::Database& database, const std::string& table, const std::string& old,
                  const FieldDeclaration& field) {
    jet::Table rows = database.openTable(table);
    const size_t to = *rows.def().findField(field.name), from = *rows.def().findField(old);
    const size_t fields = rows.def().fields.size();
    Carried result;
    std::vector<std::pair<jet::RowId, jet::Value>> wanted;
    {
        const jet::ReadScope read(database.pages());
        for (jet::Scan scan = rows.scan(); scan.next();) {
            const auto value = convertedValue(scan.value(from), field);
            if (value && value->isNull()) continue;
            const jet::Value present = scan.value(to);
            if (value && *value == present) continue;
            const bool isFree = present.isNull() || (present.get<bool>() && !present.toBool());
            if (value && isFree)
                wanted.emplace_back(scan.id(), *value);
            else
                result.all = false;
        }
    }
    std::vector<jet::Value> values(fields);
    const auto changed = std::make_unique<bool[]>(fields);
    changed[to] = true;
    for (auto& [row, value] : wanted) {
        values[to] = std::move(value);
        rows.update(row, values, {changed.get(), fields});
    }
    result.values = wanted.size();
    return result;
}

void dropOld(jet::Database& database, const std::string& table, const std::string& old) {
    try {
        database.dropField(table, old);
    } catch (const jet::Error& error) {
        if (error.number() != jet::Err::InvalidArgument) throw; // a relation stands on it: it stays
    }
}

void replaceField(jet::Database& database, const std::string& table, const FieldDeclaration& field) {
    std::string old = oldName(field.name);
    while (database.tableDef(table).findField(old))
        old = oldName(old);
    dropIndexesOn(database, table, field.name);
    database.renameField(table, field.name, old);
    database.addField(table, fieldDef(field));
    if (carryOver(database, table, old, field).all) dropOld(database, table, old);
}

} // namespace

jet::FieldDef fieldDef(const FieldDeclaration& field) {
    jet::FieldDef def;
    def.name = field.name;
    def.type = field.type;
    def.size = field.width;
    def.required = field.required;
    def.autoNumber = field.autoNumber;
    def.defaultValue = field.defaultValue;
    return def;
}

std::optional<jet::Value> convertedValue(const jet::Value& value, const FieldDeclaration& field) {
    const Kind kind = kindOf(field.type);
    if (value.isNull()) return jet::Value();
    if (kind == Kind::Text) {
        const QString text = textOf(value);
        const bool fits = field.type == Type::Memo || text.size() <= field.width;
        return fits ? std::optional(textValue(text)) : std::nullopt;
    }
    if (isBlankText(value)) return jet::Value();
    try {
        if (kind == Kind::YesNo) return yesNoOf(value);
        if (kind == Kind::Date) return dateOf(value);
        const auto number = numberOf(value);
        return number ? numberAs(kind, *number) : std::nullopt;
    } catch (const jet::Error&) {
        return std::nullopt;
    }
}

void bringFieldUpToDate(jet::Database& database, const std::string& table, const FieldDeclaration& field,
                        StructureChanges& changes) {
    jet::WriteBatch batch(database);
    const jet::TableDef& def = database.tableDef(table);
    jet::FieldDef present = def.fields[*def.findField(field.name)];
    const auto old = def.findField(oldName(field.name));
    if (kindOf(present.type) != kindOf(field.type)) {
        replaceField(database, table, field);
        ++changes.converted;
    } else if (!isWideEnough(present, field)) {
        present.type = field.type;
        present.size = field.width;
        database.alterField(table, present.name, present);
        ++changes.widened;
    } else if (old && kindOf(def.fields[*old].type) != kindOf(field.type)) { // left by an earlier release
        const Carried carried = carryOver(database, table, oldName(field.name), field);
        if (carried.all) dropOld(database, table, oldName(field.name));
        if (carried.all || carried.values > 0) ++changes.converted;
    }
    batch.commit();
}

} // namespace orvan
