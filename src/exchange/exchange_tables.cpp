// exchange/exchange_tables.cpp — see exchange_tables.h.
#include "exchange/exchange_tables.h"

namespace orvan {

std::vector<TableDeclaration> exchangeTables() {
    TableDeclaration log{DatabaseKind::Constants, "SMSLog", {}, {}, {}};
    log.fields = {longField("KayitID", "Kayıt"),
                  textField("SessionID", 40, "Oturum"),
                  textField("ProgramKodu", 20, "Program kodu"),
                  textField("AktifKurum", 100, "Kurum"),
                  textField("AktifDonem", 15, "Dönem"),
                  textField("Tarih", 19, "Tarih"),
                  textField("MesajMethod", 15, "Gönderim yöntemi"),
                  textField("MesajTuru", 30, "Mesaj türü"),
                  longField("MesajSayisi", "Mesaj sayısı"),
                  textField("Sonuc", 60, "Sonuç")};
    log.indexes = {{"indTarih", {"Tarih"}, IndexDeclaration::Plain}};
    return {log};
}

} // namespace orvan
