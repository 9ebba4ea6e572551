// widgets/tick_list.h — rows to be ticked, in one or more tick columns: rights of a user, students for a bulk
// run. Rows may stand below other rows; such a parent shows whether all, none or some below it are ticked,
// and ticking it ticks them all. Find-as-you-type; Space ticks the selected rows in the current column.
#pragma once

#include "core/dialogs.h"
#include "widgets/list_sheet.h"
#include "widgets/user_memory.h"

#include <memory>
#include <QWidget>

class QAction;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QTreeView;
class QVBoxLayout;

namespace orvan {

class ColumnLayout;
class ListOutput;
class TickModel;

struct TickColumn {
    QString key;
    QString title;
};

struct TickRow {
    QString key;                 // not empty, unique
    QString parent = {};         // key of a row given before; empty: at the top
    std::vector<QVariant> cells; // one per text column
    std::vector<bool> ticks;     // one per tick column; of a parent not read
};

struct TickChange {
    QString row;
    QString column;
    bool ticked = false;
    bool operator==(const TickChange&) const = default;
};

class TickList : public QWidget {
    Q_OBJECT

  public:
    // `name`: object name and the name its layout is remembered under. dialogs and memory must outlive it.
    TickList(const QString& name, std::vector<ListColumn> textColumns, std::vector<TickColumn> tickColumns,
             Dialogs& dialogs, UserMemory& memory, QWidget* parent = nullptr);
    ~TickList() override;

    void setTitle(const QString& title); // of prints and exported files
    void setNotes(const QStringList& notes);
    void setEmptyText(const QString& text);
    void setReadOnly(bool readOnly);

    // New rows as loaded. Filter stays; the current row too, when it is still there.
    void setRows(std::vector<TickRow> rows);
    bool isTicked(const QString& row, const QString& column) const;         // of a parent: all below it are
    void setTicked(const QString& row, const QString& column, bool ticked); // as the user does it
    void setAllTicked(const QString& column, bool ticked);                  // of the rows the filter shows
    QStringList tickedRows(const QString& column) const; // keys of rows that are no parents, in given order
    QStringList tickedRows() const;                      // of the first tick column
    size_t rowCount() const;                             // rows that are no parents

    bool isDirty() const;
    std::vector<TickChange>
    changes() const; // against the loaded state, in given order; parents are not in it
    void acceptAsLoaded();
    void revert();

    QString currentRow() const; // key; empty when there is none
    void makeCurrent(const QString& row);
    void setFilter(const QString& text);

    // The rows with some tick and the parents above them, tick columns as "X".
    ListSheet sheet() const;
    std::vector<QAction*> outputActions() const;
    QTreeView* view() const;

    QSize sizeHint() const override;

  signals:
    void tickChanged(); // by the user or as he does it; not by loading, reverting or accepting
    void dirtyChanged(bool dirty);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void build();
    void buildToolLine(QVBoxLayout* layout);
    void addAllButton(QHBoxLayout* line, const char* name, const QString& text, bool ticked);
    void toggle();
    void userTicked();
    void ticksChanged();
    void showAllBelow();
    void updateCounts();

    Dialogs& dialogs_;
    UserMemory& memory_;
    TickModel* model_;
    QTreeView* view_ = nullptr;
    QLineEdit* find_ = nullptr;
    QLabel *counts_ = nullptr, *empty_ = nullptr;
    std::unique_ptr<ColumnLayout> columns_;
    ListOutput* output_ = nullptr;
    QString title_, emptyText_;
    QStringList notes_;
    bool wasDirty_ = false;
};

using TickTree = TickList; // with parents

} // namespace orvan
