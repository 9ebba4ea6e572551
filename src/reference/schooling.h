// reference/schooling.h — the list of prior-schooling levels: the current 22, and what becomes of the list of
// older releases (upper-case words and codes of its own).
#pragma once

#include "core/database_set.h"

#include <span>

namespace orvan {

struct SchoolingLevel {
    const char* code;
    const char* description;
    const char* olderDescription; // short upper-case form of the older list
};
std::span<const SchoolingLevel> schoolingLevels();

// The current level that a description of the older list stands for; nullptr when it is none of them.
const SchoolingLevel* schoolingOfOlder(const QString& description);

struct SchoolingRewrite {
    int rows = 0;     // of the list
    int students = 0; // whose code follows
    QString obstacle; // a definition of the centre's own holds a code that is needed; nothing was changed
};
int countOlderSchooling(jet::SqlSession& level); // rows of the older list
// Rewrites the rows of the older list in place; the students' codes follow. Safe to repeat.
SchoolingRewrite rewriteOlderSchooling(Connection& level);
// The same over every level file of \Data; names of the files that could not be opened or hold an obstacle.
QStringList rewriteOlderSchoolingEverywhere(const ProgramFolder& folder, const Session& session);

// "Listeyi Yenile": rewrites the older list where it is present, otherwise replaces the list by the current
// 22 rows; asks first. True: the list is the current one. `title`: the screen's, for the right to write.
bool renewSchooling(DatabaseSet& databases, Dialogs& dialogs, const QString& title);

} // namespace orvan
