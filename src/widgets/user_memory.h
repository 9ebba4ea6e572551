// widgets/user_memory.h — what a user's screens remember between runs: window places, column widths, last
// choices. An .ini file of the person's own computer; losing it loses no data. Keys are kept per signed-in
// user.
#pragma once

#include <QSettings>
#include <QVariant>

namespace orvan {

class UserMemory {
  public:
    explicit UserMemory(const QString& iniFile) : settings_(iniFile, QSettings::IniFormat) {}

    void setUser(const QString& user); // empty before the login: what belongs to nobody

    QVariant value(const QString& key, const QVariant& otherwise = {}) const;
    void setValue(const QString& key, const QVariant& value);

  private:
    QString full(const QString& key) const;
    QSettings settings_;
    QString user_;
};

} // namespace orvan
