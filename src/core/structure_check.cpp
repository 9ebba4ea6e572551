// core/structure_check.cpp — the upgrade steps in their fixed order over every file of \Data\, and the stamp.
#include "core/structure_check.h"

#include "core/ini_file.h"
#include "core/level_paths.h"
#include "core/values.h"

#include <QFileInfo>
#include <QStringList>

namespace orvan {
namespace {

constexpr auto kStampFile = "\\Yapi.sys";
constexpr QLatin1String kSection("YAPIKOTROLU");
constexpr QLatin1String kStampKey("VERSIYON");

// One step of the upgrade on one file.
struct Job {
    QString file;
    DatabaseKind kind;
    bool (*concerns)(const TableDeclaration& table);
    void (*run)(jet::Database& database, const TableDeclaration& table, StructureChanges& changes);
};

bool anyTable(const TableDeclaration&) { return true; }
bool isCourseTable(const TableDeclaration& table) {
    return table.name == "DersHavuzu" || table.name == "MeslekDersHavuzu";
}
bool isClassTable(const TableDeclaration& table) { return table.name == "Sinif"; }

// The reference tables that all levels share: structure, and the rows that are missing.
void bringWhole(jet::Database& database, const TableDeclaration& table, StructureChanges& changes) {
    bringUpToDate(database, table, changes);
    completeRows(database, table, changes);
}

// The steps in their fixed order: student side (working set and archives alike), constants with their rows,
// course pool, workplaces, coordinators' attendance, and the classes when asked for.
std::vector<Job> jobsFor(const ProgramFolder& folder, bool classes) {
    std::vector<Job> jobs;
    QStringList levelFiles;
    for (const QString& file : folder.files(QStringLiteral("\\Data"), QStringLiteral("mdb")))
        if (isLevelFileName(QFileInfo(file).fileName())) levelFiles << file;
    const auto onLevelFiles = [&](auto concerns, auto run) {
        for (const QString& file : levelFiles)
            jobs.push_back({file, DatabaseKind::Level, concerns, run});
    };
    const auto onShared = [&](const char* literal, DatabaseKind kind, auto run) {
        const QString file = folder.resolve(QLatin1String(literal));
        if (QFileInfo::exists(file)) jobs.push_back({file, kind, anyTable, run});
    };
    onLevelFiles(anyTable, bringUpToDate);
    onShared("\\Data\\Sabit.Mdb", DatabaseKind::Constants, bringWhole);
    onLevelFiles(isCourseTable, completeRows);
    onShared("\\Data\\Isletme.Mdb", DatabaseKind::Workplaces, bringUpToDate);
    onShared("\\Data\\Koord.Mdb", DatabaseKind::Coordinators, bringUpToDate);
    if (classes) onLevelFiles(isClassTable, bringUpToDate);
    return jobs;
}

// One batch: the disk is waited for once a file.
StructureChanges runJob(const Job& job, const Session& session, const Schema& schema) {
    jet::OpenOptions options;
    options.password = utf8(session.databasePassword);
    const auto database = jet::Database::open(filePath(job.file), options);
    StructureChanges changes;
    jet::WriteBatch batch(*database);
    for (const TableDeclaration& table : schema.tables())
        if (table.database == job.kind && job.concerns(table)) job.run(*database, table, changes);
    batch.commit();
    return changes;
}

// Why the run was not whole: a line for each file that could not be brought up to date.
QStringList runJobs(const std::vector<Job>& jobs, const Session& session, const Schema& schema,
                    Dialogs& dialogs, StructureChanges& changes) {
    QStringList failures, failedFiles;
    const auto progress =
        dialogs.beginProgress(QStringLiteral("Lütfen bekleyiniz..."), static_cast<int>(jobs.size()));
    for (size_t i = 0; i < jobs.size(); ++i) {
        const QString name = QFileInfo(jobs[i].file).fileName();
        progress->step(static_cast<int>(i), name);
        if (progress->cancelled())
            return failures << QStringLiteral(
                       "Güncelleme durduruldu; sonraki açılışta kaldığı yerden sürer.");
        if (failedFiles.contains(jobs[i].file)) continue;
        try {
            changes += runJob(jobs[i], session, schema);
        } catch (const jet::Error& error) {
            failedFiles << jobs[i].file;
            failures << name + QStringLiteral(": ") + errorText(error);
        }
    }
    progress->step(static_cast<int>(jobs.size()));
    return failures;
}

} // namespace

QString structureStamp(const Release& release) {
    const auto four = [](int number) { return QStringLiteral("%1").arg(number, 4, 10, QLatin1Char('0')); };
    return QStringLiteral("EFE") + four(release.major) + four(release.minor) + four(release.revision) +
           QStringLiteral("ADA");
}

Release thisRelease() { return {}; }

QString releaseText(const Release& release) {
    return QStringLiteral("%1.%2.%3").arg(release.major).arg(release.minor).arg(release.revision);
}

bool needsStructureCheck(const ProgramFolder& folder, const QString& argument, const Release& release) {
    const IniFile stampFile(folder.resolve(QLatin1String(kStampFile)));
    return argument.trimmed() == QLatin1String("Check1") ||
           stampFile.value(kSection, kStampKey) != structureStamp(release);
}

StructureChanges checkStructure(const ProgramFolder& folder, Session& session, const Schema& schema,
                                Dialogs& dialogs, const QString& argument, const Release& release) {
    StructureChanges changes;
    session.upgradeNeeded = needsStructureCheck(folder, argument, release);
    if (!session.upgradeNeeded) return changes;
    const QStringList failures =
        runJobs(jobsFor(folder, session.classesUpgrade), session, schema, dialogs, changes);
    if (failures.isEmpty()) {
        IniFile stampFile(folder.resolve(QLatin1String(kStampFile)));
        stampFile.setValue(kSection, kStampKey, structureStamp(release));
        stampFile.save();
    } else {
        dialogs.message(QStringLiteral("Yapısı güncellenemeyen dosyalar:\n") +
                            failures.join(QLatin1Char('\n')),
                        QStringLiteral("Uyarı"), Icon::Warning);
    }
    return changes;
}

} // namespace orvan
