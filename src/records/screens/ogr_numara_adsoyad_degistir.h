// records/screens/ogr_numara_adsoyad_degistir.h — one student gets another number, name or surname: he is
// chosen in the list, the form below holds the new values. What may be written is decided by IdentityChange.
#pragma once

#include "records/identity_change.h"
#include "widgets/list_sheet.h"
#include "widgets/screen.h"

class QLabel;
class QPushButton;

namespace orvan {

class EntryForm;
class ListGrid;
class UserMemory;

class Ogr_Numara_AdSoyad_Degistir : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    Ogr_Numara_AdSoyad_Degistir(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                UserMemory& memory, QWidget* parent = nullptr);

    bool save() override;
    void discardChanges() override;
    void refresh() override;
    void showRecord(const QString& number) override;

  private:
    void build(UserMemory& memory);
    void load();
    void rowChosen();
    void makeCurrent();
    void showStudent(const StudentIdentity* student);
    void professionChosen();
    bool trySave();
    StudentIdentity wanted() const;

    IdentityChange change_;
    std::vector<StudentIdentity> students_;
    std::optional<StudentIdentity> student_; // on the form, as it was read
    ListGrid* grid_ = nullptr;
    EntryForm* form_ = nullptr;
    QLabel *heading_ = nullptr, *result_ = nullptr;
    QPushButton* saveButton_ = nullptr;
    bool busy_ = false;
};

} // namespace orvan
