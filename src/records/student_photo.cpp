// records/student_photo.cpp — see student_photo.h.
#include "records/student_photo.h"

#include <QFile>
#include <QFileInfo>

namespace orvan {
namespace {

struct Waiting {
    QString number, file, wanted; // student number; where the photo waits; its new place
    QString before;               // its old place
};

QString failure(const QString& number) {
    return QStringLiteral("%1 numaralı öğrencinin fotoğrafı yeni adını alamadı.").arg(number);
}

} // namespace

QString photoFile(const ProgramFolder& folder, const QString& studentNo) {
    // a number with a slash in it names no file
    QString name = studentNo;
    for (const QChar separator : QStringLiteral("/\\:*?\"<>|"))
        name.replace(separator, QLatin1Char('_'));
    return folder.resolve(QStringLiteral("\\data\\fotograf\\%1.jpg").arg(name));
}

QStringList renamePhotos(const ProgramFolder& folder, const std::vector<PhotoMove>& moves) {
    QStringList failures;
    std::vector<Waiting> waiting;
    for (const PhotoMove& move : moves) {
        const QString file = photoFile(folder, move.from);
        if (!QFileInfo::exists(file)) continue;
        Waiting photo{move.from, file + QStringLiteral(".yeni"), photoFile(folder, move.to), file};
        if (QFile::rename(file, photo.file))
            waiting.push_back(photo);
        else
            failures << failure(move.from);
    }
    for (const Waiting& photo : waiting) {
        if (!QFileInfo::exists(photo.wanted) && QFile::rename(photo.file, photo.wanted)) continue;
        QFile::rename(photo.file, photo.before);
        failures << failure(photo.number);
    }
    return failures;
}

} // namespace orvan
