// core/screens/form_kullanici1.h — users and their rights: the users beside the
// tree of all screen titles with the marks "may enter" and "may change". Holds
// no rule; those are UserAdministration's.
#pragma once

#include "core/user_administration.h"
#include "widgets/screen.h"

class QBoxLayout;
class QLabel;
class QListWidget;
class QPushButton;

namespace orvan {

class TickList;
class UserMemory;

class Form_Kullanici1 : public Screen {
    Q_OBJECT

  public:
    // All must outlive it.
    Form_Kullanici1(DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory, QWidget* parent = nullptr);

    bool save() override; // asks
    bool saveOnLeaving() override;
    void discardChanges() override;
    void refresh() override;

  private:
    void build(UserMemory& memory);
    QBoxLayout* buildUserSide();
    QBoxLayout* buildRightsSide();
    QPushButton* addButton(QBoxLayout* layout, const char* name, const char* text, const char* hint);
    void addBulkButton(QBoxLayout* layout, const char* name, const char* text, const QString& column,
                       bool granted);
    void listUsers(const QString& current);
    void selectUser();
    void showRights();
    UserRights marks() const;
    bool store(UserAdministration::Ask ask);

    void addUser();
    void changePassword();
    void removeUser();

    UserAdministration administration_;
    QListWidget* users_ = nullptr;
    QLabel* whose_ = nullptr;
    TickList* rights_ = nullptr;
    QString shown_; // whose rights are on view
    UserRights loaded_;
};

} // namespace orvan
