// reference/screens/wage_page.cpp — see wage_page.h.
#include "reference/screens/wage_page.h"

#include "reference/screens/screen_buttons.h"
#include "widgets/choice_list.h"
#include "widgets/edit_grid.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kMonthColumn = QStringLiteral("ay");
const QString kAdultColumn = QLatin1String(kAdultWage);
const QString kYoungColumn = QLatin1String(kYoungWage);
const QString kLiraColumn = QStringLiteral("YtlVar");
const QString kStateColumn = QStringLiteral("durum");

constexpr int kFirstYear = 1990; // older insurance months are not entered any more
constexpr double kHighestWage = 99'999'999.0;

std::vector<EditColumn> columns() {
    const NumberLimits amounts{0, kHighestWage, 4};
    EditColumn adult{kAdultColumn, QStringLiteral("Günlük ücret (16 yaşından büyük)"), CellKind::Money, 24};
    EditColumn young{kYoungColumn, QStringLiteral("Günlük ücret (16 yaşından küçük)"), CellKind::Money, 24};
    adult.limits = young.limits = amounts;
    return {{kMonthColumn, QStringLiteral("Ay"), CellKind::ReadOnly, 10},
            adult,
            young,
            {kLiraColumn, QStringLiteral("Yeni lira"), CellKind::Check, 9},
            {kStateColumn, QStringLiteral("Durum"), CellKind::ReadOnly, 12}};
}

} // namespace

WagePage::WagePage(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                   const Clock& clock, QWidget* parent)
    : QWidget(parent), wages_(databases, dialogs, title), clock_(clock), year_(clock.today().year()) {
    build(dialogs, memory);
}

void WagePage::build(Dialogs& dialogs, UserMemory& memory) {
    years_ = new ChoiceList(8, this);
    years_->setObjectName(QStringLiteral("yil"));
    auto* label = new QLabel(QStringLiteral("Yıl:"), this);
    label->setBuddy(years_);
    auto* copy = makeButton("kopyala", QStringLiteral("Sonraki aylara &kopyala"),
                            QStringLiteral("Seçili ayın ücretlerini yılın sonraki aylarına yazar"), this,
                            [this] { copyDown(); });
    grid_ = new EditGrid(QStringLiteral("asgariUcretler"), columns(), dialogs, memory, this);
    grid_->setTitle(QStringLiteral("Asgari Ücretler"));
    grid_->setEntryDirection(EntryDirection::Right);
    missing_ = new QLabel(this);
    missing_->setObjectName(QStringLiteral("eksikAylar"));
    missing_->setTextFormat(Qt::PlainText);
    missing_->setWordWrap(true);

    auto* top = new QHBoxLayout;
    top->addWidget(label);
    top->addWidget(years_);
    top->addStretch(1);
    top->addWidget(copy);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(top);
    layout->addWidget(grid_, 1);
    layout->addWidget(missing_);
    setFocusProxy(years_);
    connect(years_, &ChoiceList::codeChanged, this, [this](const QString& code) {
        if (!code.isEmpty() && code.toInt() != year_) emit yearWanted(code.toInt());
    });
    connect(grid_, &EditGrid::dirtyChanged, this, [this] { emit dirtyChanged(); });
    connect(grid_, &EditGrid::edited, this,
            [this](size_t row) { grid_->setValue(row, kStateColumn, stateOf(row)); });
}

void WagePage::offerYears() {
    const auto periods = wages_.periods();
    const int last = std::max(clock_.today().year() + 1, periods.empty() ? 0 : periods.back().year);
    const int first = std::min(kFirstYear, periods.empty() ? kFirstYear : periods.front().year);
    std::vector<Choice> choices;
    for (int year = last; year >= first; --year)
        choices.push_back({QString::number(year), QString::number(year)});
    years_->setChoices(std::move(choices));
    years_->setCode(QString::number(year_));
}

void WagePage::showMissing() {
    const auto periods = wages_.periods();
    const QString missing = periodsText(missingWages(periods, clock_.today()));
    missing_->setText(periods.empty()     ? QStringLiteral("Henüz asgari ücret girilmemiş.")
                      : missing.isEmpty() ? QStringLiteral("Eksik ay yok.")
                                          : QStringLiteral("Eksik aylar - ") + missing);
}

QString WagePage::stateOf(size_t row) const {
    const bool isEmpty =
        grid_->value(row, kAdultColumn).isEmpty() && grid_->value(row, kYoungColumn).isEmpty();
    return isEmpty ? QStringLiteral("girilmemiş") : QString();
}

void WagePage::showYear(int year) {
    year_ = year;
    std::vector<EditRow> rows;
    for (const WageMonth& month : wages_.load(year))
        rows.push_back({monthName(month.month), month.adult, month.young,
                        month.newLira ? QStringLiteral("1") : QStringLiteral("0"), QString()});
    grid_->setNotes({QStringLiteral("Yıl: %1").arg(year)});
    grid_->setRows(std::move(rows));
    for (size_t row = 0; row < grid_->rowCount(); ++row)
        grid_->setValue(row, kStateColumn, stateOf(row));
    grid_->makeCurrent(0, kAdultColumn);
    offerYears();
    showMissing();
}

void WagePage::stayInYear() { years_->setCode(QString::number(year_)); }

bool WagePage::isDirty() const { return grid_->isDirty(); }
bool WagePage::settle() { return grid_->settle(); }
void WagePage::revert() { grid_->revert(); }

std::vector<WageMonth> WagePage::months() const {
    std::vector<WageMonth> months;
    for (size_t row = 0; row < grid_->rowCount(); ++row)
        months.push_back({static_cast<int>(row) + 1, grid_->value(row, kAdultColumn),
                          grid_->value(row, kYoungColumn),
                          grid_->value(row, kLiraColumn) == QLatin1String("1")});
    return months;
}

bool WagePage::save() {
    const WageOutcome outcome = wages_.save(months());
    if (outcome.saved) {
        showYear(year_);
        return true;
    }
    if (outcome.month > 0)
        grid_->showWrong(static_cast<size_t>(outcome.month - 1), outcome.field, outcome.reason);
    return false;
}

void WagePage::copyDown() {
    const auto current = grid_->currentCell();
    if (!current || !grid_->settle()) return;
    std::vector<EditGrid::Change> changes;
    for (size_t row = current->row + 1; row < grid_->rowCount(); ++row)
        for (const QString& key : {kAdultColumn, kYoungColumn, kLiraColumn})
            changes.push_back({row, key, grid_->value(current->row, key)});
    grid_->applyChanges(changes);
}

} // namespace orvan
