// What the registration forms do beside saving: delete, absences, photo, addresses, walking and finding, and
// what their lists offer.
#include "records/registration_centre.h"

#include "records/registration_absences.h"
#include "records/registration_addresses.h"
#include "records/registration_choices.h"
#include "records/registration_photo.h"
#include "records/related_rows.h"
#include "records/student_index.h"

using namespace orvan;
using orvan_test::kRepeating;
using orvan_test::RegistrationTest;
using orvan_test::Repeating;

namespace {

const QString kSure = "Silmek İstediğinize Emin misiniz?";

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

TEST_F(RegistrationTest, DeleteLeavesNoRowOfHisAndTouchesNobodyElse) {
    centre.addStudent(" 110100001", 1, "1101", "Ayşe ", "Işık");
    centre.addStudent("110100002", 2, "1101", "Ayşe", "Işık");
    addDependents("110100001 ", "Ayşe", " Işık");
    addDependents("110100002", "Ayşe", "Işık");
    for (const char* number : {"110100001", "110100002"})
        centre.level().execute("INSERT INTO OkulDevamsizlik (OgrNo) VALUES (?)", Parameters{number});
    centre.folder.createFolder("\\data\\fotograf");
    writeFile(centre.path("\\data\\fotograf\\110100001.jpg"), "x");

    const RegistrationForm form = formOf("110100001");
    setRight("0");
    dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz", "Uyarı");
    EXPECT_FALSE(rule.remove(form));
    setRight("1");
    dialogs.expectYesNo(kSure, Answer::No, "Öğrenci Silme: 110100001 Ayşe Işık");
    EXPECT_FALSE(rule.remove(form));
    EXPECT_EQ(count("OgrenciBilgisi"), 2);
    EXPECT_EQ(count("Notlar"), 2);
    dialogs.expectYesNo(kSure, Answer::Yes);
    EXPECT_TRUE(rule.remove(form));
    for (const Repeating& r : kRepeating)
        EXPECT_EQ(count(r.table, std::string("trim(") + r.number + ")='110100002'"), count(r.table))
            << r.table;
    EXPECT_EQ(count("Notlar"), 1);
    EXPECT_EQ(count("OgrenciBilgisi", "Ogr_Numarasi='110100002'"), count("OgrenciBilgisi"));
    EXPECT_EQ(count("OkulDevamsizlik"), 1) << "they would wait for the next one of that number";
    EXPECT_FALSE(QFile::exists(centre.path("\\data\\fotograf\\110100001.jpg")));

    dialogs.expectYesNo(kSure, Answer::Yes)
        .expectMessage(
            "110100001 Ayşe Işık bu adla artık kayıtlı değil: başka bir bilgisayarda silinmiş ya da "
            "adı değiştirilmiş. Hiçbir şey silinmedi.");
    EXPECT_FALSE(rule.remove(form));
}

struct AbsencesTest : RegistrationTest {
    RegistrationAbsences absences{centre.databases, dialogs, title};
    StudentRecord student;
    void SetUp() override {
        RegistrationTest::SetUp();
        centre.addStudent("110100001", 1, "1101");
        centre.addStudent("110100002", 2, "1101", "Ali", "Öz");
        centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Ayrilis_Nedeni='Devamsızlık', "
                               "Ogr_calistigi_isden_ayrilis_tarihi='01.06.2008'");
        student = *rule.records().byNumber("110100001");
    }
    void addAbsence(const char* number, int term) {
        centre.level().execute("INSERT INTO Devam (D_Ogr_Numarasi,D_Donem,D_Ozursuz) VALUES (?,?,4)",
                               Parameters{number, term});
    }
};

TEST_F(AbsencesTest, OfOneTerm) {
    dialogs.expectMessage("110100001 Ayşe Işık için kayıtlı devamsızlık yok.");
    EXPECT_FALSE(absences.removeTerm(student));
    addAbsence(" 110100001", 1);
    addAbsence("110100001", 2);
    addAbsence("110100001", 2);
    addAbsence("110100002", 2);
    const QString which = "Hangi dönemin devamsızlıkları silinsin?",
                  sure = "Öğrencinin devamsızlıkları silinsin mi?";
    dialogs.expectChoice(which, {}, {"1. dönem", "2. dönem"});
    EXPECT_FALSE(absences.removeTerm(student));
    dialogs.expectChoice(which, "2. dönem").expectYesNo(sure, Answer::No);
    EXPECT_FALSE(absences.removeTerm(student));
    EXPECT_EQ(count("Devam"), 4);
    dialogs.expectChoice(which, "2. dönem").expectYesNo(sure, Answer::Yes);
    EXPECT_TRUE(absences.removeTerm(student));
    EXPECT_EQ(count("Devam", "D_Donem=1"), 1);
    EXPECT_EQ(count("Devam", "D_Ogr_Numarasi='110100002'"), 1);
    EXPECT_EQ(count("Devam"), 2);
}

TEST_F(AbsencesTest, StartingAgainClearsTheTermAndTheLeaving) {
    const QString question =
        "Dikkat!!!\n110100001 kütük numaralı Ayşe Işık ait 3. dönem devamsızlıkları silinecektir.\n"
        "Devamsızlıktan kalan veya herhangi bir sebepten ayrılıpta tekrar işe ve okula başlayan "
        "öğrencilerin,\n"
        "'Dönem Tekrarı' ile kayıtlı devamsızlıkları ve Ayrılış Nedenleri temizlenir.\n"
        "İşleme devam etmek istiyor musunuz?";
    addAbsence("110100001", 3);
    addAbsence("110100002", 3);
    setRight("0");
    dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.");
    EXPECT_FALSE(absences.startAgain(student));
    setRight("1");
    dialogs.expectYesNo(question, Answer::No);
    EXPECT_FALSE(absences.startAgain(student));
    EXPECT_EQ(count("Devam"), 2);
    dialogs.expectYesNo(question, Answer::Yes).expectMessage("Silme işlemi başarıyla tamamlanmıştır.");
    EXPECT_TRUE(absences.startAgain(student));
    EXPECT_EQ(count("Devam"), 1);
    const char* left = "Ogr_Ayrilis_Nedeni='' AND Ogr_calistigi_isden_ayrilis_tarihi=''";
    EXPECT_EQ(count("OgrenciBilgisi", left), 1);
    EXPECT_EQ(stored("110100002", "Ogr_Ayrilis_Nedeni"), "Devamsızlık");
}

TEST_F(RegistrationTest, Photos) {
    RegistrationPhoto photo(centre.databases, dialogs, title, [](const QByteArray& bytes) {
        return bytes.startsWith("BM") ? "JPEG " + bytes : QByteArray();
    });
    centre.addStudent("110100001", 1, "1101");
    const StudentRecord student = *rule.records().byNumber("110100001");
    const QString good = centre.path("\\resim.bmp"), bad = centre.path("\\mektup.jpg");
    writeFile(good, "BM 1");
    writeFile(bad, "Sayın veli");
    const QString chooser = "Öğrenci fotoğrafı";
    dialogs.expectMessage("Fotoğraf yüklemek için önce öğrenciyi kaydediniz.");
    EXPECT_FALSE(photo.load(newForm().stored));
    setRight("0");
    dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.");
    EXPECT_FALSE(photo.load(student));
    setRight("1");
    dialogs.expectFile(chooser, {});
    EXPECT_FALSE(photo.load(student));
    EXPECT_EQ(photo.file(student), "");
    dialogs.expectFile(chooser, good);
    EXPECT_TRUE(photo.load(student));
    EXPECT_EQ(contents(centre.path("\\data\\fotograf\\110100001.jpg")), "JPEG BM 1");
    dialogs.expectFile(chooser, bad)
        .expectMessage(
            "“mektup.jpg” bir resim dosyası değil ya da bozuk. Bir .bmp ya da .jpg resmi seçiniz.");
    EXPECT_FALSE(photo.load(student));
    dialogs.expectFile(chooser, centre.path("\\yok.jpg")).expectMessage("“yok.jpg” dosyası okunamadı.");
    EXPECT_FALSE(photo.load(student));
    EXPECT_EQ(contents(photo.file(student)), "JPEG BM 1") << "the old photo stays";
    dialogs.expectYesNo("Öğrencinin fotoğrafı silinsin mi?", Answer::No)
        .expectYesNo("Öğrencinin fotoğrafı silinsin mi?", Answer::Yes);
    EXPECT_FALSE(photo.clear(student));
    EXPECT_TRUE(photo.clear(student));
    EXPECT_EQ(photo.file(student), "");
}

TEST_F(RegistrationTest, AddressesAreCopiedBothWays) {
    const FieldTexts before{{"Ogr_Adresi1", "Gül Sok. 5"},
                            {"Ogr_Adresi2", ""},
                            {"Ogr_Semt", "Kızılay"},
                            {"Ogr_ili", "ANKARA"},
                            {"Ogr_Veli_Adresi1", "Lale Cad."},
                            {"Ogr_Veli_Adresi2", "Kat 3"},
                            {"Ogr_Veli_semt", ""},
                            {"Ogr_Veli_il", "İZMİR"}};
    FieldTexts form = before;
    dialogs.expectYesNo(
        "Öğrenci Adres Bilgisi Veli Adres Bilgisine kopyalanacaktır.\nDevam Etmek İstiyor musunuz ?",
        Answer::No);
    EXPECT_FALSE(copyAddress(form, AddressCopy::StudentToGuardian, dialogs));
    EXPECT_EQ(form, before);
    dialogs.expectYesNo(
        "Öğrenci Adres Bilgisi Veli Adres Bilgisine kopyalanacaktır.\nDevam Etmek İstiyor musunuz ?",
        Answer::Yes);
    EXPECT_TRUE(copyAddress(form, AddressCopy::StudentToGuardian, dialogs));
    EXPECT_EQ(form["Ogr_Veli_Adresi1"], "Gül Sok. 5");
    EXPECT_EQ(form["Ogr_Veli_Adresi2"], "") << "an empty line too";
    EXPECT_EQ(form["Ogr_Veli_semt"], "Kızılay");
    EXPECT_EQ(form["Ogr_Veli_il"], "ANKARA");
    form = before;
    dialogs.expectYesNo(
        "Veli bilgisi Öğrenci Adres Bilgisine kopyalanacaktır.\nDevam Etmek İstiyor musunuz ?", Answer::Yes);
    EXPECT_TRUE(copyAddress(form, AddressCopy::GuardianToStudent, dialogs));
    EXPECT_EQ(form["Ogr_Adresi2"], "Kat 3");
    EXPECT_EQ(form["Ogr_ili"], "İZMİR");
}

// With the index and, as in a file of an old release, without it.
TEST_F(RegistrationTest, WalkingGoesByNumberAndMissesNobody) {
    centre.addStudent("120100001", 4, "1201");
    centre.addStudent("110100010", 3, "1101");
    centre.addStudent("110100002", 2, "1101");
    centre.addStudent("", 9, "1101"); // without a number
    const QStringList order{"110100002", "110100010", "120100001"};
    StudentRecords& records = rule.records();
    for (const bool indexed : {true, false}) {
        if (!indexed) centre.level().execute("DROP INDEX indNumara ON OgrenciBilgisi");
        QStringList forth, back;
        for (auto at = records.next({}); at; at = records.next(*at))
            forth << at->number();
        for (auto at = records.previous({}); at; at = records.previous(*at))
            back.prepend(at->number());
        EXPECT_EQ(forth, order);
        EXPECT_EQ(back, order);
        const StudentRecord fresh = newForm().stored; // stands where its number will
        EXPECT_EQ(records.previous(fresh)->number(), "110100010");
        EXPECT_EQ(records.next(fresh)->number(), "120100001");
    }
    EXPECT_EQ(records.byNumber(" 110100010 ")->text("Ogr_Kayit_No"), "3");
    EXPECT_EQ(records.byRegistrationNo(4)->number(), "120100001");
    EXPECT_FALSE(records.byRegistrationNo(77));
    EXPECT_FALSE(records.byNumber("  "));
    EXPECT_FALSE(records.byNumber("110100010000000000000"));
    EXPECT_FALSE(records.byIdentityNumber(""));
}

TEST_F(RegistrationTest, FindingWhileTyping) {
    const struct {
        const char *number, *name, *surname;
    } students[] = {{"110100001", "Işıl", "Çağlar"},
                    {"110100002", "İlker", "Işık"},
                    {"110100003", "Ayşe", "O'Hara"},
                    {"110100004", "Ali", "Yılmaz"},
                    {"110100012", "Can", "Öz"}};
    int registration = 100;
    for (const auto& s : students)
        centre.addStudent(s.number, ++registration, "1101", s.name, s.surname);
    centre.level().execute(
        "UPDATE OgrenciBilgisi SET Ogr_Mernis='10000000146' WHERE Ogr_Numarasi='110100004'");
    StudentIndex index;
    index.load(centre.databases.level().database());
    EXPECT_EQ(index.size(), 5u);
    struct Case {
        const char *typed, *found;
    };
    for (const Case& c :
         {Case{"ışı", "110100001 110100002"}, Case{"İL", "110100002"}, Case{"IL", "110100004 110100001"},
          Case{"ayşe o'h", "110100003"}, Case{"o'hara AYŞE", "110100003"}, Case{"10000000146", "110100004"},
          Case{"103", "110100003"}, Case{"  ", ""},
          Case{"1101000", "110100004 110100003 110100012 110100001 110100002"}, Case{"yok", ""}}) {
        QStringList found;
        for (const StudentKey* key : index.find(c.typed, 100))
            found << key->number;
        EXPECT_EQ(found.join(' ').toStdString(), c.found) << c.typed;
    }
    EXPECT_EQ(index.find("1101", 2).size(), 2u);
}

TEST_F(RegistrationTest, ChoicesAndTheWorkplaceOfTheRegister) {
    const auto texts = [&](const char* field) {
        QStringList all;
        for (const FormChoice& choice : choicesOf(centre.databases, field))
            all << choice.text;
        return all.join('|');
    };
    jet::SqlSession& workplaces = centre.databases.workplaces().sql();
    workplaces.execute(
        "INSERT INTO isletme_Bilgisi (K_Adi,K_isletme_Tipi,K_Adresi1,K_Adresi2,K_egitim_Sorumlusu,"
        "K_EgitimSorumlusu1_Cep,K_egitim_sorumlusu3,K_EgitimSorumlusu3_Cep) VALUES "
        "(' Öz''ün Atölyesi ','0','Sanayi 5','Ostim','Ali Usta','111','Can Usta','333')");
    workplaces.execute("INSERT INTO isletme_Bilgisi (K_Adi,K_isletme_Tipi) VALUES ('Kapanan','1')");
    centre.level().execute("INSERT INTO Sinif (SinifAdi) VALUES ('9-B')");
    centre.level().execute("INSERT INTO Sinif (SinifAdi) VALUES ('9-A')");
    EXPECT_EQ(texts("Ogr_calistigi_isyerinin_adi"), "Öz'ün Atölyesi") << "closed ones are not offered";
    EXPECT_EQ(texts("Ogr_Sinif"), "9-A|9-B");
    EXPECT_EQ(texts("Ogr_Cinsiyeti"), "Erkek|Kız");
    EXPECT_EQ(texts("Ogr_Nufus_KanGrubu"),
              "(boş)|A (Rh+)|A (Rh-)|B (Rh+)|B (Rh-)|AB(Rh+)|AB(Rh-)|0 (Rh+)|0 (Rh-)");
    EXPECT_EQ(texts("Ogr_Gittigi_Belge_Cinsi"), "Kalfalık Belgesi|Ustalık Belgesi|Ayrılma Belgesi|Öğrenim "
                                                "Belgesi|Denklik Belgesi|Nakil Belgesi|İşyeri Açma Belgesi");
    EXPECT_FALSE(texts("Ogr_Kayit_Durumu").contains("Denklik"));
    centre.session.equivalence = true;
    EXPECT_TRUE(texts("Ogr_Kayit_Durumu").endsWith("Denklik|DenklikKalfa|DenklikUsta"));
    const auto facts = workplaceFacts(centre.databases, "Öz'ün Atölyesi");
    ASSERT_TRUE(facts);
    EXPECT_EQ(facts->address2, "Ostim");
    ASSERT_EQ(facts->supervisors.size(), 2u);
    EXPECT_EQ(facts->supervisors[1].name, "Can Usta");
    EXPECT_EQ(facts->supervisors[1].mobile, "333");
    EXPECT_FALSE(workplaceFacts(centre.databases, "Yok"));
    centre.addProfession("1101", "Otomotiv Mekanikerliği", 3);
    QStringList professions;
    for (const FormChoice& choice : professionChoices(centre.databases))
        professions << choice.code + "=" + choice.text;
    EXPECT_EQ(professions.join('|'), "1201/4=Çelik İşleri (1201)|1101/4=Otomotiv Mekanikerliği (1101) - 4. "
                                     "müfredat|1101/3=Otomotiv Mekanikerliği (1101) - 3. müfredat");
}

TEST_F(RegistrationTest, RowsInOtherTablesAreHis) {
    centre.addStudent("110100001", 1, "1101");
    addDependents("110100001 ", "Ayşe", "Işık");
    addDependents("110100001", "Başka", "Öğrenci");
    centre.level().execute("UPDATE Notlar SET N_OgrDonem=2, N_DersID='MAT'");
    const StudentRecord student = *rule.records().byNumber("110100001");
    for (const RelatedList& list : relatedLists())
        EXPECT_EQ(relatedRows(centre.databases, list, student).size(), 1u) << list.title;
    EXPECT_EQ(relatedRows(centre.databases, relatedLists()[1], student)[0][0], QVariant(2));
    EXPECT_TRUE(relatedRows(centre.databases, relatedLists()[0], newForm().stored).empty());
}

TEST(Age, InWholeYears) {
    const QDate today(2008, 9, 5);
    struct Case {
        const char *birth, *age;
    };
    for (const Case& c :
         {Case{"05.09.1990", "18"}, Case{"06.09.1990", "17"}, Case{"29.02.1992", "16"},
          Case{"06.09.2008", ""}, Case{"05.09.2008", "0"}, Case{"31.02.1990", ""}, Case{"", ""}})
        EXPECT_EQ(ageOn(today, c.birth), c.age) << c.birth;
}

} // namespace
