// widgets/tick_model.h — the rows of a tick list as a tree: what is ticked, what the filter shows, and how
// parents follow the rows below them.
#pragma once

#include "widgets/tick_list.h"

#include <QAbstractItemModel>

namespace orvan {

class TickModel : public QAbstractItemModel {
    Q_OBJECT

  public:
    TickModel(std::vector<ListColumn> textColumns, std::vector<TickColumn> tickColumns, QObject* parent);

    const std::vector<ListColumn>& textColumns() const { return texts_; }
    const std::vector<TickColumn>& tickColumns() const { return ticks_; }
    std::vector<ListColumn> allColumns() const;  // texts, then ticks
    size_t tickColumn(const QString& key) const; // REQUIRES: there is one

    void setRows(std::vector<TickRow> rows);
    void setFilter(const QString& text); // every word in some cell; parents of what is shown are shown
    bool isTree() const { return isTree_; }
    size_t leafCount() const;
    size_t shownLeafCount() const;

    int find(const QString& key) const; // node; -1 when there is none
    Qt::CheckState state(int node, size_t column) const;
    void tick(const std::vector<int>& nodes, size_t column,
              bool ticked);              // with all below them that are shown
    std::vector<int> shownNodes() const; // at the top
    const TickRow& row(int node) const { return nodes_[static_cast<size_t>(node)].row; }
    bool isParent(int node) const { return !nodes_[static_cast<size_t>(node)].below.empty(); }
    int parentOf(int node) const { return nodes_[static_cast<size_t>(node)].parent; }
    int count() const { return static_cast<int>(nodes_.size()); }

    std::vector<TickChange> changes() const;
    void acceptAsLoaded();
    void revert();

    int node(const QModelIndex& index) const { return static_cast<int>(index.internalId()); }
    QModelIndex indexOf(int node, int column) const; // invalid when the filter hides it

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    void sort(int column, Qt::SortOrder order) override; // of a list; a tree keeps its order

  private:
    struct Node {
        TickRow row;
        std::vector<bool> loaded;
        int parent = -1;
        std::vector<int> below;
        std::vector<int> shownBelow;
        int place = 0; // among the shown ones; -1 when the filter hides it
    };
    void showMatches();
    bool showBelow(int node, const QStringList& words); // whether it is shown itself
    void count(int node, size_t column, int& ticked, int& all) const;
    void tickOne(int node, size_t column, bool ticked);
    const std::vector<int>& shownBelow(const QModelIndex& parent) const;
    QVariant cell(int node, size_t column) const;
    std::vector<int> sorted() const;

    std::vector<ListColumn> texts_;
    std::vector<TickColumn> ticks_;
    std::vector<Node> nodes_;
    std::vector<int> top_, shownTop_;
    QString filter_;
    bool isTree_ = false;
    int sortColumn_ = -1;
    Qt::SortOrder sortOrder_ = Qt::AscendingOrder;
};

} // namespace orvan
