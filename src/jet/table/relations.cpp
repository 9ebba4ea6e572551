// jet/table/relations.h: MSysRelationships.
#include "jet/table/relations.h"

#include "jet/table/catalog.h"
#include "jet/table/system_row.h"

#include <algorithm>

namespace jet {

namespace {

void addOnce(std::vector<std::string>& names, const std::string& name) {
    if (std::find(names.begin(), names.end(), name) == names.end()) names.push_back(name);
}

} // namespace

Relations::Relations(TableSource& source) : source_(&source) {
    Table rows(source, SystemPage::kRelationships);
    const size_t name = systemColumn(rows, "szRelationship"), child = systemColumn(rows, "szObject"),
                 childField = systemColumn(rows, "szColumn"),
                 parent = systemColumn(rows, "szReferencedObject"),
                 parentField = systemColumn(rows, "szReferencedColumn");
    Scan scan = rows.scan();
    std::string scratch;
    const auto text = [&](size_t column) {
        return scan.row().isNull(column) ? std::string() : std::string(scan.text(column, scratch));
    };
    while (scan.next())
        pairs_.push_back(
            {scan.id(), text(name), text(child), text(childField), text(parent), text(parentField)});
}

std::vector<std::string> Relations::of(std::string_view table) const {
    std::vector<std::string> names;
    for (const Pair& pair : pairs_)
        if (sameName(pair.childTable, table) || sameName(pair.parentTable, table))
            addOnce(names, pair.relation);
    return names;
}

std::vector<std::string> Relations::of(std::string_view table, std::string_view field) const {
    std::vector<std::string> names;
    for (const Pair& pair : pairs_) {
        const bool child = sameName(pair.childTable, table) && sameName(pair.childField, field);
        const bool parent = sameName(pair.parentTable, table) && sameName(pair.parentField, field);
        if (child || parent) addOnce(names, pair.relation);
    }
    return names;
}

void Relations::tableRenamed(std::string_view from, const std::string& to) {
    Table rows(*source_, SystemPage::kRelationships);
    for (Pair& pair : pairs_) {
        const bool child = sameName(pair.childTable, from), parent = sameName(pair.parentTable, from);
        if (!child && !parent) continue;
        SystemRow row(rows);
        if (child) row.set("szObject", pair.childTable = to);
        if (parent) row.set("szReferencedObject", pair.parentTable = to);
        row.update(pair.row);
    }
}

void Relations::fieldRenamed(std::string_view table, std::string_view from, const std::string& to) {
    Table rows(*source_, SystemPage::kRelationships);
    for (Pair& pair : pairs_) {
        const bool child = sameName(pair.childTable, table) && sameName(pair.childField, from);
        const bool parent = sameName(pair.parentTable, table) && sameName(pair.parentField, from);
        if (!child && !parent) continue;
        SystemRow row(rows);
        if (child) row.set("szColumn", pair.childField = to);
        if (parent) row.set("szReferencedColumn", pair.parentField = to);
        row.update(pair.row);
    }
}

} // namespace jet
