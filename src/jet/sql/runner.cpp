// jet/sql/runner.cpp — see runner.h.
#include "jet/sql/runner.h"

#include "jet/format/row_codec.h"
#include "jet/index/sort_key.h"
#include "jet/sql/date_text.h"

#include <cmath>
#include <limits>

namespace jet::sql {
namespace {

// A number in the type that the column promises; one that does not fit stays a double.
Value numberValue(double number, Type type) {
    using Long = std::numeric_limits<int32_t>;
    switch (type) {
    case Type::Boolean: return Value(number != 0);
    case Type::Byte:
    case Type::Integer:
    case Type::Long:
        if (number == std::floor(number) && number >= Long::min() && number <= Long::max())
            return Value(static_cast<int32_t>(number));
        return Value(number);
    case Type::Currency: return Value(Currency::fromDouble(number));
    case Type::Single: return Value(static_cast<float>(number));
    case Type::Date: return Value(Date{number});
    case Type::Text:
    case Type::Memo: return Value(numberText(number));
    default: return Value(number);
    }
}

Value guidValue(const std::string& text) {
    FieldDef field;
    field.name = "GUID";
    field.type = Type::Guid;
    return convertTo(field, Value(text));
}

} // namespace

Runner::Runner(sqlite3* db, FunctionContext& context, CompiledStatement& statement,
               std::span<const Value> parameters)
    : db_(db), context_(context), statement_(statement), parameters_(parameters) {
    const auto& wanted = statement.parsed.parameters;
    if (parameters.size() < wanted.size()) {
        const std::string& name = wanted[parameters.size()].name;
        throw Error(Err::TooFewParameters, "SQL cümlesi " + std::to_string(wanted.size()) +
                                               " parametre bekliyor, " + std::to_string(parameters.size()) +
                                               " verildi" + (name.empty() ? "." : "; “" + name + "” eksik."));
    }
    context_.pending = nullptr;
    converted_.resize(wanted.size());
    for (size_t i = 0; i < wanted.size(); ++i) {
        FieldDef field;
        field.name = wanted[i].name;
        if (wanted[i].type) {
            field.type = *wanted[i].type;
            converted_[i] = convertTo(field, parameters[i]);
        }
        bind(static_cast<int>(i) + 1, wanted[i].type ? converted_[i] : parameters[i]);
    }
}

Runner::~Runner() {
    sqlite3_reset(statement_.prepared.get());
    sqlite3_clear_bindings(statement_.prepared.get());
    for (RegisteredTable* table : statement_.tables)
        table->lookups.clear();
}

void Runner::bind(int index, const Value& value) {
    sqlite3_stmt* statement = statement_.prepared.get();
    int result = SQLITE_OK;
    if (value.isNull())
        result = sqlite3_bind_null(statement, index);
    else if (const auto* text = value.get<std::string>())
        result =
            sqlite3_bind_text64(statement, index, text->data(), text->size(), SQLITE_STATIC, SQLITE_UTF8);
    else if (const auto* bytes = value.get<Bytes>())
        result = sqlite3_bind_blob64(statement, index,
                                     bytes->empty() ? "" : static_cast<const void*>(bytes->data()),
                                     bytes->size(), SQLITE_STATIC);
    else if (const auto* yes = value.get<bool>())
        result = sqlite3_bind_int(statement, index, *yes ? -1 : 0);
    else if (const auto* whole = value.get<int32_t>())
        result = sqlite3_bind_int(statement, index, *whole);
    else if (const auto* guid = value.get<Guid>()) {
        const std::string text = guid->toText();
        result =
            sqlite3_bind_text64(statement, index, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
    } else
        result = sqlite3_bind_double(statement, index, value.toDouble());
    if (result != SQLITE_OK && result != SQLITE_RANGE) throwSqliteError(db_, context_, result);
}

bool Runner::next() {
    const int result = sqlite3_step(statement_.prepared.get());
    if (result == SQLITE_ROW) return true;
    if (result != SQLITE_DONE || context_.pending) throwSqliteError(db_, context_, result);
    return false;
}

Value Runner::value(size_t column) const {
    sqlite3_stmt* statement = statement_.prepared.get();
    const int at = static_cast<int>(column);
    const OutColumn* known =
        column < statement_.query.columns.size() ? &statement_.query.columns[column] : nullptr;
    if (known && known->parameter > 0) return parameters_[static_cast<size_t>(known->parameter) - 1];
    const auto typeOr = [&](Type whenUnknown) { return known && known->type ? *known->type : whenUnknown; };
    switch (sqlite3_column_type(statement, at)) {
    case SQLITE_NULL: return {};
    case SQLITE_INTEGER:
        return numberValue(static_cast<double>(sqlite3_column_int64(statement, at)), typeOr(Type::Long));
    case SQLITE_FLOAT: return numberValue(sqlite3_column_double(statement, at), typeOr(Type::Double));
    case SQLITE_BLOB: {
        const auto* data = static_cast<const uint8_t*>(sqlite3_column_blob(statement, at));
        return Value(Bytes(data, data + sqlite3_column_bytes(statement, at)));
    }
    default: break;
    }
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, at));
    std::string copy(text ? text : "", static_cast<size_t>(sqlite3_column_bytes(statement, at)));
    return typeOr(Type::Text) == Type::Guid ? guidValue(copy) : Value(std::move(copy));
}

uint64_t Runner::rowId(size_t column) const {
    return static_cast<uint64_t>(sqlite3_column_int64(statement_.prepared.get(), static_cast<int>(column)));
}

std::vector<Value> Runner::tieValues() const {
    std::vector<Value> values;
    for (const size_t column : statement_.query.ties)
        values.push_back(value(column));
    return values;
}

bool Runner::ties(const std::vector<Value>& a, const std::vector<Value>& b) const {
    for (size_t i = 0; i < a.size(); ++i) {
        const auto *textA = a[i].get<std::string>(), *textB = b[i].get<std::string>();
        if (a[i] == b[i]) continue;
        if (!textA || !textB || !knowsSortOrder(context_.order) ||
            compareText(*textA, *textB, context_.order) != 0)
            return false;
    }
    return true;
}

// TOP n keeps the rows that tie with the last one, where ORDER BY tells what a tie is.
std::vector<Value> Runner::allRows() {
    const EmittedQuery& query = statement_.query;
    const size_t width = query.columns.size();
    std::vector<Value> cells;
    std::vector<std::vector<Value>> allTies; // TOP … PERCENT: the end is known only when all rows are
    std::vector<Value> lastTies;
    const auto most =
        query.top && !query.topPercent ? static_cast<size_t>(*query.top) : static_cast<size_t>(-1);
    for (size_t row = 0; most > 0 && next(); ++row) {
        if (row >= most && (query.ties.empty() || !ties(lastTies, tieValues()))) break;
        for (size_t column = 0; column < width; ++column)
            cells.push_back(value(column));
        if (query.topPercent) allTies.push_back(tieValues());
        if (row + 1 == most) lastTies = tieValues();
    }
    if (!query.topPercent) return cells;
    const auto count = static_cast<double>(allTies.size());
    auto keep = static_cast<size_t>(std::ceil(count * *query.top / 100.0 - 1e-9));
    while (keep > 0 && keep < allTies.size() && !query.ties.empty() && ties(allTies[keep - 1], allTies[keep]))
        ++keep;
    if (width > 0) cells.resize(std::min(cells.size(), keep * width));
    return cells;
}

} // namespace jet::sql
