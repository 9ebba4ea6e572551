// widgets/column_layout.cpp — a list's columns: menu to show and hide them, and each user's layout.
#include "widgets/column_layout.h"

#include <algorithm>
#include <QAction>
#include <QHeaderView>
#include <QMenu>

namespace orvan {

ColumnLayout::ColumnLayout(QHeaderView* header, std::vector<ListColumn> columns, UserMemory& memory,
                           const QString& key)
    : header_(header), columns_(std::move(columns)), memory_(memory), key_(key) {}

int ColumnLayout::pixelWidth(const ListColumn& column) const {
    const QFontMetrics metrics = header_->fontMetrics();
    const bool isText = column.kind == ListKind::Text; // digits are wider than the usual letter
    const int letter = isText ? metrics.averageCharWidth() : metrics.horizontalAdvance(u'0');
    const int content = letter * (column.width + 2);
    // room for the sort arrow beside the title
    const int title = metrics.horizontalAdvance(column.title) + metrics.averageCharWidth() * 5;
    return std::max(content, title);
}

void ColumnLayout::reset() {
    for (int logical = 0; logical < header_->count(); ++logical) {
        const ListColumn& column = columns_[static_cast<size_t>(logical)];
        header_->moveSection(header_->visualIndex(logical), logical);
        header_->setSectionHidden(logical, false);
        header_->resizeSection(logical, pixelWidth(column));
        header_->setSectionHidden(logical, !column.shown);
    }
}

// One text a column, "key;width in characters;shown", in the order shown; unknown and missing columns do no
// harm.
void ColumnLayout::save() const {
    const double unit = header_->fontMetrics().averageCharWidth();
    QStringList layout;
    for (int visual = 0; visual < header_->count(); ++visual) {
        const int logical = header_->logicalIndex(visual);
        const bool hidden = header_->isSectionHidden(logical);
        if (hidden) header_->setSectionHidden(logical, false); // a hidden column reports no width
        layout << QStringLiteral("%1;%2;%3")
                      .arg(columns_[static_cast<size_t>(logical)].key)
                      .arg(header_->sectionSize(logical) / unit, 0, 'f', 1)
                      .arg(hidden ? 0 : 1);
        if (hidden) header_->setSectionHidden(logical, true);
    }
    const int sorted = header_->sortIndicatorSection();
    const QString sortKey = sorted >= 0 ? columns_[static_cast<size_t>(sorted)].key : QString();
    memory_.setValue(key_ + QStringLiteral("/Sutunlar"), layout);
    memory_.setValue(key_ + QStringLiteral("/Siralama"), sortKey);
    memory_.setValue(key_ + QStringLiteral("/Azalan"), header_->sortIndicatorOrder() == Qt::DescendingOrder);
}

void ColumnLayout::restore() {
    reset();
    const double unit = header_->fontMetrics().averageCharWidth();
    int visual = 0;
    for (const QString& line : memory_.value(key_ + QStringLiteral("/Sutunlar")).toStringList()) {
        const QStringList parts = line.split(u';');
        const int logical = find(parts.value(0));
        if (logical < 0 || parts.size() != 3) continue;
        header_->moveSection(header_->visualIndex(logical), visual++);
        const int width = static_cast<int>(parts[1].toDouble() * unit);
        header_->resizeSection(logical, std::clamp(width, header_->fontMetrics().height(), 2000));
        header_->setSectionHidden(logical, parts[2] == QStringLiteral("0"));
    }
    if (header_->hiddenSectionCount() == header_->count()) reset();
    const int sorted = find(memory_.value(key_ + QStringLiteral("/Siralama")).toString());
    const bool descending = memory_.value(key_ + QStringLiteral("/Azalan")).toBool();
    if (sorted >= 0) header_->setSortIndicator(sorted, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void ColumnLayout::fillMenu(QMenu* menu) {
    menu->clear();
    const int shownCount = header_->count() - header_->hiddenSectionCount();
    for (int visual = 0; visual < header_->count(); ++visual) {
        const int logical = header_->logicalIndex(visual);
        const ListColumn& column = columns_[static_cast<size_t>(logical)];
        const bool hidden = header_->isSectionHidden(logical);
        QAction* action = menu->addAction(column.title);
        action->setObjectName(QStringLiteral("sutun-") + column.key);
        action->setCheckable(true);
        action->setChecked(!hidden);
        action->setEnabled(hidden || shownCount > 1); // the last one stays
        QObject::connect(action, &QAction::toggled, header_, [this, logical](bool on) {
            header_->setSectionHidden(logical, !on);
            if (on && header_->sectionSize(logical) < 10)
                header_->resizeSection(logical, pixelWidth(columns_[static_cast<size_t>(logical)]));
        });
    }
    menu->addSeparator();
    QObject::connect(menu->addAction(QStringLiteral("&Başlangıç düzeni")), &QAction::triggered, header_,
                     [this] { reset(); });
}

std::vector<size_t> ColumnLayout::shown() const {
    std::vector<size_t> columns;
    for (int visual = 0; visual < header_->count(); ++visual) {
        const int logical = header_->logicalIndex(visual);
        if (!header_->isSectionHidden(logical)) columns.push_back(static_cast<size_t>(logical));
    }
    return columns;
}

int ColumnLayout::find(const QString& key) const {
    for (size_t i = 0; i < columns_.size(); ++i)
        if (columns_[i].key == key) return static_cast<int>(i);
    return -1;
}

} // namespace orvan
