// widgets/edit_cells.cpp — values, refusals and undo of an entry grid.
#include "widgets/edit_cells.h"

#include <algorithm>
#include <cassert>

namespace orvan {

size_t EditCells::column(const QString& key) const {
    const auto found = std::find_if(columns_.begin(), columns_.end(),
                                    [&](const EditColumn& column) { return column.key == key; });
    assert(found != columns_.end());
    return static_cast<size_t>(found - columns_.begin());
}

void EditCells::setRows(std::vector<EditRow> rows) {
    assert(std::all_of(rows.begin(), rows.end(),
                       [this](const EditRow& row) { return row.size() == columns_.size(); }));
    rows_ = std::move(rows);
    loaded_ = rows_;
    refusals_.clear();
    changed_ = 0;
    done_.clear();
    undone_.clear();
}

const EditCells::Refusal* EditCells::refusal(CellPlace place) const {
    const auto found = refusals_.find(place);
    return found == refusals_.end() ? nullptr : &found->second;
}

std::vector<CellPlace> EditCells::changedCells() const {
    std::vector<CellPlace> cells;
    for (size_t row = 0; row < rows_.size() && cells.size() < changed_; ++row)
        for (size_t column = 0; column < columns_.size(); ++column)
            if (isChanged({row, column})) cells.push_back({row, column});
    return cells;
}

void EditCells::putLoaded(CellPlace place, const QString& value) {
    if (isChanged(place)) --changed_;
    rows_[place.row][place.column] = loaded_[place.row][place.column] = value;
    refusals_.erase(place);
}

void EditCells::mark(CellPlace place, const Refusal& refusal) { refusals_[place] = refusal; }

void EditCells::acceptAsLoaded() {
    loaded_ = rows_;
    changed_ = 0;
}

void EditCells::put(CellPlace place, const QString& value) { change(place, {value, std::nullopt}); }

void EditCells::refuse(CellPlace place, const QString& typed, const QString& reason) {
    change(place, {value(place), Refusal{typed, reason}});
}

void EditCells::change(CellPlace place, const State& after) {
    const State before = state(place);
    if (before == after) return;
    step_.push_back({place, before, after});
    setState(place, after);
}

std::vector<CellPlace> EditCells::end() {
    const std::vector<CellPlace> touched = places(step_);
    if (!step_.empty()) {
        done_.push_back(std::move(step_));
        undone_.clear();
    }
    step_.clear();
    return touched;
}

std::vector<CellPlace> EditCells::undo() {
    if (done_.empty()) return {};
    Step step = std::move(done_.back());
    done_.pop_back();
    for (auto change = step.rbegin(); change != step.rend(); ++change)
        setState(change->place, change->before);
    undone_.push_back(std::move(step));
    return places(undone_.back());
}

std::vector<CellPlace> EditCells::redo() {
    if (undone_.empty()) return {};
    Step step = std::move(undone_.back());
    undone_.pop_back();
    for (const Change& change : step)
        setState(change.place, change.after);
    done_.push_back(std::move(step));
    return places(done_.back());
}

void EditCells::revert() {
    std::vector<CellPlace> cells = changedCells();
    for (const auto& [place, refusal] : refusals_)
        cells.push_back(place);
    for (const CellPlace place : cells)
        put(place, loaded_[place.row][place.column]);
}

EditCells::State EditCells::state(CellPlace place) const {
    const Refusal* refused = refusal(place);
    return {value(place), refused ? std::optional(*refused) : std::nullopt};
}

void EditCells::setState(CellPlace place, const State& state) {
    if (isChanged(place)) --changed_;
    rows_[place.row][place.column] = state.value;
    if (isChanged(place)) ++changed_;
    if (state.refusal)
        refusals_[place] = *state.refusal;
    else
        refusals_.erase(place);
}

std::vector<CellPlace> EditCells::places(const Step& step) {
    std::vector<CellPlace> cells;
    for (const Change& change : step)
        cells.push_back(change.place);
    return cells;
}

} // namespace orvan
