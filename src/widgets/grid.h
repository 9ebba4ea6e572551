// widgets/grid.h — a read-only list: find-as-you-type line, sorting by header click, counts, copy, print,
// export. Each user's column widths, order, visibility and sorting are remembered per list. Holds rows, knows
// no query.
#pragma once

#include "core/dialogs.h"
#include "widgets/list_model.h"
#include "widgets/user_memory.h"

#include <memory>
#include <optional>
#include <QWidget>

class QAction;
class QLabel;
class QLineEdit;
class QTableView;
class QVBoxLayout;

namespace orvan {

class ColumnLayout;
class ListOutput;
class PinnedTableView;

class ListGrid : public QWidget {
    Q_OBJECT

  public:
    // `name`: object name and the name its layout is remembered under. dialogs and memory must outlive the
    // grid.
    ListGrid(const QString& name, std::vector<ListColumn> columns, Dialogs& dialogs, UserMemory& memory,
             QWidget* parent = nullptr);
    ~ListGrid() override;

    // New rows. Filter, order and, as far as they are still there, selection and current row (by
    // `keyColumn`'s cell) stay.
    void setRows(std::vector<ListRow> rows);
    void setKeyColumn(size_t column) { keyColumn_ = column; }
    void setTitle(const QString& title) { title_ = title; } // of prints and exported files
    void setNotes(const QStringList& notes) { notes_ = notes; }
    // The order of a user who has not chosen one yet. REQUIRES: `key` is a column.
    void sortAtFirstBy(const QString& key);
    void setEmptyText(const QString& text); // shown while the list has no rows at all
    void setPinnedColumns(int count);       // the first ones shown stay in place when scrolled sideways

    QString filter() const;
    void setFilter(const QString& text);
    void focusFilter();

    size_t shownCount() const { return model_->rows().shownCount(); }
    size_t totalCount() const { return model_->rows().totalCount(); }
    std::optional<size_t> currentRow() const; // index in the rows of setRows
    std::vector<size_t> selectedRows() const; // the same, in shown order
    void makeCurrent(const QVariant& key);    // by keyColumn's cell; nothing when it is not shown

    // What is shown, as data: visible columns in their order, filtered rows in their order.
    ListSheet sheet() const;

    // "Yazdır…", "PDF…", "Excel…", "CSV…" for a menu or toolbar of the screen.
    std::vector<QAction*> outputActions() const;
    QTableView* view() const;

    QSize sizeHint() const override; // all columns side by side and a good page of rows

  signals:
    void activated(size_t row); // Enter or double click; index in the rows of setRows

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void build();
    void buildView();
    void buildToolLine(QVBoxLayout* layout);
    void applyFilter();
    void restoreSelection(const std::vector<QVariant>& selected, const QVariant& current);
    std::vector<QVariant> selectedKeys() const;
    QVariant currentKey() const;
    void updateCounts();
    void copySelection();
    void showContextMenu(QPoint place);

    QString title_;
    QStringList notes_;
    Dialogs& dialogs_;
    UserMemory& memory_;
    ListModel* model_;
    QLineEdit* find_ = nullptr;
    PinnedTableView* view_ = nullptr;
    QLabel* counts_ = nullptr;
    QLabel* empty_ = nullptr;
    QString emptyText_;
    std::unique_ptr<ColumnLayout> columns_;
    ListOutput* output_ = nullptr;
    size_t keyColumn_ = 0;
};

} // namespace orvan
