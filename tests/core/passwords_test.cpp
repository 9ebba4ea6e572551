// The password policy on real files.
#include "core/passwords.h"
#include "core/values.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace orvan;

namespace {

constexpr const char* kLong = "QZRTM08157320946";

struct PasswordsTest : testing::Test {
    QTemporaryDir temporary;
    ProgramFolder folder{temporary.path()};
    Session session;

    QString make(const QString& relative, const std::string& password) {
        const QString path = temporary.filePath(relative);
        QDir().mkpath(QFileInfo(path).path());
        jet::CreateOptions options;
        options.password = password;
        jet::Database::create(filePath(path), options);
        return path;
    }
};

TEST_F(PasswordsTest, EachRoutineChangesOnlyWhatItShould) {
    const std::string legacy = legacyPassword().toStdString();
    const QString open = make("acik.mdb", ""), old = make("eski.mdb", legacy),
                  strong = make("uzun.mdb", kLong), other = make("baska.mdb", "bilinmez");
    const QString missing = temporary.filePath("yok.mdb"), damaged = temporary.filePath("bozuk.mdb");
    QFile file(damaged);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("bu bir veritabani degil");
    file.close();

    EXPECT_FALSE(isProtected(open));
    for (const QString& path : {old, strong, other})
        EXPECT_TRUE(isProtected(path)) << path.toStdString();
    for (const QString& path : {missing, damaged})
        EXPECT_FALSE(isProtected(path)) << path.toStdString();

    EXPECT_FALSE(removePassword(strong));
    EXPECT_FALSE(removePassword(missing));
    EXPECT_TRUE(removePassword(old));
    EXPECT_FALSE(isProtected(old));
    EXPECT_TRUE(setPassword(old));
    EXPECT_TRUE(isProtected(old));
    EXPECT_FALSE(setPassword(strong));
    EXPECT_TRUE(clearAnyPassword(old));
    EXPECT_TRUE(clearAnyPassword(strong));
    EXPECT_FALSE(isProtected(strong));
    EXPECT_FALSE(clearAnyPassword(other));
    EXPECT_TRUE(isProtected(other));
}

TEST_F(PasswordsTest, SweepTakesTheLegacyPasswordOffInAllThreePlaces) {
    const std::string legacy = legacyPassword().toStdString();
    const QStringList old{make("Data/KALFA.MDB", legacy), make("Mdx/SABIT.MDX", legacy),
                          make("Disari.mdb", legacy)};
    const QString strong = make("Data/USTA.MDB", kLong), elsewhere = make("Baska/x.mdb", legacy);
    sweepPasswords(folder, session);
    for (const QString& path : old)
        EXPECT_FALSE(isProtected(path)) << path.toStdString();
    EXPECT_TRUE(isProtected(strong)) << "the start-up sweep knows only the legacy password";
    EXPECT_TRUE(isProtected(elsewhere));
    EXPECT_EQ(session.databasePassword, "");
    clearAllPasswords(folder, session);
    EXPECT_FALSE(isProtected(strong));
}

TEST_F(PasswordsTest, ProtectingSweepFollowsTheTemplate) {
    const QString data = make("Data/KALFA.MDB", "");
    const QString original = make("Mdx/Sabit.mdx", "");
    sweepPasswords(folder, session, SweepPolicy::Protect);
    EXPECT_FALSE(isProtected(data));
    ASSERT_TRUE(setPassword(original));
    sweepPasswords(folder, session, SweepPolicy::Protect);
    EXPECT_TRUE(isProtected(data));
    EXPECT_EQ(session.databasePassword, legacyPassword());
}

} // namespace
