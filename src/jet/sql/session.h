// jet/sql/session.h — SQL in Jet's dialect on one database.
// A query's result is a snapshot; each statement is atomic; values come in as parameters, never as text.
#pragma once

#include "jet/value.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

class Database;

struct ResultColumn {
    std::string name;
    Type type = Type::Text; // of the field it comes from, or of the expression as far as known
};

// A query's rows, held in memory.
class ResultSet {
  public:
    const std::vector<ResultColumn>& columns() const { return columns_; }
    size_t rowCount() const { return rowCount_; }
    const Value& at(size_t row, size_t column) const { return cells_[row * columns_.size() + column]; }
    const Value& at(size_t row, std::string_view column) const; // without regard to case; Err::NoSuchItem
    bool empty() const { return rowCount_ == 0; }

  private:
    friend class SqlSession;
    Type typeSeen(size_t column, size_t width) const;
    std::vector<ResultColumn> columns_;
    std::vector<Value> cells_;
    size_t rowCount_ = 0;
};

class SqlSession {
  public:
    explicit SqlSession(Database& database); // the database must outlive it
    ~SqlSession();

    // Parameters: "?" in order, or names ([Ad?] and PARAMETERS are Jet's; here ":name" / "@name") in order of
    // first appearance. Err::Syntax (the text shows the place), NoSuchTable, NoSuchItem, TooFewParameters, …
    ResultSet query(std::string_view sql, std::span<const Value> parameters = {});
    // INSERT / UPDATE / DELETE: rows touched. DDL: 0.
    size_t execute(std::string_view sql, std::span<const Value> parameters = {});
    // How it would run: one line a step, with the index used.
    std::string explain(std::string_view sql, std::span<const Value> parameters = {});

    // True for a statement that query() runs, false for one that execute() runs. Err::Syntax.
    static bool givesRows(std::string_view sql);

    // "Now" for Now() and Date(); the system clock unless a test sets it.
    void setClock(Date (*now)());

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace jet
