// jet/table/table_change.h: what every structural statement on a table shares.
#include "jet/table/table_change.h"

#include "jet/format/layout.h"

#include <algorithm>

namespace jet {

namespace {

constexpr uint8_t kNoCascade = 4; // as stored in both cascade bytes of an index that is no relation's

} // namespace

TableChange::TableChange(OpenDatabase& db, std::string_view table)
    : db_(db), entry_(db.tableEntry(table)), def_(db.loadDefinition(entry_.page())) {
    if (def_.system) throw Error(Err::InvalidArgument, "Sistem tabloları değiştirilemez.");
}

PropertySet& TableChange::properties() {
    if (!properties_) properties_ = PropertySet::parse(db_.catalog().properties(entry_));
    return *properties_;
}

size_t TableChange::fieldPosition(std::string_view field) const {
    const auto found = def_.findField(field);
    if (!found) throw Error(Err::NoSuchItem, "Tabloda “" + std::string(field) + "” adlı bir alan yok.");
    return *found;
}

size_t TableChange::indexPosition(std::string_view index) const {
    const IndexDef* found = def_.findIndex(index);
    if (!found) throw Error(Err::NoSuchItem, "Tabloda “" + std::string(index) + "” adlı bir dizin yok.");
    return static_cast<size_t>(found - def_.indexes.data());
}

void TableChange::refuseTakenField(std::string_view name) const {
    if (def_.findField(name))
        throw Error(Err::FieldDefinedTwice, "Tabloda “" + std::string(name) + "” adlı bir alan zaten var.");
}

void TableChange::saveDefinition() { db_.saveDefinition(def_); }

void TableChange::save() {
    saveDefinition();
    if (properties_) {
        db_.catalog().setProperties(entry_, *properties_);
    } else {
        db_.catalog().touch(entry_);
    }
    db_.structureChanged();
}

void describeField(PropertySet& properties, const FieldDef& field) {
    properties.setBoolean(field.name, "Required", field.required);
    if (field.isText()) properties.setBoolean(field.name, "AllowZeroLength", field.allowZeroLength);
    properties.setText(field.name, "DefaultValue", field.defaultValue);
}

void refuseTakenName(OpenDatabase& db, std::string_view name) {
    const CatalogEntry* entry = db.catalog().find(name);
    if (!entry) return;
    if (entry->isTable())
        throw Error(Err::TableExists, "“" + std::string(name) + "” adlı bir tablo zaten var.");
    throw Error(Err::ObjectExists, "“" + std::string(name) + "” adlı bir nesne zaten var.");
}

IndexDef& insertIndex(TableDef& def, IndexDef index) {
    index.number = 0;
    for (const IndexDef& other : def.indexes)
        index.number = std::max(index.number, other.number + 1);
    index.type = index.primary ? IndexFlag::kTypePrimary : IndexFlag::kTypePlain;
    index.foreign = false;
    index.storedReal = {};
    index.storedLogical = {};
    index.relType = 0;
    index.relatedIndex = -1;
    index.relatedTable = 0;
    index.cascadeUpdate = index.cascadeDelete = kNoCascade;
    const std::string name = foldName(index.name);
    const auto at = std::find_if(def.indexes.begin(), def.indexes.end(),
                                 [&](const IndexDef& other) { return name < foldName(other.name); });
    return *def.indexes.insert(at, std::move(index));
}

} // namespace jet
