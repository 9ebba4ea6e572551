// tests/jet/table/catalog/catalog_fixture.h — temporary database files, their rows as text, and mdbtools as
// the second reader of what we write.
#pragma once

#include "jet/database.h"
#include "support/shared_samples.h"

#include <cstdio>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

namespace catalog_test {

namespace fs = std::filesystem;

// A folder of its own for each test, removed at the end.
class Files : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        folder_ =
            fs::temp_directory_path() / ("orvan-catalog-" + std::to_string(::getpid()) + "-" + info->name());
        fs::create_directories(folder_);
    }
    ~Files() override { fs::remove_all(folder_); } // after the files of the derived classes are closed

    fs::path file(const std::string& name) const { return folder_ / name; }
    fs::path copyOf(const fs::path& sample) const {
        const fs::path copy = folder_ / sample.filename();
        fs::remove(copy);
        fs::copy_file(sample, copy);
        fs::permissions(copy, fs::perms::owner_read | fs::perms::owner_write);
        return copy;
    }

  private:
    fs::path folder_;
};

inline std::string bytesOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

inline void writeFile(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

// --- mdbtools
inline bool haveMdbtools() { return std::system("command -v mdb-ver >/dev/null 2>&1") == 0; }

inline std::string run(const std::string& command) {
    std::string output;
    FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
    char part[4096];
    while (const size_t n = std::fread(part, 1, sizeof part, pipe))
        output.append(part, n);
    EXPECT_EQ(::pclose(pipe), 0) << command << "\n" << output;
    return output;
}

inline std::vector<std::string> lines(const std::string& text) {
    std::vector<std::string> found;
    for (size_t at = 0; at < text.size();) {
        const size_t end = std::min(text.find('\n', at), text.size());
        found.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return found;
}

// Rows as mdb-export prints them, without header, "|" between fields, sorted.
inline std::vector<std::string> exported(const fs::path& path, const std::string& table) {
    auto rows = lines(run("mdb-export -H -Q -d '|' -b strip -T '%Y-%m-%d %H:%M:%S' -D '%Y-%m-%d' '" +
                          path.string() + "' '" + table + "'"));
    std::sort(rows.begin(), rows.end());
    return rows;
}

// --- our own reading
// "field=value" of every field in display order, one text a row, sorted.
inline std::vector<std::string> rowsOf(jet::Database& database, const std::string& name) {
    const jet::ReadScope read(database.pages());
    jet::Table table = database.openTable(name);
    std::vector<std::string> rows;
    jet::Scan scan = table.scan();
    while (scan.next()) {
        std::string row;
        for (size_t i = 0; i < scan.row().fieldCount(); ++i) {
            const jet::Value value = scan.value(i);
            row += scan.row().def().fields[i].name + "=" + (value.isNull() ? "(null)" : value.toText()) + "|";
        }
        rows.push_back(row);
    }
    std::sort(rows.begin(), rows.end());
    return rows;
}

// Values of one field along an index, in its order.
inline std::vector<std::string> along(jet::Database& database, const std::string& name,
                                      const std::string& index, const std::string& field) {
    const jet::ReadScope read(database.pages());
    jet::Table table = database.openTable(name);
    const size_t position = table.def().findField(field).value();
    std::vector<std::string> values;
    jet::Scan scan = table.scan(index, {});
    while (scan.next())
        values.push_back(scan.value(position).toText());
    return values;
}

inline std::vector<std::string> fieldNames(jet::Database& database, const std::string& table) {
    std::vector<std::string> names;
    for (const auto& field : database.tableDef(table).fields)
        names.push_back(field.name);
    return names;
}

// The engine's number of the error that `statement` throws; 0 = none.
template <class Statement> int errorOf(Statement&& statement) {
    try {
        statement();
    } catch (const jet::Error& error) {
        EXPECT_FALSE(error.message().empty());
        return error.code();
    }
    return 0;
}

// --- building blocks
inline jet::FieldDef field(std::string name, jet::Type type, uint16_t size = 0) {
    jet::FieldDef made;
    made.name = std::move(name);
    made.type = type;
    made.size = size;
    return made;
}

inline jet::IndexDef index(std::string name, std::vector<uint16_t> fields) {
    jet::IndexDef made;
    made.name = std::move(name);
    for (const uint16_t position : fields)
        made.fields.push_back({position, false});
    return made;
}

inline jet::IndexDef primaryKey(uint16_t position) {
    jet::IndexDef made = index("PrimaryKey", {position});
    made.primary = true;
    return made;
}

// Faults of the whole file, one a line; empty when sound.
std::string faultsOf(jet::Database& database);

} // namespace catalog_test
