// The small INI files: found without case, kept line by line, written in code page 1254; dates as text.
#include "core/clock.h"
#include "core/ini_file.h"

#include <gtest/gtest.h>
#include <QFile>
#include <QTemporaryDir>

using orvan::IniFile;

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll();
}

TEST(IniFile, ReadsWithoutCaseAndKeepsWhatItDoesNotKnow) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("Yapi.sys");
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("; a\xE7\xFDklama\r\n[Baska]\r\nVERSIYON=yanlis\r\n\r\n[yapikotrolu]\r\n versiyon = EFE0 "
                   "\r\nBOZUK\r\n");
    }
    IniFile ini(path);
    EXPECT_EQ(ini.value("YAPIKOTROLU", "VERSIYON"), "EFE0");
    EXPECT_EQ(ini.value("YAPIKOTROLU", "ESKIOGRENCI"), "");
    EXPECT_EQ(ini.value("YOK", "VERSIYON"), "");
    ini.setValue("YAPIKOTROLU", "VERSIYON", "EFE1");
    ini.setValue("YAPIKOTROLU", "ESKIOGRENCI", "OK");
    ini.setValue("Yeni", "Ad", "Işık");
    ini.save();
    EXPECT_EQ(contentOf(path),
              "; a\xE7\xFDklama\r\n[Baska]\r\nVERSIYON=yanlis\r\n\r\n[yapikotrolu]\r\nESKIOGRENCI=OK\r\n"
              "VERSIYON=EFE1\r\nBOZUK\r\n[Yeni]\r\nAd=I\xFE\xFDk\r\n");
    EXPECT_EQ(IniFile(path).value("yeni", "ad"), "Işık");
}

TEST(IniFile, MissingFileIsEmptyAndOneValueFilesAreTrimmed) {
    const QTemporaryDir folder;
    EXPECT_EQ(IniFile(folder.filePath("yok.sys")).value("A", "B"), "");
    EXPECT_EQ(orvan::readOneValueFile(folder.filePath("orvyet.ini")), "");
    orvan::writeOneValueFile(folder.filePath("orvyet.ini"), "1");
    EXPECT_EQ(orvan::readOneValueFile(folder.filePath("orvyet.ini")), "1");
}

TEST(DateText, ReadsAndWritesTheOneForm) {
    EXPECT_EQ(orvan::dateText(QDate(2008, 9, 5)), "05.09.2008");
    EXPECT_EQ(orvan::dateText(QDate()), "");
    for (const char* good : {"05.09.2008", "5.9.2008", " 05/09/2008 ", "05-09-2008"})
        EXPECT_EQ(orvan::dateFromText(good), QDate(2008, 9, 5)) << good;
    for (const char* bad :
         {"", "05.09.08", "31.02.2008", "2008.09.05", "05.09", "aa.09.2008", "05.09.2008.1"})
        EXPECT_FALSE(orvan::dateFromText(bad)) << bad;
}

} // namespace
