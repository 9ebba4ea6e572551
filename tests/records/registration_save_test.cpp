// The save of the registration forms: its checks one after the other, what it writes, and what other stations
// do meanwhile.
#include "records/registration_centre.h"

#include "support/declining_dialogs.h"

#include <set>
#include <thread>

using namespace orvan;
using orvan_test::kRepeating;
using orvan_test::RegistrationTest;
using orvan_test::Repeating;
using orvan_test::ScriptedDialogs;
using Result = RegistrationResult;

namespace {

const QString kNoRight = "Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.";
const QString kRequired = "Öğrenci Numarası, Adı ve Soyadı boş girilemez. Lütfen ilgili yerleri doldurunuz.";
const QString kArticle16 =
    "16.madde ile kayıt olan öğrencilerde (İŞE GİRİŞ TARİHİ) doldurulması zorunlu alandır.";
const QString kNamesake = "Kayıt işlemine devam ederseniz aynı isimde fakat farklı meslekte kayıtlı kursiyer "
                          "bilgisi oluşacaktır.\nKayıt işlemine devam etmek istiyor musunuz ?";
const QString kArchive = "Dikkat! Değişiklik yaptığınız öğrenci normal arşivde değil. Dolayısıyla bu "
                         "değişiklik normal arşivde gözükmeyecektir.\nGözükmesi için öğrenciyi önce normal "
                         "arşive aktarmalısınız. Yine de devam etmek istiyor musunuz?";
const QString kTaken =
    "Bu kayıt ve/veya kütük numarası kayıt işleminden önce\nbaşka bir kullanıcı tarafından "
    "kullanılmış!\nBunların yerine;\nYeni Kayıt No : %1\nYeni Kütük No : %2\n"
    "yeni numaraları kullanmak ister misiniz?";
const QString kWorkDates = "İşe giriş tarihi olmadan işten çıkış tarihi girilemez.\n"
                           "Lütfen önce işe giriş tarihini doldurunuz.";
const QString kPayment = "İşten çıkış tarihi olmadan SSK en son ödeme tarihi girilemez.\n"
                         "Lütfen önce işten çıkış tarihini doldurunuz.";
const QString kPasswordTaken =
    "Bu şifre başka bir öğrenciye verilmiş durumda!\nLütfen değiştirerek tekrar deneyiniz.";
const QString kPasswordLength = "Lütfen öğrenci şifresini 4 uzunluğunda giriniz.";
const QString kOddIdentity = "%1 geçerli bir T.C. kimlik numarası değil: 11 rakam olmalı ve son iki rakamı "
                             "öncekilerle uyuşmalıdır.\nYine de bu numarayla kaydedilsin mi?";

// A form that fails every check is put right one check at a time: each save ends at the next one, and nothing
// is written before the last.
TEST_F(RegistrationTest, ChecksComeInTheirOrder) {
    centre.databases.close();
    centre.session.mode = DataSetMode::Leavers;
    centre.databases.connect();
    prepare();
    centre.addStudent("120100007", 7, "1201", " Ayşe ", "Işık ");
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Mernis='10000000146'");
    setRight("0");

    RegistrationForm form = newForm("", "Işık");
    const auto put = [&](const char* field, const char* text) { form.values[field] = text; };
    const auto refusedAt = [&](const char* field) {
        const Result result = rule.save(form);
        EXPECT_EQ(result.what, Result::Refused);
        EXPECT_EQ(result.field, QString(field));
        dialogs.expectNothingLeft();
        EXPECT_EQ(count("OgrenciBilgisi"), 1);
    };
    put("Ogr_calistigi_isden_ayrilis_tarihi", "01.09.2008");
    put("Ogr_Kanun_Maddesi", "16.madde");
    put("Ogr_calistigi_isyerinin_adi", "Çelik A.Ş.");
    put("Ogr_Mernis", "10000000146");
    put("Ogr_Numarasi", "120100007");
    put("Ogr_MeslekKod", "1201");

    dialogs.expectMessage(kWorkDates, "Uyarı");
    refusedAt("Ogr_calistigi_isden_ayrilis_tarihi");
    put("Ogr_calistigi_isden_ayrilis_tarihi", "");
    dialogs.expectMessage(kArticle16, "Dikkat");
    refusedAt("Ogr_calistigi_ise_giris_tarihi");
    put("Ogr_calistigi_ise_giris_tarihi", "01.08.2008");
    dialogs.expectMessage(kNoRight, "Uyarı");
    refusedAt("");
    setRight("1");
    dialogs.expectMessage(kRequired);
    refusedAt("Ogr_Adi");
    put("Ogr_Adi", "  Ayşe");
    put("Ogr_Numarasi", "110100001");
    put("Ogr_MeslekKod", "1101");
    dialogs.expectMessage("10000000146 Tc.Kimlik Numarası ile 120100007 numarasına Ayşe Işık adlı öğrenci "
                          "kayıtlı bulunmaktadır.");
    refusedAt("Ogr_Mernis");
    put("Ogr_Mernis", "10000000147");
    dialogs.expectYesNo(kOddIdentity.arg("10000000147"), Answer::No);
    refusedAt("Ogr_Mernis");
    put("Ogr_Numarasi", "120100007");
    dialogs.expectYesNo(kOddIdentity.arg("10000000147"), Answer::Yes)
        .expectMessage("120100007 numarasıyla zaten kayıtlı bulunmaktadır. ");
    refusedAt("Ogr_Numarasi");
    put("Ogr_Numarasi", "110100001");
    put("Ogr_Mernis", "");
    dialogs.expectYesNo(kNamesake, Answer::No);
    refusedAt("Ogr_Adi");
    dialogs.expectYesNo(kNamesake, Answer::Yes).expectYesNo(kArchive, Answer::No);
    refusedAt("");
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Kayit_No=8");
    dialogs.expectYesNo(kNamesake, Answer::Yes)
        .expectYesNo(kArchive, Answer::Yes)
        .expectYesNo(kTaken.arg("9", "110100001"), Answer::No);
    refusedAt("");
    EXPECT_TRUE(savedNumbers.empty());
    dialogs.expectYesNo(kNamesake, Answer::Yes)
        .expectYesNo(kArchive, Answer::Yes)
        .expectYesNo(kTaken.arg("9", "110100001"), Answer::Yes);
    EXPECT_EQ(rule.save(form).what, Result::Saved);
    EXPECT_EQ(savedNumbers, std::vector<QString>{"110100001"}) << "the last step";
    EXPECT_EQ(stored("110100001", "Ogr_Adi"), "Ayşe");
    EXPECT_EQ(stored("110100001", "Ogr_Kayit_No"), "9");
    EXPECT_EQ(form.stored.number(), "110100001");
}

TEST_F(RegistrationTest, NewRecordNeedsAProfession) {
    dialogs.expectMessage("Yeni kayıt yapmak için önce meslek seçimi yapmalısınız.", "Uyarı");
    EXPECT_FALSE(rule.startNew({}));
    struct Case {
        const char *code, *number;
    };
    for (const Case& c : {Case{"1101", "110100001"}, Case{"123", "012300001"}, Case{"12345", "123400001"}}) {
        const auto form = rule.startNew({c.code, 4, "Meslek"});
        EXPECT_EQ(form->text("Ogr_Numarasi").toStdString(), c.number);
    }
    // two codes with the same first four characters: both can register
    for (const char* code : {"12345", "12346"}) {
        RegistrationForm form = *rule.startNew({code, 4, "Meslek"});
        form.values["Ogr_Adi"] = "Ali";
        form.values["Ogr_Soyadi"] = code;
        saved(form);
    }
    EXPECT_EQ(count("OgrenciBilgisi", "Ogr_Numarasi IN ('123400001','123400002')"), 2);
}

TEST_F(RegistrationTest, EveryDeclaredFieldIsWrittenAndRead) {
    RegistrationForm form = newForm();
    for (const FieldDeclaration& field : rule.records().table().fields) {
        const QString name = fromUtf8(field.name);
        QString& text = form.values[name];
        if (!text.isEmpty() && text != "0") continue; // filled by startNew
        if (field.type == jet::Type::Boolean)
            text = "1";
        else if (field.type == jet::Type::Long)
            text = "7";
        else if (isDateField(name))
            text = "03.02.2008";
        else
            text = QString("Şı'ğ\"İ").left(field.width > 0 ? field.width : 6);
    }
    form.values["Ogr_Mernis"] = "10000000146";
    const FieldTexts wanted = saved(form).values;
    form = formOf("110100001");
    for (const auto& [name, text] : form.values)
        EXPECT_EQ(text, wanted.at(name)) << name.toStdString();
    for (auto& [name, text] : form.values) // and emptied again
        if (name != "Ogr_Adi" && name != "Ogr_Soyadi") text.clear();
    saved(form);
    for (const char* field :
         {"Ogr_calistigi_isden_ayrilis_tarihi", "Ogr_Ayrilis_Nedeni", "Ogr_Koordinator_Ogretmen"})
        EXPECT_EQ(
            centre.level().query(std::string("SELECT ") + field + " FROM OgrenciBilgisi").at(0, size_t{0}),
            jet::Value(""))
            << field << ": lists test for the empty text, not for null";
    EXPECT_EQ(stored("110100001", "Ogr_Numarasi"), "110100001") << "numbers are not changed by a save";
    EXPECT_EQ(stored("110100001", "Ogr_Kayit_No"), "1");
}

TEST_F(RegistrationTest, WorkDatesAndArticle16) {
    centre.level().execute(
        "INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama) VALUES "
        "('KanunMd.','03','16.madde')");
    struct Case {
        const char *article, *workplace, *begin, *end, *payment;
        QString refusal;
    };
    const Case cases[] = {
        {"16.madde", "Çelik A.Ş.", "", "", "", kArticle16},
        {"3308 S.K. 16.", "Çelik A.Ş.", "", "", "", kArticle16},
        {"03", "Çelik A.Ş.", "", "", "", kArticle16}, // the code of the article
        {"16.madde", "   ", "", "", "", ""},
        {"16.madde", "Çelik A.Ş.", "01.09.2008", "", "", ""},
        {"18.madde", "Çelik A.Ş.", "", "", "", ""},
        {"", "", "", "02.09.2008", "", kWorkDates},
        {"", "", "01.09.2008", "", "03.09.2008", kPayment},
        {"", "", "01.09.2008", "02.09.2008", "03.09.2008", ""},
    };
    int number = 0;
    for (const Case& c : cases) {
        RegistrationForm form = newForm("Ali", QString("Soyad%1").arg(++number).toUtf8().constData());
        form.values["Ogr_Kanun_Maddesi"] = c.article;
        form.values["Ogr_calistigi_isyerinin_adi"] = c.workplace;
        form.values["Ogr_calistigi_ise_giris_tarihi"] = c.begin;
        form.values["Ogr_calistigi_isden_ayrilis_tarihi"] = c.end;
        form.values["Ogr_SSK_SonOdeme_Tarihi"] = c.payment;
        if (!c.refusal.isEmpty()) dialogs.expectMessage(c.refusal);
        EXPECT_EQ(rule.save(form).what, c.refusal.isEmpty() ? Result::Saved : Result::Refused) << number;
        dialogs.expectNothingLeft();
    }
}

// A fault that an old record brings along does not keep other fields from being saved.
TEST_F(RegistrationTest, OldFaultsAreNobodysNewOnes) {
    centre.addStudent("110100001", 1, "1101");
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_SSK_SonOdeme_Tarihi='01.01.2008', Ogr_Sifre='ab', "
                           "Ogr_Mernis='123', Ogr_Dogum_Tarihi='31.02.1990'");
    RegistrationForm form = formOf("110100001");
    form.values["Ogr_Sinif"] = "10-A";
    saved(form);
    EXPECT_EQ(stored("110100001", "Ogr_Dogum_Tarihi"), "31.02.1990");
}

TEST_F(RegistrationTest, Passwords) {
    centre.addStudent("110100001", 1, "1101", "Ali", "Öz");
    centre.addStudent("110100002", 2, "1101");
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Sifre='k7m2' WHERE Ogr_Kayit_No=1");
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Sifre='ş9d4' WHERE Ogr_Kayit_No=2");
    struct Case {
        const char* password;
        QString refusal;
    };
    for (const Case& c : {Case{"abc", kPasswordLength}, Case{"abcde", kPasswordLength},
                          Case{"k7m2", kPasswordTaken}, Case{"ş9d4", ""}, Case{"", ""}, Case{"q'1w", ""}}) {
        RegistrationForm form = formOf("110100002");
        form.values["Ogr_Sifre"] = c.password;
        form.values["Ogr_Sinif"] = c.password; // something to save
        EXPECT_EQ(rule.fault(form, "Ogr_Sifre"), c.refusal);
        if (!c.refusal.isEmpty()) dialogs.expectMessage(c.refusal, "Uyarı");
        EXPECT_EQ(rule.save(form).what, c.refusal.isEmpty() ? Result::Saved : Result::Refused) << c.password;
        dialogs.expectNothingLeft();
    }
}

TEST_F(RegistrationTest, WrongValuesAreNamedAndStay) {
    struct Case {
        const char* field;
        QString text, message;
    };
    const Case cases[] = {
        {"Ogr_Kayit_Tarihi", "31.02.2010", "Kayıt tarihi bir tarih olmalı; “31.02.2010” tarih değil."},
        {"Ogr_calistigi_ise_giris_tarihi", "1 Eylül",
         "İşe giriş tarihi bir tarih olmalı; “1 Eylül” tarih değil."},
        {"Ogr_Sira", "on iki", "Sıra bir sayı olmalı; “on iki” sayı değil."},
        {"Ogr_Adi", QString(300, 'x'), "Adı en çok 30 karakter olabilir; yazılan 300 karakter."},
    };
    for (const Case& c : cases) {
        RegistrationForm form = newForm();
        form.values[c.field] = c.text;
        dialogs.expectMessage(c.message);
        EXPECT_EQ(rule.save(form).field, c.field);
        EXPECT_EQ(form.values[c.field], c.text);
        dialogs.expectNothingLeft();
    }
    EXPECT_EQ(count("OgrenciBilgisi"), 0);
}

TEST_F(RegistrationTest, NamesakesAreAskedAboutWhereASaveMakesThem) {
    centre.addStudent("120100001", 1, "1201", "  Ayşe", " Işık  ");
    centre.addStudent("110100001", 2, "1101", "Ayşe", "Işık");
    RegistrationForm form = formOf("110100001");
    form.values["Ogr_Sinif"] = "9-A";
    saved(form); // the pair was there before
    form = newForm("Ali", "Öz");
    saved(form);
    form = formOf("110100002");
    form.values["Ogr_Adi"] = "Ayşe ";
    form.values["Ogr_Soyadi"] = " Işık";
    dialogs.expectYesNo(kNamesake, Answer::Yes);
    saved(form);
    form = newForm("Veli", "Öz"); // a namesake in the same profession is no question
    saved(form);
    form = newForm("Veli", "Öz");
    saved(form);
}

TEST_F(RegistrationTest, IdentityNumbers) {
    centre.addStudent("120100001", 1, "1201", "", "");
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Mernis='10000000146'");
    RegistrationForm form = newForm();
    form.values["Ogr_Mernis"] = "10000000146";
    dialogs.expectMessage("10000000146 Tc.Kimlik Numarası ile 120100001 numarasına  kayıtlı bulunmaktadır.");
    EXPECT_EQ(rule.save(form).what, Result::Refused);
    form.values["Ogr_Mernis"] = "1000000014"; // short: no search, but a word about it
    dialogs.expectYesNo(kOddIdentity.arg("1000000014"), Answer::Yes);
    saved(form);
    form =
        formOf("110100001"); // stored as it is, it is not asked about again; nor is his own number a double
    form.values["Ogr_Sinif"] = "9-A";
    saved(form);
    form = formOf("110100001");
    form.values["Ogr_Mernis"] = "10000000078";
    form = saved(form);
    form.values["Ogr_Sinif"] = "9-B";
    saved(form);
}

TEST_F(RegistrationTest, NewNameGoesIntoEveryDependentTableAndNoOther) {
    centre.addStudent(" 110100001", 1, "1101", "Ayşe", "Işık");
    addDependents("110100001 ", " Ayşe", "Işık ");
    addDependents("110100001", "Başka", "Öğrenci"); // same number, another person
    addDependents("110100002", "Ayşe", "Işık");
    RegistrationForm form = formOf("110100001");
    form.values["Ogr_Adi"] = "Ayşe Nur";
    form.values["Ogr_Soyadi"] = "O'Çağlar";
    saved(form);
    for (const Repeating& r : kRepeating) {
        EXPECT_EQ(count(r.table, std::string(r.name) + "='Ayşe Nur' AND " + r.surname +
                                     "='O''Çağlar' AND trim(" + r.number + ")='110100001'"),
                  1)
            << r.table;
        EXPECT_EQ(count(r.table, std::string(r.name) + "='Başka'"), 1) << r.table;
        EXPECT_EQ(count(r.table, std::string(r.name) + "='Ayşe'"), 1) << r.table;
    }
}

// A file of an old release: the last of the tables cannot take the name. Then nobody has it.
TEST_F(RegistrationTest, FailingWriteLeavesEverythingAsItWas) {
    centre.addStudent("110100001", 1, "1101");
    addDependents("110100001", "Ayşe", "Işık");
    centre.level().execute("DROP TABLE NotOrtalama");
    centre.level().execute("CREATE TABLE NotOrtalama (OgrNo TEXT(15), OgrAd TEXT(4), OgrSoyAd TEXT(4))");
    centre.level().execute("INSERT INTO NotOrtalama VALUES ('110100001','Ayşe','Işık')");
    RegistrationForm form = formOf("110100001");
    form.values["Ogr_Adi"] = "Gülşen";
    EXPECT_THROW(rule.save(form), jet::Error);
    EXPECT_EQ(stored("110100001", "Ogr_Adi"), "Ayşe");
    EXPECT_EQ(count("Notlar", "N_Ogr_Adi='Ayşe'"), 1);
    EXPECT_EQ(form.text("Ogr_Adi"), "Gülşen") << "what was typed stays";
    EXPECT_TRUE(savedNumbers.empty());
}

const QStringList kChangeChoices{"Benim yazdıklarım kaydedilsin",
                                 "Onun kaydettiği ekrana gelsin, yazdıklarım silinsin",
                                 "Şimdi kaydedilmesin, yazdıklarım ekranda kalsın"};

TEST_F(RegistrationTest, AnotherStationHasChangedTheStudent) {
    centre.addStudent("110100001", 1, "1101");
    struct Case {
        std::optional<QString> choice;
        Result::What what;
        const char *className, *phone, *shownClass; // stored; on the form
    };
    const Case cases[] = {
        {kChangeChoices[0], Result::Saved, "10-A", "111", "10-A"},
        {kChangeChoices[1], Result::Replaced, "10-B", "111", "10-B"},
        {kChangeChoices[2], Result::Refused, "10-B", "111", "10-A"},
        {std::nullopt, Result::Refused, "10-B", "111", "10-A"},
    };
    for (const Case& c : cases) {
        centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Sinif='', Ogr_Telefon='', Ogr_ili=''");
        RegistrationForm form = formOf("110100001");
        form.values["Ogr_Sinif"] = "10-A";
        form.values["Ogr_ili"] = "ANKARA";
        centre.level().execute(
            "UPDATE OgrenciBilgisi SET Ogr_Sinif='10-B', Ogr_Telefon='111', Ogr_ili='ANKARA'");
        dialogs.expectChoice("110100001 Ayşe Işık kaydı, siz açtıktan sonra başka bir bilgisayarda "
                             "değiştirildi:\n\nSınıf: boş yerine “10-B” (siz “10-A” yazdınız)\n"
                             "İl: boş yerine “ANKARA”\nTelefon: boş yerine “111”",
                             c.choice, kChangeChoices);
        EXPECT_EQ(rule.save(form).what, c.what);
        EXPECT_EQ(stored("110100001", "Ogr_Sinif"), c.className);
        EXPECT_EQ(stored("110100001", "Ogr_Telefon"), c.phone) << "a field that was not touched here";
        EXPECT_EQ(form.text("Ogr_Sinif"), c.shownClass);
        dialogs.expectNothingLeft();
    }
}

// Their workplace and my article together are what article 16 is about.
TEST_F(RegistrationTest, MergedRecordIsCheckedAgain) {
    centre.addStudent("110100001", 1, "1101");
    RegistrationForm form = formOf("110100001");
    form.values["Ogr_Kanun_Maddesi"] = "16.madde";
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_calistigi_isyerinin_adi='Çelik A.Ş.'");
    dialogs
        .expectChoice("110100001 Ayşe Işık kaydı, siz açtıktan sonra başka bir bilgisayarda değiştirildi:\n\n"
                      "Çalıştığı işyeri: boş yerine “Çelik A.Ş.”",
                      kChangeChoices[0])
        .expectMessage(kArticle16, "Dikkat");
    EXPECT_EQ(rule.save(form).what, Result::Refused);
    EXPECT_EQ(form.text("Ogr_calistigi_isyerinin_adi"), "Çelik A.Ş.");
    EXPECT_EQ(stored("110100001", "Ogr_Kanun_Maddesi"), "");
}

TEST_F(RegistrationTest, AnotherStationHasRenumberedOrDeletedTheStudent) {
    centre.addStudent("110100001", 1, "1101");
    RegistrationForm form = formOf("110100001");
    form.values["Ogr_Sinif"] = "10-A";
    centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Numarasi='110100055'");
    dialogs.expectChoice("110100001 Ayşe Işık kaydı, siz açtıktan sonra başka bir bilgisayarda "
                         "değiştirildi:\n\nKütük No: “110100001” yerine “110100055”",
                         kChangeChoices[0]);
    EXPECT_EQ(rule.save(form).what, Result::Saved);
    EXPECT_EQ(form.text("Ogr_Numarasi"), "110100055") << "the other station's number stays";

    const QString gone = "110100055 Ayşe Işık kaydı, siz açtıktan sonra başka bir bilgisayarda silindi.";
    const QStringList choices{"Ekrandaki bilgilerle yeniden kaydedilsin", "Silinmiş kalsın, ekran boşalsın",
                              "Şimdi kaydedilmesin, yazdıklarım ekranda kalsın"};
    form.values["Ogr_Sinif"] = "11-A";
    centre.level().execute("DELETE FROM OgrenciBilgisi");
    centre.addStudent("110100099", 99, "1101", "Yeni", "Gelen"); // may lie in his place
    const RegistrationForm typed = form;
    dialogs.expectChoice(gone, choices[2], choices);
    EXPECT_EQ(rule.save(form).what, Result::Refused);
    EXPECT_EQ(form.values, typed.values);
    dialogs.expectChoice(gone, choices[1], choices);
    EXPECT_EQ(rule.save(form).what, Result::Dropped);
    EXPECT_TRUE(form.values.empty());
    form = typed;
    dialogs.expectChoice(gone, choices[0], choices);
    EXPECT_EQ(rule.save(form).what, Result::Saved);
    EXPECT_EQ(stored("110100055", "Ogr_Sinif"), "11-A");
    EXPECT_EQ(stored("110100099", "Ogr_Adi"), "Yeni");
}

TEST_F(RegistrationTest, NumbersTakenMeanwhileAreOfferedAnew) {
    RegistrationForm mine = newForm();
    centre.addStudent("110100001", 1, "1101", "Öbür", "İstasyon");
    dialogs.expectYesNo(kTaken.arg("2", "110100002"), Answer::No)
        .expectYesNo(kTaken.arg("2", "110100002"), Answer::Yes);
    EXPECT_EQ(rule.save(mine).what, Result::Refused);
    EXPECT_EQ(mine.text("Ogr_Numarasi"), "110100001") << "declined: the form stays as it was";
    EXPECT_EQ(rule.save(mine).what, Result::Saved);
    EXPECT_EQ(mine.text("Ogr_Numarasi"), "110100002");
    EXPECT_EQ(mine.text("Ogr_Kayit_No"), "2");
}

struct YesMan final : orvan_test::DecliningDialogs {
    Answer askYesNo(const QString&, const QString&, Answer) override { return Answer::Yes; }
};

// Two stations register in one profession at the same moment, several times: nobody is lost, no number twice.
TEST_F(RegistrationTest, TwoStationsAtTheSameMoment) {
    constexpr int kEach = 8;
    const auto station = [&](int which) {
        Session session = centre.session;
        DatabaseSet set(centre.folder, session, allTables());
        set.connect();
        YesMan yes;
        Registration other(set, yes, clock, title);
        for (int i = 0; i < kEach; ++i) {
            RegistrationForm form = *other.startNew(mechanic);
            form.values["Ogr_Adi"] = QString("Öğrenci %1").arg(i);
            form.values["Ogr_Soyadi"] = QString("İstasyon %1").arg(which);
            EXPECT_EQ(other.save(form).what, Result::Saved);
        }
    };
    std::thread first(station, 1), second(station, 2);
    first.join();
    second.join();
    const auto rows = centre.level().query("SELECT Ogr_Numarasi, Ogr_Kayit_No FROM OgrenciBilgisi");
    std::set<QString> numbers, registrations;
    for (size_t i = 0; i < rows.rowCount(); ++i) {
        numbers.insert(toText(rows.at(i, 0)));
        registrations.insert(toText(rows.at(i, 1)));
    }
    EXPECT_EQ(rows.rowCount(), size_t{2 * kEach});
    EXPECT_EQ(numbers.size(), size_t{2 * kEach});
    EXPECT_EQ(registrations.size(), size_t{2 * kEach});
    EXPECT_EQ(*numbers.rbegin(), QString("1101%1").arg(2 * kEach, 5, 10, QChar('0'))) << "none left out";
}

} // namespace
