// records/screens/bulk_edit_screen.cpp — what the window does; how it is put together: bulk_edit_build.cpp.
#include "records/screens/bulk_edit_screen.h"

#include "core/values.h"
#include "records/screens/student_choice_form.h"
#include "widgets/edit_grid.h"
#include "widgets/form.h"
#include "widgets/grid.h"
#include "widgets/tick_list.h"

#include <QApplication>
#include <QLabel>
#include <QScopedValueRollback>
#include <QSet>
#include <QStackedWidget>
#include <QTabWidget>

namespace orvan {

namespace {

constexpr int kStudentsPage = 0, kLinesPage = 1;

QString text(const StoredRow& student, const char* field) {
    return student.values.at(QString::fromLatin1(field));
}

QString keyOf(const StoredRow& student) { return QString::number(student.id.packed()); }

QString stateOf(const BulkLine& line, bool afterwards) {
    if (!line.refusal.isEmpty())
        return (afterwards ? QStringLiteral("Atlandı: ") : QStringLiteral("Atlanacak: ")) + line.refusal;
    const QString state = afterwards ? QStringLiteral("Değişti") : QStringLiteral("Değişecek");
    return line.warning.isEmpty() ? state : state + QStringLiteral(". Uyarı: ") + line.warning;
}

} // namespace

BulkEditScreen::BulkEditScreen(const BulkCommand& command, const QString& title, DatabaseSet& databases,
                               Dialogs& dialogs, UserMemory& memory, const Clock& clock, QWidget* parent)
    : Screen(QString::fromLatin1(command.window), title, dialogs, parent), databases_(databases),
      clock_(clock), edit_(command, title, databases, dialogs, clock) {
    build(memory);
    attempt(objectName(), [this] { load(); });
}

QStringList BulkEditScreen::notes() const {
    const Session& session = databases_.session();
    QStringList notes;
    if (!session.schoolName.isEmpty()) notes << session.schoolName;
    notes << QStringLiteral("%1 - %2 - %3")
                 .arg(levelText(session.level), dataSetCaption(session.mode), dateText(clock_.today()));
    const QString chosen = choice_->words();
    if (!chosen.isEmpty()) notes << chosen;
    return notes;
}

void BulkEditScreen::load() {
    choice_->offer(edit_.professions(), edit_.stages(), edit_.classes());
    selection_ = choice_->selection();
    showStudents();
}

void BulkEditScreen::selectionChanged() {
    if (busy_) return;
    if (!settleUnsaved()) {
        choice_->setSelection(selection_);
        return;
    }
    attempt(objectName(), [this] {
        selection_ = choice_->selection();
        showStudents();
        result_->clear();
    });
}

void BulkEditScreen::showStudents() {
    QApplication::setOverrideCursor(Qt::BusyCursor);
    struct Restore {
        ~Restore() { QApplication::restoreOverrideCursor(); }
    } restore;
    students_ = edit_.students(selection_);
    eachOwn() ? showGrid() : showTicks();
}

const BulkField& BulkEditScreen::chosenField() const {
    const auto& fields = edit_.command().fields;
    const BulkField* chosen =
        fieldForm_ ? edit_.command().field(fieldForm_->value(QStringLiteral("alan"))) : nullptr;
    return chosen ? *chosen : fields.front();
}

// Students who are still listed keep their ticks.
void BulkEditScreen::showTicks() {
    const BulkField& field = chosenField();
    const QStringList before = ticks_->tickedRows();
    const QSet<QString> ticked(before.begin(), before.end());
    std::vector<TickRow> rows;
    for (const StoredRow& student : students_)
        rows.push_back({keyOf(student),
                        {},
                        {text(student, "Ogr_Numarasi"), text(student, "Ogr_Adi"), text(student, "Ogr_Soyadi"),
                         text(student, "Ogr_Sinif"), text(student, "Ogr_Seviye"),
                         edit_.shown(field, text(student, field.name))},
                        {ticked.contains(keyOf(student))}});
    ticks_->setNotes(notes());
    ticks_->setRows(std::move(rows));
}

void BulkEditScreen::showGrid() {
    const bool ofClass = edit_.command().field(QStringLiteral("Ogr_Sinif")) != nullptr;
    std::vector<EditRow> rows;
    for (const StoredRow& student : students_) {
        EditRow row{text(student, "Ogr_Numarasi"), text(student, "Ogr_Adi"), text(student, "Ogr_Soyadi")};
        if (!ofClass) row.push_back(text(student, "Ogr_Sinif"));
        row.push_back(text(student, "Ogr_Seviye"));
        for (const BulkField& field : edit_.command().fields)
            row.push_back(text(student, field.name));
        rows.push_back(std::move(row));
    }
    grid_->setNotes(notes());
    grid_->setRows(std::move(rows));
}

bool BulkEditScreen::takeWishes(std::vector<BulkWish>& wishes) {
    result_->clear();
    return eachOwn() ? takeCells(wishes) : takeTicked(wishes);
}

bool BulkEditScreen::takeTicked(std::vector<BulkWish>& wishes) {
    const BulkField& field = chosenField();
    const QString name = QString::fromLatin1(field.name);
    auto* form = qobject_cast<EntryForm*>(values_->currentWidget());
    if (!form->settle()) return false;
    const QString typed = form->value(name);
    QString refusal;
    if (form->choiceList(name) && typed.isEmpty())
        refusal = QStringLiteral("Bir değer seçiniz.");
    else
        edit_.valueOf(field, typed == kEmptyChoice ? QString() : typed, refusal);
    if (!refusal.isEmpty()) {
        tabs_->setCurrentIndex(kStudentsPage);
        form->showWrong(name, refusal);
        return false;
    }
    const QStringList keys = ticks_->tickedRows();
    const QSet<QString> ticked(keys.begin(), keys.end());
    for (const StoredRow& student : students_)
        if (ticked.contains(keyOf(student)))
            wishes.push_back({student, {{name, typed == kEmptyChoice ? QString() : typed}}});
    if (!wishes.empty()) return true;
    tabs_->setCurrentIndex(kStudentsPage);
    result_->setText(QStringLiteral("Önce listede öğrencileri işaretleyiniz."));
    ticks_->setFocus(Qt::OtherFocusReason);
    return false;
}

bool BulkEditScreen::takeCells(std::vector<BulkWish>& wishes) {
    if (!grid_->settle()) {
        tabs_->setCurrentIndex(kStudentsPage);
        return false;
    }
    for (const size_t row : grid_->changedRows()) {
        BulkWish wish{students_[row], {}};
        for (const BulkField& field : edit_.command().fields) {
            const QString name = QString::fromLatin1(field.name);
            if (grid_->value(row, name) != text(students_[row], field.name))
                wish.wanted[name] = grid_->value(row, name);
        }
        wishes.push_back(std::move(wish));
    }
    if (!wishes.empty()) return true;
    result_->setText(QStringLiteral("Değişiklik yok."));
    return false;
}

void BulkEditScreen::preview() {
    attempt(QStringLiteral("Ön izleme"), [this] {
        std::vector<BulkWish> wishes;
        if (takeWishes(wishes)) showLines(edit_.preview(wishes), false);
    });
}

void BulkEditScreen::showLines(const std::vector<BulkLine>& lines, bool afterwards) {
    std::vector<ListRow> rows;
    for (const BulkLine& line : lines)
        rows.push_back(
            {line.number, line.name, line.field, line.before, line.after, stateOf(line, afterwards)});
    const QString name = afterwards ? QStringLiteral("Sonuç") : QStringLiteral("Ön İzleme");
    lines_->setTitle(windowTitle().remove(QStringLiteral("[*]")) + QStringLiteral(" - ") + name);
    const QString counts = afterwards ? QString()
                                      : QStringLiteral("%1 öğrenci değişecek, %2 öğrencide atlanan var.")
                                            .arg(studentsToChange(lines))
                                            .arg(studentsToSkip(lines));
    lines_->setNotes(notes());
    lines_->setRows(std::move(rows));
    tabs_->setTabText(kLinesPage, name);
    tabs_->setCurrentIndex(kLinesPage);
    if (!afterwards)
        result_->setText(lines.empty() ? QStringLiteral("Seçilenlerde değer zaten bu; değişecek bilgi yok.")
                                       : counts);
}

bool BulkEditScreen::apply() {
    if (busy_) return false;
    const QScopedValueRollback busy(busy_, true);
    bool all = false;
    attempt(QStringLiteral("Toplu değişiklik"), [&] {
        std::vector<BulkWish> wishes;
        if (!takeWishes(wishes)) return;
        showLines(edit_.preview(wishes), false);
        const auto outcome = edit_.run(wishes);
        if (!outcome) return;
        QString words = QStringLiteral("%1 öğrenci değişti, %2 öğrencide atlanan var.")
                            .arg(outcome->changed)
                            .arg(outcome->skipped);
        if (outcome->stopped) words.prepend(QStringLiteral("Yarıda durdu: "));
        if (ticks_) ticks_->setRows({});
        load();
        if (grid_) keepUnwritten(wishes, outcome->lines);
        showLines(outcome->lines, true);
        lines_->setNotes(notes() << words);
        result_->setText(words);
        all = !hasUnsaved();
        emit recordsChanged();
    });
    return all;
}

// What was typed and not written stands in its cell again, as a change.
void BulkEditScreen::keepUnwritten(const std::vector<BulkWish>& wishes, const std::vector<BulkLine>& lines) {
    std::vector<EditGrid::Change> changes;
    for (const BulkLine& line : lines) {
        if (line.written) continue;
        for (size_t row = 0; row < students_.size(); ++row)
            if (students_[row].id == wishes[line.wish].student.id)
                changes.push_back({row, QString::fromLatin1(line.about->name), line.value});
    }
    grid_->applyChanges(changes);
}

bool BulkEditScreen::save() { return eachOwn() ? apply() : true; }

void BulkEditScreen::discardChanges() {
    if (grid_) grid_->revert();
}

void BulkEditScreen::refresh() {
    if (!hasUnsaved() && !busy_) attempt(objectName(), [this] { load(); });
}

} // namespace orvan
