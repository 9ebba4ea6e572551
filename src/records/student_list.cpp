// records/student_list.cpp — see student_list.h.
#include "records/student_list.h"

#include "core/turkish_text.h"
#include "core/values.h"

#include <algorithm>

namespace orvan {
namespace {

const char* orderClause(StudentOrder order) {
    switch (order) {
    case StudentOrder::ByName: return " ORDER BY O.Ogr_Adi, O.Ogr_Soyadi, O.Ogr_Numarasi";
    case StudentOrder::BySurname: return " ORDER BY O.Ogr_Soyadi, O.Ogr_Adi, O.Ogr_Numarasi";
    case StudentOrder::ByNumber: return " ORDER BY O.Ogr_Numarasi";
    }
    return "";
}

} // namespace

std::vector<StudentListRow> studentList(jet::SqlSession& level, StudentOrder order) {
    const auto rows = level.query(
        std::string(
            "SELECT O.Ogr_Numarasi, O.Ogr_Kayit_No, O.Ogr_Adi, O.Ogr_Soyadi, O.Ogr_MeslekKod, "
            "P.Ta_tanim_aciklama, O.Ogr_Sinif, O.Ogr_Seviye, O.Ogr_Mernis, "
            "O.Ogr_calistigi_isyerinin_adi, O.Ogr_Cinsiyeti, O.Ogr_calistigi_isyeri_adresi1, "
            "O.Ogr_Usta_Ogreticisi, O.Ogr_Koordinator_Ogretmen, O.Ogr_calistigi_ise_giris_tarihi, "
            "O.Ogr_calistigi_isden_ayrilis_tarihi FROM OgrenciBilgisi AS O LEFT JOIN Parametrik_giris AS P "
            "ON (P.Ta_Tanim_Kod = O.Ogr_MeslekKod AND P.ID = O.DersID AND P.Ta_Tanim_Grup = ?)") +
            orderClause(order),
        Parameters{"Bölüm"});
    std::vector<StudentListRow> list;
    list.reserve(rows.rowCount());
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        const auto text = [&](size_t column) { return trimmedText(rows.at(i, column)); };
        list.push_back({text(0), static_cast<int>(rows.at(i, 1).toInt()), text(2), text(3), text(4), text(5),
                        text(6), text(7), text(8), text(9), upperTurkish(text(10)), text(11), text(12),
                        text(13), text(14), text(15)});
    }
    return list;
}

QString studentCounts(const std::vector<QString>& sexes) {
    const auto count = [&](const char* sex) {
        return std::count(sexes.begin(), sexes.end(), QString::fromLatin1(sex));
    };
    return QStringLiteral("%1 öğrenci: %2 kız, %3 erkek").arg(sexes.size()).arg(count("K")).arg(count("E"));
}

} // namespace orvan
