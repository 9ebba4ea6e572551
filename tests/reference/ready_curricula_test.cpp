// Ready-made curricula: what the templates carry, that new files begin without it, and loading it, with
// missing files, missing professions, failures in the middle and courses of the centre's own.
#include "reference/curriculum_fixture.h"
#include "reference/ready_curricula.h"
#include "reference/ready_data.h"
#include "support/declining_dialogs.h"

#include <map>
#include <set>

using namespace orvan;

namespace orvan_test {
namespace {

// Says yes and takes down the message, whose end is the engine's own reason.
class Failing : public DecliningDialogs {
  public:
    Answer askYesNo(const QString&, const QString&, Answer) override { return Answer::Yes; }
    void message(const QString& text, const QString&, Icon) override { said = text; }
    QString said;
};

class ReadyTest : public CurriculumTest {
  protected:
    ReadyLoad load(const CurriculumKey& of) {
        return ReadyCurricula(centre.databases, dialogs, kCurriculumTitle).load(of);
    }
    static QString question(const QString& name) {
        return name + " Mesleğinin hazır dersleri yüklenecek.\nDevam Etmek İstiyor musunuz?";
    }
    std::unique_ptr<jet::Database> openTemplate(const char* literal) {
        return jet::Database::open(filePath(centre.path(literal)));
    }
    QString poolName(const char* code) {
        const auto rows = centre.level().query("SELECT DersAdi FROM DersHavuzu WHERE ID = 4 AND DersKodu = ?",
                                               Parameters{code});
        return rows.empty() ? QString() : toText(rows.at(0, size_t{0}));
    }
};

TEST_F(ReadyTest, TheTemplatesHoldAWeekOfCoursesForEachYear) {
    EXPECT_GE(readyProfessions().size(), 12u);
    const struct {
        const char *file, *level;
        QStringList tracks;
    } cases[] = {{"\\Mdx\\Kalfa.Mdx", "Kalfa", {"İ", "L"}}, {"\\Mdx\\Usta.Mdx", "Usta", {"U"}}};
    for (const auto& c : cases) {
        const auto database = openTemplate(c.file);
        jet::SqlSession sql(*database);
        const auto rows = sql.query("SELECT M.ID, M.MeslekKodu, M.MeslekOgrenimDurumu, M.MeslekOgrenimYili, "
                                    "M.MeslekDersSaat, D.DersAdi, "
                                    "M.MeslekOgrenciTuru, P.Ta_tanim_aciklama FROM (MeslekDersHavuzu AS M "
                                    "LEFT JOIN DersHavuzu AS D ON "
                                    "(D.ID = M.ID AND D.DersKodu = M.MeslekDersKodu)) LEFT JOIN "
                                    "Parametrik_giris AS P ON (P.ID = M.ID "
                                    "AND P.Ta_Tanim_Kod = M.MeslekKodu AND P.Ta_Tanim_Grup = 'Bölüm')");
        std::map<QString, int> hours; // of a year
        std::set<QString> kinds;      // version, profession, track
        for (size_t i = 0; i < rows.rowCount(); ++i) {
            EXPECT_FALSE(toText(rows.at(i, 5)).isEmpty()) << "a course that is not in the pool";
            EXPECT_FALSE(toText(rows.at(i, 7)).isEmpty()) << "a profession without a name";
            EXPECT_EQ(toText(rows.at(i, 6)), c.level);
            const QString kind =
                toText(rows.at(i, size_t{0})) + '/' + toText(rows.at(i, 1)) + '/' + toText(rows.at(i, 2));
            kinds.insert(kind);
            hours[kind + toText(rows.at(i, 3))] += toText(rows.at(i, 4)).toInt();
        }
        for (const auto& [year, sum] : hours) {
            EXPECT_GE(sum, 8) << year.toStdString();
            EXPECT_LE(sum, 12) << year.toStdString();
        }
        for (const char* version : {"3", "4"})
            for (const ReadyProfession& profession : readyProfessions())
                for (const QString& track : c.tracks)
                    EXPECT_TRUE(kinds.contains(QString("%1/%2/%3").arg(version, profession.code, track)))
                        << version << profession.name << track.toStdString();
    }
}

TEST_F(ReadyTest, NewFilesBeginWithoutTheReadyRows) {
    TestCentre fresh;
    for (const Level level : {Level::Kalfa, Level::Usta, Level::UstaOgretici, Level::IsyeriAcma}) {
        fresh.session.level = level;
        fresh.databases.connect();
        const auto number = [&](const char* sql) {
            return fresh.level().query(sql).at(0, size_t{0}).toInt();
        };
        EXPECT_EQ(number("SELECT COUNT(*) FROM MeslekDersHavuzu"), 0);
        EXPECT_EQ(number("SELECT COUNT(*) FROM DersHavuzu"), 1) << "the practical training";
        EXPECT_EQ(professions(fresh.level()).size(), 0u);
        EXPECT_GT(number("SELECT COUNT(*) FROM Parametrik_giris"), 20) << "the lists of a new centre";
    }
}

TEST_F(ReadyTest, LoadsAProfessionOnceAndKeepsWhatIsThere) {
    centre.addProfession("1401", "Kuaförlük");
    const CurriculumKey hair{"Kalfa", "1401", 4, "İ"};
    dialogs.expectYesNo(question("Kuaförlük"), Answer::No);
    EXPECT_FALSE(load(hair).loaded);
    addRow("TDE", 1, 5, "İ", 0, 9, "Kalfa", "1401"); // the centre's own, with hours of its own
    dialogs.expectYesNo(question("Kuaförlük"), Answer::Yes);
    const ReadyLoad first = load(hair);
    EXPECT_TRUE(first.loaded);
    EXPECT_EQ(first.alreadyThere, 1);
    EXPECT_GT(first.rows, 15);
    EXPECT_EQ(first.otherNames.size(), 2) << first.otherNames.join('\n').toStdString(); // TDE and MAT
    EXPECT_EQ(poolName("TDE"), "TDE dersi");
    EXPECT_EQ(poolName("1401.3"), "SAÇ KESİMİ");
    EXPECT_EQ(poolName("1101.1"), "") << "courses of others stay outside";
    EXPECT_EQ(courseHours(centre.level(), "1401", 1, "TDE", 4), 9);
    EXPECT_EQ(lastCurriculumYear(centre.level(), 4, "1401", "İ"), 4);
    EXPECT_EQ(lastCurriculumYear(centre.level(), 4, "1401", "L"), 2);
    EXPECT_EQ(lastCurriculumYear(centre.level(), 3, "1401", "İ"), 0) << "another version";
    EXPECT_EQ(curriculum().rows(hair).front().values.at("MeslekDersSaat"), "9")
        << "what was there stays first";
    dialogs.expectYesNo(question("Kuaförlük"), Answer::Yes);
    const ReadyLoad second = load(hair);
    EXPECT_EQ(second.rows, 0);
    EXPECT_EQ(second.courses, 0);
    EXPECT_EQ(second.alreadyThere, first.rows + 1);
}

TEST_F(ReadyTest, EachLevelHasItsFile) {
    const struct {
        Level level;
        bool equivalence;
        const char *kept, *file;
    } cases[] = {
        {Level::Kalfa, false, "Kalfa", "\\Mdx\\Kalfa.Mdx"},
        {Level::Usta, false, "Usta", "\\Mdx\\Usta.Mdx"},
        {Level::Kalfa, true, "Denklik", "\\Mdx\\Kalfa.Mdx"},
        {Level::Usta, true, "Denklik", "\\Mdx\\Usta.Mdx"},
        {Level::DenklikUsta, false, "Denklik", "\\Mdx\\Usta.Mdx"},
    };
    for (const auto& c : cases) {
        Session session;
        session.level = c.level;
        session.equivalence = c.equivalence;
        EXPECT_EQ(readyFile(c.kept, session), c.file);
    }
    centre.addProfession("1401", "Kuaförlük");
    dialogs.expectYesNo(question("Kuaförlük"), Answer::Yes);
    EXPECT_TRUE(load({"Denklik", "1401", 4, "İ"}).loaded);
    EXPECT_GT(count("SELECT COUNT(*) FROM MeslekDersHavuzu WHERE MeslekOgrenciTuru = 'Denklik'"), 0);
    EXPECT_EQ(count("SELECT COUNT(*) FROM MeslekDersHavuzu WHERE MeslekOgrenciTuru = 'Kalfa'"), 0);
}

TEST_F(ReadyTest, AMissingOrSpoiltFileIsToldOf) {
    const QString file = centre.path("\\Mdx\\Kalfa.Mdx");
    ASSERT_TRUE(QFile::remove(file));
    dialogs.expectYesNo(question("Oto 'Usta' İşleri"), Answer::Yes);
    dialogs.expectMessage(centre.path("\\Mdx\\Kalfa.Mdx") + " Dosyası bulunamadı.\nİşlem devam edemiyor.",
                          "Dosya Bulunamadı");
    EXPECT_FALSE(load(key).loaded);

    jet::Database::create(filePath(file)); // a database without the tables
    Failing person;
    EXPECT_FALSE(ReadyCurricula(centre.databases, person, kCurriculumTitle).load(key).loaded);
    EXPECT_TRUE(person.said.startsWith("Dersler Kopyalanamadı!\n\n")) << person.said.toStdString();
    EXPECT_EQ(total(), 0);
}

TEST_F(ReadyTest, AFailureInTheMiddleLeavesNothingHalfWritten) {
    centre.addProfession("1401", "Kuaförlük");
    addRow("MAT", 1, 1, "İ", 0, 9, "Kalfa", "1401");
    centre.level().execute("DELETE FROM DersHavuzu");
    jet::FieldDef narrow = centre.databases.level().database().tableDef("DersHavuzu").fields[2];
    ASSERT_EQ(narrow.name, "DersAdi");
    narrow.size = 10; // characters of two bytes: the names of the ready courses do not fit
    centre.databases.level().database().alterField("DersHavuzu", "DersAdi", narrow);
    Failing person;
    const ReadyLoad done =
        ReadyCurricula(centre.databases, person, kCurriculumTitle).load({"Kalfa", "1401", 4, "İ"});
    EXPECT_FALSE(done.loaded);
    EXPECT_TRUE(person.said.startsWith("Dersler Kopyalanamadı!\n\n")) << person.said.toStdString();
    EXPECT_EQ(total(), 1) << "rows were written before the courses failed";
    EXPECT_EQ(count("SELECT COUNT(*) FROM DersHavuzu"), 0);
}

TEST_F(ReadyTest, AProfessionOfTheCentresOwnTakesTheCoursesOfAReadyOne) {
    const QString name = "Oto 'Usta' İşleri"; // code 1101, which the ready file gives another name
    const QString none = "Meslek Ders Havuzunda Seçtiğiniz Mesleğe ait Dersler bulunamadı! Eğer ''" + name +
                         "'' adlı meslek manuel olarak tanımlanmış ise bu mesleği listeden seçerek dersleri "
                         "eklemek ister misiniz?";
    const QString pick = "“" + name + "” mesleğine dersleri eklenecek hazır meslek:";
    dialogs.expectYesNo(question(name), Answer::Yes).expectYesNo(none, Answer::No);
    EXPECT_FALSE(load(key).loaded);
    dialogs.expectYesNo(question(name), Answer::Yes).expectYesNo(none, Answer::Yes);
    dialogs.expectChoice(pick, std::nullopt);
    EXPECT_FALSE(load(key).loaded);
    EXPECT_EQ(total(), 0);
    dialogs.expectYesNo(question(name), Answer::Yes).expectYesNo(none, Answer::Yes);
    dialogs.expectChoice(pick, "1701 - Kaynakçılık");
    EXPECT_TRUE(load(key).loaded);
    EXPECT_EQ(count("SELECT COUNT(*) FROM MeslekDersHavuzu WHERE MeslekKodu <> '1101'"), 0);
    EXPECT_EQ(poolName("1701.3"), "ELEKTRİK ARK KAYNAĞI");

    centre.addProfession("99", "kaynakçılık"); // another code, the same name: no question
    dialogs.expectYesNo(question("kaynakçılık"), Answer::Yes);
    EXPECT_TRUE(load({"Kalfa", "99", 4, "İ"}).loaded);
    centre.addProfession("1401", "Kuaförlük", 2); // no ready courses at all in that version
    dialogs.expectYesNo(question("Kuaförlük"), Answer::Yes);
    dialogs.expectMessage("Meslek Ders Havuzunda Seçtiğiniz Mesleğe ait Dersler bulunamadı!");
    EXPECT_FALSE(load({"Kalfa", "1401", 2, "İ"}).loaded);
    dialogs.expectMessage("Hazır dersleri yüklemek için önce mesleği seçiniz.");
    EXPECT_FALSE(load({"Kalfa", "", 4, "İ"}).loaded);
}

} // namespace
} // namespace orvan_test
