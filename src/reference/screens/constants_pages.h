// reference/screens/constants_pages.h — the pages of the two windows of the school's constants. Data; widths
// of text fields come from the declarations.
#pragma once

#include "core/schema.h"
#include "widgets/form_pages.h"

namespace orvan {

std::vector<FormPage> schoolPages(const Schema& schema);    // identity … SMS
std::vector<FormPage> insurancePages(const Schema& schema); // switches, rates, rounding

inline const QString kProvinceField = QStringLiteral("SB_il_kodu");
inline const QString kDistrictField = QStringLiteral("SB_ilce_kodu");
inline const QString kTermField = QStringLiteral("SB_Donem");
inline const QString kPremiumTypeField = QStringLiteral("SB_PrimHesaplamaTipi");
inline const QString kAgeRuleField = QStringLiteral("SB_YasHesaplamaUclu");
QStringList roundingFields(); // each takes one of the rounding modes

} // namespace orvan
