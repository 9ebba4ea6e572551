// reference/screens/record_screen.h — a window with a list of records at the left and the pages of the chosen
// one at the right: classes, workplaces. What may be saved is decided by the rules of the window's own.
//   The record follows the list's current row; Enter in the list goes to the pages. Ctrl+N: a new one.
#pragma once

#include "reference/stored_rows.h"
#include "widgets/form_pages.h"
#include "widgets/list_sheet.h"
#include "widgets/screen.h"

#include <QElapsedTimer>

class QHBoxLayout;
class QLabel;
class QPushButton;
class QSplitter;
class QTabWidget;
class QVBoxLayout;

namespace orvan {

class ListGrid;

struct RecordParts {
    QString listName;                // under which the list's columns are remembered
    std::vector<ListColumn> columns; // key: the field's name; the first one tells which record it is
    std::vector<FormPage> pages;     // of fields of the record
    QString one;                     // "sınıf", in the middle of a sentence
    QStringList notes;               // under the title of a printed list
    QString section = {};            // tab of list and record, where the window has further sections
    std::function<QWidget*(QWidget* parent)> header = {}; // makes what stands above list and record
    QString name = {}; // field that names the record; empty: the first column's
};

class RecordScreen : public Screen {
    Q_OBJECT

  public:
    // All must outlive it.
    RecordScreen(const QString& name, const QString& title, Dialogs& dialogs, UserMemory& memory,
                 QWidget* parent);

    bool save() override;
    bool saveOnLeaving() override;
    void discardChanges() override;
    void refresh() override;
    void showRecord(const QString& name) override;

  protected:
    void build(RecordParts parts); // call it first of all
    void load();                   // last of all: reads the list and shows the first record
    virtual std::vector<StoredRow> readRows() = 0;
    // `asked`: the person has already said that he wants to save.
    virtual SaveOutcome saveRow(std::optional<StoredRow>& row, const FieldTexts& wanted, bool asked) = 0;
    virtual bool removeRow(const StoredRow& row) = 0; // asks; true: the row is gone

    // What the window holds beside the fields of the pages.
    virtual void showMore(const StoredRow* /*row*/) {}     // nullptr: a new record
    virtual void takeOverMore(const StoredRow& /*row*/) {} // another station's values, where nothing is typed
    virtual bool settleMore() { return true; }             // as EntryForm::settle
    virtual bool moreIsDirty() const { return false; }
    virtual void revertMore() {}
    virtual void addToSave(FieldTexts& /*wanted*/) const {}
    virtual bool showWrongMore(const QString& /*field*/, const QString& /*reason*/) { return false; }
    virtual QString wordsAfterSave(const FieldTexts& /*saved*/) { return {}; } // behind "Kaydedildi"
    virtual void listRead() {}                                                 // the list is new

    void checkUnsaved();
    void addButton(QPushButton* button) { ownButtons_.push_back(button); } // left of the others, in order
    // A tab of the window beside the one with the list and the record. Takes the page over. REQUIRES: that
    // one has a title.
    void addSection(const QString& title, QWidget* page);
    void showRecordSection();
    void addBelow(QWidget* widget); // a part of the record, below its pages
    void loadOther();               // the list is of something else now: shows its first record
    void say(const QString& words);
    void afterChange(const QString& words); // reads the list again and tells the other screens
    void startNew(const QString& name);
    void showAgain(jet::RowId row);                   // reads the list again and shows that record of it
    void setFirst(QWidget* first) { first_ = first; } // has the focus at first; otherwise the list
    FormPages& pages() { return *pages_; }
    const FormPages& pages() const { return *pages_; }
    ListGrid& list() { return *grid_; }
    UserMemory& memory() { return memory_; }
    const std::vector<StoredRow>& rows() const { return rows_; }
    const std::optional<StoredRow>& row() const { return row_; } // on view; empty: a new one
    FieldTexts wanted() const;

    void hideEvent(QHideEvent* event) override;

  private:
    void buildList();
    void buildRecord();
    QHBoxLayout* buildButtons();
    QString nameOf(const StoredRow& row) const;
    QString keyOf(const StoredRow& row) const;
    const StoredRow* sameRow() const; // the record on view as the list has it now
    void reload();
    void rowChosen();
    void showRow(const StoredRow* row);
    void makeCurrent();
    bool save(bool asked);
    bool trySave(bool asked);
    void showRefused(const SaveOutcome& outcome);
    void takeOver();
    void removeCurrent();
    void printShown();

    UserMemory& memory_;
    RecordParts parts_;
    std::vector<StoredRow> rows_;
    std::optional<StoredRow> row_;
    QStringList fields_; // of the pages
    FieldTexts shown_;   // their values as loaded
    QVBoxLayout* layout_ = nullptr;
    QTabWidget* sections_ = nullptr; // nullptr: there is one
    QSplitter* splitter_ = nullptr;
    ListGrid* grid_ = nullptr;
    QWidget* first_ = nullptr;
    FormPages* pages_ = nullptr;
    QLabel* heading_ = nullptr;
    QLabel* result_ = nullptr;
    std::vector<QPushButton*> ownButtons_; // of the particular window
    QPushButton* saveButton_ = nullptr;
    QPushButton* removeButton_ = nullptr;
    QElapsedTimer sinceSaved_;
    bool busy_ = false; // the list is being filled, or a save is under way
};

} // namespace orvan
