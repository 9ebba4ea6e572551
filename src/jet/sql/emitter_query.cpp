// jet/sql/emitter_query.cpp — SELECT lists, sources, TOP with ties, UNION; see emitter.h.
#include "jet/sql/emitter.h"

#include "jet/sql/function_support.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace jet::sql {
namespace {

std::string joined(const std::vector<std::string>& parts, const char* between) {
    std::string text;
    for (const std::string& part : parts)
        text += (text.empty() ? "" : between) + part;
    return text;
}

// Jet sorts to find what is equal, so DISTINCT and GROUP BY give their rows in order; screens rely on it.
std::vector<std::string> impliedOrder(const Select& select, const std::vector<std::string>& groups,
                                      size_t columns) {
    if (!select.distinct) return groups;
    std::vector<std::string> order;
    for (size_t i = 1; i <= columns; ++i)
        order.push_back(std::to_string(i));
    return order;
}

// ORDER BY 2; 0 when the number is no whole one.
size_t ordinal(const Expr& number) {
    size_t position = 0;
    const char* end = number.text.data() + number.text.size();
    const auto result = std::from_chars(number.text.data(), end, position);
    return result.ec == std::errc() && result.ptr == end ? position : 0;
}

bool containsRightJoin(const Source& source) {
    if (!source.left) return false;
    return source.join == JoinKind::Right || containsRightJoin(*source.left) ||
           containsRightJoin(*source.right);
}

} // namespace

EmittedQuery Emitter::query(const Query& query) { return emitQuery(query, nullptr, true); }

EmittedQuery Emitter::emitQuery(const Query& query, Scope* parent, bool outermost) {
    EmittedQuery result;
    result.sql = query.parts.size() == 1
                     ? emitSelect(query.parts.front(), query.orderBy, parent, outermost, result)
                     : emitUnion(query, parent, outermost, result);
    nameColumns(result.columns);
    return result;
}

// Expressions without a name are Expr1000, Expr1001, …; equal names of two tables are told apart as
// table.field.
void Emitter::nameColumns(std::vector<OutColumn>& columns) const {
    const std::vector<OutColumn> before = columns;
    for (size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name.empty()) columns[i].name = "Expr" + std::to_string(1000 + i);
        if (before[i].name.empty() || before[i].table.empty()) continue;
        for (size_t k = 0; k < columns.size(); ++k)
            if (k != i && sameName(before[k].name, before[i].name) && !before[k].table.empty() &&
                !sameName(before[k].table, before[i].table)) {
                columns[i].name = before[i].table + "." + before[i].name;
                break;
            }
    }
}

std::string Emitter::emitSelect(const Select& select, const std::vector<OrderItem>& orderBy, Scope* parent,
                                bool outermost, EmittedQuery& result) {
    if (!select.into.empty() && !outermost) fail(select.at, "INTO yalnız en dıştaki SELECT içinde olur");
    Scope scope;
    scope.parent = parent;
    const std::string from = bindSources(select.from, scope);
    scope.select = &select;
    scope.aggregates = true;
    std::vector<std::string> items = emitItems(select, scope, result.columns);
    std::string tail = from.empty() ? std::string() : " FROM " + from;
    scope.aggregates = false;
    tail += whereClause(select.where, scope);
    std::vector<std::string> groups;
    for (const ExprPtr& group : select.groupBy)
        groups.push_back(collated(expression(*group, scope)));
    if (!groups.empty()) tail += " GROUP BY " + joined(groups, ", ");
    scope.aggregates = true;
    if (select.having) tail += " HAVING " + condition(expression(*select.having, scope));

    const std::vector<OrderKey> keys = orderKeys(orderBy, scope, items, result.columns);
    std::vector<std::string> named, order;
    for (size_t i = 0; i < items.size(); ++i)
        named.push_back(items[i] + " AS c" + std::to_string(i));
    const bool keysNeeded = select.top && !keys.empty();
    for (size_t i = 0; i < keys.size(); ++i) {
        const bool hidden = keys[i].column == kHidden;
        if (hidden && select.distinct)
            fail(orderBy[i].value->at, "DISTINCT ile birlikte ORDER BY yalnız seçilen alanlara göre olur");
        order.push_back(keys[i].sql + (keys[i].descending ? " DESC" : ""));
        if (!keysNeeded) continue;
        if (hidden) named.push_back(keys[i].sql + " AS k" + std::to_string(i));
        result.ties.push_back(hidden ? named.size() - 1 : keys[i].column);
    }
    const std::string core =
        std::string(select.distinct ? "SELECT DISTINCT " : "SELECT ") + joined(named, ", ") + tail;
    if (order.empty() && outermost) order = impliedOrder(select, groups, items.size());
    const std::string ordered = core + (order.empty() ? "" : " ORDER BY " + joined(order, ", "));
    if (!select.top) return ordered;
    if (outermost) {
        result.top = select.top;
        result.topPercent = select.topPercent;
        return ordered;
    }
    result.ties.clear();
    return ranked(select, core, keys, result.columns);
}

// TOP inside another query: rank() counts rows that tie as one place, so ties stay in.
std::string Emitter::ranked(const Select& select, const std::string& inner, const std::vector<OrderKey>& keys,
                            const std::vector<OutColumn>& columns) const {
    std::string outputs, order;
    for (size_t i = 0; i < columns.size(); ++i)
        outputs += (i ? ", c" : "c") + std::to_string(i);
    for (size_t i = 0; i < keys.size(); ++i) {
        const bool hidden = keys[i].column == kHidden;
        order += (i ? ", " : "") + (hidden ? "k" + std::to_string(i) : "c" + std::to_string(keys[i].column));
        if (keys[i].descending) order += " DESC";
    }
    const std::string rank = keys.empty() ? "row_number() OVER ()" : "rank() OVER (ORDER BY " + order + ")";
    std::string most = realLiteral(std::floor(*select.top));
    if (select.topPercent) most = "(all_rows * " + realLiteral(*select.top) + " / 100.0 + 0.999999)";
    const std::string all = select.topPercent ? ", count(*) OVER () AS all_rows" : "";
    const std::string limit = select.topPercent ? "CAST(" + most + " AS INTEGER)" : most;
    return "SELECT " + outputs + " FROM (SELECT *, " + rank + " AS place" + all + " FROM (" + inner +
           ")) WHERE place <= " + limit + (order.empty() ? "" : " ORDER BY " + order);
}

std::string Emitter::emitUnion(const Query& query, Scope* parent, bool, EmittedQuery& result) {
    std::string sql;
    const std::vector<OrderItem> none;
    for (size_t i = 0; i < query.parts.size(); ++i) {
        EmittedQuery part;
        const bool top = query.parts[i].top.has_value();
        const std::string text = emitSelect(query.parts[i], none, parent, false, part);
        if (i > 0) sql += query.unionAll[i - 1] ? " UNION ALL " : " UNION ";
        sql += top ? "SELECT * FROM (" + text + ")" : text;
        if (i == 0) {
            result.columns = std::move(part.columns);
            continue;
        }
        if (part.columns.size() != result.columns.size())
            fail(query.parts[i].at, "UNION ile birleşen sorgular aynı sayıda alan vermeli");
        for (size_t k = 0; k < part.columns.size(); ++k) {
            OutColumn& column = result.columns[k];
            column.type = unify(column.type, part.columns[k].type);
            column.size = std::max(column.size, part.columns[k].size);
            column.plain &= part.columns[k].plain;
            column.parameter = 0;
        }
    }
    std::vector<std::string> order;
    for (const OrderItem& item : query.orderBy) {
        const Expr& key = *item.value;
        size_t position = kHidden;
        if (key.kind == ExprKind::Number)
            position = ordinal(key) - 1;
        else if (key.kind == ExprKind::Name)
            for (size_t k = 0; k < result.columns.size() && position == kHidden; ++k)
                if (sameName(result.columns[k].name, key.text)) position = k;
        if (position >= result.columns.size()) fail(key.at, "UNION sonucunda sıralanacak böyle bir alan yok");
        order.push_back(std::to_string(position + 1) + (item.descending ? " DESC" : ""));
    }
    return sql + (order.empty() ? "" : " ORDER BY " + joined(order, ", "));
}

std::vector<std::string> Emitter::emitItems(const Select& select, Scope& scope,
                                            std::vector<OutColumn>& columns) {
    std::vector<std::string> items;
    for (const OutputItem& item : select.items) {
        if (item.value) {
            addOutput(expression(*item.value, scope), item.alias, items, columns);
            continue;
        }
        bool found = false;
        for (const BoundSource& source : scope.sources) {
            if (!item.starOf.empty() && !sameName(source.name, item.starOf)) continue;
            found = true;
            for (size_t i = 0; i < source.columns.size(); ++i)
                addOutput(fieldOf(source, i), {}, items, columns);
        }
        if (!found)
            fail(item.at, item.starOf.empty() ? "“*” için FROM gerekir"
                                              : "“" + item.starOf + "” adında bir tablo yok");
    }
    return items;
}

void Emitter::addOutput(const Typed& typed, const std::string& alias, std::vector<std::string>& items,
                        std::vector<OutColumn>& columns) {
    items.push_back(collated(typed));
    OutColumn column;
    column.name = alias.empty() ? typed.name : alias;
    if (alias.empty()) column.table = typed.table;
    column.type = typed.type;
    column.size = typed.size;
    column.plain = typed.plain;
    column.parameter = typed.parameter;
    column.collation = typed.collation;
    const Kind kind = kindOf(typed);
    if (column.collation.empty() && (kind == Kind::Text || kind == Kind::Unknown))
        column.collation = collation_;
    columns.push_back(std::move(column));
}

std::vector<Emitter::OrderKey> Emitter::orderKeys(const std::vector<OrderItem>& orderBy, Scope& scope,
                                                  const std::vector<std::string>& items,
                                                  const std::vector<OutColumn>& columns) {
    std::vector<OrderKey> keys;
    for (const OrderItem& item : orderBy) {
        OrderKey key{{}, kHidden, item.descending};
        if (item.value->kind == ExprKind::Number) {
            const size_t position = ordinal(*item.value);
            if (position < 1 || position > columns.size())
                fail(item.value->at, "ORDER BY içindeki sıra numarası seçilen alanların dışında");
            key.column = position - 1;
            key.sql = items[key.column];
            countRepeated(key.sql, item.value->at);
        } else {
            key.sql = collated(expression(*item.value, scope));
            const auto same = std::find(items.begin(), items.end(), key.sql);
            if (same != items.end()) key.column = static_cast<size_t>(same - items.begin());
        }
        keys.push_back(std::move(key));
    }
    return keys;
}

std::string Emitter::whereClause(const ExprPtr& where, Scope& scope) {
    return where ? " WHERE " + condition(expression(*where, scope)) : std::string();
}

// --- sources

std::string Emitter::bindSources(const std::vector<SourcePtr>& from, Scope& scope) {
    std::vector<std::string> parts;
    for (const SourcePtr& source : from) {
        const std::string text = bindSource(*source, scope);
        // After a comma SQLite would join everything before it, too.
        parts.push_back(!parts.empty() && containsRightJoin(*source) ? "(" + text + ")" : text);
    }
    return joined(parts, ", ");
}

std::string Emitter::bindSource(const Source& source, Scope& scope) {
    if (!source.left) return bindTable(source, scope);
    const std::string left = bindSource(*source.left, scope), right = bindSource(*source.right, scope);
    const std::string on = condition(expression(*source.on, scope));
    const auto operand = [](const Source& side, const std::string& text) {
        return side.left ? "(" + text + ")" : text;
    };
    // A right join is the left join of the swapped tables; the order of the columns is ours anyway.
    if (source.join == JoinKind::Right)
        return right + " LEFT JOIN " + operand(*source.left, left) + " ON " + on;
    return left + (source.join == JoinKind::Left ? " LEFT JOIN " : " JOIN ") + operand(*source.right, right) +
           " ON " + on;
}

std::string Emitter::bindTable(const Source& source, Scope& scope) {
    BoundSource bound;
    bound.name = source.alias.empty() ? source.table : source.alias;
    bound.id = "t" + std::to_string(++lastSource_);
    std::string text;
    if (source.query) {
        EmittedQuery inner = emitQuery(*source.query, scope.parent, false);
        bound.columns = std::move(inner.columns);
        for (OutColumn& column : bound.columns)
            column.parameter = 0;
        text = "(" + inner.sql + ") AS " + bound.id;
    } else {
        RegisteredTable& table = useTable(source.table, source.at);
        bound.table = &table;
        for (const FieldDef& field : table.def.fields) {
            OutColumn column;
            column.name = field.name;
            column.type = field.type;
            column.size = field.size;
            column.plain = true;
            if (field.isText()) column.collation = collationName(field.sortOrder);
            bound.columns.push_back(std::move(column));
        }
        text = table.virtualName + " AS " + bound.id;
    }
    addSource(std::move(bound), source.at, scope);
    return text;
}

RegisteredTable& Emitter::useTable(const std::string& name, size_t at) {
    try {
        RegisteredTable& table = tables_.use(name);
        if (std::find(used_.begin(), used_.end(), &table) == used_.end()) used_.push_back(&table);
        return table;
    } catch (const Error& error) {
        if (error.number() != Err::NoSuchTable) throw;
        fail(at, "“" + name + "” adında bir tablo yok", Err::NoSuchTable);
    }
}

void Emitter::addSource(BoundSource source, size_t at, Scope& scope) {
    for (const BoundSource& other : scope.sources)
        if (!source.name.empty() && sameName(other.name, source.name))
            fail(at, "“" + source.name + "” FROM içinde iki kez var; takma ad verin");
    scope.sources.push_back(std::move(source));
}

} // namespace jet::sql
