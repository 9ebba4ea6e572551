// jet/copy/table_writer.h
#include "jet/copy/table_writer.h"

#include "jet/copy/table_plan.h"
#include "jet/format/bytes.h"

#include <algorithm>
#include <array>

namespace jet {

namespace {

// Big-endian, so that their order as bytes is that of the rows.
std::array<uint8_t, 5> placeKey(RowId row) {
    return {static_cast<uint8_t>(row.page >> 24), static_cast<uint8_t>(row.page >> 16),
            static_cast<uint8_t>(row.page >> 8), static_cast<uint8_t>(row.page), row.row};
}

// Does a key depend on what we know of texts and numbers, so that one day it may not be to be had?
bool hasDoubtfulKey(const TableDef& def) {
    return std::any_of(def.indexes.begin(), def.indexes.end(), [&](const IndexDef& index) {
        return !index.readOnlyReason.empty() ||
               std::any_of(index.fields.begin(), index.fields.end(),
                           [&](const IndexField& part) { return def.fields[part.field].isText(); });
    });
}

// No key can be made of some row's values.
bool refusesKey(const Error& error) {
    return error.number() == Err::InvalidArgument || error.number() == Err::RecordTooLarge;
}

// Without the rules that rows stand against.
void relax(IndexDef& index) {
    index.unique = index.required = index.primary = false;
    index.realFlags &= static_cast<uint8_t>(~(IndexFlag::kUnique | IndexFlag::kRequired));
    index.type = index.foreign ? IndexFlag::kTypeForeign : IndexFlag::kTypePlain;
}

} // namespace

TableWriter::TableWriter(NewFile& file, TableDef def, const WriterOptions& options)
    : file_(file), options_(options), def_(std::move(def)) {
    planTable(def_);
    createStorage(file_.db(), def_);
    TableDef bare = def_;
    bare.indexes.clear();
    bare.realIndexCount = 0;
    file_.db().setDraft(def_.page);
    file_.db().saveDefinition(bare);
    rows_.emplace(file_, def_);
    if (hasDoubtfulKey(def_))
        places_.emplace(options_.memoryBytes / 4, [this] { return file_.temporaryFile(); });
}

void TableWriter::add(std::span<const Value> values) {
    rows_->append(values);
    step();
}

void TableWriter::add(const RowView& row, PageFile& from, RowId old) {
    const RowId placed = rows_->append(row, from);
    if (places_) places_->add(placeKey(old), placed);
    step();
}

FillOptions TableWriter::fillOptions() const {
    return {.memoryBytes = options_.memoryBytes,
            .makeFile = [this] { return file_.temporaryFile(); },
            .step = options_.step};
}

std::vector<IndexOutcome> TableWriter::end(const DatabaseWriter::OldKeys& oldKeys) {
    rows_->finish();
    std::vector<IndexOutcome> outcomes;
    buildIndexes(oldKeys, outcomes);
    std::vector<bool> drop;
    for (const IndexOutcome& outcome : outcomes)
        drop.push_back(outcome.fate == IndexFate::Dropped);
    dropIndexes(def_, drop);
    def_.rowCount = rows_->rows();
    for (uint32_t& count : def_.storedRowCounts)
        if (count != 0) count = rows_->rows();
    def_.lastAutoNumber = std::max(def_.lastAutoNumber, rows_->highestAutoNumber());
    file_.db().saveDefinition(def_);
    file_.db().setDraft(0);
    return outcomes;
}

void TableWriter::buildIndexes(const DatabaseWriter::OldKeys& oldKeys, std::vector<IndexOutcome>& outcomes) {
    for (const IndexDef& index : def_.indexes)
        outcomes.push_back({.index = index.name});
    for (const size_t first : treesOf(def_)) {
        file_.relieve();
        createTree(file_.db(), def_.page, def_.indexes[first]);
        std::string reason;
        const IndexFate fate = build(first, oldKeys, reason);
        const IndexDef built = def_.indexes[first];
        if (fate == IndexFate::Dropped) freeTree(file_.db(), def_, built);
        for (size_t i = 0; i < def_.indexes.size(); ++i) {
            IndexDef& index = def_.indexes[i];
            if (index.realNumber != built.realNumber) continue;
            index.rootPage = built.rootPage;
            index.usageMapPointer = built.usageMapPointer;
            if (fate == IndexFate::NotUnique) relax(index);
            outcomes[i].fate = fate;
            outcomes[i].reason = reason;
        }
    }
}

// The tree of the index and all that share it. What went wrong with `lenient` is told in `reason`.
IndexFate TableWriter::build(size_t position, const DatabaseWriter::OldKeys& oldKeys, std::string& reason) {
    IndexDef& index = def_.indexes[position];
    try {
        if (!index.readOnlyReason.empty()) throw Error(Err::InvalidArgument, index.readOnlyReason);
        fillTree(file_.db(), def_, index, fillOptions());
        return IndexFate::Built;
    } catch (const Error& error) {
        reason = error.message();
        const bool rule = error.number() == Err::DuplicateKey || error.number() == Err::IndexNullKey;
        const bool key = refusesKey(error);
        if (key && oldKeys && places_) {
            buildFromOldKeys(position, oldKeys);
            reason.clear();
            return IndexFate::Built;
        }
        if (!options_.lenient || !(rule || key)) throw;
        if (key) return IndexFate::Dropped;
    }
    relax(index);
    try {
        fillTree(file_.db(), def_, index, fillOptions());
        return IndexFate::NotUnique;
    } catch (const Error& error) { // a row behind the one that broke the rule
        if (!refusesKey(error)) throw;
        reason = error.message();
        return IndexFate::Dropped;
    }
}

// The old entries lead to the old places of the rows: brought together with the new ones by sorting.
void TableWriter::buildFromOldKeys(size_t position, const DatabaseWriter::OldKeys& oldKeys) {
    const auto makeFile = [this] { return file_.temporaryFile(); };
    EntrySorter byPlace(options_.memoryBytes / 4, makeFile), entries(options_.memoryBytes / 2, makeFile);
    Bytes joined;
    oldKeys(position, [&](std::span<const uint8_t> key, RowId old) {
        const auto place = placeKey(old);
        joined.assign(place.begin(), place.end());
        joined.insert(joined.end(), key.begin(), key.end());
        byPlace.add(joined, {});
        step();
    });
    const size_t width = placeKey({}).size();
    SortedEntry entry, place;
    places_->start();
    bool more = places_->next(place);
    for (byPlace.start(); byPlace.next(entry);) {
        const auto old = entry.key.first(width);
        while (more &&
               std::lexicographical_compare(place.key.begin(), place.key.end(), old.begin(), old.end()))
            more = places_->next(place);
        if (!more || !std::equal(old.begin(), old.end(), place.key.begin()))
            throw Error(Err::Corrupt,
                        "“" + def_.indexes[position].name + "” dizini tabloda olmayan bir kaydı gösteriyor.");
        entries.add(entry.key.subspan(width), place.row, true); // unique as it was: not judged anew
    }
    buildTree(file_.db(), def_, def_.indexes[position], entries);
}

} // namespace jet
