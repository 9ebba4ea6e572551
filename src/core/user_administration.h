// core/user_administration.h — the work of the screen "Yeni Kullanıcı / Kullanıcı Hakları": users come and
// go, get new passwords and rights. Speaks to the person through Dialogs. Each changing action first asks for
// the write right of the person who acts; so whoever may administrate cannot be deleted by himself, and the
// last one cannot give that right away: an installation always has somebody who can.
#pragma once

#include "core/users.h"

#include <vector>

namespace orvan {

// --- the tree of titles, top level first, each followed by what stands below it
enum class TitleKind {
    Heading, // top level; only a heading, no rights are stored for it
    Main,    // top level; a title whose own marks follow from the titles below it
    Sub,     // a title with marks of its own
};
struct TitleNode {
    QString text;
    TitleKind kind;
};
std::vector<TitleNode> rightsTree(); // its titles are programTitles(), in that order

using UserRights = std::vector<Rights>; // a pair for each of programTitles()
// Replaces the user's rights: one row per title, in one batch.
void storeRights(jet::Database& constants, const QString& user, const UserRights& marks);

class UserAdministration {
  public:
    // All must outlive it. REQUIRES at each call: the databases are open.
    UserAdministration(DatabaseSet& databases, Dialogs& dialogs) : databases_(databases), dialogs_(dialogs) {}

    static QString title(); // under which the right on the screen is stored

    QStringList users(); // in Turkish order
    UserRights rights(const QString& user);
    bool mayChange();     // the write right of the person who acts
    bool requireChange(); // the same; without it he is told

    std::optional<QString> newUser(); // the name as stored; nothing when none was made
    // The right on this screen is what counts: the old password is not asked for, it may be forgotten.
    bool changePassword(const QString& user);
    bool removeUser(const QString& user);
    // Asks, then replaces all rights of the user. `loaded`: what the screen had read; when the stored rights
    // are others by now the person is asked again.
    enum class Ask { Yes, AlreadyDone };
    bool saveRights(const QString& user, const UserRights& loaded, UserRights marks, Ask ask = Ask::Yes);

  private:
    std::optional<QString> askName();
    std::optional<QString> askPassword(const QString& label);
    bool keepsAnAdministrator(const QString& user, const UserRights& marks);
    void warn(const QString& text);
    jet::Database& constants() { return databases_.constants().database(); }
    DatabaseSet& databases_;
    Dialogs& dialogs_;
};

} // namespace orvan
