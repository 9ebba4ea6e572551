#include "tools/jetdb/schema.h"

namespace jetdb {
namespace {

std::string bracketed(const std::string& name) { return "[" + name + "]"; }

std::string typeText(const jet::FieldDef& field) {
    using jet::Type;
    switch (field.type) {
    case Type::Boolean: return "YESNO";
    case Type::Byte: return "BYTE";
    case Type::Integer: return "SHORT";
    case Type::Long: return field.autoNumber ? "COUNTER" : "LONG";
    case Type::Currency: return "CURRENCY";
    case Type::Single: return "SINGLE";
    case Type::Double: return "DOUBLE";
    case Type::Date: return "DATETIME";
    case Type::Binary: return "BINARY(" + std::to_string(field.size) + ")";
    case Type::Text: return "TEXT(" + std::to_string(field.size) + ")";
    case Type::Ole: return "OLEOBJECT";
    case Type::Memo: return "MEMO";
    case Type::Guid: return "GUID";
    case Type::Numeric:
        return "DECIMAL(" + std::to_string(field.precision) + "," + std::to_string(field.scale) + ")";
    }
    return "UNKNOWN"; // a type byte of its own, as one system table of the original has
}

std::string fieldText(const jet::FieldDef& field) {
    std::string text = bracketed(field.name) + " " + typeText(field);
    if (field.required) text += " NOT NULL";
    if (!field.defaultValue.empty()) text += " DEFAULT " + field.defaultValue;
    return text;
}

std::string indexText(const jet::TableDef& def, const jet::IndexDef& index) {
    std::string text = index.unique || index.primary ? "CREATE UNIQUE INDEX " : "CREATE INDEX ";
    text += bracketed(index.name) + " ON " + bracketed(def.name) + " (";
    for (size_t i = 0; i < index.fields.size(); ++i) {
        if (i > 0) text += ", ";
        text += bracketed(def.fields[index.fields[i].field].name);
        if (index.fields[i].descending) text += " DESC";
    }
    text += ")";
    if (index.primary)
        text += " WITH PRIMARY";
    else if (index.required)
        text += " WITH DISALLOW NULL";
    else if (index.ignoreNulls)
        text += " WITH IGNORE NULL";
    return text + ";\n";
}

} // namespace

std::string schemaText(const jet::TableDef& def) {
    std::string text = "CREATE TABLE " + bracketed(def.name) + " (";
    for (size_t i = 0; i < def.fields.size(); ++i)
        text += (i > 0 ? ",\n  " : "\n  ") + fieldText(def.fields[i]);
    text += "\n);\n";
    for (const jet::IndexDef& index : def.indexes)
        if (!index.foreign) text += indexText(def, index);
    return text;
}

} // namespace jetdb
