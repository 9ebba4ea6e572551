// Adding, changing and deleting coded definitions on a real level database: what is refused and why, where a
// code is used, and what another station does meanwhile.
#include "reference/code_lists.h"
#include "reference/definition_list.h"

#include "core/users.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

const QString kCode = QStringLiteral("Ta_Tanim_Kod");
const QString kName = QStringLiteral("Ta_tanim_aciklama");
const QString kVersion = QStringLiteral("ID");

struct DefinitionListTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;

    void SetUp() override {
        centre.databases.connect();
        centre.session.user = QStringLiteral("müdür");
        auto& constants = centre.databases.constants().database();
        createUser(constants, centre.session.user, "1");
        grantAll(constants, centre.session.user, {true, true});
    }
    DefinitionList list(const char* command) {
        const QString title = command == QLatin1String("Meslekler") ? "Meslekler" : "Semt Bilgileri";
        return {centre.databases, dialogs, definitionGroup(QString::fromUtf8(command)), title};
    }
    static StoredRow rowOf(DefinitionList& list, const char* code) {
        for (const StoredRow& row : list.rows())
            if (row.values.at(kCode) == QLatin1String(code)) return row;
        throw std::runtime_error("no such definition");
    }
    SaveOutcome add(DefinitionList& list, const QString& code, const QString& name, FieldTexts more = {}) {
        std::optional<StoredRow> row;
        more[kCode] = code;
        more[kName] = name;
        return list.save(row, more);
    }
    void execute(const char* sql) { centre.level().execute(sql); }
};

TEST_F(DefinitionListTest, NewRowsAreTrimmedSortedAndFoundByTheLookups) {
    DefinitionList districts = list("IsletmeSemt");
    ASSERT_TRUE(add(districts, " 06 ", "  Şirinevler ").saved);
    ASSERT_TRUE(add(districts, "6", "Çarşı").saved); // another code than 06
    EXPECT_EQ(descriptionOf(centre.level(), "Semt Kodu", "06"), "Şirinevler");
    EXPECT_EQ(descriptionOf(centre.level(), "Semt Kodu", "6"), "Çarşı");
    EXPECT_EQ(descriptions(centre.level(), "Semt Kodu").join(','), "Çarşı,Şirinevler");
    ASSERT_EQ(districts.rows().size(), 2u);
    EXPECT_EQ(districts.rows()[0].values.at(kCode), "06");
    EXPECT_EQ(districts.nextCode(), "07");
    ASSERT_TRUE(add(districts, "10", "Sanayi").saved);
    ASSERT_TRUE(add(districts, "A1", "Köyler").saved);
    QString codes;
    for (const StoredRow& row : districts.rows())
        codes += row.values.at(kCode) + u' ';
    EXPECT_EQ(codes, "06 6 10 A1 "); // by size, not 10 before 6
}

TEST_F(DefinitionListTest, BadInputNamesItsField) {
    DefinitionList districts = list("IsletmeSemt");
    ASSERT_TRUE(add(districts, "01", "Çarşı").saved);
    const struct {
        QString code, name, field, words;
    } cases[] = {
        {"", "İstasyon", kCode, "boş"},
        {"   ", "İstasyon", kCode, "boş"},
        {"02", "  ", kName, "boş"},
        {"01", "İstasyon", kCode, "01 - Çarşı"},
        {"02", "ÇARŞI", kName, "01 - Çarşı"}, // a lookup by words could not tell them apart
        {QString(16, u'1'), "İstasyon", kCode, "en çok 15"},
        {"02", QString(101, u'ş'), kName, "en çok 100"},
    };
    for (const auto& bad : cases) {
        const SaveOutcome outcome = add(districts, bad.code, bad.name);
        EXPECT_FALSE(outcome.saved) << bad.code.toStdString();
        EXPECT_EQ(outcome.field, bad.field);
        EXPECT_TRUE(outcome.reason.contains(bad.words)) << outcome.reason.toStdString();
    }
    EXPECT_EQ(districts.rows().size(), 1u);
}

TEST_F(DefinitionListTest, ProfessionsStandOnceInEachVersionWithItsDate) {
    DefinitionList professions = list("Meslekler");
    EXPECT_EQ(add(professions, "0101", "Kuaförlük").field, kVersion);
    EXPECT_EQ(add(professions, "0101", "Kuaförlük", {{kVersion, "5"}}).field, kVersion);
    ASSERT_TRUE(add(professions, "0101", "Kuaförlük", {{kVersion, "4"}, {"Ta_Lise_Sure", "2"}}).saved);
    ASSERT_TRUE(add(professions, "0101", "Kuaförlük", {{kVersion, "3"}}).saved);
    EXPECT_EQ(add(professions, "0101", "Berberlik", {{kVersion, "3"}}).field, kCode);
    EXPECT_EQ(add(professions, "0102", "B", {{kVersion, "1"}, {"Ta_Lise_Sure", "iki"}}).field,
              "Ta_Lise_Sure");
    const QString rate = QStringLiteral("TA_Tanim_prim_cirak_hastalik_sigortasi");
    EXPECT_EQ(add(professions, "0102", "B", {{kVersion, "1"}, {rate, "-1"}}).field, rate);
    EXPECT_EQ(add(professions, "0102", "B", {{kVersion, "1"}, {rate, "100.5"}}).field, rate);
    const auto rows = professions.rows();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].values.at("YururlulukTarihi"), "12.09.2010");
    EXPECT_EQ(rows[1].values.at("YururlulukTarihi"), "15.09.2017");
    EXPECT_EQ(rows[1].values.at("Ta_Lise_Sure"), "2");
}

TEST_F(DefinitionListTest, AProfessionCodeThatBreaksStudentNumbersIsAskedAbout) {
    DefinitionList professions = list("Meslekler");
    const QString question =
        QStringLiteral("Meslek kodu 4 karakter olmalı; “101” 3 karakter.\nKütük numarasının sırası 5. "
                       "karakterden başladığı için bu meslekte numaralar karışabilir.\n\n"
                       "Yine de kaydedilsin mi?");
    dialogs.expectYesNo(question, Answer::No).expectYesNo(question, Answer::Yes);
    EXPECT_FALSE(add(professions, "101", "Kuaförlük", {{kVersion, "4"}}).saved);
    EXPECT_TRUE(add(professions, "101", "Kuaförlük", {{kVersion, "4"}}).saved);
}

TEST_F(DefinitionListTest, DeletingSaysWhereTheCodeIsUsed) {
    centre.addProfession("0101", "Kuaförlük", 4);
    centre.addProfession("0101", "Kuaförlük", 3);
    centre.addStudent("010100001", 1, "0101");
    centre.addStudent("010100002", 2, "0101");
    execute("INSERT INTO MeslekDersHavuzu (ID,MeslekKodu) VALUES (4,'0101')");
    DefinitionList professions = list("Meslekler");
    const auto rows = professions.rows();
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_TRUE(professions.uses(rows[0]).isEmpty()); // version 3: nobody follows it
    const QString used = QStringLiteral("“0101 - Kuaförlük (4. program)” tanımı kullanılıyor:\n\n"
                                        "2 öğrenci\n1 mesleğe ait ders\n\nSilinirse bu kayıtlar adını "
                                        "bulamaz. Yine de silinsin mi?");
    dialogs.expectYesNo(used, Answer::No).expectYesNo(used, Answer::Yes);
    EXPECT_FALSE(professions.remove(rows[1]));
    EXPECT_EQ(professions.rows().size(), 2u);
    EXPECT_TRUE(professions.remove(rows[1]));
    ASSERT_EQ(professions.rows().size(), 1u);
    EXPECT_EQ(professions.rows()[0].values.at(kVersion), "3");
}

TEST_F(DefinitionListTest, UsesAreFoundInTheSharedDatabasesAndByWords) {
    centre.databases.workplaces().sql().execute(
        "INSERT INTO isletme_Bilgisi (K_Adi,K_Semt_Kodu,K_MeslekOdasi) VALUES ('Öz Oto','01','Berberler')");
    centre.databases.coordinators().sql().execute(
        "INSERT INTO KoordinatorBilgisi (KO_Ogretmen_Adi,KO_ogretmen_semt_kodu) VALUES ('Ali','01')");
    DefinitionList districts = list("IsletmeSemt"), chambers = list("MeslekOdalari");
    ASSERT_TRUE(add(districts, "01", "Çarşı").saved);
    ASSERT_TRUE(add(chambers, "04", "Berberler").saved);
    EXPECT_EQ(districts.uses(rowOf(districts, "01")).join(';'), "1 işletme;1 koordinatör öğretmen");
    EXPECT_EQ(chambers.uses(rowOf(chambers, "04")).join(';'), "1 işletme");
    // a code that records carry is not changed without a word
    std::optional<StoredRow> row = rowOf(districts, "01");
    dialogs.expectYesNo(QStringLiteral("“01 - Çarşı” tanımının kodunu veya programını değiştiriyorsunuz.\n"
                                       "Şu kayıtlar eskisini taşımaya devam eder ve adını bulamaz:\n\n"
                                       "1 işletme\n1 koordinatör öğretmen\n\nYine de değiştirilsin mi?"),
                        Answer::No);
    EXPECT_EQ(districts.save(row, {{kCode, "09"}, {kName, "Çarşı"}}).field, kCode);
    EXPECT_EQ(rowOf(districts, "01").values.at(kName), "Çarşı");
}

TEST_F(DefinitionListTest, WordsTheProgramLooksUpStay) {
    DefinitionList states = list("DonemBilgileri");
    std::optional<StoredRow> row = rowOf(states, "13");
    EXPECT_EQ(states.save(row, {{kCode, "13"}, {kName, "MEZUNLAR"}}).field, kName);
    EXPECT_TRUE(states.save(row, {{kCode, "14"}, {kName, "MEZUN"}}).saved); // the code may change
    dialogs.expectMessage(QStringLiteral("Program “14 - MEZUN” tanımını adıyla arar; silinemez."));
    EXPECT_FALSE(states.remove(*row));
    EXPECT_EQ(codeOf(centre.level(), "Donem", "MEZUN"), "14");
}

TEST_F(DefinitionListTest, WithoutTheRightNothingIsWritten) {
    DefinitionList districts = list("IsletmeSemt");
    ASSERT_TRUE(add(districts, "01", "Çarşı").saved);
    grantAll(centre.databases.constants().database(), centre.session.user, {true, false});
    const QString denied =
        QStringLiteral("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.");
    dialogs.expectMessage(denied, "Uyarı").expectMessage(denied, "Uyarı").expectMessage(denied, "Uyarı");
    EXPECT_FALSE(add(districts, "02", "İstasyon").saved);
    std::optional<StoredRow> row = rowOf(districts, "01");
    EXPECT_FALSE(districts.save(row, {{kCode, "01"}, {kName, "Meydan"}}).saved);
    EXPECT_FALSE(districts.remove(*row));
    EXPECT_EQ(descriptions(centre.level(), "Semt Kodu").join(','), "Çarşı");
}

struct OtherStationTest : DefinitionListTest {
    const QString mine = QStringLiteral("Benim yazdıklarım kaydedilsin");
    const QString theirs = QStringLiteral("Onun değişikliği kalsın, yazdıklarım ekranda dursun");
    const QString clash =
        QStringLiteral("Bu kayıt, siz açtıktan sonra başka bir bilgisayarda değiştirildi:\n\n"
                       "Açıklama: “Çarşı” yerine “Meydan” (siz “Pazar” yazdınız)");
};

TEST_F(OtherStationTest, ChangedMeanwhile_ThePersonChooses) {
    DefinitionList districts = list("IsletmeSemt");
    ASSERT_TRUE(add(districts, "01", "Çarşı").saved);
    std::optional<StoredRow> row = rowOf(districts, "01");
    execute("UPDATE Parametrik_giris SET Ta_tanim_aciklama='Meydan' WHERE Ta_Tanim_Grup='Semt Kodu'");
    dialogs.expectChoice(clash, theirs, {mine, theirs});
    SaveOutcome outcome = districts.save(row, {{kCode, "01"}, {kName, "Pazar"}});
    EXPECT_FALSE(outcome.saved);
    EXPECT_TRUE(outcome.field.isEmpty());
    EXPECT_EQ(row->values.at(kName), "Meydan"); // what stands now; what was typed is still the caller's
    EXPECT_EQ(rowOf(districts, "01").values.at(kName), "Meydan");
    // saved again, there is nothing left to ask
    EXPECT_TRUE(districts.save(row, {{kCode, "01"}, {kName, "Pazar"}}).saved);
    EXPECT_EQ(rowOf(districts, "01").values.at(kName), "Pazar");
}

TEST_F(OtherStationTest, ChangedMeanwhile_MineWritesOnlyWhatIChanged) {
    DefinitionList chambers = list("MeslekOdalari");
    ASSERT_TRUE(add(chambers, "01", "Çarşı", {{"Ta_Tanim_Tescil_No", "1"}}).saved);
    std::optional<StoredRow> row = rowOf(chambers, "01");
    execute("UPDATE Parametrik_giris SET Ta_Tanim_Tescil_No='77' WHERE Ta_Tanim_Grup='MeslekOda'");
    dialogs.expectChoice(
        QStringLiteral("Bu kayıt, siz açtıktan sonra başka bir bilgisayarda değiştirildi:\n\n"
                       "Tescil no: “1” yerine “77”"),
        mine);
    EXPECT_TRUE(chambers.save(row, {{kCode, "01"}, {kName, "Pazar"}, {"Ta_Tanim_Tescil_No", "1"}}).saved);
    EXPECT_EQ(rowOf(chambers, "01").values.at("Ta_Tanim_Tescil_No"), "77");
    EXPECT_EQ(rowOf(chambers, "01").values.at(kName), "Pazar");
}

TEST_F(OtherStationTest, DeletedMeanwhile_OffersANewRow) {
    DefinitionList districts = list("IsletmeSemt");
    ASSERT_TRUE(add(districts, "01", "Çarşı").saved);
    std::optional<StoredRow> row = rowOf(districts, "01");
    const std::optional<StoredRow> before = row;
    execute("DELETE FROM Parametrik_giris WHERE Ta_Tanim_Grup='Semt Kodu'");
    const QString question =
        QStringLiteral("“01 - Çarşı” tanımı, siz açtıktan sonra başka bir bilgisayarda silindi "
                       "veya kodu değiştirildi.\n\nYazdıklarınız yeni bir tanım olarak kaydedilsin mi?");
    dialogs.expectYesNo(question, Answer::No).expectYesNo(question, Answer::Yes);
    EXPECT_FALSE(districts.save(row, {{kCode, "01"}, {kName, "Pazar"}}).saved);
    EXPECT_TRUE(districts.save(row, {{kCode, "01"}, {kName, "Pazar"}}).saved);
    EXPECT_EQ(rowOf(districts, "01").values.at(kName), "Pazar");
    // and a row deleted twice is deleted once
    execute("DELETE FROM Parametrik_giris WHERE Ta_Tanim_Grup='Semt Kodu'");
    dialogs.expectYesNo(QStringLiteral("“01 - Pazar” tanımı silinsin mi?"), Answer::Yes)
        .expectMessage(QStringLiteral("“01 - Pazar” tanımı başka bir bilgisayarda zaten silinmiş veya kodu "
                                      "değiştirilmiş; liste yenilendi."));
    EXPECT_TRUE(districts.remove(*row));
}

TEST_F(OtherStationTest, DoublesOfAnOldFileDoNotStopOtherChanges) {
    execute("INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama) VALUES "
            "('MeslekOda','01','Berberler')");
    execute("INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama) VALUES "
            "('MeslekOda','01','Berberler')");
    DefinitionList chambers = list("MeslekOdalari");
    std::optional<StoredRow> row = chambers.rows()[0];
    FieldTexts wanted = row->values;
    wanted["Ta_Tanim_Tescil_No"] = "12";
    EXPECT_TRUE(chambers.save(row, wanted).saved);
    EXPECT_EQ(chambers.rows()[1].values.at("Ta_Tanim_Tescil_No"), ""); // its double is untouched
}

} // namespace
