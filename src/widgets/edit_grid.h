// widgets/edit_grid.h — the grid in which marks, wages and hours are entered, worked like a spreadsheet.
// Holds texts, knows no table. A text that is refused stays in its cell with a mark, its reason as tooltip
// and in the list below the grid; the cell's value is still the old one.
//   Arrows, Home/End, Ctrl+Home/End, PgUp/PgDn; typing replaces, F2 edits, Del clears the selected cells,
//   Space ticks; Enter goes on in the entry direction; Esc gives the cell back; Ctrl+C/X/V blocks as
//   tab-separated text; Ctrl+Z / Ctrl+Y over cells; Ctrl+F finds a row. Tab leaves the grid.
#pragma once

#include "core/dialogs.h"
#include "widgets/cell_rules.h"
#include "widgets/user_memory.h"

#include <compare>
#include <functional>
#include <memory>
#include <optional>
#include <QWidget>

class QAction;
class QTableView;

namespace orvan {

class EditGridBody;

using EditRow = std::vector<QString>; // a value per column

struct CellPlace {
    size_t row = 0;    // index in the rows of setRows, whatever the order shown
    size_t column = 0; // index in the columns

    bool operator==(const CellPlace&) const = default;
    auto operator<=>(const CellPlace&) const = default;
};

struct RefusedCell {
    CellPlace place;
    QString typed;
    QString reason;
};

// The screen's own check of a cell, run on the value that the column's check has made of the typed text
// (never on an unchanged cell). May look at other cells of the grid.
using CellValidator = std::function<CellCheck(CellPlace place, const QString& value)>;

enum class EntryDirection { Down, Right };

class EditGrid : public QWidget {
    Q_OBJECT

  public:
    // `name`: object name and the name its layout is remembered under. dialogs and memory must outlive the
    // grid.
    EditGrid(const QString& name, std::vector<EditColumn> columns, Dialogs& dialogs, UserMemory& memory,
             QWidget* parent = nullptr);
    ~EditGrid() override;

    void setTitle(const QString& title); // of prints and exported files
    void setNotes(const QStringList& notes);
    void setEmptyText(const QString& text);
    void hideFind();                                  // a grid of a few fixed rows has nothing to find
    void setPinnedColumns(int count);                 // the first ones shown stay when scrolled sideways
    void setEntryDirection(EntryDirection direction); // until the user has chosen one himself
    void setValidator(CellValidator validator);       // for all columns without one of their own
    void setValidator(const QString& key, CellValidator validator);
    void setReadOnly(bool readOnly);                             // the whole grid: no write right
    void setCellLocked(std::function<bool(CellPlace)> isLocked); // single cells that take no input

    // New rows as loaded: nothing is changed, refused or to be undone. REQUIRES: a value per column.
    void setRows(std::vector<EditRow> rows);
    size_t rowCount() const;
    QString value(size_t row, const QString& key) const;
    EditRow row(size_t row) const;
    // A value as loaded (a computed cell, a value read again): no change of the user's, not to be undone.
    void setValue(size_t row, const QString& key, const QString& value);
    // A change made for the user (fill a column, take over last term's hours): counts as changed, one Ctrl+Z
    // for all of them; checked like typed values, refused ones are marked.
    struct Change {
        size_t row = 0;
        QString key;
        QString value;
    };
    void applyChanges(const std::vector<Change>& changes);

    // Call it first of all when saving: takes the text of an open cell. False: refused cells are left; the
    // first has the focus.
    bool settle();
    bool isDirty() const;                        // some cell is changed or refused
    std::vector<CellPlace> changedCells() const; // accepted values that differ from the loaded ones, by row
    std::vector<size_t> changedRows() const;
    std::vector<RefusedCell> refusedCells() const;
    void acceptAsLoaded(); // what stands in the cells is saved; refused texts stay refused
    void revert();         // everything as loaded; can be undone
    void showWrong(size_t row, const QString& key, const QString& reason); // a rule refuses the cell's value

    std::optional<CellPlace> currentCell() const;
    void makeCurrent(size_t row, const QString& key);
    std::vector<size_t> selectedRows() const; // in shown order

    // What is shown, as data: visible columns in their order, rows in theirs.
    ListSheet sheet() const;
    std::vector<QAction*> outputActions() const; // "Yazdır…", "PDF…", "Excel…", "CSV…"
    QTableView* view() const;

    QSize sizeHint() const override;

  signals:
    void edited(size_t row, const QString& key); // an accepted change by the user's own hand, undo included
    void dirtyChanged(bool dirty);
    void currentRowChanged(size_t row);
    void lastCellDone(); // Enter in the last cell of the entry direction

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    friend class EditGridBody;
    std::unique_ptr<EditGridBody> body_;
};

} // namespace orvan
