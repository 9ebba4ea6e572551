// reference/code_lists.cpp — see code_lists.h.
#include "reference/code_lists.h"

#include "core/values.h"

namespace orvan {
namespace {

QString firstText(const jet::ResultSet& rows) {
    return rows.empty() ? QString() : trimmedText(rows.at(0, size_t{0}));
}

QString nameOf(jet::SqlSession& level, const QString& group, const QString& code, int version) {
    return firstText(level.query("SELECT Ta_tanim_aciklama FROM parametrik_giris WHERE TA_tanim_GRUP= ?"
                                 " AND TA_tanim_Kod= ? AND ID=?",
                                 Parameters{group, code, version}));
}

QString codeIn(jet::SqlSession& level, const char* group, const QString& description, int version) {
    return firstText(level.query("SELECT Ta_Tanim_Kod FROM Parametrik_giris WHERE Ta_Tanim_Grup = ?"
                                 " AND trim(Ta_tanim_aciklama) = ? AND ID = ?",
                                 Parameters{group, description.trimmed(), version}));
}

} // namespace

QString descriptionOf(jet::SqlSession& level, const QString& group, const QString& code) {
    return firstText(level.query(
        "SELECT Ta_tanim_aciklama FROM Parametrik_giris WHERE Ta_Tanim_Grup = ? AND Ta_Tanim_Kod = ?",
        Parameters{group, code}));
}

QString codeOf(jet::SqlSession& level, const QString& group, const QString& description) {
    return firstText(level.query(
        "SELECT Ta_Tanim_Kod FROM Parametrik_giris WHERE Ta_Tanim_Grup = ? AND trim(Ta_tanim_aciklama) = ?",
        Parameters{group, description.trimmed()}));
}

QStringList descriptions(jet::SqlSession& level, const QString& group) {
    const auto rows = level.query(
        "SELECT Ta_tanim_aciklama FROM Parametrik_giris WHERE Ta_Tanim_Grup = ? ORDER BY Ta_tanim_aciklama",
        Parameters{group});
    QStringList texts;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        texts << trimmedText(rows.at(i, size_t{0}));
    return texts;
}

std::vector<Profession> professions(jet::SqlSession& level) {
    const auto rows =
        level.query("SELECT Ta_Tanim_Kod, ID, Ta_tanim_aciklama FROM Parametrik_giris WHERE Ta_Tanim_Grup = ?"
                    " ORDER BY Ta_tanim_aciklama, ID",
                    Parameters{group::profession});
    std::vector<Profession> found;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        found.push_back({trimmedText(rows.at(i, size_t{0})), static_cast<int>(rows.at(i, 1).toInt()),
                         trimmedText(rows.at(i, 2))});
    return found;
}

QString professionName(jet::SqlSession& level, const QString& code, int version) {
    const QString name = nameOf(level, QString::fromUtf8(group::profession), code, version);
    return name.isEmpty() ? QStringLiteral("Bu koda ait Meslek yok") : name;
}

QString mainProfessionName(jet::SqlSession& level, const QString& code, int version) {
    const QString name = nameOf(level, QString::fromUtf8(group::mainProfession), code, version);
    return name.isEmpty() ? QStringLiteral("Bu koda ait AnaMeslek yok") : name;
}

QString professionCode(jet::SqlSession& level, const QString& description, int version) {
    return codeIn(level, group::profession, description, version);
}

QString mainProfessionCode(jet::SqlSession& level, const QString& description, int version) {
    return codeIn(level, group::mainProfession, description, version);
}

} // namespace orvan
