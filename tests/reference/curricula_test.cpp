// Curricula of professions: lookups, order of the list, changes, adding, removing, moving, final-exam
// courses.
#include "reference/curriculum_fixture.h"

using namespace orvan;

namespace orvan_test {
namespace {

TEST_F(CurriculumTest, LookupsGoByVersionProfessionYearAndTrack) {
    addRow("MAT", 1, 1);
    addRow("MAT", 3, 2, "İ", 0, 5);
    addRow("MAT", 2, 1, "L", 0, 3);
    addRow("FRN", 2, 1, "B", 0, 9);
    addRow("MAT", 2, 1, "B", 0, 9);
    addRow("MAT", 4, 1, "İ", 0, 7, "Kalfa", "1101", 3);
    EXPECT_EQ(lastCurriculumYear(centre.level(), 4, "1101", "İ"), 3);
    EXPECT_EQ(lastCurriculumYear(centre.level(), 4, "1101", "L"), 2);
    EXPECT_EQ(lastCurriculumYear(centre.level(), 3, "1101", "İ"), 4);
    EXPECT_EQ(lastCurriculumYear(centre.level(), 4, "1101", "U"), 0);
    EXPECT_EQ(lastCurriculumYear(centre.level(), 4, "11'01", "İ"), 0);
    EXPECT_EQ(courseHours(centre.level(), "1101", 3, "MAT", 4), 5);
    EXPECT_EQ(courseHours(centre.level(), "1101", 2, "MAT", 4), 3) << "not the final exam's";
    EXPECT_EQ(courseHours(centre.level(), "1101", 2, "FRN", 4), 9);
    EXPECT_EQ(courseHours(centre.level(), "1101", 4, "MAT", 4), 0);
}

TEST_F(CurriculumTest, LevelAndTracksFollowTheSession) {
    const struct {
        Level level;
        bool equivalence;
        const char *kept, *tracks;
    } cases[] = {
        {Level::Kalfa, false, "Kalfa", "İLB"},      {Level::Usta, false, "Usta", "UB"},
        {Level::UstaOgretici, false, "Usta", "UB"}, {Level::IsyeriAcma, false, "Kalfa", "İLB"},
        {Level::Usta, true, "Denklik", "İLUB"},     {Level::DenklikKalfa, false, "Denklik", "İLUB"},
    };
    for (const auto& c : cases) {
        Session session;
        session.level = c.level;
        session.equivalence = c.equivalence;
        const QString level = curriculumLevelOf(session);
        EXPECT_EQ(level, c.kept);
        QString tracks;
        for (const Track& track : tracksOf(level))
            tracks += track.code;
        EXPECT_EQ(tracks, c.tracks) << c.kept;
    }
}

TEST_F(CurriculumTest, TheListGoesByOrderAndByTermWhereTermsAreUsed) {
    addRow("MAT", 2, 3);
    addRow("TDE", 1, 1);
    addRow("FRN", 2, 1);
    addRow("MTR", 1, 1, "L");
    addRow("MTR", 1, 1, "İ", 0, 2, "Usta");
    EXPECT_EQ(listed(key), "TDE1 FRN2 MAT2");
    addRow("MTR", 1, 9, "İ", 1);
    addRow("MAT", 1, 2, "İ", 2);
    EXPECT_EQ(listed(key), "TDE1 FRN2 MAT2 MTR1 MAT1") << "term, year, order";
    EXPECT_EQ(listed({"Kalfa", "11'01", 4, "İ"}), "");
}

TEST_F(CurriculumTest, AddingTakesThePoolsValuesAndStandsBehindItsYear) {
    addRow("MAT", 1, 1);
    addRow("MTR", 2, 2);
    EXPECT_EQ(curriculum().add(key, {"TDE", "FRN", "YOK"}, 1, 0), 2);
    EXPECT_EQ(listed(key), "MAT1 TDE1 FRN1 MTR2");
    const StoredRow added = curriculum().rows(key)[1];
    const FieldTexts wanted{{"MeslekDersSaat", "2"},
                            {"MeslekToplamSaat", "72"},
                            {"MeslekTurkce", "1"},
                            {"MeslekKayitSira", "2"},
                            {"MeslekUygulama", "0"},
                            {"MeslekBitirmeMuaf", "0"},
                            {"MeslekYururlulukTarihi", "15.09.2017"},
                            {"MeslekDersGecmeNotu", "50"}};
    for (const auto& [field, text] : wanted)
        EXPECT_EQ(added.values.at(field), text) << field.toStdString();
    // what the year has already is named and left out
    dialogs.expectMessage("1. yılda zaten bulunan dersler eklenmedi:\n\nMAT - MAT dersi");
    EXPECT_EQ(curriculum().add(key, {"MAT", "MTR"}, 1, 0), 1);
    EXPECT_EQ(listed(key), "MAT1 TDE1 FRN1 MTR1 MTR2");
    dialogs.expectMessage("Ders eklemek için önce mesleği seçiniz.");
    EXPECT_EQ(curriculum().add({"Kalfa", "", 4, "İ"}, {"MAT"}, 1, 0), 0);
    dialogs.expectMessage("Eklenecek dersi ders havuzundan seçiniz.");
    EXPECT_EQ(curriculum().add(key, {}, 1, 0), 0);
}

TEST_F(CurriculumTest, SavingRefusesWhatCannotBeAndWritesAllOrNothing) {
    addRow("MAT", 1, 1);
    addRow("TDE", 1, 2);
    addRow("MAT", 2, 3);
    const struct {
        size_t row;
        const char *field, *text;
        bool saved;
    } cases[] = {
        {0, "MeslekOgrenimYili", "", false},      {0, "MeslekOgrenimYili", "0", false},
        {0, "MeslekOgrenimYili", "2", false}, // MAT is there already
        {1, "MeslekDersSaat", "on", false},       {1, "MeslekDersSaat", "100", false},
        {2, "MeslekDersGecmeNotu", "101", false}, {2, "Donem", "-1", false},
        {1, "MeslekDersSaat", "", true},          {1, "MeslekDersSaat", "99", true},
        {0, "MeslekOgrenimYili", "9", true},      {2, "MeslekBitirmeMuaf", "1", true},
    };
    for (const auto& c : cases) {
        const auto rows = curriculum().rows(key);
        std::vector<FieldTexts> wanted;
        for (const StoredRow& row : rows)
            wanted.push_back(row.values);
        wanted[c.row][c.field] = c.text;
        wanted[1]["MeslekToplamSaat"] = QString::number(c.row + 10); // goes with it
        const RowSave outcome = curriculum().save(rows, wanted);
        EXPECT_EQ(outcome.saved, c.saved) << c.field << c.text;
        if (!c.saved) {
            EXPECT_EQ(outcome.row, c.row) << c.field;
            EXPECT_EQ(outcome.field, c.field);
            EXPECT_EQ(curriculum().rows(key)[1].values.at("MeslekToplamSaat"), "") << "nothing was written";
        } else {
            wanted[1]["MeslekToplamSaat"] = "";
            const auto now = curriculum().rows(key);
            EXPECT_EQ(now[c.row].values.at(c.field), c.text);
            centre.level().execute("UPDATE MeslekDersHavuzu SET MeslekToplamSaat = NULL");
        }
    }
}

TEST_F(CurriculumTest, AnotherStationsChangeStopsTheWholeJob) {
    for (int i = 1; i <= 3; ++i)
        addRow("MAT", i, i);
    const auto seen = curriculum().rows(key);
    centre.level().execute("UPDATE MeslekDersHavuzu SET MeslekDersSaat = 7 WHERE MeslekOgrenimYili = 3");
    const QString changed =
        "Bu mesleğin dersleri, siz açtıktan sonra başka bir bilgisayarda değiştirildi; liste "
        "yenilendi.\nDeğişikliğinizi yeni listede tekrarlayınız.";
    std::vector<FieldTexts> wanted;
    for (const StoredRow& row : seen) {
        wanted.push_back(row.values);
        wanted.back()["MeslekDersSaat"] = "4";
    }
    dialogs.expectMessage(changed, "Uyarı");
    EXPECT_FALSE(curriculum().save(seen, wanted).saved);
    EXPECT_EQ(count("SELECT COUNT(*) FROM MeslekDersHavuzu WHERE MeslekDersSaat = 4"), 0);
    dialogs.expectMessage(changed);
    EXPECT_FALSE(curriculum().reorder(key, {seen[2], seen[0], seen[1]}));
    dialogs.expectMessage(changed);
    EXPECT_FALSE(curriculum().reorder(key, {seen[1], seen[0]})) << "a row is missing";
    EXPECT_EQ(listed(key), "MAT1 MAT2 MAT3");
    dialogs.expectYesNo("3. MAT - MAT dersi satırındaki bilgi silinecek.\nDevam etmek istiyor musunuz?",
                        Answer::Yes);
    dialogs.expectMessage(changed);
    EXPECT_TRUE(curriculum().remove(seen[2], "3. MAT - MAT dersi"));
    EXPECT_EQ(total(), 3) << "the other station's row is not deleted unseen";
}

TEST_F(CurriculumTest, RemovingAndMovingRewriteTheRowsTheyName) {
    for (int i = 1; i <= 4; ++i)
        addRow("MAT", i, 10 * i);
    addRow("MAT", 1, 99, "L");
    auto rows = curriculum().rows(key);
    EXPECT_TRUE(curriculum().reorder(key, {rows[3], rows[0], rows[1], rows[2]}));
    EXPECT_EQ(listed(key), "MAT4 MAT1 MAT2 MAT3");
    QString orders;
    for (const StoredRow& row : curriculum().rows(key))
        orders += row.values.at("MeslekKayitSira");
    EXPECT_EQ(orders, "1234");
    EXPECT_EQ(count("SELECT MeslekKayitSira FROM MeslekDersHavuzu WHERE MeslekOgrenimDurumu = 'L'"), 99);
    rows = curriculum().rows(key);
    const QString question = "2. MAT - MAT dersi satırındaki bilgi silinecek.\nDevam etmek istiyor musunuz?";
    dialogs.expectYesNo(question, Answer::No, "Uyarı");
    EXPECT_FALSE(curriculum().remove(rows[1], "2. MAT - MAT dersi"));
    dialogs.expectYesNo(question, Answer::Yes);
    EXPECT_TRUE(curriculum().remove(rows[1], "2. MAT - MAT dersi"));
    EXPECT_EQ(listed(key), "MAT4 MAT2 MAT3");
}

TEST(MovedOrder, MovesAmongTheShownRowsOnly) {
    const auto text = [](const std::vector<size_t>& order) {
        QString all;
        for (const size_t place : order)
            all += QString::number(place);
        return all;
    };
    EXPECT_EQ(text(movedOrder(5, {0, 1, 2, 3, 4}, 0, 3)), "12304");
    EXPECT_EQ(text(movedOrder(5, {0, 1, 2, 3, 4}, 4, 0)), "40123");
    EXPECT_EQ(text(movedOrder(5, {0, 2, 4}, 2, 0)), "41032");
    EXPECT_EQ(text(movedOrder(5, {0, 2, 4}, 0, 1)), "21034");
    EXPECT_EQ(text(movedOrder(3, {1}, 0, 0)), "012");
}

TEST_F(CurriculumTest, FinalExamHasEachCourseOnceAndReplacesTheOldOnes) {
    const QString question = "Bitirme Derslerini Oluştururken Daha Önce Tanımlanan Tüm Bitirme Dersleri "
                             "Silinecek!\nOnaylıyor musunuz?";
    addRow("ESK", 1, 1, "B");
    dialogs.expectYesNo(question, Answer::Yes, "Uyarı");
    dialogs.expectMessage("Bu mesleğe ait ders yok; bitirme dersi oluşturulmadı.");
    EXPECT_EQ(curriculum().makeFinalExam(key), std::nullopt);
    EXPECT_EQ(total(), 1) << "the old ones stay where nothing would follow";

    addRow("MAT", 1, 1, "İ", 0, 2);
    addRow("TDE", 1, 2);
    addRow("MAT", 2, 3, "İ", 0, 6);
    addRow("FRN", 1, 1, "L");
    addRow("MTR", 1, 1, "U", 0, 2, "Usta");             // another level
    addRow("MTR", 1, 1, "İ", 0, 2, "Kalfa", "1102");    // another profession
    addRow("ESK", 1, 1, "B", 0, 2, "Kalfa", "1101", 3); // another version
    dialogs.expectYesNo(question, Answer::No);
    EXPECT_EQ(curriculum().makeFinalExam(key), std::nullopt);
    const CurriculumKey exams{"Kalfa", "1101", 4, "B"};
    EXPECT_EQ(listed(exams), "ESK1");
    for (int again = 0; again < 2; ++again) {
        dialogs.expectYesNo(question, Answer::Yes);
        EXPECT_EQ(curriculum().makeFinalExam(key), 3);
        EXPECT_EQ(listed(exams), "FRN1 TDE1 MAT2");
        EXPECT_EQ(curriculum().rows(exams)[2].values.at("MeslekDersSaat"), "6") << "of its last year";
        EXPECT_EQ(listed({"Kalfa", "1101", 3, "B"}), "ESK1");
        EXPECT_EQ(listed(key), "MAT1 TDE1 MAT2");
    }
}

TEST_F(CurriculumTest, WithoutTheWriteRightNothingIsAskedNorWritten) {
    addRow("MAT", 1, 1);
    const auto rows = curriculum().rows(key);
    centre.session.user = "memur";
    const std::function<void()> jobs[] = {
        [&] { EXPECT_FALSE(curriculum().save(rows, {rows[0].values}).saved); },
        [&] { EXPECT_EQ(curriculum().add(key, {"TDE"}, 1, 0), 0); },
        [&] { EXPECT_FALSE(curriculum().remove(rows[0], "1.")); },
        [&] { EXPECT_FALSE(curriculum().reorder(key, rows)); },
        [&] { EXPECT_EQ(curriculum().makeFinalExam(key), std::nullopt); },
    };
    for (const auto& job : jobs) {
        dialogs.expectMessage("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz.",
                              "Uyarı");
        job();
    }
    EXPECT_EQ(listed(key), "MAT1");
}

} // namespace
} // namespace orvan_test
