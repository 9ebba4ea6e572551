// jet/check/table_checker.h
#include "jet/check/table_checker.h"

#include "jet/format/data_page.h"
#include "jet/format/long_value.h"

#include <algorithm>
#include <set>

namespace jet {

namespace {

std::string place(RowId row) {
    return "sayfa " + std::to_string(row.page) + ", satır " + std::to_string(row.row);
}

// The original engine lets the declared counts of its own tables drift.
bool countsMayDrift(const TableDef& def) { return def.system || def.name.starts_with("MSys"); }

} // namespace

TableChecker::TableChecker(CheckContext& context, TableDef def, std::vector<PageNo> definitionPages)
    : context_(context), def_(std::move(def)), definitionPages_(std::move(definitionPages)) {
    for (size_t i = 0; i < def_.fields.size(); ++i)
        if (def_.fields[i].isLongValue()) longValues_.push_back({i, 0, {}});
    std::set<uint32_t> trees;
    for (const IndexDef& index : def_.indexes)
        if (trees.insert(index.realNumber).second)
            indexes_.push_back(std::make_unique<IndexChecker>(context_, def_, index));
}

void TableChecker::claimPages() {
    PageLedger& ledger = context_.ledger;
    const auto definition = ledger.newOwner(def_.name, "tanımı");
    for (const PageNo page : definitionPages_)
        ledger.claim(definition, page);
    data_ = ledger.newOwner(def_.name, "verileri");
    context_.claimMap(RowId::fromPacked(def_.ownedMapPointer), data_, def_.name);
    claimFreeMap(RowId::fromPacked(def_.freeMapPointer), data_, "Tablonun");
    for (LongValues& values : longValues_) {
        const FieldDef& field = def_.fields[values.field];
        values.owner = ledger.newOwner(def_.name, "'" + field.name + "' alanı");
        if (field.ownedMapPage == 0) continue; // no value was ever stored
        context_.claimMap({field.ownedMapPage, field.ownedMapRow}, values.owner, def_.name);
        if (field.freeMapPage != 0) // some tables of the original engine keep none
            claimFreeMap({field.freeMapPage, field.freeMapRow}, values.owner,
                         "'" + field.name + "' alanının");
    }
    for (const auto& index : indexes_)
        index->claimPages();
}

// The map of pages with room: a part of the pages owned.
void TableChecker::claimFreeMap(RowId at, PageLedger::Owner owner, const std::string& what) {
    context_.claimMapItself(at, def_.name);
    context_.findings.guarded(def_.name, at.page, [&] {
        context_.map(at).forEach([&](PageNo page) {
            if (context_.ledger.ownerOf(page) != owner)
                fault(page, what + " boş yeri olan sayfalar haritasında, sahip olmadığı bir sayfa var.");
        });
    });
}

void TableChecker::checkRows() {
    context_.findings.guarded(def_.name, def_.page, [&] {
        context_.map(RowId::fromPacked(def_.ownedMapPointer)).forEach([&](PageNo page) {
            context_.findings.step();
            if (context_.ledger.ownerOf(page) != data_) return; // somebody else's, already reported
            context_.findings.guarded(def_.name, page, [&] { checkDataPage(page); });
        });
    });
    context_.findings.report.rows += rows_;
    if (rows_ != def_.rowCount && !countsMayDrift(def_))
        fault(def_.page, "Tanımda " + std::to_string(def_.rowCount) + " kayıt yazıyor, tabloda " +
                             std::to_string(rows_) + " kayıt var.");
    checkHiddenRows();
    for (const LongValues& values : longValues_)
        context_.findings.guarded(def_.name, 0, [&] { checkLongValuePages(values); });
    for (const auto& index : indexes_)
        index->check([this](const auto& visit) { forEachRow(visit); });
}

void TableChecker::checkDataPage(PageNo number) {
    const PageRef page = context_.file.read(number);
    if (std::string text = data_page::contradiction(context_.layout, page.bytes()); !text.empty()) {
        fault(number, std::move(text));
        if (page.data()[0] != PageType::kData) return;
    }
    if (data_page::owner(context_.layout, page.bytes()) != def_.page)
        fault(number, "Veri sayfası kendini başka bir tablonun sayıyor (sayfa " +
                          std::to_string(data_page::owner(context_.layout, page.bytes())) + ").");
    const uint16_t count = data_page::slotCount(context_.layout, page.bytes());
    for (uint16_t i = 0; i < std::min<size_t>(count, kMaxRowsPerPage + 1); ++i)
        context_.findings.guarded(def_.name, number, [&] { checkSlot(page, static_cast<uint8_t>(i)); });
}

void TableChecker::checkSlot(const PageRef& page, uint8_t number) {
    const Slot slot = data_page::slot(context_.layout, page.bytes(), number);
    const RowId home{page.number(), number};
    if (slot.deleted) return;
    if (slot.hidden) {
        hidden_.insert(home);
        return;
    }
    ++rows_;
    PageRef target;
    const auto bytes =
        slot.pointer ? follow(page, number, target, false) : page.bytes().subspan(slot.start, slot.length);
    if (!bytes.empty()) checkRow(home, bytes);
}

std::span<const uint8_t> TableChecker::follow(const PageRef& page, uint8_t number, PageRef& target,
                                              bool silent) {
    const RowId at = data_page::pointerTarget(context_.layout, page.bytes(), number);
    std::string wrong;
    if (context_.ledger.ownerOf(at.page) != data_) {
        wrong = "tablonun olmayan bir sayfayı";
    } else {
        target = context_.file.read(at.page);
        if (at.row >= data_page::slotCount(context_.layout, target.bytes())) {
            wrong = "olmayan bir satırı";
        } else {
            const Slot slot = data_page::slot(context_.layout, target.bytes(), at.row);
            if (!slot.hidden || slot.pointer)
                wrong = slot.deleted ? "silinmiş bir satırı" : "kendi başına duran bir satırı";
            else if (!silent && !targets_.insert(at))
                wrong = "başka bir satırın da gösterdiği bir satırı";
            else
                return target.bytes().subspan(slot.start, slot.length);
        }
    }
    if (!silent)
        fault(page.number(),
              std::to_string(number) + ". satır taşınmış, ama " + wrong + " gösteriyor (" + place(at) + ").");
    return {};
}

void TableChecker::checkRow(RowId home, std::span<const uint8_t> bytes) {
    const bool readable = context_.findings.guarded(def_.name, home.page, [&] {
        view_.attach(context_.layout, def_, bytes, context_.codePage);
        for (size_t i = 0; i < def_.fields.size(); ++i)
            if (!def_.fields[i].isLongValue()) view_.value(i);
    });
    if (!readable) return;
    for (LongValues& values : longValues_)
        if (!view_.isNull(values.field))
            context_.findings.guarded(def_.name, home.page,
                                      [&] { checkLongValue(values, home, view_.raw(values.field)); });
    for (const auto& index : indexes_)
        context_.findings.guarded(def_.name, home.page, [&] { index->expect(home, view_); });
}

void TableChecker::checkLongValue(LongValues& values, RowId home, std::span<const uint8_t> header) {
    const FieldDef& field = def_.fields[values.field];
    ++context_.findings.report.longValues;
    forEachLongValueRow(context_.file, context_.layout, header, [&](RowId at) {
        if (context_.ledger.ownerOf(at.page) != values.owner)
            fault(at.page, "'" + field.name + "' alanının bir değeri, alanın olmayan bir sayfada (kayıt: " +
                               place(home) + ").");
        else if (!values.used.insert(at)) // the rest of the chain was walked already
            throw Error(Err::Corrupt, "'" + field.name + "' alanının " + std::to_string(at.row) +
                                          ". parçasını birden çok kayıt gösteriyor (kayıt: " + place(home) +
                                          ").")
                .onPage(at.page);
    });
}

// Every hidden row must be the target of a moved one.
void TableChecker::checkHiddenRows() {
    hidden_.forEach([this](RowId row) {
        if (!targets_.contains(row))
            fault(row.page,
                  "Gizli satırı gösteren hiçbir kayıt yok (satır " + std::to_string(row.row) + ").");
    });
}

void TableChecker::checkLongValuePages(const LongValues& values) {
    const FieldDef& field = def_.fields[values.field];
    if (field.ownedMapPage == 0) return;
    context_.map({field.ownedMapPage, field.ownedMapRow}).forEach([&](PageNo number) {
        context_.findings.step();
        if (context_.ledger.ownerOf(number) != values.owner) return;
        context_.findings.guarded(def_.name, number, [&] {
            const PageRef page = context_.file.read(number);
            if (std::string text = data_page::contradiction(context_.layout, page.bytes()); !text.empty())
                fault(number, std::move(text));
            if (data_page::owner(context_.layout, page.bytes()) != kOwnerLongValues)
                throw Error(Err::Corrupt,
                            "'" + field.name + "' alanının sayfası bir uzun değer sayfası değil.");
            for (uint16_t i = 0; i < data_page::slotCount(context_.layout, page.bytes()); ++i) {
                const RowId row{number, static_cast<uint8_t>(i)};
                if (!data_page::slot(context_.layout, page.bytes(), i).deleted && !values.used.contains(row))
                    fault(number, "'" + field.name + "' alanının " + std::to_string(i) +
                                      ". parçasını gösteren hiçbir kayıt yok.");
            }
        });
    });
}

void TableChecker::forEachRow(const std::function<void(RowId, const RowView&)>& visit) {
    RowView view;
    context_.map(RowId::fromPacked(def_.ownedMapPointer)).forEach([&](PageNo number) {
        if (context_.ledger.ownerOf(number) != data_) return;
        const PageRef page = context_.file.read(number);
        if (page.data()[0] != PageType::kData) return;
        for (unsigned i = 0; i < 256; ++i) {
            try {
                if (i >= data_page::slotCount(context_.layout, page.bytes())) return;
                const auto at = static_cast<uint8_t>(i);
                const Slot slot = data_page::slot(context_.layout, page.bytes(), at);
                if (slot.deleted || slot.hidden) continue;
                PageRef target;
                const auto bytes = slot.pointer ? follow(page, at, target, true)
                                                : page.bytes().subspan(slot.start, slot.length);
                if (bytes.empty()) continue;
                view.attach(context_.layout, def_, bytes, context_.codePage);
                visit({number, at}, view);
            } catch (const Error&) {
                continue; // reported when the rows were checked
            }
        }
    });
}

} // namespace jet
