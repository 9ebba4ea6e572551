// jet/check/check.h: first every page gets its owner, then each table is gone through, last the pages nobody
// owns.
#include "jet/check/check.h"

#include "jet/check/catalog_checker.h"
#include "jet/check/table_checker.h"
#include "jet/database.h"
#include "jet/format/data_page.h"

#include <list>

namespace jet {

namespace {

constexpr RowId kGlobalMap{kGlobalMapPage, 0};

void claimSystemPages(CheckContext& context) {
    context.ledger.claim(context.ledger.newOwner({}, "dosya başlığı"), 0);
    const auto global = context.ledger.newOwner({}, "boş sayfalar haritası");
    context.ledger.claim(global, kGlobalMapPage);
    context.findings.guarded({}, kGlobalMapPage, [&] {
        const PageRef page = context.file.read(kGlobalMapPage);
        if (std::string text = data_page::contradiction(context.layout, page.bytes()); !text.empty())
            context.findings.add({}, kGlobalMapPage, std::move(text));
        for (const PageNo bitmap : context.map(kGlobalMap).bitmapPages())
            context.ledger.claim(global, bitmap);
    });
}

void claimFreePages(CheckContext& context) {
    const auto free = context.ledger.newOwner({}, "boş sayfalar");
    context.findings.guarded({}, kGlobalMapPage, [&] {
        context.map(kGlobalMap).forEach([&](PageNo page) { context.ledger.claim(free, page); });
    });
}

// Pages of maps are known by what the tables name on them; here their other rows and their form.
void checkMapPages(CheckContext& context) {
    for (PageNo number = 0; number < context.file.pageCount(); ++number) {
        if (context.ledger.ownerOf(number) != context.mapPages) continue;
        context.findings.guarded({}, number, [&] {
            const PageRef page = context.file.read(number);
            if (std::string text = data_page::contradiction(context.layout, page.bytes()); !text.empty())
                context.findings.add({}, number, std::move(text));
        });
    }
}

// One finding for each run of pages that nobody owns: a file can have lost many of them in one go.
void reportUnclaimed(CheckContext& context) {
    PageNo first = 0, last = 0; // 0 = no run; page 0 is always owned
    const auto report = [&] {
        if (first == 0) return;
        const std::string pages =
            first == last ? "Sayfa" : std::to_string(first) + "-" + std::to_string(last) + " sayfaları";
        context.findings.add({}, first, pages + " hiçbir tablonun değil, boş olarak da işaretlenmemiş.");
    };
    context.ledger.forEachUnclaimed([&](PageNo page) {
        if (first == 0 || page != last + 1) {
            report();
            first = page;
        }
        last = page;
    });
    report();
}

void run(CheckContext& context) {
    claimSystemPages(context);
    std::list<TableChecker> checkers;
    for (ListedTable& table : listTables(context))
        checkers.emplace_back(context, std::move(table.def), std::move(table.pages));
    context.findings.report.tables = checkers.size();
    std::vector<const TableDef*> defs;
    for (TableChecker& checker : checkers) {
        checker.claimPages();
        defs.push_back(&checker.def());
    }
    claimFreePages(context);
    for (TableChecker& checker : checkers)
        checker.checkRows();
    checkMapPages(context);
    checkRelations(context, defs);
    reportUnclaimed(context);
}

} // namespace

CheckReport checkDatabase(Database& database, const CheckOptions& options) {
    PageFile& file = database.pages();
    ReadScope read(file);
    Findings findings(options);
    findings.report.pages = file.pageCount();
    CheckContext context(database, findings);
    try {
        run(context);
    } catch (const CheckStopped&) {
        // what was found so far is the report
    }
    return std::move(findings.report);
}

} // namespace jet
