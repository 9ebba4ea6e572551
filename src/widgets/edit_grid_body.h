// widgets/edit_grid_body.h — what is inside an EditGrid: its parts, and what they do together. The grid's own
// public face is edit_grid.h.
#pragma once

#include "widgets/column_layout.h"
#include "widgets/edit_delegate.h"
#include "widgets/edit_model.h"
#include "widgets/list_output.h"
#include "widgets/pinned_view.h"

#include <map>

class QKeyEvent;
class QHBoxLayout;
class QLabel;
class QListWidget;
class QMenu;
class QToolButton;
class QVBoxLayout;

namespace orvan {

class EditGridBody : public QObject {
    Q_OBJECT

  public:
    EditGridBody(EditGrid& grid, std::vector<EditColumn> columns, Dialogs& dialogs, UserMemory& memory);

    // Building (edit_grid_body.cpp)
    void build();
    void buildView();
    void buildToolLine(QVBoxLayout* layout);
    void buildRefusals(QVBoxLayout* layout);
    void restoreLayout();
    void saveLayout();
    void chooseDirection(EntryDirection direction);
    void showContextMenu(QPoint place);

    // Entering (edit_grid_entry.cpp)
    bool keyInView(const QKeyEvent& key);
    void openEditor(bool replace, const QKeyEvent* typed);
    void commit(const QModelIndex& index, const QString& typed); // one cell, one step of undo
    void enterCell(CellPlace place, const QString& typed);       // within a step
    void endStep();
    void leaveEditor(Qt::Key key);
    void goOn();
    QModelIndex nextCell(const QModelIndex& from) const; // in the entry direction; invalid after the last
    void move(int rows, int columns);
    bool toggleTicks();
    bool giveBack();
    void clearSelected();
    void undo(std::vector<CellPlace> (EditCells::*step)());

    // Clipboard (edit_grid_block.cpp)
    void copy();
    void cut();
    void paste();
    void pasteBlock(const std::vector<QStringList>& block);
    QStringList placesOutside_; // words about what the last paste could not put anywhere

    // Showing (edit_grid_body.cpp)
    void cellsChanged(const std::vector<CellPlace>& places);
    void updateCounts();
    void updateRefusals();
    void updateReason();
    void findRow(bool next);
    QString nameOf(CellPlace place) const; // "12. satır (010100001), 1. Sınav"
    void makeCurrent(CellPlace place);
    void goTo(const QModelIndex& index);
    QModelIndexList selectedCells() const; // at least the current one
    std::vector<int> shownColumns() const;
    CellCheck check(CellPlace place, const QString& typed) const;

    EditGrid& grid_;
    Dialogs& dialogs_;
    UserMemory& memory_;
    EditModel* model_;
    EditDelegate* delegate_ = nullptr;
    PinnedTableView* view_ = nullptr;
    QHBoxLayout* toolLine_ = nullptr;
    QLineEdit* find_ = nullptr;
    QToolButton* directionButton_ = nullptr;
    QAction *down_ = nullptr, *right_ = nullptr;
    QLabel *findLabel_ = nullptr, *counts_ = nullptr, *reason_ = nullptr, *empty_ = nullptr,
           *refusalsTitle_ = nullptr;
    QListWidget* refusals_ = nullptr;
    std::unique_ptr<ColumnLayout> columns_;
    ListOutput* output_ = nullptr;
    CellValidator validator_;
    std::map<size_t, CellValidator> validators_; // by column
    QString title_, emptyText_;
    QStringList notes_;
    EntryDirection direction_ = EntryDirection::Down;
    bool directionChosen_ = false; // by the user
    bool wasDirty_ = false;
};

} // namespace orvan
