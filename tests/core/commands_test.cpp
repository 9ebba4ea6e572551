// The dispatcher: rights before screens, exact keys, switches of level and data set, the program's own
// commands.
#include "core/commands.h"

#include "core/archives.h"
#include "core/general_error.h"
#include "core/users.h"
#include "support/declining_dialogs.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <functional>
#include <QSet>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

struct RecordingShell final : Shell {
    QStringList calls;
    bool mayLeave = true;
    void openScreen(const ScreenEntry& entry) override { calls << "open " + entry.title; }
    bool settleScreens() override {
        calls << "settle";
        return mayLeave;
    }
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
            screens.add(key, "pencere", [] { return nullptr; });
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

// The screens' keys as the centres' rights and menus have known them, in their order; blanks between them.
constexpr auto kScreenKeys =
    "SabitBilgiler ToolSigortaSabit DonemBilgileri KanunMaddeleri PratikEgitim OgrenimDurum MeslekOdalari "
    "IsletmeSemt Isletme Koordinator MudurYrd Sinif DersHavuzu AnaMeslek Meslekler MeslekDers Kullanici "
    "ogrencikayit DersAta OgrenciARA OgrenciKontrol HizliOgrenciKayit AdSoyadNumaraDegistirme "
    "OgrenciKilitKaldir SerbestMektup CokAmacliOgrenci ZumreTutanak OgrenciTanitimKarti Rehberlik "
    "Askerlik IsletmelereGidenOgrenci KalfalikDurum OgretmenOgrenciListesi OgrenciKutuk "
    "OgrenciListesiIsletmeBaz OgrenciListesiSinifBaz OgrenciNakilBelgesi OgrenciSinavNakilBelgesi "
    "OgrenciBelgesi CirakOnkayitDefteri DigerFormlar Gunisleme PirimKes PirimTemizleme AylikSigorta "
    "DiziPusulasi IseGirisYeni Sozlesme DevamGiris SinifDevam SinifdevamNEW DersDevam "
    "DevamsizlikBildirimi DevamDefteriBolum DevamDefteriSinif UyariAlanlar NotGiris DersNotGiris "
    "SinifNotGiris SinifDersNotFisi ToolAraSinavNotFisiBasimi ToolAraSinavNotFisiBasimiOgrenci "
    "ToolAraSinavNotCizelgesiMeslek ToolAraSinavNotCizelgesiSinif ToolAraKarneMeslek ToolAraKarneSinif "
    "ToolKarneMeslek ToolKarneSinif ToolOnurSinif ToolDonemNot ToolSinavDonem ToolSinavAktif "
    "ToolSinavPlan SinavGirisBelgesi ToolSinavaCagri SinavTarihAktar SinavAl HakKazananlar BitirmeSinav "
    "BitirmeNotGirisiDers BitirmeSinavNotCizelgesi BelgeAlanlar BelgeDefteri "
    "BitirmeSinavinaGireceklerinListesi BitirmeSinaviSonucListeleri Bitirme_NotFis MeslekAlanTespit "
    "MeslekAlanBildirme IsletmeListesi Dagilim2 Dagilim1 CokAmacliIsletme SinifOgrenciSayilari "
    "KordOgretmenGorevGunleri OgretmenAylikGorev UstKoordinatorDagilim KoordinatorDagilim "
    "KoordinatorOgretmenler CokAmacliOgretmen OgrTakdirTesekkur GorevGiris OgretmenGorevTakipMenu "
    "istatistik1 istatistik2 istatistik3 istatistik4 istatistik5 GenelSMS frm_SMSYeni Frm_SMSSendList "
    "TopluDersKodu TopluSSKNO YedekAl YedekAc Tamir KoordinatorIsleme MudurYardimcisiIsleme "
    "IsletmelereKoordinator SigortaYatmayacakIsleme TopluSinifIsleme TopluSSKNoIsleme "
    "TopluAyrilisTarihiIsleme TopluSemtKoduIsleme TopluKoorveIsletmeIsleme TopluTcKimlikIsleme "
    "TopluDogumTarihiIsleme TopluDonemIsleme TopluEskiIsletmeIsleme TupluKayitDurumuIsleme "
    "TopluSigortaTarihiIsleme TopluDevamIslemleri TopluUygulamaSinaviTarihiHesapla "
    "TopluKayitKutukDuzenleme frmOgrenciBilgisiSil OgretmenGorevGunleriGirisi TopluSinifDegistirme "
    "TopluArsiveGonderme TopluBilgiDuzenleme TopluAdresDuzenleme TopluIsletmeDuzenleme DosyaBakimIslemi "
    "DonemOrtalamaGuncelle TopluMeslekDersIsleme TopluSinifDersIsleme ToolTopluDersSilme BitirmeOlustur "
    "SifreHazirla SifreYazdir GenelDuyuru";

TEST(CommandList, HasEveryKeyInItsOrder) {
    QStringList expected = QString(kScreenKeys).split(' ');
    ASSERT_EQ(expected.size(), 149);
    expected << "İşyeri Açma"
             << "ToolKalfa"
             << "ToolUsta"
             << "ToolUstaOgretici"
             << "Toolisyeriacma"
             << "ToolDenklikK"
             << "ToolDenklikU"
             << "NormalArsiv"
             << "MezunlarArsiv"
             << "AyrilmaArsiv"
             << "KullaniciDegis"
             << "Cikis"
             << "Versiyonda Yapılanlar"
             << "İl İlçe Güncelleme"
             << "Kullanım Kılavuzu";
    QStringList keys;
    for (const CommandInfo& command : commandList())
        keys << QString::fromUtf8(command.key);
    EXPECT_EQ(keys.join('\n'), expected.join('\n'));
}

TEST(CommandList, EveryTitleCanBeGranted) {
    const QStringList titles = programTitles();
    for (const CommandInfo& command : commandList()) {
        const QString title = QString::fromUtf8(command.title);
        EXPECT_EQ(title.isEmpty(), command.kind == CommandKind::Own) << command.key;
        EXPECT_TRUE(title.isEmpty() || titles.contains(title)) << command.title;
    }
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

constexpr auto kWhichYear = "Hangi öğretim yılı açılsın?";

TEST_F(CommandsTest, LevelsAndDataSetsReconnect) {
    struct Case {
        const char* key;
        const char* file;
        const char* year = nullptr; // the choice the person takes
    };
    grantAll(centre.databases.constants().database(), "ali", {true, false});
    for (const char* file : {"\\Data\\MDENK_U2008.MDB", "\\Data\\ADENK_U2007.MDB"})
        centre.folder.copy("\\Mdx\\Ogrenci.MDX", file);
    centre.constants().execute("INSERT INTO SabitBilgiler (SB_Ders_Yili) VALUES ('2010-2011')");
    for (const Case& c : {Case{"ToolUsta", "USTA.MDB"}, Case{"ToolUstaOgretici", "USTAOGR.MDB"},
                          Case{"Toolisyeriacma", "ISYERI.MDB"}, Case{"ToolDenklikK", "DENKLIK_K.MDB"},
                          Case{"ToolDenklikU", "DENKLIK_U.MDB"},
                          Case{"MezunlarArsiv", "MDENK_U2008.MDB", "2008-2009  (Usta Denklik)"},
                          Case{"AyrilmaArsiv", "ADENK_U2007.MDB", "2007-2008  (Usta Denklik)"},
                          Case{"ToolKalfa", "AKAL2007.MDB"}, Case{"NormalArsiv", "KALFA.MDB"}}) {
        if (c.year) dialogs.expectChoice(kWhichYear, c.year);
        EXPECT_EQ(run(c.key), "settle, changed") << c.key;
        EXPECT_EQ(QFileInfo(centre.databases.levelFile()).fileName().toStdString(), c.file) << c.key;
        const Session& session = centre.session;
        EXPECT_TRUE(QStringList({levelCommand(session), dataSetCommand(session)}).contains(c.key)) << c.key;
    }
    EXPECT_EQ(centre.session.schoolYear, "2010-2011") << "the working set is in the school's own year";
}

TEST_F(CommandsTest, SwitchesThatDoNotHappen) {
    struct Case {
        const char* name;
        const char* key;
        const char* title; // granted
        std::function<void()> prepare;
        const char* calls;
    };
    const QString denied =
        "Bu programa giriş yetkiniz yok!\n'Sabit Bilgiler' menüsü 'Yeni Kullanıcı / Kullanıcı "
        "Hakları' bölümünden programa giriş yetkisi veriniz veya sistem yetkilisi ile görüşünüz.";
    centre.folder.copy("\\Mdx\\Ogrenci.MDX", "\\Data\\AKAL2007.MDB");
    const Case cases[] = {
        {"level without its right", "ToolUsta", nullptr, [&] { dialogs.expectMessage(denied); }, ""},
        {"equivalence level has a right of its own", "ToolDenklikK", "Kalfa Adayları",
         [&] { dialogs.expectMessage(denied); }, ""},
        {"archive without its right", "AyrilmaArsiv", "Mezunlar Arşivi",
         [&] { dialogs.expectMessage(denied); }, ""},
        {"archive without a file", "MezunlarArsiv", "Mezunlar Arşivi",
         [&] {
             dialogs.expectMessage("Mezunlar Arşivi için kaydedilmiş bir öğretim yılı bulunamadı.\n"
                                   "Çalışılan bilgilerde kalınıyor.");
         },
         ""},
        {"year not chosen", "AyrilmaArsiv", "Ayrılma Arşivi",
         [&] { dialogs.expectChoice(kWhichYear, std::nullopt, {"2007-2008  (Kalfa)"}); }, ""},
        {"unsaved work holds", "ToolUsta", "Usta Adayları", [&] { shell.mayLeave = false; }, "settle"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        centre.constants().execute("DELETE FROM ProgramHaklari");
        if (c.title)
            centre.constants().execute("INSERT INTO ProgramHaklari VALUES ('ali',?,'1','0')",
                                       Parameters{c.title});
        c.prepare();
        EXPECT_EQ(run(c.key), c.calls);
        EXPECT_EQ(QFileInfo(centre.databases.levelFile()).fileName(), "KALFA.MDB");
        EXPECT_EQ(centre.session.level, Level::Kalfa);
        EXPECT_EQ(centre.session.mode, DataSetMode::Working);
    }
}

TEST_F(CommandsTest, FailingSwitchKeepsTheOldState) {
    QFile damaged(centre.path("\\Data\\MKAL2008.MDB"));
    ASSERT_TRUE(damaged.open(QIODevice::WriteOnly));
    damaged.write("bozuk");
    damaged.close();
    centre.constants().execute("INSERT INTO ProgramHaklari VALUES ('ali','Mezunlar Arşivi','1','0')");
    struct Accepting final : orvan_test::DecliningDialogs {
        QString text;
        std::optional<qsizetype> choose(const QString&, const QString&, const QStringList&,
                                        qsizetype) override {
            return 0;
        }
        bool askOkCancel(const QString& given, const QString& title, Icon) override {
            EXPECT_EQ(title, "Genel HATA");
            text = given;
            return true;
        }
    } accepting;
    CommandDispatcher own(screens, centre.databases, accepting, shell);
    centre.session.schoolYear = "2010-2011";
    own.onCommand("MezunlarArsiv");
    EXPECT_TRUE(accepting.text.contains("MKAL2008.MDB")) << accepting.text.toStdString();
    EXPECT_TRUE(accepting.text.contains(" Hata Kodu      : 3343")) << accepting.text.toStdString();
    EXPECT_EQ(centre.session.mode, DataSetMode::Working);
    EXPECT_EQ(centre.session.schoolYear, "2010-2011");
    EXPECT_EQ(QFileInfo(centre.databases.levelFile()).fileName(), "KALFA.MDB");
    EXPECT_EQ(shell.calls.join(", "), "settle");
}

TEST(Archives, YearsComeFromTheNamesOfTheFiles) {
    const TestCentre centre;
    ASSERT_TRUE(centre.folder.createFolder("\\Data"));
    for (const char* name :
         {"mkal2008.mdb", "MUST2008.MDB", "MDENK_K2008.MDB", "MUOG1999.MDB", "MKAL208.MDB", "MKAL20081.MDB",
          "MKAL2oo8.MDB", "MKAL2009.ldb", "AKAL2011.MDB", "KALFA.MDB", "MKAL.MDB"}) {
        QFile file(centre.folder.resolve("\\Data") + '/' + name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    QStringList found;
    for (const ArchiveYear& year : archiveYears(centre.folder, DataSetMode::Graduates))
        found << year.schoolYear + ": " + year.levels.join(", ");
    EXPECT_EQ(found.join(" / "), "2008-2009: Kalfa, Usta, Kalfa Denklik / 1999-2000: Usta Öğretici");
}

TEST_F(CommandsTest, ChangingTheUserBeginsAnew) {
    const QString question = "Geçerli kullanıcı oturumu sonlandırılacak!\n           Onaylıyor musunuz?";
    centre.session.level = Level::Usta;
    centre.session.mode = DataSetMode::Leavers;
    dialogs.expectYesNo(question, Answer::No)
        .expectYesNo(question, Answer::Yes)
        .expectYesNo(question, Answer::Yes);
    EXPECT_EQ(run("KullaniciDegis"), "");
    shell.mayLeave = false;
    EXPECT_EQ(run("KullaniciDegis"), "settle");
    EXPECT_EQ(centre.session.user, "ali");
    EXPECT_EQ(centre.session.mode, DataSetMode::Leavers);
    shell.mayLeave = true;
    EXPECT_EQ(run("KullaniciDegis"), "settle, sign in");
    EXPECT_EQ(centre.session.user, "");
    EXPECT_EQ(centre.session.level, Level::Kalfa);
    EXPECT_EQ(centre.session.mode, DataSetMode::Working);
}

TEST_F(CommandsTest, OwnCommands) {
    EXPECT_EQ(run("Cikis"), "quit");
    EXPECT_EQ(run("cikis"), "") << "case matters";
    dialogs.expectMessage(centre.path("\\Versiyon.htm") + " dosyası bulunamadı.")
        .expectMessage(centre.path("\\ILILCEGUNCELLE.EXE") + " dosyası bulunamadı.")
        .expectMessage(centre.path("\\Kilavuz.htm") + " dosyası bulunamadı.");
    EXPECT_EQ(run("Versiyonda Yapılanlar"), "");
    EXPECT_EQ(run("İl İlçe Güncelleme"), "");
    EXPECT_EQ(run("Kullanım Kılavuzu"), "");
    for (const char* name : {"\\versiyon.HTM", "\\ililceguncelle.exe", "\\Kilavuz.htm"}) {
        QFile file(centre.path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    EXPECT_EQ(run("Versiyonda Yapılanlar"), "show versiyon.HTM");
    EXPECT_EQ(run("İl İlçe Güncelleme"), "start ililceguncelle.exe");
    EXPECT_EQ(run("Kullanım Kılavuzu"), "show Kilavuz.htm");
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
