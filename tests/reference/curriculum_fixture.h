// tests/reference/curriculum_fixture.h — a centre with a user who may write, a profession and a small pool.
#pragma once

#include "core/users.h"
#include "reference/profession_curriculum.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

namespace orvan_test {

inline const QString kCurriculumTitle = "Mesleğe Ait Dersler";

class CurriculumTest : public testing::Test {
  protected:
    TestCentre centre;
    ScriptedDialogs dialogs;
    const orvan::CurriculumKey key{"Kalfa", "1101", 4, "İ"};

    void SetUp() override {
        centre.databases.connect();
        auto& constants = centre.databases.constants().database();
        for (const char* user : {"müdür", "memur"}) {
            orvan::createUser(constants, user, "1");
            orvan::grantAll(constants, user, {true, QString(user) == "müdür"});
        }
        centre.session.user = "müdür";
        centre.addProfession("1101", "Oto 'Usta' İşleri");
        for (const char* code : {"MAT", "TDE", "FRN", "MTR"})
            centre.level().execute(
                "INSERT INTO DersHavuzu "
                "(ID,DersKodu,DersAdi,DersTuru,DersHaftalikSaat,DersToplamSaat,DersTurkce) "
                "VALUES (4,?,?,'M',2,72,?)",
                orvan::Parameters{code, QString(code) + " dersi", jet::Value(QString(code) == "TDE")});
    }
    orvan::ProfessionCurriculum curriculum() { return {centre.databases, dialogs, kCurriculumTitle}; }
    void addRow(const char* code, int year, int order, const char* track = "İ", int term = 0, int hours = 2,
                const char* level = "Kalfa", const char* profession = "1101", int version = 4) {
        centre.level().execute(
            "INSERT INTO MeslekDersHavuzu "
            "(ID,MeslekKodu,MeslekOgrenciTuru,MeslekOgrenimDurumu,MeslekOgrenimYili,"
            "Donem,MeslekDersKodu,MeslekDersSaat,MeslekKayitSira) VALUES (?,?,?,?,?,?,?,?,?)",
            orvan::Parameters{version, profession, level, track, year, term, code, hours, order});
    }
    // "MAT1 TDE2": code and year of each row, in the order of the list.
    QString listed(const orvan::CurriculumKey& of) {
        QStringList all;
        for (const orvan::StoredRow& row : curriculum().rows(of))
            all << row.values.at("MeslekDersKodu") + row.values.at("MeslekOgrenimYili");
        return all.join(' ');
    }
    int total() { return static_cast<int>(count("SELECT COUNT(*) FROM MeslekDersHavuzu")); }
    int64_t count(const char* sql) { return centre.level().query(sql).at(0, size_t{0}).toInt(); }
};

} // namespace orvan_test
