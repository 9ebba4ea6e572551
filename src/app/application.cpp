// app/application.cpp — set-up of the Qt application.
#include "app/application.h"

#include "core/general_error.h"
#include "core/structure_check.h"
#include "core/values.h"
#include "jet/pages/io.h"

#include <algorithm>
#include <QCryptographicHash>
#include <QDir>
#include <QLibraryInfo>
#include <QStandardPaths>
#include <QStyle>

namespace orvan {

namespace {

// A screen without a desktop (VNC) has no style of its own; Qt's oldest one would be used.
void takeReadableStyle() {
    const bool isOldest =
        QApplication::style()->name().compare(QLatin1String("windows"), Qt::CaseInsensitive) == 0;
    if (isOldest) QApplication::setStyle(QStringLiteral("Fusion"));
}

// Pictures need no display.
bool takesShots(int argc, char** argv) {
    return std::any_of(argv, argv + argc,
                       [](const char* word) { return QByteArray(word).startsWith("--shots"); });
}

} // namespace

void chooseScreen(int argc, char** argv) {
    const bool hasDisplay =
        !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    if (!hasDisplay && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && takesShots(argc, argv))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

Application::Application(int& argc, char** argv, Dialogs& dialogs)
    : QApplication(argc, argv), dialogs_(dialogs) {
    setApplicationName(QStringLiteral("orvan"));
    setApplicationVersion(releaseText(thisRelease()));
    takeReadableStyle();
    const QString texts = QStringLiteral("qtbase_tr");
    if (qtTexts_.load(texts, applicationDirPath() + QStringLiteral("/translations")) ||
        qtTexts_.load(texts, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        installTranslator(&qtTexts_);
}

bool Application::claimFolder(const QString& programFolder) {
    // The engine's own name of the folder: one for a drive and its share, links and letter case apart.
    const std::u8string folder =
        jet::systemIo()->resolve(filePath(QDir(programFolder).absolutePath())).u8string();
    const QByteArray name(reinterpret_cast<const char*>(folder.data()),
                          static_cast<qsizetype>(folder.size()));
    const QByteArray mark = QCryptographicHash::hash(name, QCryptographicHash::Sha1).toHex().left(16);
    const QString place = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    QDir().mkpath(place);
    running_ =
        std::make_unique<QLockFile>(QStringLiteral("%1/orvan-%2.lock").arg(place, QString::fromLatin1(mark)));
    running_->setStaleLockTime(0); // a lock is stale only when its program is gone
    if (running_->tryLock()) return true;
    return running_->error() !=
           QLockFile::LockFailedError; // a folder that takes no lock is no running program
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        const auto general =
            GeneralError::from(error, QString::fromLatin1(receiver->metaObject()->className()));
        if (showGeneralError(dialogs_, general, AfterError::MayContinue) == AfterError::EndProgram) exit(1);
        return true;
    }
}

QString memoryFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/orvan/ekranlar.ini");
}

} // namespace orvan
