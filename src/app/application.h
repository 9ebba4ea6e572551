// app/application.h — the Qt application: Turkish formats and texts of Qt's own boxes, one running program
// per folder, and the general error box for what nobody caught.
#pragma once

#include "core/dialogs.h"

#include <QApplication>
#include <QLockFile>
#include <QTranslator>

namespace orvan {

class Application : public QApplication {
    Q_OBJECT

  public:
    // dialogs must outlive it.
    Application(int& argc, char** argv, Dialogs& dialogs);

    // False: the program already runs on this folder for this user of the computer.
    bool claimFolder(const QString& programFolder);

    bool notify(QObject* receiver, QEvent* event) override;

  private:
    Dialogs& dialogs_;
    QTranslator qtTexts_;
    std::unique_ptr<QLockFile> running_;
};

// Before the Application is made: a run for pictures only needs no display.
void chooseScreen(int argc, char** argv);

// Where the screens' places and column widths of this computer's user are kept.
QString memoryFile();

} // namespace orvan
