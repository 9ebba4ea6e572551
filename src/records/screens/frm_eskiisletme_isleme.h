// records/screens/frm_eskiisletme_isleme.h — "Öğrenci Eski İşletme Bilgisi İşleme": the earlier workplaces of
// a student, row by row in their order; and one workplace's name changed in many students' records.
#pragma once

#include "records/earlier_workplaces.h"
#include "reference/screens/record_screen.h"

namespace orvan {

class EntryForm;
class StudentFinder;

class frm_eskiisletme_isleme : public RecordScreen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    frm_eskiisletme_isleme(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                           QWidget* parent = nullptr);

    void showRecord(const QString& student) override; // his Ogr_Numarasi
    void refresh() override;

  protected:
    std::vector<StoredRow> readRows() override;
    SaveOutcome saveRow(std::optional<StoredRow>& row, const FieldTexts& wanted, bool asked) override;
    bool removeRow(const StoredRow& row) override;
    void listRead() override;

  private:
    std::vector<FormPage> formPages() const;
    QWidget* buildHeader(DatabaseSet& databases, QWidget* section);
    QWidget* buildRename();
    void addHistoryButtons();
    void showStudent(const QString& number);
    void move(EarlierWorkplaces::Move where);
    void sendCurrent();
    void rename();

    EarlierWorkplaces history_;
    std::optional<HistoryOwner> owner_;
    StudentFinder* finder_ = nullptr;
    QLabel* student_ = nullptr;
    EntryForm* names_ = nullptr; // of the renaming
};

} // namespace orvan
