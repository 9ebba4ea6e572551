// jet/database.h: the fields of a table — add, drop, rename, alter, order.
#include "jet/format/layout.h"
#include "jet/format/row_codec.h"
#include "jet/table/database_impl.h"
#include "jet/table/relations.h"
#include "jet/table/structure_rules.h"
#include "jet/table/table.h"
#include "jet/table/table_change.h"
#include "jet/table/table_storage.h"

#include <algorithm>

namespace jet {

namespace {

std::vector<RebuiltField> sameFields(const TableDef& def) {
    std::vector<RebuiltField> fields;
    for (size_t i = 0; i < def.fields.size(); ++i)
        fields.push_back({def.fields[i], i});
    return fields;
}

void refuseRelatedField(OpenDatabase& db, std::string_view table, std::string_view field, const char* what) {
    const auto relations = Relations(db).of(table, field);
    if (relations.empty()) return;
    throw Error(Err::InvalidArgument, "“" + std::string(field) + "” alanı " + what + ": “" +
                                          relations.front() + "” ilişkisinde kullanılıyor.");
}

// Every stored value must fit the narrower field.
void requireFits(OpenDatabase& db, const TableDef& def, size_t position, const FieldDef& wanted) {
    Table table(db, def.page);
    Scan scan = table.scan();
    std::string scratch;
    while (scan.next()) {
        if (scan.row().isNull(position)) continue;
        const size_t size = wanted.type == Type::Text ? utf16Length(scan.text(position, scratch))
                                                      : scan.row().raw(position).size();
        if (size > wanted.size)
            throw Error(Err::FieldTooLong, "“" + wanted.name + "” alanı " + std::to_string(wanted.size) +
                                               " genişliğe daraltılamaz: daha uzun değerler var.");
    }
}

// A field that becomes an autonumber goes on after its highest value; it must have one in every row.
uint32_t highestNumber(OpenDatabase& db, const TableDef& def, size_t position) {
    Table table(db, def.page);
    Scan scan = table.scan();
    int32_t highest = 0;
    while (scan.next()) {
        const Value value = scan.value(position);
        if (value.isNull())
            throw Error(Err::InvalidArgument, "“" + def.fields[position].name +
                                                  "” alanı otomatik sayı yapılamaz: boş değerler var.");
        highest = std::max(highest, static_cast<int32_t>(value.toInt()));
    }
    return static_cast<uint32_t>(highest);
}

// What stays of the old field (name, place) and what is wanted of the new one.
FieldDef mergeField(const FieldDef& old, const FieldDef& wanted) {
    FieldDef field = old;
    field.type = wanted.type;
    field.size = wanted.size;
    field.required = wanted.required;
    field.allowZeroLength = wanted.allowZeroLength;
    field.autoNumber = wanted.autoNumber;
    field.compressed = wanted.compressed;
    field.defaultValue = wanted.defaultValue;
    field.precision = wanted.precision;
    field.scale = wanted.scale;
    const SortOrder sortOrder = old.sortOrder;
    completeField(field, sortOrder);
    return field;
}

// Do the rows stay as they are when `old` becomes `wanted`?
bool sameStorage(const FieldDef& old, const FieldDef& wanted) {
    if (old.type != wanted.type) return false;
    if (old.type == Type::Numeric) return old.precision == wanted.precision && old.scale == wanted.scale;
    return old.fixedLength == wanted.fixedLength || old.size == wanted.size;
}

// A field of the same storage keeps its place, and a fixed-length text stays one.
void keepPlace(const FieldDef& old, FieldDef& field) {
    field.fixedLength = old.fixedLength;
    field.flags =
        static_cast<uint8_t>((field.flags & ~ColumnFlag::kFixed) | (old.flags & ColumnFlag::kFixed));
}

void requireIndexable(const TableDef& def, size_t position, const FieldDef& wanted) {
    TableDef changed = def;
    changed.fields[position] = wanted;
    for (IndexDef index : def.indexes) {
        const bool uses = std::any_of(index.fields.begin(), index.fields.end(),
                                      [&](const IndexField& part) { return part.field == position; });
        if (!uses) continue;
        if (index.foreign)
            throw Error(Err::InvalidArgument,
                        "“" + wanted.name + "” alanının türü değiştirilemez: bir ilişkide kullanılıyor.");
        TableDef alone = changed;
        alone.indexes.clear();
        checkIndex(alone, index);
    }
}

} // namespace

void Database::addField(std::string_view table, const FieldDef& wanted) {
    OpenDatabase& db = *impl_;
    statement(db, table, [&] {
        TableChange change(db, table);
        TableDef& def = change.def();
        FieldDef field = wanted;
        checkName(field.name);
        change.refuseTakenField(field.name);
        completeField(field, db.header().sortOrder);
        if (def.fields.size() >= kMaxFields)
            throw Error(Err::TooManyFields, "Bir tabloda en çok 255 alan olabilir.");
        TableDef extended = def;
        extended.fields.push_back(field);
        checkAutoNumbers(extended);
        describeField(change.properties(), field);

        const bool numbersRows = field.autoNumber && def.rowCount > 0;
        if (numbersRows || def.maxColumns >= kMaxFields) {
            std::vector<RebuiltField> fields = sameFields(def);
            fields.push_back({field, {}});
            rebuildTable(db, def, fields);
            def = db.loadDefinition(def.page);
        } else {
            placeField(def, field);
            if (field.isLongValue()) createLongValueMaps(db, field);
            def.fields.push_back(std::move(field));
        }
        change.save();
    });
}

void Database::dropField(std::string_view table, std::string_view field) {
    OpenDatabase& db = *impl_;
    statement(db, table, [&] {
        TableChange change(db, table);
        TableDef& def = change.def();
        const size_t position = change.fieldPosition(field);
        const FieldDef dropped = def.fields[position];
        for (IndexDef& index : def.indexes) {
            for (IndexField& part : index.fields) {
                if (part.field == position)
                    throw Error(Err::InvalidArgument, "“" + dropped.name + "” alanı silinemez: “" +
                                                          index.name + "” dizininde kullanılıyor.");
                if (part.field > position) --part.field;
            }
        }
        refuseRelatedField(db, table, dropped.name, "silinemez");
        if (def.fields.size() == 1) throw Error(Err::InvalidArgument, "Tablonun son alanı silinemez.");
        if (dropped.isLongValue()) freeLongValues(db, dropped);
        def.fields.erase(def.fields.begin() + static_cast<std::ptrdiff_t>(position));
        change.properties().removeField(dropped.name);
        change.save();
    });
}

void Database::renameField(std::string_view table, std::string_view from, const std::string& to) {
    OpenDatabase& db = *impl_;
    statement(db, table, [&] {
        TableChange change(db, table);
        const size_t position = change.fieldPosition(from);
        const std::string old = change.def().fields[position].name;
        checkName(to);
        if (!sameName(old, to)) change.refuseTakenField(to);
        change.def().fields[position].name = to;
        change.properties().renameField(old, to);
        Relations(db).fieldRenamed(table, old, to);
        change.save();
    });
}

void Database::alterField(std::string_view table, std::string_view name, const FieldDef& wanted) {
    OpenDatabase& db = *impl_;
    statement(db, table, [&] {
        TableChange change(db, table);
        TableDef& def = change.def();
        const size_t position = change.fieldPosition(name);
        const FieldDef old = def.fields[position];
        FieldDef field = mergeField(old, wanted);
        if (field.autoNumber && !old.autoNumber) {
            TableDef changed = def;
            changed.fields[position] = field;
            checkAutoNumbers(changed);
        }
        describeField(change.properties(), field);

        if (sameStorage(old, field)) {
            if (field.size < old.size) requireFits(db, def, position, field);
            keepPlace(old, field);
            def.fields[position] = field;
        } else {
            refuseRelatedField(db, table, old.name, "değiştirilemez");
            requireIndexable(def, position, field);
            std::vector<RebuiltField> fields = sameFields(def);
            fields[position].field = field;
            rebuildTable(db, def, fields);
            def = db.loadDefinition(def.page);
        }
        if (field.autoNumber && !old.autoNumber) def.lastAutoNumber = highestNumber(db, def, position);
        change.save();
    });
}

void Database::setFieldOrder(std::string_view table, const std::vector<std::string>& names) {
    OpenDatabase& db = *impl_;
    statement(db, table, [&] {
        TableChange change(db, table);
        TableDef& def = change.def();
        std::vector<size_t> order; // old positions in their new order
        const auto add = [&](size_t position) {
            if (std::find(order.begin(), order.end(), position) == order.end()) order.push_back(position);
        };
        for (const std::string& name : names)
            add(change.fieldPosition(name));
        for (size_t i = 0; i < def.fields.size(); ++i)
            add(i);

        std::vector<FieldDef> fields;
        std::vector<uint16_t> newPosition(order.size());
        for (size_t i = 0; i < order.size(); ++i) {
            newPosition[order[i]] = static_cast<uint16_t>(i);
            fields.push_back(def.fields[order[i]]);
            fields.back().ordinal = static_cast<uint16_t>(i);
        }
        def.fields = std::move(fields);
        for (IndexDef& index : def.indexes)
            for (IndexField& part : index.fields)
                part.field = newPosition[part.field];
        change.save();
    });
}

} // namespace jet
