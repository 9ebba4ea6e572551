// A file without damage: repair finds the tables and rows that the engine itself reads in it, and makes the
// file of it that compacting makes.
#include "jet/copy/compact.h"
#include "jet/copy/repair.h"
#include "jet/copy/salvage.h"
#include "jet/database.h"
#include "support/shared_samples.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <unistd.h>

namespace {

using namespace jet;

using Rows = std::vector<std::string>; // sorted
using Content = std::map<std::string, Rows>;

std::string rowText(std::span<const Value> values) {
    std::string text;
    for (const Value& value : values)
        text += std::to_string(value.data().index()) + ':' + (value.isNull() ? "" : value.toText()) + '\x1f';
    return text;
}

Content readByEngine(const std::filesystem::path& path) {
    OpenOptions options;
    options.readOnly = options.ignorePassword = true;
    const auto database = Database::open(path, options);
    const ReadScope read(database->pages());
    Content content;
    for (const std::string& name : database->tableNames(TableKinds::All)) {
        Table table = database->openTable(name);
        Rows& rows = content[name];
        Scan scan = table.scan();
        std::vector<Value> values(table.def().fields.size());
        while (scan.next()) {
            for (size_t i = 0; i < values.size(); ++i)
                values[i] = scan.value(i);
            rows.push_back(rowText(values));
        }
        std::ranges::sort(rows);
    }
    return content;
}

Content readBySalvage(const std::filesystem::path& path, const std::string& password,
                      std::string& complaints) {
    Salvage salvage(systemIo(), path, {.password = password, .workCopy = {}, .step = [] {}});
    for (const std::string& note : salvage.notes())
        complaints += note + "\n";
    if (salvage.damagedPages() > 0) complaints += std::to_string(salvage.damagedPages()) + " damaged pages\n";
    if (!salvage.strayPages().empty()) complaints += "stray pages\n";
    Content content;
    for (const SalvagedTable& table : salvage.tables()) {
        const SalvagedDefinition definition = salvage.definition(table);
        Rows& rows = content[table.name];
        TableLosses losses;
        losses.listed = [&](const RowLoss& loss) {
            complaints += table.name + " " + loss.field + ": " + loss.reason + "\n";
        };
        salvage.readRows(
            table, definition.def, [&](std::span<const Value> values) { rows.push_back(rowText(values)); },
            losses);
        std::ranges::sort(rows);
    }
    return content;
}

TEST(SalvageSound, ReadsTheSamplesAsTheEngineDoes) {
    ORVAN_NEED_SAMPLES();
    for (const auto& sample : orvan_test::samples()) {
        const std::string name = sample.filename().string();
        if (name.find("jet3") != std::string::npos) continue;
        SCOPED_TRACE(name);
        std::string complaints;
        const Content found =
            readBySalvage(sample, name.starts_with("tr-password") ? "Şifre12" : "", complaints);
        if (name == "test-jet4.mdb") // 28 pages that nobody owns, one of them no page at all
            EXPECT_EQ(complaints, "1 damaged pages\n");
        else
            EXPECT_EQ(complaints, "");
        const Content wanted = readByEngine(sample);
        for (const auto& [table, rows] : wanted) {
            ASSERT_TRUE(found.contains(table)) << table;
            EXPECT_TRUE(found.at(table) == rows)
                << table << " has other rows: " << found.at(table).size() << " instead of " << rows.size();
        }
        for (const auto& [table, rows] : found)
            EXPECT_TRUE(wanted.contains(table))
                << "no such table: " << table << ", " << rows.size() << " rows";
    }
}

std::string indexText(const TableDef& def, const IndexDef& index) {
    std::string text = index.name + " " + std::to_string(index.realFlags) + " " + std::to_string(index.type) +
                       " " + std::to_string(index.relType) + " " + std::to_string(index.relatedIndex);
    for (const IndexField& part : index.fields)
        text += " " + def.fields[part.field].name + (part.descending ? "-" : "+");
    return text;
}

// Names but for the documents that repair adds where a file lacks them, since they may have been lost.
Rows objectNames(Database& database) {
    const ReadScope read(database.pages());
    Table objects = database.openTable("MSysObjects");
    Rows names;
    for (objects.moveFirst(); !objects.eof(); objects.moveNext())
        if (const std::string name = objects.value("Name").toText();
            name != "SummaryInfo" && name != "UserDefined")
            names.push_back(name + " " + objects.value("Type").toText() + " " +
                            objects.value("Flags").toText());
    std::ranges::sort(names);
    return names;
}

// Structure of every table, and rows but for the numbers that pages give.
Content contentOf(const std::filesystem::path& path) {
    Content content = readByEngine(path);
    OpenOptions options;
    options.readOnly = options.ignorePassword = true;
    const auto database = Database::open(path, options);
    for (auto& [name, rows] : content) {
        if (name == "MSysACEs" || name == "MSysQueries") rows = {std::to_string(rows.size()) + " rows"};
        if (name == "MSysObjects") rows = objectNames(*database);
        const TableDef& def = database->tableDef(name);
        for (const FieldDef& f : def.fields)
            rows.push_back(f.name + " " + std::to_string(static_cast<int>(f.type)) + " " +
                           std::to_string(f.size) + " " + std::to_string(f.flags) + " " +
                           std::to_string(f.flags2) + " " + f.defaultValue + (f.required ? " required" : "") +
                           (f.allowZeroLength ? " empty" : ""));
        for (const IndexDef& index : def.indexes)
            rows.push_back(indexText(def, index));
        rows.push_back("hidden " + std::to_string(def.hidden) + ", system " + std::to_string(def.system) +
                       ", last " + std::to_string(def.lastAutoNumber));
    }
    return content;
}

TEST(RepairSound, MakesWhatCompactingMakes) {
    ORVAN_NEED_SAMPLES();
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("orvan_repair_sound_" + std::to_string(::getpid()));
    std::filesystem::create_directories(folder);
    for (const auto& sample : orvan_test::samples()) {
        const std::string name = sample.filename().string();
        if (name.find("jet3") != std::string::npos) continue;
        SCOPED_TRACE(name);
        const auto repaired = folder / "onarilmis.mdb", compacted = folder / "sikistirilmis.mdb";
        RepairOptions repair;
        CopyOptions compact;
        repair.password = compact.password = name.starts_with("tr-password") ? "Şifre12" : "";
        const RepairReport report = repairDatabase(sample, repaired, repair);
        compactDatabase(sample, compacted, compact);
        EXPECT_EQ(report.sum().rowsLost + report.sum().fieldsLost, 0u);
        const Content ours = contentOf(repaired), theirs = contentOf(compacted);
        for (const auto& [table, rows] : theirs) {
            ASSERT_TRUE(ours.contains(table)) << table;
            EXPECT_EQ(ours.at(table).size(), rows.size()) << table;
            for (size_t i = 0; i < std::min(rows.size(), ours.at(table).size()); ++i)
                EXPECT_EQ(ours.at(table)[i], rows[i]) << table;
        }
        EXPECT_EQ(ours.size(), theirs.size());
        std::filesystem::remove(repaired);
        std::filesystem::remove(compacted);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "something was left behind";
    std::filesystem::remove_all(folder);
}

} // namespace
