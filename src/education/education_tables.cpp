// education/education_tables.cpp — see education_tables.h.
#include "education/education_tables.h"

namespace orvan {
namespace {

TableDeclaration marks() {
    TableDeclaration table{DatabaseKind::Level, "Notlar", {}, {}, {}};
    table.fields = {textField("N_Ogr_Numarasi", 15, "Kütük No"),
                    textField("N_Ogr_Adi", 30, "Adı"),
                    textField("N_Ogr_Soyadi", 30, "Soyadı"),
                    longField("N_OgrDonem", "Dönem"),
                    textField("N_DersID", 10, "Ders kodu"),
                    longField("KayitSira", "Kayıt sırası"),
                    textField("Yazili1", 5, "1. yazılı"),
                    textField("Yazili2", 5, "2. yazılı"),
                    textField("Yazili3", 5, "3. yazılı"),
                    textField("Sozlu1", 5, "1. sözlü"),
                    textField("Sozlu2", 5, "2. sözlü"),
                    textField("Sozlu3", 5, "3. sözlü"),
                    textField("Odev", 5, "Ödev"),
                    textField("Yilsonu", 5, "Yıl sonu"),
                    textField("Ortalama", 10, "Not"),
                    textField("YuzOrtalama", 10, "Puan"),
                    longField("HaftalikSaat", "Haftalık saat"),
                    textField("Sonuc", 15, "Sonuç")};
    table.indexes = {{"indOgrenci", {"N_Ogr_Numarasi", "N_OgrDonem", "N_DersID"}, IndexDeclaration::Plain},
                     {"indKayitSira", {"KayitSira"}, IndexDeclaration::Plain},
                     {"indDers", {"N_DersID", "N_OgrDonem"}, IndexDeclaration::Plain}};
    return table;
}

TableDeclaration termAverages() {
    TableDeclaration table{DatabaseKind::Level, "NotOrtalama", {}, {}, {}};
    table.fields = {textField("OgrNo", 15, "Kütük No"),    textField("OgrAd", 30, "Adı"),
                    textField("OgrSoyAd", 30, "Soyadı"),   longField("OgrDonem", "Dönem"),
                    textField("Ortalama", 10, "Ortalama"), textField("Sonuc", 15, "Sonuç"),
                    yesNoField("Kilit", "Kilitli")};
    table.indexes = {{"indOgrenci", {"OgrNo", "OgrDonem"}, IndexDeclaration::Plain}};
    return table;
}

// The part of the final examinations that names, numbers and transfers of a student touch.
TableDeclaration finalExams() {
    TableDeclaration table{DatabaseKind::Level, "BitirmeSinavlari", {}, {}, {}};
    table.fields = {textField("B_Ogr_Numarasi", 15, "Kütük No"), textField("B_Ogr_Adi", 30, "Adı"),
                    textField("B_Ogr_Soyadi", 30, "Soyadı")};
    table.indexes = {{"indOgrenci", {"B_Ogr_Numarasi"}, IndexDeclaration::Plain}};
    return table;
}

TableDeclaration hourlyAbsences() {
    TableDeclaration table{DatabaseKind::Level, "Devam", {}, {}, {}};
    table.fields = {textField("D_Ogr_Numarasi", 15, "Kütük No"),
                    textField("D_Ogr_Adi", 30, "Adı"),
                    textField("D_Ogr_soyadi", 30, "Soyadı"),
                    textField("D_DersID", 10, "Ders kodu"),
                    longField("D_Donem", "Dönem"),
                    textField("D_OgretimYili", 9, "Öğretim yılı"),
                    dateField("D_Devamsizlik_Tarihi", "Tarih"),
                    longField("D_Ozursuz", "Özürsüz"),
                    longField("D_Izin", "İzin"),
                    longField("D_Rapor", "Rapor"),
                    longField("D_Sevk", "Sevk"),
                    longField("D_Nobet", "Nöbet"),
                    longField("D_Faaliyet", "Faaliyet"),
                    longField("D_HaftalikSaat", "Haftalık saat"),
                    longField("D_ToplamSaat", "Toplam saat")};
    table.indexes = {{"indOgrenci", {"D_Ogr_Numarasi", "D_DersID", "D_Donem"}, IndexDeclaration::Plain},
                     {"indTarih", {"D_Devamsizlik_Tarihi"}, IndexDeclaration::Plain}};
    return table;
}

TableDeclaration dailyAbsences() {
    TableDeclaration table{DatabaseKind::Level, "OkulDevamsizlik", {}, {}, {}};
    table.fields = {textField("OgrNo", 15, "Kütük No"), textField("tarih", 10, "Tarih"),
                    textField("tip", 1, "Türü"), textField("donem", 15, "Dönem"),
                    textField("Ders_Yili", 9, "Ders yılı")};
    table.indexes = {{"indOgrenci", {"OgrNo", "Ders_Yili"}, IndexDeclaration::Plain}};
    return table;
}

// The exam databases of the levels; exam planning fills them, messages to students read them.
TableDeclaration examPeriods() {
    TableDeclaration table{DatabaseKind::Exams, "SinavTanim", {}, {}, {}};
    table.fields = {textField("Yil", 4, "Yıl"),
                    textField("Ay", 2, "Ay"),
                    textField("Aciklama", 60, "Açıklama"),
                    textField("BaslamaTarihi", 10, "Başlama tarihi"),
                    textField("BitisTarihi", 10, "Bitiş tarihi"),
                    yesNoField("Aktif", "Geçerli dönem")};
    table.indexes = {{"indDonem", {"Yil", "Ay"}, IndexDeclaration::Unique}};
    return table;
}

TableDeclaration examPlan() {
    TableDeclaration table{DatabaseKind::Exams, "SinavPlan", {}, {}, {}};
    table.fields = {textField("Yil", 4, "Yıl"),
                    textField("Ay", 2, "Ay"),
                    textField("MeslekKodu", 15, "Meslek"),
                    longField("DersID", "Program"),
                    textField("DersKodu", 10, "Ders kodu"),
                    textField("SinavTarihi", 10, "Sınav tarihi"),
                    textField("SinavSaati", 5, "Sınav saati"),
                    textField("SinavYeri", 60, "Sınav yeri")};
    table.indexes = {{"indDonemMeslek", {"Yil", "Ay", "MeslekKodu"}, IndexDeclaration::Plain}};
    return table;
}

} // namespace

std::vector<TableDeclaration> educationTables() {
    return {marks(),         termAverages(), finalExams(), hourlyAbsences(),
            dailyAbsences(), examPeriods(),  examPlan()};
}

} // namespace orvan
