// A student's earlier workplaces on a real level database: his rows in their order, the time between dates,
// sending the current workplace there, and renaming a workplace in the students' records.
#include "records/earlier_workplaces.h"

#include "core/clock.h"
#include "core/users.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

const QString kPlace = "Ogr_isyerinin_adi";
const QString kStart = "Ogr_Ise_Giris_Tarihi";
const QString kEnd = "Ogr_Isden_Ayrilis_Tarihi";

struct EarlierWorkplacesTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    std::optional<EarlierWorkplaces> history;
    const HistoryOwner ayse{"010100001", "Ayşe", "Işık"};

    void SetUp() override {
        centre.databases.connect();
        centre.session.user = "müdür";
        auto& constants = centre.databases.constants().database();
        createUser(constants, centre.session.user, "1");
        grantAll(constants, centre.session.user, {true, true});
        history.emplace(centre.databases, dialogs, "Öğrenci Eski İşletme Bilgisi İşleme");
        centre.addStudent("010100001", 1, "0101");
    }
    StoredRow add(FieldTexts values) {
        std::optional<StoredRow> row;
        const SaveOutcome outcome = history->save(ayse, row, std::move(values));
        EXPECT_TRUE(outcome.saved) << outcome.reason.toStdString();
        return row.value();
    }
    void employ(const char* number, const QString& place, const char* start, const char* end) {
        centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_calistigi_isyerinin_adi = ?, "
                               "Ogr_calistigi_isyeri_adresi1 = 'Sanayi', "
                               "Ogr_calistigi_ise_giris_tarihi = ?, Ogr_calistigi_isden_ayrilis_tarihi = ?, "
                               "Ogr_Ayrilis_Nedeni = "
                               "'İstifa', Ogr_SSK_SonOdeme_Tarihi = '31.05.2008' WHERE Ogr_Numarasi = ?",
                               Parameters{place, start, end, number});
    }
    QString shown(const HistoryOwner& owner) {
        QStringList lines;
        for (const StoredRow& row : history->rows(owner))
            lines << row.values.at("Ogr_sira") + ":" + row.values.at(kPlace);
        return lines.join(' ');
    }
};

TEST_F(EarlierWorkplacesTest, TheTimeCountsBothDays) {
    const struct {
        const char *first, *last;
        TimeSpent time;
    } cases[] = {
        {"01.09.2008", "01.09.2008", {0, 0, 1}},  {"01.09.2008", "31.08.2009", {1, 0, 0}},
        {"15.01.2008", "14.03.2008", {0, 2, 0}},  {"31.01.2008", "29.02.2008", {0, 1, 1}},
        {"29.02.2008", "28.02.2009", {1, 0, 1}},  {"31.12.2007", "01.01.2008", {0, 0, 2}},
        {"10.05.2005", "20.07.2008", {3, 2, 11}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(timeSpent(*dateFromText(c.first), *dateFromText(c.last)), c.time) << c.first << c.last;
}

TEST_F(EarlierWorkplacesTest, RowsBelongToNumberNameAndSurnameAndKeepTheirOrder) {
    for (const char* statement :
         {"INSERT INTO Ogrenci_Isyerleri (Ogr_No,Ogr_Adi,Ogr_Soyadi,Ogr_sira,Ogr_isyerinin_adi) VALUES "
          "(' 010100001 ',' Ayşe','Işık ',10,'İkinci')",
          "INSERT INTO Ogrenci_Isyerleri (Ogr_No,Ogr_Adi,Ogr_Soyadi,Ogr_sira,Ogr_isyerinin_adi) VALUES "
          "('010100001','Ayşe','Işık',2,'Birinci')",
          "INSERT INTO Ogrenci_Isyerleri (Ogr_No,Ogr_Adi,Ogr_Soyadi,Ogr_sira,Ogr_isyerinin_adi) VALUES "
          "('010100001','Ali','Işık',1,'Başkasının')",
          "INSERT INTO Ogrenci_Isyerleri (Ogr_No,Ogr_Adi,Ogr_Soyadi,Ogr_sira,Ogr_isyerinin_adi) VALUES "
          "('0101000011','Ayşe','Işık',1,'Başka numara')"})
        centre.level().execute(statement);
    EXPECT_EQ(shown(ayse), "2:Birinci 10:İkinci");
    const StoredRow third = add({{kPlace, " Usta'nın Yeri "}});
    EXPECT_EQ(shown(ayse), "2:Birinci 10:İkinci 11:Usta'nın Yeri");
    EXPECT_TRUE(history->move(ayse, third, EarlierWorkplaces::Move::Up));
    EXPECT_EQ(shown(ayse), "1:Birinci 2:Usta'nın Yeri 3:İkinci");
    EXPECT_FALSE(history->move(ayse, history->rows(ayse)[0], EarlierWorkplaces::Move::Up));
    EXPECT_FALSE(history->move(ayse, history->rows(ayse)[2], EarlierWorkplaces::Move::Down));
    dialogs.expectYesNo("“Birinci” önceki işyeri kaydı silinsin mi?", Answer::Yes);
    EXPECT_TRUE(history->remove(history->rows(ayse)[0]));
    EXPECT_EQ(shown(ayse), "2:Usta'nın Yeri 3:İkinci");
    EXPECT_EQ(shown({"010100001", "Ali", "Işık"}), "1:Başkasının");
}

TEST_F(EarlierWorkplacesTest, EditedFieldsAreCheckedAndOldOnesStay) {
    const struct {
        FieldTexts values;
        QString field; // refused; empty: saved
    } cases[] = {
        {{{kPlace, " "}}, kPlace},
        {{{kPlace, QString(101, u'x')}}, kPlace},
        {{{kPlace, "Oto"}, {kStart, "31.02.2008"}}, kStart},
        {{{kPlace, "Oto"}, {"Ogr_SSK_SonOdeme_Tarihi", "yarın"}}, "Ogr_SSK_SonOdeme_Tarihi"},
        {{{kPlace, "Oto"}, {kStart, "02.01.2008"}, {kEnd, "01.01.2008"}}, kEnd},
        {{{kPlace, "Oto"}, {"Ogr_Isletme1_Ay", "-1"}}, "Ogr_Isletme1_Ay"},
        {{{kPlace, "Oto"}, {"Ogr_Isletme1_Gun", "3,5"}}, "Ogr_Isletme1_Gun"},
        {{{kPlace, "Oto"}, {kStart, "01.01.2008"}, {kEnd, "31.12.2008"}}, ""},
    };
    for (const auto& c : cases) {
        std::optional<StoredRow> row;
        const SaveOutcome outcome = history->save(ayse, row, c.values);
        EXPECT_EQ(outcome.saved, c.field.isEmpty()) << outcome.reason.toStdString();
        EXPECT_EQ(outcome.field, c.field);
    }
    std::optional<StoredRow> row = history->rows(ayse).at(0);
    EXPECT_EQ(row->values.at("Ogr_Isletme1_Yil") + row->values.at("Ogr_Isletme1_Gun"), "10"); // filled in
    centre.level().execute("UPDATE Ogrenci_Isyerleri SET Ogr_Ise_Giris_Tarihi = '1.9.8?'");
    row = history->rows(ayse).at(0);
    FieldTexts values = row->values;
    values["Ogr_AyrilisNedeni"] = "Nakil";
    EXPECT_TRUE(history->save(ayse, row, values).saved);
    EXPECT_EQ(history->rows(ayse).at(0).values.at(kStart), "1.9.8?");
}

TEST_F(EarlierWorkplacesTest, TheCurrentWorkplaceIsSentOnceAndStays) {
    add({{kPlace, "İlk"}});
    employ("010100001", "Öz'ün Kaporta", "01.09.2007", "30.06.2008");
    const auto sent = history->sendToEarlier("010100001");
    ASSERT_TRUE(sent);
    EXPECT_EQ(shown(ayse), "1:İlk 2:Öz'ün Kaporta");
    const FieldTexts values = history->rows(ayse).at(1).values;
    const QString fields[][2] = {{"Ogr_Isyeri_Adresi1", "Sanayi"},
                                 {kStart, "01.09.2007"},
                                 {kEnd, "30.06.2008"},
                                 {"Ogr_AyrilisNedeni", "İstifa"},
                                 {"Ogr_Isletme1_Yil", "0"},
                                 {"Ogr_Isletme1_Ay", "10"},
                                 {"Ogr_Isletme1_Gun", "0"},
                                 {"Ogr_SSK_SonOdeme_Tarihi", "31.05.2008"}};
    for (const auto& field : fields)
        EXPECT_EQ(values.at(field[0]), field[1]) << field[0].toStdString();
    EXPECT_EQ(
        toText(
            centre.level().query("SELECT Ogr_calistigi_isyerinin_adi FROM OgrenciBilgisi").at(0, size_t{0})),
        "Öz'ün Kaporta");

    dialogs.expectMessage("“Öz'ün Kaporta” işyeri, aynı işe giriş tarihiyle önceki işyerlerinde zaten var.");
    EXPECT_FALSE(history->sendToEarlier("010100001"));
    employ("010100001", "Öz'ün Kaporta", "01.09.2008", "");
    EXPECT_TRUE(history->sendToEarlier(" 010100001")); // there again, from another day
    employ("010100001", "  ", "", "");
    dialogs.expectMessage("Öğrencinin çalıştığı bir işyeri kayıtlı değil; gönderilecek bilgi yok.");
    EXPECT_FALSE(history->sendToEarlier("010100001"));
    for (const char* nobody : {"", "999900001"}) {
        dialogs.expectMessage("Seçili Öğrenci Bulunamadı!");
        EXPECT_FALSE(history->sendToEarlier(nobody));
    }
    EXPECT_EQ(shown(ayse), "1:İlk 2:Öz'ün Kaporta 3:Öz'ün Kaporta");
}

TEST_F(EarlierWorkplacesTest, ANameIsChangedInTheStudentsRecordsOfTheOpenLevel) {
    centre.addStudent("010100002", 2, "0101");
    centre.addStudent("010100003", 3, "0101");
    employ("010100001", "Öz Kaporta", "", "");
    employ("010100002", " Öz Kaporta ", "", "");
    employ("010100003", "Öz Kaporta.", "", "");
    add({{kPlace, "Öz Kaporta"}});
    const auto names = [&] {
        QStringList all;
        for (const auto& name : history->namesInUse())
            all << QString("%1:%2").arg(name.name).arg(name.students);
        return all.join(' ');
    };
    EXPECT_EQ(names(), "Öz Kaporta:2 Öz Kaporta.:1");
    const QString question =
        "Çalıştığı işyeri “Öz Kaporta” olan 2 öğrencinin işyeri adı “Usta'nın Yeri” olarak "
        "değiştirilecektir.\nOnaylıyor musunuz?";
    dialogs.expectYesNo(question, Answer::No).expectYesNo(question, Answer::Yes);
    EXPECT_FALSE(history->renameInStudents("Öz Kaporta", "Usta'nın Yeri"));
    EXPECT_EQ(history->renameInStudents(" Öz Kaporta", "Usta'nın Yeri "), 2u);
    EXPECT_EQ(names(), "Öz Kaporta.:1 Usta'nın Yeri:2");
    EXPECT_EQ(shown(ayse), "1:Öz Kaporta"); // the history stays
    dialogs.expectMessage("Eski ve yeni işyeri adını seçiniz.")
        .expectMessage("Eski ve yeni işyeri adı aynı.");
    EXPECT_FALSE(history->renameInStudents("", "Oto"));
    EXPECT_FALSE(history->renameInStudents("Oto", "Oto"));
}

TEST_F(EarlierWorkplacesTest, NothingIsWrittenWithoutTheRight) {
    const StoredRow row = add({{kPlace, "İlk"}});
    employ("010100001", "Oto", "", "");
    grantAll(centre.databases.constants().database(), centre.session.user, {true, false});
    for (int i = 0; i < 5; ++i)
        dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.",
                              "Uyarı");
    std::optional<StoredRow> changed = row;
    EXPECT_FALSE(history->save(ayse, changed, {{kPlace, "Son"}}).saved);
    EXPECT_FALSE(history->remove(row));
    EXPECT_FALSE(history->move(ayse, row, EarlierWorkplaces::Move::Up));
    EXPECT_FALSE(history->sendToEarlier("010100001"));
    EXPECT_FALSE(history->renameInStudents("Oto", "Son"));
    EXPECT_EQ(shown(ayse), "1:İlk");
}

TEST_F(EarlierWorkplacesTest, AnotherStationsDeletionIsAskedAbout) {
    std::optional<StoredRow> row = add({{kPlace, "İlk"}});
    centre.level().execute("DELETE FROM Ogrenci_Isyerleri");
    dialogs.expectYesNo(
        "Bu satır, siz açtıktan sonra başka bir bilgisayarda silindi.\n\nYazdıklarınız yeni bir "
        "satır olarak kaydedilsin mi?",
        Answer::Yes);
    EXPECT_TRUE(history->save(ayse, row, {{kPlace, "Yeni"}}).saved);
    EXPECT_EQ(shown(ayse), "1:Yeni");
}

} // namespace
