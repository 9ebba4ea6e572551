// reference/schooling.cpp — see schooling.h.
#include "reference/schooling.h"

#include "core/level_paths.h"
#include "core/turkish_text.h"
#include "core/users.h"
#include "core/values.h"
#include "reference/code_lists.h"

#include <algorithm>
#include <map>
#include <QFileInfo>
#include <set>

namespace orvan {
namespace {

constexpr SchoolingLevel kLevels[] = {
    {"01", "İlköğretim Mezunu", "İLKÖĞRETİM MEZUNU"},
    {"02", "İlkokul Mezunu", "İLKOKUL MEZUNU"},
    {"03", "Ortaokul Mezunu", "ORTAOKUL MEZUNU"},
    {"04", "Ortaokul 1 Terk", "ORTAOKUL 1 TERK"},
    {"05", "Ortaokul 2 Terk", "ORTAOKUL 2 TERK"},
    {"06", "Ortaokul 3 Terk", "ORTAOKUL 3 TERK"},
    {"07", "Ortaokula Devam Ediyor", "ORTAOKUL DEVAM"},
    {"10", "Lise Mezunu", "LİSE MEZUNU"},
    {"11", "Lise 1 Terk", "LİSE 1 TERK"},
    {"12", "Lise 2 Terk", "LİSE 2 TERK"},
    {"13", "Lise 3 Terk", "LİSE 3 TERK"},
    {"14", "Lise Devam Ediyor", "LİSE DEVAM"},
    {"20", "Meslek Lisesi Mezunu", "MESLEK LİS. MEZUNU"},
    {"21", "Meslek Lisesi 1 Terk", "MESLEK LİS. 1 TERK"},
    {"22", "Meslek Lisesi 2 Terk", "MESLEK LİS. 2 TERK"},
    {"23", "Meslek Lisesi 3 Terk", "MESLEK LİS. 3 TERK"},
    {"30", "Teknik Lise Mezunu", "TEKNİK LİS. MEZUNU"},
    {"40", "Açık Lise Mezunu", "AÇIK LİSE MEZUNU"},
    {"41", "Açık Lise Devam Ediyor", "AÇIK LİSE DEVAM"},
    {"50", "Yüksekokul Mezunu", "Y.OKUL MEZUNU"},
    {"51", "Yüksekokul Terk", "Y.OKUL TERK"},
    {"60", "Lisans Mezunu", "LİSANS MEZUNU"},
};

constexpr const char* kStudentFields[] = {"Ogr_OgrenimDuzeyi", "Ogr_Ogrenim_Durumu"};

struct ListRow {
    QString code, description;
};

std::vector<ListRow> listRows(jet::SqlSession& level) {
    const auto rows =
        level.query("SELECT Ta_Tanim_Kod, Ta_tanim_aciklama FROM Parametrik_giris WHERE Ta_Tanim_Grup = ?",
                    Parameters{group::schooling});
    std::vector<ListRow> list;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        list.push_back({toText(rows.at(i, size_t{0})), toText(rows.at(i, 1))});
    return list;
}

bool isCurrent(const ListRow& row) {
    return std::any_of(std::begin(kLevels), std::end(kLevels), [&](const SchoolingLevel& level) {
        return row.code.trimmed() == QLatin1String(level.code) &&
               row.description.trimmed() == QString::fromUtf8(level.description);
    });
}

// A row that is neither of the older nor of the current list, but holds a code that a rewritten row needs.
QString obstacleIn(const std::vector<ListRow>& list) {
    for (const ListRow& own : list) {
        if (schoolingOfOlder(own.description) || isCurrent(own)) continue;
        for (const ListRow& old : list) {
            const SchoolingLevel* level = schoolingOfOlder(old.description);
            if (level && own.code.trimmed() == QLatin1String(level->code))
                return QStringLiteral("%1 - %2").arg(own.code.trimmed(), own.description.trimmed());
        }
    }
    return {};
}

// One statement a row: by the old description and code, the new ones; where the current row stands already
// (`present`) the old one goes. Jet compares texts without regard to
// case, so the code tells the old row from a current one with the same words.
void rewriteRow(jet::SqlSession& level, const ListRow& old, const SchoolingLevel& wanted, bool present) {
    if (present)
        level.execute("DELETE FROM Parametrik_giris WHERE Ta_Tanim_Grup = ? AND Ta_tanim_aciklama = ? AND"
                      " Ta_Tanim_Kod = ?",
                      Parameters{group::schooling, old.description, old.code});
    else
        level.execute(
            "UPDATE Parametrik_giris SET Ta_tanim_aciklama = ?, Ta_Tanim_Kod = ? WHERE"
            " Ta_Tanim_Grup = ? AND Ta_tanim_aciklama = ? AND Ta_Tanim_Kod = ?",
            Parameters{wanted.description, wanted.code, group::schooling, old.description, old.code});
}

using CodeMap = std::map<QString, QString>; // trimmed old code: new code

// Old and new codes overlap, so each student is changed once, not code by code.
int rewriteStudents(jet::Database& database, const CodeMap& codes) {
    jet::Table students = database.openTable("OgrenciBilgisi");
    int changed = 0;
    for (bool more = students.moveFirst(); more; more = students.moveNext()) {
        std::vector<std::pair<const char*, QString>> wanted;
        for (const char* field : kStudentFields) {
            const auto found = codes.find(trimmedText(students.value(field)));
            if (found != codes.end()) wanted.emplace_back(field, found->second);
        }
        if (wanted.empty()) continue;
        students.edit();
        for (const auto& [field, code] : wanted)
            students.set(field, textValue(code));
        students.update();
        ++changed;
    }
    return changed;
}

SchoolingRewrite rewrite(jet::Database& database) {
    jet::SqlSession level(database);
    SchoolingRewrite done;
    const std::vector<ListRow> list = listRows(level);
    done.obstacle = obstacleIn(list);
    if (!done.obstacle.isEmpty()) return done;
    CodeMap codes;
    std::set<QString> present; // codes of current rows
    for (const ListRow& row : list)
        if (isCurrent(row)) present.insert(row.code.trimmed());
    jet::WriteBatch batch(database);
    for (const ListRow& old : list) {
        const SchoolingLevel* wanted = schoolingOfOlder(old.description);
        if (!wanted) continue;
        const QString code = QLatin1String(wanted->code);
        rewriteRow(level, old, *wanted, !present.insert(code).second);
        ++done.rows;
        if (old.code.trimmed() != code && !old.code.trimmed().isEmpty()) codes[old.code.trimmed()] = code;
    }
    if (!codes.empty()) done.students = rewriteStudents(database, codes);
    batch.commit();
    return done;
}

void replaceList(Connection& level) {
    jet::WriteBatch batch(level.database());
    level.sql().execute("DELETE * FROM Parametrik_giris WHERE Ta_Tanim_Grup='ÖğrenimDr'");
    for (const SchoolingLevel& row : kLevels)
        level.sql().execute(
            "INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_tanim_aciklama,Ta_Tanim_Kod) VALUES (?,?,?)",
            Parameters{group::schooling, row.description, row.code});
    batch.commit();
}

QString replaceQuestion(jet::SqlSession& level) {
    QStringList own;
    for (const ListRow& row : listRows(level))
        if (!isCurrent(row))
            own << QStringLiteral("%1 - %2").arg(row.code.trimmed(), row.description.trimmed());
    QString text = QStringLiteral("Öğrenim durumu listesi silinip güncel 22 satır yazılacak.");
    if (!own.isEmpty())
        text += QStringLiteral("\n\nListeden çıkacak %1 tanım:\n%2").arg(own.size()).arg(own.join(u'\n'));
    return text + QStringLiteral("\n\nDevam edilsin mi?");
}

bool rewriteAfterQuestion(DatabaseSet& databases, Dialogs& dialogs, int older) {
    const QString question =
        QStringLiteral(
            "Listede eski sürümden kalma %1 öğrenim durumu var.\nBunlar yerinde güncel adlarına ve "
            "kodlarına çevrilecek; öğrencilerin kodları da birlikte değişecek.\n\n"
            "Devam edilsin mi?")
            .arg(older);
    if (!dialogs.confirms(question, QStringLiteral("Dikkat"))) return false;
    const SchoolingRewrite done = rewriteOlderSchooling(databases.level());
    if (!done.obstacle.isEmpty()) {
        dialogs.message(QStringLiteral("“%1” tanımının kodu güncel listede başka bir öğrenim durumuna ait.\n"
                                       "Önce bu tanımın kodunu değiştiriniz.")
                            .arg(done.obstacle),
                        QStringLiteral("Uyarı"), Icon::Warning);
        return false;
    }
    dialogs.message(QStringLiteral("%1 öğrenim durumu çevrildi; %2 öğrencinin kodu değişti.")
                        .arg(done.rows)
                        .arg(done.students),
                    QStringLiteral("Açıklama"));
    return true;
}

} // namespace

std::span<const SchoolingLevel> schoolingLevels() { return kLevels; }

const SchoolingLevel* schoolingOfOlder(const QString& description) {
    const QString words = description.simplified();
    if (words.isEmpty() || words != upperTurkish(words)) return nullptr;
    for (const SchoolingLevel& level : kLevels)
        if (words == QString::fromUtf8(level.olderDescription) ||
            words == upperTurkish(QString::fromUtf8(level.description)))
            return &level;
    return nullptr;
}

int countOlderSchooling(jet::SqlSession& level) {
    const auto list = listRows(level);
    return static_cast<int>(std::count_if(
        list.begin(), list.end(), [](const ListRow& row) { return schoolingOfOlder(row.description); }));
}

SchoolingRewrite rewriteOlderSchooling(Connection& level) { return rewrite(level.database()); }

QStringList rewriteOlderSchoolingEverywhere(const ProgramFolder& folder, const Session& session) {
    QStringList left;
    jet::OpenOptions options;
    options.password = utf8(session.databasePassword);
    for (const QString& file : folder.files(QStringLiteral("\\Data"), QStringLiteral("mdb"))) {
        const QString name = QFileInfo(file).fileName();
        if (!isLevelFileName(name)) continue;
        try {
            const auto database = jet::Database::open(filePath(file), options);
            jet::SqlSession level(*database);
            if (countOlderSchooling(level) > 0 && !rewrite(*database).obstacle.isEmpty()) left << name;
        } catch (const jet::Error&) {
            left << name;
        }
    }
    return left;
}

bool renewSchooling(DatabaseSet& databases, Dialogs& dialogs, const QString& title) {
    if (!mayWrite(databases.constants().sql(), databases.session().user, title, dialogs)) return false;
    jet::SqlSession& level = databases.level().sql();
    const int older = countOlderSchooling(level);
    if (older > 0) return rewriteAfterQuestion(databases, dialogs, older);
    if (!dialogs.confirms(replaceQuestion(level), QStringLiteral("Dikkat"))) return false;
    replaceList(databases.level());
    return true;
}

} // namespace orvan
