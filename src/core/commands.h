// core/commands.h — the command keys of the main window, and the one dispatcher through which every screen is
// opened. Knows no window: screens are made by factories that `app` registers; the main window implements
// Shell.
#pragma once

#include "core/database_set.h"

#include <functional>
#include <optional>
#include <span>
#include <vector>

class QWidget;

namespace orvan {

enum class CommandKind {
    Screen,  // opens the screen registered under the key
    Level,   // switches the level database
    DataSet, // switches between working set and archives
    Own,     // the program's own: change of user, release notes, …
};

struct CommandInfo {
    const char* key;   // compared exactly, case matters
    const char* title; // title under which the right to enter is stored, UTF-8; empty: everybody may
    CommandKind kind = CommandKind::Screen;
};
std::span<const CommandInfo> commandList();         // every command, in dispatch order
const CommandInfo* findCommand(const QString& key); // the first equal key; nullptr when there is none

// The key of the session's level ("ToolDenklikK") and of its data set ("NormalArsiv").
QString levelCommand(const Session& session);
QString dataSetCommand(const Session& session);

struct ScreenEntry {
    QString key;
    QString window;                    // class of the window
    QString title;                     // the window's caption
    QString rights;                    // title under which the right to enter is stored
    std::function<QWidget*()> factory; // a new window; the shell owns it. Opaque to the rules
};

// Which screens exist. `app` fills it by explicit calls at start.
class ScreenRegistry {
  public:
    // The title comes from commandList(). REQUIRES: the key is a screen's and not yet registered.
    void add(const QString& key, const QString& window, std::function<QWidget*()> factory);
    // A window that no command opens, only other windows. REQUIRES: no command and no other window has the
    // key.
    void addInner(ScreenEntry entry);
    const ScreenEntry* find(const QString& key) const; // nullptr when there is none
    const std::vector<ScreenEntry>& entries() const { return entries_; }

  private:
    std::vector<ScreenEntry> entries_;
};

// What the dispatcher asks of the main window.
class Shell {
  public:
    virtual ~Shell() = default;
    virtual void openScreen(const ScreenEntry& entry) = 0; // as a child of the main window
    // Unsaved work of the open screens is saved or thrown away, as the person decides. False: he has to stay.
    virtual bool settleScreens() = 0;
    virtual void databaseChanged() = 0; // level or data set switched: caption, status bar, open screens
    virtual void signInAgain() = 0;     // the session's user has been cleared
    virtual void quit() = 0;
    virtual void showDocument(const QString& file) = 0;
    virtual bool startProgram(const QString& file) = 0; // false when it could not be started
};

class CommandDispatcher {
  public:
    // All must outlive it.
    CommandDispatcher(const ScreenRegistry& screens, DatabaseSet& databases, Dialogs& dialogs, Shell& shell);
    // An unknown key does nothing. A failing Connect after a switch shows the general error and keeps the old
    // state; so does an archive of which there is no file.
    void onCommand(const QString& key);
    // The same for a window that another window asks for: inner windows too.
    void onRequest(const QString& key);
    // The command is known and a screen (or an action) stands behind it; for enabling menu entries.
    bool available(const QString& key) const;

  private:
    bool mayEnter(const QString& title);
    void openScreen(const QString& key);
    void switchLevel(const QString& key);
    void switchDataSet(const QString& key);
    void runOwnCommand(const QString& key);
    void changeUser();
    void reconnect(const Session& wanted);
    enum class Open { Document, Program };
    void openFileOf(const QString& literal, Open how);
    const ScreenRegistry& screens_;
    DatabaseSet& databases_;
    Dialogs& dialogs_;
    Shell& shell_;
};

} // namespace orvan
