// records/screens/related_lists.cpp — see related_lists.h.
#include "records/screens/related_lists.h"

#include "widgets/screen.h"

#include <algorithm>
#include <QTabWidget>
#include <QVBoxLayout>

namespace orvan {

namespace {

std::vector<ListColumn> columnsOf(const Schema& schema, const RelatedList& list) {
    std::vector<ListColumn> columns;
    for (const RelatedField& field : list.fields) {
        const QString title = schema.label(list.table, field.field);
        const int width = schema.width(list.table, field.field);
        const auto least = static_cast<int>(title.size()) + 1;
        const ListKind kind = field.number                             ? ListKind::Number
                              : title.contains(QStringLiteral("arih")) ? ListKind::Date
                                                                       : ListKind::Text;
        columns.push_back({QString::fromLatin1(field.field), title, kind, std::clamp(width, least, 30)});
    }
    return columns;
}

} // namespace

RelatedLists::RelatedLists(DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory, QWidget* parent)
    : QWidget(parent), databases_(databases), dialogs_(dialogs), tabs_(new QTabWidget(this)) {
    tabs_->setObjectName(QStringLiteral("listeler"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tabs_);
    for (const RelatedList& list : relatedLists()) {
        auto* grid = new ListGrid(QStringLiteral("ogrenci-%1").arg(QLatin1String(list.name)),
                                  columnsOf(databases.schema(), list), dialogs, memory, tabs_);
        grid->setEmptyText(QStringLiteral("Kayıt yok."));
        tabs_->addTab(grid, QString::fromUtf8(list.title));
        grids_.push_back(grid);
    }
}

void RelatedLists::showStudent(const StudentRecord& student) {
    student_ = student;
    fresh_ = false;
    if (isVisible()) load();
}

void RelatedLists::load() {
    fresh_ = true;
    attempt(dialogs_, QStringLiteral("Öğrencinin listeleri"), [this] {
        for (size_t i = 0; i < grids_.size(); ++i) {
            const RelatedList& list = relatedLists()[i];
            grids_[i]->setTitle(
                QStringLiteral("%1 %2 - %3")
                    .arg(student_.number(), student_.fullName(), QString::fromUtf8(list.title)));
            grids_[i]->setRows(relatedRows(databases_, list, student_));
        }
    });
}

void RelatedLists::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (!fresh_) load();
}

void RelatedLists::focusInEvent(QFocusEvent*) { tabs_->currentWidget()->setFocus(Qt::TabFocusReason); }

} // namespace orvan
