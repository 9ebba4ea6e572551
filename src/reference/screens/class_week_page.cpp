// reference/screens/class_week_page.cpp — see class_week_page.h.
#include "reference/screens/class_week_page.h"

#include "widgets/edit_grid.h"

#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kSlot = QStringLiteral("ders");
const QString kDay = QStringLiteral("gun");
const QString kRoom = QStringLiteral("derslik");
const QString kStart = QStringLiteral("baslangic");
const QString kEnd = QStringLiteral("bitis");
const QString kTeacher = QStringLiteral("ogretmen");

std::vector<EditColumn> columns(const ClassList& classes) {
    const SlotFields& slot = slotFields().front();
    std::vector<Choice> days;
    for (const QString& day : weekDays())
        days.push_back({day, day});
    EditColumn dayColumn{kDay, QStringLiteral("Gün"), CellKind::Choice, 11};
    dayColumn.choices = std::move(days);
    return {{kSlot, QStringLiteral("Ders"), CellKind::ReadOnly, 5},
            dayColumn,
            {kRoom, QStringLiteral("Derslik"), CellKind::Text, 14, classes.width(slot.room)},
            {kStart, QStringLiteral("Başlangıç"), CellKind::Code, 9, classes.width(slot.start)},
            {kEnd, QStringLiteral("Bitiş"), CellKind::Code, 7, classes.width(slot.end)},
            {kTeacher, QStringLiteral("Öğretmen"), CellKind::Text, 22, classes.width(slot.teacher)}};
}

// The grid's column of each field of a slot.
std::vector<std::pair<QString, QString>> cells(const SlotFields& slot) {
    return {{kDay, slot.day},
            {kRoom, slot.room},
            {kStart, slot.start},
            {kEnd, slot.end},
            {kTeacher, slot.teacher}};
}

CellCheck checkTime(CellPlace, const QString& typed) {
    if (typed.isEmpty()) return CellCheck::take({});
    const QString time = timeFromText(typed);
    return time.isEmpty()
               ? CellCheck::refuse(QStringLiteral("Saat 09:30 gibi yazılır; “%1” saat değil.").arg(typed))
               : CellCheck::take(time);
}

QString textOf(const FieldTexts* row, const QString& field) {
    if (!row) return {};
    const auto found = row->find(field);
    return found == row->end() ? QString() : found->second;
}

} // namespace

ClassWeekPage::ClassWeekPage(const ClassList& classes, Dialogs& dialogs, UserMemory& memory, QWidget* parent)
    : QWidget(parent),
      grid_(new EditGrid(QStringLiteral("dersSaatleri"), columns(classes), dialogs, memory, this)) {
    grid_->setTitle(QStringLiteral("Ders Saatleri"));
    grid_->setEntryDirection(EntryDirection::Right);
    grid_->hideFind();
    grid_->setValidator(kStart, checkTime);
    grid_->setValidator(kEnd, checkTime);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(grid_);
    setFocusProxy(grid_);
    connect(grid_, &EditGrid::dirtyChanged, this, &ClassWeekPage::changed);
    connect(grid_, &EditGrid::edited, this, &ClassWeekPage::changed);
}

void ClassWeekPage::show(const FieldTexts* row) {
    std::vector<EditRow> rows;
    for (const SlotFields& slot : slotFields()) {
        EditRow line{QStringLiteral("%1.").arg(rows.size() + 1)};
        for (const auto& [key, field] : cells(slot))
            line.push_back(textOf(row, field));
        rows.push_back(std::move(line));
    }
    grid_->setNotes({textOf(row, QStringLiteral("SinifAdi"))});
    grid_->setRows(std::move(rows));
    grid_->makeCurrent(0, kDay);
}

void ClassWeekPage::takeOver(const FieldTexts& row) {
    const auto typed = grid_->changedCells();
    const QStringList keys{kSlot, kDay, kRoom, kStart, kEnd, kTeacher};
    for (size_t i = 0; i < slotFields().size(); ++i)
        for (const auto& [key, field] : cells(slotFields()[i])) {
            const CellPlace place{i, static_cast<size_t>(keys.indexOf(key))};
            if (std::find(typed.begin(), typed.end(), place) == typed.end())
                grid_->setValue(i, key, textOf(&row, field));
        }
}

void ClassWeekPage::addTo(FieldTexts& wanted) const {
    for (size_t i = 0; i < slotFields().size(); ++i)
        for (const auto& [key, field] : cells(slotFields()[i]))
            wanted[field] = grid_->value(i, key);
}

std::vector<TeachingHour> ClassWeekPage::hours() const {
    FieldTexts row;
    if (grid_->rowCount() > 0) addTo(row);
    return hoursOf(row);
}

bool ClassWeekPage::settle() { return grid_->settle(); }
bool ClassWeekPage::isDirty() const { return grid_->isDirty(); }
void ClassWeekPage::revert() { grid_->revert(); }

bool ClassWeekPage::showWrong(const QString& field, const QString& reason) {
    for (size_t i = 0; i < slotFields().size(); ++i)
        for (const auto& [key, name] : cells(slotFields()[i]))
            if (name == field) {
                grid_->showWrong(i, key, reason);
                return true;
            }
    return false;
}

} // namespace orvan
