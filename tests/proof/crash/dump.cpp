#include "dump.h"

#include <sstream>

namespace proof {

namespace {

enum class Places { Shown, Hidden }; // where a row stands

std::string structureOf(const jet::TableDef& def) {
    std::ostringstream out;
    for (const jet::FieldDef& field : def.fields)
        out << "  field " << field.name << " type " << static_cast<int>(field.type) << " size " << field.size
            << " number " << field.columnNumber << " required " << field.required << " empty "
            << field.allowZeroLength << " auto " << field.autoNumber << " default " << field.defaultValue
            << "\n";
    for (const jet::IndexDef& index : def.indexes) {
        out << "  index " << index.name << " primary " << index.primary << " unique " << index.unique
            << " required " << index.required << " ignore " << index.ignoreNulls;
        for (const jet::IndexField& part : index.fields)
            out << " " << def.fields[part.field].name << (part.descending ? "-" : "+");
        out << "\n";
    }
    return out.str();
}

void appendRows(std::string& out, jet::Database& database, const std::string& name, Places places) {
    jet::Table table = database.openTable(name);
    const jet::TableDef def = table.def();
    out += "  rows " + std::to_string(table.rowCount()) + "\n";
    for (jet::Scan scan = table.scan(); scan.next();) {
        out += "  " + (places == Places::Shown ? std::to_string(scan.id().packed()) : std::string());
        for (size_t i = 0; i < def.fields.size(); ++i) {
            if (def.system && def.fields[i].type == jet::Type::Date) continue;
            const jet::Value value = scan.value(i);
            out += value.isNull() ? std::string("|~") : "|" + value.toText();
        }
        out += "\n";
    }
}

std::string dump(jet::Database& database, jet::TableKinds kinds, Places places) {
    const jet::ReadScope read(database.pages());
    std::string out = "password " + jet::readHeader(database.pages().read(0).bytes()).password + "\n";
    for (const std::string& name : database.tableNames(kinds)) {
        out += "table " + name + "\n" + structureOf(database.tableDef(name));
        appendRows(out, database, name, places);
    }
    return out;
}

} // namespace

std::string dumpOf(jet::Database& database) { return dump(database, jet::TableKinds::All, Places::Shown); }
std::string contentOf(jet::Database& database) {
    return dump(database, jet::TableKinds::User, Places::Hidden);
}

std::string firstDifference(const std::string& expected, const std::string& found) {
    std::istringstream a(expected), b(found);
    std::string lineA, lineB, table;
    for (;;) {
        const bool moreA = static_cast<bool>(std::getline(a, lineA));
        const bool moreB = static_cast<bool>(std::getline(b, lineB));
        if (!moreA && !moreB) return "equal";
        if (!moreA) lineA = "(end)";
        if (!moreB) lineB = "(end)";
        if (lineA != lineB)
            return table + ": expected " + lineA.substr(0, 160) + ", found " + lineB.substr(0, 160);
        if (lineA.starts_with("table ")) table = lineA;
    }
}

} // namespace proof
