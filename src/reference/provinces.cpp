// reference/provinces.cpp — Meb_Il_Tablo: the 81 provinces by their plate codes.
#include "reference/reference_tables.h"

#include <array>

namespace orvan {
namespace {

constexpr std::array<const char*, 81> kProvinces = {
    "ADANA",     "ADIYAMAN",  "AFYONKARAHİSAR", "AĞRI",          "AMASYA",    "ANKARA",    "ANTALYA",
    "ARTVİN",    "AYDIN",     "BALIKESİR",      "BİLECİK",       "BİNGÖL",    "BİTLİS",    "BOLU",
    "BURDUR",    "BURSA",     "ÇANAKKALE",      "ÇANKIRI",       "ÇORUM",     "DENİZLİ",   "DİYARBAKIR",
    "EDİRNE",    "ELAZIĞ",    "ERZİNCAN",       "ERZURUM",       "ESKİŞEHİR", "GAZİANTEP", "GİRESUN",
    "GÜMÜŞHANE", "HAKKARİ",   "HATAY",          "ISPARTA",       "MERSİN",    "İSTANBUL",  "İZMİR",
    "KARS",      "KASTAMONU", "KAYSERİ",        "KIRKLARELİ",    "KIRŞEHİR",  "KOCAELİ",   "KONYA",
    "KÜTAHYA",   "MALATYA",   "MANİSA",         "KAHRAMANMARAŞ", "MARDİN",    "MUĞLA",     "MUŞ",
    "NEVŞEHİR",  "NİĞDE",     "ORDU",           "RİZE",          "SAKARYA",   "SAMSUN",    "SİİRT",
    "SİNOP",     "SİVAS",     "TEKİRDAĞ",       "TOKAT",         "TRABZON",   "TUNCELİ",   "ŞANLIURFA",
    "UŞAK",      "VAN",       "YOZGAT",         "ZONGULDAK",     "AKSARAY",   "BAYBURT",   "KARAMAN",
    "KIRIKKALE", "BATMAN",    "ŞIRNAK",         "BARTIN",        "ARDAHAN",   "IĞDIR",     "YALOVA",
    "KARABÜK",   "KİLİS",     "OSMANİYE",       "DÜZCE",
};

} // namespace

TableDeclaration provinceTable() {
    TableDeclaration table{DatabaseKind::Constants, "Meb_Il_Tablo", {}, {}, {}};
    table.fields = {textField("Il_Kodu", 2, "İl kodu"), textField("Il_Adi", 30, "İl adı")};
    table.indexes = {{"indIl", {"Il_Kodu"}, IndexDeclaration::Unique},
                     {"indIlAdi", {"Il_Adi"}, IndexDeclaration::Plain}};
    FirstRows rows;
    rows.fields = {"Il_Kodu", "Il_Adi"};
    for (size_t i = 0; i < kProvinces.size(); ++i) {
        const std::string code = (i < 9 ? "0" : "") + std::to_string(i + 1);
        rows.rows.push_back({jet::Value(code), jet::Value(kProvinces[i])});
    }
    table.firstRows = {rows};
    return table;
}

} // namespace orvan
