// jet/sql/session.cpp — one private SQLite connection over the tables of a database, and the statements it
// remembers.
#include "jet/sql/session.h"

#include "jet/database.h"
#include "jet/index/sort_key.h"
#include "jet/sql/explain.h"
#include "jet/sql/parser.h"
#include "jet/sql/runner.h"

#include <algorithm>
#include <ctime>
#include <list>
#include <unordered_map>

namespace jet {
namespace {

constexpr size_t kRememberedStatements = 64;
constexpr int kExpressionDepth = 4000;   // SQLite's own bound; the parser's is lower
constexpr int kLongestValue = 128 << 20; // bytes; joined texts cannot eat the machine

Date systemClock() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    return Date::fromParts({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                            local.tm_min, std::min(local.tm_sec, 59)});
}

struct ConnectionCloser {
    void operator()(sqlite3* db) const { sqlite3_close(db); }
};

std::unique_ptr<sqlite3, ConnectionCloser> openConnection() {
    sqlite3* db = nullptr;
    const int result = sqlite3_open_v2(":memory:", &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    std::unique_ptr<sqlite3, ConnectionCloser> connection(db);
    if (result != SQLITE_OK) throw std::bad_alloc();
    sqlite3_limit(db, SQLITE_LIMIT_EXPR_DEPTH, kExpressionDepth);
    sqlite3_limit(db, SQLITE_LIMIT_LENGTH, kLongestValue);
    sqlite3_exec(db, "PRAGMA temp_store=MEMORY", nullptr, nullptr, nullptr);
    return connection;
}

} // namespace

using sql::CompiledStatement;

struct SqlSession::Impl {
    explicit Impl(Database& used)
        : database(used), connection(openConnection()), db(connection.get()), tables(used, db, context) {
        context.order = database.header().sortOrder;
        sql::registerCollation(db, context.order);
        if (!knowsSortOrder(context.order)) context.order = kGeneralSort;
        sql::registerTextFunctions(db, context);
        sql::registerNumberFunctions(db, context);
        sql::registerDateFunctions(db, context);
        sql::registerFormatFunctions(db, context);
        sql::registerAggregates(db, context);
        sql::registerLike(db, context);
    }

    // The statement for a text, compiled now or before. REQUIRES: a read or write scope.
    CompiledStatement& statement(std::string_view text, std::optional<sql::Statement>& parsed) {
        if (const auto known = byText.find(text); known != byText.end()) {
            const auto entry = known->second;
            const auto fits = [this](sql::RegisteredTable* table) {
                return table->stillFits(database.pages());
            };
            if (std::all_of((*entry)->tables.begin(), (*entry)->tables.end(), fits)) {
                remembered.splice(remembered.begin(), remembered, entry);
                return **entry;
            }
            forgetAll();
        }
        if (!parsed) parsed = sql::parseStatement(text);
        context.pending = nullptr;
        auto compiled = compileFresh(text, *parsed);
        if (remembered.size() >= kRememberedStatements) {
            byText.erase(remembered.back()->text);
            remembered.pop_back();
        }
        remembered.push_front(std::move(compiled));
        byText.emplace(remembered.front()->text, remembered.begin());
        return *remembered.front();
    }

    // Tables that other statements use may have changed, too: then everything starts anew.
    std::unique_ptr<CompiledStatement> compileFresh(std::string_view text, sql::Statement& parsed) {
        if (!tables.allFit()) forgetAll();
        return sql::compile(db, tables, text, std::move(parsed));
    }

    void forgetAll() {
        byText.clear();
        remembered.clear();
        tables.clear();
    }

    std::optional<sql::Statement> parseUnlessKnown(std::string_view text) {
        if (byText.contains(text)) return {};
        return sql::parseStatement(text);
    }

    size_t change(CompiledStatement& compiled, std::span<const Value> parameters) {
        sql::Runner runner(db, context, compiled, parameters);
        if (compiled.kind == CompiledStatement::Kind::SelectInto)
            return sql::selectInto(database, runner, compiled);
        return sql::applyChange(runner, compiled);
    }

    Database& database;
    sql::FunctionContext context;
    std::unique_ptr<sqlite3, ConnectionCloser> connection;
    sqlite3* db;
    sql::TableRegistry tables;
    std::list<std::unique_ptr<CompiledStatement>> remembered; // last used first
    std::unordered_map<std::string_view, std::list<std::unique_ptr<CompiledStatement>>::iterator> byText;
    Date (*clock)() = systemClock;
};

SqlSession::SqlSession(Database& database) : impl_(std::make_unique<Impl>(database)) {}
SqlSession::~SqlSession() = default;

void SqlSession::setClock(Date (*now)()) { impl_->clock = now; }

ResultSet SqlSession::query(std::string_view text, std::span<const Value> parameters) {
    auto parsed = impl_->parseUnlessKnown(text);
    const ReadScope scope(impl_->database.pages());
    CompiledStatement& compiled = impl_->statement(text, parsed);
    if (compiled.kind != CompiledStatement::Kind::Query)
        throw Error(Err::InvalidArgument, "Bu SQL cümlesi kayıt döndürmez.");
    impl_->context.now = impl_->clock();
    sql::Runner runner(impl_->db, impl_->context, compiled, parameters);
    ResultSet result;
    result.cells_ = runner.allRows();
    result.rowCount_ = result.cells_.size() / compiled.query.columns.size();
    for (size_t i = 0; i < compiled.query.columns.size(); ++i) {
        const sql::OutColumn& column = compiled.query.columns[i];
        result.columns_.push_back(
            {column.name, column.type.value_or(result.typeSeen(i, compiled.query.columns.size()))});
    }
    return result;
}

size_t SqlSession::execute(std::string_view text, std::span<const Value> parameters) {
    auto parsed = impl_->parseUnlessKnown(text);
    impl_->database.requireWritable();
    WriteScope scope(impl_->database.pages());
    CompiledStatement& compiled = impl_->statement(text, parsed);
    impl_->context.now = impl_->clock();
    size_t touched = 0;
    switch (compiled.kind) {
    case CompiledStatement::Kind::Query:
        throw Error(Err::InvalidArgument, "SELECT cümlesi kayıt değiştirmez; sorgu olarak çalıştırılmalı.");
    case CompiledStatement::Kind::Definition: {
        const sql::Statement definition = std::move(compiled.parsed);
        impl_->forgetAll(); // `compiled` is gone
        sql::runDefinition(impl_->database, definition);
        break;
    }
    default: touched = impl_->change(compiled, parameters);
    }
    scope.commit();
    return touched;
}

std::string SqlSession::explain(std::string_view text, std::span<const Value>) {
    auto parsed = impl_->parseUnlessKnown(text);
    const ReadScope scope(impl_->database.pages());
    return sql::explainStatement(impl_->db, impl_->context, impl_->statement(text, parsed));
}

bool SqlSession::givesRows(std::string_view text) {
    const sql::Statement parsed = sql::parseStatement(text);
    const auto* query = std::get_if<sql::QueryPtr>(&parsed.body);
    return query && (*query)->parts.front().into.empty();
}

const Value& ResultSet::at(size_t row, std::string_view column) const {
    for (size_t i = 0; i < columns_.size(); ++i)
        if (sameName(columns_[i].name, column)) return at(row, i);
    throw Error(Err::NoSuchItem, "Sorgu sonucunda “" + std::string(column) + "” adında bir alan yok.");
}

// For a column whose type the statement does not tell: that of its first value.
Type ResultSet::typeSeen(size_t column, size_t width) const {
    for (size_t i = column; i < cells_.size(); i += width) {
        if (cells_[i].get<bool>()) return Type::Boolean;
        if (cells_[i].get<int32_t>()) return Type::Long;
        if (cells_[i].get<Currency>()) return Type::Currency;
        if (cells_[i].get<float>()) return Type::Single;
        if (cells_[i].get<double>()) return Type::Double;
        if (cells_[i].get<Date>()) return Type::Date;
        if (cells_[i].get<Bytes>()) return Type::Binary;
        if (!cells_[i].isNull()) break;
    }
    return Type::Text;
}

} // namespace jet
