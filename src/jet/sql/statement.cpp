// jet/sql/statement.cpp — see statement.h.
#include "jet/sql/statement.h"

#include "jet/sql/function_support.h"

namespace jet::sql {
namespace {

class Compiler {
  public:
    Compiler(sqlite3* db, TableRegistry& tables, CompiledStatement& out)
        : db_(db), tables_(tables), out_(out),
          emitter_(tables, out.text, out.parsed.parameters, tables.database().header().sortOrder) {}

    void run() {
        std::visit([this](auto& body) { take(body); }, out_.parsed.body);
        out_.tables = emitter_.usedTables();
        if (out_.kind != CompiledStatement::Kind::Definition)
            out_.prepared = prepare(db_, tables_.context(), out_.query.sql);
    }

  private:
    void take(const QueryPtr& query) {
        out_.into = query->parts.front().into;
        out_.kind = out_.into.empty() ? CompiledStatement::Kind::Query : CompiledStatement::Kind::SelectInto;
        out_.query = emitter_.query(*query);
    }
    void take(const InsertStatement& insert) {
        change(CompiledStatement::Kind::Insert, emitter_.insert(insert));
    }
    void take(const UpdateStatement& update) {
        change(CompiledStatement::Kind::Update, emitter_.update(update));
    }
    void take(const DeleteStatement& remove) {
        change(CompiledStatement::Kind::Delete, emitter_.remove(remove));
    }
    template <class Definition> void take(const Definition&) {
        out_.kind = CompiledStatement::Kind::Definition;
    }

    void change(CompiledStatement::Kind kind, EmittedChange change) {
        out_.kind = kind;
        out_.query = std::move(change.query);
        out_.targets = std::move(change.targets);
    }

    sqlite3* db_;
    TableRegistry& tables_;
    CompiledStatement& out_;
    Emitter emitter_;
};

} // namespace

std::unique_ptr<CompiledStatement> compile(sqlite3* db, TableRegistry& tables, std::string_view text,
                                           Statement parsed) {
    auto compiled = std::make_unique<CompiledStatement>();
    compiled->text = text;
    compiled->parsed = std::move(parsed);
    Compiler(db, tables, *compiled).run();
    return compiled;
}

PreparedStatement prepare(sqlite3* db, FunctionContext& context, const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    const int result = sqlite3_prepare_v3(db, sql.data(), static_cast<int>(sql.size()),
                                          SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
    PreparedStatement prepared(statement);
    if (result != SQLITE_OK || !statement) throwSqliteError(db, context, result);
    return prepared;
}

void throwSqliteError(sqlite3* db, FunctionContext& context, int result) {
    if (context.pending) std::rethrow_exception(std::exchange(context.pending, nullptr));
    if (result == SQLITE_NOMEM) throw std::bad_alloc();
    const std::string_view message = sqlite3_errmsg(db);
    if (message == "integer overflow") throwOverflow();
    if (result == SQLITE_TOOBIG) throw Error(Err::RecordTooLarge, "Metin ya da ikili değer çok uzun.");
    if (message.find("stack overflow") != std::string_view::npos ||
        message.find("too large") != std::string_view::npos ||
        message.find("too many") != std::string_view::npos ||
        message.find("at most") != std::string_view::npos)
        throw Error(Err::Syntax, "SQL cümlesi çok karmaşık.");
    throw Error(Err::Syntax, "SQL cümlesi bu biçimiyle çalıştırılamıyor.");
}

} // namespace jet::sql
