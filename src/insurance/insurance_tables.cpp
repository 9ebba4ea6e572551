// insurance/insurance_tables.cpp — see insurance_tables.h.
#include "insurance/insurance_tables.h"

namespace orvan {
namespace {

TableDeclaration insuranceMonths() {
    TableDeclaration table{DatabaseKind::Level, "Sigorta_Devamsizlik", {}, {}, {}};
    table.fields = {
        textField("D_OgrNo", 15, "Kütük No"),
        textField("D_Yil", 4, "Yıl"),
        textField("D_Ay_Kod", 2, "Ay"),
        textField("D_Ogr_Adi", 30, "Adı"),
        textField("D_Ogr_Soyadi", 30, "Soyadı"),
        textField("D_Ay_Adi", 15, "Ay adı"),
        longField("D_Prim_Gunu", "Birinci prim günü"),
        longField("D_Prim_Gunu2", "İkinci prim günü"),
        longField("D_Devamsiz_Gunu", "Devamsız gün"),
        longField("D_izin_sayisi", "İzin günü"),
        longField("D_Rapor_Sayisi", "Rapor günü"),
        longField("D_SonPrimGunu1", "Birinci net prim günü"),
        longField("D_SonPrimGunu2", "İkinci net prim günü"),
        moneyField("d_gunluk_prim_miktari", "Günlük prim miktarı"),
        textField("AyMeslekTablo", 50, "Ay / meslek"),
        textField("AyOgrenciTablo", 50, "Ay / öğrenci"),
        textField("DevamTablo", 50, "Devam"),
        longField("D_Devamsizlik", "Devamsızlık"),
        longField("D_isletme_Devamsizlik", "İşletme devamsızlığı"),
        longField("D_Okul_Devamsizlik", "Okul devamsızlığı"),
        longField("D_toplam_Devamsizlik", "Toplam devamsızlık"),
        textField("D_Devamsizlik_Geldimi", 5, "Devamsızlık geldi"),
        textField("D_Ders_Yili", 9, "Ders yılı"),
        moneyField("d_toplu_prim_miktari", "Toplam prim miktarı"),
    };
    table.indexes = {{"indOgrenciAy", {"D_OgrNo", "D_Yil", "D_Ay_Kod"}, IndexDeclaration::Plain},
                     {"indAy", {"D_Yil", "D_Ay_Kod"}, IndexDeclaration::Plain}};
    return table;
}

TableDeclaration monthLocks() {
    TableDeclaration table{DatabaseKind::Constants, "AyKitleme", {}, {}, {}};
    table.fields = {textField("ders_yili", 9, "Ders yılı"), longField("yil_kilit", "Yıl"),
                    textField("ay_kod", 2, "Ay"), yesNoField("kilit", "Kilitli"),
                    yesNoField("ay_kilit", "Ay kilitli")};
    table.indexes = {{"indAy", {"ders_yili", "yil_kilit", "ay_kod"}, IndexDeclaration::Plain}};
    return table;
}

} // namespace

std::vector<TableDeclaration> insuranceTables() { return {insuranceMonths(), monthLocks()}; }

} // namespace orvan
