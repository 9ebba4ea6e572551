// records/dependent_tables.cpp — see dependent_tables.h.
#include "records/dependent_tables.h"

#include "core/turkish_text.h"
#include "records/trimmed_rows.h"

namespace orvan {
namespace {

constexpr DependentTable kFinalExams{"BitirmeSinavlari", "B_Ogr_Numarasi", "B_Ogr_Adi", "B_Ogr_Soyadi"};
constexpr DependentTable kAbsences{"Devam", "D_Ogr_Numarasi", "D_Ogr_Adi", "D_Ogr_Soyadi"};
constexpr DependentTable kMarks{"Notlar", "N_Ogr_Numarasi", "N_Ogr_Adi", "N_Ogr_Soyadi"};
constexpr DependentTable kAverages{"NotOrtalama", "OgrNo", "OgrAd", "OgrSoyAd"};
constexpr DependentTable kWorkplaces{"Ogrenci_Isyerleri", "Ogr_No", "Ogr_Adi", "Ogr_Soyadi"};
constexpr DependentTable kInsurance{"Sigorta_Devamsizlik", "D_OgrNo", "D_Ogr_Adi", "D_Ogr_Soyadi"};
constexpr DependentTable kDailyAbsences{"OkulDevamsizlik", "OgrNo", nullptr, nullptr};

constexpr DependentTable kNumbered[] = {kFinalExams, kAbsences, kMarks, kAverages, kWorkplaces};
constexpr DependentTable kDays[] = {kInsurance, kDailyAbsences};
constexpr DependentTable kNamed[] = {kInsurance, kAbsences, kMarks, kWorkplaces, kFinalExams, kAverages};

} // namespace

std::span<const DependentTable> numberedTables() { return kNumbered; }
std::span<const DependentTable> dayTables() { return kDays; }
std::span<const DependentTable> namedTables() { return kNamed; }

std::vector<jet::RowId> dependentRows(jet::Database& level, const DependentTable& about,
                                      const QString& number, const StudentName* ofThisName) {
    if (!level.hasTable(about.table)) return {};
    std::vector<jet::RowId> rows = rowsByText(level, about.table, about.number, number);
    if (!ofThisName || !about.name || rows.empty()) return rows;
    jet::Table table = level.openTable(about.table);
    std::erase_if(rows, [&](jet::RowId row) {
        const auto texts = trimmedTexts(table, row, {about.name, about.surname});
        return !sameTurkish(texts[0], ofThisName->name) || !sameTurkish(texts[1], ofThisName->surname);
    });
    return rows;
}

size_t carryName(jet::Database& level, const QString& number, const StudentName& from,
                 const StudentName& to) {
    size_t changed = 0;
    for (const DependentTable& about : namedTables()) {
        const auto rows = dependentRows(level, about, number, &from);
        if (rows.empty()) continue;
        jet::Table table = level.openTable(about.table);
        for (const jet::RowId row : rows)
            changeRow(table, row, {{about.name, textValue(to.name)}, {about.surname, textValue(to.surname)}});
        changed += rows.size();
    }
    return changed;
}

} // namespace orvan
