// widgets/form_layout.cpp — columns, groups, labels and notes of a form.
#include "widgets/form_layout.h"

#include <algorithm>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

namespace orvan {

namespace {

constexpr int kNoteWidth = 26; // characters; longer words about a field take more lines

} // namespace

FormLayout::FormLayout(QWidget* form, std::span<const FormField> fields) : form_(form) {
    auto* whole = new QVBoxLayout(form);
    columnsRow_ = new QHBoxLayout;
    columnsRow_->setSpacing(form->fontMetrics().averageCharWidth() * 3);
    whole->addLayout(columnsRow_, 1);
    int columns = 1;
    for (const FormField& field : fields)
        columns = std::max(columns, field.column + 1);
    for (int column = 0; column < columns; ++column) {
        columns_.push_back(new QVBoxLayout);
        columnsRow_->addLayout(columns_.back(), columns == 1 ? 1 : 0);
    }
    if (columns == 1) return;
    columnsRow_->addStretch(1);
    shared_ = makeNote(sharedNote());
    shared_->setMinimumHeight(form->fontMetrics().lineSpacing() * 3 / 2);
    whole->addWidget(shared_);
}

QLabel* FormLayout::add(const FormField& about, QWidget* editor, bool carriesLabel) {
    QGridLayout* grid = gridOf(about);
    const int row = grid->rowCount();
    if (!carriesLabel) {
        auto* label = new QLabel(about.label, form_);
        label->setBuddy(editor);
        const bool isTall = about.kind == FieldKind::Memo;
        grid->addWidget(label, row, 0, isTall ? Qt::AlignTop : Qt::AlignVCenter);
    }
    grid->addWidget(editor, row, 1, Qt::AlignLeft);
    if (shared_) return shared_;
    QLabel* note = makeNote(about.name + QStringLiteral("-uyari"));
    grid->addWidget(note, row, 2);
    return note;
}

// Labels of the groups below each other are of one width, so that their fields stand below each other.
void FormLayout::finish() {
    std::vector<int> widths(columns_.size());
    for (const Grid& grid : grids_)
        for (int row = 0; row < grid.layout->rowCount(); ++row)
            if (const QLayoutItem* label = grid.layout->itemAtPosition(row, 0))
                widths[static_cast<size_t>(grid.column)] =
                    std::max(widths[static_cast<size_t>(grid.column)], label->sizeHint().width());
    for (const Grid& grid : grids_)
        grid.layout->setColumnMinimumWidth(0, widths[static_cast<size_t>(grid.column)]);
    for (QVBoxLayout* column : columns_)
        column->addStretch(1);
}

QGridLayout* FormLayout::gridOf(const FormField& about) {
    if (grid_ && about.column == column_ && about.group == group_) return grid_;
    column_ = about.column;
    group_ = about.group;
    grid_ = new QGridLayout;
    QVBoxLayout* column = columns_[static_cast<size_t>(column_)];
    if (group_.isEmpty()) {
        column->addLayout(grid_);
    } else {
        auto* box = new QGroupBox(group_, form_);
        box->setLayout(grid_);
        column->addWidget(box);
    }
    grid_->setHorizontalSpacing(form_->fontMetrics().averageCharWidth() * 2);
    grid_->setVerticalSpacing(form_->style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing, nullptr, form_));
    grid_->setColumnStretch(2, 1);
    if (!shared_) grid_->setColumnMinimumWidth(2, form_->fontMetrics().averageCharWidth() * kNoteWidth);
    grids_.push_back({grid_, column_});
    return grid_;
}

QLabel* FormLayout::makeNote(const QString& name) const {
    auto* note = new QLabel(form_);
    note->setObjectName(name);
    note->setWordWrap(true);
    note->setTextFormat(Qt::PlainText);
    return note;
}

} // namespace orvan
