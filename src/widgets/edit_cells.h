// widgets/edit_cells.h — the cells of an entry grid: what was loaded, what has been changed, which texts were
// refused, and undo over whole steps. Pure; knows no order on the screen and checks nothing.
#pragma once

#include "widgets/edit_grid.h"

#include <map>

namespace orvan {

class EditCells {
  public:
    explicit EditCells(std::vector<EditColumn> columns) : columns_(std::move(columns)) {}

    struct Refusal {
        QString typed;
        QString reason;
        bool operator==(const Refusal&) const = default;
    };

    const std::vector<EditColumn>& columns() const { return columns_; }
    size_t column(const QString& key) const; // REQUIRES: there is one
    size_t rowCount() const { return rows_.size(); }
    void setRows(std::vector<EditRow> rows); // as loaded; forgets refusals and undo

    const EditRow& row(size_t row) const { return rows_[row]; }
    const QString& value(CellPlace place) const { return rows_[place.row][place.column]; }
    bool isChanged(CellPlace place) const { return value(place) != loaded_[place.row][place.column]; }
    const Refusal* refusal(CellPlace place) const; // nullptr: none
    const std::map<CellPlace, Refusal>& refusals() const { return refusals_; }
    size_t changedCount() const { return changed_; }
    std::vector<CellPlace> changedCells() const;

    // Not to be undone.
    void putLoaded(CellPlace place, const QString& value);
    void mark(CellPlace place, const Refusal& refusal);
    void acceptAsLoaded();

    // Changes between begin and end are one step of undo. end: the cells the step has touched.
    void begin() { step_.clear(); }
    void put(CellPlace place, const QString& value); // a refusal of the cell is over
    void refuse(CellPlace place, const QString& typed, const QString& reason);
    std::vector<CellPlace> end();

    std::vector<CellPlace> undo(); // the cells that were given back; empty: nothing to undo
    std::vector<CellPlace> redo();
    void revert(); // a part of a step: everything as loaded

  private:
    struct State {
        QString value;
        std::optional<Refusal> refusal;
        bool operator==(const State&) const = default;
    };
    struct Change {
        CellPlace place;
        State before, after;
    };
    using Step = std::vector<Change>;

    State state(CellPlace place) const;
    void setState(CellPlace place, const State& state);
    void change(CellPlace place, const State& after);
    static std::vector<CellPlace> places(const Step& step);

    std::vector<EditColumn> columns_;
    std::vector<EditRow> rows_, loaded_;
    std::map<CellPlace, Refusal> refusals_;
    size_t changed_ = 0;
    Step step_; // being made
    std::vector<Step> done_, undone_;
};

} // namespace orvan
