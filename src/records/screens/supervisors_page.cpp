// records/screens/supervisors_page.cpp — see supervisors_page.h.
#include "records/screens/supervisors_page.h"

#include "reference/screens/screen_buttons.h"
#include "widgets/edit_grid.h"
#include "widgets/screen.h"

#include <algorithm>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kNumber = QStringLiteral("sira");
const QString kName = QStringLiteral("adi");
const QString kIdentity = QStringLiteral("tc");
const QString kMobile = QStringLiteral("cep");
const QString kGirls = QStringLiteral("kiz");
const QString kBoys = QStringLiteral("erkek");
const QString kTotal = QStringLiteral("toplam");
const QStringList kColumns{kNumber, kName, kMobile, kIdentity, kGirls, kBoys, kTotal};

EditColumn countColumn(const QString& key, const QString& title) {
    EditColumn column{key, title, CellKind::ReadOnly, 6};
    column.shownAs = ListKind::Number;
    return column;
}

std::vector<EditColumn> columns(const Workplaces& places) {
    const SupervisorFields& first = supervisorFields().front();
    return {{kNumber, QStringLiteral("Sıra"), CellKind::ReadOnly, 4},
            {kName, QStringLiteral("Adı soyadı"), CellKind::Text, 20, places.width(first.name)},
            {kMobile, QStringLiteral("Cep telefonu"), CellKind::Code, 13, places.width(first.mobile)},
            {kIdentity, QStringLiteral("T.C. kimlik no"), CellKind::Code, 12, places.width(first.identity)},
            countColumn(kGirls, QStringLiteral("Kız")),
            countColumn(kBoys, QStringLiteral("Erkek")),
            countColumn(kTotal, QStringLiteral("Toplam"))};
}

// The grid's column of each field of a supervisor that is typed.
std::vector<std::pair<QString, QString>> cells(const SupervisorFields& supervisor) {
    std::vector<std::pair<QString, QString>> all{{kName, supervisor.name}, {kMobile, supervisor.mobile}};
    if (!supervisor.identity.isEmpty()) all.emplace_back(kIdentity, supervisor.identity);
    return all;
}

QString textOf(const FieldTexts* row, const QString& field) {
    if (!row || field.isEmpty()) return {};
    const auto found = row->find(field);
    return found == row->end() ? QString() : found->second;
}

} // namespace

SupervisorsPage::SupervisorsPage(Workplaces& places, const QString& level, Dialogs& dialogs,
                                 UserMemory& memory, QWidget* parent)
    : QWidget(parent), places_(places), level_(level), dialogs_(dialogs) {
    grid_ = new EditGrid(QStringLiteral("egitimSorumlulari"), columns(places), dialogs, memory, this);
    grid_->setTitle(QStringLiteral("Eğitim Sorumluları"));
    grid_->setEntryDirection(EntryDirection::Right);
    grid_->hideFind();
    const auto identity = static_cast<size_t>(kColumns.indexOf(kIdentity));
    grid_->setCellLocked([identity](CellPlace place) { return place.column == identity && place.row > 0; });
    note_ = new QLabel(this);
    note_->setObjectName(QStringLiteral("sayimNotu"));
    note_->setTextFormat(Qt::PlainText);
    note_->setWordWrap(true);
    auto* remove = makeButton("sorumluSil", QStringLiteral("Sor&umluyu Sil"),
                              QStringLiteral("Seçili satırdaki eğitim sorumlusunu siler (önce sorar)"), this,
                              [this] { removeCurrent(); });
    auto* line = new QHBoxLayout;
    line->addWidget(note_, 1);
    line->addWidget(remove);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(grid_, 1);
    layout->addLayout(line);
    setFocusProxy(grid_);
    connect(grid_, &EditGrid::dirtyChanged, this, &SupervisorsPage::changed);
    connect(grid_, &EditGrid::edited, this, [this](size_t, const QString& key) {
        if (key == kName) attempt(dialogs_, QStringLiteral("Öğrenci sayıları"), [this] { count(); });
    });
}

void SupervisorsPage::show(const FieldTexts* row) {
    workplace_ = textOf(row, QStringLiteral("K_Adi"));
    std::vector<EditRow> rows;
    for (const SupervisorFields& supervisor : supervisorFields())
        rows.push_back({QString::number(rows.size() + 1),
                        textOf(row, supervisor.name),
                        textOf(row, supervisor.mobile),
                        textOf(row, supervisor.identity),
                        {},
                        {},
                        {}});
    grid_->setNotes({workplace_, level_});
    grid_->setRows(std::move(rows));
    grid_->makeCurrent(0, kName);
    count();
}

// Students whose supervisor is not among the seven are in the whole number only.
void SupervisorsPage::count() {
    std::array<QString, kSupervisors> names;
    for (size_t i = 0; i < kSupervisors; ++i)
        names[i] = grid_->value(i, kName);
    const auto counted = places_.counts(workplace_, names);
    for (size_t i = 0; i < kSupervisors; ++i) {
        const bool named = !names[i].trimmed().isEmpty();
        grid_->setValue(i, kGirls, named ? QString::number(counted[i].girls) : QString());
        grid_->setValue(i, kBoys, named ? QString::number(counted[i].boys) : QString());
        grid_->setValue(i, kTotal, named ? QString::number(counted[i].total()) : QString());
    }
    const QString students = workplace_.isEmpty()
                                 ? QString()
                                 : QStringLiteral(" Bu işletmede çalışan %1 öğrenci kayıtlı.")
                                       .arg(places_.studentCount(workplace_));
    note_->setText(QStringLiteral("Öğrenci sayıları yalnız açık olan düzeyden (%1) sayılır.").arg(level_) +
                   students);
}

void SupervisorsPage::removeCurrent() {
    const auto current = grid_->currentCell();
    if (!current || !grid_->settle()) return;
    bool empty = true;
    std::vector<EditGrid::Change> changes;
    for (const auto& [key, field] : cells(supervisorFields()[current->row])) {
        empty = empty && grid_->value(current->row, key).isEmpty();
        changes.push_back({current->row, key, {}});
    }
    if (empty || !places_.confirmsSupervisorRemoval()) return;
    grid_->applyChanges(changes);
    count();
    emit changed();
}

void SupervisorsPage::takeOver(const FieldTexts& row) {
    const auto typed = grid_->changedCells();
    for (size_t i = 0; i < kSupervisors; ++i)
        for (const auto& [key, field] : cells(supervisorFields()[i])) {
            const CellPlace place{i, static_cast<size_t>(kColumns.indexOf(key))};
            if (std::find(typed.begin(), typed.end(), place) == typed.end())
                grid_->setValue(i, key, textOf(&row, field));
        }
    count();
}

void SupervisorsPage::addTo(FieldTexts& wanted) const {
    for (size_t i = 0; i < kSupervisors; ++i)
        for (const auto& [key, field] : cells(supervisorFields()[i]))
            wanted[field] = grid_->value(i, key);
}

bool SupervisorsPage::settle() { return grid_->settle(); }
bool SupervisorsPage::isDirty() const { return grid_->isDirty(); }

void SupervisorsPage::revert() {
    grid_->revert();
    attempt(dialogs_, QStringLiteral("Öğrenci sayıları"), [this] { count(); });
}

bool SupervisorsPage::showWrong(const QString& field, const QString& reason) {
    for (size_t i = 0; i < kSupervisors; ++i)
        for (const auto& [key, name] : cells(supervisorFields()[i]))
            if (name == field) {
                grid_->showWrong(i, key, reason);
                return true;
            }
    return false;
}

} // namespace orvan
