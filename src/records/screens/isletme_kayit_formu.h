// records/screens/isletme_kayit_formu.h — "İşletme Bilgisi": the workplaces, the record of the chosen one on
// pages, its seven supervisors, and banks.
#pragma once

#include "records/workplaces.h"
#include "reference/screens/record_screen.h"

namespace orvan {

class SupervisorsPage;
class TextSuggestions;

class isletme_kayit_formu : public RecordScreen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    isletme_kayit_formu(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                        QWidget* parent = nullptr);

  protected:
    std::vector<StoredRow> readRows() override;
    SaveOutcome saveRow(std::optional<StoredRow>& row, const FieldTexts& wanted, bool asked) override;
    bool removeRow(const StoredRow& row) override;
    void showMore(const StoredRow* row) override;
    void takeOverMore(const StoredRow& row) override;
    bool settleMore() override;
    bool moreIsDirty() const override;
    void revertMore() override;
    void addToSave(FieldTexts& wanted) const override;
    bool showWrongMore(const QString& field, const QString& reason) override;
    QString wordsAfterSave(const FieldTexts& saved) override;
    void listRead() override;

  private:
    std::vector<FormPage> formPages() const;
    void offerBanks();
    void offerProduction();
    void addBank();

    Workplaces places_;
    SupervisorsPage* supervisors_ = nullptr;
    TextSuggestions* production_ = nullptr;
};

} // namespace orvan
