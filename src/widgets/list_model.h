// widgets/list_model.h — shows ListRows to Qt's views. Adds nothing of its own but alignment and texts.
#pragma once

#include "widgets/list_rows.h"

#include <QAbstractTableModel>

namespace orvan {

class ListModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    explicit ListModel(std::vector<ListColumn> columns, QObject* parent = nullptr);

    const ListRows& rows() const { return rows_; }
    void setRows(std::vector<ListRow> rows);
    void setFilter(const QString& text);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override;

  private:
    ListRows rows_;
};

} // namespace orvan
