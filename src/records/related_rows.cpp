// records/related_rows.cpp — see related_rows.h.
#include "records/related_rows.h"

#include "core/values.h"
#include "records/dependent_tables.h"
#include "reference/field_texts.h"

namespace orvan {
namespace {

const DependentTable* dependentTable(std::string_view name) {
    for (const DependentTable& about : namedTables())
        if (name == about.table) return &about;
    return nullptr;
}

} // namespace

const std::vector<RelatedList>& relatedLists() {
    static const std::vector<RelatedList> lists{
        {"oncekiIsyerleri",
         "Önceki İşyerleri",
         "Ogrenci_Isyerleri",
         {{"Ogr_sira", true},
          {"Ogr_isyerinin_adi"},
          {"Ogr_Ise_Giris_Tarihi"},
          {"Ogr_Isden_Ayrilis_Tarihi"},
          {"Ogr_AyrilisNedeni"},
          {"Ogr_SSK_SonOdeme_Tarihi"},
          {"Ogr_Isletme1_Yil"},
          {"Ogr_Isletme1_Ay"},
          {"Ogr_Isletme1_Gun"},
          {"Ogr_Isyeri_Adresi1"}}},
        {"notlar",
         "Notlar",
         "Notlar",
         {{"N_OgrDonem", true},
          {"N_DersID"},
          {"Yazili1"},
          {"Yazili2"},
          {"Yazili3"},
          {"Sozlu1"},
          {"Sozlu2"},
          {"Sozlu3"},
          {"Odev"},
          {"Yilsonu"},
          {"YuzOrtalama"},
          {"Ortalama"},
          {"HaftalikSaat", true},
          {"Sonuc"}}},
        {"devamsizliklar",
         "Devamsızlıklar",
         "Devam",
         {{"D_Donem", true},
          {"D_Devamsizlik_Tarihi"},
          {"D_DersID"},
          {"D_Ozursuz", true},
          {"D_Izin", true},
          {"D_Rapor", true},
          {"D_Sevk", true},
          {"D_Nobet", true},
          {"D_Faaliyet", true},
          {"D_ToplamSaat", true},
          {"D_OgretimYili"}}},
        {"sinavlar",
         "Bitirme Sınavları",
         "BitirmeSinavlari",
         {{"B_Ogr_Numarasi"}, {"B_Ogr_Adi"}, {"B_Ogr_Soyadi"}}},
    };
    return lists;
}

std::vector<std::vector<QVariant>> relatedRows(DatabaseSet& databases, const RelatedList& list,
                                               const StudentRecord& student) {
    const DependentTable* about = dependentTable(list.table);
    jet::Database& level = databases.level().database();
    std::vector<std::vector<QVariant>> rows;
    if (!about || student.isNew() || !level.hasTable(list.table)) return rows;
    const StudentName who{student.text("Ogr_Adi"), student.text("Ogr_Soyadi")};
    jet::Table table = level.openTable(list.table);
    for (const jet::RowId id : dependentRows(level, *about, student.number(), &who)) {
        const std::vector<jet::Value> values = table.read(id);
        std::vector<QVariant> row;
        for (const RelatedField& field : list.fields) {
            const auto place = table.def().findField(field.field);
            const QString text = place ? fieldText(values[*place]) : QString();
            bool isNumber = false;
            const int number = field.number ? text.toInt(&isNumber) : 0;
            row.push_back(text.isEmpty() ? QVariant() : isNumber ? QVariant(number) : QVariant(text));
        }
        rows.push_back(std::move(row));
    }
    return rows;
}

} // namespace orvan
