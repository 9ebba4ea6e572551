// reference/screens/definition_screen.h — the window of one list of records that are edited one at a time:
// coded definitions, the courses of the pool. The list above, the form of the chosen record below. What may
// be saved is decided by ListedRecords.
//   The record follows the list's current row; Enter in the list goes to the form. Ctrl+N: a new one.
#pragma once

#include "reference/listed_records.h"
#include "reference/screens/definition_layouts.h"
#include "widgets/screen.h"
#include "widgets/user_memory.h"

#include <memory>
#include <QElapsedTimer>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace orvan {

class ChoiceList;
class EntryForm;
class ListGrid;

// What a window shows, and by which names.
struct DefinitionParts {
    std::unique_ptr<ListedRecords> records;
    DefinitionLayout layout;
    QString listName;                                    // under which the list's columns are remembered
    bool choosesVersion = false;                         // the list shows one curriculum version at a time
    QString recordWord = QStringLiteral("tanım");        // in tooltips
    std::map<QString, std::vector<Choice>> choices = {}; // of fields other than the version
};

class DefinitionScreen : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected; the command has a group.
    DefinitionScreen(const QString& name, const QString& command, const QString& title,
                     DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory, QWidget* parent = nullptr);
    DefinitionScreen(const QString& name, const QString& title, DefinitionParts parts, DatabaseSet& databases,
                     Dialogs& dialogs, UserMemory& memory, QWidget* parent = nullptr);

    bool save() override;
    void discardChanges() override;
    void refresh() override;

  protected:
    void addButton(QPushButton* button);     // left of the others
    void showVersion(int version);           // REQUIRES: the list shows one version at a time
    int version() const { return version_; } // shown; 0: all
    void reload();                           // the list; the definition on view stays
    void afterChange(const QString& words);
    DatabaseSet& databases() { return databases_; }

  private:
    void build(UserMemory& memory);
    QHBoxLayout* buildButtons();
    QHBoxLayout* buildVersions();
    void offerVersions();
    void chooseVersion(int version);
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
    DefinitionParts parts_;
    ListedRecords& list_;
    int version_ = 0;
    std::vector<StoredRow> rows_;
    std::optional<StoredRow> row_; // on view; empty: a new one
    FieldTexts shown_;             // the form's values as loaded
    ChoiceList* versions_ = nullptr;
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
