// Who may sign in, what a user may open and change.
#include "core/ini_file.h"
#include "core/users.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

struct SignInTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    void SetUp() override {
        centre.databases.connect();
        createUser(constants(), "Işıl", "Gizli1");
        centre.constants().execute("INSERT INTO Kullanici VALUES (' boşluklu ',' şifre ')");
        centre.constants().execute("INSERT INTO Kullanici VALUES ('O''Hara','a''b')");
        centre.constants().execute("INSERT INTO Kullanici VALUES ('şifresiz',NULL)");
    }
    jet::Database& constants() { return centre.databases.constants().database(); }
};

TEST_F(SignInTest, EveryTypedPair) {
    const char* const noName = "Lütfen Kullanıcı Adını Giriniz !";
    const char* const noPassword = "Lütfen Kullanıcı Şifresini Giriniz !";
    const char* const badName = "Geçersiz Kullanıcı Adı, Tekrar Deneyiniz.";
    const char* const badPassword = "Geçersiz Şifre, Tekrar Deneyiniz.";
    struct Case {
        const char* name;
        const char* password;
        const char* refusal; // nullptr = accepted
    };
    const Case cases[] = {
        {"Işıl", "Gizli1", nullptr},    {"Işıl", "Gizli1   ", nullptr},
        {" Işıl ", "Gizli1", nullptr},  {"boşluklu", "şifre", nullptr},
        {"O'Hara", "a'b", nullptr},     {"", "Gizli1", noName},
        {"   ", "x", noName},           {"", "", noName},
        {"Işıl", "", noPassword},       {"şifresiz", "", noPassword},
        {"Işil", "Gizli1", badName},    {"' OR '1'='1", "x", badName},
        {"中文😀", "x", badName},        {"Işıl", "gizli1", badPassword},
        {"Işıl", "Gizli", badPassword}, {"şifresiz", "x", badPassword},
    };
    for (const Case& c : cases) {
        const SignInResult result = checkSignIn(constants(), c.name, c.password);
        EXPECT_EQ(result.outcome == SignIn::Accepted, c.refusal == nullptr) << c.name << " / " << c.password;
        EXPECT_EQ(result.message.toStdString(), c.refusal ? c.refusal : "") << c.name << " / " << c.password;
    }
}

TEST_F(SignInTest, SessionTakesTheStoredNameAndRefusalIsTold) {
    centre.databases.close();
    dialogs.expectMessage("Geçersiz Şifre, Tekrar Deneyiniz.");
    EXPECT_EQ(signIn(centre.folder, centre.session, dialogs, "Işıl", "yanlış"), SignIn::Refused);
    EXPECT_EQ(centre.session.user, "");
    EXPECT_EQ(signIn(centre.folder, centre.session, dialogs, "boşluklu", "şifre"), SignIn::Accepted);
    EXPECT_EQ(centre.session.user, "boşluklu");
}

TEST_F(SignInTest, SettingsFileWithZeroReturnsAtOnce) {
    writeOneValueFile(centre.path("\\orvyet.ini"), "0");
    EXPECT_EQ(signIn(centre.folder, centre.session, dialogs, "Işıl", "Gizli1"), SignIn::SwitchedOff);
    EXPECT_EQ(centre.session.user, "");
    writeOneValueFile(centre.path("\\orvyet.ini"), "1");
    EXPECT_EQ(signIn(centre.folder, centre.session, dialogs, "Işıl", "Gizli1"), SignIn::Accepted);
}

TEST(FirstUser, IsOfferedOnAFreshInstallationOnly) {
    TestCentre centre;
    ScriptedDialogs dialogs;
    const QString question =
        "Henüz hiç kullanıcı tanımlanmamış.\n'Ayşe' tüm haklara sahip ilk kullanıcı olarak açılsın mı?";
    dialogs.expectYesNo(question, Answer::No).expectMessage("Geçersiz Kullanıcı Adı, Tekrar Deneyiniz.");
    EXPECT_EQ(signIn(centre.folder, centre.session, dialogs, "Ayşe", "1"), SignIn::Refused);
    dialogs.expectMessage("Kullanıcı adı en çok 30 karakter olabilir; yazdığınız 31 karakter.")
        .expectMessage("Şifre en çok 20 karakter olabilir; yazdığınız 21 karakter.")
        .expectMessage("Kullanıcı adında kullanılamayan bir karakter var. Lütfen harf, rakam ve noktalama "
                       "işaretleriyle yazınız.");
    for (const auto& [name, password] :
         {std::pair(QString(31, 'a'), QString("1")), std::pair(QString("Ayşe"), QString(21, '1')),
          std::pair(QString("中文"), QString("1"))})
        EXPECT_EQ(signIn(centre.folder, centre.session, dialogs, name, password), SignIn::Refused);
    dialogs.expectYesNo(question, Answer::Yes);
    EXPECT_EQ(signIn(centre.folder, centre.session, dialogs, "Ayşe", "1"), SignIn::Accepted);
    const auto constants = openConstants(centre.folder, centre.session);
    EXPECT_EQ(rightsOf(constants->sql(), "Ayşe", "Hızlı Öğrenci Kayıt"), (Rights{true, true}));
    dialogs.expectMessage("Geçersiz Kullanıcı Adı, Tekrar Deneyiniz.");
    EXPECT_EQ(signIn(centre.folder, centre.session, dialogs, "Başka", "1"), SignIn::Refused);
}

TEST_F(SignInTest, UserNamesAreUnique) {
    EXPECT_TRUE(userExists(constants(), "IŞIL"));
    EXPECT_FALSE(userExists(constants(), "Işılay"));
    try {
        createUser(constants(), "ışıl", "x");
        FAIL();
    } catch (const jet::Error& error) {
        EXPECT_EQ(error.number(), jet::Err::DuplicateKey);
    }
}

struct RightsTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    void SetUp() override { centre.databases.connect(); }
    void grant(const char* title, const char* enter, const char* write, const char* user = "O'Hara") {
        centre.constants().execute(
            "INSERT INTO ProgramHaklari (KullaniciAdi,ProgramAdi,GirisHakki,YazmaHakki) VALUES (?,?,?,?)",
            Parameters{user, title, enter, write});
    }
    Rights of(const char* title) { return rightsOf(centre.constants(), "O'Hara", title); }
};

TEST_F(RightsTest, SingleTitles) {
    grant("Sınıf Bilgileri", "1", "0");
    grant("Ders Havuzu", "1", "1");
    centre.constants().execute("INSERT INTO ProgramHaklari VALUES ('O''Hara','Numara Arama',NULL,NULL)");
    grant("Öğrenci Belgesi", "1", "1", "başkası");
    EXPECT_EQ(of("Sınıf Bilgileri"), (Rights{true, false}));
    EXPECT_EQ(of("Ders Havuzu"), (Rights{true, true}));
    EXPECT_EQ(of("Numara Arama"), (Rights{false, false}));
    EXPECT_EQ(of("Öğrenci Belgesi"), (Rights{false, false}));
    EXPECT_EQ(of("Yok böyle bir başlık"), (Rights{false, false}));
}

TEST_F(RightsTest, HighestWriteRightOfAFamilyWins) {
    grant("Ara Sınav Notu Girişi (Meslek - Öğrenci)", "1", "0");
    grant("Ara Sınav Notu Girişi (Meslek - Ders)", "1", "1");
    grant("Ara Sınav Notu Girişi (Sınıf - Öğrenci) (B)", "0", "0");
    grant("Ara Sınav Notu Girişi (Sınıf - Ders) (B)", "1", "0");
    for (const char* title :
         {"Ara Sınav Notu Girişi (Meslek - Öğrenci)", "Ara Sınav Notu Girişi (Meslek - Ders)",
          "Ara Sınav Notu Girişi (Sınıf - Öğrenci) (B)", "Ara Sınav Notu Girişi (Sınıf - Ders) (B)"})
        EXPECT_EQ(of(title), (Rights{true, true})) << title;
    EXPECT_EQ(of("Bitirme Sınavları Not Girişi (Ders Bazında)"), Rights{}) << "another family";
    grant("Devamsızlık Girişi", "1", "0");
    grant("Ders Bazında Devamsızlık Girişi", "0", "0");
    EXPECT_EQ(of("Sınıf ve Öğrenci Bazında Devamsızlık Girişi"), (Rights{true, false}));
}

TEST_F(RightsTest, WriteCheckTellsThePerson) {
    grant("Sınıf Bilgileri", "1", "0");
    dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.", "Uyarı");
    EXPECT_FALSE(mayWrite(centre.constants(), "O'Hara", "Sınıf Bilgileri", dialogs));
}

TEST_F(RightsTest, GrantAllReplacesTheUsersRowsOnly) {
    grant("Sınıf Bilgileri", "0", "0");
    grant("Sınıf Bilgileri", "1", "1", "başkası");
    grantAll(centre.databases.constants().database(), "O'Hara", {true, false});
    EXPECT_EQ(of("Sınıf Bilgileri"), (Rights{true, false}));
    EXPECT_EQ(centre.databases.table("ProgramHaklari").rowCount(),
              static_cast<uint32_t>(programTitles().size()) + 1);
}

} // namespace
