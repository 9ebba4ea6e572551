// catalog_fixture.h: faultsOf().
#include "catalog_fixture.h"

#include "jet/check/check.h"

namespace catalog_test {

std::string faultsOf(jet::Database& database) {
    std::string text;
    for (const jet::Fault& fault : jet::checkDatabase(database).faults)
        text += fault.table + ": " + fault.text + " (" + std::to_string(fault.page) + ")\n";
    return text;
}

} // namespace catalog_test
