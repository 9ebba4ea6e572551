// jet/sql/virtual_cursor.cpp — walks a table for SQLite: bounds out of arguments, fields out of rows.
#include "jet/sql/virtual_table.h"

#include "jet/index/sort_key.h"
#include "jet/sql/date_text.h"

#include <cmath>
#include <limits>

namespace jet::sql {
namespace {

enum class Side { Equal, Lower, Upper };
enum class Found { Use, Nothing, Open }; // Open: the bound does not help, walk on without it

struct Bound {
    Found found = Found::Use;
    Value value = {};
    bool inclusive = true;
};

// A test that no stored value passes, or that every stored value passes.
Bound beyond(Side side, bool above) {
    const bool open = (side == Side::Lower && !above) || (side == Side::Upper && above);
    return {open ? Found::Open : Found::Nothing};
}

Bound wholeBound(double number, double lowest, double highest, Side side, bool inclusive) {
    if (number < lowest || number > highest) return beyond(side, number > highest);
    const bool whole = number == std::floor(number);
    if (side == Side::Equal && !whole) return {Found::Nothing};
    const double nearest = side == Side::Lower ? std::floor(number) : std::ceil(number);
    return {Found::Use, Value(static_cast<int32_t>(nearest)), whole && inclusive};
}

// Money is compared as an amount; its neighbours are let in and tested again.
Bound currencyBound(double number, Side side) {
    if (std::fabs(number) > 9e14) return beyond(side, number > 0);
    Currency amount = Currency::fromDouble(number);
    if (side != Side::Equal) amount.tenThousandths += side == Side::Lower ? -1 : 1;
    return {Found::Use, Value(amount)};
}

Bound singleBound(double number, Side side) {
    constexpr float kLargest = std::numeric_limits<float>::max();
    if (std::fabs(number) > static_cast<double>(kLargest)) return beyond(side, number > 0);
    const auto near = static_cast<float>(number);
    if (side == Side::Equal)
        return {static_cast<double>(near) == number ? Found::Use : Found::Nothing, Value(near)};
    return {Found::Use, Value(std::nextafter(near, side == Side::Lower ? -kLargest : kLargest))};
}

Bound numberBound(const FieldDef& field, double number, Side side, bool inclusive) {
    using Long = std::numeric_limits<int32_t>;
    switch (field.type) {
    case Type::Boolean:
        if (number != 0 && number != -1) return {Found::Nothing};
        return {Found::Use, Value(number != 0)};
    case Type::Byte: return wholeBound(number, 0, 255, side, inclusive);
    case Type::Integer: return wholeBound(number, -32768, 32767, side, inclusive);
    case Type::Long: return wholeBound(number, Long::min(), Long::max(), side, inclusive);
    case Type::Currency: return currencyBound(number, side);
    case Type::Single: return singleBound(number, side);
    case Type::Date:
        if (!(number > -657435.0 && number < 2958466.0)) return beyond(side, number > 0);
        return {Found::Use, Value(Date{number}), inclusive};
    default: return {Found::Use, Value(number), inclusive};
    }
}

// What SQLite's comparison of the field with this value asks of the index.
Bound boundOf(const FieldDef& field, sqlite3_value* argument, Side side, bool inclusive) {
    const int type = sqlite3_value_type(argument);
    if (type == SQLITE_NULL) return {Found::Nothing};
    if (type == SQLITE_BLOB) return beyond(side, true); // a blob is above everything
    if (field.isText()) {
        const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(argument));
        const auto size = static_cast<size_t>(sqlite3_value_bytes(argument));
        if (!canMakeTextKey({text ? text : "", size}, field.sortOrder))
            return {Found::Open}; // no key: compare
        return {Found::Use, Value(std::string_view(text ? text : "", size)), inclusive};
    }
    // A text that reads as a number compares as one, any other is above all numbers.
    if (type == SQLITE_TEXT) {
        const int numeric = sqlite3_value_numeric_type(argument);
        if (numeric != SQLITE_INTEGER && numeric != SQLITE_FLOAT) return beyond(side, true);
    }
    return numberBound(field, sqlite3_value_double(argument), side, inclusive);
}

VirtualCursor& cursorOf(sqlite3_vtab_cursor* base) { return *static_cast<VirtualCursor*>(base); }
VirtualTable& tableOf(sqlite3_vtab_cursor* base) { return *static_cast<VirtualTable*>(base->pVtab); }

// False: no row can fit.
bool makeRange(const TableDef& def, const IndexDef& index, const Plan& plan, sqlite3_value** arguments,
               KeyRange& range) {
    int next = 0;
    for (int i = 0; i < plan.equal; ++i) {
        if (plan.nulls >> i & 1) {
            range.lower.emplace_back();
            continue;
        }
        const Bound bound = boundOf(def.fields[index.fields[static_cast<size_t>(i)].field], arguments[next++],
                                    Side::Equal, true);
        if (bound.found == Found::Nothing) return false;
        if (bound.found == Found::Open) { // every entry under the fields before it; SQLite tests each row
            range.upper = range.lower;
            range.backwards = plan.backwards;
            return true;
        }
        range.lower.push_back(bound.value);
    }
    range.upper = range.lower;
    range.backwards = plan.backwards;
    if (!plan.lower && !plan.upper) return true;
    const FieldDef& field = def.fields[index.fields[static_cast<size_t>(plan.equal)].field];
    range.lower.emplace_back(); // null is below every value and passes no test
    range.lowerInclusive = false;
    if (plan.lower) {
        const Bound bound = boundOf(field, arguments[next++], Side::Lower, plan.lowerInclusive);
        if (bound.found == Found::Nothing) return false;
        if (bound.found == Found::Use) {
            range.lower.back() = bound.value;
            range.lowerInclusive = bound.inclusive;
        }
    }
    if (plan.upper) {
        const Bound bound = boundOf(field, arguments[next], Side::Upper, plan.upperInclusive);
        if (bound.found == Found::Nothing) return false;
        if (bound.found == Found::Use) {
            range.upper.push_back(bound.value);
            range.upperInclusive = bound.inclusive;
        }
    }
    return true;
}

// A field searched for the third time in one run is looked up in memory from then on.
bool startLookup(VirtualCursor& cursor, RegisteredTable& table, size_t field, sqlite3_value* value) {
    constexpr size_t kPays = 3;
    LookupUse& use = table.lookups[field];
    if (!use.lookup && ++use.searches < kPays) return false;
    if (!use.lookup) use.lookup = std::make_unique<Lookup>(table.table, table.def, field);
    auto found = use.lookup->find(value);
    if (!found) return false;
    cursor.lookup = use.lookup.get();
    cursor.found = std::move(*found);
    cursor.next = 0;
    return true;
}

void advance(VirtualCursor& cursor) {
    cursor.atEnd = cursor.lookup ? cursor.next++ >= cursor.found.size() : !cursor.scan->next();
}

void startWalk(VirtualCursor& cursor, VirtualTable& table, int planNumber, sqlite3_value** arguments) {
    const TableDef& def = table.source->def;
    const Plan plan = Plan::unpack(planNumber);
    const bool again = cursor.scan && cursor.planNumber == planNumber;
    cursor.atEnd = true;
    cursor.planNumber = planNumber;
    cursor.lookup = nullptr;
    if (plan.lookUp && startLookup(cursor, *table.source, static_cast<size_t>(plan.index) - 1, arguments[0]))
        return advance(cursor);
    if (plan.lookUp || plan.index == Plan::kScan) {
        if (again)
            cursor.scan->restart();
        else
            cursor.scan.emplace(table.source->table.scan());
    } else {
        const IndexDef& index = def.indexes[static_cast<size_t>(plan.index) - 1];
        KeyRange range;
        if (!makeRange(def, index, plan, arguments, range)) {
            if (!again) cursor.scan.reset();
            return;
        }
        if (again)
            cursor.scan->restart(range);
        else
            cursor.scan.emplace(table.source->table.scan(index.name, range));
    }
    advance(cursor);
}

void giveValue(const Value& value, sqlite3_context* call) {
    if (value.isNull()) return sqlite3_result_null(call);
    if (const auto* text = value.get<std::string>()) return giveText(call, *text);
    if (const auto* whole = value.get<int32_t>()) return sqlite3_result_int(call, *whole);
    if (const auto* yes = value.get<bool>()) return giveBoolean(call, *yes);
    if (const auto* guid = value.get<Guid>()) return giveText(call, guid->toText());
    if (const auto* bytes = value.get<Bytes>())
        return sqlite3_result_blob64(call, bytes->empty() ? "" : static_cast<const void*>(bytes->data()),
                                     bytes->size(), SQLITE_TRANSIENT);
    sqlite3_result_double(call, value.toDouble());
}

void giveField(VirtualCursor& cursor, const FieldDef& field, size_t at, sqlite3_context* call) {
    const RowView& row = cursor.scan->row();
    if (row.isNull(at)) return sqlite3_result_null(call);
    switch (field.type) {
    case Type::Boolean: return sqlite3_result_int(call, row.boolean(at) ? -1 : 0);
    case Type::Byte:
    case Type::Integer:
    case Type::Long: return sqlite3_result_int(call, row.integer(at));
    case Type::Currency: return sqlite3_result_double(call, row.currency(at).toDouble());
    case Type::Single:
    case Type::Double:
    case Type::Date: return sqlite3_result_double(call, row.real(at));
    case Type::Text: return giveText(call, row.text(at, cursor.scratch));
    case Type::Memo: return giveText(call, cursor.scan->text(at, cursor.scratch));
    case Type::Guid: return giveText(call, row.value(at).toText());
    case Type::Numeric: return sqlite3_result_double(call, row.value(at).toDouble());
    case Type::Binary:
    case Type::Ole: return giveValue(cursor.scan->value(at), call);
    }
}

} // namespace

int filterCursor(sqlite3_vtab_cursor* base, int planNumber, const char*, int, sqlite3_value** arguments) {
    VirtualTable& table = tableOf(base);
    return caught(*table.context, [&] { startWalk(cursorOf(base), table, planNumber, arguments); });
}

int advanceCursor(sqlite3_vtab_cursor* base) {
    VirtualCursor& cursor = cursorOf(base);
    return caught(*tableOf(base).context, [&] { advance(cursor); });
}

int readColumn(sqlite3_vtab_cursor* base, sqlite3_context* call, int column) {
    VirtualTable& table = tableOf(base);
    return caught(*table.context, [&] {
        const auto at = static_cast<size_t>(column);
        VirtualCursor& cursor = cursorOf(base);
        if (cursor.lookup) return giveValue(cursor.lookup->row(cursor.found[cursor.next - 1])[at], call);
        giveField(cursor, table.source->def.fields[at], at, call);
    });
}

} // namespace jet::sql
