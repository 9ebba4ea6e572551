// bench/records_sqlite.cpp — see records_sqlite.h.
#include "records_sqlite.h"

#include "core/values.h"

#include <filesystem>
#include <sqlite3.h>
#include <stdexcept>

SqliteStudents::SqliteStudents(const QString& file, orvan::Connection& level) {
    std::filesystem::remove(orvan::filePath(file));
    if (sqlite3_open(file.toUtf8().constData(), &database_) != SQLITE_OK)
        throw std::runtime_error("no SQLite file");
    const auto rows = level.sql().query("SELECT * FROM OgrenciBilgisi");
    std::string fields, marks;
    for (const jet::ResultColumn& column : rows.columns()) {
        fields += (fields.empty() ? "" : ", ") + column.name;
        marks += marks.empty() ? "?" : ", ?";
    }
    execute(("CREATE TABLE OgrenciBilgisi (" + fields + ")").c_str());
    execute("CREATE TABLE Notlar (No, Donem, Ders)");
    execute("BEGIN");
    sqlite3_stmt* insert = nullptr;
    sqlite3_prepare_v2(database_, ("INSERT INTO OgrenciBilgisi VALUES (" + marks + ")").c_str(), -1, &insert,
                       nullptr);
    for (size_t row = 0; row < rows.rowCount(); ++row) {
        for (size_t column = 0; column < rows.columns().size(); ++column) {
            const std::string text = orvan::utf8(orvan::toText(rows.at(row, column)));
            sqlite3_bind_text(insert, static_cast<int>(column) + 1, text.c_str(), -1, SQLITE_TRANSIENT);
        }
        sqlite3_step(insert);
        sqlite3_reset(insert);
    }
    sqlite3_finalize(insert);
    execute("COMMIT");
    execute("CREATE INDEX indNumara ON OgrenciBilgisi (Ogr_Numarasi, DersID)");
    execute("CREATE INDEX indAdSoyad ON OgrenciBilgisi (Ogr_Adi, Ogr_Soyadi)");
    execute("CREATE INDEX indOgrenci ON Notlar (No, Donem, Ders)");
}

SqliteStudents::~SqliteStudents() { sqlite3_close(database_); }

void SqliteStudents::execute(const char* sql) {
    if (sqlite3_exec(database_, sql, nullptr, nullptr, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(database_));
}

// Reads every column of every row, as a screen would.
size_t SqliteStudents::query(const char* sql, const QStringList& values, std::vector<QString>* firstColumn) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database_, sql, -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(database_));
    for (int i = 0; i < values.size(); ++i)
        sqlite3_bind_text(statement, i + 1, values[i].toUtf8().constData(), -1, SQLITE_TRANSIENT);
    size_t count = 0;
    while (sqlite3_step(statement) == SQLITE_ROW) {
        ++count;
        for (int column = 0; column < sqlite3_column_count(statement); ++column) {
            const auto text =
                QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, column)));
            if (column == 0 && firstColumn) firstColumn->push_back(text);
        }
    }
    sqlite3_finalize(statement);
    return count;
}

std::vector<QString> SqliteStudents::numbers() {
    std::vector<QString> found;
    query("SELECT Ogr_Numarasi FROM OgrenciBilgisi ORDER BY Ogr_Numarasi", {}, &found);
    return found;
}

size_t SqliteStudents::find(const QString& typed) {
    return query(
        "SELECT Ogr_Numarasi, Ogr_Adi, Ogr_Soyadi, Ogr_Mernis FROM OgrenciBilgisi WHERE Ogr_Numarasi || ' ' "
        "|| Ogr_Adi || ' ' || Ogr_Soyadi || ' ' || Ogr_Mernis LIKE ? LIMIT 50",
        {QLatin1Char('%') + typed + QLatin1Char('%')});
}

size_t SqliteStudents::byNumber(const QString& number) {
    return query("SELECT * FROM OgrenciBilgisi WHERE Ogr_Numarasi = ?", {number});
}

QString SqliteStudents::after(const QString& number) {
    std::vector<QString> found;
    query("SELECT * FROM OgrenciBilgisi WHERE Ogr_Numarasi > ? ORDER BY Ogr_Numarasi LIMIT 1", {number},
          &found);
    return found.empty() ? QString() : found.front();
}

size_t SqliteStudents::all() {
    return query("SELECT Ogr_Numarasi, DersID, Ogr_Adi, Ogr_Soyadi, Ogr_MeslekKod, Ogr_Sinif, Ogr_Seviye "
                 "FROM OgrenciBilgisi ORDER BY Ogr_Numarasi",
                 {});
}

void SqliteStudents::addRowsOf(const QString& number, int rows) {
    execute("BEGIN");
    for (int i = 0; i < rows; ++i)
        query("INSERT INTO Notlar VALUES (?, ?, 'MAT')", {number, QString::number(i % 8 + 1)});
    execute("COMMIT");
}

void SqliteStudents::renumber(const QString& from, const QString& to) {
    execute("BEGIN");
    query("UPDATE Notlar SET No = ? WHERE No = ?", {to, from});
    query("UPDATE OgrenciBilgisi SET Ogr_Numarasi = ? WHERE Ogr_Numarasi = ?", {to, from});
    execute("COMMIT");
}

void SqliteStudents::setStageOfAll(const QString& stage) {
    query("UPDATE OgrenciBilgisi SET Ogr_Seviye = ?", {stage});
}
