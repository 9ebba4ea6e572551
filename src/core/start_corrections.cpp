// core/start_corrections.cpp — the two steps of the start that run once in the life of an installation.
#include "core/clock.h"
#include "core/ini_file.h"
#include "core/level_paths.h"
#include "core/startup.h"
#include "core/values.h"

#include <QFile>
#include <QFileInfo>

namespace orvan {
namespace {

constexpr auto kStampFile = "\\Yapi.sys";
constexpr QLatin1String kSection("YAPIKOTROLU");
constexpr QLatin1String kCorrectedKey("ESKIOGRENCI");
constexpr auto kExamMarker = "\\dbsfrkontrol.txt";
constexpr const char* kExamFiles[] = {"\\DATA\\KALSNDON.MDB", "\\DATA\\USTSNDON.MDB", "\\DATA\\UOGSNDON.MDB"};
constexpr int kFirstCurriculum = 1;
const QDate kSecondCurriculumBegins(2005, 7, 1);

// The date's one form, when it is an old one in another form.
std::optional<QString> correctedDate(const QString& stored) {
    const auto date = dateFromText(stored); // with any of the separators
    if (!date || *date >= kSecondCurriculumBegins) return std::nullopt;
    const QString corrected = dateText(*date);
    return corrected == stored ? std::nullopt : std::optional(corrected);
}

int correctFile(jet::Database& database) {
    jet::SqlSession sql(database);
    jet::WriteBatch batch(database);
    int corrected = 0;
    std::vector<std::pair<QString, QString>> dates; // as stored, as corrected
    const auto rows = sql.query("SELECT DISTINCT Ogr_Kayit_Tarihi FROM OgrenciBilgisi WHERE DersID = ?"
                                " AND Ogr_Kayit_Tarihi IS NOT NULL",
                                Parameters{kFirstCurriculum});
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        const QString stored = toText(rows.at(i, size_t{0}));
        if (const auto date = correctedDate(stored)) dates.emplace_back(stored, *date);
    }
    for (const auto& [stored, date] : dates)
        corrected +=
            static_cast<int>(sql.execute("UPDATE OgrenciBilgisi SET Ogr_Kayit_Tarihi = ? WHERE DersID = ? AND"
                                         " Ogr_Kayit_Tarihi = ?",
                                         Parameters{date, kFirstCurriculum, stored}));
    batch.commit();
    return corrected;
}

void createExamFile(const QString& file, const Schema& schema) {
    const auto path = filePath(file);
    const auto database = QFileInfo::exists(file) ? jet::Database::open(path) : jet::Database::create(path);
    StructureChanges changes;
    jet::WriteBatch batch(*database);
    for (const TableDeclaration& table : schema.tables())
        if (table.database == DatabaseKind::Exams) bringUpToDate(*database, table, changes);
    batch.commit();
}

} // namespace

int correctOldStudents(const ProgramFolder& folder, const Session& session) {
    IniFile stamps(folder.resolve(QLatin1String(kStampFile)));
    if (stamps.value(kSection, kCorrectedKey) == QLatin1String("OK")) return 0;
    int corrected = 0;
    bool all = true;
    jet::OpenOptions options;
    options.password = utf8(session.databasePassword);
    for (const QString& file : folder.files(QStringLiteral("\\Data"), QStringLiteral("mdb"))) {
        if (!isLevelFileName(QFileInfo(file).fileName())) continue;
        try {
            corrected += correctFile(*jet::Database::open(filePath(file), options));
        } catch (const jet::Error&) {
            all = false; // the structure check has named it; the next start tries again
        }
    }
    if (!all) return corrected;
    stamps.setValue(kSection, kCorrectedKey, QStringLiteral("OK"));
    stamps.save();
    return corrected;
}

void createExamTables(const ProgramFolder& folder, const Schema& schema) {
    if (folder.exists(QLatin1String(kExamMarker))) return;
    for (const char* file : kExamFiles)
        createExamFile(folder.resolve(QLatin1String(file)), schema);
    QFile marker(folder.resolve(QLatin1String(kExamMarker)));
    if (marker.open(QIODevice::WriteOnly)) return;
    jet::Error error(jet::Err::DiskIO, "Dosya yazılamadı.");
    throw error.inFile(utf8(marker.fileName()));
}

} // namespace orvan
