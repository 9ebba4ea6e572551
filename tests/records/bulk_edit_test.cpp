// Bulk edits: who is chosen, which values are refused, what another station's work does to them, and that a
// stop leaves what was said. Every command is run on real students.
#include "records/bulk_edit.h"

#include "core/clock.h"
#include "records/identity_number.h"
#include "support/declining_dialogs.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <QSet>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

// Says yes to the one question of a bulk edit and keeps its text; `before` runs while the question stands.
class Agreeing final : public orvan_test::DecliningDialogs {
  public:
    Answer askYesNo(const QString& text, const QString&, Answer) override {
        question = text;
        if (before) before();
        return Answer::Yes;
    }
    std::unique_ptr<Progress> beginProgress(const QString& title, int total) override {
        ScriptedDialogs steps;
        if (stopAfter >= 0) steps.cancelProgressAfter(stopAfter);
        return steps.beginProgress(title, total);
    }
    QString question;
    std::function<void()> before;
    int stopAfter = -1;
};

struct BulkEditTest : testing::Test {
    TestCentre centre;
    Agreeing dialogs;
    FixedClock clock{QDate(2008, 9, 15)};

    void SetUp() override {
        centre.databases.connect();
        centre.session.user = "ali";
        for (const BulkCommand& command : bulkCommands())
            centre.constants().execute("INSERT INTO ProgramHaklari (KullaniciAdi,ProgramAdi,GirisHakki,"
                                       "YazmaHakki) VALUES ('ali',?,'1','1')",
                                       Parameters{command.key});
        centre.addProfession("1101", "Otomotiv Mekanikerliği");
        centre.addProfession("1101", "Otomotiv Mekanikerliği (eski)", 3);
        centre.addProfession("1201", "Çelik İşleri");
        centre.addStudent("110100001", 1, "1101", "Ayşe", "Işık");
        centre.addStudent("110100002", 2, "1101", "Ali", "O'Hara");
        centre.addStudent("110100003", 3, "1101", "Çağrı", "Öz");
        centre.addStudent("120100001", 4, "1201", "Şule", "İnci");
        for (const char* name : {"1-A", "1-B", "Oto'cular"})
            centre.level().execute("INSERT INTO Sinif (SinifAdi) VALUES (?)", Parameters{name});
        set("110100001", "Ogr_Sinif", "1-A");
        set("110100002", "Ogr_Sinif", "Oto'cular");
        set("110100003", "Ogr_Seviye", "2");
    }
    void set(const char* number, const std::string& field, const QString& value) {
        ASSERT_EQ(centre.level().execute("UPDATE OgrenciBilgisi SET " + field + " = ? WHERE Ogr_Numarasi = ?",
                                         Parameters{value, number}),
                  1u);
    }
    QString get(const char* number, const std::string& field) {
        const auto rows = centre.level().query(
            "SELECT " + field + " FROM OgrenciBilgisi WHERE Ogr_Numarasi = ?", Parameters{number});
        return rows.empty() ? QStringLiteral("-") : toText(rows.at(0, size_t{0}));
    }
    // The title of a command under test is its key: so is the stored right.
    BulkEdit edit(const char* key) {
        return {bulkCommand(QString::fromUtf8(key)), QString::fromUtf8(key), centre.databases, dialogs,
                clock};
    }
    static QStringList numbers(const std::vector<StoredRow>& students) {
        QStringList list;
        for (const StoredRow& student : students)
            list << student.values.at("Ogr_Numarasi");
        return list;
    }
    // One value for all students.
    std::vector<BulkWish> forAll(BulkEdit& rule, const char* field, const QString& value) {
        std::vector<BulkWish> wishes;
        for (const StoredRow& student : rule.students({}))
            wishes.push_back({student, {{field, value}}});
        return wishes;
    }
    static QString refusalOf(const std::vector<BulkLine>& lines, const char* number) {
        for (const BulkLine& line : lines)
            if (line.number == number) return line.refusal;
        return QStringLiteral("(yok)");
    }
};

TEST_F(BulkEditTest, StudentsAreChosenByProfessionVersionStageAndClass) {
    centre.level().execute("UPDATE OgrenciBilgisi SET DersID = 3 WHERE Ogr_Numarasi = '110100003'");
    BulkEdit rule = edit("TopluSinifDegistirme");
    const struct {
        BulkSelection selection;
        QStringList wanted;
    } cases[] = {
        {{}, {"110100001", "110100002", "110100003", "120100001"}},
        {{"1101", 4, {}, {}}, {"110100001", "110100002"}},
        {{"1101", 3, {}, {}}, {"110100003"}},
        {{"1101", 0, {}, {}}, {"110100001", "110100002", "110100003"}},
        {{{}, 0, "2", {}}, {"110100003"}},
        {{{}, 0, {}, "Oto'cular"}, {"110100002"}},
        {{"1201", 4, "1", "1-A"}, {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(numbers(rule.students(c.selection)), c.wanted)
            << c.selection.profession.toStdString() << c.selection.version;
    EXPECT_EQ(rule.stages(), (QStringList{"1", "2"}));
    EXPECT_EQ(rule.classes(), (QStringList{"1-A", "Oto'cular"}));
    ASSERT_EQ(rule.professions().size(), 3u); // one row a version
    EXPECT_EQ(rule.professions()[0].name, "Çelik İşleri");
}

TEST_F(BulkEditTest, WritesWhatDiffersAndSaysSo) {
    BulkEdit rule = edit("TopluSinifDegistirme");
    auto wishes = forAll(rule, "Ogr_Sinif", "Oto'cular");
    const auto lines = rule.preview(wishes);
    ASSERT_EQ(lines.size(), 3u); // one is in that class already
    EXPECT_EQ(lines[0].before, "1-A");
    EXPECT_EQ(lines[0].after, "Oto'cular");
    const auto outcome = rule.run(wishes);
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->changed, 3u);
    EXPECT_EQ(outcome->skipped, 0u);
    EXPECT_TRUE(
        dialogs.question.startsWith("3 öğrencinin “Sınıf” bilgisi “Oto'cular” olarak değiştirilecektir."))
        << dialogs.question.toStdString();
    EXPECT_TRUE(dialogs.question.contains("110100001 Ayşe Işık"));
    EXPECT_FALSE(dialogs.question.contains("O'Hara"));
    for (const char* number : {"110100001", "110100002", "110100003", "120100001"})
        EXPECT_EQ(get(number, "Ogr_Sinif"), "Oto'cular") << number;
    EXPECT_EQ(get("110100001", "Ogr_Seviye"), "1"); // nothing else is touched
}

TEST_F(BulkEditTest, WrongValuesAreRefusedWithTheReason) {
    set("110100001", "Ogr_calistigi_ise_giris_tarihi", "10.09.2008");
    set("110100003", "Ogr_SSK_SonOdeme_Tarihi", "01.09.2008");
    set("110100003", "Ogr_calistigi_isden_ayrilis_tarihi", "01.09.2008");
    set("120100001", "Ogr_calistigi_isyerinin_adi", "Işık Oto");
    set("120100001", "Ogr_Dogum_Tarihi", "05.05.1992");
    const QString noStart = "İşe giriş tarihi olmadan işten çıkış tarihi girilemez.";
    const struct {
        const char *command, *field, *value, *number;
        QString refusal; // empty: taken
    } cases[] = {
        {"TopluSinifDegistirme", "Ogr_Sinif", "9-Z", "110100001",
         "“9-Z” seçilebilecek değerler arasında yok."},
        {"TopluAyrilisTarihiIsleme", "Ogr_calistigi_isden_ayrilis_tarihi", "31.02.2008", "110100001",
         "“31.02.2008” bir tarih değil; gg.aa.yyyy olarak yazınız."},
        {"TopluAyrilisTarihiIsleme", "Ogr_calistigi_isden_ayrilis_tarihi", "12.09.2008", "110100001", ""},
        {"TopluAyrilisTarihiIsleme", "Ogr_calistigi_isden_ayrilis_tarihi", "12.09.2008", "110100002",
         noStart},
        {"TopluAyrilisTarihiIsleme", "Ogr_calistigi_isden_ayrilis_tarihi", "09.09.2008", "110100001",
         "İşten çıkış tarihi, işe giriş tarihinden (10.09.2008) önce olamaz."},
        {"TopluAyrilisTarihiIsleme", "Ogr_calistigi_isden_ayrilis_tarihi", "", "110100003",
         "İşten çıkış tarihi olmadan SSK en son ödeme tarihi girilemez."},
        {"TopluSigortaTarihiIsleme", "Ogr_SSK_SonOdeme_Tarihi", "12.09.2008", "110100001",
         "İşten çıkış tarihi olmadan SSK en son ödeme tarihi girilemez."},
        {"TopluSigortaTarihiIsleme", "Ogr_Sigorta_Giris_Tarihi", "05.05.1992", "120100001",
         "Sigorta giriş tarihi, doğum tarihinden (05.05.1992) sonra olmalı."},
        {"TopluDogumTarihiIsleme", "Ogr_Dogum_Tarihi", "16.09.2008", "110100001",
         "Doğum tarihi bugünden sonra olamaz."},
        {"TopluTcKimlikIsleme", "Ogr_Mernis", "1234567890", "110100001", "T.C. kimlik no 11 rakam olmalı."},
        {"TopluTcKimlikIsleme", "Ogr_Mernis", "1234567890A", "110100001", "T.C. kimlik no 11 rakam olmalı."},
        {"TopluTcKimlikIsleme", "Ogr_Mernis", "12345678901", "110100001", ""}, // check digits only warn
        {"TopluSSKNoIsleme", "Ogr_SSK_No", "123456789012345678901", "110100001",
         "Sigorta no en çok 20 karakter olabilir; yazılan 21 karakter."},
        {"TopluBilgiDuzenleme", "Ogr_Kanun_Maddesi", "16.madde", "120100001",
         "16.madde ile kayıt olan öğrencilerde (İŞE GİRİŞ TARİHİ) doldurulması zorunlu alandır."},
        {"TopluBilgiDuzenleme", "Ogr_Kanun_Maddesi", "16.madde", "110100002", ""}, // no workplace
        {"TopluDonemIsleme", "Ogr_Seviye", "+1", "110100003", ""},
    };
    for (const auto& c : cases) {
        BulkEdit rule = edit(c.command);
        auto wishes = forAll(rule, c.field, c.value);
        std::erase_if(wishes,
                      [&](const BulkWish& w) { return w.student.values.at("Ogr_Numarasi") != c.number; });
        const auto lines = rule.preview(wishes);
        ASSERT_EQ(lines.size(), 1u) << c.command << ' ' << c.value;
        EXPECT_EQ(lines[0].refusal, c.refusal) << c.command << ' ' << c.value;
    }
    BulkEdit identity = edit("TopluTcKimlikIsleme");
    auto wishes = forAll(identity, "Ogr_Mernis", "12345678901");
    wishes.resize(1);
    EXPECT_EQ(identity.preview(wishes)[0].warning,
              "Denetim rakamları tutmuyor; numarayı kimlikten kontrol ediniz.");
}

TEST_F(BulkEditTest, TheNextStageIsEachStudentsOwn) {
    set("110100001", "Ogr_Seviye", "4.DÖNEM");
    set("110100002", "Ogr_Seviye", "4"); // a bare number counts years
    set("120100001", "Ogr_Seviye", "BİTİRME");
    BulkEdit rule = edit("TopluDonemIsleme");
    const auto outcome = rule.run(forAll(rule, "Ogr_Seviye", "+1"));
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->changed, 2u);
    EXPECT_EQ(outcome->skipped, 2u);
    EXPECT_TRUE(dialogs.question.contains("2 öğrenci ön izlemede yazan nedenle atlanacaktır."));
    EXPECT_EQ(get("110100001", "Ogr_Seviye"), "5.DÖNEM");
    EXPECT_EQ(get("110100002", "Ogr_Seviye"), "4");
    EXPECT_EQ(get("110100003", "Ogr_Seviye"), "3");
    EXPECT_EQ(get("120100001", "Ogr_Seviye"), "BİTİRME");
}

TEST_F(BulkEditTest, IdentityNumbersStayUniqueAndMayBeExchanged) {
    const QString a = completeIdentityNumber("100000001"), b = completeIdentityNumber("100000002"),
                  c = completeIdentityNumber("100000003");
    const auto reset = [&] {
        set("110100001", "Ogr_Mernis", a);
        set("110100002", "Ogr_Mernis", b);
        set("110100003", "Ogr_Mernis", "");
        set("120100001", "Ogr_Mernis", c);
    };
    const struct {
        const char* what;
        QStringList wanted; // of the four students; "" = not touched
        QStringList after;
    } cases[] = {
        {"exchange", {b, a, "", ""}, {b, a, "", c}},
        {"held by one who is not chosen", {"", "", c, ""}, {a, b, "", c}},
        {"the same twice", {"", "", c.chopped(1) + "0", c.chopped(1) + "0"}, {a, b, "", c}},
        // 1 takes 2's number; 2 wants 4's, which 4 keeps: 2 keeps his own, so 1 may not have it
        {"a refusal that brings another", {b, c, "", ""}, {a, b, "", c}},
    };
    const char* const numbers[] = {"110100001", "110100002", "110100003", "120100001"};
    for (const auto& kase : cases) {
        SCOPED_TRACE(kase.what);
        reset();
        BulkEdit rule = edit("TopluTcKimlikIsleme");
        std::vector<BulkWish> wishes;
        const auto students = rule.students({});
        for (int i = 0; i < 4; ++i)
            if (!kase.wanted[i].isEmpty())
                wishes.push_back({students[static_cast<size_t>(i)], {{"Ogr_Mernis", kase.wanted[i]}}});
        const auto lines = rule.preview(wishes);
        if (studentsToChange(lines) > 0) rule.run(wishes);
        for (int i = 0; i < 4; ++i)
            EXPECT_EQ(get(numbers[i], "Ogr_Mernis"), kase.after[i]) << numbers[i];
    }
    reset();
    BulkEdit rule = edit("TopluTcKimlikIsleme");
    EXPECT_EQ(rule.preview({{rule.students({})[0], {{"Ogr_Mernis", c}}}})[0].refusal,
              c + " T.C. kimlik no ile 120100001 numarasına Şule İnci adlı öğrenci kayıtlı bulunmaktadır.");
}

TEST_F(BulkEditTest, WhomAnotherStationTouchedIsSkippedAndNamed) {
    const auto station = jet::Database::open(filePath(centre.databases.levelFile()));
    jet::SqlSession other(*station);
    dialogs.before = [&] {
        other.execute("UPDATE OgrenciBilgisi SET Ogr_Sinif = 'Oto''cular' WHERE Ogr_Numarasi = '110100001'");
        other.execute("DELETE FROM OgrenciBilgisi WHERE Ogr_Numarasi = '110100002'");
        other.execute("UPDATE OgrenciBilgisi SET Ogr_Telefon = '555' WHERE Ogr_Numarasi = '110100003'");
        other.execute("UPDATE OgrenciBilgisi SET Ogr_Soyadi = 'Yeni' WHERE Ogr_Numarasi = '120100001'");
    };
    BulkEdit rule = edit("TopluSinifDegistirme");
    const auto outcome = rule.run(forAll(rule, "Ogr_Sinif", "1-B"));
    ASSERT_TRUE(outcome);
    EXPECT_EQ(outcome->changed, 1u);
    EXPECT_EQ(outcome->skipped, 3u);
    EXPECT_EQ(refusalOf(outcome->lines, "110100001"),
              "Bu arada başka bir bilgisayarda “Oto'cular” olarak değiştirilmiş.");
    for (const char* gone : {"110100002", "120100001"})
        EXPECT_EQ(refusalOf(outcome->lines, gone), "Kayıt bu arada silinmiş ya da numarası, adı değişmiş.");
    EXPECT_EQ(get("110100001", "Ogr_Sinif"), "Oto'cular");
    EXPECT_EQ(get("110100003", "Ogr_Sinif"), "1-B"); // another field's change is no reason
    EXPECT_EQ(get("110100003", "Ogr_Telefon"), "555");
    EXPECT_EQ(get("120100001", "Ogr_Sinif"), "");
}

TEST_F(BulkEditTest, AStopKeepsWhatWasWrittenAndNamesTheRest) {
    dialogs.stopAfter = 2;
    BulkEdit rule = edit("TopluSinifDegistirme");
    const auto outcome = rule.run(forAll(rule, "Ogr_Sinif", "1-B"));
    ASSERT_TRUE(outcome);
    EXPECT_TRUE(outcome->stopped);
    EXPECT_EQ(outcome->changed, 2u);
    EXPECT_EQ(outcome->skipped, 2u);
    for (const BulkLine& line : outcome->lines) {
        const bool written = get(line.number.toUtf8().constData(), "Ogr_Sinif") == "1-B";
        EXPECT_EQ(line.written, written) << line.number.toStdString();
        EXPECT_EQ(line.refusal, written ? QString() : QString("Durduruldu; değiştirilmedi."));
    }
}

TEST_F(BulkEditTest, WithoutRightOrConsentNothingIsWritten) {
    const auto write = [&](Dialogs& said) {
        BulkEdit rule(bulkCommand("TopluSinifDegistirme"), "TopluSinifDegistirme", centre.databases, said,
                      clock);
        EXPECT_FALSE(rule.run(forAll(rule, "Ogr_Sinif", "1-B")));
        EXPECT_EQ(get("110100001", "Ogr_Sinif"), "1-A");
    };
    orvan_test::DecliningDialogs no;
    write(no);
    centre.constants().execute("UPDATE ProgramHaklari SET YazmaHakki = '0'");
    ScriptedDialogs refused;
    refused.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.", "Uyarı");
    write(refused);
}

TEST_F(BulkEditTest, NothingToChangeIsSaidWithoutAQuestion) {
    ScriptedDialogs said;
    said.expectMessage("Değiştirilecek öğrenci yok.");
    BulkEdit rule(bulkCommand("TopluSinifDegistirme"), "TopluSinifDegistirme", centre.databases, said, clock);
    auto wishes = forAll(rule, "Ogr_Sinif", "1-A");
    wishes.resize(1);
    EXPECT_FALSE(rule.run(wishes));
}

TEST_F(BulkEditTest, EmptiedFieldsAreTextsWhereListsLookForTheEmptyText) {
    set("110100001", "Ogr_calistigi_ise_giris_tarihi", "10.09.2008");
    set("110100001", "Ogr_calistigi_isden_ayrilis_tarihi", "12.09.2008");
    BulkEdit rule = edit("TopluAyrilisTarihiIsleme");
    auto wishes = forAll(rule, "Ogr_calistigi_isden_ayrilis_tarihi", "");
    ASSERT_TRUE(rule.run(wishes));
    EXPECT_TRUE(dialogs.question.contains("bilgisi boşaltılacaktır"));
    const auto rows = centre.level().query("SELECT Ogr_Numarasi FROM OgrenciBilgisi WHERE "
                                           "Ogr_calistigi_isden_ayrilis_tarihi = ''");
    EXPECT_EQ(rows.rowCount(), 4u);
}

TEST_F(BulkEditTest, EveryDeclaredFieldTakesOneOfItsValuesInOneRun) {
    centre.level().execute(
        "INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama) VALUES "
        "('Semt Kodu','01','Çarşı')");
    centre.level().execute(
        "INSERT INTO Parametrik_giris (Ta_Tanim_Grup,Ta_Tanim_Kod,Ta_tanim_aciklama) VALUES "
        "('Pr.Eğitim','01','Okul Atölyesi')");
    set("110100001", "Ogr_calistigi_ise_giris_tarihi", "10.09.2008");
    set("110100001", "Ogr_calistigi_isden_ayrilis_tarihi", "11.09.2008");
    QSet<QString> windows;
    for (const BulkCommand& command : bulkCommands()) {
        windows << command.window;
        BulkEdit rule = edit(command.key);
        for (const BulkField& field : command.fields) {
            SCOPED_TRACE(std::string(command.key) + " " + field.name);
            const auto choices = rule.choices(field);
            EXPECT_EQ(choices.empty(), field.editor != BulkEditor::Choice);
            EXPECT_FALSE(rule.label(field).isEmpty());
            const QString value =
                !choices.empty() ? choices.back().code
                : field.editor == BulkEditor::Date
                    ? QStringLiteral("12.09.%1").arg(QByteArray(field.name).contains("Dogum") ? 1990 : 2008)
                : field.editor == BulkEditor::YesNo ? QStringLiteral("1")
                : field.unique                      ? completeIdentityNumber("123456789")
                                                    : QStringLiteral("2");
            if (rule.students({})[0].values.at(field.name) == value) // by a command before
                centre.level().execute(std::string("UPDATE OgrenciBilgisi SET ") + field.name + " = ''");
            const StoredRow student = rule.students({})[0];
            const auto outcome = rule.run({{student, {{field.name, value}}}});
            ASSERT_TRUE(outcome);
            EXPECT_EQ(outcome->changed, 1u) << outcome->lines[0].refusal.toStdString();
            EXPECT_EQ(rule.students({})[0].values.at(field.name), value);
        }
    }
    EXPECT_EQ(windows.size(), static_cast<qsizetype>(bulkCommands().size()));
}

} // namespace
