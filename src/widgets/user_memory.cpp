// widgets/user_memory.cpp — keys of the user's .ini file.
#include "widgets/user_memory.h"

#include <QUrl>

namespace orvan {

void UserMemory::setUser(const QString& user) { user_ = QString::fromLatin1(QUrl::toPercentEncoding(user)); }

QVariant UserMemory::value(const QString& key, const QVariant& otherwise) const {
    return settings_.value(full(key), otherwise);
}

void UserMemory::setValue(const QString& key, const QVariant& value) { settings_.setValue(full(key), value); }

QString UserMemory::full(const QString& key) const {
    return (user_.isEmpty() ? QStringLiteral("Genel/") : QStringLiteral("Kullanici-") + user_ + u'/') + key;
}

} // namespace orvan
