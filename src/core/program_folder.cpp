// core/program_folder.cpp — matching of names component by component, as a file system without case would.
#include "core/program_folder.h"

#include "core/values.h"
#include "jet/error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace orvan {
namespace {

QStringList components(const QString& literal) {
    QString slashed = literal;
    slashed.replace(QLatin1Char('\\'), QLatin1Char('/'));
    return slashed.split(QLatin1Char('/'), Qt::SkipEmptyParts);
}

#ifdef Q_OS_WIN
// The entry of `folder` called `name` apart from case, which the system does not mind, in the spelling of the
// disk; empty when there is none.
QString matchEntry(const QString& folder, const QString& name) {
    WIN32_FIND_DATAW found;
    const QString path = QDir::toNativeSeparators(folder + QLatin1Char('/') + name);
    const HANDLE search = FindFirstFileW(reinterpret_cast<const wchar_t*>(path.utf16()), &found);
    if (search == INVALID_HANDLE_VALUE) return {};
    FindClose(search);
    const QString entry = QString::fromWCharArray(found.cFileName);
    return entry.compare(name, Qt::CaseInsensitive) == 0 ? entry : name; // else its short name was asked for
}
#else
// The entry of `folder` called `name` apart from case; empty when there is none. The exact spelling wins.
QString matchEntry(const QString& folder, const QString& name) {
    if (QFileInfo::exists(folder + QLatin1Char('/') + name)) return name;
    const auto entries = QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& entry : entries)
        if (entry.compare(name, Qt::CaseInsensitive) == 0) return entry;
    return {};
}
#endif

} // namespace

ProgramFolder::ProgramFolder(const QString& path) : path_(QDir::cleanPath(QDir(path).absolutePath())) {}

QString ProgramFolder::resolve(const QString& literal) const {
    QString path = path_;
    bool found = true;
    for (const QString& name : components(literal)) {
        const QString match = found ? matchEntry(path, name) : QString();
        found = !match.isEmpty();
        path += QLatin1Char('/') + (found ? match : name);
    }
    return path;
}

bool ProgramFolder::exists(const QString& literal) const { return QFileInfo::exists(resolve(literal)); }

bool ProgramFolder::createFolder(const QString& literal) const { return QDir().mkpath(resolve(literal)); }

void ProgramFolder::ensureFolder(const QString& literal) const {
    if (exists(literal) || createFolder(literal)) return;
    jet::Error error(jet::Err::PathNotValid, "Klasör oluşturulamadı.");
    throw error.inFile(utf8(resolve(literal)));
}

bool ProgramFolder::mayWrite(const QString& literal) const {
    QTemporaryFile trial(resolve(literal) + QStringLiteral("/orvan-XXXXXX.tmp"));
    return trial.open();
}

QStringList ProgramFolder::files(const QString& folderLiteral, const QString& extension) const {
    QStringList found;
    const QDir folder(resolve(folderLiteral));
    for (const QFileInfo& file : folder.entryInfoList(QDir::Files | QDir::Hidden, QDir::Name))
        if (file.suffix().compare(extension, Qt::CaseInsensitive) == 0) found << file.absoluteFilePath();
    return found;
}

void ProgramFolder::copy(const QString& fromLiteral, const QString& toLiteral) const {
    const QString from = resolve(fromLiteral);
    const QString to = resolve(toLiteral);
    if (!QFileInfo::exists(from)) {
        jet::Error error(jet::Err::FileNotFound, "Dosya bulunamadı.");
        throw error.inFile(utf8(from));
    }
    // Under another name first, so that a copy cut short is never taken for a database.
    const QString unfinished = to + QStringLiteral(".kopya");
    QFile::remove(unfinished);
    const bool copied = QFile::copy(from, unfinished) &&
                        QFile::setPermissions(unfinished, QFile::permissions(unfinished) | QFile::WriteOwner |
                                                              QFile::WriteUser);
    if (copied && QFile::rename(unfinished, to)) return;
    QFile::remove(unfinished);
    if (QFileInfo::exists(to)) return; // another workstation was faster
    jet::Error error(jet::Err::DiskIO, "Dosya kopyalanamadı.");
    throw error.inFile(utf8(to));
}

} // namespace orvan
