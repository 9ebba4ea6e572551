// The register of workplaces on real files: what is refused, what a new name or address does in both levels,
// what stands when a file fails in between, counts, banks, and what another station does meanwhile.
#include "records/workplaces.h"

#include "core/users.h"
#include "support/declining_dialogs.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>
#include <QFileInfo>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

constexpr auto kSaveQuestion = "Bilgileriniz kayıt edilsin mi?";
constexpr auto kSaved = "Kayıt İşlemi Tamamlanmıştır.";
constexpr auto kMaster = "K_egitim_Sorumlusu";
constexpr const char* kLevelFiles[] = {"\\Data\\KALFA.MDB", "\\Data\\USTA.MDB"};

struct WorkplacesTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    std::optional<Workplaces> places;

    void SetUp() override {
        connect(Level::Kalfa);
        centre.session.user = "müdür";
        auto& constants = centre.databases.constants().database();
        createUser(constants, centre.session.user, "1");
        grantAll(constants, centre.session.user, {true, true});
        places.emplace(centre.databases, dialogs, "İşletme Bilgisi");
    }
    void connect(Level level) {
        centre.session.level = level;
        centre.databases.connect();
    }
    jet::SqlSession& registerOf() { return centre.databases.workplaces().sql(); }

    StoredRow add(FieldTexts values) {
        std::optional<StoredRow> row;
        dialogs.expectYesNo(kSaveQuestion, Answer::Yes).expectMessage(kSaved);
        EXPECT_TRUE(places->save(row, std::move(values)).saved);
        dialogs.expectNothingLeft();
        return row.value();
    }
    void student(const char* number, const QString& workplace, const char* sex = "E",
                 const QString& master = "") {
        centre.addStudent(number, QString(number).right(3).toInt(), "0101");
        centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_calistigi_isyerinin_adi = ?, "
                               "Ogr_Cinsiyeti = ?, Ogr_Usta_Ogreticisi = ? WHERE Ogr_Numarasi = ?",
                               Parameters{workplace, sex, master, number});
    }
    void history(const char* number, const QString& workplace) {
        centre.level().execute("INSERT INTO Ogrenci_Isyerleri (Ogr_No, Ogr_Adi, Ogr_Soyadi, Ogr_sira, "
                               "Ogr_isyerinin_adi) VALUES (?, 'Ayşe', 'Işık', 1, ?)",
                               Parameters{number, workplace});
    }
    static QString joined(jet::SqlSession& sql, const char* query) {
        QStringList lines;
        const auto rows = sql.query(query);
        for (size_t i = 0; i < rows.rowCount(); ++i) {
            QStringList cells;
            for (size_t c = 0; c < rows.columns().size(); ++c)
                cells << toText(rows.at(i, c));
            lines << cells.join('/');
        }
        return lines.join("; ");
    }
    // Workplaces in the students' records and histories of one level file, by number.
    QString namesIn(const char* file) {
        const auto text = [](jet::SqlSession& sql) {
            return joined(sql, "SELECT Ogr_calistigi_isyerinin_adi, Ogr_calistigi_isyeri_adresi1 "
                               "FROM OgrenciBilgisi ORDER BY Ogr_Numarasi") +
                   " | " + joined(sql, "SELECT Ogr_isyerinin_adi, Ogr_Isyeri_Adresi1 FROM Ogrenci_Isyerleri");
        };
        const QString path = centre.path(file);
        if (QFileInfo(path) == QFileInfo(centre.databases.levelFile())) return text(centre.level());
        return text(Connection(path, {}).sql());
    }
    static QString renameQuestion(const QString& old) {
        return "Çalıştığı işyeri ''" + old +
               "'' olan öğrencilere ait işyeri bilgileri değiştirilecektir.\nOnaylıyor musunuz?";
    }
    // In each level a student and a history row of "Öz Kaporta", and a student whose workplace is spelled
    // otherwise.
    StoredRow fillBothLevels() {
        for (const Level level : {Level::Usta, Level::Kalfa}) {
            connect(level);
            student("010100001", "  Öz Kaporta");
            student("010100002", "Öz Kaporta.");
            history("010100001", "Öz Kaporta ");
        }
        return add({{"K_Adi", "Öz Kaporta"}, {"K_Adresi1", "Sanayi 1"}});
    }
};

TEST_F(WorkplacesTest, ANewWorkplaceIsTrimmedFilledInAndListedByName) {
    centre.level().execute("INSERT INTO Parametrik_giris (Ta_Tanim_Grup, Ta_Tanim_Kod, Ta_tanim_aciklama) "
                           "VALUES ('Semt Kodu', '07', 'Şirinevler')");
    student("010100001", "Usta'nın Yeri", "K", "Ali Çelik");
    add({{"K_Adi", " Usta'nın Yeri "},
         {"K_Semt_Kodu", "07"},
         {kMaster, "Ali Çelik"},
         {"K_Dusunceler", "iki\r\nsatır"}});
    add({{"K_Adi", "Çınar Oto"}});
    add({{"K_Adi", "Işık Elektrik"}});
    registerOf().execute("INSERT INTO isletme_Bilgisi (K_Adi, K_isletme_Tipi) VALUES ('Gizli', '1')");
    QStringList names;
    for (const StoredRow& row : places->rows())
        names << row.values.at("K_Adi");
    EXPECT_EQ(names.join(','), "Çınar Oto,Işık Elektrik,Usta'nın Yeri");
    EXPECT_EQ(joined(registerOf(),
                     "SELECT K_Semt_Adi, K_isletme_Tipi, K_Kiz_Ogrenci_sayisi, K_Erkek_Ogrenci_Sayisi, "
                     "K_Toplam_Ogrenci_Sayisi, K_Dusunceler FROM isletme_Bilgisi "
                     "WHERE K_Adi = 'Usta''nın Yeri'"),
              "Şirinevler/0/1/0/1/iki\r\nsatır");
}

TEST_F(WorkplacesTest, BadInputNamesItsFieldAndWritesNothing) {
    add({{"K_Adi", "Öz Kaporta"}});
    registerOf().execute("INSERT INTO isletme_Bilgisi (K_Adi, K_isletme_Tipi) VALUES ('Gizli', '1')");
    const QString birth = "K_isveren_vekil_dogum_tarihi", mobile = "K_EgitimSorumlusu3_Cep";
    const struct {
        FieldTexts values;
        QString field, words;
    } cases[] = {
        {{{"K_Adi", "öz kaporta "}}, "K_Adi", "zaten kayıtlı"},
        {{{"K_Adi", "GİZLİ"}}, "K_Adi", "zaten kayıtlı"}, // not in the list, but there
        {{{"K_Adi", QString(101, u'x')}}, "K_Adi", "en çok 100"},
        {{{"K_Adi", "Yeni"}, {birth, "31.02.1970"}}, birth, "tarih"},
        {{{"K_Adi", "Yeni"}, {"K_Personel_Sayisi", "çok"}}, "K_Personel_Sayisi", "sayı"},
        {{{"K_Adi", "Yeni"}, {"K_Personel_Sayisi", "-1"}}, "K_Personel_Sayisi", "küçük"},
        {{{"K_Adi", "Yeni"}, {mobile, QString(21, u'5')}}, mobile, "en çok 20"},
    };
    std::optional<StoredRow> row;
    for (const auto& c : cases) {
        const SaveOutcome outcome = places->save(row, c.values);
        EXPECT_FALSE(outcome.saved) << c.words.toStdString();
        EXPECT_EQ(outcome.field, c.field);
        EXPECT_TRUE(outcome.reason.contains(c.words)) << outcome.reason.toStdString();
    }
    dialogs.expectMessage("Ad Sahası Boş Geçilemez!");
    EXPECT_EQ(places->save(row, {{"K_Adi", "  "}}).field, "K_Adi");
    dialogs.expectYesNo(kSaveQuestion, Answer::No);
    EXPECT_FALSE(places->save(row, {{"K_Adi", "Yeni"}}).saved);
    grantAll(centre.databases.constants().database(), centre.session.user, {true, false});
    for (int i = 0; i < 3; ++i)
        dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.",
                              "Uyarı");
    EXPECT_FALSE(places->save(row, {{"K_Adi", "Yeni"}}).saved);
    EXPECT_FALSE(places->addBank({"Halk", ""}).saved);
    EXPECT_FALSE(places->remove(places->rows()[0]));
    EXPECT_EQ(joined(registerOf(), "SELECT COUNT(*) FROM isletme_Bilgisi"), "2");
}

TEST_F(WorkplacesTest, WhatLooksWrongIsWarnedOfAndStillSaved) {
    const struct {
        FieldTexts values;
        const char* words; // nullptr: nothing looks wrong
    } cases[] = {
        {{{"K_Telefon", "0 (312) 123-45-67"}, {"K_Cep_Telefonu", "+90 532 123 45 67"}}, nullptr},
        {{{"K_Telefon", "123 45 67"}}, "7 rakam"},
        {{{"K_FAX", "yok"}}, "benzemiyor"},
        {{{"K_Cep_Telefonu", "0312 123 45 67"}}, "5 ile başlar"},
        {{{"K_EgitimSorumlusu7_Cep", "0312 123 45 67"}}, "7. eğitim sorumlusu"},
        {{{"K_IBANNo", "TR33 0006 1005 1978 6457 8413 26"}}, nullptr},
        {{{"K_IBANNo", "TR33 0006 1005 1978 6457 8413 62"}}, "denetim"}, // two digits changed places
        {{{"K_IBANNo", "TR33 0006"}}, "24 rakam"},
        {{{"K_IBANNo", "DE330006"}}, "TR ile"},
        {{{"K_EgitimSorumlusu1_TC", "10000000146"}}, nullptr},
        {{{"K_EgitimSorumlusu1_TC", "10000000147"}}, "kimlik"},
    };
    int number = 0;
    for (const auto& c : cases) {
        const QString all = places->warnings(c.values).join('\n');
        EXPECT_EQ(all.isEmpty(), c.words == nullptr) << all.toStdString();
        if (c.words) {
            EXPECT_TRUE(all.contains(c.words)) << all.toStdString();
        }
        FieldTexts values = c.values;
        values["K_Adi"] = QString::number(++number);
        add(values);
    }
}

TEST_F(WorkplacesTest, ANewNameOrAddressGoesIntoBothLevelsWhicheverIsOpen) {
    std::optional<StoredRow> row = fillBothLevels();
    const struct {
        Level open;
        const char *name, *address;
    } steps[] = {
        {Level::Kalfa, "Öz'ün \"Kaporta\"", "Sanayi 2"},
        {Level::Usta, "Öz'ün \"Kaporta\"", "Sanayi 3"},         // the address alone
        {Level::UstaOgretici, "ÖZ'ÜN \"KAPORTA\"", "Sanayi 3"}, // other letters of the same name
    };
    for (const auto& step : steps) {
        connect(step.open);
        dialogs.expectYesNo(kSaveQuestion, Answer::Yes)
            .expectYesNo(renameQuestion(row->values.at("K_Adi")), Answer::Yes)
            .expectMessage(kSaved);
        ASSERT_TRUE(places->save(row, {{"K_Adi", step.name}, {"K_Adresi1", step.address}}).saved);
        const QString place = QString("%1/%2").arg(step.name, step.address);
        for (const char* file : kLevelFiles)
            EXPECT_EQ(namesIn(file), place + "; Öz Kaporta./ | " + place) << file;
    }
    EXPECT_EQ(joined(registerOf(), "SELECT K_Adi, K_Adresi1 FROM isletme_Bilgisi"),
              "ÖZ'ÜN \"KAPORTA\"/Sanayi 3");
    // what no student has, and what is no name or address, is changed without a question
    dialogs.expectYesNo(kSaveQuestion, Answer::Yes).expectMessage(kSaved);
    EXPECT_TRUE(places->save(row, {{"K_Telefon", "0312 1234567"}}).saved);
}

TEST_F(WorkplacesTest, ADeclinedOrRefusedRenameChangesNothingAnywhere) {
    std::optional<StoredRow> row = fillBothLevels();
    add({{"K_Adi", "Dolu"}});
    const QString before = namesIn(kLevelFiles[0]) + namesIn(kLevelFiles[1]);
    dialogs.expectYesNo(kSaveQuestion, Answer::Yes).expectYesNo(renameQuestion("Öz Kaporta"), Answer::No);
    EXPECT_EQ(places->save(row, {{"K_Adi", "Yeni Ad"}, {"K_Telefon", "1"}}).field, "K_Adi");
    EXPECT_TRUE(places->save(row, {{"K_Adi", "DOLU"}}).reason.contains("zaten kayıtlı"));
    EXPECT_EQ(namesIn(kLevelFiles[0]) + namesIn(kLevelFiles[1]), before);
    EXPECT_EQ(joined(registerOf(), "SELECT K_Adi, K_Telefon FROM isletme_Bilgisi ORDER BY K_Adi"),
              "Dolu/; Öz Kaporta/");
}

// Says yes to everything and keeps what is told.
struct AgreeingDialogs : orvan_test::DecliningDialogs {
    QStringList told;
    void message(const QString& text, const QString&, Icon) override { told << text; }
    Answer askYesNo(const QString&, const QString&, Answer) override { return Answer::Yes; }
};

TEST_F(WorkplacesTest, AMissingLevelFileKeepsEverythingUnchangedAndIsReported) {
    std::optional<StoredRow> row = fillBothLevels();
    const QString file = centre.path("\\Data\\USTA.MDB"), before = namesIn(kLevelFiles[0]);
    ASSERT_TRUE(QFile::rename(file, file + ".x"));
    AgreeingDialogs agreeing;
    Workplaces register_(centre.databases, agreeing, "İşletme Bilgisi");
    EXPECT_FALSE(register_.save(row, {{"K_Adi", "Yeni Ad"}}).saved);
    ASSERT_EQ(agreeing.told.size(), 1);
    EXPECT_TRUE(agreeing.told[0].contains("Hiçbir kayıt değiştirilmedi")) << agreeing.told[0].toStdString();
    EXPECT_EQ(namesIn(kLevelFiles[0]), before);
    EXPECT_EQ(joined(registerOf(), "SELECT K_Adi FROM isletme_Bilgisi"), "Öz Kaporta");
}

// The first file is committed, the second one is kept by a station that does not end its reading (the commit
// gives up after its ten seconds): what stands is told, the register keeps the old name, and saving again
// finishes.
TEST_F(WorkplacesTest, AFailureBetweenTheFilesIsReportedAndSavingAgainFinishes) {
    std::optional<StoredRow> row = fillBothLevels();
    connect(Level::Usta);
    const QString before = namesIn(kLevelFiles[1]);
    AgreeingDialogs agreeing;
    Workplaces register_(centre.databases, agreeing, "İşletme Bilgisi");
    {
        Connection station(centre.path(kLevelFiles[1]), {});
        const jet::ReadScope reading(station.database().pages());
        EXPECT_FALSE(register_.save(row, {{"K_Adi", "Yeni Ad"}}).saved);
    }
    ASSERT_EQ(agreeing.told.size(), 1);
    for (const char* words : {"KALFA.MDB: 1 öğrencide ve 1 önceki işyeri satırında değiştirildi.",
                              "USTA.MDB: hiçbir kayıt değiştirilmedi.", "kendi kaydı: değiştirilmedi"})
        EXPECT_TRUE(agreeing.told[0].contains(words)) << agreeing.told[0].toStdString();
    EXPECT_TRUE(namesIn(kLevelFiles[0]).startsWith("Yeni Ad/"));
    EXPECT_EQ(namesIn(kLevelFiles[1]), before);
    EXPECT_EQ(joined(registerOf(), "SELECT K_Adi FROM isletme_Bilgisi"), "Öz Kaporta");

    EXPECT_TRUE(register_.save(row, {{"K_Adi", "Yeni Ad"}}).saved);
    EXPECT_EQ(namesIn(kLevelFiles[1]), namesIn(kLevelFiles[0]));
    EXPECT_EQ(joined(registerOf(), "SELECT K_Adi FROM isletme_Bilgisi"), "Yeni Ad");
}

TEST_F(WorkplacesTest, AnotherStationsChangeIsShownAndAskedAbout) {
    const StoredRow read = add({{"K_Adi", "Öz Kaporta"}, {"K_Telefon", "1"}});
    registerOf().execute("UPDATE isletme_Bilgisi SET K_Telefon = '2', K_Toplam_Ogrenci_Sayisi = 9");
    const QString question = "Bu kayıt, siz açtıktan sonra başka bir bilgisayarda değiştirildi:\n\n"
                             "Telefon: “1” yerine “2” (siz “3” yazdınız)";
    const struct {
        const char *answer, *stored;
        bool saved;
    } cases[] = {{"Onun değişikliği kalsın, yazdıklarım ekranda dursun", "2/", false},
                 {"Benim yazdıklarım kaydedilsin", "3/4", true}};
    for (const auto& c : cases) {
        std::optional<StoredRow> row = read;
        dialogs.expectYesNo(kSaveQuestion, Answer::Yes).expectChoice(question, c.answer);
        if (c.saved) dialogs.expectMessage(kSaved);
        EXPECT_EQ(places->save(row, {{"K_Telefon", "3"}, {"K_FAX", "4"}}).saved, c.saved);
        EXPECT_EQ(joined(registerOf(), "SELECT K_Telefon, K_FAX FROM isletme_Bilgisi"), c.stored);
    }
    registerOf().execute("DELETE FROM isletme_Bilgisi");
    std::optional<StoredRow> row = read;
    dialogs.expectYesNo(kSaveQuestion, Answer::Yes)
        .expectYesNo("“Öz Kaporta” işletmesi, siz açtıktan sonra başka bir bilgisayarda silindi veya adı "
                     "değiştirildi.\n\nYazdıklarınız yeni bir işletme olarak kaydedilsin mi?",
                     Answer::Yes)
        .expectMessage(kSaved);
    EXPECT_TRUE(places->save(row, {{"K_FAX", "5"}}).saved);
    EXPECT_EQ(joined(registerOf(), "SELECT K_Adi, K_Telefon, K_FAX FROM isletme_Bilgisi"), "Öz Kaporta/1/5");
}

TEST_F(WorkplacesTest, CountsKnowOnlyTheTwoSexesAndTheExactSupervisorAndWorkplace) {
    const struct {
        const char *workplace, *sex, *master;
    } students[] = {{"Oto", "E", "Ali Can"},   {" Oto ", "E", "Ali Can"}, {"Oto", "K", "Ali Can"},
                    {"Oto", "", "Ali Can"},    {"Oto", "X", "Ali Can"},   {"Oto", "1", "Veli Er"},
                    {"Oto 2", "E", "Ali Can"}, {"Oto", "E", ""},          {"Oto", "K", "Veli Er"}};
    int number = 0;
    for (const auto& s : students)
        student(qPrintable(QString("0101%1").arg(++number, 5, 10, QChar(u'0'))), s.workplace, s.sex,
                s.master);
    const auto counted = places->counts("Oto", {"Ali Can", "Veli Er", "", "Kimse", "", "", "Ali Can"});
    const SupervisorCount none, ali{1, 2};
    EXPECT_EQ(counted[0], ali);
    EXPECT_EQ(counted[1], (SupervisorCount{1, 0}));
    EXPECT_EQ(counted[2], none); // nobody is the supervisor of those without one
    EXPECT_EQ(counted[3], none);
    EXPECT_EQ(counted[6], ali);
    EXPECT_EQ(counted[0].total(), 3);
}

TEST_F(WorkplacesTest, BanksAreShownWithTheirBranchAndAddedOnce) {
    EXPECT_TRUE(places->addBank({" Ziraat ", " Ulus "}).saved);
    EXPECT_TRUE(places->addBank({"Halk'ın", ""}).saved);
    EXPECT_EQ(places->addBank({"ZİRAAT", "Kızılay"}).field, "BankaAdi");
    EXPECT_EQ(places->addBank({" ", "Kızılay"}).field, "BankaAdi");
    EXPECT_EQ(places->addBank({"Vakıf", QString(61, u'x')}).field, "sube");
    QStringList shown;
    for (const Bank& bank : places->banks())
        shown << bank.shown();
    EXPECT_EQ(shown.join(','), "Halk'ın,Ziraat / Ulus");
}

TEST_F(WorkplacesTest, FieldsOfProductionAreThoseOfTheChamber) {
    add({{"K_Adi", "1"}, {"K_MeslekOdasi", "Berberler'in Odası"}, {"K_uretim_alani", "Kuaför"}});
    add({{"K_Adi", "2"}, {"K_MeslekOdasi", "Berberler'in Odası"}, {"K_uretim_alani", "Berber"}});
    add({{"K_Adi", "3"}, {"K_MeslekOdasi", "Berberler'in Odası"}, {"K_uretim_alani", "Kuaför"}});
    add({{"K_Adi", "4"}, {"K_MeslekOdasi", "Berberler'in Odası"}});
    add({{"K_Adi", "5"}, {"K_MeslekOdasi", "Oto"}, {"K_uretim_alani", "Boya"}});
    EXPECT_EQ(places->productionFields("Berberler'in Odası").join(','), "Berber,Kuaför");
}

TEST_F(WorkplacesTest, DeletingAsksAndLeavesTheStudents) {
    const StoredRow row = fillBothLevels();
    const QString question = "Öz Kaporta İşletmesinin Bilgileri Silinsin mi?",
                  before = namesIn(kLevelFiles[0]);
    dialogs.expectYesNo(question, Answer::No);
    EXPECT_FALSE(places->remove(row));
    dialogs.expectYesNo(question, Answer::Yes);
    EXPECT_TRUE(places->remove(row));
    EXPECT_TRUE(places->rows().empty());
    EXPECT_EQ(namesIn(kLevelFiles[0]), before);
    dialogs.expectYesNo("Öğretmen Bilgileri Silinmek İsteniyor.", Answer::No);
    EXPECT_FALSE(places->confirmsSupervisorRemoval());
}

} // namespace
