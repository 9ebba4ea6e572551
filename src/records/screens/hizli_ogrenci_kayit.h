// records/screens/hizli_ogrenci_kayit.h — the quick form: profession, number, name and surname of a new
// student.
#pragma once

#include "records/quick_registration.h"
#include "widgets/form.h"
#include "widgets/screen.h"

#include <QElapsedTimer>

class QLabel;
class QPushButton;

namespace orvan {

class hizli_ogrenci_kayit : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    hizli_ogrenci_kayit(DatabaseSet& databases, Dialogs& dialogs, const Clock& clock,
                        QWidget* parent = nullptr);

    bool save() override;
    void discardChanges() override;
    void refresh() override;

  private:
    void build();
    void loadProfessions();
    void propose();
    void startNew();
    bool trySave();
    void afterSaved(const QuickForm& saved);
    void showRefused(const QuickForm& refused);
    Profession chosenProfession() const;

    QuickRegistration registration_;
    std::vector<Profession> professions_;
    QuickForm current_;
    EntryForm* form_ = nullptr;
    QLabel* result_ = nullptr;
    QPushButton* saveButton_ = nullptr;
    QElapsedTimer sinceSaved_;
    bool saving_ = false;
};

} // namespace orvan
