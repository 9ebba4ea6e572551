// core/screens/main_window.h — the frame in which every screen opens as a child window: menus, toolbar,
// status bar, and the dispatcher behind them. Knows no particular screen.
#pragma once

#include "core/commands.h"
#include "core/startup.h"

#include <QMainWindow>

class QActionGroup;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QToolBar;

namespace orvan {

struct MenuCommand;
struct MenuPlan;
class Screen;
class UserMemory;

// What the main window works with; all must outlive it.
struct Program {
    const ProgramFolder& folder;
    Session& session;
    DatabaseSet& databases;
    Dialogs& dialogs;
    UserMemory& memory;
    const ScreenRegistry& screens;
    StartHost& host;
};

class MDIFormORVAN : public QMainWindow, public Shell {
    Q_OBJECT

  public:
    explicit MDIFormORVAN(const Program& program, QWidget* parent = nullptr);
    ~MDIFormORVAN() override;

    // Shows the window where it was last time on this computer; at first over the whole screen.
    void showInPlace();
    // Asks the user in and opens the databases. False: the program is to end.
    bool beginSession();
    // The databases are open for session.user: menus come alive.
    void sessionReady();
    // Runs a command as its menu entry does.
    void run(const QString& key);

    QList<Screen*> openScreens() const;

    // Shell
    void openScreen(const ScreenEntry& entry) override;
    bool settleScreens() override;
    void databaseChanged() override;
    void signInAgain() override;
    void quit() override;
    void showDocument(const QString& file) override;
    bool startProgram(const QString& file) override;

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void buildMenus();
    QMenu* makeMenu(const MenuPlan& plan, QWidget* parent); // nullptr when nothing stands behind its commands
    void addCommand(QMenu* menu, const MenuCommand& command);
    void addToToolbar(QAction* action, const MenuCommand& command);
    void buildWindowMenu();
    void fillWindowMenu();
    void buildHelpMenu();
    void buildStatusBar();
    void showShortcuts();
    void showState();
    void closeScreens();
    void openRecord(const QString& key, const QString& record);
    QMdiSubWindow* frameOf(const QString& key) const; // nullptr when that screen is not open
    void rememberPlace(QMdiSubWindow* window);
    void place(QMdiSubWindow* window, const QString& name);

    Program program_;
    CommandDispatcher dispatcher_;
    QMdiArea* area_;
    QToolBar* toolbar_ = nullptr;
    QMenu* windowMenu_ = nullptr;
    QActionGroup* levels_ = nullptr;
    QActionGroup* dataSets_ = nullptr;
    QLabel *level_ = nullptr, *dataSet_ = nullptr, *school_ = nullptr, *user_ = nullptr;
};

} // namespace orvan
