// Signing in and what the main window shows before and after.
#include "screens/program_fixture.h"

#include <QLabel>
#include <QLineEdit>

namespace orvan_test {
namespace {

TEST_F(ProgramTest, WrongInputsKeepTheBoxOpenUntilThePasswordIsRight) {
    dialogs.expectMessage("Lütfen Kullanıcı Adını Giriniz !")
        .expectMessage("Lütfen Kullanıcı Şifresini Giriniz !")
        .expectMessage("Geçersiz Şifre, Tekrar Deneyiniz.");
    EXPECT_FALSE(window->menuBar()->isEnabled());
    OnBox box(
        [&](QWidget& login) {
            EXPECT_EQ(login.objectName(), QString("giris"));
            EXPECT_EQ(focused(), QString("kullaniciAdi"));
            press(Qt::Key_Return);
            type(kUser);
            press(Qt::Key_Return);
            EXPECT_EQ(focused(), QString("sifre"));
            type("yanlış");
            press(Qt::Key_Return);
            EXPECT_TRUE(login.isVisible());
            EXPECT_EQ(find<QLineEdit>(login, "sifre")->selectedText().size(), 6);
            type(kPassword);
            press(Qt::Key_Return);
        },
        20000);
    EXPECT_TRUE(window->beginSession());
    EXPECT_EQ(centre.session.user, QString(kUser));
    EXPECT_TRUE(window->menuBar()->isEnabled());
    EXPECT_TRUE(window->windowTitle().endsWith("Ver: 3.2.117")) << window->windowTitle().toStdString();
    EXPECT_EQ(find<QLabel>(*window, "durumDuzey")->text(), QString("Düzey: Kalfa"));
    EXPECT_EQ(find<QLabel>(*window, "durumKullanici")->text(), QString("Kullanıcı: müdür"));
}

TEST_F(ProgramTest, GivingUpTheSignInEndsTheProgram) {
    OnBox box([](QWidget&) { press(Qt::Key_Escape); });
    EXPECT_FALSE(window->beginSession());
    EXPECT_FALSE(centre.databases.isOpen());
}

TEST_F(ProgramTest, ASwitchedOffSignInSaysSo) {
    QFile mark(centre.path("\\orvyet.ini"));
    ASSERT_TRUE(mark.open(QIODevice::WriteOnly));
    mark.write("0");
    mark.close();
    dialogs.expectMessage(
        QString("Programa giriş kapatılmış (%1 dosyasında 0 yazılı).\nLütfen sistem yetkilisi ile görüşünüz.")
            .arg(centre.path("\\orvyet.ini")));
    OnBox box([](QWidget&) {
        type(kUser);
        press(Qt::Key_Tab);
        type(kPassword);
        press(Qt::Key_Return);
        press(Qt::Key_Escape);
    });
    EXPECT_FALSE(window->beginSession());
}

TEST_F(ProgramTest, ANewInstallationSaysThatTheTypedOneBecomesItsFirstUser) {
    const auto sayOnBox = [&](const QString& part) {
        OnBox box([&](QWidget& login) {
            EXPECT_TRUE(find<QLabel>(login, "aciklama")->text().contains(part))
                << find<QLabel>(login, "aciklama")->text().toStdString();
            press(Qt::Key_Escape);
        });
        EXPECT_FALSE(window->beginSession());
    };
    sayOnBox("kullanıcı adınızı ve şifrenizi");
    {
        const auto constants = orvan::openConstants(centre.folder, centre.session);
        constants->sql().execute("DELETE * FROM Kullanici");
    }
    sayOnBox("henüz kullanıcı yok");
    QFile::remove(centre.path("\\Data\\Sabit.mdb"));
    sayOnBox("henüz kullanıcı yok");
    EXPECT_FALSE(QFile::exists(centre.path("\\Data\\Sabit.mdb"))) << "asking makes nothing";
}

TEST_F(ProgramTest, TheLastUserIsOfferedNextTime) {
    signIn();
    window.reset();
    centre.databases.close();
    openProgram();
    OnBox box([&](QWidget& login) {
        EXPECT_EQ(find<QLineEdit>(login, "kullaniciAdi")->text(), QString(kUser));
        EXPECT_EQ(focused(), QString("sifre"));
        press(Qt::Key_Escape);
    });
    EXPECT_FALSE(window->beginSession());
}

} // namespace
} // namespace orvan_test
