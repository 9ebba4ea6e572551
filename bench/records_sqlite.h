// bench/records_sqlite.h — the students of a level database once more in a plain SQLite file, with the same
// indexes; what SQLite takes for the same look-ups and changes.
#pragma once

#include "core/database_set.h"

#include <vector>

struct sqlite3;

class SqliteStudents {
  public:
    // Makes the file anew from the students of `level`. Throws std::runtime_error.
    SqliteStudents(const QString& file, orvan::Connection& level);
    ~SqliteStudents();
    SqliteStudents(const SqliteStudents&) = delete;
    SqliteStudents& operator=(const SqliteStudents&) = delete;

    std::vector<QString> numbers();    // all, in order
    size_t find(const QString& typed); // 50 students in whom the text occurs
    size_t byNumber(const QString& number);
    QString after(const QString& number); // the next one with all his fields; the first behind the last
    size_t all();
    void addRowsOf(const QString& number, int rows);
    void renumber(const QString& from, const QString& to); // one transaction, flushed
    void setStageOfAll(const QString& stage);

  private:
    void execute(const char* sql);
    size_t query(const char* sql, const QStringList& values, std::vector<QString>* firstColumn = nullptr);
    sqlite3* database_ = nullptr;
};
