// records/student_register.cpp — see student_register.h.
#include "records/student_register.h"

#include "core/turkish_text.h"
#include "core/values.h"
#include "records/display_value.h"

#include <algorithm>
#include <map>

namespace orvan {
namespace {

struct Printed {
    int column;
    const char* label;
    const char* field;
    const char* second = nullptr; // joined to the first with a blank
};

constexpr Printed kPrinted[] = {
    {0, "Kütük No", "Ogr_Numarasi"},
    {0, "Kayıt No", "Ogr_Kayit_No"},
    {0, "Kayıt tarihi", "Ogr_Kayit_Tarihi"},
    {0, "T.C. kimlik no", "Ogr_Mernis"},
    {0, "Baba adı", "Ogr_Nufus_Baba_Adi"},
    {0, "Ana adı", "Ogr_Nufus_Ana_Adi"},
    {0, "Doğum yeri", "Ogr_Nufus_Dogum_Yeri"},
    {0, "Doğum tarihi", "Ogr_Dogum_Tarihi"},
    {0, "Cinsiyeti", "Ogr_Cinsiyeti"},
    {0, "Nüfus ili, ilçesi", "Ogr_Nufus_Ili", "Ogr_Nufus_Ilcesi"},
    {0, "Mahalle / köy", "Ogr_Nufus_Mahalle_Koy"},
    {0, "Cilt, hane", "Ogr_Nufus_Cilt_No", "Ogr_Nufus_Hane"},
    {1, "Meslek", "Ogr_MeslekKod"},
    {1, "Sınıf", "Ogr_Sinif"},
    {1, "Dönem", "Ogr_Seviye"},
    {1, "Kayıt durumu", "Ogr_Kayit_Durumu"},
    {1, "Kanun maddesi", "Ogr_Kanun_Maddesi"},
    {1, "Öğrenim durumu", "Ogr_Ogrenim_Durumu"},
    {1, "Bitirdiği okul", "Ogr_Mezun_Oldugu_okul"},
    {1, "Adresi", "Ogr_Adresi1", "Ogr_Adresi2"},
    {1, "Semt, il", "Ogr_Semt", "Ogr_ili"},
    {1, "Telefon", "Ogr_Telefon", "Ogr_Cep_Telefon"},
    {1, "Velisi", "Ogr_Veli_Adi", "Ogr_Veli_Soyadi"},
    {1, "Veli telefonu", "Ogr_Veli_Cep_Tel", "Ogr_Veli_Ev_Tel"},
    {2, "İşyeri", "Ogr_calistigi_isyerinin_adi"},
    {2, "İşyeri adresi", "Ogr_calistigi_isyeri_adresi1", "Ogr_calistigi_isyeri_adresi2"},
    {2, "Usta öğretici", "Ogr_Usta_Ogreticisi"},
    {2, "İşe giriş", "Ogr_calistigi_ise_giris_tarihi"},
    {2, "İşten çıkış", "Ogr_calistigi_isden_ayrilis_tarihi"},
    {2, "Sigorta no", "Ogr_SSK_No"},
    {2, "Koordinatör", "Ogr_Koordinator_Ogretmen"},
    {2, "Ayrılış nedeni", "Ogr_Ayrilis_Nedeni"},
    {2, "Belge sayısı, tarihi", "Ogr_Belge_Sayisi", "Ogr_Belge_Tarihi"},
    {2, "Verilen belge", "Ogr_Gittigi_Belge_Cinsi", "Ogr_Gittigi_Belge_Tarihi"},
};
constexpr int kColumns = 3;

using Names = std::map<QString, QString>;

Names schoolingNames(jet::SqlSession& level) {
    const auto rows =
        level.query("SELECT Ta_Tanim_Kod, Ta_tanim_aciklama FROM Parametrik_giris WHERE Ta_Tanim_Grup = ?",
                    Parameters{group::schooling});
    Names names;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        names[trimmedText(rows.at(i, size_t{0}))] = trimmedText(rows.at(i, 1));
    return names;
}

class EntryMaker {
  public:
    EntryMaker(jet::SqlSession& level, const jet::ResultSet& rows)
        : level_(level), rows_(rows), schooling_(schoolingNames(level)) {}

    RegisterEntry make(size_t row) {
        RegisterEntry entry;
        entry.number = text(row, "Ogr_Numarasi");
        entry.name = trimBlanks(text(row, "Ogr_Adi") + QLatin1Char(' ') + text(row, "Ogr_Soyadi"));
        entry.sex = upperTurkish(text(row, "Ogr_Cinsiyeti"));
        entry.profession = shown(row, "Ogr_MeslekKod");
        entry.className = text(row, "Ogr_Sinif");
        entry.stage = text(row, "Ogr_Seviye");
        entry.registered = text(row, "Ogr_Kayit_Tarihi");
        entry.identityNo = text(row, "Ogr_Mernis");
        entry.father = text(row, "Ogr_Nufus_Baba_Adi");
        entry.birthPlace = text(row, "Ogr_Nufus_Dogum_Yeri");
        entry.birthDate = text(row, "Ogr_Dogum_Tarihi");
        entry.workplace = text(row, "Ogr_calistigi_isyerinin_adi");
        entry.columns.resize(kColumns);
        for (const Printed& line : kPrinted) {
            QString words = shown(row, line.field);
            if (line.second) words = trimBlanks(words + QLatin1Char(' ') + shown(row, line.second));
            if (!words.isEmpty())
                entry.columns[static_cast<size_t>(line.column)].push_back(
                    {QString::fromUtf8(line.label), words});
        }
        return entry;
    }

  private:
    QString text(size_t row, const char* field) const { return trimmedText(rows_.at(row, field)); }

    // Looked up here where displayValue would ask the database for each student.
    QString shown(size_t row, const char* field) {
        const QString stored = text(row, field), name = QString::fromLatin1(field);
        if (stored.isEmpty()) return {};
        if (name == QLatin1String("Ogr_MeslekKod")) {
            const QString profession = text(row, "Ta_tanim_aciklama");
            return profession.isEmpty() ? stored : profession;
        }
        if (name == QLatin1String("Ogr_Ogrenim_Durumu")) {
            const auto found = schooling_.find(stored);
            return found == schooling_.end() ? stored : found->second;
        }
        return displayValue(level_, name, rows_.at(row, field));
    }

    jet::SqlSession& level_;
    const jet::ResultSet& rows_;
    Names schooling_;
};

} // namespace

std::vector<RegisterEntry> studentRegister(jet::SqlSession& level, const BulkSelection& selection) {
    std::string fields = "O.Ogr_Adi, O.Ogr_Soyadi, P.Ta_tanim_aciklama";
    for (const Printed& line : kPrinted) {
        fields += std::string(", O.") + line.field;
        if (line.second) fields += std::string(", O.") + line.second;
    }
    const auto rows = level.query(
        "SELECT " + fields +
            " FROM OgrenciBilgisi AS O LEFT JOIN Parametrik_giris AS P ON (P.Ta_Tanim_Kod = O.Ogr_MeslekKod "
            "AND P.ID = O.DersID AND P.Ta_Tanim_Grup = ?) WHERE (? = '' OR Trim(O.Ogr_MeslekKod) = ?) AND "
            "(? = 0 OR O.DersID = ?) AND (? = '' OR Trim(O.Ogr_Seviye) = ?) AND "
            "(? = '' OR Trim(O.Ogr_Sinif) = ?) ORDER BY O.Ogr_Numarasi",
        Parameters{group::profession, selection.profession, selection.profession, selection.version,
                   selection.version, selection.stage, selection.stage, selection.className,
                   selection.className});
    EntryMaker maker(level, rows);
    std::vector<RegisterEntry> entries;
    entries.reserve(rows.rowCount());
    for (size_t i = 0; i < rows.rowCount(); ++i)
        entries.push_back(maker.make(i));
    return entries;
}

} // namespace orvan
