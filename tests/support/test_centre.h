// tests/support/test_centre.h — a temporary program folder with fresh templates, its session and database
// set.
#pragma once

#include "catalog/all_tables.h"
#include "catalog/templates.h"
#include "core/database_set.h"
#include "core/values.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace orvan_test {

// The templates are made once per test program and copied from there.
inline const QString& templateFolder() {
    static const QTemporaryDir folder;
    static const QString path = [] {
        orvan::writeTemplates(folder.path());
        return folder.path();
    }();
    return path;
}

class TestCentre {
  public:
    TestCentre() : folder(temporary_.path()), databases(folder, session, orvan::allTables()) {
        const QString target = temporary_.path() + QStringLiteral("/Mdx");
        QDir().mkpath(target);
        for (const QString& name : QDir(templateFolder()).entryList(QDir::Files))
            QFile::copy(templateFolder() + QLatin1Char('/') + name, target + QLatin1Char('/') + name);
    }
    QString path(const char* literal) const { return folder.resolve(QString::fromUtf8(literal)); }
    jet::SqlSession& level() { return databases.level().sql(); }
    jet::SqlSession& constants() { return databases.constants().sql(); }

    // A profession of the open level database.
    void addProfession(const QString& code, const QString& name, int version = 4) {
        level().execute(
            "INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama,ID) VALUES (?,?,?,?)",
            orvan::Parameters{"Bölüm", code, name, version});
    }
    void addStudent(const QString& number, int registrationNo, const QString& professionCode,
                    const QString& name = QStringLiteral("Ayşe"),
                    const QString& surname = QStringLiteral("Işık")) {
        level().execute(
            "INSERT INTO OgrenciBilgisi (Ogr_Numarasi,Ogr_Kayit_No,Ogr_MeslekKod,DersID,Ogr_Adi,Ogr_Soyadi,"
            "Ogr_Seviye,Ogr_Durum) VALUES (?,?,?,4,?,?,'1',0)",
            orvan::Parameters{number, registrationNo, professionCode, name, surname});
    }

  private:
    QTemporaryDir temporary_;

  public:
    orvan::ProgramFolder folder;
    orvan::Session session;
    orvan::DatabaseSet databases;
};

} // namespace orvan_test
