// core/users.h — who may sign in, and what a user may open and change.
#pragma once

#include "core/database_set.h"

#include <QStringList>

namespace orvan {

// --- sign-in
enum class SignIn { Accepted, Refused, SwitchedOff };
struct SignInResult {
    SignIn outcome = SignIn::Refused;
    QString user;    // name as stored, when accepted
    QString message; // text for the person when refused
};
// Looks the user up by the index on Kullanici_Adi. Does not touch the session.
SignInResult checkSignIn(jet::Database& constants, const QString& name, const QString& password);

// The sign-in of the program: reads \orvyet.ini ("0": returns SwitchedOff at once, nobody is signed in),
// opens the constants, checks, shows the refusal, and on success sets session.user. While there is no user at
// all it offers to make the typed one the first, with every right.
SignIn signIn(const ProgramFolder& folder, Session& session, Dialogs& dialogs, const QString& name,
              const QString& password);

// The installation is new: no constants database yet, or no user in it. False when it cannot be read.
bool awaitsFirstUser(const ProgramFolder& folder, const Session& session);

// --- rights
struct Rights {
    bool enter = false; // GirisHakki
    bool write = false; // YazmaHakki
    bool operator==(const Rights&) const = default;
};
// Titles that do the same work (interim marks, final marks, absences) share the highest write right of their
// family.
Rights rightsOf(jet::SqlSession& constants, const QString& user, const QString& title);
// Stored rights follow screens whose titles changed. Safe to repeat.
void renameStoredRights(jet::SqlSession& constants);
void showEntryDenied(Dialogs& dialogs); // "Programa Giriş Yetkisi"
// True when the user may write; otherwise "Değişiklik yapma yetkiniz yok. …" (title "Uyarı") and false.
bool mayWrite(jet::SqlSession& constants, const QString& user, const QString& title, Dialogs& dialogs);

QStringList programTitles(); // every screen title, in the order of the rights tree

// --- administration, as far as making a user goes; the rest: user_administration.h
// Makes the user's record current in a handle on Kullanici; false when there is none.
bool findUser(jet::Table& users, const QString& name);
// What keeps the text from being a new user's name or password, as a sentence; empty when nothing does.
// Without blanks at the ends.
QString userNameFault(const QString& name);
QString passwordFault(const QString& password);
bool userExists(jet::Database& constants, const QString& name);
void createUser(jet::Database& constants, const QString& name, const QString& password); // Err::DuplicateKey
// Replaces the user's rights: one row per title.
void grantAll(jet::Database& constants, const QString& user, Rights rights);

} // namespace orvan
