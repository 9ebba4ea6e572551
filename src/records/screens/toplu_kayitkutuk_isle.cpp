// records/screens/toplu_kayitkutuk_isle.cpp — see toplu_kayitkutuk_isle.h.
#include "records/screens/toplu_kayitkutuk_isle.h"

#include "reference/screens/screen_buttons.h"
#include "widgets/choice_list.h"
#include "widgets/edit_grid.h"
#include "widgets/form.h"

#include <map>
#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kProfession = QStringLiteral("meslek");
const QString kOrder = QStringLiteral("siralama");
const QString kFirstSerial = QStringLiteral("ilkSira");
const QString kFirstRegistration = QStringLiteral("ilkKayitNo");
const QString kNewNumber = QStringLiteral("yeniNumara");
const QString kNewRegistration = QStringLiteral("yeniKayitNo");
const QString kDone = QStringLiteral("sonuc");
const QString kAll = QStringLiteral("*");

const NumberLimits kRegistrationLimits{1, 2'000'000'000, 0};
const NumberLimits kSerialLimits{1, 9'999'999, 0};

const std::vector<Choice> kOrders = {
    {QStringLiteral("0"), QStringLiteral("Kütük numarasına göre")},
    {QStringLiteral("1"), QStringLiteral("Kayıt numarasına göre")},
    {QStringLiteral("2"), QStringLiteral("Ada göre")},
    {QStringLiteral("3"), QStringLiteral("Kayıt tarihine göre")},
};

std::vector<FormField> fields() {
    return {
        {kProfession, QStringLiteral("&Meslek:"), FieldKind::Choice, 0, 30, 0},
        {kOrder, QStringLiteral("Sı&ralama:"), FieldKind::Choice, 0, 22, 0},
        {kFirstSerial,
         QStringLiteral("İlk &kütük sırası:"),
         FieldKind::Number,
         0,
         8,
         1,
         {},
         4,
         kSerialLimits},
        {kFirstRegistration,
         QStringLiteral("İlk kayıt n&umarası:"),
         FieldKind::Number,
         0,
         8,
         1,
         {},
         4,
         kRegistrationLimits},
    };
}

std::vector<EditColumn> columns(int numberWidth) {
    using enum CellKind;
    return {
        {QStringLiteral("numara"), QStringLiteral("Kütük No"), ReadOnly, 12},
        {QStringLiteral("kayitNo"), QStringLiteral("Kayıt No"), ReadOnly, 8, 0, {}, {}, ListKind::Number},
        {QStringLiteral("adi"), QStringLiteral("Adı"), ReadOnly, 14},
        {QStringLiteral("soyadi"), QStringLiteral("Soyadı"), ReadOnly, 14},
        {QStringLiteral("sinif"), QStringLiteral("Sınıf"), ReadOnly, 8},
        {QStringLiteral("kayitTarihi"),
         QStringLiteral("Kayıt tarihi"),
         ReadOnly,
         10,
         0,
         {},
         {},
         ListKind::Date},
        {kNewNumber, QStringLiteral("Yeni Kütük No"), Code, 14, numberWidth},
        {kNewRegistration, QStringLiteral("Yeni Kayıt No"), Number, 12, 0, kRegistrationLimits},
        {kDone, QStringLiteral("Yapılan"), ReadOnly, 30},
    };
}

} // namespace

Toplu_KayitKutuk_Isle::Toplu_KayitKutuk_Isle(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                             UserMemory& memory, QWidget* parent)
    : Screen(QStringLiteral("Toplu_KayitKutuk_Isle"), title, dialogs, parent), renumber_(databases, dialogs) {
    build(memory);
    attempt(objectName(), [this] { loadProfessions(); });
}

void Toplu_KayitKutuk_Isle::build(UserMemory& memory) {
    form_ = new EntryForm(fields(), this);
    form_->choiceList(kOrder)->setChoices(kOrders);
    form_->setValue(kOrder, kOrders.front().code);
    grid_ = new EditGrid(QStringLiteral("yeniNumaralar"), columns(renumber_.numberWidth()), dialogs(), memory,
                         this);
    grid_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    grid_->setEmptyText(QStringLiteral("Önce bir meslek seçiniz."));
    grid_->setPinnedColumns(1);
    grid_->setValidator(kNewNumber, [this](CellPlace place, const QString& value) {
        const QString fault = BulkRenumber::numberFault(rows_[place.row], value);
        return fault.isEmpty() ? CellCheck::take(value) : CellCheck::refuse(fault);
    });
    grid_->setValidator(kNewRegistration, [](CellPlace, const QString& value) {
        return value.isEmpty() ? CellCheck::refuse(QStringLiteral("Kayıt No boş olamaz."))
                               : CellCheck::take(value);
    });
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);

    auto* give =
        makeButton("numaraVer", QStringLiteral("&Numara Ver"),
                   QStringLiteral("Listedeki sırayla ilk numaradan başlayarak yeni numaraları yazar; boş "
                                  "bırakılan numara değişmez"),
                   this, [this] { giveNumbers(); });
    auto* saveButton = makeButton("kaydet", QStringLiteral("Kay&det"),
                                  QStringLiteral("Yeni numaraları bütün kayıtlara işler (Ctrl+S)"), this,
                                  [this] { save(); });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* button : {give, saveButton, leave})
        buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(form_);
    layout->addWidget(grid_, 1);
    layout->addWidget(result_);
    layout->addLayout(buttons);
    setFocusProxy(form_->editor(kProfession));

    connect(form_, &EntryForm::edited, this, [this](const QString& field) {
        if (field == kProfession || field == kOrder) choose();
    });
    connect(form_, &EntryForm::lastFieldDone, this, [give] { give->setFocus(Qt::TabFocusReason); });
    connect(grid_, &EditGrid::dirtyChanged, this, [this](bool dirty) { setUnsaved(dirty); });
}

void Toplu_KayitKutuk_Isle::loadProfessions() {
    std::vector<Choice> choices{{kAll, QStringLiteral("(tüm meslekler)")}};
    for (const Profession& each : renumber_.professions())
        choices.push_back({each.code, QStringLiteral("%1 (%2)").arg(each.name, each.code)});
    form_->choiceList(kProfession)->setChoices(std::move(choices));
}

// Another profession or order: typed numbers are saved or thrown away first.
void Toplu_KayitKutuk_Isle::choose() {
    const QString profession = form_->value(kProfession), order = form_->value(kOrder);
    if (profession == chosenProfession_ && order == chosenOrder_) return;
    if (!settleUnsaved()) {
        form_->setValue(kProfession, chosenProfession_);
        form_->setValue(kOrder, chosenOrder_);
        return;
    }
    chosenProfession_ = profession;
    chosenOrder_ = order;
    attempt(objectName(), [this] { load(); });
}

void Toplu_KayitKutuk_Isle::load() {
    result_->clear();
    rows_.clear();
    if (!chosenProfession_.isEmpty())
        rows_ = renumber_.students(chosenProfession_ == kAll ? QString() : chosenProfession_,
                                   static_cast<RenumberOrder>(form_->value(kOrder).toInt()));
    std::vector<EditRow> cells;
    for (const RenumberRow& row : rows_) {
        const QString registration = QString::number(row.registrationNo);
        cells.push_back({row.number, registration, row.name, row.surname, row.className, row.registrationDate,
                         row.number, registration, QString()});
    }
    grid_->setEmptyText(chosenProfession_.isEmpty() ? QStringLiteral("Önce bir meslek seçiniz.")
                                                    : QStringLiteral("Bu meslekte öğrenci yok."));
    grid_->setRows(std::move(cells));
}

void Toplu_KayitKutuk_Isle::refresh() {
    if (hasUnsaved()) return;
    attempt(objectName(), [this] {
        loadProfessions();
        load();
    });
}

void Toplu_KayitKutuk_Isle::giveNumbers() {
    if (!form_->settle() || !grid_->settle()) return;
    if (rows_.empty()) {
        form_->showWrong(kProfession, QStringLiteral("Öğrencisi olan bir meslek seçiniz."));
        return;
    }
    const int serial = form_->value(kFirstSerial).toInt();
    const int registration = form_->value(kFirstRegistration).toInt();
    if (serial == 0 && registration == 0) {
        form_->showWrong(kFirstSerial, QStringLiteral("İlk numaralardan en az birini yazınız."));
        return;
    }
    attempt(objectName(), [&] {
        const auto numbers = renumber_.inSequence(rows_, serial, registration);
        std::vector<EditGrid::Change> changes;
        for (size_t row = 0; row < rows_.size(); ++row) {
            if (serial > 0) changes.push_back({row, kNewNumber, numbers[row].number});
            if (registration > 0)
                changes.push_back({row, kNewRegistration, QString::number(numbers[row].registrationNo)});
        }
        grid_->applyChanges(changes);
    });
}

std::vector<NewNumbers> Toplu_KayitKutuk_Isle::wanted() const {
    std::vector<NewNumbers> numbers;
    for (size_t row = 0; row < rows_.size(); ++row)
        numbers.push_back({grid_->value(row, kNewNumber), grid_->value(row, kNewRegistration).toInt()});
    return numbers;
}

// A number that stood against another row's may be free by now: what was refused is looked at again.
void Toplu_KayitKutuk_Isle::recheckRefused() {
    std::vector<EditGrid::Change> again;
    const auto all = columns(renumber_.numberWidth());
    for (const RefusedCell& cell : grid_->refusedCells())
        again.push_back({cell.place.row, all[cell.place.column].key, cell.typed});
    if (!again.empty()) grid_->applyChanges(again);
}

bool Toplu_KayitKutuk_Isle::save() {
    grid_->settle(); // takes an open cell
    recheckRefused();
    if (!grid_->settle()) return false;
    bool saved = false;
    attempt(objectName(), [&] { saved = trySave(); });
    return saved;
}

bool Toplu_KayitKutuk_Isle::trySave() {
    const std::vector<NewNumbers> numbers = wanted();
    const BulkRenumberResult result = renumber_.save(rows_, numbers);
    if (!result.problems.empty()) showProblems(result.problems, numbers);
    if (!result.saved) return false;
    const std::vector<RenumberRow> before = rows_;
    load();
    markDone(before, numbers);
    result_->setText(
        QStringLiteral("%1 öğrencinin numarası değişti, bağlı kayıtlarda %2 satır yeni numarayı aldı.")
            .arg(result.students)
            .arg(result.dependentRows));
    setUnsaved(false);
    emit recordsChanged();
    return true;
}

void Toplu_KayitKutuk_Isle::showProblems(const std::vector<RenumberProblem>& problems,
                                         const std::vector<NewNumbers>& numbers) {
    for (auto problem = problems.rbegin(); problem != problems.rend();
         ++problem) { // the first gets the focus
        const RenumberRow& row = rows_[problem->which];
        const NewNumbers& wanted = numbers[problem->which];
        const bool registration = problem->fault == RenumberFault::RegistrationTaken;
        grid_->showWrong(problem->which, registration ? kNewRegistration : kNewNumber,
                         problemText(*problem, {row.number,
                                                wanted.number,
                                                {},
                                                row.registrationNo,
                                                wanted.registrationNo,
                                                RenumberMode::Both}));
    }
    result_->setText(QStringLiteral("%1 satırda engel var, hiçbir numara değişmedi.").arg(problems.size()));
}

// The list after the change says what became of whom; it can be printed.
void Toplu_KayitKutuk_Isle::markDone(const std::vector<RenumberRow>& before,
                                     const std::vector<NewNumbers>& numbers) {
    std::map<std::pair<QString, int>, QString> said;
    for (size_t i = 0; i < before.size(); ++i) {
        const RenumberRow& row = before[i];
        if (numbers[i].number == row.number && numbers[i].registrationNo == row.registrationNo) continue;
        said[{numbers[i].number.trimmed(), numbers[i].registrationNo}] =
            QStringLiteral("eski: %1 / %2").arg(row.number).arg(row.registrationNo);
    }
    for (size_t row = 0; row < rows_.size(); ++row) {
        const auto found = said.find({rows_[row].number, rows_[row].registrationNo});
        if (found != said.end()) grid_->setValue(row, kDone, found->second);
    }
}

void Toplu_KayitKutuk_Isle::discardChanges() { grid_->revert(); }

} // namespace orvan
