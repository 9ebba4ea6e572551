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

struct Step {
    QString file;
    DatabaseKind kind;
};

// Student side first (working set and archives alike), then the shared files.
std::vector<Step> stepsFor(const ProgramFolder& folder) {
    std::vector<Step> steps;
    for (const QString& file : folder.files(QStringLiteral("\\Data"), QStringLiteral("mdb")))
        if (isLevelFileName(QFileInfo(file).fileName())) steps.push_back({file, DatabaseKind::Level});
    const auto shared = [&](const char* literal, DatabaseKind kind) {
        const QString file = folder.resolve(QLatin1String(literal));
        if (QFileInfo::exists(file)) steps.push_back({file, kind});
    };
    shared("\\Data\\Sabit.Mdb", DatabaseKind::Constants);
    shared("\\Data\\Isletme.Mdb", DatabaseKind::Workplaces);
    shared("\\Data\\Koord.Mdb", DatabaseKind::Coordinators);
    return steps;
}

StructureChanges runStep(const Step& step, const Session& session, const Schema& schema) {
    jet::OpenOptions options;
    options.password = utf8(session.databasePassword);
    const auto database = jet::Database::open(filePath(step.file), options);
    const auto rows =
        step.kind == DatabaseKind::Constants ? FirstRowsWhen::AlsoMissing : FirstRowsWhen::NewTables;
    return bringUpToDate(*database, step.kind, schema, rows);
}

void add(StructureChanges& sum, const StructureChanges& one) {
    sum.tables += one.tables;
    sum.fields += one.fields;
    sum.widened += one.widened;
    sum.indexes += one.indexes;
    sum.rows += one.rows;
}

// One line per file that could not be brought up to date.
QStringList runSteps(const std::vector<Step>& steps, const Session& session, const Schema& schema,
                     Dialogs& dialogs, StructureChanges& changes) {
    QStringList failures;
    const auto progress =
        dialogs.beginProgress(QStringLiteral("Lütfen bekleyiniz..."), static_cast<int>(steps.size()));
    for (size_t i = 0; i < steps.size(); ++i) {
        const QString name = QFileInfo(steps[i].file).fileName();
        progress->step(static_cast<int>(i), name);
        try {
            add(changes, runStep(steps[i], session, schema));
        } catch (const jet::Error& error) {
            failures << name + QStringLiteral(": ") + errorText(error);
        }
    }
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
    const QStringList failures = runSteps(stepsFor(folder), session, schema, dialogs, changes);
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
