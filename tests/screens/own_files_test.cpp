// What comes with the program reaches the program folder.
#include "app/own_files.h"
#include "core/structure_check.h"

#include <gtest/gtest.h>
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
    write(folder.filePath("VERSIYON.HTM"), "eski");
    orvan::placeOwnFiles(program, place.path());
    EXPECT_EQ(read(folder.filePath("VERSIYON.HTM")), "yeni");
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 1);
}

TEST(OwnFiles, TheNotesBesideTheProgramAreOfThisRelease) {
    const QByteArray notes = read(qEnvironmentVariable("ORVAN_BIN_DIR") + "/Versiyon.htm");
    EXPECT_TRUE(notes.contains(
        ("ORVAN " + orvan::releaseText(orvan::thisRelease()) + " sürümünde yapılanlar").toUtf8()));
}

} // namespace
} // namespace orvan_test
