// reference/screens/frm_sigorta_sabit.h — "Sigorta Sabit Bilgileri": switches, rates, rounding, and the
// minimum wages by month.
#pragma once

#include "core/clock.h"
#include "reference/screens/constants_screen.h"

namespace orvan {

class WagePage;

class frmSigortaSabit : public ConstantsScreen {
    Q_OBJECT

  public:
    frmSigortaSabit(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                    const Clock& clock, QWidget* parent = nullptr);

  protected:
    void offerChoices(const SchoolConstants& constants) override;
    bool settleMore() override;
    bool saveMore() override;
    bool moreIsDirty() const override;
    void discardMore() override;
    void loadMore() override;

  private:
    WagePage* wages_;
};

} // namespace orvan
