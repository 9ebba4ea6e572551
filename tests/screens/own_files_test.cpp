// What comes with the program reaches the program folder.
#include "app/own_files.h"
#include "core/structure_check.h"

#include <gtest/gtest.h>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace orvan_test {
namespace {

void write(const QString& path, const QByteArray& content) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(content);
}
QByteArray read(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("-");
}

TEST(OwnFiles, ReleaseNotesAreBroughtUpToDateUnderTheirStoredName) {
    const QTemporaryDir place, folder;
    const orvan::ProgramFolder program(folder.path());
    orvan::placeOwnFiles(program, place.path());
    EXPECT_TRUE(QDir(folder.path()).isEmpty()) << "nothing comes with this program";
    write(place.filePath("Versiyon.htm"), "yeni");
    orvan::placeOwnFiles(program, place.path());
    EXPECT_EQ(read(folder.filePath("Versiyon.htm")), "yeni");
    QFile::rename(folder.filePath("Versiyon.htm"), folder.filePath("VERSIYON.HTM"));
    write(folder.filePath("VERSIYON.HTM"), "daha eski");
    orvan::placeOwnFiles(program, place.path());
    EXPECT_EQ(read(folder.filePath("VERSIYON.HTM")), "yeni");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

TEST(OwnFiles, TemplatesComeOnceAndAgainWithAnotherRelease) {
    const QTemporaryDir place, folder;
    const orvan::ProgramFolder program(folder.path());
    ASSERT_TRUE(QDir(place.path()).mkdir("Mdx"));
    write(place.filePath("Mdx/Sabit.mdx"), "bu sürüm");
    write(place.filePath("Mdx/KALFA.MDX"), "bu sürüm");
    ASSERT_TRUE(QDir(folder.path()).mkdir("mdx"));
    write(folder.filePath("mdx/kalfa.mdx"), "önceki sürüm");
    orvan::placeOwnFiles(program, place.path());
    EXPECT_EQ(QDir(folder.filePath("mdx")).entryList(QDir::Files, QDir::Name | QDir::IgnoreCase),
              QStringList({"kalfa.mdx", "Sabit.mdx"}));
    EXPECT_EQ(read(folder.filePath("mdx/kalfa.mdx")), "bu sürüm");
    QFile placed(folder.filePath("mdx/Sabit.mdx")); // same size and time: not copied again
    ASSERT_TRUE(placed.open(QIODevice::ReadWrite));
    const QDateTime time = placed.fileTime(QFileDevice::FileModificationTime);
    placed.write("BU");
    placed.setFileTime(time, QFileDevice::FileModificationTime);
    placed.close();
    orvan::placeOwnFiles(program, place.path());
    EXPECT_EQ(read(folder.filePath("mdx/Sabit.mdx")), "BU sürüm");
}

TEST(OwnFiles, TheNotesBesideTheProgramAreOfThisRelease) {
    const QByteArray notes = read(qEnvironmentVariable("ORVAN_BIN_DIR") + "/Versiyon.htm");
    EXPECT_TRUE(notes.contains(
        ("ORVAN " + orvan::releaseText(orvan::thisRelease()) + " sürümünde yapılanlar").toUtf8()));
}

} // namespace
} // namespace orvan_test
