// jet/copy/table_plan.h
#include "jet/copy/table_plan.h"

#include "jet/error.h"
#include "jet/format/layout.h"
#include "jet/format/row_codec.h"
#include "jet/index/key.h"
#include "jet/table/structure_rules.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <set>

namespace jet {

namespace {

[[noreturn]] void refuse(const std::string& why) { throw Error(Err::InvalidArgument, why); }

void checkNames(const TableDef& def) {
    const auto usable = [](const std::string& name) {
        const size_t length = utf16Length(name);
        return length >= 1 && length <= kMaxName;
    };
    if (def.fields.empty()) refuse("Tablonun hiç alanı yok.");
    if (def.fields.size() > kMaxFields) throw Error(Err::TooManyFields, "Tablonun 255'ten çok alanı var.");
    std::set<std::string> seen;
    for (const FieldDef& field : def.fields)
        if (!usable(field.name) || !seen.insert(field.name).second)
            refuse("“" + field.name + "” alanının adı kullanılamaz.");
    seen.clear();
    for (const IndexDef& index : def.indexes) {
        if (!usable(index.name) || !seen.insert(index.name).second)
            refuse("“" + index.name + "” dizininin adı kullanılamaz.");
        if (index.fields.empty() || index.fields.size() > kMaxIndexFields)
            refuse("“" + index.name + "” dizininde en az 1, en çok 10 alan olabilir.");
        for (const IndexField& part : index.fields)
            if (part.field >= def.fields.size())
                refuse("“" + index.name + "” dizini tabloda olmayan bir alanı gösteriyor.");
    }
}

// 0, 1, 2 … each once?
bool isWhole(std::vector<size_t> numbers) {
    std::sort(numbers.begin(), numbers.end());
    for (size_t i = 0; i < numbers.size(); ++i)
        if (numbers[i] != i) return false;
    return true;
}

bool hasNoHoles(const TableDef& def) {
    std::vector<size_t> numbers, variable;
    std::vector<std::pair<size_t, size_t>> fixed; // offset, size
    for (const FieldDef& field : def.fields) {
        numbers.push_back(field.columnNumber);
        if (!field.fixedLength)
            variable.push_back(field.variableIndex);
        else if (fixedSize(field) != 0)
            fixed.emplace_back(field.fixedOffset, fixedSize(field));
    }
    std::sort(fixed.begin(), fixed.end());
    size_t end = 0;
    for (const auto& [offset, size] : fixed) {
        if (offset != end) return false;
        end += size;
    }
    return numbers.size() == def.maxColumns && variable.size() == def.variableColumns && isWhole(numbers) &&
           isWhole(variable);
}

std::vector<FieldDef*> byNumber(TableDef& def) {
    std::vector<FieldDef*> fields;
    for (FieldDef& field : def.fields)
        fields.push_back(&field);
    std::stable_sort(fields.begin(), fields.end(),
                     [](const FieldDef* a, const FieldDef* b) { return a->columnNumber < b->columnNumber; });
    return fields;
}

void placeFields(TableDef& def) {
    def.maxColumns = def.variableColumns = 0;
    size_t end = 0;
    for (FieldDef* field : byNumber(def)) {
        field->columnNumber = def.maxColumns++;
        field->variableIndex = def.variableColumns;
        field->fixedOffset = static_cast<uint16_t>(end);
        end += fixedSize(*field);
        if (!field->fixedLength) ++def.variableColumns;
        if (end > kJet4.maxRowSize)
            throw Error(Err::RecordTooLarge, "Sabit uzunluktaki alanlar bir kayda sığmıyor.");
    }
}

// The order of display is told by ordinal and number; in the system's tables by the number alone.
void keepOrder(TableDef& def) {
    const bool kept =
        std::is_sorted(def.fields.begin(), def.fields.end(), [](const FieldDef& a, const FieldDef& b) {
            return std::pair(a.ordinal, a.columnNumber) < std::pair(b.ordinal, b.columnNumber);
        });
    for (size_t i = 0; !kept && i < def.fields.size(); ++i)
        def.fields[i].ordinal = static_cast<uint16_t>(i);
}

void numberTrees(TableDef& def) {
    std::map<uint32_t, uint32_t> numbers; // old, new
    for (const IndexDef& index : def.indexes)
        numbers.emplace(index.realNumber, 0);
    std::vector<uint32_t> rowCounts, keyCounts;
    for (auto& [old, number] : numbers) {
        number = static_cast<uint32_t>(rowCounts.size());
        rowCounts.push_back(old < def.storedRowCounts.size() ? def.storedRowCounts[old] : 0);
        keyCounts.push_back(old < def.uniqueEntryCounts.size() ? def.uniqueEntryCounts[old] : 0);
    }
    for (IndexDef& index : def.indexes)
        index.realNumber = numbers[index.realNumber];
    def.realIndexCount = static_cast<uint32_t>(rowCounts.size());
    def.storedRowCounts = std::move(rowCounts);
    def.uniqueEntryCounts = std::move(keyCounts);
}

} // namespace

void planTable(TableDef& def) {
    checkNames(def);
    if (!hasNoHoles(def)) placeFields(def);
    keepOrder(def);
    numberTrees(def);
    def.unsupported.clear(); // a tree without a name is not copied
    def.rowCount = 0;
    for (IndexDef& index : def.indexes)
        index.readOnlyReason = keyObstacle(kJet4, def, index);
}

void dropIndexes(TableDef& def, const std::vector<bool>& drop) {
    std::vector<IndexDef> kept;
    for (size_t i = 0; i < def.indexes.size(); ++i)
        if (!drop[i]) kept.push_back(std::move(def.indexes[i]));
    def.indexes = std::move(kept);
    numberTrees(def);
}

} // namespace jet
