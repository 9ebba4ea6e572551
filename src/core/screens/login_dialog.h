// core/screens/login_dialog.h — asks for user name and password until the sign-in is accepted or given up.
#pragma once

#include "core/dialogs.h"
#include "core/program_folder.h"
#include "core/session.h"

#include <QDialog>

class QLineEdit;

namespace orvan {

class UserMemory;

class LoginDialog : public QDialog {
    Q_OBJECT

  public:
    // All must outlive it. Accepted: session.user is set. Rejected: the person wants to leave the program.
    LoginDialog(const ProgramFolder& folder, Session& session, Dialogs& dialogs, UserMemory& memory,
                QWidget* parent = nullptr);

  private:
    void trySignIn();
    const ProgramFolder& folder_;
    Session& session_;
    Dialogs& dialogs_;
    UserMemory& memory_;
    QLineEdit* name_;
    QLineEdit* password_;
};

} // namespace orvan
