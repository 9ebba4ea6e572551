// widgets/edit_grid_block.cpp — blocks of cells to and from the clipboard.
#include "widgets/edit_grid_body.h"
#include "widgets/list_export.h"
#include "widgets/text_block.h"

#include <algorithm>
#include <QApplication>
#include <QClipboard>

namespace orvan {

namespace {

constexpr int kNamed = 20; // read-only cells that a paste names one by one

} // namespace

// The rectangle around the selection; cells in it that are not selected stay empty.
void EditGridBody::copy() {
    const QModelIndexList cells = selectedCells();
    if (cells.isEmpty()) return;
    const std::vector<int> columns = shownColumns();
    const auto placeOf = [&](int column) {
        return static_cast<int>(std::find(columns.begin(), columns.end(), column) - columns.begin());
    };
    int top = model_->rowCount(), bottom = -1, left = static_cast<int>(columns.size()), right = -1;
    for (const QModelIndex& cell : cells) {
        top = std::min(top, cell.row());
        bottom = std::max(bottom, cell.row());
        left = std::min(left, placeOf(cell.column()));
        right = std::max(right, placeOf(cell.column()));
    }
    std::vector<QStringList> block(static_cast<size_t>(bottom - top + 1));
    for (QStringList& row : block)
        row.resize(right - left + 1);
    for (const QModelIndex& cell : cells) {
        const CellPlace place = model_->place(cell);
        const EditCells& values = model_->cells();
        const EditCells::Refusal* refused = values.refusal(place);
        block[static_cast<size_t>(cell.row() - top)][placeOf(cell.column()) - left] =
            refused ? refused->typed : copiedCell(values.columns()[place.column], values.value(place));
    }
    QApplication::clipboard()->setText(tabSeparated(block));
}

void EditGridBody::cut() {
    copy();
    clearSelected();
}

void EditGridBody::paste() {
    const std::vector<QStringList> block = readTextBlock(QApplication::clipboard()->text());
    if (block.empty() || !view_->currentIndex().isValid()) return;
    QApplication::setOverrideCursor(Qt::BusyCursor);
    pasteBlock(block);
    QApplication::restoreOverrideCursor();
}

// From the selection's first cell on; one value alone fills the whole selection.
void EditGridBody::pasteBlock(const std::vector<QStringList>& block) {
    const QModelIndexList selected = selectedCells();
    const std::vector<int> columns = shownColumns();
    QStringList locked;
    int lockedCount = 0, outside = 0;
    const auto put = [&](int row, int column, const QString& text) {
        if (row >= model_->rowCount() || column >= static_cast<int>(columns.size())) {
            ++outside;
            return;
        }
        const CellPlace place = model_->place(model_->index(row, columns[static_cast<size_t>(column)]));
        const EditCells& cells = model_->cells();
        if (model_->takesInput(place)) {
            enterCell(place, text);
        } else if (text != copiedCell(cells.columns()[place.column], cells.value(place)) &&
                   ++lockedCount <= kNamed) {
            locked << QStringLiteral("%1: \"%2\" — Bu hücre değiştirilemez.").arg(nameOf(place), text);
        }
    };
    const auto placeOf = [&](const QModelIndex& cell) {
        return static_cast<int>(std::find(columns.begin(), columns.end(), cell.column()) - columns.begin());
    };
    model_->cells().begin();
    if (block.size() == 1 && block[0].size() == 1) {
        for (const QModelIndex& cell : selected)
            put(cell.row(), placeOf(cell), block[0][0]);
    } else {
        int top = model_->rowCount(), left = static_cast<int>(columns.size());
        for (const QModelIndex& cell : selected) {
            top = std::min(top, cell.row());
            left = std::min(left, placeOf(cell));
        }
        for (size_t row = 0; row < block.size(); ++row)
            for (qsizetype column = 0; column < block[row].size(); ++column)
                put(top + static_cast<int>(row), left + static_cast<int>(column), block[row][column]);
    }
    placesOutside_ = locked;
    if (lockedCount > kNamed)
        placesOutside_ << QStringLiteral("Değiştirilemeyen %1 hücre daha.").arg(lockedCount - kNamed);
    if (outside > 0)
        placesOutside_ << QStringLiteral("Tablonun dışında kalan %1 hücre alınmadı.").arg(outside);
    endStep();
    updateRefusals();
}

} // namespace orvan
