// core/turkish_text.cpp — case and order come from the engine's own tables; the two code pages are written
// out here.
#include "core/turkish_text.h"

#include "core/values.h"
#include "jet/index/sort_key.h"

#include <algorithm>
#include <array>

namespace orvan {
namespace {

// Bytes 80..9F of code page 1254; 0 = not assigned, the byte then stands for itself.
constexpr std::array<char16_t, 32> kWindowsUpper = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0,      0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0,      0x0178};

struct Pair {
    unsigned char byte;
    char16_t letter;
};
// Where both Turkish code pages differ from Latin-1.
constexpr std::array<Pair, 6> kTurkishLetters = {
    {{0xD0, u'Ğ'}, {0xDD, u'İ'}, {0xDE, u'Ş'}, {0xF0, u'ğ'}, {0xFD, u'ı'}, {0xFE, u'ş'}}};

using Table = std::array<char16_t, 256>;

constexpr Table makeTable(CodePage page) {
    Table table{};
    for (size_t i = 0; i < table.size(); ++i)
        table[i] = static_cast<char16_t>(i);
    for (const Pair& pair : kTurkishLetters)
        table[pair.byte] = pair.letter;
    if (page == CodePage::Windows1254)
        for (size_t i = 0; i < kWindowsUpper.size(); ++i)
            if (kWindowsUpper[i]) table[0x80 + i] = kWindowsUpper[i];
    return table;
}

constexpr Table kWindows1254 = makeTable(CodePage::Windows1254);
constexpr Table kIso8859_9 = makeTable(CodePage::Iso8859_9);

const Table& tableOf(CodePage page) { return page == CodePage::Windows1254 ? kWindows1254 : kIso8859_9; }

} // namespace

QString upperTurkish(const QString& text) { return fromUtf8(jet::upperText(utf8(text), jet::kTurkishSort)); }

QString lowerTurkish(const QString& text) { return fromUtf8(jet::lowerText(utf8(text), jet::kTurkishSort)); }

int compareTurkish(const QString& a, const QString& b) {
    return jet::compareText(utf8(a), utf8(b), jet::kTurkishSort);
}

bool sameTurkish(const QString& a, const QString& b) { return compareTurkish(a, b) == 0; }

bool lessTurkish(const QString& a, const QString& b) { return compareTurkish(a, b) < 0; }

void sortTurkish(QStringList& texts) { std::stable_sort(texts.begin(), texts.end(), lessTurkish); }

bool containsTurkish(const QString& text, const QString& part) {
    return lowerTurkish(text).contains(lowerTurkish(part));
}

QString trimBlanks(const QString& text) {
    qsizetype begin = 0, end = text.size();
    while (begin < end && text[begin] == QLatin1Char(' '))
        ++begin;
    while (end > begin && text[end - 1] == QLatin1Char(' '))
        --end;
    return text.mid(begin, end - begin);
}

QByteArray toCodePage(const QString& text, CodePage page, bool* lossless) {
    const Table& table = tableOf(page);
    if (lossless) *lossless = true;
    QByteArray bytes;
    bytes.reserve(text.size());
    for (const QChar letter : text) {
        const char16_t code = letter.unicode();
        if (code < 0x80) {
            bytes += static_cast<char>(code);
            continue;
        }
        const auto found = std::find(table.begin() + 0x80, table.end(), code);
        if (found == table.end() && lossless) *lossless = false;
        bytes += found == table.end() ? '?' : static_cast<char>(found - table.begin());
    }
    return bytes;
}

QString fromCodePage(const QByteArray& bytes, CodePage page) {
    const Table& table = tableOf(page);
    QString text(bytes.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < bytes.size(); ++i)
        text[i] = QChar(table[static_cast<unsigned char>(bytes[i])]);
    return text;
}

} // namespace orvan
