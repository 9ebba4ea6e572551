// jet/sql/explain.cpp — see explain.h.
#include "jet/sql/explain.h"

#include "jet/sql/function_support.h"

#include <map>

namespace jet::sql {
namespace {

struct Phrase {
    std::string_view begins, text;
};

constexpr Phrase kPhrases[] = {
    {"USE TEMP B-TREE FOR ORDER BY", "sıralama (ORDER BY) bellekte"},
    {"USE TEMP B-TREE FOR RIGHT PART OF ORDER BY", "sıralamanın (ORDER BY) kalanı bellekte"},
    {"USE TEMP B-TREE FOR LAST TERM OF ORDER BY", "sıralamanın (ORDER BY) kalanı bellekte"},
    {"USE TEMP B-TREE FOR GROUP BY", "gruplama (GROUP BY) bellekte"},
    {"USE TEMP B-TREE FOR DISTINCT", "yinelenenler (DISTINCT) bellekte ayıklanır"},
    {"USE TEMP B-TREE FOR", "yinelenenler bellekte ayıklanır"},
    {"CORRELATED SCALAR SUBQUERY", "her satır için alt sorgu"},
    {"SCALAR SUBQUERY", "bir kez alt sorgu"},
    {"CORRELATED LIST SUBQUERY", "her satır için alt sorgu listesi"},
    {"LIST SUBQUERY", "bir kez alt sorgu listesi"},
    {"REUSE LIST SUBQUERY", "aynı alt sorgu listesi"},
    {"CO-ROUTINE", "alt sorgu"},
    {"MATERIALIZE", "alt sorgu (sonucu bellekte tutulur)"},
    {"COMPOUND QUERY", "birleşik sorgu (UNION)"},
    {"MERGE (UNION", "sıralı birleştirme (UNION)"},
    {"LEFT-MOST SUBQUERY", "ilk sorgu"},
    {"LEFT", "ilk sorgu"},
    {"RIGHT", "ikinci sorgu"},
    {"UNION ALL", "eklenen sorgu (UNION ALL)"},
    {"UNION", "eklenen sorgu (UNION), yinelenenler bellekte ayıklanır"},
    {"SCAN CONSTANT ROW", "tek sabit satır"},
    {"SCAN", "alt sorgunun sonucu: baştan sona tarama"},
    {"SEARCH", "alt sorgunun sonucu: geçici dizinle arama"},
};

// Our own words travel in the index text of the virtual table.
std::string describe(std::string_view detail) {
    constexpr std::string_view kOurs = "VIRTUAL TABLE INDEX ";
    if (const auto at = detail.find(kOurs); at != std::string_view::npos) {
        const auto colon = detail.find(':', at);
        if (colon != std::string_view::npos) return std::string(detail.substr(colon + 1));
    }
    for (const Phrase& phrase : kPhrases)
        if (detail.substr(0, phrase.begins.size()) == phrase.begins) return std::string(phrase.text);
    return "ara adım";
}

std::string_view actionOf(CompiledStatement::Kind kind) {
    switch (kind) {
    case CompiledStatement::Kind::SelectInto: return "sonuç yeni tabloya yazılır";
    case CompiledStatement::Kind::Insert: return "satırlar eklenir";
    case CompiledStatement::Kind::Update: return "bulunan satırlar değiştirilir";
    case CompiledStatement::Kind::Delete: return "bulunan satırlar silinir";
    default: return {};
    }
}

} // namespace

std::string explainStatement(sqlite3* db, FunctionContext& context, const CompiledStatement& statement) {
    if (statement.kind == CompiledStatement::Kind::Definition) return "yapı değişikliği\n";
    std::string text;
    if (!statement.targets.empty()) text += statement.targets.front().table->def.name + ": ";
    if (const auto action = actionOf(statement.kind); !action.empty()) text.append(action).append("\n");
    const PreparedStatement plan = prepare(db, context, "EXPLAIN QUERY PLAN " + statement.query.sql);
    std::map<int, size_t> depth; // of the steps by their number
    int result = SQLITE_OK;
    while ((result = sqlite3_step(plan.get())) == SQLITE_ROW) {
        const int id = sqlite3_column_int(plan.get(), 0), parent = sqlite3_column_int(plan.get(), 1);
        const auto above = depth.find(parent);
        const size_t level = depth[id] = above == depth.end() ? 0 : above->second + 1;
        const auto* detail = reinterpret_cast<const char*>(sqlite3_column_text(plan.get(), 3));
        text += std::string(level * 2, ' ') + describe(detail ? detail : "") + "\n";
    }
    if (result != SQLITE_DONE) throwSqliteError(db, context, result);
    return text;
}

} // namespace jet::sql
