// core/schema.cpp — looking tables up in the declarations.
#include "core/schema.h"

#include "core/values.h"

namespace orvan {
namespace {

FieldDeclaration make(std::string name, jet::Type type, uint16_t width, std::string label) {
    FieldDeclaration field;
    field.name = std::move(name);
    field.type = type;
    field.width = width;
    field.label = std::move(label);
    return field;
}

} // namespace

FieldDeclaration textField(std::string name, uint16_t width, std::string label) {
    return make(std::move(name), jet::Type::Text, width, std::move(label));
}
FieldDeclaration memoField(std::string name, std::string label) {
    return make(std::move(name), jet::Type::Memo, 0, std::move(label));
}
FieldDeclaration longField(std::string name, std::string label) {
    return make(std::move(name), jet::Type::Long, 0, std::move(label));
}
FieldDeclaration yesNoField(std::string name, std::string label) {
    return make(std::move(name), jet::Type::Boolean, 0, std::move(label));
}
FieldDeclaration moneyField(std::string name, std::string label) {
    return make(std::move(name), jet::Type::Currency, 0, std::move(label));
}
FieldDeclaration doubleField(std::string name, std::string label) {
    return make(std::move(name), jet::Type::Double, 0, std::move(label));
}
FieldDeclaration dateField(std::string name, std::string label) {
    return make(std::move(name), jet::Type::Date, 0, std::move(label));
}

const FieldDeclaration* TableDeclaration::field(std::string_view fieldName) const {
    for (const FieldDeclaration& candidate : fields)
        if (jet::sameName(candidate.name, fieldName)) return &candidate;
    return nullptr;
}

const TableDeclaration* Schema::find(std::string_view table) const {
    for (const TableDeclaration& candidate : tables_)
        if (jet::sameName(candidate.name, table)) return &candidate;
    return nullptr;
}

const TableDeclaration& Schema::table(std::string_view table) const {
    if (const TableDeclaration* found = find(table)) return *found;
    jet::Error error(jet::Err::NoSuchTable, "Tablo tanımı bulunamadı.");
    throw error.inTable(table);
}

int Schema::width(std::string_view table, std::string_view field) const {
    const TableDeclaration* declaration = find(table);
    const FieldDeclaration* found = declaration ? declaration->field(field) : nullptr;
    return found ? found->width : 0;
}

QString Schema::label(std::string_view table, std::string_view field) const {
    const TableDeclaration* declaration = find(table);
    const FieldDeclaration* found = declaration ? declaration->field(field) : nullptr;
    return found ? fromUtf8(found->label) : QString();
}

} // namespace orvan
