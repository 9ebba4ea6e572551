// The dispatcher: rights before screens, exact keys, switches of level and data set, the program's own
// commands.
#include "core/commands.h"

#include "core/general_error.h"
#include "core/users.h"
#include "support/declining_dialogs.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <set>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

struct RecordingShell final : Shell {
    QStringList calls;
    void openScreen(const ScreenEntry& entry) override { calls << "open " + entry.title; }
    void databaseChanged() override { calls << "changed"; }
    void signInAgain() override { calls << "sign in"; }
    void quit() override { calls << "quit"; }
    void showDocument(const QString& file) override { calls << "show " + QFileInfo(file).fileName(); }
    bool startProgram(const QString& file) override {
        calls << "start " + QFileInfo(file).fileName();
        return true;
    }
};

struct CommandsTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    RecordingShell shell;
    ScreenRegistry screens;
    CommandDispatcher dispatcher{screens, centre.databases, dialogs, shell};
    void SetUp() override {
        centre.databases.connect();
        centre.session.user = "ali";
        for (const char* key : {"HizliOgrenciKayit", "frmOgrenciBilgisiSil", "Sinif"})
            screens.add(key, [] { return nullptr; });
        centre.constants().execute("INSERT INTO ProgramHaklari VALUES ('ali','Hızlı Öğrenci Kayıt','1','0')");
        centre.constants().execute(
            "INSERT INTO ProgramHaklari VALUES ('ali','Toplu Öğrenci Bilgisi Silme','1','1')");
        centre.constants().execute("INSERT INTO ProgramHaklari VALUES ('ali','Ders Havuzu','1','1')");
    }
    QString run(const char* key) {
        shell.calls.clear();
        dispatcher.onCommand(QString::fromUtf8(key));
        return shell.calls.join(", ");
    }
};

TEST(CommandList, KeysAreUniqueAndEveryTitleCanBeGranted) {
    std::set<std::string> keys;
    const QStringList titles = programTitles();
    for (const CommandInfo& info : screenCommands()) {
        EXPECT_TRUE(keys.insert(info.key).second) << info.key;
        EXPECT_TRUE(titles.contains(QString::fromUtf8(info.title))) << info.title;
    }
    EXPECT_TRUE(keys.contains("TupluKayitDurumuIsleme"));
    EXPECT_EQ(QSet<QString>(titles.begin(), titles.end()).size(), titles.size());
}

TEST_F(CommandsTest, ScreensOpenByRightAndExactKey) {
    EXPECT_EQ(run("HizliOgrenciKayit"), "open Hızlı Öğrenci Kayıt");
    EXPECT_EQ(run("hizliogrencikayit"), "") << "case matters";
    EXPECT_EQ(run("Yok"), "");
    EXPECT_EQ(run("DersHavuzu"), "") << "no screen is registered for it yet";
    dialogs.expectMessage(
        "Bu programa giriş yetkiniz yok!\n'Sabit Bilgiler' menüsü 'Yeni Kullanıcı / Kullanıcı Hakları' "
        "bölümünden programa giriş yetkisi veriniz veya sistem yetkilisi ile görüşünüz.",
        "Programa Giriş Yetkisi");
    EXPECT_EQ(run("Sinif"), "");
}

TEST_F(CommandsTest, DeletionOfStudentDataWarnsFirst) {
    const QString warning = "Bu bölümde yapacağınız değişiklikler tüm kayıtlarınızı etkileyebilir!\n"
                            "Yine de devam etmek istiyor musunuz?";
    dialogs.expectYesNo(warning, Answer::No, "UYARI").expectYesNo(warning, Answer::Yes, "UYARI");
    EXPECT_EQ(run("frmOgrenciBilgisiSil"), "");
    EXPECT_EQ(run("frmOgrenciBilgisiSil"), "open Toplu Öğrenci Bilgisi Silme");
}

TEST_F(CommandsTest, LevelsAndDataSetsReconnect) {
    struct Case {
        const char* key;
        const char* file;
    };
    centre.session.schoolYear = "2008-2009";
    for (const Case& c : {Case{"ToolUsta", "USTA.MDB"}, Case{"ToolUstaOgretici", "USTAOGR.MDB"},
                          Case{"Toolisyeriacma", "ISYERI.MDB"}, Case{"ToolDenklikK", "DENKLIK_K.MDB"},
                          Case{"ToolDenklikU", "DENKLIK_U.MDB"}, Case{"MezunlarArsiv", "MDENK_U2008.MDB"},
                          Case{"AyrilmaArsiv", "ADENK_U2008.MDB"}, Case{"ToolKalfa", "AKAL2008.MDB"},
                          Case{"NormalArsiv", "KALFA.MDB"}}) {
        EXPECT_EQ(run(c.key), "changed") << c.key;
        EXPECT_EQ(QFileInfo(centre.databases.levelFile()).fileName().toStdString(), c.file) << c.key;
    }
}

TEST_F(CommandsTest, FailingSwitchKeepsTheOldState) {
    QFile::remove(centre.path("\\Mdx\\Ogrenci.MDX"));
    centre.session.schoolYear = "2008-2009";
    struct Accepting final : orvan_test::DecliningDialogs {
        QString text;
        void message(const QString&, const QString&, Icon) override {}
        bool askOkCancel(const QString& given, const QString& title, Icon) override {
            EXPECT_EQ(title, "Genel HATA");
            text = given;
            return true;
        }
    } accepting;
    CommandDispatcher own(screens, centre.databases, accepting, shell);
    own.onCommand("MezunlarArsiv");
    EXPECT_TRUE(accepting.text.contains("Ogrenci.MDX")) << accepting.text.toStdString();
    EXPECT_TRUE(accepting.text.contains(" Hata Kodu      : 3024"));
    EXPECT_EQ(centre.session.mode, DataSetMode::Working);
    EXPECT_EQ(QFileInfo(centre.databases.levelFile()).fileName(), "KALFA.MDB");
    EXPECT_TRUE(shell.calls.isEmpty());
}

TEST_F(CommandsTest, OwnCommands) {
    const QString question = "Geçerli kullanıcı oturumu sonlandırılacak!\n           Onaylıyor musunuz?";
    dialogs.expectYesNo(question, Answer::No).expectYesNo(question, Answer::Yes);
    EXPECT_EQ(run("KullaniciDegis"), "");
    EXPECT_EQ(centre.session.user, "ali");
    EXPECT_EQ(run("KullaniciDegis"), "sign in");
    EXPECT_EQ(centre.session.user, "");
    EXPECT_EQ(run("Cikis"), "quit");
    dialogs.expectMessage(centre.path("\\Versiyon.htm") + " dosyası bulunamadı.");
    EXPECT_EQ(run("Versiyonda Yapılanlar"), "");
    QFile file(centre.path("\\versiyon.HTM"));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(run("Versiyonda Yapılanlar"), "show versiyon.HTM");
}

TEST(GeneralError, TextAndOutcome) {
    ScriptedDialogs dialogs;
    const GeneralError error{"ORVAN", "Connect", 3049, "Dosya bozuk."};
    const QString text =
        "\n HATA OLUSAN \n Program Adi    : ORVAN Rutin Adi      : Connect Hata Kodu      : 3049"
        "\n Hata Aciklamasi: Dosya bozuk.";
    dialogs.expectOkCancel(text, true, "Genel HATA")
        .expectOkCancel(text, true, "Genel HATA")
        .expectOkCancel(text, false, "Başka");
    EXPECT_EQ(showGeneralError(dialogs, error, AfterError::MayContinue), AfterError::MayContinue);
    EXPECT_EQ(showGeneralError(dialogs, error), AfterError::EndProgram);
    EXPECT_EQ(showGeneralError(dialogs, error, AfterError::MayContinue, "Başka"), AfterError::EndProgram);
}

} // namespace
