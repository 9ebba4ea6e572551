// core/session.h — what one signed-in person works on: level, data set, user, school. Passed in; there are no
// globals.
#pragma once

#include <QString>

namespace orvan {

enum class Level { Kalfa, Usta, UstaOgretici, IsyeriAcma, DenklikKalfa, DenklikUsta };
enum class DataSetMode : char { Working = 'N', Graduates = 'M', Leavers = 'A' };

QString levelText(Level level);           // "Kalfa", "Usta", "Usta Öğretici", "İşyeri Açma", …
QString dataSetCaption(DataSetMode mode); // "Normal Arşiv", "Mezunlar Arşivi", "Ayrılma Arşivi"

struct Session {
    Level level = Level::Kalfa;
    bool equivalence = false; // "Denklik": Kalfa and Usta mean the equivalence files
    DataSetMode mode = DataSetMode::Working;
    QString schoolYear; // selected school year, "2008-2009"; its first four characters name the archive files
    QString user;       // signed-in user; empty before the login
    QString schoolName; // SB_OKUL_ADI, read by Connect
    QString databasePassword;    // current password of every database file; empty in this release
    bool upgradeNeeded = false;  // result of the last structure check
    bool classesUpgrade = false; // the structure upgrade also revises the class tables

    QString equivalenceText() const { return equivalence ? QStringLiteral("Denklik") : QString(); }
};

} // namespace orvan
