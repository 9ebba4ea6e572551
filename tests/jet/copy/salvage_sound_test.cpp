// A file without damage gives repair exactly the tables and rows that the engine itself reads in it.
#include "jet/copy/salvage.h"
#include "jet/database.h"
#include "support/shared_samples.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>

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

} // namespace
