// tests/jet/sql/sql_fixture.h — a database in memory, statements run on it, rows shown as text for tables of
// cases.
#pragma once

#include "jet/database.h"
#include "jet/pages/io_memory.h"
#include "jet/sql/session.h"

#include <gtest/gtest.h>
#include <optional>

namespace sql_test {

// One row after another, "; " between rows, "|" between fields, "∅" for null.
inline std::string shown(const jet::ResultSet& result) {
    std::string text;
    for (size_t row = 0; row < result.rowCount(); ++row) {
        if (row > 0) text += "; ";
        for (size_t column = 0; column < result.columns().size(); ++column) {
            const jet::Value& value = result.at(row, column);
            text += (column > 0 ? "|" : "") + (value.isNull() ? "∅" : value.toText());
        }
    }
    return text;
}

class SqlTest : public ::testing::Test {
  protected:
    explicit SqlTest(jet::SortOrder order = jet::kTurkishSort) {
        jet::CreateOptions options;
        options.sortOrder = order;
        options.io = std::make_shared<jet::MemoryIo>();
        database_ = jet::Database::create("/deneme.mdb", options);
        session_.emplace(*database_);
        // Monday, 15 September 2008, 10:30:00
        session_->setClock([] { return jet::Date::fromParts({2008, 9, 15, 10, 30, 0}); });
    }

    size_t execute(const std::string& sql, std::vector<jet::Value> parameters = {}) {
        return session_->execute(sql, parameters);
    }
    void executeAll(std::initializer_list<const char*> statements) {
        for (const char* sql : statements)
            execute(sql);
    }
    std::string rows(const std::string& sql, std::vector<jet::Value> parameters = {}) {
        return shown(session_->query(sql, parameters));
    }
    std::string value(const std::string& expression) { return rows("SELECT " + expression); }
    // "3075: …" of the error that the statement ends with; "" when it does not.
    std::string errorOf(const std::string& sql, std::vector<jet::Value> parameters = {}) {
        try {
            if (jet::SqlSession::givesRows(sql))
                session_->query(sql, parameters);
            else
                session_->execute(sql, parameters);
        } catch (const jet::Error& error) {
            return std::to_string(error.code()) + ": " + error.what();
        }
        return {};
    }

    std::unique_ptr<jet::Database> database_;
    std::optional<jet::SqlSession> session_;
};

} // namespace sql_test
