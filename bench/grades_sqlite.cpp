#include "grades_data.h"
#include "grades_engines.h"

#include <cmath>
#include <cstdlib>
#include <memory>
#include <sqlite3.h>
#include <stdexcept>

namespace bench {
namespace {

constexpr int kFields = 18;
using Connection = std::unique_ptr<sqlite3, decltype(&sqlite3_close)>;
using Statement = std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)>;

void require(int got, int wanted, sqlite3* db) {
    if (got != wanted) throw std::runtime_error(sqlite3_errmsg(db));
}

Connection openFile(const std::filesystem::path& file) {
    sqlite3* db = nullptr;
    const int result = sqlite3_open(file.c_str(), &db);
    Connection connection(db, sqlite3_close);
    require(result, SQLITE_OK, db);
    return connection;
}

void run(sqlite3* db, const char* sql) {
    require(sqlite3_exec(db, sql, nullptr, nullptr, nullptr), SQLITE_OK, db);
}

Statement prepare(sqlite3* db, const char* sql) {
    sqlite3_stmt* statement = nullptr;
    require(sqlite3_prepare_v2(db, sql, -1, &statement, nullptr), SQLITE_OK, db);
    return {statement, sqlite3_finalize};
}

void bindText(sqlite3_stmt* statement, int at, const std::string& text) {
    sqlite3_bind_text(statement, at, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

// Column types as in the other engine: currency as an integer, the rest as they are.
void addRow(sqlite3_stmt* statement, Work& work) {
    for (int i = 0; i < kFields; ++i) {
        switch (sqlite3_column_type(statement, i)) {
        case SQLITE_TEXT: {
            const unsigned char* text = sqlite3_column_text(statement, i);
            const int size = sqlite3_column_bytes(statement, i);
            work.checksum += static_cast<uint64_t>(size) + (size > 0 ? text[0] : 0);
            break;
        }
        case SQLITE_INTEGER:
            work.checksum += static_cast<uint64_t>(sqlite3_column_int64(statement, i));
            break;
        case SQLITE_FLOAT:
            work.checksum += static_cast<uint64_t>(std::llround(sqlite3_column_double(statement, i) * 100));
            break;
        default: break;
        }
    }
    ++work.rows;
}

class PlainSqlite : public Engine {
  public:
    void insertAll(const std::filesystem::path& file) override {
        std::filesystem::remove(file);
        const Connection db = openFile(file);
        run(db.get(), "CREATE TABLE Notlar (Id INTEGER NOT NULL, OgrNo TEXT, Ad TEXT, Soyad TEXT, DersKodu "
                      "TEXT, DersAdi TEXT,"
                      " DersYili TEXT, Donem INTEGER, Saat INTEGER, Sozlu1 TEXT, Sozlu2 TEXT, Yazili1 TEXT, "
                      "Yazili2 TEXT,"
                      " Yazili3 TEXT, Yilsonu TEXT, Ortalama REAL, Ucret INTEGER, Tarih REAL);"
                      "CREATE UNIQUE INDEX indId ON Notlar (Id);"
                      "CREATE INDEX indOgrDonem ON Notlar (OgrNo, Donem);"
                      "BEGIN");
        {
            const Statement insert =
                prepare(db.get(), "INSERT INTO Notlar VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?)");
            Grade g;
            for (int row = 0; row < kRows; ++row) {
                makeGrade(row, g);
                bind(insert.get(), g);
                require(sqlite3_step(insert.get()), SQLITE_DONE, db.get());
                sqlite3_reset(insert.get());
            }
        }
        run(db.get(), "COMMIT");
    }

    Work scanAll(const std::filesystem::path& file) override {
        const Connection db = openFile(file);
        const Statement all = prepare(db.get(), "SELECT * FROM Notlar");
        Work work;
        while (sqlite3_step(all.get()) == SQLITE_ROW)
            addRow(all.get(), work);
        return work;
    }

    Work seekAll(const std::filesystem::path& file) override {
        const Connection db = openFile(file);
        run(db.get(), "BEGIN"); // one read lock, as the other engine's read scope
        const Statement seek = prepare(db.get(), "SELECT * FROM Notlar WHERE OgrNo = ? AND Donem = ?");
        Work work;
        for (int i = 0; i < kSeeks; ++i) {
            const std::string no = studentNo(seekStudent(i));
            bindText(seek.get(), 1, no);
            sqlite3_bind_int(seek.get(), 2, seekTerm(i));
            while (sqlite3_step(seek.get()) == SQLITE_ROW)
                addRow(seek.get(), work);
            sqlite3_reset(seek.get());
        }
        return work;
    }

  private:
    static void bind(sqlite3_stmt* s, const Grade& g) {
        sqlite3_bind_int(s, 1, g.id);
        int at = 2;
        for (const std::string* text :
             {&g.studentNo, &g.firstName, &g.surname, &g.courseCode, &g.courseName, &g.schoolYear})
            bindText(s, at++, *text);
        sqlite3_bind_int(s, at++, g.term);
        sqlite3_bind_int(s, at++, g.hours);
        for (const std::string* text :
             {&g.oral1, &g.oral2, &g.written1, &g.written2, &g.written3, &g.yearEnd})
            bindText(s, at++, *text);
        sqlite3_bind_double(s, at++, g.average);
        sqlite3_bind_int64(s, at++, g.feeTenThousandths);
        sqlite3_bind_double(s, at, g.enteredOn);
    }
};

} // namespace

Engine& plainSqlite() {
    static PlainSqlite engine;
    return engine;
}

} // namespace bench
