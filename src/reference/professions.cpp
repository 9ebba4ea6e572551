// reference/professions.cpp — see professions.h.
#include "reference/professions.h"

#include "core/turkish_text.h"
#include "core/values.h"
#include "reference/code_lists.h"

#include <optional>

namespace orvan {
namespace {

// One field of the definition with that code; nothing when the code has no row.
std::optional<QString> fieldOf(jet::SqlSession& level, const char* field, const char* group,
                               const QString& code, int version) {
    const std::string sql = std::string("SELECT ") + field +
                            " FROM parametrik_giris WHERE TA_tanim_GRUP= ? AND TA_tanim_Kod= ? AND ID=?";
    const auto rows = level.query(sql, Parameters{group, code, version});
    if (rows.empty()) return std::nullopt;
    return trimmedText(rows.at(0, size_t{0}));
}

QString codeIn(jet::SqlSession& level, const char* group, const QString& description, int version) {
    const auto rows = level.query("SELECT Ta_Tanim_Kod FROM Parametrik_giris WHERE Ta_Tanim_Grup = ?"
                                  " AND trim(Ta_tanim_aciklama) = ? AND ID = ?",
                                  Parameters{group, description.trimmed(), version});
    return rows.empty() ? QString() : trimmedText(rows.at(0, size_t{0}));
}

std::vector<Profession> professionsIn(const jet::ResultSet& rows) {
    std::vector<Profession> found;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        found.push_back({trimmedText(rows.at(i, size_t{0})), static_cast<int>(rows.at(i, 1).toInt()),
                         trimmedText(rows.at(i, 2))});
    return found;
}

std::vector<Profession> definitionsOf(jet::SqlSession& level, const char* group, int version) {
    return professionsIn(
        level.query("SELECT Ta_Tanim_Kod, ID, Ta_tanim_aciklama FROM Parametrik_giris "
                    "WHERE Ta_Tanim_Grup = ? AND ID = ? ORDER BY Ta_tanim_aciklama, Ta_Tanim_Kod",
                    Parameters{group, version}));
}

// `pattern` and `text` in one case; '*' stands for any letters, '?' for one.
bool matches(const QString& pattern, const QString& text) {
    qsizetype p = 0, t = 0, star = -1, starText = 0; // where the last '*' stands, and what it covers up to
    while (t < text.size()) {
        if (p < pattern.size() && pattern[p] == QLatin1Char('*')) {
            star = p++;
            starText = t;
        } else if (p < pattern.size() && (pattern[p] == QLatin1Char('?') || pattern[p] == text[t])) {
            ++p;
            ++t;
        } else if (star >= 0) {
            p = star + 1;
            t = ++starText;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == QLatin1Char('*'))
        ++p;
    return p == pattern.size();
}

} // namespace

std::vector<Profession> professions(jet::SqlSession& level) {
    return professionsIn(
        level.query("SELECT Ta_Tanim_Kod, ID, Ta_tanim_aciklama FROM Parametrik_giris WHERE Ta_Tanim_Grup = ?"
                    " ORDER BY Ta_tanim_aciklama, ID DESC", // who types a name gets the version in force
                    Parameters{group::profession}));
}

std::vector<Profession> professions(jet::SqlSession& level, int version) {
    return definitionsOf(level, group::profession, version);
}

std::vector<Profession> mainProfessions(jet::SqlSession& level, int version) {
    return definitionsOf(level, group::mainProfession, version);
}

QString professionName(jet::SqlSession& level, const QString& code, int version) {
    return fieldOf(level, "Ta_tanim_aciklama", group::profession, code, version)
        .value_or(QStringLiteral("Bu koda ait Meslek yok"));
}

QString professionShortName(jet::SqlSession& level, const QString& code, int version) {
    return fieldOf(level, "TA_Tanim_Kisaisim", group::profession, code, version)
        .value_or(QStringLiteral("Bu koda ait Meslek yok"));
}

QString mainProfessionName(jet::SqlSession& level, const QString& code, int version) {
    return fieldOf(level, "Ta_tanim_aciklama", group::mainProfession, code, version)
        .value_or(QStringLiteral("Bu koda ait AnaMeslek yok"));
}

QString professionCode(jet::SqlSession& level, const QString& description, int version) {
    return codeIn(level, group::profession, description, version);
}

QString mainProfessionCode(jet::SqlSession& level, const QString& description, int version) {
    return codeIn(level, group::mainProfession, description, version);
}

QString searchProfessionCode(jet::SqlSession& level, const QString& text, int version, NameMatch match) {
    const QString wanted = upperTurkish(text.trimmed());
    if (wanted.isEmpty()) return {};
    for (const Profession& profession : professions(level, version)) {
        const QString name = upperTurkish(profession.name);
        if (match == NameMatch::Equal ? name == wanted : matches(wanted, name)) return profession.code;
    }
    return {};
}

bool isMasterLevel(Level level) {
    return level == Level::Usta || level == Level::UstaOgretici || level == Level::DenklikUsta;
}

int trainingYears(jet::SqlSession& level, Level of, const QString& code, int version, const QString& track) {
    const char* field = isMasterLevel(of)             ? "Ta_Ustalik_Sure"
                        : track == QLatin1String("L") ? "Ta_Lise_Sure"
                                                      : "Ta_ilkogretim_Sure";
    // files of older releases may hold a text such as "4-4-4-4": its first number counts
    const QString years = fieldOf(level, field, group::profession, code, version).value_or(QString());
    return years.section(QLatin1Char('-'), 0, 0).toInt();
}

} // namespace orvan
