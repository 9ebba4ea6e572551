// catalog/all_tables.cpp — see all_tables.h.
#include "catalog/all_tables.h"

#include "core/user_tables.h"
#include "education/education_tables.h"
#include "exchange/exchange_tables.h"
#include "insurance/insurance_tables.h"
#include "records/record_tables.h"
#include "reference/reference_tables.h"

namespace orvan {

const Schema& allTables() {
    static const Schema schema = [] {
        std::vector<TableDeclaration> tables;
        for (const auto& part : {userTables(), referenceTables(), recordTables(), educationTables(),
                                 insuranceTables(), exchangeTables()})
            tables.insert(tables.end(), part.begin(), part.end());
        return Schema(std::move(tables));
    }();
    return schema;
}

} // namespace orvan
