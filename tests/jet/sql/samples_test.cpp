// Files that other programs made, read by SQL: an index search and a test that no index serves give the same
// rows.
#include "sql_fixture.h"
#include "support/shared_samples.h"

#include <algorithm>

using namespace sql_test;

namespace {

std::string quoted(const std::string& name) { return "[" + name + "]"; }

std::unique_ptr<jet::Database> openSample(const std::filesystem::path& path) {
    jet::OpenOptions options;
    options.readOnly = true;
    if (path.stem().string().find("password") != std::string::npos) options.password = "Şifre12";
    return jet::Database::open(path, options);
}

// A name that cannot stand in brackets cannot be asked for in SQL.
bool speakable(const std::string& name) { return name.find(']') == std::string::npos; }

TEST(SqlOnSamples, IndexSearchesFindWhatScansFind) {
    ORVAN_NEED_SAMPLES();
    size_t searches = 0;
    for (const auto& path : orvan_test::samples()) {
        const auto database = openSample(path);
        jet::SqlSession session(*database);
        for (const std::string& name : database->tableNames()) {
            const jet::TableDef def = database->tableDef(name);
            if (!speakable(name) || def.fields.empty()) continue;
            const auto all = session.query("SELECT * FROM " + quoted(name));
            EXPECT_EQ(all.columns().size(), def.fields.size()) << path << " " << name;
            for (const jet::IndexDef& index : def.indexes) {
                const size_t field = index.fields.front().field;
                const jet::FieldDef& key = def.fields[field];
                if (!speakable(key.name) || key.isLongValue()) continue;
                const std::string select = "SELECT Count(*) FROM " + quoted(name) + " WHERE ";
                for (size_t row = 0; row < all.rowCount(); row += std::max<size_t>(1, all.rowCount() / 7)) {
                    const jet::Value& value = all.at(row, field);
                    if (value.isNull()) continue;
                    for (const char* op : {"=", ">", "<="}) {
                        // IIf hides the field from the index.
                        const std::string byIndex = select + quoted(key.name) + op + "?";
                        const std::string byScan =
                            select + "IIf(True," + quoted(key.name) + ",Null)" + op + "?";
                        const std::vector<jet::Value> parameters = {value};
                        EXPECT_EQ(shown(session.query(byIndex, parameters)),
                                  shown(session.query(byScan, parameters)))
                            << path << " " << byIndex << " " << value.toText();
                        ++searches;
                    }
                }
            }
        }
    }
    EXPECT_GT(searches, 200u);
}

} // namespace
