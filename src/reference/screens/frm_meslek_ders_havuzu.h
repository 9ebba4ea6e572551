// reference/screens/frm_meslek_ders_havuzu.h — the courses of a profession: chosen above, its rows in a grid,
// the pool of the same version beside it. What may be written is decided by ProfessionCurriculum and
// ReadyCurricula.
//   Values are typed in the grid and saved together; adding, removing and moving rows is written at once and
//   leaves what is typed in the grid. Rows move by Alt+Up / Alt+Down or by dragging their number.
#pragma once

#include "reference/profession_curriculum.h"
#include "reference/ready_curricula.h"
#include "widgets/choice_list.h"
#include "widgets/edit_grid.h"
#include "widgets/screen.h"
#include "widgets/user_memory.h"

#include <map>

class QGridLayout;
class QLabel;
class QLayout;
class QPushButton;

namespace orvan {

class ListGrid;

class FrmMeslekDersHavuzu : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    FrmMeslekDersHavuzu(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                        QWidget* parent = nullptr);

    bool save() override;
    void discardChanges() override;
    void refresh() override;
    void showRecord(const QString& professionCode) override;

  private:
    void build(UserMemory& memory);
    QLayout* buildChoices();
    QWidget* buildPool(UserMemory& memory);
    QLayout* buildButtons();
    void addMoveKeys();
    ChoiceList* addChoice(QGridLayout* layout, int row, int column, const QString& label, const char* name,
                          int width);

    void offerProfessions();
    void offerTracks();
    void offerYears();
    void chosen(ChoiceList* list, const QString& code);
    CurriculumKey key() const;
    int year() const; // shown; 0: all
    void load();
    void loadPool();
    void reloadKeepingTyped();
    EditRow cells(const StoredRow& row) const;
    QString words(size_t shownRow) const;
    std::vector<FieldTexts> wanted() const;

    bool trySave();
    void addCourses();
    void removeRow();
    void move(size_t from, size_t to);
    void moveCurrent(int by);
    void makeFinalExam();
    void loadReady();
    void wrote(const QString& result);

    DatabaseSet& databases_;
    ProfessionCurriculum curriculum_;
    ReadyCurricula ready_;
    std::vector<StoredRow> rows_; // all of the key, in their order
    std::vector<size_t> shown_;   // places in rows_, one per row of the grid
    std::vector<Course> pool_;
    std::map<QString, QString> courseNames_; // by code
    ChoiceList *profession_ = nullptr, *version_ = nullptr, *level_ = nullptr, *track_ = nullptr,
               *year_ = nullptr;
    std::map<ChoiceList*, QString> shownCodes_; // to which a refused choice goes back
    EditGrid* grid_ = nullptr;
    ListGrid* poolGrid_ = nullptr;
    QLabel* result_ = nullptr;
    QPushButton* saveButton_ = nullptr;
    bool busy_ = false;
};

} // namespace orvan
