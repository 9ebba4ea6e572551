// tests/records/registration_centre.h — a centre with two professions, a user who may write, and a
// registration form to fill; dependent rows of a student in every table that has them.
#pragma once

#include "core/clock.h"
#include "records/registration.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

namespace orvan_test {

// Tables that repeat a student, with their fields for number, first name and surname.
struct Repeating {
    const char *table, *number, *name, *surname;
};
inline constexpr Repeating kRepeating[] = {
    {"Sigorta_Devamsizlik", "D_OgrNo", "D_Ogr_Adi", "D_Ogr_Soyadi"},
    {"Devam", "D_Ogr_Numarasi", "D_Ogr_Adi", "D_Ogr_Soyadi"},
    {"Notlar", "N_Ogr_Numarasi", "N_Ogr_Adi", "N_Ogr_Soyadi"},
    {"Ogrenci_Isyerleri", "Ogr_No", "Ogr_Adi", "Ogr_Soyadi"},
    {"BitirmeSinavlari", "B_Ogr_Numarasi", "B_Ogr_Adi", "B_Ogr_Soyadi"},
    {"NotOrtalama", "OgrNo", "OgrAd", "OgrSoyAd"}};

struct RegistrationTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    orvan::FixedClock clock{QDate(2008, 9, 5)};
    const QString title = QString::fromUtf8(orvan::kRegistrationTitle);
    const orvan::Profession mechanic{"1101", 4, "Otomotiv Mekanikerliği"};
    std::vector<QString> savedNumbers; // that the last step was run for
    orvan::Registration rule{
        centre.databases, dialogs, clock, title,
        [this](const orvan::StudentRecord& saved) { savedNumbers.push_back(saved.number()); }};

    void SetUp() override {
        centre.databases.connect();
        prepare();
    }
    void prepare() {
        centre.session.user = "ali";
        centre.session.schoolYear = "2008-2009";
        centre.addProfession("1101", "Otomotiv Mekanikerliği");
        centre.addProfession("1201", "Çelik İşleri");
        setRight("1");
    }
    void setRight(const char* write) {
        centre.constants().execute("DELETE FROM ProgramHaklari");
        centre.constants().execute(
            "INSERT INTO ProgramHaklari (KullaniciAdi,ProgramAdi,GirisHakki,YazmaHakki) VALUES (?,?,'1',?)",
            orvan::Parameters{"ali", title, write});
    }
    orvan::RegistrationForm newForm(const char* name = "Ayşe", const char* surname = "Işık") {
        orvan::RegistrationForm form = *rule.startNew(mechanic);
        form.values["Ogr_Adi"] = name;
        form.values["Ogr_Soyadi"] = surname;
        return form;
    }
    orvan::RegistrationForm formOf(const char* number) {
        return orvan::Registration::formOf(rule.records().byNumber(number).value());
    }
    // Saves without a question and gives the form back.
    orvan::RegistrationForm saved(orvan::RegistrationForm form) {
        EXPECT_EQ(rule.save(form).what, orvan::RegistrationResult::Saved);
        return form;
    }
    void addDependents(const QString& number, const QString& name, const QString& surname) {
        for (const Repeating& r : kRepeating)
            centre.level().execute(std::string("INSERT INTO ") + r.table + " (" + r.number + "," + r.name +
                                       "," + r.surname + ") VALUES (?,?,?)",
                                   orvan::Parameters{number, name, surname});
    }
    int count(const std::string& table, const std::string& where = "1=1") {
        return static_cast<int>(centre.level()
                                    .query("SELECT COUNT(*) FROM " + table + " WHERE " + where)
                                    .at(0, size_t{0})
                                    .toInt());
    }
    QString stored(const char* number, const char* field) {
        return orvan::toText(
            centre.level()
                .query(std::string("SELECT ") + field + " FROM OgrenciBilgisi WHERE trim(Ogr_Numarasi) = ?",
                       orvan::Parameters{number})
                .at(0, size_t{0}));
    }
};

} // namespace orvan_test
