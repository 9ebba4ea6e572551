// records/student_numbers.cpp — the numbering rule, with the system's own statements.
#include "records/student_numbers.h"

#include "core/turkish_text.h"
#include "core/values.h"

#include <algorithm>

namespace orvan {
namespace {

constexpr int kCodeLength = 4; // the serial begins at the next character

QString zeroPadded(qint64 number, qsizetype width) {
    return QString::number(number).rightJustified(width, QLatin1Char('0'));
}

// The leading number of a text, as Val reads it: 0 when there is none.
qint64 leadingNumber(const jet::Value& value) {
    try {
        return value.toInt();
    } catch (const jet::Error&) {
        return 0;
    }
}

struct Serial {
    qint64 number;
    qsizetype width; // digits at least
};

// One more at the width of the last, or the first serial of a profession.
Serial nextSerial(const jet::ResultSet& rows) {
    if (!rows.empty()) {
        const qint64 serial = leadingNumber(rows.at(0, "SayisalNumara"));
        const qsizetype width = toText(rows.at(0, "KarakterNumara")).size();
        if (serial > 0 && width >= 1) return {serial + 1, width};
    }
    return {1, 5};
}

// The serial always starts at the fifth character: a shorter code is filled up, a longer one is cut.
QString numberCode(const QString& professionCode) {
    return trimBlanks(professionCode).rightJustified(kCodeLength, QLatin1Char('0')).left(kCodeLength);
}

// Another profession can hold the number: codes that differ only after the fourth character share their
// numbers, and a student keeps his when he changes his profession.
bool isTaken(jet::SqlSession& level, const QString& number) {
    constexpr int kBlanksBefore = 6; // a number of nine characters in a field of fifteen
    std::vector<jet::Value> spellings;
    std::string places;
    for (int blanks = 0; blanks <= kBlanksBefore; ++blanks) {
        spellings.push_back(textValue(QString(blanks, QLatin1Char(' ')) + number));
        places += blanks == 0 ? "?" : ",?";
    }
    return !level
                .query("SELECT TOP 1 Ogr_Numarasi FROM OgrenciBilgisi WHERE Ogr_Numarasi IN (" + places + ")",
                       spellings)
                .empty();
}

} // namespace

NumberingOptions numberingOptions(jet::SqlSession& constants) {
    const auto rows = constants.query("SELECT KutukHane FROM SabitBilgiler;");
    NumberingOptions options;
    if (!rows.empty())
        options.serialLength =
            static_cast<int>(std::clamp<qint64>(leadingNumber(rows.at(0, size_t{0})), 0, 10));
    return options;
}

int nextRegistrationNo(jet::SqlSession& level) {
    const auto rows = level.query("SELECT MAX(Ogr_Kayit_No) AS Buyuk FROM OgrenciBilgisi;");
    return static_cast<int>(rows.empty() ? 0 : leadingNumber(rows.at(0, "Buyuk"))) + 1;
}

QString nextStudentNo(jet::SqlSession& level, const QString& professionCode,
                      const NumberingOptions& options) {
    const auto rows = level.query("SELECT MID(TRIM(Ogr_Numarasi), 5) AS KarakterNumara, "
                                  "VAL(MID(TRIM(Ogr_Numarasi) ,5)) AS SayisalNumara "
                                  "FROM OgrenciBilgisi WHERE Ogr_MeslekKod = ? ORDER BY "
                                  "VAL(TRIM(Ogr_Numarasi)) DESC, Ogr_Numarasi DESC;",
                                  Parameters{professionCode});
    Serial serial = nextSerial(rows);
    serial.width = std::max<qsizetype>(serial.width, options.serialLength);
    const QString code = numberCode(professionCode);
    for (;; ++serial.number) {
        const QString number = code + zeroPadded(serial.number, serial.width);
        if (!isTaken(level, number)) return number;
    }
}

StudentNumbers nextNumbers(jet::SqlSession& level, const QString& professionCode,
                           const NumberingOptions& options) {
    return {nextRegistrationNo(level), nextStudentNo(level, professionCode, options)};
}

} // namespace orvan
