// widgets/edit_model.h — shows EditCells to Qt's views, in an order of the rows that the user chooses.
#pragma once

#include "widgets/edit_cells.h"

#include <QAbstractTableModel>

namespace orvan {

class EditModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    enum Role { RefusedRole = Qt::UserRole, KindRole, TickedRole };

    EditModel(std::vector<EditColumn> columns, QObject* parent);

    EditCells& cells() { return cells_; }
    const EditCells& cells() const { return cells_; }
    void setRows(std::vector<EditRow> rows);
    void setReadOnly(bool readOnly);
    void setLocked(std::function<bool(CellPlace)> isLocked);
    bool takesInput(CellPlace place) const;

    CellPlace place(const QModelIndex& index) const;
    QModelIndex indexOf(CellPlace place) const;
    void touched(const std::vector<CellPlace>& places); // tells the views

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    void sort(int column, Qt::SortOrder order) override;

  private:
    void setOrder(int column, Qt::SortOrder order);
    EditCells cells_;
    std::vector<size_t> order_;   // row of the cells at each shown row
    std::vector<size_t> shownAt_; // the other way round
    std::function<bool(CellPlace)> isLocked_;
    bool readOnly_ = false;
    int sortColumn_ = -1;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
};

} // namespace orvan
