// jet/check/check_context.h
#include "jet/check/check_context.h"

#include "jet/database.h"
#include "jet/format/data_page.h"

namespace jet {

CheckContext::CheckContext(Database& database, Findings& found)
    : file(database.pages()), allocator(database.allocator()), layout(database.layout()),
      codePage(database.header().codePage), findings(found), ledger(file.pageCount(), found),
      mapPages(ledger.newOwner({}, "sayfa haritaları")) {}

void CheckContext::claimMapItself(RowId at, const std::string& table) {
    findings.guarded(table, at.page, [&] {
        if (!maps.insert(at)) {
            findings.add(table, at.page,
                         "Bir sayfa haritasının birden çok sahibi var (satır " + std::to_string(at.row) +
                             ").");
            return;
        }
        const PageRef page = file.read(at.page);
        if (data_page::slotCount(layout, page.bytes()) <= at.row ||
            data_page::owner(layout, page.bytes()) != kOwnerUsageMaps)
            throw Error(Err::Corrupt, "Sayfa haritası, harita sayfası olmayan bir sayfada.").onPage(at.page);
        if (ledger.ownerOf(at.page) != mapPages) ledger.claim(mapPages, at.page);
        const auto bitmaps = ledger.newOwner(table, "sayfa haritası");
        for (const PageNo bitmap : map(at).bitmapPages())
            ledger.claim(bitmaps, bitmap);
    });
}

void CheckContext::claimMap(RowId at, PageLedger::Owner owner, const std::string& table) {
    claimMapItself(at, table);
    findings.guarded(table, at.page,
                     [&] { map(at).forEach([&](PageNo page) { ledger.claim(owner, page); }); });
}

} // namespace jet
