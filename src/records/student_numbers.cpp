// records/student_numbers.cpp — the numbering rule, with the system's own statements.
#include "records/student_numbers.h"

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

// Next serial as written: one more at the width of the last, or the first serial of a profession.
QString nextSerial(const jet::ResultSet& rows) {
    if (!rows.empty()) {
        const qint64 serial = leadingNumber(rows.at(0, "SayisalNumara"));
        const qsizetype width = toText(rows.at(0, "KarakterNumara")).size();
        if (serial != 0 && width >= 1) return zeroPadded(serial + 1, width);
    }
    return QStringLiteral("00001");
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
    const QString serial = nextSerial(rows);
    const QString code =
        professionCode.trimmed().rightJustified(kCodeLength, QLatin1Char('0')).left(kCodeLength);
    return code + zeroPadded(serial.toLongLong(), std::max<qsizetype>(serial.size(), options.serialLength));
}

StudentNumbers nextNumbers(jet::SqlSession& level, const QString& professionCode,
                           const NumberingOptions& options) {
    return {nextRegistrationNo(level), nextStudentNo(level, professionCode, options)};
}

} // namespace orvan
