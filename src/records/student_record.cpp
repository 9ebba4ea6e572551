// records/student_record.cpp — see student_record.h.
#include "records/student_record.h"

#include "core/clock.h"
#include "core/turkish_text.h"
#include "core/values.h"
#include "records/dependent_tables.h"
#include "records/trimmed_rows.h"
#include "reference/field_texts.h"

#include <cassert>

namespace orvan {
namespace {

constexpr auto kNumberIndex = "indNumara";
constexpr auto kNumber = "Ogr_Numarasi";
constexpr auto kName = "Ogr_Adi";
constexpr auto kSurname = "Ogr_Soyadi";

// Lists test some fields for the empty text and some numbers for 0, so an emptied field takes its default
// rather than null.
jet::Value storedValue(const FieldDeclaration& field, const QString& text) {
    if (!text.isEmpty()) return fieldValue(field, text);
    if (field.defaultValue == "\"\"") return jet::Value("");
    if (field.defaultValue == "0") return jet::Value(0);
    return fieldValue(field, text);
}

StudentName nameIn(const FieldTexts& values) {
    return {values.at(QLatin1String(kName)), values.at(QLatin1String(kSurname))};
}

} // namespace

QString StudentRecord::text(const char* field) const {
    const auto found = values.find(QLatin1String(field));
    return found == values.end() ? QString() : found->second;
}

QString StudentRecord::fullName() const {
    return trimBlanks(text(kName) + QLatin1Char(' ') + text(kSurname));
}

bool isDateField(const QString& studentField) {
    return studentField.contains(QLatin1String("tarih"), Qt::CaseInsensitive);
}

StudentRecords::StudentRecords(DatabaseSet& databases) : databases_(databases) {}

const TableDeclaration& StudentRecords::table() const { return databases_.schema().table(kStudentTable); }

QString StudentRecords::label(const QString& field) const {
    return databases_.schema().label(kStudentTable, utf8(field));
}

QString StudentRecords::problem(const QString& field, const QString& text) const {
    const FieldDeclaration* declared = table().field(utf8(field));
    assert(declared);
    if (isDateField(field) && !text.isEmpty() && !dateFromText(text))
        return QStringLiteral("%1 bir tarih olmalı; “%2” tarih değil.").arg(label(field), text);
    return fieldProblem(*declared, text);
}

StudentRecord StudentRecords::read(const std::vector<jet::Value>& row) {
    const jet::TableDef& def = level().tableDef(kStudentTable);
    StudentRecord record;
    for (const FieldDeclaration& field : table().fields) {
        const auto place = def.findField(field.name);
        record.values[fromUtf8(field.name)] = place ? fieldText(row[*place]) : QString();
        if (place && field.name == kNumber) record.storedNumber = toText(row[*place]);
    }
    return record;
}

std::optional<StudentRecord> StudentRecords::first(const std::vector<jet::RowId>& rows) {
    jet::Table students = level().openTable(kStudentTable);
    for (const jet::RowId id : rows) {
        try {
            StudentRecord record = read(students.read(id));
            record.id = id;
            return record;
        } catch (const jet::Error& error) {
            if (error.number() != jet::Err::NoCurrentRecord) throw;
        }
    }
    return std::nullopt;
}

std::optional<StudentRecord> StudentRecords::byNumber(const QString& number) {
    if (trimBlanks(number).isEmpty()) return std::nullopt;
    return first(rowsByText(level(), kStudentTable, kNumber, number));
}

std::optional<StudentRecord> StudentRecords::byIdentityNumber(const QString& identityNo) {
    if (trimBlanks(identityNo).isEmpty()) return std::nullopt;
    return first(rowsByText(level(), kStudentTable, "Ogr_Mernis", identityNo));
}

std::optional<StudentRecord> StudentRecords::byRegistrationNo(int registrationNo) {
    return first(rowsByNumber(level(), kStudentTable, "Ogr_Kayit_No", registrationNo));
}

std::optional<StudentRecord> StudentRecords::previous(const StudentRecord& from) {
    return beside(from, Side::Below);
}

std::optional<StudentRecord> StudentRecords::next(const StudentRecord& from) {
    return beside(from, Side::Above);
}

// One step along the index of the numbers; rows without a number are passed over.
std::optional<StudentRecord> StudentRecords::beside(const StudentRecord& from, Side side) {
    jet::Table students = level().openTable(kStudentTable);
    const jet::ReadScope scope(level().pages());
    const QString number = from.isNew() ? from.number() : from.storedNumber;
    if (!students.def().findIndex(kNumberIndex)) return besideWithoutIndex(number, side);
    jet::KeyRange range;
    range.backwards = side == Side::Below;
    if (!number.isEmpty()) {
        (side == Side::Below ? range.upper : range.lower) = {textValue(number)};
        range.lowerInclusive = range.upperInclusive = false;
    }
    const auto place = students.def().findField(kNumber);
    for (jet::Scan scan = students.scan(kNumberIndex, range); scan.next();)
        if (!trimmedText(scan.value(*place)).isEmpty()) return first({scan.id()});
    return std::nullopt;
}

// An old file whose rows stood against the index.
std::optional<StudentRecord> StudentRecords::besideWithoutIndex(const QString& number, Side side) {
    jet::SqlSession& sql = databases_.level().sql();
    const auto nearest = [&](const char* open, const char* bounded) {
        return number.isEmpty() ? sql.query(open) : sql.query(bounded, Parameters{number});
    };
    const auto rows = side == Side::Below
                          ? nearest("SELECT MAX(Ogr_Numarasi) FROM OgrenciBilgisi",
                                    "SELECT MAX(Ogr_Numarasi) FROM OgrenciBilgisi WHERE Ogr_Numarasi < ?")
                          : nearest("SELECT MIN(Ogr_Numarasi) FROM OgrenciBilgisi WHERE Ogr_Numarasi > ''",
                                    "SELECT MIN(Ogr_Numarasi) FROM OgrenciBilgisi WHERE Ogr_Numarasi > ?");
    return rows.empty() ? std::nullopt : byNumber(toText(rows.at(0, size_t{0})));
}

std::optional<StudentRecord> StudentRecords::now(const StudentRecord& record) {
    assert(record.id);
    auto here = first({*record.id});
    if (here && here->number() == record.number()) return here;
    for (const jet::RowId id : rowsByText(level(), kStudentTable, kNumber, record.number()))
        if (auto moved = first({id}); moved && moved->text("DersID") == record.text("DersID")) return moved;
    // his place in the file, under another number: still he while registration number and name agree
    const bool renumbered = here && here->text("Ogr_Kayit_No") == record.text("Ogr_Kayit_No") &&
                            sameTurkish(here->fullName(), record.fullName());
    return renumbered ? here : std::nullopt;
}

void StudentRecords::write(StudentRecord& record, const FieldTexts& wanted) {
    jet::Table students = level().openTable(kStudentTable);
    const FieldTexts before = record.values;
    const FieldTexts changed = changedTexts(before, wanted);
    if (record.isNew()) {
        students.addNew();
        for (const FieldDeclaration& field : table().fields)
            if (const auto text = wanted.find(fromUtf8(field.name)); text != wanted.end())
                students.set(field.name, storedValue(field, text->second));
        students.update();
        record.id = students.lastModified();
    } else {
        std::vector<NewValue> values;
        for (const auto& [name, text] : changed)
            values.push_back({utf8(name), storedValue(*table().field(utf8(name)), text)});
        if (!values.empty()) changeRow(students, *record.id, values);
        FieldTexts after = before;
        for (const auto& [name, text] : changed)
            after[name] = text;
        if (nameIn(before) != nameIn(after))
            carryName(level(), record.number(), nameIn(before), nameIn(after));
    }
    const jet::RowId id = *record.id;
    record = read(students.read(id));
    record.id = id;
}

size_t StudentRecords::remove(const QString& number, const QString& name, const QString& surname) {
    constexpr DependentTable kHimself{kStudentTable, kNumber, kName, kSurname};
    const StudentName who{trimBlanks(name), trimBlanks(surname)};
    const auto himself = dependentRows(level(), kHimself, number, &who);
    if (himself.empty()) return 0;
    const auto removeFrom = [&](const DependentTable& about, const std::vector<jet::RowId>& rows) {
        if (rows.empty()) return;
        jet::Table dependent = level().openTable(about.table);
        for (const jet::RowId row : rows)
            dependent.remove(row);
    };
    for (const char* table :
         {"Notlar", "NotOrtalama", "Sigorta_Devamsizlik", "Ogrenci_Isyerleri", "Devam", "BitirmeSinavlari"})
        for (const DependentTable& about : namedTables())
            if (std::string_view(about.table) == table)
                removeFrom(about, dependentRows(level(), about, number, &who));
    // what goes by the number alone must not wait for the next student who is given it
    if (rowsByText(level(), kStudentTable, kNumber, number).size() == himself.size())
        for (const DependentTable& about : dayTables())
            if (!about.name) removeFrom(about, dependentRows(level(), about, number));
    removeFrom(kHimself, himself);
    return himself.size();
}

} // namespace orvan
