// The rules behind the windows that change numbers and names, and the one that looks after lock files.
#include "core/users.h"
#include "records/bulk_renumber.h"
#include "records/identity_change.h"
#include "records/lock_status.h"
#include "records/trimmed_rows.h"
#include "support/declining_dialogs.h"
#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

#include <fstream>

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

const QString kNoRight = "Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.";

struct NumberWindowsTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;
    IdentityChange change{centre.databases, dialogs};
    BulkRenumber bulk{centre.databases, dialogs};

    void SetUp() override {
        centre.databases.connect();
        centre.session.user = "ali";
        createUser(centre.databases.constants().database(), "ali", "1");
        grantAll(centre.databases.constants().database(), "ali", {true, true});
        centre.addProfession("1101", "Otomotiv");
        centre.addProfession("1202", "Kuaförlük");
        centre.addProfession("1202", "Kuaförlük (eski)", 1);
        centre.addStudent("110100001", 7, "1101", "Ali", "Kaya");
        centre.addStudent("110100002", 8, "1101", "Veli", "Çelik");
        centre.level().execute("INSERT INTO Notlar (N_Ogr_Numarasi,N_Ogr_Adi,N_Ogr_Soyadi) VALUES "
                               "('110100001','Ali','Kaya')");
        centre.level().execute("INSERT INTO Sigorta_Devamsizlik (D_OgrNo,D_Ogr_Adi,D_Ogr_Soyadi) VALUES "
                               "('110100001','Ali','Kaya')");
    }
    StudentIdentity first() { return change.students().front(); }
    QString marks() {
        const auto rows =
            centre.level().query("SELECT N_Ogr_Numarasi & ' ' & N_Ogr_Adi & ' ' & N_Ogr_Soyadi FROM Notlar");
        return toText(rows.at(0, size_t{0}));
    }
    QString question(const char* before, const char* after) {
        return QString(
                   "Öğrencinin bütün kayıtları değiştirilecek.\n\nEski: %1\nYeni: %2\n\nOnaylıyor musunuz?")
            .arg(before, after);
    }
};

const char* const kBefore = "Kütük No: 110100001   Kayıt No: 7   Ali Kaya   Meslek: 1101";

TEST_F(NumberWindowsTest, NumberNameAndProfessionOfOneStudent) {
    ASSERT_EQ(change.professionsFor(first()).size(), 2u) << "only those of his curriculum";
    StudentIdentity wanted{change.proposedNumber("1202"), 70, " Ali Can ", "O'Hara", "1202", 4};
    EXPECT_EQ(wanted.number, "120200001");
    const char* after = "Kütük No: 120200001   Kayıt No: 70   Ali Can O'Hara   Meslek: 1202";
    dialogs.expectYesNo(question(kBefore, after), Answer::No)
        .expectYesNo(question(kBefore, after), Answer::Yes);
    EXPECT_FALSE(change.save(first(), wanted).saved);
    EXPECT_EQ(marks(), "110100001 Ali Kaya");
    const auto result = change.save(first(), wanted);
    ASSERT_TRUE(result.saved);
    EXPECT_EQ(marks(), "120200001 Ali Can O'Hara");
    EXPECT_EQ(result.now.name, "Ali Can");
    EXPECT_EQ(change.students().back(), (StudentIdentity{"120200001", 70, "Ali Can", "O'Hara", "1202", 4}));
    EXPECT_EQ(
        rowsByText(centre.databases.level().database(), "Sigorta_Devamsizlik", "D_OgrNo", "120200001").size(),
        1u);
}

TEST_F(NumberWindowsTest, RefusalsNameTheField) {
    struct Case {
        StudentIdentity wanted;
        const char* field;
    };
    const Case cases[] = {
        {{"", 7, "Ali", "Kaya", "1101", 4}, "number"},
        {{"1101", 7, "Ali", "Kaya", "1101", 4}, "number"},
        {{"110100002", 7, "Ali", "Kaya", "1101", 4}, "number"},
        {{QString(300, '1'), 7, "Ali", "Kaya", "1101", 4}, "number"},
        {{"110100001", 8, "Ali", "Kaya", "1101", 4}, "registrationNo"},
        {{"110100001", 0, "Ali", "Kaya", "1101", 4}, "registrationNo"},
        {{"110100001", 7, "  ", "Kaya", "1101", 4}, "name"},
        {{"110100001", 7, "Ali", "", "1101", 4}, "surname"},
        {{"110100001", 7, QString(300, 'a'), "Kaya", "1101", 4}, "name"},
        {{"110100001", 7, "Ali", QString(31, 'a'), "1101", 4}, "surname"},
    };
    for (const Case& c : cases) {
        const auto result = change.save(first(), c.wanted);
        EXPECT_FALSE(result.saved);
        EXPECT_EQ(result.field, QString(c.field));
        EXPECT_FALSE(result.reason.isEmpty());
    }
    grantAll(centre.databases.constants().database(), "ali", {true, false});
    dialogs.expectMessage(kNoRight);
    EXPECT_FALSE(change.save(first(), {"110100009", 7, "Ali", "Kaya", "1101", 4}).saved);
    EXPECT_EQ(first().number, "110100001");
}

TEST_F(NumberWindowsTest, AStudentChangedMeanwhileIsNotWritten) {
    struct OtherStation final : orvan_test::DecliningDialogs {
        explicit OtherStation(TestCentre& given) : centre(given) {}
        TestCentre& centre;
        Answer askYesNo(const QString&, const QString&, Answer) override {
            centre.level().execute("UPDATE OgrenciBilgisi SET Ogr_Soyadi = 'Öz' WHERE Ogr_Kayit_No = 7");
            return Answer::Yes;
        }
    } station(centre);
    IdentityChange contested(centre.databases, station);
    const auto result = contested.save(first(), {"110100009", 7, "Ali", "Kaya", "1101", 4});
    EXPECT_FALSE(result.saved);
    EXPECT_TRUE(result.reason.contains("başka bir kullanıcı"));
    EXPECT_EQ(marks(), "110100001 Ali Kaya");
}

TEST_F(NumberWindowsTest, ManyNumbersInSequence) {
    centre.addStudent("120200005", 3, "1202", "Zeki", "Öz");
    centre.level().execute(
        "UPDATE OgrenciBilgisi SET Ogr_Kayit_Tarihi = '01.09.2009' WHERE Ogr_Kayit_No = 8");
    centre.level().execute(
        "UPDATE OgrenciBilgisi SET Ogr_Kayit_Tarihi = '15.10.2008' WHERE Ogr_Kayit_No = 3");
    const auto text = [](const std::vector<NewNumbers>& numbers) {
        QStringList all;
        for (const NewNumbers& each : numbers)
            all << each.number + '/' + QString::number(each.registrationNo);
        return all.join(' ');
    };
    EXPECT_EQ(bulk.professions().size(), 2u);
    const auto byDate = bulk.students({}, RenumberOrder::ByRegistrationDate);
    EXPECT_EQ(text(bulk.inSequence(byDate, 1, 100)), "120200001/100 110100001/101 110100002/102");
    EXPECT_EQ(text(bulk.inSequence(byDate, 0, 1)), "120200005/1 110100002/2 110100001/3");
    const auto rows = bulk.students("1101", RenumberOrder::ByName);
    auto numbers = bulk.inSequence(rows, 2, 0);
    EXPECT_EQ(text(numbers), "110100002/7 110100003/8");
    const QString question =
        "2 öğrencinin numarası değişecek (ilki: 110100001 → 110100002).\nNotları, "
        "devamsızlıkları, sigorta günleri, işyerleri ve sınavları yeni numarayı alacak.\n\n"
        "Onaylıyor musunuz?";
    dialogs.expectYesNo(question, Answer::No).expectYesNo(question, Answer::Yes);
    EXPECT_FALSE(bulk.save(rows, numbers).saved);
    EXPECT_EQ(marks(), "110100001 Ali Kaya");
    const auto result = bulk.save(rows, numbers);
    EXPECT_TRUE(result.saved);
    EXPECT_EQ(result.students, 2u);
    EXPECT_EQ(result.dependentRows, 2u);
    EXPECT_EQ(marks(), "110100002 Ali Kaya");
}

TEST_F(NumberWindowsTest, ManyNumbersRefusedBeforeAnyIsWritten) {
    const auto rows = bulk.students("1101", RenumberOrder::ByNumber);
    EXPECT_EQ(BulkRenumber::numberFault(rows[0], "110100001"), "");
    EXPECT_EQ(BulkRenumber::numberFault(rows[0], "1101"), "Kütük No en az beş karakter olmalı.");
    EXPECT_EQ(BulkRenumber::numberFault(rows[0], "120200001"), "Kütük No meslek koduyla (1101) başlamalı.");
    EXPECT_EQ(BulkRenumber::numberFault(rows[0], "1101O001"), "Meslek kodundan sonra yalnız rakam olmalı.");
    EXPECT_EQ(BulkRenumber::numberFault({"", 0, "", "", "", "110", ""}, "01100001"), "")
        << "a short code is filled up";
    EXPECT_EQ(BulkRenumber::numberFault({"", 0, "", "", "", "11012", ""}, "11010001"), "")
        << "a long one is cut";
    centre.addStudent("110100005", 9, "1202"); // of another profession
    const auto result = bulk.save(rows, {{"110100005", 7}, {"110100006", 9}});
    EXPECT_FALSE(result.saved);
    ASSERT_EQ(result.problems.size(), 2u);
    EXPECT_EQ(result.problems[0].fault, RenumberFault::NumberTaken);
    EXPECT_EQ(result.problems[1].fault, RenumberFault::RegistrationTaken);
    const auto second = bulk.save(rows, {{"110100001", 7}, {"110100005", 8}});
    ASSERT_EQ(second.problems.size(), 1u);
    EXPECT_EQ(second.problems[0].which, 1u) << "the place in the rows, not among the changes";
    dialogs.expectMessage("Değişen numara yok.");
    EXPECT_FALSE(bulk.save(rows, {{"110100001", 7}, {"110100002", 8}}).saved);
    EXPECT_EQ(change.students().front(), (StudentIdentity{"110100001", 7, "Ali", "Kaya", "1101", 4}));
}

TEST_F(NumberWindowsTest, LockFilesLeftBehindAreRemovedAndThoseInUseAreNot) {
    const auto statusOf = [&](const char* file) {
        for (const LockStatus& status : lockStatus(centre.databases))
            if (status.file.endsWith(file)) return status;
        return LockStatus{};
    };
    const Connection other(centre.path("\\Data\\USTA.MDB"), {});
    const QString left = centre.path("\\Data") + "/ISYERI.ldb";
    std::ofstream(filePath(left)) << std::string(64, 'x');
    EXPECT_EQ(statusOf("KALFA.MDB").words(), "Yalnız bu programda açık");
    EXPECT_EQ(statusOf("USTA.MDB").words(), "Kullanılıyor");
    EXPECT_EQ(statusOf("USTA.MDB").others.size(), 1);
    EXPECT_EQ(statusOf("ISYERI.MDB").words(), "Artık kilit dosyası var, kimse kullanmıyor");
    EXPECT_TRUE(QFile::exists(left)) << "looking changes nothing";
    EXPECT_EQ(statusOf("USTAOGR.MDB").words(), "Kimse kullanmıyor");
    const Connection second(centre.path("\\Data\\KALFA.MDB"), {});
    EXPECT_EQ(statusOf("KALFA.MDB").words(), "Kullanılıyor");
    EXPECT_EQ(removeLeftLocks(centre.databases).join('\n'), "ISYERI.MDB: artık kilit kaldırıldı.");
    EXPECT_FALSE(QFile::exists(left));
    EXPECT_TRUE(QFile::exists(centre.path("\\Data") + "/USTA.ldb"));
    EXPECT_EQ(removeLeftLocks(centre.databases), QStringList());
}

} // namespace
