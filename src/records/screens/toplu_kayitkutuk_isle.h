// records/screens/toplu_kayitkutuk_isle.h — new registration and student numbers for the students of a
// profession, in a grid beside the old ones. What may be written is decided by BulkRenumber.
#pragma once

#include "records/bulk_renumber.h"
#include "widgets/screen.h"

class QLabel;

namespace orvan {

class EditGrid;
class EntryForm;
class UserMemory;

class Toplu_KayitKutuk_Isle : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    Toplu_KayitKutuk_Isle(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                          QWidget* parent = nullptr);

    bool save() override;
    void discardChanges() override;
    void refresh() override;

  private:
    void build(UserMemory& memory);
    void loadProfessions();
    void choose();
    void load();
    void giveNumbers();
    void recheckRefused();
    bool trySave();
    std::vector<NewNumbers> wanted() const;
    void showProblems(const std::vector<RenumberProblem>& problems, const std::vector<NewNumbers>& numbers);
    void markDone(const std::vector<RenumberRow>& before, const std::vector<NewNumbers>& numbers);

    BulkRenumber renumber_;
    std::vector<RenumberRow> rows_;
    QString chosenProfession_, chosenOrder_; // what the grid shows
    EntryForm* form_ = nullptr;
    EditGrid* grid_ = nullptr;
    QLabel* result_ = nullptr;
};

} // namespace orvan
