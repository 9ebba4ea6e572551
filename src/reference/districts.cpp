// reference/districts.cpp — Meb_Ilce_Tablo: the districts of the provinces, numbered within each.
#include "reference/district_names.h"
#include "reference/reference_tables.h"

#include <string_view>

namespace orvan {
namespace {

std::string twoDigits(size_t number) { return (number < 10 ? "0" : "") + std::to_string(number); }

void addDistricts(FirstRows& first, const std::string& province, std::string_view names) {
    for (size_t serial = 1; !names.empty(); ++serial) {
        const size_t end = names.find(',');
        first.rows.push_back({jet::Value(province), jet::Value(names.substr(0, end)),
                              jet::Value(province + twoDigits(serial))});
        names = end == std::string_view::npos ? std::string_view() : names.substr(end + 1);
    }
}

} // namespace

TableDeclaration districtTable() {
    TableDeclaration table{DatabaseKind::Constants, "Meb_Ilce_Tablo", {}, {}, {}};
    table.fields = {textField("Ilce_Kodu", 6, "İlçe kodu"), textField("Il_Kodu", 2, "İl kodu"),
                    textField("Ilce_Adi", 40, "İlçe adı")};
    table.indexes = {{"indIlce", {"Ilce_Kodu"}, IndexDeclaration::Plain},
                     {"indIlceIl", {"Il_Kodu", "Ilce_Adi"}, IndexDeclaration::Plain}};
    FirstRows first;
    first.fields = {"Il_Kodu", "Ilce_Adi", "Ilce_Kodu"};
    first.keyFields = 2; // a file with codes of its own keeps them
    for (size_t i = 0; i < kDistrictNames.size(); ++i)
        addDistricts(first, twoDigits(i + 1), kDistrictNames[i]);
    table.firstRows = {first};
    return table;
}

} // namespace orvan
