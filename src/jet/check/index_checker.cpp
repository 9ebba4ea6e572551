// jet/check/index_checker.h
#include "jet/check/index_checker.h"

#include "jet/format/data_page.h"
#include "jet/format/long_value.h"
#include "jet/index/key.h"

#include <algorithm>

namespace jet {

namespace {

uint64_t mixed(uint64_t value) {
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
}

std::string place(RowId row) {
    return "sayfa " + std::to_string(row.page) + ", satır " + std::to_string(row.row);
}

} // namespace

void IndexChecker::Sum::add(RowId row, std::span<const uint8_t> key) {
    ++count;
    const uint64_t ofRow = mixed(row.packed() + 1);
    uint64_t ofKey = ofRow;
    for (const uint8_t byte : key)
        ofKey = (ofKey ^ byte) * 0x100000001B3;
    rows += ofRow;
    keys += mixed(ofKey);
}

IndexChecker::IndexChecker(CheckContext& context, const TableDef& def, const IndexDef& index)
    : context_(context), def_(def), index_(index),
      tree_(context.allocator, index.rootPage, def.page, RowId::fromPacked(index.usageMapPointer)),
      keysKnown_(keyObstacle(context.layout, def, index).empty()) {}

void IndexChecker::fault(PageNo page, const std::string& text) {
    context_.findings.add(def_.name, page, "'" + index_.name + "' dizini: " + text);
}

void IndexChecker::claimPages() {
    const auto owner = context_.ledger.newOwner(def_.name, "'" + index_.name + "' dizini");
    context_.claimMap(RowId::fromPacked(index_.usageMapPointer), owner, def_.name);
}

Value IndexChecker::fieldValue(const RowView& row, size_t field) const {
    if (def_.fields[field].type != Type::Memo) return row.value(field);
    if (row.isNull(field)) return {};
    std::string utf8;
    decodeText(context_.layout, context_.codePage,
               readLongValue(context_.file, context_.layout, row.raw(field)), utf8);
    return utf8;
}

bool IndexChecker::keyOf(const RowView& row) {
    key_.clear();
    bool allNull = true;
    for (const IndexField& part : index_.fields)
        allNull = allNull && row.isNull(part.field);
    if (allNull && index_.ignoreNulls) return false;
    if (!keysKnown_) return true;
    values_.clear();
    for (const IndexField& part : index_.fields)
        values_.push_back(fieldValue(row, part.field));
    try {
        makeKey(def_, index_, values_, key_, allNull);
    } catch (const Error& error) {
        if (error.number() != Err::InvalidArgument) throw;
        keysKnown_ = false; // a letter whose place nobody knows: from here on only the rows are compared
        key_.clear();
    }
    return true;
}

void IndexChecker::expect(RowId home, const RowView& row) {
    if (keyOf(row)) expected_.add(home, key_);
}

// True when the row has a null among the index's fields; then it never is a duplicate.
bool IndexChecker::hasNull(RowId at) const {
    try {
        PageRef page = context_.file.read(at.page);
        if (at.row >= data_page::slotCount(context_.layout, page.bytes())) return true;
        Slot slot = data_page::slot(context_.layout, page.bytes(), at.row);
        if (slot.pointer) {
            at = data_page::pointerTarget(context_.layout, page.bytes(), at.row);
            page = context_.file.read(at.page);
            slot = data_page::slot(context_.layout, page.bytes(), at.row);
        }
        RowView view;
        view.attach(context_.layout, def_, page.bytes().subspan(slot.start, slot.length), context_.codePage);
        return std::any_of(index_.fields.begin(), index_.fields.end(),
                           [&view](const IndexField& part) { return view.isNull(part.field); });
    } catch (const Error&) {
        return true; // such a row has its own fault
    }
}

void IndexChecker::walk(RowSet& entries, bool& duplicates) {
    Bytes last;
    bool first = true;
    tree_.verify(
        [&](std::span<const uint8_t> key, RowId row) {
            found_.add(row, keysKnown_ ? key : std::span<const uint8_t>());
            if (!entries.insert(row)) {
                duplicates = true;
                fault(row.page, "kayıt iki kez yazılı (" + place(row) + ").");
            }
            if (index_.unique && !first && std::ranges::equal(last, key) && !hasNull(row))
                fault(row.page, "yinelenmemesi gereken bir değer iki kez var (" + place(row) + ").");
            last.assign(key.begin(), key.end());
            first = false;
        },
        [this](PageNo page, const std::string& text) { fault(page, text); });
}

void IndexChecker::check(const std::function<void(const RowVisitor&)>& forEachRow) {
    RowSet entries;
    bool duplicates = false;
    context_.findings.guarded(def_.name, index_.rootPage, [&] { walk(entries, duplicates); });
    context_.findings.report.indexEntries += found_.count;
    const bool same = found_.count == expected_.count && found_.rows == expected_.rows &&
                      (!keysKnown_ || found_.keys == expected_.keys);
    if (!same || duplicates)
        context_.findings.guarded(def_.name, index_.rootPage, [&] { nameWrongRows(entries, forEachRow); });
    context_.findings.guarded(def_.name, index_.rootPage, [&] {
        context_.map(RowId::fromPacked(index_.usageMapPointer)).forEach([this](PageNo) {
            context_.findings.step();
        });
    });
}

void IndexChecker::nameWrongRows(RowSet& entries, const std::function<void(const RowVisitor&)>& forEachRow) {
    forEachRow([&](RowId home, const RowView& row) {
        if (!keyOf(row)) {
            if (entries.erase(home))
                fault(home.page, "boş değerli kayıt dizinde olmamalıydı (" + place(home) + ").");
            return;
        }
        if (!entries.erase(home)) {
            fault(home.page, "kayıt dizinde yok (" + place(home) + ").");
            return;
        }
        if (!keysKnown_) return;
        TreePosition at;
        bool exact = false;
        if (!tree_.restore(key_, home, at, exact) || !exact)
            fault(home.page, "kayıt dizinde yanlış değerin altında (" + place(home) + ").");
    });
    entries.forEach([this](RowId row) {
        fault(row.page, "dizin, tabloda olmayan bir kaydı gösteriyor (" + place(row) + ").");
    });
}

} // namespace jet
