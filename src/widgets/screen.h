// widgets/screen.h — what every window inside the main window is: a name, a title, a title mark while
// something is unsaved, and the question before unsaved work is left. Ctrl+S saves, Esc closes, F5 reads
// again.
#pragma once

#include "core/dialogs.h"

#include <functional>
#include <QWidget>

namespace orvan {

class Screen : public QWidget {
    Q_OBJECT

  public:
    // `name` is the screen's own name (object name); dialogs must outlive it.
    Screen(const QString& name, const QString& title, Dialogs& dialogs, QWidget* parent = nullptr);

    bool hasUnsaved() const { return isWindowModified(); }
    // Nothing unsaved, or the person has decided: saved, or thrown away. False: he has to stay (the save was
    // refused).
    bool settleUnsaved();

    void closeWindow(); // as Esc does: asks when something is unsaved

    virtual bool save() { return true; } // true: nothing is unsaved any more
    // Save after the person has said yes on leaving; for a screen whose save() asks a question of its own.
    virtual bool saveOnLeaving() { return save(); }
    virtual void discardChanges() {} // the unsaved record as it was loaded
    virtual void refresh() {}        // reads again what others may have changed
    // Shows that record, for a screen that shows one at a time (a student by his number). Nothing unsaved is
    // on it.
    virtual void showRecord(const QString& /*record*/) {}

  signals:
    void recordsChanged(); // this screen has written: the other open screens read again
    // The person wants to see `record` in the screen of command `key`.
    void openRequested(const QString& key, const QString& record);

  protected:
    void setUnsaved(bool unsaved) { setWindowModified(unsaved); }
    // Runs `work`; an unexpected error becomes the general error box, which may end the program.
    void attempt(const QString& routine, const std::function<void()>& work);
    Dialogs& dialogs() const { return dialogs_; }
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    Dialogs& dialogs_;
};

// The same for what is no screen. True when `work` ended without an error.
bool attempt(Dialogs& dialogs, const QString& routine, const std::function<void()>& work);

} // namespace orvan
