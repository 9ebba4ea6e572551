// Turkish case, order and code pages.
#include "core/turkish_text.h"

#include <gtest/gtest.h>

using namespace orvan;

namespace {

TEST(TurkishText, UpperAndLowerKeepDottedAndDotlessApart) {
    struct Case {
        const char* lower;
        const char* upper;
    };
    for (const Case& c :
         {Case{"istanbul", "İSTANBUL"}, Case{"ılgaz", "ILGAZ"}, Case{"şişli ığdır", "ŞİŞLİ IĞDIR"},
          Case{"çöğüş 12-a", "ÇÖĞÜŞ 12-A"}, Case{"", ""}}) {
        EXPECT_EQ(upperTurkish(c.lower).toStdString(), c.upper);
        EXPECT_EQ(lowerTurkish(c.upper).toStdString(), c.lower);
    }
}

TEST(TurkishText, SortsByTheAlphabetWithoutCase) {
    QStringList names{"Zafer", "şahin", "Çağrı", "Ilgaz", "ipek", "Gül",  "ğ",    "Cem",
                      "Ömer",  "Osman", "Işık",  "Deniz", "Ümit", "Uğur", "Hale", "Sıla"};
    sortTurkish(names);
    EXPECT_EQ(names.join(' ').toStdString(),
              "Cem Çağrı Deniz Gül ğ Hale Ilgaz Işık ipek Osman Ömer Sıla şahin Uğur Ümit Zafer");
    EXPECT_TRUE(sameTurkish("IŞIK", "ışık"));
    EXPECT_FALSE(sameTurkish("IŞIK", "işik"));
}

TEST(TurkishText, FindsAsYouType) {
    EXPECT_TRUE(containsTurkish("İPEK Işıl", "ipek"));
    EXPECT_TRUE(containsTurkish("IŞIK", "ış"));
    EXPECT_FALSE(containsTurkish("IŞIK", "iş"));
    EXPECT_TRUE(containsTurkish("herhangi", ""));
}

TEST(TurkishText, TrimTakesBlanksOnly) {
    EXPECT_EQ(trimBlanks("  a b \t "), "a b \t");
    EXPECT_EQ(trimBlanks("   "), "");
}

TEST(TurkishText, CodePages) {
    struct Case {
        const char* text;
        QByteArray windows, iso;
        bool windowsLossless, isoLossless;
    };
    const Case cases[] = {
        {"ĞİŞğış", "\xD0\xDD\xDE\xF0\xFD\xFE", "\xD0\xDD\xDE\xF0\xFD\xFE", true, true},
        {"Çölü", "\xC7\xF6l\xFC", "\xC7\xF6l\xFC", true, true},
        {"€ „x”", "\x80 \x84x\x94", "? ?x?", true, false},
        {"日", "?", "?", false, false},
    };
    for (const Case& c : cases) {
        bool lossless = false;
        EXPECT_EQ(toCodePage(c.text, CodePage::Windows1254, &lossless), c.windows) << c.text;
        EXPECT_EQ(lossless, c.windowsLossless) << c.text;
        EXPECT_EQ(toCodePage(c.text, CodePage::Iso8859_9, &lossless), c.iso) << c.text;
        EXPECT_EQ(lossless, c.isoLossless) << c.text;
    }
    // Every byte comes back as itself.
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    for (const CodePage page : {CodePage::Windows1254, CodePage::Iso8859_9})
        EXPECT_EQ(toCodePage(fromCodePage(all, page), page), all);
}

} // namespace
