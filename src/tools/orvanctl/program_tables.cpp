// tools/orvanctl/program_tables.cpp — see program_tables.h.
#include "tools/orvanctl/program_tables.h"

#include "app/registry.h"
#include "catalog/all_tables.h"
#include "core/clock.h"
#include "core/database_set.h"
#include "tools/orvanctl/console_dialogs.h"
#include "tools/orvanctl/demo_centre.h"
#include "widgets/user_memory.h"

#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <stdexcept>

namespace orvanctl {
namespace {

constexpr int kDemoStudents = 200; // enough to fill a list

QString orNone(const QString& text) { return text.isEmpty() ? QStringLiteral("-") : text; }

QStringList runProgram(const QString& folder, const QString& centre) {
    QProcess program;
    program.setProgram(QCoreApplication::applicationDirPath() + QStringLiteral("/orvan"));
    program.setArguments({QStringLiteral("--folder"), centre, QStringLiteral("--shots"), folder});
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    program.setProcessEnvironment(environment);
    program.start(QIODevice::ReadOnly);
    if (!program.waitForStarted())
        throw std::runtime_error("Program başlatılamadı: " + program.program().toStdString());
    program.waitForFinished(-1);
    if (program.exitStatus() != QProcess::NormalExit || program.exitCode() != 0)
        throw std::runtime_error("Resimler alınamadı: " +
                                 program.readAllStandardError().trimmed().toStdString());
    return QString::fromUtf8(program.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

QStringList commandTable() {
    // The registry only keeps where these are; no file is opened.
    const QTemporaryDir nowhere;
    const orvan::ProgramFolder folder(nowhere.path());
    orvan::Session session;
    orvan::DatabaseSet databases(folder, session, orvan::allTables());
    ConsoleDialogs dialogs;
    orvan::UserMemory memory(nowhere.filePath(QStringLiteral("ekranlar.ini")));
    const orvan::SystemClock clock;
    orvan::ScreenRegistry screens;
    orvan::registerScreens(screens, databases, dialogs, memory, clock);

    QStringList lines;
    for (const orvan::CommandInfo& command : orvan::commandList()) {
        const QString key = QString::fromUtf8(command.key);
        const orvan::ScreenEntry* screen = screens.find(key);
        lines << QStringList{key, orNone(QString::fromUtf8(command.title)),
                             orNone(screen ? screen->window : QString())}
                     .join(QLatin1Char('\t'));
    }
    return lines;
}

QStringList takeShots(const QString& folder, const QString& centre) {
    const QString whole = QDir(folder).absolutePath();
    if (!centre.isEmpty()) return runProgram(whole, centre);
    const QTemporaryDir made;
    DemoOptions demo;
    demo.folder = made.path();
    demo.students = kDemoStudents;
    makeDemoCentre(demo);
    return runProgram(whole, demo.folder);
}

} // namespace orvanctl
