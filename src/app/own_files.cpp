// app/own_files.cpp — see own_files.h.
#include "app/own_files.h"

#include <QDateTime>
#include <QDir>
#include <QSaveFile>

namespace orvan {

namespace {

constexpr qint64 kClockGrain = 2; // seconds; file systems store times that roughly

bool sameRelease(const QFileInfo& own, const QFileInfo& placed) {
    return placed.exists() && own.size() == placed.size() &&
           std::abs(own.lastModified().secsTo(placed.lastModified())) <= kClockGrain;
}

void place(const QFileInfo& own, const QString& target) {
    if (sameRelease(own, QFileInfo(target))) return;
    QFile source(own.filePath());
    QSaveFile copy(target);
    if (!source.open(QIODevice::ReadOnly) || !copy.open(QIODevice::WriteOnly)) return;
    copy.write(source.readAll());
    copy.setFileTime(own.lastModified(), QFileDevice::FileModificationTime);
    copy.commit();
}

void placeMatching(const ProgramFolder& folder, const QDir& place, const QString& pattern,
                   const QString& literal) {
    for (const QFileInfo& own : place.entryInfoList({pattern}, QDir::Files))
        orvan::place(own, folder.resolve(literal + own.fileName()));
}

} // namespace

void placeOwnFiles(const ProgramFolder& folder, const QString& programPlace) {
    const QDir place(programPlace);
    if (QFileInfo(programPlace) == QFileInfo(folder.path())) return;
    placeMatching(folder, place, QStringLiteral("*.htm"), QStringLiteral("\\"));
    const QDir templates(place.filePath(QStringLiteral("Mdx")));
    if (!templates.exists() || !folder.createFolder(QStringLiteral("\\Mdx"))) return;
    placeMatching(folder, templates, QStringLiteral("*.mdx"), QStringLiteral("\\Mdx\\"));
}

} // namespace orvan
