// widgets/edit_grid_entry.cpp — entering values: keys, editors, checks, undo.
#include "widgets/edit_grid_body.h"
#include "widgets/text_edit.h"

#include <algorithm>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>

namespace orvan {

bool EditGridBody::keyInView(const QKeyEvent& key) {
    const bool control = key.modifiers() & Qt::ControlModifier;
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (!key.isAutoRepeat()) goOn();
        return true;
    case Qt::Key_F2: openEditor(false, nullptr); return true;
    case Qt::Key_F4: openEditor(true, &key); return true;
    case Qt::Key_Delete: clearSelected(); return true;
    case Qt::Key_Backspace: openEditor(true, &key); return true;
    case Qt::Key_Escape: return giveBack();
    case Qt::Key_Space:
        if (!control && toggleTicks()) return true;
        break;
    default: break;
    }
    if (!typesText(key)) return false;
    openEditor(true, &key);
    return true;
}

void EditGridBody::openEditor(bool replace, const QKeyEvent* typed) {
    const QModelIndex index = view_->currentIndex();
    if (!index.isValid()) return;
    const CellPlace place = model_->place(index);
    if (!model_->takesInput(place)) {
        reason_->setText(QStringLiteral("Bu hücre değiştirilemez."));
        return;
    }
    if (model_->cells().columns()[place.column].kind == CellKind::Check) {
        if (typed && typesText(*typed) &&
            checkCell(model_->cells().columns()[place.column], typed->text()).taken())
            commit(index, typed->text());
        return;
    }
    view_->reveal(index);
    view_->edit(index);
    delegate_->begin(replace);
    QWidget* editor = delegate_->editor();
    if (!editor || !typed) return;
    QKeyEvent first(QEvent::KeyPress, typed->key(), typed->modifiers(), typed->text());
    QApplication::sendEvent(editor, &first);
}

CellCheck EditGridBody::check(CellPlace place, const QString& typed) const {
    const CellCheck kind = checkCell(model_->cells().columns()[place.column], typed);
    if (!kind.taken() || kind.value == model_->cells().value(place)) return kind;
    const auto own = validators_.find(place.column);
    const CellValidator& validator = own == validators_.end() ? validator_ : own->second;
    return validator ? validator(place, kind.value) : kind;
}

// A cell whose text is as it was is never checked: old values may be odd.
void EditGridBody::enterCell(CellPlace place, const QString& typed) {
    EditCells& cells = model_->cells();
    const QString& value = cells.value(place);
    const bool asBefore = typed == value || typed == shownCell(cells.columns()[place.column], value);
    if (asBefore && !cells.refusal(place)) return;
    const CellCheck result = check(place, typed);
    if (result.taken())
        cells.put(place, result.value);
    else
        cells.refuse(place, typed, result.refusal);
}

void EditGridBody::commit(const QModelIndex& index, const QString& typed) {
    model_->cells().begin();
    enterCell(model_->place(index), typed);
    placesOutside_.clear();
    endStep();
}

void EditGridBody::endStep() {
    const std::vector<CellPlace> places = model_->cells().end();
    if (places.empty()) return;
    model_->touched(places);
    cellsChanged(places);
}

void EditGridBody::leaveEditor(Qt::Key key) {
    view_->setFocus(Qt::OtherFocusReason);
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter: goOn(); break;
    case Qt::Key_Up: move(-1, 0); break;
    case Qt::Key_Down: move(1, 0); break;
    case Qt::Key_Left: move(0, -1); break;
    case Qt::Key_Right: move(0, 1); break;
    default: { // Tab leaves the grid, from inside a cell too
        QKeyEvent tab(QEvent::KeyPress, key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        QApplication::sendEvent(view_, &tab);
    }
    }
}

// A refused cell is not left by Enter: its reason is on view.
void EditGridBody::goOn() {
    const QModelIndex current = view_->currentIndex();
    if (!current.isValid() || model_->cells().refusal(model_->place(current))) return;
    const QModelIndex next = nextCell(current);
    if (next.isValid())
        goTo(next);
    else
        emit grid_.lastCellDone();
}

QModelIndex EditGridBody::nextCell(const QModelIndex& from) const {
    const std::vector<int> columns = shownColumns();
    const int rows = model_->rowCount(), count = static_cast<int>(columns.size());
    const auto place = std::find(columns.begin(), columns.end(), from.column());
    const int column = static_cast<int>(place - columns.begin());
    const bool down = direction_ == EntryDirection::Down;
    const int inner = down ? rows : count, total = rows * count;
    for (int at = (down ? column * rows + from.row() : from.row() * count + column) + 1; at < total; ++at) {
        const int row = down ? at % inner : at / inner;
        const auto shown = static_cast<size_t>(down ? at / inner : at % inner);
        const QModelIndex index = model_->index(row, columns[shown]);
        if (model_->takesInput(model_->place(index))) return index;
    }
    return {};
}

void EditGridBody::move(int rows, int steps) {
    const QModelIndex current = view_->currentIndex();
    const std::vector<int> columns = shownColumns();
    const auto place = std::find(columns.begin(), columns.end(), current.column());
    const int row = std::clamp(current.row() + rows, 0, model_->rowCount() - 1);
    const int column = std::clamp(static_cast<int>(place - columns.begin()) + steps, 0,
                                  static_cast<int>(columns.size()) - 1);
    goTo(model_->index(row, columns[static_cast<size_t>(column)]));
}

// All ticks of the selection become what the current one becomes.
bool EditGridBody::toggleTicks() {
    const QModelIndex current = view_->currentIndex();
    const auto isTick = [](const QModelIndex& index) {
        return index.data(EditModel::KindRole).toInt() == static_cast<int>(CellKind::Check);
    };
    if (!current.isValid() || !isTick(current)) return false;
    const QString wanted = current.data(EditModel::TickedRole).toBool() ? kNoText : kYesText;
    model_->cells().begin();
    for (const QModelIndex& index : selectedCells())
        if (isTick(index) && model_->takesInput(model_->place(index)))
            enterCell(model_->place(index), wanted);
    endStep();
    return true;
}

// Esc in a refused cell: its value is shown again. Else Esc is the window's.
bool EditGridBody::giveBack() {
    const QModelIndex current = view_->currentIndex();
    if (!current.isValid()) return false;
    const CellPlace place = model_->place(current);
    EditCells& cells = model_->cells();
    if (!cells.refusal(place)) return false;
    cells.begin();
    cells.put(place, cells.value(place));
    endStep();
    return true;
}

void EditGridBody::clearSelected() {
    model_->cells().begin();
    for (const QModelIndex& index : selectedCells())
        if (model_->takesInput(model_->place(index))) enterCell(model_->place(index), {});
    endStep();
}

void EditGridBody::undo(std::vector<CellPlace> (EditCells::*step)()) {
    const std::vector<CellPlace> places = (model_->cells().*step)();
    if (places.empty()) return;
    placesOutside_.clear();
    model_->touched(places);
    makeCurrent(places.front());
    cellsChanged(places);
}

} // namespace orvan
