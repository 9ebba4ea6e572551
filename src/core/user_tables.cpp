// core/user_tables.cpp — see user_tables.h.
#include "core/user_tables.h"

namespace orvan {

std::vector<TableDeclaration> userTables() {
    TableDeclaration users{DatabaseKind::Constants, "Kullanici", {}, {}, {}};
    users.fields = {textField("Kullanici_Adi", 30, "Kullanıcı adı"),
                    textField("KullaniciSifre", 20, "Şifre")};
    users.fields[0].required = true;
    users.indexes = {{"indKullanici", {"Kullanici_Adi"}, IndexDeclaration::Unique}};

    TableDeclaration rights{DatabaseKind::Constants, "ProgramHaklari", {}, {}, {}};
    rights.fields = {textField("KullaniciAdi", 30, "Kullanıcı adı"), textField("ProgramAdi", 100, "Program"),
                     textField("GirisHakki", 1, "Giriş hakkı"),
                     textField("YazmaHakki", 1, "Değiştirme hakkı")};
    rights.indexes = {{"indKullaniciProgram", {"KullaniciAdi", "ProgramAdi"}, IndexDeclaration::Plain}};
    return {users, rights};
}

} // namespace orvan
