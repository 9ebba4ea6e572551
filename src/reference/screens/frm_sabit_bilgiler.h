// reference/screens/frm_sabit_bilgiler.h — "Kuruma Ait Bilgiler": identity, headings, year and term, absence
// limits, marks, SMS. The districts offered are those of the chosen province.
#pragma once

#include "reference/screens/constants_screen.h"

namespace orvan {

class frmSabitBilgiler : public ConstantsScreen {
    Q_OBJECT

  public:
    frmSabitBilgiler(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                     QWidget* parent = nullptr);

  protected:
    void offerChoices(const SchoolConstants& constants) override;
    QString shownText(const SchoolConstants& constants, const QString& field) const override;
    void addToSave(FieldTexts& wanted) const override;

  private:
    void offerDistricts();
    QString chosenText(const QString& field) const;

    std::vector<Place> provinces_;
    Place storedProvince_, storedDistrict_; // codes as the lists have them
};

} // namespace orvan
