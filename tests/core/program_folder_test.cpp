// Literals of the program folder find files whatever their case, and name the right place when nothing is
// there.
#include "core/program_folder.h"
#include "jet/error.h"

#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using orvan::ProgramFolder;

namespace {

void touch(const QString& path, const QByteArray& content = "x") {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    file.write(content);
}

struct ProgramFolderTest : testing::Test {
    QTemporaryDir temporary;
    ProgramFolder folder{temporary.path()};
    QString at(const char* relative) const {
        return temporary.path() + QLatin1Char('/') + QLatin1String(relative);
    }
};

TEST_F(ProgramFolderTest, EveryComponentIsMatchedWithoutCase) {
    QDir().mkpath(at("DATA"));
    touch(at("DATA/Kalfa.mdb"));
    touch(at("YAPI.SYS"));
    EXPECT_EQ(folder.resolve("\\Data\\KALFA.MDB"), at("DATA/Kalfa.mdb"));
    EXPECT_EQ(folder.resolve("/data/kalfa.MDB"), at("DATA/Kalfa.mdb"));
    EXPECT_EQ(folder.resolve("\\Yapi.sys"), at("YAPI.SYS"));
    EXPECT_TRUE(folder.exists("\\data\\KALFA.mdb"));
}

TEST_F(ProgramFolderTest, MissingPartsKeepTheLiteralsSpelling) {
    QDir().mkpath(at("data"));
    EXPECT_EQ(folder.resolve("\\Data\\USTA.MDB"), at("data/USTA.MDB"));
    EXPECT_EQ(folder.resolve("\\Mdx\\Sabit.mdx"), at("Mdx/Sabit.mdx"));
    EXPECT_FALSE(folder.exists("\\Data\\USTA.MDB"));
}

#ifndef Q_OS_WIN // where both can be
TEST_F(ProgramFolderTest, ExactSpellingWinsOverAnother) {
    touch(at("A.mdb"));
    touch(at("a.mdb"));
    EXPECT_EQ(folder.resolve("\\a.mdb"), at("a.mdb"));
    EXPECT_EQ(folder.resolve("\\A.mdb"), at("A.mdb"));
}
#endif

TEST_F(ProgramFolderTest, CreatesParentsAndListsByExtension) {
    EXPECT_TRUE(folder.createFolder("\\Data\\Fotograf\\Eski"));
    EXPECT_TRUE(QDir(at("Data/Fotograf/Eski")).exists());
    touch(at("Data/b.MDB"));
    touch(at("Data/a.mdb"));
    touch(at("Data/a.mdbx"));
    touch(at("Data/a.ldb"));
    EXPECT_EQ(folder.files("\\data", "Mdb"), (QStringList{at("Data/a.mdb"), at("Data/b.MDB")}));
    EXPECT_TRUE(folder.files("\\yok", "mdb").isEmpty());
}

TEST_F(ProgramFolderTest, CopyMakesAWritableFileAndLeavesNothingElse) {
    QDir().mkpath(at("mdx"));
    QDir().mkpath(at("Data"));
    touch(at("mdx/SABIT.MDX"), "template");
    QFile::setPermissions(at("mdx/SABIT.MDX"), QFile::ReadOwner);
    folder.copy("\\Mdx\\Sabit.mdx", "\\Data\\Sabit.mdb");
    QFile copied(at("Data/Sabit.mdb"));
    ASSERT_TRUE(copied.open(QIODevice::ReadWrite));
    EXPECT_EQ(copied.readAll(), "template");
    EXPECT_EQ(QDir(at("Data")).entryList(QDir::Files).size(), 1);
}

TEST_F(ProgramFolderTest, CopyOfAMissingTemplateNamesIt) {
    try {
        folder.copy("\\Mdx\\Yok.mdx", "\\Data\\Yok.mdb");
        FAIL();
    } catch (const jet::Error& error) {
        EXPECT_EQ(error.number(), jet::Err::FileNotFound);
        EXPECT_NE(std::string(error.what()).find("Yok.mdx"), std::string::npos);
    }
}

} // namespace
