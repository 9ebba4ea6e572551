// jet/sql/run_change.cpp — applies INSERT, UPDATE, DELETE and SELECT … INTO through Table; see runner.h.
// All rows are read before the first is changed, so a statement never meets its own changes.
#include "jet/sql/runner.h"

#include <optional>
#include <unordered_set>

namespace jet::sql {
namespace {

// Values and marks for one row of a table, one entry per field.
struct RowBuffer {
    explicit RowBuffer(size_t fields) : values(fields), marks(new bool[fields]()), count(fields) {}
    std::span<const bool> marked() const { return {marks.get(), count}; }

    std::vector<Value> values;
    std::unique_ptr<bool[]> marks;
    size_t count;
};

size_t insertRows(Runner& runner, CompiledStatement& statement) {
    const ChangeTarget& target = statement.targets.front();
    const std::vector<Value> cells = runner.allRows();
    const size_t width = statement.query.columns.size();
    RowBuffer row(target.table->def.fields.size());
    for (const auto& [field, column] : target.fields)
        row.marks[field] = true;
    const size_t rows = cells.size() / width;
    for (size_t i = 0; i < rows; ++i) {
        for (const auto& [field, column] : target.fields)
            row.values[field] = cells[i * width + column];
        target.table->table.insert(row.values, row.marked());
    }
    return rows;
}

struct PendingUpdate {
    RowId row;
    size_t firstValue; // in the list of new values
};

// A row may want a key that another row is about to give up (Sira = Sira + 1): such rows are tried again
// after the others, as long as that helps.
void updateTable(const ChangeTarget& target, std::vector<PendingUpdate> pending, std::vector<Value>& values) {
    RowBuffer row(target.table->def.fields.size());
    for (const auto& [field, column] : target.fields)
        row.marks[field] = true;
    while (!pending.empty()) {
        std::vector<PendingUpdate> refused;
        std::optional<Error> reason;
        for (const PendingUpdate& change : pending) {
            for (size_t i = 0; i < target.fields.size(); ++i)
                row.values[target.fields[i].first] = values[change.firstValue + i];
            try {
                target.table->table.update(change.row, row.values, row.marked());
            } catch (const Error& error) {
                if (error.number() != Err::DuplicateKey) throw;
                if (!reason) reason = error;
                refused.push_back(change);
            }
        }
        if (refused.size() == pending.size()) throw *reason;
        pending = std::move(refused);
    }
}

size_t updateRows(Runner& runner, CompiledStatement& statement) {
    std::vector<std::vector<PendingUpdate>> pending(statement.targets.size());
    std::vector<Value> values;
    size_t rows = 0;
    for (; runner.next(); ++rows)
        for (size_t i = 0; i < statement.targets.size(); ++i) {
            const ChangeTarget& target = statement.targets[i];
            const uint64_t row = runner.rowId(target.rowColumn);
            if (row == 0) continue;
            pending[i].push_back({RowId::fromPacked(row), values.size()});
            for (const auto& [field, column] : target.fields)
                values.push_back(runner.value(column));
        }
    for (size_t i = 0; i < pending.size(); ++i)
        updateTable(statement.targets[i], std::move(pending[i]), values);
    return rows;
}

size_t deleteRows(Runner& runner, CompiledStatement& statement) {
    std::vector<uint64_t> rows;
    std::unordered_set<uint64_t> seen; // a join may give a row many times
    while (runner.next())
        if (const uint64_t row = runner.rowId(0); row != 0 && seen.insert(row).second) rows.push_back(row);
    Table& table = statement.targets.front().table->table;
    for (const uint64_t row : rows)
        table.remove(RowId::fromPacked(row));
    return rows.size();
}

// The type that a new table's field takes for a column of the query.
FieldDef fieldFor(const OutColumn& column, const std::vector<Value>& cells, size_t at, size_t width) {
    FieldDef field;
    field.name = column.name;
    field.type = column.type.value_or(Type::Text);
    if (!column.type)
        for (size_t i = at; i < cells.size(); i += width)
            if (!cells[i].isNull()) {
                if (cells[i].get<int32_t>()) field.type = Type::Long;
                if (cells[i].get<double>()) field.type = Type::Double;
                if (cells[i].get<Bytes>()) field.type = Type::Ole;
                break;
            }
    if (field.type == Type::Numeric) field.type = Type::Double;
    if (field.type == Type::Text) field.size = column.size ? column.size : 255;
    if (field.type == Type::Binary) field.size = column.size ? column.size : 510;
    return field;
}

} // namespace

size_t applyChange(Runner& runner, CompiledStatement& statement) {
    switch (statement.kind) {
    case CompiledStatement::Kind::Insert: return insertRows(runner, statement);
    case CompiledStatement::Kind::Update: return updateRows(runner, statement);
    default: return deleteRows(runner, statement);
    }
}

size_t selectInto(Database& database, Runner& runner, CompiledStatement& statement) {
    const std::vector<Value> cells = runner.allRows();
    const size_t width = statement.query.columns.size();
    std::vector<FieldDef> fields;
    for (size_t i = 0; i < width; ++i)
        fields.push_back(fieldFor(statement.query.columns[i], cells, i, width));
    database.createTable(statement.into, std::move(fields));
    Table table = database.openTable(statement.into);
    for (size_t at = 0; at + width <= cells.size(); at += width)
        table.insert(std::span(cells).subspan(at, width));
    return cells.size() / width;
}

} // namespace jet::sql
