// tests/jet/index/text_key_examples.h — texts with the keys that Jet makes of them, in hexadecimal.
#pragma once

namespace orvan_test {

struct TextKeyExample {
    const char* text;
    const char* general; // key under 0x0409
    const char* turkish; // key under 0x041F; nullptr: the same
};

// clang-format off
inline constexpr TextKeyExample kTextKeyExamples[] = {
    {"", "7f 01 00", nullptr},
    {"A", "7f 4a 01 00", nullptr},
    {"a", "7f 4a 01 00", nullptr},
    {"ALİ", "7f 4a 5e 59 01 02 02 10 00", "7f 4a 5e 59 01 00"},
    {"ali", "7f 4a 5e 59 01 00", nullptr},
    {"ALI", "7f 4a 5e 59 01 00", "7f 4a 5e 58 06 01 00"},
    {"alı", "7f 4a 5e 59 01 02 02 03 00", "7f 4a 5e 58 06 01 00"},
    {"Ali Veli", "7f 4a 5e 59 07 71 51 5e 59 01 00", nullptr},
    {"AliVeli", "7f 4a 5e 59 71 51 5e 59 01 00", nullptr},
    {"ILGIN", "7f 59 5e 55 59 62 01 00", "7f 58 06 5e 55 58 06 62 01 00"},
    {"ılgın", "7f 59 5e 55 59 62 01 03 02 02 03 00", "7f 58 06 5e 55 58 06 62 01 00"},
    {"İLGİN", "7f 59 5e 55 59 62 01 10 02 02 10 00", "7f 59 5e 55 59 62 01 00"},
    {"ilgin", "7f 59 5e 55 59 62 01 00", nullptr},
    {"İSTANBUL", "7f 59 6b 6d 4a 62 4c 6f 5e 01 10 00", "7f 59 6b 6d 4a 62 4c 6f 5e 01 00"},
    {"istanbul", "7f 59 6b 6d 4a 62 4c 6f 5e 01 00", nullptr},
    {"ISTANBUL", "7f 59 6b 6d 4a 62 4c 6f 5e 01 00", "7f 58 06 6b 6d 4a 62 4c 6f 5e 01 00"},
    {"Çiğdem", "7f 4d 59 55 4f 51 60 01 1c 02 15 00", "7f 4e 03 59 56 02 4f 51 60 01 00"},
    {"ÇİĞDEM", "7f 4d 59 55 4f 51 60 01 1c 10 15 00", "7f 4e 03 59 56 02 4f 51 60 01 00"},
    {"CIGDEM", "7f 4d 59 55 4f 51 60 01 00", "7f 4d 58 06 55 4f 51 60 01 00"},
    {"cigdem", "7f 4d 59 55 4f 51 60 01 00", nullptr},
    {"ŞÜKRÜ", "7f 6b 6f 5c 69 6f 01 1c 13 02 02 13 00", "7f 6c 07 70 03 5c 69 70 03 01 00"},
    {"şükrü", "7f 6b 6f 5c 69 6f 01 1c 13 02 02 13 00", "7f 6c 07 70 03 5c 69 70 03 01 00"},
    {"Sukru", "7f 6b 6f 5c 69 6f 01 00", nullptr},
    {"Öğretmen", "7f 64 55 69 51 6d 60 51 62 01 13 15 00", "7f 65 02 56 02 69 51 6d 60 51 62 01 00"},
    {"OGRETMEN", "7f 64 55 69 51 6d 60 51 62 01 00", nullptr},
    {"Gül", "7f 55 6f 5e 01 02 13 00", "7f 55 70 03 5e 01 00"},
    {"gul", "7f 55 6f 5e 01 00", nullptr},
    {"O'Neil", "7f 64 62 51 59 5e 01 01 01 01 80 0b 06 80 00", nullptr},
    {"ONeil", "7f 64 62 51 59 5e 01 00", nullptr},
    {"O’Neil", "7f 64 2b 38 62 51 59 5e 01 00", nullptr},
    {"ABC-12", "7f 4a 4c 4d 38 3a 01 01 01 01 80 13 06 82 00", nullptr},
    {"ABC12", "7f 4a 4c 4d 38 3a 01 00", nullptr},
    {"AB-C12", "7f 4a 4c 4d 38 3a 01 01 01 01 80 0f 06 82 00", nullptr},
    {"ABC 12", "7f 4a 4c 4d 07 38 3a 01 00", nullptr},
    {"a b", "7f 4a 07 4c 01 00", nullptr},
    {"a b ", "7f 4a 07 4c 01 00", nullptr},
    {"a  b", "7f 4a 07 07 4c 01 00", nullptr},
    {"   a", "7f 07 07 07 4a 01 00", nullptr},
    {"x_1", "7f 75 2b 03 38 01 00", nullptr},
    {"x.1", "7f 75 1c 38 01 00", nullptr},
    {"x,1", "7f 75 1a 38 01 00", nullptr},
    {"(a)", "7f 14 4a 16 01 00", nullptr},
    {"0100", "7f 36 38 36 36 01 00", nullptr},
    {"10", "7f 38 36 01 00", nullptr},
    {"9", "7f 48 01 00", nullptr},
    {"1", "7f 38 01 00", nullptr},
    {"-1", "7f 38 01 01 01 01 80 07 06 82 00", nullptr},
    {"1-", "7f 38 01 01 01 01 80 0b 06 82 00", nullptr},
    {"'a", "7f 4a 01 01 01 01 80 07 06 80 00", nullptr},
    {"a'", "7f 4a 01 01 01 01 80 0b 06 80 00", nullptr},
    {"--", "7f 01 01 01 01 80 07 06 82 80 07 06 82 00", nullptr},
    {"%5", "7f 10 40 01 00", nullptr},
    {"Kâğıt", "7f 5c 4a 55 59 6d 01 02 12 15 03 00", "7f 5c 4a 56 02 58 06 6d 01 02 12 00"},
    {"KAĞIT", "7f 5c 4a 55 59 6d 01 02 02 15 00", "7f 5c 4a 56 02 58 06 6d 01 00"},
    {"kâmil", "7f 5c 4a 60 59 5e 01 02 12 00", nullptr},
    {"Hâlâ", "7f 57 4a 5e 4a 01 02 12 02 12 00", nullptr},
    {"é", "7f 51 01 0e 00", nullptr},
    {"Straße", "7f 6b 6d 69 4a 6b 6b 51 01 00", nullptr},
    {"æ", "7f 4a 51 01 00", nullptr},
    {"naïve", "7f 62 4a 59 71 51 01 02 02 13 00", nullptr},
    {"a\u00ADb", "7f 4a 4c 01 01 01 01 80 0b 06 83 00", nullptr},
    {"€5", "7f 35 a1 40 01 00", nullptr},
    {"₺5", "7f 40 01 00", nullptr},
    {"½", "7f 37 16 01 00", nullptr},
    {"№1", "7f 63 02 38 01 00", nullptr},
    {"ğ", "7f 55 01 15 00", "7f 56 02 01 00"},
    {"Ğ", "7f 55 01 15 00", "7f 56 02 01 00"},
    {"j", "7f 5b 01 00", nullptr},
    {"h", "7f 57 01 00", nullptr},
    {"z", "7f 78 01 00", nullptr},
    {"Iğdır", "7f 59 55 4f 59 69 01 02 15 02 03 00", "7f 58 06 56 02 4f 58 06 69 01 00"},
    {"ırmak", "7f 59 69 60 4a 5c 01 03 00", "7f 58 06 69 60 4a 5c 01 00"},
    {"izmir", "7f 59 78 60 59 69 01 00", nullptr},
    {"İzmir", "7f 59 78 60 59 69 01 10 00", "7f 59 78 60 59 69 01 00"},
    {"ISPARTA", "7f 59 6b 66 4a 69 6d 4a 01 00", "7f 58 06 6b 66 4a 69 6d 4a 01 00"},
    {"hız", "7f 57 59 78 01 02 03 00", "7f 57 58 06 78 01 00"},
    {"hiz", "7f 57 59 78 01 00", nullptr},
};

struct StoredTextKey {
    const char* text;
    const char* key;
};

// Found in the index of a Turkish file.
inline constexpr StoredTextKey kStoredTurkishKeys[] = {
    {"ögrenciler", "7f 65 02 55 69 51 62 4d 59 5e 51 69 01 00"},
    {"sınıf", "7f 6b 58 06 62 58 06 53 01 00"},
    {"Okulsınıf", "7f 64 5c 6f 5e 6b 58 06 62 58 06 53 01 00"},
    {"AĞRI", "7f 4a 56 02 69 58 06 01 00"},
    {"BİNGÖL", "7f 4c 59 62 55 65 02 5e 01 00"},
    {"ÇANKIRI", "7f 4e 03 4a 62 5c 58 06 69 58 06 01 00"},
    {"DÜZCE", "7f 4f 70 03 78 4d 51 01 00"},
    {"ESKİŞEHİR", "7f 51 6b 5c 59 6c 07 51 57 59 69 01 00"},
    {"GÜMÜŞHANE", "7f 55 70 03 60 70 03 6c 07 57 4a 62 51 01 00"},
    {"IĞDIR", "7f 58 06 56 02 4f 58 06 69 01 00"},
    {"ISPARTA", "7f 58 06 6b 66 4a 69 6d 4a 01 00"},
    {"İSTANBUL", "7f 59 6b 6d 4a 62 4c 6f 5e 01 00"},
    {"MUĞLA", "7f 60 6f 56 02 5e 4a 01 00"},
    {"ŞIRNAK", "7f 6c 07 58 06 69 62 4a 5c 01 00"},
    {"UŞAK", "7f 6f 6c 07 4a 5c 01 00"},
};
// clang-format on

} // namespace orvan_test
