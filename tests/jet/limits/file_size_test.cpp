// The largest file: 2 GB. The files are real and sparse, so they take no room on the disk.
#include "jet/database.h"

#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

using namespace jet;
namespace fs = std::filesystem;

constexpr uint64_t kLimit = 2048ull << 20;
constexpr uint64_t kPageBytes = 4096;

class FileSize : public testing::Test {
  protected:
    FileSize() {
        std::string name = (fs::temp_directory_path() / "orvan-size-XXXXXX").string();
        folder = ::mkdtemp(name.data());
        path = folder / "BUYUK.MDB";
        const auto database = Database::create(path);
        FieldDef id, text;
        id.name = "Id", id.type = Type::Long;
        text.name = "Metin", text.type = Type::Memo;
        IndexDef key;
        key.name = "indId", key.fields = {{0, false}}, key.primary = true;
        database->createTable("T", {id, text}, {key});
        Table table = database->openTable("T");
        for (int32_t i = 0; i < kFirstRows; ++i)
            table.insert(std::vector<Value>{i, textOf(i)});
    }
    ~FileSize() override { fs::remove_all(folder); }

    static std::string textOf(int32_t row) { return std::to_string(row) + std::string(6000, 'x'); }

    // Rows as they must be: 0 … count - 1, each with its text.
    static void expectRows(Database& database, int32_t count) {
        Table table = database.openTable("T");
        EXPECT_EQ(table.rowCount(), static_cast<uint32_t>(count));
        const ReadScope scope(database.pages());
        int32_t next = 0;
        for (Scan rows = table.scan("indId", {}); rows.next(); ++next) {
            ASSERT_EQ(rows.value(0), Value(next));
            ASSERT_EQ(rows.value(1), Value(textOf(next)));
        }
        EXPECT_EQ(next, count);
    }
    static std::vector<FieldDef> manyFields() { // their definition takes some pages
        std::vector<FieldDef> fields(200);
        for (size_t i = 0; i < fields.size(); ++i)
            fields[i].name = std::string(50, 'a') + std::to_string(i), fields[i].type = Type::Long;
        return fields;
    }
    static int errorOf(const std::function<void()>& work, std::string* text = nullptr) {
        try {
            work();
            return 0;
        } catch (const Error& error) {
            if (text) *text = error.message();
            return error.code();
        }
    }

    static constexpr int32_t kFirstRows = 5;
    fs::path folder, path;
};

// Room for so many more pages: at some row, at some page within it, the limit comes.
TEST_F(FileSize, AtTheLimitAStatementIsRefusedWholeAndTheFileGoesOn) {
    const uint64_t before = fs::file_size(path);
    for (const uint64_t pages : {0, 3, 17}) {
        SCOPED_TRACE(std::to_string(pages) + " pages of room");
        fs::resize_file(path, kLimit - pages * kPageBytes);
        std::string text;
        int32_t rows = kFirstRows;
        {
            const auto database = Database::open(path);
            expectRows(*database, kFirstRows);
            Table table = database->openTable("T");
            int error = 0;
            {
                WriteBatch batch(*database); // the rows before the refused one stay
                error = errorOf(
                    [&] {
                        for (; rows < 1000; ++rows)
                            table.insert(std::vector<Value>{rows, textOf(rows)});
                    },
                    &text);
                batch.commit();
            }
            EXPECT_EQ(error, 3043);
            EXPECT_NE(text.find("2 GB"), std::string::npos) << text;
            EXPECT_LE(fs::file_size(path), kLimit);
            expectRows(*database, rows);
            EXPECT_EQ(errorOf([&] { database->createTable("Sigmaz", manyFields()); }), 3043);
            EXPECT_FALSE(database->hasTable("Sigmaz"));
        }
        {
            const auto database = Database::open(path); // changes that need no room are fine
            Table table = database->openTable("T");
            expectRows(*database, rows);
            WriteBatch batch(*database);
            table.setIndex("indId");
            for (int32_t id = rows - 1; id >= kFirstRows - 1; --id) {
                const Value key[] = {id};
                ASSERT_TRUE(table.seek(SeekOp::Equal, key));
                table.remove();
            }
            table.insert(std::vector<Value>{kFirstRows - 1, textOf(kFirstRows - 1)}); // into the freed pages
            batch.commit();
            expectRows(*database, kFirstRows);
        }
    }
    EXPECT_GT(fs::file_size(path), before);
}

TEST_F(FileSize, PastTheLimitTheFileIsRefusedAndLeftAlone) {
    for (const uint64_t size : {kLimit + 1, kLimit + kPageBytes, kLimit * 2, kLimit * 4}) {
        fs::resize_file(path, size);
        std::string text;
        EXPECT_EQ(errorOf([&] { Database::open(path); }, &text), 3043);
        EXPECT_NE(text.find("2 GB"), std::string::npos) << text;
        EXPECT_EQ(fs::file_size(path), size);
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1) << "no lock file, no journal";
    }
}

} // namespace
