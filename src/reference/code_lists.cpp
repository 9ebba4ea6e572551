// reference/code_lists.cpp — see code_lists.h.
#include "reference/code_lists.h"

#include "core/values.h"

namespace orvan {
namespace {

QString firstText(const jet::ResultSet& rows) {
    return rows.empty() ? QString() : trimmedText(rows.at(0, size_t{0}));
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

} // namespace orvan
