// jet/copy/salvage_rows.h. Two passes: the first learns which pages and hidden rows belong to the table, the
// second reads them.
#include "jet/copy/salvage_rows.h"

#include "jet/error.h"
#include "jet/format/data_page.h"
#include "jet/format/long_value.h"

#include <algorithm>

namespace jet {

namespace {

constexpr size_t kMaxHops = 8; // pointers in a row; more is damage

[[noreturn]] void corrupt(const char* why) { throw Error(Err::Corrupt, why); }

// Damage, or a row that no file can take: costs the row. Anything else is trouble with the disk or the
// target.
bool costsTheRow(const Error& error) {
    switch (error.number()) {
    case Err::Corrupt:
    case Err::RecordTooLarge:
    case Err::FieldTooLong:
    case Err::Conversion: return true;
    default: return false;
    }
}

} // namespace

Bytes LongValueReader::read(std::span<const uint8_t> header) {
    forEachLongValueRow(source_.file, source_.layout(), header, [this](RowId part) {
        if (seen_.insert(part)) return;
        if (repeatsLeft_ == 0) corrupt("Uzun alanın bir parçasını çok sayıda kayıt gösteriyor.");
        --repeatsLeft_;
    });
    return readLongValue(source_.file, source_.layout(), header);
}

TableSalvage::TableSalvage(const SalvageSource& source, const TableDef& def, MarkedPages pages,
                           bool countKnown, LongValueReader& longValues)
    : source_(source), def_(def), marked_(std::move(pages)), countKnown_(countKnown), longValues_(longValues),
      values_(def.fields.size()) {}

// Calls visit(RowId, Slot, page) for each living slot; slots that cannot be are lost rows.
template <class F> void TableSalvage::forEachSlot(PageNo number, F visit, TableLosses* losses) {
    const PageRef page = source_.file.read(number);
    const Layout& layout = source_.layout();
    size_t count = 0;
    try {
        count = data_page::slotCount(layout, page.bytes());
    } catch (const Error& error) { // rows that nobody can count
        if (losses) lose(*losses, {number, 0}, {}, error.message());
        return;
    }
    for (size_t i = 0; i < std::min(count, kMaxRowsPerPage + 1); ++i) {
        const RowId row{number, static_cast<uint8_t>(i)};
        try {
            const Slot slot = data_page::slot(layout, page.bytes(), row.row);
            if (!slot.deleted) visit(row, slot, page.bytes());
        } catch (const Error& error) {
            if (!costsTheRow(error)) throw;
            if (losses) lose(*losses, row, {}, error.message());
        }
    }
}

bool TableSalvage::isReadable(std::span<const uint8_t> bytes) {
    try {
        view_.attach(source_.layout(), def_, bytes);
        return true;
    } catch (const Error&) {
        return false;
    }
}

void TableSalvage::decide(const std::function<void()>& step) {
    std::vector<PageNo> mapped, others;
    const bool mapRead = countKnown_ && source_.mapHolds(def_.ownedMapPointer, kGlobalMapPage).has_value();
    for (const PageNo page : marked_.used)
        (mapRead && source_.mapHolds(def_.ownedMapPointer, page).value_or(false) ? mapped : others)
            .push_back(page);
    RowSet taken, othersHidden;
    const auto count = [&](const std::vector<PageNo>& pages, RowSet& hidden) {
        uint64_t rows = 0;
        for (const PageNo page : pages) {
            step();
            forEachSlot(
                page,
                [&](RowId row, const Slot& slot, std::span<const uint8_t> bytes) {
                    if (slot.hidden) {
                        if (!slot.pointer) hidden.insert(row);
                        return;
                    }
                    PageRef target;
                    rows += isReadable(slot.pointer ? follow(row, taken, target)
                                                    : bytes.subspan(slot.start, slot.length));
                },
                nullptr);
        }
        return rows;
    };
    const auto use = [this](const std::vector<PageNo>& pages, const RowSet& hidden) {
        pages_.insert(pages_.end(), pages.begin(), pages.end());
        hidden.forEach([this](RowId row) { hidden_.insert(row); });
    };
    uint64_t rows = count(mapped, hidden_);
    const uint64_t more = count(others, othersHidden);
    const bool complete = mapRead && rows == def_.rowCount;
    pages_ = std::move(mapped);
    if (!complete) {
        rows += more;
        use(others, othersHidden);
    }
    if (countKnown_ && rows < def_.rowCount && !marked_.free.empty()) {
        RowSet freeHidden;
        const uint64_t freed = count(marked_.free, freeHidden);
        if (rows + freed == def_.rowCount || (!mapRead && rows + freed < def_.rowCount)) {
            rows += freed;
            use(marked_.free, freeHidden);
        }
    }
    std::ranges::sort(pages_);
    useHidden_ = !countKnown_ || rows != def_.rowCount;
}

std::span<const uint8_t> TableSalvage::follow(RowId from, RowSet& taken, PageRef& target) const {
    const Layout& layout = source_.layout();
    RowId at = from;
    target = source_.file.read(from.page);
    for (size_t hop = 0; hop < kMaxHops; ++hop) {
        at = data_page::pointerTarget(layout, target.bytes(), at.row);
        if (source_.pages.kind(at.page) != PageKind::Data || source_.pages.owners[at.page] != def_.page)
            corrupt("Taşınmış kaydın yeni yeri tablonun bir sayfası değil.");
        target = source_.file.read(at.page);
        const Slot slot = data_page::slot(layout, target.bytes(), at.row);
        if (!slot.hidden) corrupt("Taşınmış kaydın yeni yerinde başka bir kayıt var.");
        if (!taken.insert(at)) corrupt("Taşınmış kaydı başka bir gösterge de gösteriyor.");
        if (!slot.pointer) return target.bytes().subspan(slot.start, slot.length);
    }
    corrupt("Taşınmış kaydın yeni yeri bulunamadı.");
}

void TableSalvage::read(const RowSink& sink, TableLosses& losses, const std::function<void()>& step) {
    decide(step);
    RowSet taken;
    size_t pointersLost = 0;
    for (const PageNo page : pages_) {
        step();
        losses.pagesDamaged += source_.pages.damaged[page];
        forEachSlot(
            page,
            [&](RowId row, const Slot& slot, std::span<const uint8_t> bytes) {
                if (slot.hidden) return;
                if (!slot.pointer) return give(row, bytes.subspan(slot.start, slot.length), sink, losses);
                PageRef target;
                ++pointersLost;
                const auto moved = follow(row, taken, target);
                --pointersLost;
                give(row, moved, sink, losses);
            },
            &losses);
    }
    if (!useHidden_) return;
    hidden_.forEach([&](RowId row) {
        if (taken.contains(row)) return;
        const PageRef page = source_.file.read(row.page);
        try {
            const Slot slot = data_page::slot(source_.layout(), page.bytes(), row.row);
            give(row, page.bytes().subspan(slot.start, slot.length), sink, losses);
            if (losses.rowsLost > 0 && pointersLost > 0) { // it had been counted by its pointer
                --losses.rowsLost;
                --pointersLost;
            }
        } catch (const Error& error) {
            if (!costsTheRow(error)) throw;
            lose(losses, row, {}, error.message());
        }
    });
}

// Throws when the row itself cannot be read; what is wrong with one field costs that field.
void TableSalvage::give(RowId row, std::span<const uint8_t> bytes, const RowSink& sink, TableLosses& losses) {
    view_.attach(source_.layout(), def_, bytes);
    for (size_t i = 0; i < values_.size(); ++i) {
        try {
            values_[i] = fieldValue(i);
        } catch (const Error& error) {
            values_[i] = Value();
            lose(losses, row, def_.fields[i].name, error.message());
        }
    }
    sink(values_);
    ++losses.rowsSaved;
}

Value TableSalvage::fieldValue(size_t i) {
    const FieldDef& field = def_.fields[i];
    if (!field.isLongValue()) {
        Value value = view_.value(i);
        if (const auto* text = value.get<std::string>();
            text && text->size() > field.size && utf16Length(*text) > field.size)
            corrupt("Metin, alanın genişliğinden uzun.");
        return value;
    }
    if (view_.isNull(i)) return {};
    Bytes stored = longValues_.read(view_.raw(i));
    if (field.type == Type::Ole) return stored;
    std::string text;
    decodeText(source_.layout(), 0, stored, text);
    return text;
}

void TableSalvage::lose(TableLosses& losses, RowId row, const std::string& field,
                        const std::string& reason) const {
    ++(field.empty() ? losses.rowsLost : losses.fieldsLost);
    if (losses.listed) losses.listed({row, field, reason});
}

} // namespace jet
