// Rows that Access wrote: moved rows, dropped columns, indexes, both file versions; and writing into such a
// file.
#include "support/shared_samples.h"
#include "table_fixture.h"

#include <set>

namespace jet_rows {
namespace {

class SampleRows : public TableFixture {
  protected:
    std::filesystem::path copy(const char* name) {
        const auto target = folder / name;
        std::filesystem::copy_file(orvan_test::sharedFolder() / "jet" / "samples" / name, target);
        std::filesystem::permissions(target, std::filesystem::perms::owner_all);
        return target;
    }
};

TEST_F(SampleRows, EveryTableScansAndEveryIndexLeadsToItsRows) {
    ORVAN_NEED_SAMPLES();
    for (const auto& sample : orvan_test::samples()) {
        SCOPED_TRACE(sample.filename());
        OpenOptions options;
        options.readOnly = true;
        options.ignorePassword = true;
        const auto database = Database::open(copy(sample.filename().string().c_str()), options);
        for (const auto& name : database->tableNames(TableKinds::User)) {
            SCOPED_TRACE(name);
            Table table = database->openTable(name);
            const ReadScope scope(database->pages());
            const TableDef def = table.def();
            std::set<RowId> rows;
            Scan scan = table.scan();
            while (scan.next()) {
                EXPECT_TRUE(rows.insert(scan.id()).second);
                for (size_t i = 0; i < def.fields.size(); ++i)
                    scan.value(i);
            }
            EXPECT_EQ(rows.size(), table.rowCount());
            for (const IndexDef& index : def.indexes) {
                SCOPED_TRACE(index.name);
                size_t met = 0;
                Scan walk = table.scan(index.name, {});
                while (walk.next())
                    met += rows.count(walk.id());
                if (index.ignoreNulls)
                    EXPECT_LE(met, rows.size());
                else
                    EXPECT_EQ(met, rows.size());
            }
        }
    }
}

TEST_F(SampleRows, TurkishFileTakesChangesAndKeepsItsIndexes) {
    ORVAN_NEED_SAMPLES();
    for (const char* name :
         {"tr-provinces.mdb", "indexTest-jet4.mdb", "overflowTest-jet4.mdb", "delColTest-jet4.mdb"}) {
        SCOPED_TRACE(name);
        const auto database = Database::open(copy(name));
        for (const auto& tableName : database->tableNames(TableKinds::User)) {
            SCOPED_TRACE(tableName);
            Table table = database->openTable(tableName);
            if (!table.def().readOnlyReason().empty()) continue;
            std::vector<RowId> ids;
            {
                const ReadScope scope(database->pages());
                Scan scan = table.scan();
                while (scan.next())
                    ids.push_back(scan.id());
            }
            WriteBatch batch(*database);
            const auto changed = std::make_unique<bool[]>(table.def().fields.size());
            std::fill_n(changed.get(), table.def().fields.size(), true);
            for (size_t i = 0; i < ids.size(); ++i) {
                const auto row = table.read(ids[i]);
                table.update(ids[i], row, {changed.get(), row.size()});
                EXPECT_TRUE(table.read(ids[i]) == row);
                if (i % 3 == 0) {
                    table.remove(ids[i]);
                    table.insert(row);
                }
            }
            batch.commit();
            checkTable(*database, tableName);
        }
    }
}

} // namespace
} // namespace jet_rows
