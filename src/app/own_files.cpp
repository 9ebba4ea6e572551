// app/own_files.cpp — see own_files.h.
#include "app/own_files.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace orvan {

namespace {

constexpr auto kReleaseNotes = "Versiyon.htm";

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

void placeOwnFiles(const ProgramFolder& folder, const QString& programPlace) {
    const QString name = QLatin1String(kReleaseNotes);
    const QByteArray own = contentOf(QDir(programPlace).filePath(name));
    const QString target = folder.resolve(QLatin1Char('\\') + name);
    if (own.isEmpty() || contentOf(target) == own) return;
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly)) return;
    file.write(own);
    file.commit();
}

} // namespace orvan
