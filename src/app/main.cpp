// app/main.cpp — the program: orvan [--folder KLASÖR] [--shots KLASÖR]
#include "app/program_start.h"
#include "app/regional_formats.h"
#include "app/registry.h"
#include "app/shots.h"
#include "catalog/all_tables.h"
#include "core/clock.h"
#include "core/general_error.h"
#include "reference/maintenance.h"
#include "widgets/qt_dialogs.h"
#include "widgets/user_memory.h"

#include <cstdio>
#include <QCommandLineParser>
#include <QTemporaryDir>

namespace orvan {

namespace {

struct Arguments {
    QString folder;      // program folder
    QString shotsFolder; // empty: the program runs for a person
};

Arguments parseArguments(const QApplication& app) {
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("ORVAN - Mesleki Eğitim Merkezi Öğrenci Takip Programı"));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption folder(
        QStringLiteral("folder"),
        QStringLiteral("Programın çalışacağı klasör (Data ve Mdx klasörlerinin yeri)."),
        QStringLiteral("KLASÖR"), QApplication::applicationDirPath());
    const QCommandLineOption shots(QStringLiteral("shots"),
                                   QStringLiteral("Her ekranın resmini bu klasöre kaydeder ve çıkar."),
                                   QStringLiteral("KLASÖR"));
    parser.addOptions({folder, shots});
    parser.process(app);
    return {parser.value(folder), parser.value(shots)};
}

int runForPerson(Start& start, MDIFormORVAN& window) {
    if (!runStart(start)) return 1;
    if (!window.beginSession()) return 0;
    return QApplication::exec();
}

int runShots(MDIFormORVAN& window, const Program& program, const QString& folder) {
    setRegionalFormats();
    window.resize(1024, 768);
    window.show();
    program.databases.connect();
    program.host.maintain();
    window.sessionReady();
    for (const QString& file : takeShots(window, program, folder))
        std::printf("%s\n", qPrintable(file));
    window.close();
    return 0;
}

int run(int argc, char** argv) {
    chooseScreen(argc, argv);
    QtDialogs dialogs;
    Application app(argc, argv, dialogs);
    const Arguments arguments = parseArguments(app);
    const bool forPerson = arguments.shotsFolder.isEmpty();
    const QTemporaryDir scratch; // pictures do not depend on what a user has arranged
    UserMemory memory(forPerson ? memoryFile() : scratch.filePath(QStringLiteral("ekranlar.ini")));
    const ProgramFolder folder(arguments.folder);
    const SystemClock clock;
    Session session;
    DatabaseSet databases(folder, session, allTables());
    ScreenRegistry screens;
    registerScreens(screens, databases, dialogs, memory, clock);
    ProgramStart host(app, folder, [&] { maintainReference(databases, dialogs, clock); });
    try {
        const Program program{folder, session, databases, dialogs, memory, screens, host};
        MDIFormORVAN window(program);
        host.setWindow(window);
        if (!forPerson) return runShots(window, program, arguments.shotsFolder);
        Start start{folder, session, databases, dialogs, host};
        return runForPerson(start, window);
    } catch (const std::exception& error) {
        if (forPerson)
            showGeneralError(dialogs, GeneralError::from(error, QStringLiteral("Başlangıç")));
        else
            std::fprintf(stderr, "orvan: %s\n", error.what());
        return 1;
    }
}

} // namespace

} // namespace orvan

int main(int argc, char** argv) { return orvan::run(argc, argv); }
