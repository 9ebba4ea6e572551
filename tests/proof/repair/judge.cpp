#include "proof/repair/judge.h"

#include "jet/check/check.h"
#include "jet/copy/repair.h"
#include "jet/format/field_size.h"
#include "jet/format/row_codec.h"
#include "peer/peer.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <map>
#include <optional>
#include <unistd.h>

namespace proof_repair {

using namespace jet;

namespace {

constexpr const char* kIn = "bozuk.mdb";
constexpr const char* kOut = "onarilmis.mdb";

bool touches(const Damage& damage, const std::vector<PageNo>& pages) {
    return std::ranges::any_of(pages, [&](PageNo page) { return damage.pages.contains(page); });
}

// Rows that repair owes of one table, and those that harm reached.
struct Split {
    RowCounts owed;
    std::vector<const std::string*> touched;
};

Split split(const KnownTable& table, const Damage& damage) {
    Split parts;
    const bool wholeTable = touches(damage, table.definition);
    for (const KnownRow& row : table.rows)
        if (wholeTable || touches(damage, row.pages))
            parts.touched.push_back(&row.text);
        else
            ++parts.owed[row.text];
    return parts;
}

size_t missing(const RowCounts& owed, const RowCounts& found) {
    size_t rows = 0;
    for (const auto& [text, count] : owed) {
        const auto at = found.find(text);
        const size_t there = at == found.end() ? 0 : at->second;
        rows += count > there ? count - there : 0;
    }
    return rows;
}

// Takes a row away; false when there is none.
bool take(RowCounts& rows, const std::string& text) {
    const auto at = rows.find(text);
    if (at == rows.end()) return false;
    if (--at->second == 0) rows.erase(at);
    return true;
}

// With the catalog harmed a table may have got another name: then the one that has its rows. Each is given
// out once.
RowCounts tableFor(const KnownTable& table, const RowCounts& owed, bool namesHarmed,
                   std::unordered_map<std::string, RowCounts>& found) {
    auto chosen = found.find(table.name);
    if (namesHarmed && !owed.empty() && (chosen == found.end() || missing(owed, chosen->second) > 0)) {
        chosen = std::ranges::min_element(found, {},
                                          [&](const auto& entry) { return missing(owed, entry.second); });
    }
    if (chosen == found.end()) return {};
    RowCounts rows = std::move(chosen->second);
    found.erase(chosen);
    return rows;
}

// Letters and signs of the first two alphabets: what every program shows as it is.
bool isShownAlike(const std::string& text) {
    return std::ranges::all_of(utf16FromUtf8(text), [](char16_t unit) {
        return (unit >= 0x20 && unit < 0x7F) || (unit >= 0xA1 && unit < 0x180 && unit != 0xAD);
    });
}

bool isShownAlike(const Value& value) {
    if (const auto* text = value.get<std::string>()) return isShownAlike(*text);
    if (const auto* date = value.get<Date>()) return date->days > 0 && date->days < 2958466;
    return true;
}

} // namespace

void Figures::add(const Figures& more) {
    trials += more.trials;
    refused += more.refused;
    faults += more.faults;
    rowsOwed += more.rowsOwed;
    rowsTouched += more.rowsTouched;
    touchedSaved += more.touchedSaved;
    rowsForeign += more.rowsForeign;
    shownByMdbTools += more.shownByMdbTools;
    worstMs = std::max(worstMs, more.worstMs);
    allMs += more.allMs;
}

void Judge::fault(const std::string& what, const std::string& text) {
    ++figures_.faults;
    complain_(what + ": " + text);
}

void Judge::tryRepair(const KnownFile& known, const Damage& damage, bool withMdbTools) {
    const std::string what = known.name + ", " + damage.text;
    ++figures_.trials;
    const auto io = std::make_shared<MemoryIo>();
    io->put(kIn, damage.bytes);
    RepairOptions options;
    options.io = io;
    options.password = known.password;
    const auto begin = std::chrono::steady_clock::now();
    bool made = true;
    try {
        repairDatabase(kIn, kOut, options);
    } catch (const Error& error) {
        made = false;
        size_t owed = 0;
        for (const KnownTable& table : known.tables)
            owed += split(table, damage).owed.size();
        // The key of an encoded file lies on its first page only, and a password with a letter changed is
        // another one.
        const bool firstPageDecides =
            damage.pages.contains(0) &&
            (known.encoded || (!known.password.empty() && error.number() == Err::InvalidPassword));
        if (owed > 0 && !firstPageDecides)
            fault(what, std::string("refused: ") + error.what());
        else
            ++figures_.refused;
    }
    const double ms =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
    figures_.worstMs = std::max(figures_.worstMs, ms);
    figures_.allMs += ms;
    if (io->contents(kIn) != damage.bytes) fault(what, "the source was changed");
    if (io->names().size() != (made ? 2u : 1u)) fault(what, "files were left behind");
    if (!made) return;

    const auto database = openInMemory(io, kOut);
    const CheckReport report = checkDatabase(*database);
    for (const Fault& found : report.faults)
        fault(what, "check: " + found.table + ", page " + std::to_string(found.page) + ": " + found.text);
    compareRows(known, damage, readAll(*database), what);
    if (withMdbTools) compareWithMdbTools(*database, io->contents(kOut), what);
}

void Judge::compareRows(const KnownFile& known, const Damage& damage,
                        std::unordered_map<std::string, RowCounts> found, const std::string& what) {
    const bool namesHarmed = touches(damage, known.catalogPages);
    std::vector<std::pair<const KnownTable*, Split>> tables;
    for (const KnownTable& table : known.tables)
        tables.emplace_back(&table, split(table, damage));
    std::ranges::stable_sort(
        tables, [](const auto& a, const auto& b) { return a.second.owed.size() > b.second.owed.size(); });
    for (const auto& [table, parts] : tables) {
        RowCounts rows = tableFor(*table, parts.owed, namesHarmed, found);
        if (const size_t lost = missing(parts.owed, rows); lost > 0)
            fault(what, std::to_string(lost) + " rows missing in '" + table->name + "', which has " +
                            std::to_string(rows.size()) + " different ones");
        for (const auto& [text, count] : parts.owed) {
            figures_.rowsOwed += count;
            for (size_t i = 0; i < count; ++i)
                take(rows, text);
        }
        figures_.rowsTouched += parts.touched.size();
        for (const std::string* text : parts.touched)
            figures_.touchedSaved += take(rows, *text);
        for (const auto& [text, count] : rows)
            figures_.rowsForeign += count;
    }
    for (const auto& [name, rows] : found)
        for (const auto& [text, count] : rows)
            figures_.rowsForeign += count;
}

// Flipped texts hold characters that mdb-export shows in its own way; of rows with such only the number is
// compared.
void Judge::compareWithMdbTools(Database& database, std::vector<uint8_t> bytes, const std::string& what) {
    const auto path = std::filesystem::temp_directory_path() /
                      ("orvan_proof_repair_" + std::to_string(::getpid()) + ".mdb");
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    const ReadScope read(database.pages());
    for (const std::string& name : database.tableNames()) {
        Table table = database.openTable(name);
        const TableDef def = table.def();
        const bool comparable = std::ranges::all_of(def.fields, [](const FieldDef& field) {
            return isShownAlike(field.name) && knownType(field.type);
        });
        if (!isShownAlike(name) || !comparable) continue;
        std::map<RowId, std::vector<Value>> model;
        size_t all = 0;
        Scan scan = table.scan();
        while (scan.next()) {
            std::vector<Value> row;
            for (size_t i = 0; i < def.fields.size(); ++i)
                row.push_back(scan.value(i));
            if (std::ranges::all_of(row, [](const Value& value) { return isShownAlike(value); }))
                model.emplace(scan.id(), std::move(row));
            ++all;
        }
        const peer::Rows ours = peer::fromModel(model, def, peer::Detail::AsMdbTools),
                         theirs = peer::exportedByMdbTools(path, def);
        RowCounts shown;
        for (const std::string& row : theirs.rows)
            ++shown[row];
        if (theirs.rows.size() != all)
            fault(what, "mdb-export shows " + std::to_string(theirs.rows.size()) + " rows of '" + name +
                            "' instead of " + std::to_string(all));
        for (const std::string& row : ours.rows)
            if (!take(shown, row)) fault(what, "mdb-export does not show this row of '" + name + "': " + row);
        figures_.shownByMdbTools += theirs.rows.size();
    }
    std::filesystem::remove(path);
}

} // namespace proof_repair
