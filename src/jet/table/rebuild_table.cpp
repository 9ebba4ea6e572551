// jet/table/table_change.h: rebuildTable(). The rows are copied through Table into a draft without catalog
// row; then the draft's pages take the place of the old ones under the old definition page.
#include "jet/format/layout.h"
#include "jet/table/definition_store.h"
#include "jet/table/structure_rules.h"
#include "jet/table/table.h"
#include "jet/table/table_change.h"
#include "jet/table/table_storage.h"

#include <algorithm>
#include <numeric>

namespace jet {

namespace {

// While it lives the definition page `page` is found although the catalog does not know it.
class DraftScope {
  public:
    DraftScope(OpenDatabase& db, PageNo page) : db_(db) { db_.setDraft(page); }
    ~DraftScope() { db_.setDraft(0); }
    DraftScope(const DraftScope&) = delete;
    DraftScope& operator=(const DraftScope&) = delete;

  private:
    OpenDatabase& db_;
};

// Positions by old column number, new fields last: other programs show the columns in that order.
std::vector<size_t> inOldOrder(const std::vector<RebuiltField>& fields) {
    std::vector<size_t> order(fields.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(), [&](size_t a, size_t b) {
        const auto number = [&](size_t i) {
            return fields[i].from ? fields[i].field.columnNumber : kMaxFields;
        };
        return number(a) < number(b);
    });
    return order;
}

// Same fields, no indexes, no autonumber (numbers are copied like any others).
TableDef makeDraft(OpenDatabase& db, const TableDef& old, const std::vector<RebuiltField>& fields) {
    TableDef draft;
    draft.name = old.name;
    draft.tableType = old.tableType;
    draft.fields.resize(fields.size());
    for (const size_t position : inOldOrder(fields)) {
        FieldDef field = fields[position].field;
        placeField(draft, field);
        field.ordinal = static_cast<uint16_t>(position);
        field.autoNumber = false;
        field.flags &= static_cast<uint8_t>(~ColumnFlag::kAutoNumber);
        draft.fields[position] = std::move(field);
    }
    draft.page = db.allocator().allocate().number();
    createStorage(db, draft);
    db.saveDefinition(draft);
    return draft;
}

// Returns how many rows were copied.
uint32_t copyRows(OpenDatabase& db, const TableDef& old, const TableDef& draft,
                  const std::vector<RebuiltField>& fields) {
    const DraftScope scope(db, draft.page);
    Table from(db, old.page), to(db, draft.page);
    Scan scan = from.scan();
    std::vector<Value> values(fields.size());
    int32_t done = 0;
    while (scan.next()) {
        ++done;
        for (size_t i = 0; i < fields.size(); ++i) {
            if (fields[i].from)
                values[i] = scan.value(*fields[i].from);
            else
                values[i] = fields[i].field.autoNumber ? Value(done) : Value();
        }
        to.insert(values);
    }
    return static_cast<uint32_t>(done);
}

// The old indexes over the new positions of their fields, each tree new and empty.
void moveIndexes(OpenDatabase& db, const TableDef& old, TableDef& def,
                 const std::vector<RebuiltField>& fields) {
    def.indexes = old.indexes;
    def.realIndexCount = old.realIndexCount;
    def.uniqueEntryCounts = old.uniqueEntryCounts;
    def.storedRowCounts = old.storedRowCounts;
    for (IndexDef& index : def.indexes) {
        for (IndexField& part : index.fields) {
            const auto at = std::find_if(fields.begin(), fields.end(), [&](const RebuiltField& f) {
                return f.from && *f.from == part.field;
            });
            part.field = static_cast<uint16_t>(at - fields.begin());
        }
    }
    for (const size_t tree : treesOf(old)) {
        freeTree(db, old, old.indexes[tree]);
        IndexDef fresh = old.indexes[tree];
        createTree(db, old.page, fresh);
        for (IndexDef& index : def.indexes) {
            if (index.realNumber != fresh.realNumber) continue;
            index.rootPage = fresh.rootPage;
            index.usageMapPointer = fresh.usageMapPointer;
        }
    }
}

} // namespace

void rebuildTable(OpenDatabase& db, const TableDef& old, const std::vector<RebuiltField>& fields) {
    if (const std::string reason = old.readOnlyReason(); !reason.empty()) throw Error(Err::ReadOnly, reason);
    const TableDef draft = makeDraft(db, old, fields);
    const uint32_t rows = copyRows(db, old, draft, fields);

    TableDef def = draft;
    def.page = old.page;
    def.stored = old.stored;
    def.rowCount = rows;
    def.lastAutoNumber = old.lastAutoNumber;
    for (size_t i = 0; i < fields.size(); ++i) {
        def.fields[i].autoNumber = fields[i].field.autoNumber;
        if (!fields[i].field.autoNumber) continue;
        def.fields[i].flags |= ColumnFlag::kAutoNumber;
        if (!fields[i].from) def.lastAutoNumber = rows;
    }
    moveIndexes(db, old, def, fields);
    freeRows(db, old);
    for (const FieldDef& field : old.fields)
        if (field.isLongValue()) freeLongValues(db, field);
    changeOwner(db, draft, old.page);
    freeDefinition(db.allocator(), draft.page);
    db.saveDefinition(def);
    for (const size_t tree : treesOf(def))
        fillTree(db, def, def.indexes[tree]);
    db.saveDefinition(def);
}

} // namespace jet
