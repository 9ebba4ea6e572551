// reference/screens/definition_screen.h — the window of one group of coded definitions: the list above, the
// form of the chosen definition below. What may be saved is decided by DefinitionList.
//   The definition follows the list's current row; Enter in the list goes to the form. Ctrl+N: a new one.
#pragma once

#include "reference/definition_list.h"
#include "widgets/list_sheet.h"
#include "widgets/screen.h"
#include "widgets/user_memory.h"

#include <QElapsedTimer>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace orvan {

class EntryForm;
class ListGrid;

class DefinitionScreen : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected; the command has a group.
    DefinitionScreen(const QString& name, const QString& command, const QString& title,
                     DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory, QWidget* parent = nullptr);

    bool save() override;
    void discardChanges() override;
    void refresh() override;

  protected:
    void addButton(QPushButton* button); // left of the others
    void reload();                       // the list; the definition on view stays
    void afterChange(const QString& words);
    DatabaseSet& databases() { return databases_; }

  private:
    void build(UserMemory& memory);
    QHBoxLayout* buildButtons();
    void offerVersions();
    ListRow listRow(const StoredRow& row) const;
    QString keyOf(const FieldTexts& values) const;
    void rowChosen();
    void showRow(const StoredRow* row); // nullptr: a new definition
    void makeCurrent();
    void startNew();
    void removeCurrent();
    bool trySave();
    void takeOver();
    FieldTexts wanted() const;

    DatabaseSet& databases_;
    DefinitionList list_;
    std::vector<StoredRow> rows_;
    std::optional<StoredRow> row_; // on view; empty: a new one
    FieldTexts shown_;             // the form's values as loaded
    ListGrid* grid_ = nullptr;
    EntryForm* form_ = nullptr;
    QLabel* heading_ = nullptr;
    QLabel* result_ = nullptr;
    QHBoxLayout* buttons_ = nullptr;
    QPushButton* saveButton_ = nullptr;
    QPushButton* removeButton_ = nullptr;
    QElapsedTimer sinceSaved_;
    bool busy_ = false; // the list is being filled, or a save is under way
};

} // namespace orvan
