// A database that is there but cannot be opened: the number, the path and what to do are told, and the
// session stays on what it had. Also what a start meets in a folder that somebody has spoilt.
#include "core/general_error.h"
#include "core/ini_file.h"
#include "core/startup.h"
#include "core/structure_check.h"
#include "support/declining_dialogs.h"
#include "support/quiet_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

using namespace orvan;
using orvan_test::QuietHost;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

enum class Trouble { Damaged, Empty, ForeignPassword, Folder };

void spoil(const QString& file, Trouble trouble) {
    QFile::remove(file);
    switch (trouble) {
    case Trouble::Damaged: {
        QFile damaged(file);
        ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
        damaged.write(QByteArray(8192, 'x'));
        break;
    }
    case Trouble::Empty: {
        QFile empty(file);
        ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
        break;
    }
    case Trouble::ForeignPassword: {
        jet::CreateOptions options;
        options.password = "bilinmeyen";
        jet::Database::create(filePath(file), options);
        break;
    }
    case Trouble::Folder: ASSERT_TRUE(QDir().mkpath(file)); break;
    }
}

TEST(FileThatCannotBeOpened, IsToldWithPathNumberAndAdvice) {
    const struct {
        Trouble trouble;
        int number;
        const char* advice;
    } troubles[] = {
        {Trouble::Damaged, 3343, "yedeği geri yükleyiniz"},
        {Trouble::Empty, 3343, "yedeği geri yükleyiniz"},
        {Trouble::ForeignPassword, 3031, "bilmediği bir parolayla"},
        {Trouble::Folder, 3051, "izniniz"},
    };
    for (const char* literal :
         {"\\Data\\Sabit.mdb", "\\Data\\Isletme.mdb", "\\Data\\Koord.mdb", "\\Data\\USTA.MDB"}) {
        for (const auto& [trouble, number, advice] : troubles) {
            SCOPED_TRACE(literal);
            TestCentre centre;
            centre.databases.connect();
            centre.databases.close();
            const QString file = centre.path(literal);
            spoil(file, trouble);
            centre.session.level = Level::Usta;
            try {
                centre.databases.connect();
                ADD_FAILURE() << "opened";
            } catch (const std::exception& error) {
                const auto general = GeneralError::from(error, QStringLiteral("Connect"));
                EXPECT_EQ(general.number, number) << general.description.toStdString();
                EXPECT_TRUE(general.description.contains(QFileInfo(file).fileName()))
                    << general.description.toStdString();
                EXPECT_TRUE(general.description.contains(QString::fromUtf8(advice)))
                    << general.description.toStdString();
            }
            EXPECT_FALSE(centre.databases.isOpen());
        }
    }
}

TEST(FileThatCannotBeOpened, LeavesTheSessionOnWhatItHad) {
    TestCentre centre;
    centre.databases.connect();
    spoil(centre.path("\\Data\\USTA.MDB"), Trouble::Damaged);
    centre.session.level = Level::Usta;
    EXPECT_THROW(centre.databases.connect(), jet::Error);
    EXPECT_EQ(centre.databases.levelFile(), centre.path("\\Data\\KALFA.MDB"));
    EXPECT_NO_THROW(centre.addStudent("010100001", 1, "0101"));
}

TEST(SpoiltFolder, AStampFileOfGarbageMeansAnUpgradeAndKeepsItsLines) {
    TestCentre centre;
    ScriptedDialogs dialogs;
    QFile stamp(centre.path("\\Yapi.sys"));
    ASSERT_TRUE(stamp.open(QIODevice::WriteOnly));
    stamp.write(QByteArray("\x00\xFF[YAPI\r\n=\r\n[[YAPIKOTROLU\r\nbaşka=1\r\n", 34));
    stamp.close();
    QuietHost host;
    Start start{centre.folder, centre.session, centre.databases, dialogs, host};
    openAfterSignIn(start);
    EXPECT_TRUE(centre.session.upgradeNeeded);
    EXPECT_EQ(IniFile(stamp.fileName()).value("YAPIKOTROLU", "VERSIYON"), "EFE000300020117ADA");
    openAfterSignIn(start);
    EXPECT_FALSE(centre.session.upgradeNeeded);
}

TEST(SpoiltFolder, AFileInThePlaceOfDataIsOneClearError) {
    TestCentre centre;
    QFile file(centre.folder.path() + "/Data");
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    ScriptedDialogs dialogs;
    QuietHost host;
    Start start{centre.folder, centre.session, centre.databases, dialogs, host};
    try {
        runStart(start);
        ADD_FAILURE() << "went on";
    } catch (const jet::Error& error) {
        EXPECT_NE(std::string(error.what()).find("Data"), std::string::npos) << error.what();
    }
}

TEST(StructureUpgrade, StoppedByThePersonGoesOnAtTheNextStart) {
    TestCentre centre;
    centre.databases.connect();
    centre.databases.level().database().dropTable("Devam");
    centre.databases.close();
    ScriptedDialogs dialogs;
    dialogs.cancelProgressAfter(1);
    dialogs.expectMessage("Yapısı güncellenemeyen dosyalar:\nGüncelleme durduruldu; sonraki açılışta kaldığı "
                          "yerden sürer.",
                          "Uyarı");
    checkStructure(centre.folder, centre.session, allTables(), dialogs);
    EXPECT_TRUE(needsStructureCheck(centre.folder));
    ScriptedDialogs again;
    checkStructure(centre.folder, centre.session, allTables(), again);
    EXPECT_FALSE(needsStructureCheck(centre.folder));
}

} // namespace
