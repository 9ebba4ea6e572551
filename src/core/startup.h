// core/startup.h — the program's start: fourteen named steps in a fixed order, ten before the main window
// works and four after the sign-in. What a step asks of the computer or of a window goes through StartHost.
#pragma once

#include "core/database_set.h"

#include <span>

namespace orvan {

enum class StartStep {
    SingleInstance,
    InitialLevel,
    ProgramFolder,
    RegionalFormats,
    Splash,
    OldSingleDatabase,
    DataFolder,
    PasswordSweep,
    ExamTables,
    MainWindow,
    // after the sign-in
    ClearPasswords,
    Connect,
    StructureCheck,
    OldStudents,
};

// What the start asks of the computer and of the windows.
class StartHost {
  public:
    virtual ~StartHost() = default;
    virtual void stepBegins(StartStep step, const QString& name) = 0;
    virtual bool claimFolder() = 0; // false: the program already runs on this folder
    virtual void makeSplash() = 0;  // in the middle of the screen, not shown yet
    virtual void setRegionalFormats() = 0;
    virtual void showSplash() = 0;
    virtual void showMainWindow() = 0;
    virtual void maintain() = 0; // after the last step: what the subsystems put right after each sign-in
};

struct Start { // all must outlive the run
    const ProgramFolder& folder;
    Session& session;
    DatabaseSet& databases;
    Dialogs& dialogs;
    StartHost& host;
};

struct StartStepInfo {
    StartStep step;
    const char* name;          // a line for the splash screen, Turkish
    bool (*run)(Start& start); // false: the program ends here, the person has been told why
};
std::span<const StartStepInfo> stepsBeforeSignIn();
std::span<const StartStepInfo> stepsAfterSignIn();

// Runs the steps before the sign-in; false: the program ends. Throws jet::Error (show the general error).
bool runStart(Start& start);
// Runs the steps after it, then the maintenance. Throws jet::Error; the set is closed then, if it was.
void openAfterSignIn(Start& start);

// The once-only correction of old student records: registration dates before 01.07.2005 of students of the
// first curriculum get the one form dd.MM.yyyy. Over every level file of \Data; marked in \Yapi.sys when all
// could be read. Returns how many records were changed.
int correctOldStudents(const ProgramFolder& folder, const Session& session);

// Creates what the three exam databases lack, then the marker \dbsfrkontrol.txt; does nothing when that is
// there.
void createExamTables(const ProgramFolder& folder, const Schema& schema);

} // namespace orvan
