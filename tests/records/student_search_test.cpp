// Searching all level databases and archives.
#include "records/student_search.h"

#include "support/scripted_dialogs.h"
#include "support/test_centre.h"

using namespace orvan;
using orvan_test::ScriptedDialogs;
using orvan_test::TestCentre;

namespace {

struct SearchTest : testing::Test {
    TestCentre centre;
    ScriptedDialogs dialogs;

    void SetUp() override { centre.databases.connect(); }
    // A copy of the Kalfa file under that name, with one student.
    void addArchive(const char* literal, const char* identityNo, const char* name = "Ayşe") {
        centre.databases.close();
        QFile::copy(centre.path("\\Mdx\\KALFA.MDX"), centre.path(literal));
        addTo(literal, identityNo, name);
        centre.databases.connect();
    }
    void addTo(const char* literal, const char* identityNo, const char* name = "Ayşe") {
        Connection file(centre.path(literal), {});
        file.sql().execute(
            "INSERT INTO OgrenciBilgisi (Ogr_Numarasi,Ogr_Kayit_No,Ogr_Adi,Ogr_Soyadi,Ogr_Mernis,"
            "Ogr_MeslekKod,DersID,Ogr_calistigi_isyerinin_adi) VALUES "
            "('110100001',1,?,'Işık',?,'1101',4,'İstanbul Oto')",
            Parameters{name, identityNo});
    }
};

TEST_F(SearchTest, PlacesInTheirOrderWithTheNewestYearFirst) {
    for (const char* file : {"MKAL2007", "MKAL2009", "AUOG2008", "ADENK_U2008", "MKAL20", "MKAL2010X"})
        QFile::copy(centre.path("\\Mdx\\KALFA.MDX"), centre.path("\\Data") + '/' + file + ".mdb");
    QStringList found;
    for (const SearchPlace& place : allSearchPlaces(centre.folder))
        found << place.code + '|' + place.label + '|' + place.schoolYear;
    EXPECT_EQ(found.join('\n'), QString("USTAOGR|*Usta öğretici |\n"
                                        "AUOG|*Usta öğretici ayrılma arşivi |2008-2009\n"
                                        "KALFA|*Kalfa|\n"
                                        "USTA|*Usta|\n"
                                        "MKAL|*Kalfa mezun arşivi |2009-2010\n"
                                        "MKAL|*Kalfa mezun arşivi |2007-2008\n"
                                        "DENKLIK|*Denklik|\n"
                                        "DENKLIK|*Denklik|\n"
                                        "DENKLIK|*Denklik|2008-2009\n"
                                        "ISYERI|*İşyeri açma|"));
    EXPECT_EQ(searchPlaces(centre.folder).size(), 9u);
    EXPECT_EQ(searchPlaces(centre.folder)[4].words(), "Kalfa mezun arşivi 2009-2010");
}

TEST_F(SearchTest, IdentityNumberNamesEachDatabaseOnce) {
    addArchive("\\Data\\MKAL2007.MDB", "10000000146");
    addArchive("\\Data\\MKAL2008.MDB", "10000000146");
    addTo("\\Data\\KALFA.MDB", "10000000146");
    addTo("\\Data\\USTAOGR.MDB", "10000000146");
    addTo("\\Data\\USTA.MDB", "10000000078");
    const IdentitySearch search = findByIdentityNumber(centre.folder, " 10000000146 ");
    EXPECT_EQ(search.text(), "10000000146 TC Kimlik numarasında öğrenci var.\n"
                             "*Usta öğretici *Kalfa*Kalfa mezun arşivi  çalışmasında");
    EXPECT_EQ(search.result.found.size(), 4u);
    EXPECT_EQ(findByIdentityNumber(centre.folder, "10000000147").text(),
              "10000000147 TC Kimlik numarasında öğrenci YOKTUR.");
    EXPECT_FALSE(findByIdentityNumber(centre.folder, "").isFound());
}

TEST_F(SearchTest, AFileThatCannotBeOpenedIsNamedAndPassedOver) {
    addTo("\\Data\\DENKLIK_U.MDB", "10000000146");
    for (const char* name : {"/MUST2008.MDB", "/AUST2008.MDB"}) {
        QFile broken(centre.path("\\Data") + name);
        ASSERT_TRUE(broken.open(QFile::WriteOnly));
        broken.write(QByteArray(name[1] == 'M' ? 0 : 9000, 'x'));
    }
    const IdentitySearch search = findByIdentityNumber(centre.folder, "10000000146");
    ASSERT_EQ(search.result.unreadable.size(), 2);
    EXPECT_TRUE(search.result.unreadable[0].contains("MUST2008.MDB"));
    EXPECT_TRUE(
        search.text().startsWith("10000000146 TC Kimlik numarasında öğrenci var.\n*Denklik çalışmasında\n"
                                 "Okunamayan dosyalar:\n"));
}

TEST_F(SearchTest, TermsMustAllOccur) {
    addTo("\\Data\\KALFA.MDB", "10000000146", "Gökhan");
    addTo("\\Data\\USTA.MDB", "10000000078", "O'Hara İlhan");
    struct Case {
        SearchTerms terms; // number, name, surname, identity number, workplace, father's name
        const char* names;
    };
    const Case cases[] = {
        {{"", "gök"}, "Gökhan"},
        {{"", "HAN"}, "Gökhan,O'Hara İlhan"},
        {{"", "ilhan"}, "O'Hara İlhan"},
        {{"", "ılhan"}, ""},
        {{"", "o'h"}, "O'Hara İlhan"},
        {{"", "  han ", " ışık "}, "Gökhan,O'Hara İlhan"},
        {{"1101"}, "Gökhan,O'Hara İlhan"},
        {{"0100"}, ""}, // numbers from their beginning
        {{"", "", "", "100000001"}, "Gökhan"},
        {{"", "", "", "", "istanbul"}, "Gökhan,O'Hara İlhan"},
        {{"", "gök", "", "", "ankara"}, ""},
        {{"", "%"}, ""},
        {{"", "*"}, ""},
        {{"", QString(300, 'a')}, ""},
        {{"  "}, ""},
        {{"", "", "", "", "", "Mehmet"}, ""},
    };
    for (const Case& c : cases) {
        QStringList names;
        for (const FoundStudent& each : searchStudents(searchPlaces(centre.folder), c.terms, dialogs).found)
            names << each.name;
        EXPECT_EQ(names.join(','), QString(c.names)) << c.terms.name.toStdString();
    }
}

TEST_F(SearchTest, StopKeepsWhatWasFound) {
    addTo("\\Data\\USTAOGR.MDB", "10000000146");
    addTo("\\Data\\KALFA.MDB", "10000000078");
    dialogs.cancelProgressAfter(2);
    const SearchResult result = searchStudents(searchPlaces(centre.folder), {"", "ayşe"}, dialogs);
    EXPECT_TRUE(result.stopped);
    EXPECT_EQ(result.found.size(), 1u);
}

} // namespace
