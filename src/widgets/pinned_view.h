// widgets/pinned_view.h — a table whose first columns stay in place when it is scrolled sideways. The pinned
// part is painted by a second view on the same model and selection; the keyboard always works in the table
// itself.
#pragma once

#include <QTableView>

namespace orvan {

class PinnedTableView : public QTableView {
    Q_OBJECT

  public:
    explicit PinnedTableView(QWidget* parent = nullptr);

    void setPinnedColumns(int count); // the first `count` shown columns; 0: none
    int pinnedColumns() const { return pinned_; }
    const QTableView* pinnedPart() const { return part_; } // visible while something is scrolled under it

    void reveal(const QModelIndex& index); // also what a pinned cell needs to be edited in place

    void setModel(QAbstractItemModel* model) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

  protected:
    void updateGeometries() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    bool isPinned(int column) const;
    int pinnedWidth() const;
    void placePart();
    void copyColumns();

    QTableView* part_;
    int pinned_ = 0;
};

} // namespace orvan
