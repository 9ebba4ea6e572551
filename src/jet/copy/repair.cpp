// jet/copy/repair.h
#include "jet/copy/repair.h"

#include "jet/copy/repair_system.h"
#include "jet/error.h"
#include "jet/format/field_size.h"
#include "jet/pages/io_error.h"
#include "jet/table/catalog.h"

#include <algorithm>

namespace jet {

namespace {

// Thrown when the caller's progress function wants no more.
struct RepairStopped {};

constexpr size_t kPasses = 3;           // over the pages: one over all, two over those of each table
constexpr size_t kStepsPerAsking = 256; // rows written between two questions whether to stop

// The definition that the new file gets: a field that damage gave an impossible type or form holds the same
// bytes in one that every program knows.
TableDef forNewFile(TableDef def) {
    constexpr Type kOfAccess{0x11}; // in a table of its own; not for us to judge
    constexpr uint16_t kMaxBinary = 510;
    for (FieldDef& field : def.fields) {
        if (field.type == kOfAccess) continue;
        if (!knownType(field.type)) {
            field.type = Type::Binary;
            field.size = std::clamp<uint16_t>(field.size, 1, kMaxBinary);
        }
        if (field.type == Type::Binary || field.isLongValue()) field.fixedLength = false;
    }
    return def;
}

class Repair {
  public:
    Repair(const std::filesystem::path& in, const std::filesystem::path& out, const RepairOptions& options)
        : options_(options), io_(options.io ? options.io : systemIo()),
          salvage_(io_, in, salvageOptions(in, out)),
          writer_(out, {salvage_.header(), salvage_.page0()}, writerOptions()) {}

    RepairReport run() {
        report_.pages = salvage_.pageCount();
        report_.pagesDamaged = salvage_.damagedPages();
        report_.notes = salvage_.notes();
        for (const SalvagedTable& table : salvage_.tables())
            if (systemTableName(table.id).empty()) copyTable(table);
        tellStrays();
        SystemRows(
            salvage_, writer_, std::move(made_),
            [this](const SalvagedTable& table, const TableDef& def, const TableSalvage::RowSink& sink) {
                readSystem(table, def, sink);
            },
            report_.notes)
            .carryOver();
        for (std::string& note : writer_.finish())
            report_.notes.push_back(std::move(note));
        std::erase_if(report_.tables, [](const RepairedTable& table) {
            return table.name.starts_with("MSys") && table.whole();
        });
        return std::move(report_);
    }

  private:
    SalvageOptions salvageOptions(const std::filesystem::path& in, const std::filesystem::path& out) {
        if (io_->exists(out))
            throw Error(Err::DatabaseExists, "Onarılan dosyanın adında bir dosya zaten var.")
                .inFile(pathText(out));
        if (io_->exists(in))
            total_ =
                kPasses * static_cast<size_t>(io_->open(in, OpenMode::ReadOnly)->size() / kJet4.pageSize + 1);
        std::filesystem::path copy = out;
        copy += ".kopya";
        return {.password = options_.password, .workCopy = copy, .step = [this] { step(); }};
    }

    WriterOptions writerOptions() {
        WriterOptions made;
        made.io = io_;
        made.lenient = true;
        made.step = [this] { stepWriting(); };
        return made;
    }

    void step() {
        ++done_;
        ask();
    }
    void stepWriting() {
        if (++written_ % kStepsPerAsking == 0) ask();
    }
    void ask() {
        if (options_.progress && !options_.progress(std::min(done_, total_), total_)) throw RepairStopped();
    }

    // Tables whose definition stands against itself keep their rows without the indexes.
    bool begin(const SalvagedTable& table, SalvagedDefinition& definition, RepairedTable& told) {
        try {
            TableDef made = forNewFile(definition.def);
            const bool changed =
                !std::ranges::equal(made.fields, definition.def.fields, {}, &FieldDef::type, &FieldDef::type);
            writer_.beginTable({std::move(made), table.flags, properties(table, told)});
            if (changed) told.notes.push_back("Türü bilinmeyen alanlar ikili alan yapıldı.");
            return true;
        } catch (const Error& error) {
            if (error.number() != Err::InvalidArgument && error.number() != Err::RecordTooLarge) throw;
            if (definition.def.indexes.empty()) {
                told.notes.push_back("Tablo yeniden oluşturulamadı: " + error.message());
                return false;
            }
            definition.def.indexes.clear();
            definition.indexesLost = true;
            return begin(table, definition, told);
        }
    }

    static Bytes properties(const SalvagedTable& table, RepairedTable& told) {
        try {
            PropertySet::parse(table.properties);
            return table.properties;
        } catch (const Error&) {
            told.notes.push_back("Tablonun özellikleri okunamadı.");
            return {};
        }
    }

    void copyTable(const SalvagedTable& table) {
        RepairedTable told{.name = table.name, .notes = {}};
        SalvagedDefinition definition = salvage_.definition(table);
        if (table.nameLost) told.notes.push_back("Tablonun adı okunamadı; bu ad verildi.");
        if (definition.namesMadeUp) told.notes.push_back("Bazı alan adları okunamadı; yerlerine ad verildi.");
        const bool made = begin(table, definition, told);
        if (definition.indexesLost) told.notes.push_back("Dizinlerin tanımı okunamadı; tablo dizinsiz.");
        if (made) {
            made_.emplace(table.id, table.name);
            read(
                table, definition.def, [this](std::span<const Value> row) { writer_.addRow(row); }, told);
            for (const IndexOutcome& outcome : writer_.endTable())
                if (outcome.fate != IndexFate::Built)
                    told.notes.push_back("“" + outcome.index + "”: " + outcome.reason);
        }
        countMissing(definition, told);
        report_.tables.push_back(std::move(told));
    }

    void read(const SalvagedTable& table, const TableDef& def, const TableSalvage::RowSink& sink,
              RepairedTable& told) {
        TableLosses losses;
        losses.listed = [&](const RowLoss& loss) { tell(table.name, loss); };
        salvage_.readRows(table, def, sink, losses);
        told.rowsSaved += losses.rowsSaved;
        told.rowsLost += losses.rowsLost;
        told.fieldsLost += losses.fieldsLost;
        told.pagesDamaged += losses.pagesDamaged;
    }

    // Some system tables are read twice; their losses count once.
    void readSystem(const SalvagedTable& table, const TableDef& def, const TableSalvage::RowSink& sink) {
        RepairedTable told{.name = table.name, .notes = {}};
        const auto before = std::ranges::find(report_.tables, table.name, &RepairedTable::name);
        if (before != report_.tables.end()) {
            TableLosses ignored;
            salvage_.readRows(table, def, sink, ignored);
            return;
        }
        read(table, def, sink, told);
        report_.tables.push_back(std::move(told));
    }

    void tell(const std::string& table, const RowLoss& loss) {
        ++report_.lossCount;
        if (report_.losses.size() < options_.maxLosses)
            report_.losses.push_back({table, loss.field, loss.row.page, loss.row.row, loss.reason});
    }

    // Rows of pages that are gone altogether are known by the table's own count alone, if that can be right.
    void countMissing(const SalvagedDefinition& definition, RepairedTable& told) const {
        const uint64_t wanted = definition.def.rowCount;
        if (definition.def.system || wanted > 2 * kMaxRowsPerPage * salvage_.pageCount()) return;
        if (wanted > told.rowsSaved) told.rowsLost = std::max(told.rowsLost, wanted - told.rowsSaved);
    }

    void tellStrays() {
        for (const StrayPages& stray : salvage_.strayPages()) {
            RepairedTable told{.name = stray.table.empty() ? "(sayfa " + std::to_string(stray.owner) + ")"
                                                           : stray.table,
                               .rowsLost = stray.rows,
                               .pagesDamaged = 0,
                               .notes = {}};
            told.notes.push_back("Tablonun tanımı yitmiş: " + std::to_string(stray.pages) +
                                 " veri sayfası çözülemedi.");
            report_.tables.push_back(std::move(told));
            if (report_.tables.size() > kMaxToldTables) break;
        }
    }
    static constexpr size_t kMaxToldTables = 20'000;

    const RepairOptions& options_;
    std::shared_ptr<Io> io_;
    size_t done_ = 0, total_ = 0, written_ = 0;
    Salvage salvage_;
    DatabaseWriter writer_;
    std::unordered_map<PageNo, std::string> made_;
    RepairReport report_;
};

} // namespace

RepairedTable RepairReport::sum() const {
    RepairedTable sum;
    for (const RepairedTable& table : tables) {
        sum.rowsSaved += table.rowsSaved;
        sum.rowsLost += table.rowsLost;
        sum.fieldsLost += table.fieldsLost;
        sum.pagesDamaged += table.pagesDamaged;
    }
    return sum;
}

RepairReport repairDatabase(const std::filesystem::path& in, const std::filesystem::path& out,
                            const RepairOptions& options) {
    try {
        return Repair(in, out, options).run();
    } catch (const RepairStopped&) {
        RepairReport report;
        report.stopped = true;
        return report;
    }
}

} // namespace jet
