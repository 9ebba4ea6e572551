// The program as a process: it starts on a centre, opens every screen and saves their pictures.
#include "app/registry.h"
#include "core/clock.h"
#include "core/startup.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"
#include "widgets/user_memory.h"

#include <QImage>
#include <QProcess>
#include <QRegularExpression>

namespace orvan_test {
namespace {

QString programFile() { return qEnvironmentVariable("ORVAN_BIN_DIR") + QStringLiteral("/orvan"); }

struct Outcome {
    int status = -1;
    QString output, errors;
};
Outcome runProgram(const QStringList& arguments) {
    QProcess program;
    program.start(programFile(), arguments);
    EXPECT_TRUE(program.waitForFinished(120000)) << program.errorString().toStdString();
    return {program.exitStatus() == QProcess::NormalExit ? program.exitCode() : -1,
            QString::fromUtf8(program.readAllStandardOutput()),
            QString::fromUtf8(program.readAllStandardError())};
}

TEST(Shots, EveryScreenOfTheProgramHasAPicture) {
    TestCentre centre;
    centre.databases.connect();
    centre.addProfession("0101", "İnşaat Teknolojisi");
    centre.databases.close();

    const QString folder = centre.path("\\resimler");
    const Outcome outcome = runProgram({"--folder", centre.folder.path(), "--shots", folder});
    ASSERT_EQ(outcome.status, 0) << outcome.errors.toStdString();
    const QStringList files = outcome.output.split(QRegularExpression("\r?\n"), Qt::SkipEmptyParts);
    for (const QString& file : files) {
        const QImage picture(file);
        EXPECT_GT(picture.width(), 50) << file.toStdString();
        EXPECT_LE(picture.width(), 1024) << file.toStdString();
        EXPECT_LE(picture.height(), 768) << file.toStdString();
    }

    ScriptedDialogs dialogs;
    orvan::UserMemory memory(centre.path("\\ekranlar.ini"));
    const orvan::FixedClock clock(QDate(2008, 9, 15));
    orvan::ScreenRegistry screens;
    orvan::registerScreens(screens, centre.databases, dialogs, memory, clock);
    QStringList expected{"acilis", "giris", "ana_pencere", "menuCalisma", "menuPencere", "menuYardim"};
    for (const orvan::ScreenEntry& entry : screens.entries())
        expected << entry.window + '-' + entry.key << entry.window + '-' + entry.key + "-pencerede";
    for (const QString& name : expected)
        EXPECT_TRUE(files.contains(folder + '/' + name + ".png")) << name.toStdString();
}

TEST(Shots, AFolderThatIsNoCentreIsOneClearLineAndAStatus) {
    const QTemporaryDir empty;
    const Outcome outcome = runProgram({"--folder", empty.path(), "--shots", empty.filePath("resimler")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.errors.contains("orvan: ")) << outcome.errors.toStdString();
    EXPECT_TRUE(outcome.errors.contains("Sabit.mdx", Qt::CaseInsensitive)) << outcome.errors.toStdString();
}

} // namespace
} // namespace orvan_test
