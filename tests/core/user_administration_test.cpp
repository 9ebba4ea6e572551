// Users come and go and get rights: every question and its order, who may do it, and what is stored.
#include "core/commands.h"
#include "core/ini_file.h"
#include "core/user_administration.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <functional>
#include <QFileInfo>
#include <QSet>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

constexpr auto kNameQuestion = "Yeni Kullanıcı Adı:";
constexpr auto kPasswordQuestion = "Şifre:";
constexpr auto kAgain = "Şifre (tekrar):";
constexpr auto kMade = "Yeni Kullanıcı Açıldı.\nŞimdi bu kullanıcının haklarını verebilirsiniz.";
constexpr auto kSave = "Yaptığınız değişiklikler kayıt edilsin mi ?";

struct AdministrationTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    UserAdministration administration{centre.databases, dialogs};

    void SetUp() override {
        centre.databases.connect();
        createUser(constants(), "müdür", "1453");
        grantAll(constants(), "müdür", {true, true});
        createUser(constants(), "O'Hara", "a'b");
        centre.session.user = "müdür";
    }
    jet::Database& constants() { return centre.databases.constants().database(); }
    QString password(const char* user) {
        const auto rows = centre.constants().query(
            "SELECT KullaniciSifre FROM Kullanici WHERE Kullanici_Adi = ?", Parameters{user});
        return rows.empty() ? QString("-") : toText(rows.at(0, size_t{0}));
    }
    int rightsRows(const char* user) {
        const auto rows = centre.constants().query(
            "SELECT COUNT(*) FROM ProgramHaklari WHERE KullaniciAdi = ?", Parameters{user});
        return toText(rows.at(0, size_t{0})).toInt();
    }
    void askName(const char* typed) { dialogs.expectInput(kNameQuestion, typed); }
    void askPasswords(const char* first, const char* second) {
        dialogs.expectInput(kPasswordQuestion, first).expectInput(kAgain, second);
    }
};

TEST_F(AdministrationTest, WithoutTheWriteRightNothingIsAskedOrDone) {
    storeRights(constants(), "O'Hara",
                UserRights(static_cast<size_t>(programTitles().size()), {true, false}));
    centre.session.user = "O'Hara";
    const auto refused = [&] {
        dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.",
                              "Uyarı");
    };
    refused();
    EXPECT_FALSE(administration.newUser());
    refused();
    EXPECT_FALSE(administration.changePassword("müdür"));
    refused();
    EXPECT_FALSE(administration.removeUser("müdür"));
    refused();
    EXPECT_FALSE(administration.requireChange());
    const UserRights rights = administration.rights("müdür");
    refused();
    EXPECT_FALSE(administration.saveRights("müdür", rights, UserRights(rights.size())));
    EXPECT_EQ(administration.rights("müdür"), rights);
    EXPECT_EQ(administration.users().join(' '), "müdür O'Hara");
    EXPECT_EQ(password("müdür"), "1453");
}

TEST_F(AdministrationTest, NewUsers) {
    struct Case {
        const char* name;
        std::function<void()> questions;
        const char* made; // name stored, nullptr: none
    };
    const char* const exists = "Bu isimde bir kullanıcı mevcut !";
    const char* const tooLong = "Kullanıcı adı en çok 30 karakter olabilir; yazdığınız 31 karakter.";
    const Case cases[] = {
        {"a name with an apostrophe and blanks around it",
         [&] {
             askName("  D'Artagnan ");
             askPasswords("x'y ", "x'y");
             dialogs.expectMessage(kMade);
         },
         "D'Artagnan"},
        {"exactly as long as the field",
         [&] {
             askName("abcdefghijklmnopqrstuvwxyzçğıö");
             askPasswords("12345678901234567890", "12345678901234567890");
             dialogs.expectMessage(kMade);
         },
         "abcdefghijklmnopqrstuvwxyzçğıö"},
        {"too long, then put right",
         [&] {
             askName("abcdefghijklmnopqrstuvwxyzçğıöş");
             dialogs.expectMessage(tooLong);
             askName("kısa");
             dialogs.expectInput(kPasswordQuestion, "123456789012345678901");
             dialogs.expectMessage("Şifre en çok 20 karakter olabilir; yazdığınız 21 karakter.");
             askPasswords("1", "1");
             dialogs.expectMessage(kMade);
         },
         "kısa"},
        {"characters that no index can hold, then given up",
         [&] {
             askName("中文😀");
             dialogs.expectMessage(
                 "Kullanıcı adında kullanılamayan bir karakter var. Lütfen harf, rakam ve noktalama "
                 "işaretleriyle yazınız.");
             dialogs.expectInput(kNameQuestion, std::nullopt);
         },
         nullptr},
        {"blank name, then given up",
         [&] {
             askName("   ");
             dialogs.expectMessage("Lütfen Kullanıcı Adını Giriniz !");
             dialogs.expectInput(kNameQuestion, std::nullopt);
         },
         nullptr},
        {"existing name in other letters",
         [&] {
             askName("MÜDÜR ");
             dialogs.expectMessage(exists);
         },
         nullptr},
        {"existing name with an apostrophe",
         [&] {
             askName("o'hara");
             dialogs.expectMessage(exists);
         },
         nullptr},
        {"two passwords that differ",
         [&] {
             askName("fark");
             askPasswords("Gizli", "gizli");
             dialogs.expectMessage("İki Şifre Aynı Değil !\nŞifre Değişiklik İşlemi İptal Edildi.");
         },
         nullptr},
        {"no password",
         [&] {
             askName("boş");
             dialogs.expectInput(kPasswordQuestion, " ");
             dialogs.expectMessage("Lütfen Kullanıcı Şifresini Giriniz !");
         },
         nullptr},
        {"given up at the second password",
         [&] {
             askName("yarım");
             dialogs.expectInput(kPasswordQuestion, "1").expectInput(kAgain, std::nullopt);
         },
         nullptr},
    };
    QStringList expected = administration.users();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        c.questions();
        EXPECT_EQ(administration.newUser().value_or("-"), QString(c.made ? c.made : "-"));
        dialogs.expectNothingLeft();
        if (c.made) {
            expected << c.made;
            EXPECT_EQ(administration.rights(c.made), UserRights(administration.rights(c.made).size()));
        }
    }
    const QStringList users = administration.users();
    EXPECT_EQ(QSet<QString>(users.begin(), users.end()), QSet<QString>(expected.begin(), expected.end()));
    EXPECT_EQ(checkSignIn(constants(), "D'Artagnan", "x'y").outcome, SignIn::Accepted);
}

TEST_F(AdministrationTest, ANewUserInheritsNothingFromOneOfTheSameName) {
    storeRights(constants(), "eski", UserRights(static_cast<size_t>(programTitles().size()), {true, true}));
    askName("eski");
    askPasswords("1", "1");
    dialogs.expectMessage(kMade);
    ASSERT_TRUE(administration.newUser());
    EXPECT_EQ(rightsRows("eski"), 0);
}

TEST_F(AdministrationTest, PasswordChangesAndTheirThreeOutcomes) {
    const char* const invalid = "Geçersiz Şifre Değişimi. Şifre Değiştirme İşlemi İptal Edildi. ";
    const QString first = "'O'Hara' için yeni şifre:", second = "Yeni şifre (tekrar):";
    dialogs.expectInput(first, "yeni 1").expectInput(second, "yeni 2").expectMessage(invalid);
    EXPECT_FALSE(administration.changePassword("O'Hara"));
    dialogs.expectInput(first, "  ").expectMessage(invalid);
    EXPECT_FALSE(administration.changePassword("O'Hara"));
    dialogs.expectInput(first, std::nullopt);
    EXPECT_FALSE(administration.changePassword("O'Hara"));
    EXPECT_EQ(password("O'Hara"), "a'b");
    dialogs.expectInput(first, " yeni ").expectInput(second, "yeni");
    dialogs.expectMessage("Şifre Değişikliği Başarıyla Tamamlandı!");
    EXPECT_TRUE(administration.changePassword("O'Hara"));
    EXPECT_EQ(password("O'Hara"), "yeni");
    EXPECT_EQ(password("müdür"), "1453");
    const char* const failed = "Şifre Değişikliği Gerçekleştirilemedi!";
    dialogs.expectInput("'giden' için yeni şifre:", "1").expectInput(second, "1").expectMessage(failed);
    EXPECT_FALSE(administration.changePassword("giden"));
}

TEST_F(AdministrationTest, DeletingUsers) {
    const auto ask = [&](const char* user, Answer answer) {
        dialogs.expectYesNo(QString("'%1' isimli kullanıcıyı silmek istediğinizde eminmisiniz ?").arg(user),
                            answer);
    };
    storeRights(constants(), "O'Hara",
                UserRights(static_cast<size_t>(programTitles().size()), {true, false}));
    ask("O'Hara", Answer::No);
    EXPECT_FALSE(administration.removeUser("O'Hara"));
    ask("müdür", Answer::Yes);
    dialogs.expectMessage("Oturumu açık olan kullanıcı kendisini silemez.");
    EXPECT_FALSE(administration.removeUser("müdür"));
    EXPECT_EQ(administration.users().size(), 2);

    ask("O'Hara", Answer::Yes);
    EXPECT_TRUE(administration.removeUser("O'Hara"));
    EXPECT_EQ(administration.users().join(' '), "müdür");
    EXPECT_EQ(rightsRows("O'Hara"), 0);
    EXPECT_EQ(rightsRows("müdür"), programTitles().size());

    ask("müdür", Answer::Yes);
    dialogs.expectMessage("Sadece bir kullanıcı var. Silinemez.");
    EXPECT_FALSE(administration.removeUser("müdür"));
    EXPECT_EQ(administration.users().join(' '), "müdür");
    EXPECT_EQ(rightsRows("müdür"), programTitles().size());
}

TEST_F(AdministrationTest, SavingReplacesTheRightsAndWritesTheMark) {
    const UserRights before = administration.rights("O'Hara");
    UserRights marks = before;
    const QStringList titles = programTitles();
    const auto mark = [&](const char* title) -> Rights& {
        return marks[static_cast<size_t>(titles.indexOf(QString(title)))];
    };
    mark("Sınıf Bilgileri") = {true, true};
    mark("Ders Havuzu") = {true, false};
    mark("Numara Arama") = {false, true};
    dialogs.expectYesNo(kSave, Answer::No);
    EXPECT_FALSE(administration.saveRights("O'Hara", before, marks));
    EXPECT_EQ(rightsRows("O'Hara"), 0);
    EXPECT_FALSE(QFileInfo::exists(centre.path("\\orvyet.ini")));

    centre.constants().execute("INSERT INTO ProgramHaklari VALUES ('O''Hara','Eski Bir Ekran','1','1')");
    dialogs.expectYesNo(kSave, Answer::Yes);
    EXPECT_TRUE(administration.saveRights("O'Hara", before, marks));
    EXPECT_EQ(rightsRows("O'Hara"), titles.size()) << "one row per title, the old ones gone";
    mark("Sabitler") = {true, true}; // stands above two of them
    EXPECT_EQ(administration.rights("O'Hara"), marks);
    EXPECT_EQ(readOneValueFile(centre.path("\\orvyet.ini")), "1");
    EXPECT_EQ(rightsOf(centre.constants(), "O'Hara", "Ders Havuzu"), (Rights{true, false}));
    EXPECT_EQ(rightsOf(centre.constants(), "müdür", "Ders Havuzu"), (Rights{true, true}));
}

TEST_F(AdministrationTest, SomebodyKeepsTheRightToAdministrate) {
    const auto here = static_cast<size_t>(programTitles().indexOf(UserAdministration::title()));
    const UserRights all = administration.rights("müdür");
    UserRights without = all;
    without[here].write = false;
    dialogs.expectYesNo(kSave, Answer::Yes)
        .expectMessage(
            "'Yeni Kullanıcı / Kullanıcı Hakları' bölümüne giriş ve değiştirme hakkı olan en az bir "
            "kullanıcı kalmalıdır. Haklar kayıt edilmedi.");
    EXPECT_FALSE(administration.saveRights("müdür", all, without));
    EXPECT_EQ(administration.rights("müdür"), all);
    // rights of a name that is no user do not count
    storeRights(constants(), "hayalet", all);
    dialogs.expectYesNo(kSave, Answer::Yes)
        .expectMessage(
            "'Yeni Kullanıcı / Kullanıcı Hakları' bölümüne giriş ve değiştirme hakkı olan en az bir "
            "kullanıcı kalmalıdır. Haklar kayıt edilmedi.");
    EXPECT_FALSE(administration.saveRights("müdür", all, without));

    storeRights(constants(), "O'Hara", all);
    EXPECT_TRUE(administration.saveRights("müdür", all, without, UserAdministration::Ask::AlreadyDone));
    EXPECT_FALSE(administration.mayChange());
}

TEST_F(AdministrationTest, ChangesOfAnotherStationAreNotLostUnseen) {
    const UserRights loaded = administration.rights("O'Hara");
    storeRights(constants(), "O'Hara", UserRights(loaded.size(), {true, false}));
    const QString changed =
        "'O'Hara' kullanıcısının hakları siz bakarken başka bir bilgisayarda değiştirilmiş.\n"
        "Sizin işaretleriniz yine de kayıt edilsin mi?";
    dialogs.expectYesNo(kSave, Answer::Yes).expectYesNo(changed, Answer::No);
    EXPECT_FALSE(administration.saveRights("O'Hara", loaded, loaded));
    EXPECT_EQ(rightsOf(centre.constants(), "O'Hara", "Numara Arama"), (Rights{true, false}));
    dialogs.expectYesNo(kSave, Answer::Yes).expectYesNo(changed, Answer::Yes);
    EXPECT_TRUE(administration.saveRights("O'Hara", loaded, loaded));
    EXPECT_EQ(rightsOf(centre.constants(), "O'Hara", "Numara Arama"), Rights());

    centre.constants().execute("DELETE FROM Kullanici WHERE Kullanici_Adi = 'O''Hara'");
    dialogs.expectYesNo(kSave, Answer::Yes)
        .expectMessage("'O'Hara' kullanıcısı bu arada silinmiş. Hakları kayıt edilmedi.");
    EXPECT_FALSE(administration.saveRights("O'Hara", loaded, loaded));
}

TEST(RightsTree, HoldsEveryTitleInItsOrderUnderSomething) {
    QStringList titles;
    bool top = false;
    for (const TitleNode& node : rightsTree()) {
        top |= node.kind != TitleKind::Sub;
        EXPECT_TRUE(top) << node.text.toStdString();
        if (node.kind != TitleKind::Heading) titles << node.text;
    }
    EXPECT_EQ(titles, programTitles());
    // A screen's own right must not follow from others.
    for (const TitleNode& node : rightsTree()) {
        if (node.kind != TitleKind::Main) continue;
        for (const CommandInfo& command : commandList())
            EXPECT_NE(node.text, QString::fromUtf8(command.title));
    }
}

} // namespace
