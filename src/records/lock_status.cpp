// records/lock_status.cpp — see lock_status.h.
#include "records/lock_status.h"

#include "core/passwords.h"
#include "core/values.h"
#include "jet/pages/io.h"
#include "jet/pages/lock_file.h"

#include <QFileInfo>

namespace orvan {
namespace {

bool isOwn(DatabaseSet& databases, const QFileInfo& file) {
    if (!databases.isOpen()) return false;
    for (Connection* open :
         {&databases.level(), &databases.constants(), &databases.workplaces(), &databases.coordinators()})
        if (QFileInfo(open->file()) == file) return true;
    return false;
}

// "PC-3 Admin" → "PC-3": the second word is the same for everybody.
QString computerOf(const std::string& user) { return fromUtf8(user).section(QLatin1Char(' '), 0, -2); }

LockStatus statusOf(DatabaseSet& databases, const QString& file) {
    LockStatus status;
    status.file = file;
    status.own = isOwn(databases, QFileInfo(file));
    status.journal = QFileInfo(file + QStringLiteral("-journal")).size() > 0;
    try {
        const auto io = jet::systemIo();
        jet::LockFile lock(*io, filePath(file), {}, 0);
        status.lockFile = std::filesystem::exists(lock.path());
        if (!lock.look()) return status;
        status.foreign = lock.foreignHere();
        bool leftOut = !status.own; // this program's own entry
        for (const std::string& user : lock.users(jet::LockFile::Whom::Others)) {
            if (!leftOut && fromUtf8(user).startsWith(fromUtf8(io->computerName()))) {
                leftOut = true;
                continue;
            }
            status.others << computerOf(user);
        }
    } catch (const std::exception& error) {
        status.fault = errorText(error);
    }
    return status;
}

} // namespace

QString LockStatus::words() const {
    if (!fault.isEmpty()) return QStringLiteral("Kilit dosyasına bakılamadı: %1").arg(fault);
    if (foreign) return QStringLiteral("Başka bir veritabanı programında açık");
    if (!others.isEmpty()) return QStringLiteral("Kullanılıyor");
    if (own) return QStringLiteral("Yalnız bu programda açık");
    if (journal) return QStringLiteral("Yarım kalmış bir yazma var; açılınca geri alınır");
    return lockFile ? QStringLiteral("Artık kilit dosyası var, kimse kullanmıyor")
                    : QStringLiteral("Kimse kullanmıyor");
}

std::vector<LockStatus> lockStatus(DatabaseSet& databases) {
    std::vector<LockStatus> all;
    for (const QString& file : databases.folder().files(QStringLiteral("\\Data"), QStringLiteral("mdb")))
        all.push_back(statusOf(databases, file));
    return all;
}

QStringList removeLeftLocks(DatabaseSet& databases) {
    QStringList report;
    for (const LockStatus& status : lockStatus(databases)) {
        if (status.inUse() || !(status.leftBehind() || status.journal)) continue;
        const QString name = QFileInfo(status.file).fileName();
        try {
            Connection(status.file, legacyPassword());
            const LockStatus now = statusOf(databases, status.file);
            report << (now.lockFile || now.journal
                           ? QStringLiteral("%1: kilit dosyası kaldırılamadı. %2.").arg(name, now.words())
                           : QStringLiteral("%1: artık kilit kaldırıldı.").arg(name));
        } catch (const std::exception& error) {
            report << QStringLiteral("%1: %2").arg(name, errorText(error));
        }
    }
    return report;
}

} // namespace orvan
