// jet/sql/emitter_change.cpp — INSERT, UPDATE and DELETE as queries that give the rows and the new values;
// the session applies them through Table. See emitter.h.
#include "jet/sql/emitter.h"

namespace jet::sql {

// The table of an update or delete by its name in the statement; with an empty name the only one.
Emitter::BoundSource* Emitter::changedTable(const std::string& name, size_t at, Scope& scope) {
    BoundSource* found = nullptr;
    for (BoundSource& source : scope.sources) {
        if (!name.empty() && !sameName(source.name, name) &&
            !(source.table && sameName(source.table->def.name, name)))
            continue;
        if (found) fail(at, "Hangi tablonun değişeceği belirtilmeli");
        found = &source;
    }
    if (!found) fail(at, "“" + name + "” adında bir tablo yok", Err::NoSuchTable);
    if (!found->table) fail(at, "Alt sorgunun satırları değiştirilemez");
    return found;
}

EmittedChange Emitter::update(const UpdateStatement& update) {
    EmittedChange change;
    Scope scope;
    const std::string from = bindSources(update.from, scope);
    std::string items;
    std::vector<OutColumn>& columns = change.query.columns;
    const auto add = [&](const std::string& sql, OutColumn column) {
        items += (columns.empty() ? "" : ", ") + sql;
        columns.push_back(std::move(column));
    };
    for (const Assignment& assignment : update.set) {
        Expr target;
        target.text = assignment.field;
        target.qualifier = assignment.qualifier;
        target.at = assignment.at;
        const auto field = column(target, scope);
        if (!field)
            fail(assignment.at, "“" + assignment.field + "” adında bir alan yok", Err::TooFewParameters);
        const BoundSource* source = changedTable(field->table, assignment.at, scope);
        auto known = change.targets.begin();
        while (known != change.targets.end() && known->table != source->table)
            ++known;
        if (known == change.targets.end()) {
            change.targets.push_back({source->table, columns.size(), {}});
            known = change.targets.end() - 1;
            add(source->id + ".rowid", {});
        }
        const Typed given = expression(*assignment.value, scope);
        known->fields.emplace_back(source->table->fieldByName.at(foldName(assignment.field)), columns.size());
        OutColumn column;
        column.type = given.type;
        column.parameter = given.parameter;
        add(value(given), std::move(column));
    }
    change.query.sql = "SELECT " + items + " FROM " + from + whereClause(update.where, scope);
    return change;
}

EmittedChange Emitter::remove(const DeleteStatement& statement) {
    EmittedChange change;
    Scope scope;
    const std::string from = bindSources(statement.from, scope);
    const BoundSource* source = changedTable(statement.target, statement.at, scope);
    change.targets.push_back({source->table, 0, {}});
    change.query.columns.emplace_back();
    change.query.sql = "SELECT " + source->id + ".rowid FROM " + from + whereClause(statement.where, scope);
    return change;
}

EmittedChange Emitter::insert(const InsertStatement& insert) {
    EmittedChange change;
    RegisteredTable& table = useTable(insert.table, insert.at);
    change.targets.push_back({&table, 0, {}});
    std::vector<OutColumn>& columns = change.query.columns;
    if (insert.query) {
        change.query = emitQuery(*insert.query, nullptr, true);
    } else {
        Scope scope;
        for (size_t row = 0; row < insert.rows.size(); ++row) {
            if (insert.rows[row].size() != insert.rows.front().size())
                fail(insert.at, "VALUES satırlarındaki değer sayıları birbirini tutmuyor");
            std::string items;
            for (size_t i = 0; i < insert.rows[row].size(); ++i) {
                const Typed given = expression(*insert.rows[row][i], scope);
                items += (i ? ", " : "") + value(given);
                if (row == 0) columns.emplace_back();
                columns[i].type = unify(columns[i].type, given.type);
                if (insert.rows.size() == 1) columns[i].parameter = given.parameter;
            }
            change.query.sql += (row ? " UNION ALL SELECT " : "SELECT ") + items;
        }
    }
    auto& fields = change.targets.front().fields;
    const auto fieldOf = [&](const std::string& name) {
        const auto known = table.fieldByName.find(foldName(name));
        return known == table.fieldByName.end() ? kHidden : known->second;
    };
    bool byName =
        insert.fields.empty() && insert.query != nullptr; // a query without a list goes by its names
    for (size_t i = 0; byName && i < columns.size(); ++i)
        byName = fieldOf(columns[i].name) != kHidden;
    const size_t wanted = !insert.fields.empty() ? insert.fields.size()
                          : byName               ? columns.size()
                                                 : table.def.fields.size();
    if (wanted != columns.size())
        fail(insert.at, "Verilen değerlerin sayısı (" + std::to_string(columns.size()) +
                            ") alanların sayısını (" + std::to_string(wanted) + ") tutmuyor");
    for (size_t i = 0; i < columns.size(); ++i) {
        const size_t field = !insert.fields.empty() ? fieldOf(insert.fields[i])
                             : byName               ? fieldOf(columns[i].name)
                                                    : i;
        if (field == kHidden)
            fail(insert.fieldsAt[i], "“" + insert.table + "” tablosunda “" + insert.fields[i] + "” alanı yok",
                 Err::NoSuchItem);
        for (const auto& [other, column] : fields)
            if (other == field)
                fail(insert.at, "“" + table.def.fields[field].name + "” alanı iki kez verilmiş");
        fields.emplace_back(field, i);
    }
    return change;
}

} // namespace jet::sql
