// core/ini_file.cpp — line-keeping INI reader and writer.
#include "core/ini_file.h"

#include "core/turkish_text.h"
#include "core/values.h"
#include "jet/error.h"

#include <QFile>
#include <QSaveFile>

namespace orvan {
namespace {

bool sameWord(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

QByteArray readAll(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeAll(const QString& path, const QByteArray& bytes) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit()) return;
    jet::Error error(jet::Err::DiskIO, "Dosya yazılamadı.");
    throw error.inFile(utf8(path));
}

bool isSectionLine(const QString& line) {
    const QString trimmed = line.trimmed();
    return trimmed.startsWith(QLatin1Char('[')) && trimmed.endsWith(QLatin1Char(']'));
}

} // namespace

IniFile::IniFile(const QString& path) : path_(path) {
    const QString text = fromCodePage(readAll(path), CodePage::Windows1254);
    lines_ = text.split(QLatin1Char('\n'));
    for (QString& line : lines_)
        if (line.endsWith(QLatin1Char('\r'))) line.chop(1);
    while (!lines_.isEmpty() && lines_.last().isEmpty())
        lines_.removeLast();
}

int IniFile::findSection(const QString& section) const {
    for (int i = 0; i < lines_.size(); ++i) {
        if (!isSectionLine(lines_[i])) continue;
        const QString line = lines_[i].trimmed();
        if (sameWord(line.mid(1, line.size() - 2).trimmed(), section)) return i;
    }
    return -1;
}

int IniFile::findKey(int sectionLine, const QString& key) const {
    for (int i = sectionLine + 1; i < lines_.size() && !isSectionLine(lines_[i]); ++i) {
        const auto equals = lines_[i].indexOf(QLatin1Char('='));
        if (equals >= 0 && sameWord(lines_[i].left(equals).trimmed(), key)) return i;
    }
    return -1;
}

QString IniFile::value(const QString& section, const QString& key) const {
    const int sectionLine = findSection(section);
    if (sectionLine < 0) return {};
    const int line = findKey(sectionLine, key);
    return line < 0 ? QString() : lines_[line].mid(lines_[line].indexOf(QLatin1Char('=')) + 1).trimmed();
}

void IniFile::setValue(const QString& section, const QString& key, const QString& value) {
    int sectionLine = findSection(section);
    if (sectionLine < 0) {
        sectionLine = static_cast<int>(lines_.size());
        lines_ << QLatin1Char('[') + section + QLatin1Char(']');
    }
    const QString text = key + QLatin1Char('=') + value;
    const int line = findKey(sectionLine, key);
    if (line >= 0)
        lines_[line] = text;
    else
        lines_.insert(sectionLine + 1, text);
}

void IniFile::save() const {
    writeAll(path_,
             toCodePage(lines_.join(QStringLiteral("\r\n")) + QStringLiteral("\r\n"), CodePage::Windows1254));
}

QString readOneValueFile(const QString& path) {
    return fromCodePage(readAll(path), CodePage::Windows1254).trimmed();
}

void writeOneValueFile(const QString& path, const QString& value) {
    writeAll(path, toCodePage(value + QStringLiteral("\r\n"), CodePage::Windows1254));
}

} // namespace orvan
