// The program's start on real folders: the order of its fourteen steps and what each leaves behind.
#include "core/startup.h"

#include "core/ini_file.h"
#include "core/passwords.h"
#include "core/structure_check.h"
#include "support/quiet_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

using namespace orvan;
using orvan_test::QuietHost;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

constexpr auto kLongPassword = "QZRTM08157320946";

// Writes down, at the beginning of every step, which of the marks that steps leave are there already.
class Recorder : public QuietHost {
  public:
    explicit Recorder(std::function<QString()> marks) : marks_(std::move(marks)) {}
    void stepBegins(StartStep step, const QString& name) override {
        EXPECT_FALSE(name.isEmpty());
        log << QStringLiteral("%1: %2").arg(static_cast<int>(step) + 1).arg(windows_ + marks_());
    }
    bool claimFolder() override { return mark("kilit "), !refused; }
    void makeSplash() override { mark("resim "); }
    void setRegionalFormats() override { mark("biçim "); }
    void showSplash() override { mark("açılış "); }
    void showMainWindow() override { mark("pencere "); }
    void maintain() override { log << QStringLiteral("bakım"); }

    QStringList log;
    bool refused = false;

  private:
    void mark(const char* what) { windows_ += QString::fromUtf8(what); }
    std::function<QString()> marks_;
    QString windows_;
};

struct StartupTest : testing::Test {
    void makeProtected(const char* literal, const QString& password) {
        jet::CreateOptions options;
        options.password = utf8(password);
        jet::Database::create(filePath(centre.path(literal)), options);
    }
    QString stamp(const char* key) {
        return IniFile(centre.path("\\Yapi.sys")).value("YAPIKOTROLU", QLatin1String(key));
    }
    QString marks() {
        QString found;
        const auto add = [&](bool there, const char* name) {
            if (there) found += QString::fromUtf8(name) + ' ';
        };
        add(centre.session.level == Level::Kalfa, "Kalfa");
        add(centre.folder.exists("\\Data"), "Data");
        add(!isProtected(centre.path("\\eski.mdb")), "eskiAçık");
        add(centre.folder.exists("\\dbsfrkontrol.txt"), "sınav");
        add(!isProtected(centre.path("\\uzun.mdb")), "uzunAçık");
        add(centre.databases.isOpen(), "bağlı");
        add(!stamp("VERSIYON").isEmpty(), "damga");
        add(!stamp("ESKIOGRENCI").isEmpty(), "eskiÖğrenci");
        return found;
    }
    Start start(StartHost& host) { return {centre.folder, centre.session, centre.databases, dialogs, host}; }
    TestCentre centre;
    ScriptedDialogs dialogs;
};

TEST_F(StartupTest, FourteenStepsInTheirOrder) {
    makeProtected("\\eski.mdb", legacyPassword());
    makeProtected("\\uzun.mdb", kLongPassword);
    centre.session.level = Level::Usta;
    Recorder host([this] { return marks(); });
    Start begin = start(host);
    ASSERT_TRUE(runStart(begin));
    openAfterSignIn(begin);
    const QStringList expected = {
        "1: ",
        "2: kilit ",
        "3: kilit resim Kalfa ",
        "4: kilit resim Kalfa ",
        "5: kilit resim biçim Kalfa ",
        "6: kilit resim biçim açılış Kalfa ",
        "7: kilit resim biçim açılış Kalfa ",
        "8: kilit resim biçim açılış Kalfa Data ",
        "9: kilit resim biçim açılış Kalfa Data eskiAçık ",
        "10: kilit resim biçim açılış Kalfa Data eskiAçık sınav ",
        "11: kilit resim biçim açılış pencere Kalfa Data eskiAçık sınav ",
        "12: kilit resim biçim açılış pencere Kalfa Data eskiAçık sınav uzunAçık ",
        "13: kilit resim biçim açılış pencere Kalfa Data eskiAçık sınav uzunAçık bağlı ",
        "14: kilit resim biçim açılış pencere Kalfa Data eskiAçık sınav uzunAçık bağlı damga ",
        "bakım",
    };
    EXPECT_EQ(host.log.join('\n').toStdString(), expected.join('\n').toStdString());
    EXPECT_EQ(stamp("ESKIOGRENCI"), "OK");
    EXPECT_EQ(stamp("VERSIYON"), "EFE000300020117ADA");
}

TEST_F(StartupTest, ASecondProgramOnTheFolderEndsAtOnceAndTouchesNothing) {
    Recorder host([] { return QString(); });
    host.refused = true;
    dialogs.expectMessage("Çalışan program zaten var...", "Dikkat");
    Start begin = start(host);
    EXPECT_FALSE(runStart(begin));
    EXPECT_EQ(host.log, QStringList("1: "));
    EXPECT_FALSE(centre.folder.exists("\\Data"));
}

#ifndef _WIN32 // a folder that nobody can write into, the administrator neither
TEST_F(StartupTest, AFolderWithoutLeaveToWriteIsToldInWords) {
    const ProgramFolder folder(QStringLiteral("/proc"));
    QuietHost host;
    dialogs.expectMessage(
        "/proc\nklasörüne yazılamıyor.\n\nProgram, verilerini bu klasörde tutar; onu kullanan herkesin bu "
        "klasöre "
        "yazma izni olmalıdır.\nBu izni, bilgisayarın ya da ağ paylaşımının sorumlusundan isteyiniz.",
        "Dikkat");
    Start begin{folder, centre.session, centre.databases, dialogs, host};
    EXPECT_FALSE(runStart(begin));
}
#endif

TEST_F(StartupTest, DataOfTheSingleFileReleaseIsToldBeforeAnythingIsMade) {
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        centre.folder.createFolder("\\Data");
        makeProtected("\\Data\\OGRENCI.MDB", "");
        QuietHost host;
        dialogs.expectYesNo(
            centre.path("\\Data\\Ogrenci.Mdb") +
                "\ndosyası, bütün düzeylerin tek veritabanında tutulduğu eski bir sürümden kalmış.\n"
                "Bu dosya olduğu gibi bırakılır; içindeki öğrenciler bu sürüme kendiliğinden aktarılmaz.\n\n"
                "Boş dosyalarla devam edilsin mi?",
            answer, "Dikkat");
        Start begin = start(host);
        EXPECT_EQ(runStart(begin), answer == Answer::Yes);
        EXPECT_EQ(centre.folder.exists("\\dbsfrkontrol.txt"), answer == Answer::Yes);
        QFile::remove(centre.path("\\Data\\OGRENCI.MDB"));
    }
}

TEST_F(StartupTest, ExamTablesAreMadeOnceUntilTheMarkerIsDeleted) {
    QuietHost host;
    Start begin = start(host);
    ASSERT_TRUE(runStart(begin));
    const QString file = centre.path("\\DATA\\USTSNDON.MDB");
    for (const bool markerDeleted : {false, true}) {
        jet::Database::open(filePath(file))->dropTable("SinavPlan");
        if (markerDeleted) QFile::remove(centre.path("\\dbsfrkontrol.txt"));
        ASSERT_TRUE(runStart(begin));
        const auto database = jet::Database::open(filePath(file));
        EXPECT_EQ(database->hasTable("SinavPlan"), markerDeleted);
        EXPECT_TRUE(database->hasTable("SinavTanim"));
        if (markerDeleted) continue;
        jet::FieldDef year;
        year.name = "Yil";
        year.size = 4;
        database->createTable("SinavPlan", {year});
    }
}

TEST_F(StartupTest, OpensAnInstallationWhoseFilesLackTables) {
    QuietHost host;
    centre.databases.connect();
    centre.databases.level().database().dropTable("Devam");
    centre.constants().execute(
        "INSERT INTO ProgramHaklari (KullaniciAdi,ProgramAdi,GirisHakki,YazmaHakki) VALUES "
        "('a','Ara Sınav Notu Girişi (Ders Bazında)','1','0')");
    centre.databases.close();
    Start begin = start(host);
    openAfterSignIn(begin);
    EXPECT_EQ(centre.databases.table("Devam").rowCount(), 0u);
    EXPECT_EQ(centre.constants().query("SELECT ProgramAdi FROM ProgramHaklari").at(0, size_t{0}),
              jet::Value("Ara Sınav Notu Girişi (Meslek - Ders)"));
    EXPECT_FALSE(centre.databases.table("Kullanici").rowCount());
}

TEST_F(StartupTest, OldStudentsAreCorrectedOnceInEveryLevelFile) {
    centre.session.mode = DataSetMode::Leavers;
    centre.session.schoolYear = "2004-2005";
    centre.databases.connect(); // makes the archive
    centre.session.mode = DataSetMode::Working;
    const struct {
        const char *stored, *expected;
        int curriculum;
    } cases[] = {
        {"5/9/2003", "05.09.2003", 1},
        {"30-06-2005", "30.06.2005", 1},
        {"1/7/2005", "1/7/2005", 1},
        {"5/9/2003", "5/9/2003", 2},
        {"", "", 1},
        {"yok", "yok", 1},
        {"05.09.2003", "05.09.2003", 1},
    };
    for (const char* file : {"\\Data\\KALFA.MDB", "\\Data\\AKAL2004.MDB"}) {
        centre.databases.connect(file);
        int number = 0;
        for (const auto& c : cases)
            centre.level().execute(
                "INSERT INTO OgrenciBilgisi (Ogr_Numarasi,DersID,Ogr_Kayit_Tarihi) VALUES (?,?,?)",
                Parameters{QString::number(++number), c.curriculum, c.stored});
    }
    centre.databases.close();
    EXPECT_EQ(correctOldStudents(centre.folder, centre.session), 4);
    EXPECT_EQ(correctOldStudents(centre.folder, centre.session), 0) << "marked as done";
    for (const char* file : {"\\Data\\KALFA.MDB", "\\Data\\AKAL2004.MDB"}) {
        centre.databases.connect(file);
        const auto rows =
            centre.level().query("SELECT Ogr_Kayit_Tarihi FROM OgrenciBilgisi ORDER BY Val(Ogr_Numarasi)");
        for (size_t i = 0; i < std::size(cases); ++i)
            EXPECT_EQ(toText(rows.at(i, size_t{0})), cases[i].expected) << file << ' ' << cases[i].stored;
    }
}

} // namespace
