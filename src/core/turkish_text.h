// core/turkish_text.h — Turkish upper and lower case, comparison and sorting, and the code pages of old text
// files. Own small tables: the same result on every system, whatever the system's locale.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace orvan {

QString upperTurkish(const QString& text); // i → İ, ı → I
QString lowerTurkish(const QString& text); // I → ı, İ → i
// <0, 0, >0 in the order of the database files (Turkish alphabet, without regard to case).
int compareTurkish(const QString& a, const QString& b);
bool sameTurkish(const QString& a, const QString& b);
bool lessTurkish(const QString& a, const QString& b);
void sortTurkish(QStringList& texts); // stable
// True when `part` occurs in `text`, without regard to case by Turkish rules; for find-as-you-type.
bool containsTurkish(const QString& text, const QString& part);
QString trimBlanks(const QString& text); // blanks (U+0020) at both ends only, as Trim does

enum class CodePage { Windows1254, Iso8859_9 };
// A character that the code page lacks becomes '?'; `lossless`, when given, tells whether that happened.
QByteArray toCodePage(const QString& text, CodePage page, bool* lossless = nullptr);
QString fromCodePage(const QByteArray& bytes, CodePage page);

} // namespace orvan
