// records/screens/ogr_numara_adsoyad_degistir.cpp — see ogr_numara_adsoyad_degistir.h.
#include "records/screens/ogr_numara_adsoyad_degistir.h"

#include "reference/screens/screen_buttons.h"
#include "widgets/choice_list.h"
#include "widgets/form.h"
#include "widgets/grid.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QScopedValueRollback>
#include <QTableView>
#include <QVBoxLayout>

namespace orvan {

namespace {

// as IdentityChange names the fields that it refuses
const QString kNumber = QStringLiteral("number");
const QString kRegistrationNo = QStringLiteral("registrationNo");
const QString kName = QStringLiteral("name");
const QString kSurname = QStringLiteral("surname");
const QString kProfession = QStringLiteral("profession");

std::vector<ListColumn> columns() {
    return {
        {QStringLiteral("numara"), QStringLiteral("Kütük No"), ListKind::Text, 12},
        {QStringLiteral("adi"), QStringLiteral("Adı"), ListKind::Text, 18},
        {QStringLiteral("soyadi"), QStringLiteral("Soyadı"), ListKind::Text, 18},
        {QStringLiteral("kayitNo"), QStringLiteral("Kayıt No"), ListKind::Number, 9},
        {QStringLiteral("meslek"), QStringLiteral("Meslek kodu"), ListKind::Text, 12},
        {QStringLiteral("anahtar"), QStringLiteral("Kütük/Kayıt No"), ListKind::Text, 14, false},
    };
}

QString keyOf(const StudentIdentity& s) {
    return QStringLiteral("%1/%2").arg(s.number).arg(s.registrationNo);
}

std::vector<FormField> fields(const IdentityChange& change) {
    const QString group = QStringLiteral("Yeni meslek ve numaralar"),
                  names = QStringLiteral("Yeni ad ve soyad");
    const NumberLimits registration{1, 2'000'000'000, 0};
    return {
        {kProfession, QStringLiteral("&Meslek:"), FieldKind::Choice, 0, 30, 0, group},
        {kNumber, QStringLiteral("Kütük &No:"), FieldKind::Code, change.widthOf("Ogr_Numarasi"), 14, 0,
         group},
        {kRegistrationNo, QStringLiteral("&Kayıt No:"), FieldKind::Number, 0, 12, 0, group, 4, registration},
        {kName, QStringLiteral("Ad&ı:"), FieldKind::Text, change.widthOf("Ogr_Adi"), 24, 1, names},
        {kSurname, QStringLiteral("&Soyadı:"), FieldKind::Text, change.widthOf("Ogr_Soyadi"), 24, 1, names},
    };
}

} // namespace

Ogr_Numara_AdSoyad_Degistir::Ogr_Numara_AdSoyad_Degistir(const QString& title, DatabaseSet& databases,
                                                         Dialogs& dialogs, UserMemory& memory,
                                                         QWidget* parent)
    : Screen(QStringLiteral("Ogr_Numara_AdSoyad_Degistir"), title, dialogs, parent),
      change_(databases, dialogs) {
    build(memory);
    attempt(objectName(), [this] {
        load();
        rowChosen();
    });
}

void Ogr_Numara_AdSoyad_Degistir::build(UserMemory& memory) {
    grid_ = new ListGrid(QStringLiteral("numaraDegisecekler"), columns(), dialogs(), memory, this);
    grid_->setKeyColumn(columns().size() - 1);
    grid_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    grid_->sortAtFirstBy(QStringLiteral("numara"));
    grid_->setEmptyText(QStringLiteral("Bu düzeyde kayıtlı öğrenci yok."));
    heading_ = new QLabel(this);
    heading_->setObjectName(QStringLiteral("ogrenci"));
    heading_->setTextFormat(Qt::PlainText);
    QFont bold = heading_->font();
    bold.setBold(true);
    heading_->setFont(bold);
    form_ = new EntryForm(fields(change_), this);
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    saveButton_ = makeButton("kaydet", QStringLiteral("Kay&det"),
                             QStringLiteral("Yeni numarayı ve adı bütün kayıtlara işler (Ctrl+S)"), this,
                             [this] { save(); });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(saveButton_);
    buttons->addWidget(leave);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grid_, 1);
    layout->addWidget(heading_);
    layout->addWidget(form_);
    layout->addWidget(result_);
    layout->addLayout(buttons);
    setFocusProxy(grid_);

    connect(grid_->view()->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &Ogr_Numara_AdSoyad_Degistir::rowChosen);
    connect(grid_, &ListGrid::activated, this, [this] { form_->focusField(kNumber); });
    connect(form_, &EntryForm::dirtyChanged, this, [this](bool dirty) { setUnsaved(dirty); });
    connect(form_, &EntryForm::edited, this, [this](const QString& field) {
        result_->clear();
        if (field == kProfession) attempt(QStringLiteral("Meslek seçimi"), [this] { professionChosen(); });
    });
    form_->setRevert([this] { discardChanges(); });
    connect(form_, &EntryForm::lastFieldDone, this, [this] { saveButton_->setFocus(Qt::TabFocusReason); });
}

void Ogr_Numara_AdSoyad_Degistir::load() {
    const QScopedValueRollback busy(busy_, true);
    students_ = change_.students();
    std::vector<ListRow> rows;
    for (const StudentIdentity& s : students_)
        rows.push_back({s.number, s.name, s.surname, s.registrationNo, s.professionCode, keyOf(s)});
    grid_->setRows(std::move(rows));
    makeCurrent();
}

// The student on the form is the list's current row, as far as the list shows him.
void Ogr_Numara_AdSoyad_Degistir::makeCurrent() {
    const QScopedValueRollback busy(busy_, true);
    if (student_) grid_->makeCurrent(keyOf(*student_));
}

void Ogr_Numara_AdSoyad_Degistir::rowChosen() {
    if (busy_) return;
    const auto row = grid_->currentRow();
    if (row && student_ && students_[*row] == *student_) return;
    const std::optional<StudentIdentity> chosen = row ? std::optional(students_[*row]) : std::nullopt;
    if (!settleUnsaved()) {
        QMetaObject::invokeMethod(
            this, [this] { makeCurrent(); }, Qt::QueuedConnection);
        return;
    }
    showStudent(chosen ? &*chosen : nullptr);
    makeCurrent();
}

void Ogr_Numara_AdSoyad_Degistir::showStudent(const StudentIdentity* student) {
    student_ = student ? std::optional(*student) : std::nullopt;
    form_->clearWrong();
    form_->setAllReadOnly(!student_);
    saveButton_->setEnabled(student_.has_value());
    std::vector<Choice> choices;
    if (student_)
        for (const Profession& each : change_.professionsFor(*student_))
            choices.push_back({each.code, QStringLiteral("%1 (%2)").arg(each.name, each.code)});
    form_->choiceList(kProfession)->setChoices(std::move(choices));
    form_->setValue(kProfession, student_ ? student_->professionCode : QString());
    form_->setValue(kNumber, student_ ? student_->number : QString());
    form_->setValue(kRegistrationNo, student_ ? QString::number(student_->registrationNo) : QString());
    form_->setValue(kName, student_ ? student_->name : QString());
    form_->setValue(kSurname, student_ ? student_->surname : QString());
    heading_->setText(student_ ? QStringLiteral("Seçili öğrenci: %1  %2 %3  (Kayıt No %4)")
                                     .arg(student_->number, student_->name, student_->surname)
                                     .arg(student_->registrationNo)
                               : QStringLiteral("Listeden bir öğrenci seçiniz."));
}

void Ogr_Numara_AdSoyad_Degistir::professionChosen() {
    if (!student_) return;
    const QString code = form_->value(kProfession);
    if (code.isEmpty()) return;
    form_->setValue(kNumber,
                    code == student_->professionCode ? student_->number : change_.proposedNumber(code));
    setUnsaved(true);
}

StudentIdentity Ogr_Numara_AdSoyad_Degistir::wanted() const {
    StudentIdentity wanted = *student_;
    wanted.number = form_->value(kNumber);
    wanted.registrationNo = form_->value(kRegistrationNo).toInt();
    wanted.name = form_->value(kName);
    wanted.surname = form_->value(kSurname);
    if (const QString code = form_->value(kProfession); !code.isEmpty()) wanted.professionCode = code;
    return wanted;
}

bool Ogr_Numara_AdSoyad_Degistir::save() {
    if (!student_ || !form_->settle()) return false;
    bool saved = false;
    attempt(objectName(), [&] { saved = trySave(); });
    return saved;
}

bool Ogr_Numara_AdSoyad_Degistir::trySave() {
    const StudentIdentity before = *student_;
    const IdentityChangeResult result = change_.save(before, wanted());
    if (!result.saved) {
        if (!result.reason.isEmpty()) form_->showWrong(result.field, result.reason);
        return false;
    }
    const bool changed = !(result.now == before);
    showStudent(&result.now);
    setUnsaved(false);
    load();
    result_->setText(changed ? QStringLiteral("Kaydedildi: %1 %2 %3. Bağlı kayıtlarda %4 satır değişti.")
                                   .arg(student_->number, student_->name, student_->surname)
                                   .arg(result.changedRows)
                             : QStringLiteral("Değişiklik yok."));
    if (changed) emit recordsChanged();
    return true;
}

void Ogr_Numara_AdSoyad_Degistir::discardChanges() {
    const auto student = student_;
    showStudent(student ? &*student : nullptr);
    setUnsaved(false);
}

void Ogr_Numara_AdSoyad_Degistir::refresh() {
    if (hasUnsaved()) return;
    attempt(objectName(), [this] {
        load();
        const auto row = grid_->currentRow();
        const auto student = row ? std::optional(students_[*row]) : std::nullopt;
        showStudent(student ? &*student : nullptr);
    });
}

void Ogr_Numara_AdSoyad_Degistir::showRecord(const QString& number) {
    for (const StudentIdentity& each : students_)
        if (each.number == number.trimmed()) {
            const StudentIdentity found = each;
            showStudent(&found);
            makeCurrent();
            form_->focusField(kNumber);
            return;
        }
}

} // namespace orvan
