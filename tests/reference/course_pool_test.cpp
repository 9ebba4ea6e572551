// The course pool: kinds, order, what may be saved and deleted, and the questions word for word.
#include "reference/course_pool.h"

#include "core/users.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <gtest/gtest.h>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

const QString kTitle = "Ders Havuzu";

struct CoursePoolTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    void SetUp() override {
        centre.databases.connect();
        createUser(centre.databases.constants().database(), "müdür", "1");
        grantAll(centre.databases.constants().database(), "müdür", {true, true});
        createUser(centre.databases.constants().database(), "memur", "1");
        grantAll(centre.databases.constants().database(), "memur", {true, false});
        centre.session.user = "müdür";
    }
    CoursePool pool() { return {centre.databases, dialogs, kTitle}; }
    static FieldTexts course(const QString& code, const QString& name, const QString& kind = "M",
                             const QString& version = "4") {
        return {{"DersKodu", code}, {"DersAdi", name}, {"DersTuru", kind}, {"ID", version}};
    }
    SaveOutcome add(const FieldTexts& values) {
        std::optional<StoredRow> row;
        return pool().save(row, values);
    }
    QString names() {
        QStringList all;
        for (const StoredRow& row : pool().rows())
            all << row.values.at("DersAdi") + row.values.at("ID");
        return all.join('|');
    }
    void addToCurriculum(const char* code, int version) {
        centre.level().execute(
            "INSERT INTO MeslekDersHavuzu (ID,MeslekKodu,MeslekDersKodu) VALUES (?,'1101',?)",
            Parameters{version, code});
    }
};

TEST_F(CoursePoolTest, LooksUpKindAndPracticeInTheNewestVersion) {
    EXPECT_TRUE(add(course("TEK", "TEKNOLOJİ", "K", "3")).saved);
    FieldTexts newer = course("TEK", "TEKNOLOJİ", "M", "4");
    newer["DersUygulama"] = "1";
    EXPECT_TRUE(add(newer).saved);
    EXPECT_EQ(courseKind(centre.level(), "TEK"), "M");
    EXPECT_TRUE(isPractical(centre.level(), "TEK"));
    EXPECT_EQ(courseKind(centre.level(), "TE'K"), "");
    EXPECT_FALSE(isPractical(centre.level(), "YOK"));
    const auto fixed = centre.level().query("SELECT * FROM DersHavuzu where id=3 and DersKodu='PUYG.'");
    ASSERT_EQ(fixed.rowCount(), 1u);
    EXPECT_EQ(toText(fixed.at(0, "DersAdi")), "PRATİK UYGULAMA");
}

TEST_F(CoursePoolTest, ListsByKindThenNameInTurkishOrder) {
    for (const char* name : {"ZANAAT", "ÇİZİM", "İŞ", "ISI"})
        EXPECT_TRUE(add(course(QString(name).left(3), name)).saved);
    EXPECT_TRUE(add(course("TÜR", "TÜRKÇE", "K")).saved);
    EXPECT_EQ(names(), "TÜRKÇE4|ÇİZİM4|ISI4|İŞ4|PRATİK UYGULAMA3|ZANAAT4");
    QStringList listed;
    for (const Course& each : courses(centre.level(), 4))
        listed << each.code;
    EXPECT_EQ(listed.join('|'), "TÜR|ÇİZ|ISI|İŞ|ZAN");
}

TEST_F(CoursePoolTest, RefusesWhatCannotBeACourse) {
    const struct {
        const char* field;
        QString text;
        const char* refused;
    } cases[] = {
        {"DersKodu", "", "DersKodu"},
        {"DersAdi", "  ", "DersAdi"},
        {"ID", "5", "ID"},
        {"DersTuru", "", "DersTuru"},
        {"DersTuru", "X", "DersTuru"},
        {"DersKodu", "12345678901", "DersKodu"},
        {"DersAdi", QString(300, u'ş'), "DersAdi"},
        {"DersHaftalikSaat", "iki", "DersHaftalikSaat"},
        {"DersHaftalikSaat", "-1", "DersHaftalikSaat"},
        {"DersToplamSaat", "10000", "DersToplamSaat"},
    };
    for (const auto& c : cases) {
        FieldTexts values = course("MAT", "MATEMATİK");
        values[c.field] = c.text;
        const SaveOutcome outcome = add(values);
        EXPECT_FALSE(outcome.saved) << c.field;
        EXPECT_EQ(outcome.field, c.refused) << c.text.toStdString();
        EXPECT_FALSE(outcome.reason.isEmpty());
    }
    EXPECT_EQ(names(), "PRATİK UYGULAMA3");
}

TEST_F(CoursePoolTest, ACodeThatIsThereIsEditedOnlyWhenThePersonSaysSo) {
    ASSERT_TRUE(add(course("MAT", "MATEMATİK")).saved);
    const QString question = "MAT - MATEMATİK (4. program) dersi kayıtlı.\n\nBilgileri yazdıklarınızla "
                             "değiştirilsin mi?";
    dialogs.expectYesNo(question, Answer::No);
    EXPECT_EQ(add(course("mat", "HESAP")).field, "DersKodu");
    dialogs.expectYesNo(question, Answer::Yes);
    EXPECT_TRUE(add(course("MAT", "HESAP 'ÇIRAK'")).saved);
    EXPECT_TRUE(add(course("MAT", "MATEMATİK", "K", "3")).saved) << "another version";
    EXPECT_EQ(names(), "MATEMATİK3|HESAP 'ÇIRAK'4|PRATİK UYGULAMA3");
    // a code in use is given up only after a question
    addToCurriculum("MAT", 4);
    std::optional<StoredRow> row;
    for (const StoredRow& each : pool().rows())
        if (each.values.at("ID") == "4") row = each;
    FieldTexts changed = row->values;
    changed["DersKodu"] = "HES";
    dialogs.expectYesNo(
        "“MAT - HESAP 'ÇIRAK' (4. program)” dersinin kodunu veya programını değiştiriyorsunuz.\n"
        "Mesleklere ait derslerde 1 satır eskisini taşımaya devam eder ve adını bulamaz.\n\n"
        "Yine de değiştirilsin mi?",
        Answer::No);
    EXPECT_FALSE(pool().save(row, changed).saved);
}

TEST_F(CoursePoolTest, DeletingAsksInTheFixedWordsAndTakesEveryVersion) {
    ASSERT_TRUE(add(course("MAT", "MATEMATİK", "K", "3")).saved);
    ASSERT_TRUE(add(course("MAT", "MATEMATİK", "K", "4")).saved);
    ASSERT_TRUE(add(course("M'T", "M'T")).saved);
    const auto row = [&](const char* code) {
        for (const StoredRow& each : pool().rows())
            if (each.values.at("DersKodu") == code) return each;
        return StoredRow();
    };
    const QString question = "MAT Kodlu MATEMATİK dersinin kaydını silmek üzeresiniz.\n"
                             "Silme işlemine devam etmek istiyor musunuz?";
    dialogs.expectYesNo(question, Answer::No);
    EXPECT_FALSE(pool().remove(row("MAT")));
    addToCurriculum("MAT", 4);
    dialogs.expectYesNo(question, Answer::Yes);
    dialogs.expectYesNo("“MATEMATİK” dersi mesleklere ait derslerde 1 satırda kullanılıyor; silinirse bu "
                        "satırlar dersin adını bulamaz.\n\nYine de silinsin mi?",
                        Answer::Yes);
    EXPECT_TRUE(pool().remove(row("MAT")));
    dialogs.expectYesNo("M'T Kodlu M'T dersinin kaydını silmek üzeresiniz.\n"
                        "Silme işlemine devam etmek istiyor musunuz?",
                        Answer::Yes);
    EXPECT_TRUE(pool().remove(row("M'T")));
    dialogs.expectMessage("Program “PUYG.” dersini koduyla arar; silinemez.", "Uyarı");
    EXPECT_FALSE(pool().remove(row("PUYG.")));
    EXPECT_EQ(names(), "PRATİK UYGULAMA3");
}

TEST_F(CoursePoolTest, WithoutTheWriteRightNothingIsWritten) {
    ASSERT_TRUE(add(course("MAT", "MATEMATİK")).saved);
    const auto rows = pool().rows();
    centre.session.user = "memur";
    dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.", "Uyarı");
    EXPECT_FALSE(add(course("FİZ", "FİZİK")).saved);
    dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz", "Uyarı");
    EXPECT_FALSE(pool().remove(rows.front()));
    EXPECT_EQ(names(), "MATEMATİK4|PRATİK UYGULAMA3");
}

} // namespace
