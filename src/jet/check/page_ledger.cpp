// jet/check/page_ledger.h
#include "jet/check/page_ledger.h"

namespace jet {

PageLedger::Owner PageLedger::newOwner(const std::string& table, const std::string& part) {
    names_.push_back({table, part});
    return static_cast<Owner>(names_.size() - 1);
}

void PageLedger::claim(Owner owner, PageNo page) {
    const Name& name = names_[owner];
    if (page >= owners_.size()) {
        findings_.add(name.table, page, "Dosyada olmayan bir sayfa sahiplenilmiş: " + name.text() + ".");
        return;
    }
    if (owners_[page] == 0) {
        owners_[page] = owner;
        return;
    }
    const Name& other = names_[owners_[page]];
    const std::string whose =
        owners_[page] == owner ? "iki kez " + name.text() : other.text() + " ve " + name.text();
    findings_.add(name.table, page, "Sayfanın birden çok sahibi var: " + whose + ".");
}

} // namespace jet
