// core/rights.cpp — the rights check on ProgramHaklari, with the families of screens that share a right.
#include "core/user_administration.h"
#include "core/values.h"

#include <array>
#include <span>

namespace orvan {
namespace {

constexpr const char* kInterimMarks[] = {
    "Ara Sınav Notu Girişi (Meslek - Öğrenci)", "Ara Sınav Notu Girişi (Meslek - Ders)",
    "Ara Sınav Notu Girişi (Sınıf - Öğrenci) (B)", "Ara Sınav Notu Girişi (Sınıf - Ders) (B)"};
constexpr const char* kFinalMarks[] = {"Bitirme Sınavları Not Girişi (Öğrenci Bazında)",
                                       "Bitirme Sınavları Not Girişi (Ders Bazında)"};
constexpr const char* kAbsences[] = {"Devamsızlık Girişi", "Ders Bazında Devamsızlık Girişi",
                                     "Sınıf ve Öğrenci Bazında Devamsızlık Girişi"};
constexpr std::array<std::span<const char* const>, 3> kFamilies = {kInterimMarks, kFinalMarks, kAbsences};

struct RenamedTitle {
    const char* before;
    const char* now;
};
constexpr RenamedTitle kRenamed[] = {
    {"Ara Sınav Notu Girişi (Öğrenci Bazında)", "Ara Sınav Notu Girişi (Meslek - Öğrenci)"},
    {"Ara Sınav Notu Girişi (Ders Bazında)", "Ara Sınav Notu Girişi (Meslek - Ders)"},
    {"Ara Sınav Notu Girişi (Sınıf Bazında)", "Ara Sınav Notu Girişi (Sınıf - Öğrenci)"},
};

// Titles whose rights count for `title`; empty when it stands alone.
std::span<const char* const> familyOf(const QString& title) {
    for (const auto& family : kFamilies)
        for (const char* member : family)
            if (title == QString::fromUtf8(member)) return family;
    return {};
}

} // namespace

Rights rightsOf(jet::SqlSession& constants, const QString& user, const QString& title) {
    std::string sql = "Select YazmaHakki , GirisHakki From ProgramHaklari Where KullaniciAdi = ? ";
    std::vector<jet::Value> parameters{textValue(user)};
    const auto family = familyOf(title);
    if (family.empty()) {
        sql += "And ProgramAdi = ?";
        parameters.push_back(textValue(title));
    } else {
        sql += "And ProgramAdi in (";
        for (size_t i = 0; i < family.size(); ++i) {
            sql += i ? ",?" : "?";
            parameters.emplace_back(family[i]);
        }
        sql += ") group by YazmaHakki,GirisHakki order by YazmaHakki desc,GirisHakki desc;";
    }
    const auto rows = constants.query(sql, parameters);
    if (rows.empty()) return {};
    const auto granted = [&](size_t column) { return trimmedText(rows.at(0, column)) == QLatin1String("1"); };
    return {granted(1), granted(0)};
}

void renameStoredRights(jet::SqlSession& constants) {
    for (const RenamedTitle& title : kRenamed)
        constants.execute("UPDATE ProgramHaklari SET ProgramAdi = ? WHERE ProgramAdi = ?",
                          Parameters{title.now, title.before});
}

void showEntryDenied(Dialogs& dialogs) {
    dialogs.message(QStringLiteral("Bu programa giriş yetkiniz yok!\n"
                                   "'Sabit Bilgiler' menüsü 'Yeni Kullanıcı / Kullanıcı Hakları' bölümünden "
                                   "programa giriş yetkisi veriniz veya sistem yetkilisi ile görüşünüz."),
                    QStringLiteral("Programa Giriş Yetkisi"), Icon::Critical);
}

bool mayWrite(jet::SqlSession& constants, const QString& user, const QString& title, Dialogs& dialogs) {
    if (rightsOf(constants, user, title).write) return true;
    dialogs.message(QStringLiteral("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz."),
                    QStringLiteral("Uyarı"), Icon::Warning);
    return false;
}

void grantAll(jet::Database& constants, const QString& user, Rights rights) {
    storeRights(constants, user, UserRights(static_cast<size_t>(programTitles().size()), rights));
}

} // namespace orvan
