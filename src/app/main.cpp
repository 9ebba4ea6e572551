// app/main.cpp — the program: orvan [--folder KLASÖR] [--shots KLASÖR]
#include "app/application.h"
#include "app/registry.h"
#include "app/shots.h"
#include "catalog/all_tables.h"
#include "core/clock.h"
#include "core/general_error.h"
#include "core/screens/main_window.h"
#include "core/startup.h"
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

int runForPerson(Application& app, MDIFormORVAN& window, const Arguments& arguments, Dialogs& dialogs) {
    if (!app.claimFolder(arguments.folder)) {
        dialogs.message(QStringLiteral("Çalışan program zaten var..."), QStringLiteral("Dikkat"),
                        Icon::Critical);
        return 1;
    }
    window.showInPlace();
    if (!window.beginSession()) return 0;
    return QApplication::exec();
}

int runShots(MDIFormORVAN& window, const Program& program, const QString& folder) {
    window.resize(1024, 768);
    window.show();
    program.databases.connect();
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
    const QTemporaryDir scratch; // pictures do not depend on what a user has arranged
    UserMemory memory(arguments.shotsFolder.isEmpty() ? memoryFile()
                                                      : scratch.filePath(QStringLiteral("ekranlar.ini")));
    const ProgramFolder folder(arguments.folder);
    const SystemClock clock;
    Session session;
    DatabaseSet databases(folder, session, allTables());
    ScreenRegistry screens;
    registerScreens(screens, databases, dialogs, memory, clock);
    try {
        prepareStart(folder, session);
        const Program program{folder, session, databases, dialogs, memory, screens};
        MDIFormORVAN window(program);
        if (arguments.shotsFolder.isEmpty()) return runForPerson(app, window, arguments, dialogs);
        return runShots(window, program, arguments.shotsFolder);
    } catch (const std::exception& error) {
        if (arguments.shotsFolder.isEmpty())
            showGeneralError(dialogs, GeneralError::from(error, QStringLiteral("Başlangıç")));
        else
            std::fprintf(stderr, "orvan: %s\n", error.what());
        return 1;
    }
}

} // namespace

} // namespace orvan

int main(int argc, char** argv) { return orvan::run(argc, argv); }
