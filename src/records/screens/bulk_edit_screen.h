// records/screens/bulk_edit_screen.h — the window of every bulk edit of students: choose them, say the value
// (one for the ticked ones, or each student's own in a grid), see old and new, write. What may be written is
// decided by BulkEdit.
#pragma once

#include "records/bulk_edit.h"
#include "widgets/choice_list.h"
#include "widgets/screen.h"
#include "widgets/user_memory.h"

class QBoxLayout;
class QLabel;
class QPushButton;
class QStackedWidget;
class QTabWidget;

namespace orvan {

class EditGrid;
class EntryForm;
class ListGrid;
class StudentChoiceForm;
class TickList;

inline const QString kEmptyChoice = QStringLiteral("(boş)"); // the choice that empties the field

class BulkEditScreen : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    BulkEditScreen(const BulkCommand& command, const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                   UserMemory& memory, const Clock& clock, QWidget* parent = nullptr);

    bool save() override; // the cells of the grid; a value for the ticked students only by its own button
    void discardChanges() override;
    void refresh() override;

  private:
    void build(UserMemory& memory);
    void buildTicks(QBoxLayout* layout, UserMemory& memory);
    void buildGrid(QBoxLayout* layout, UserMemory& memory);
    QBoxLayout* buildValueLine();
    std::vector<Choice> valuesOf(const BulkField& field);
    QBoxLayout* buildButtons();
    void load();
    void selectionChanged();
    void showStudents();
    void showTicks();
    void showGrid();
    const BulkField& chosenField() const;
    bool takeWishes(std::vector<BulkWish>& wishes); // false: the person has been told what is missing
    bool takeTicked(std::vector<BulkWish>& wishes);
    bool takeCells(std::vector<BulkWish>& wishes);
    void preview();
    bool apply();
    void showLines(const std::vector<BulkLine>& lines, bool afterwards);
    void keepUnwritten(const std::vector<BulkWish>& wishes, const std::vector<BulkLine>& lines);
    QStringList notes() const;
    bool eachOwn() const { return edit_.command().input == BulkInput::EachOwn; }

    DatabaseSet& databases_;
    const Clock& clock_;
    BulkEdit edit_;
    std::vector<StoredRow> students_;
    BulkSelection selection_;
    StudentChoiceForm* choice_ = nullptr;
    QTabWidget* tabs_ = nullptr;
    TickList* ticks_ = nullptr; // one value for all
    EntryForm* fieldForm_ = nullptr;
    QStackedWidget* values_ = nullptr; // a form per field
    EditGrid* grid_ = nullptr;         // each his own
    ListGrid* lines_ = nullptr;
    QLabel* result_ = nullptr;
    bool busy_ = false;
};

} // namespace orvan
