// records/screens/hizli_ogrenci_kayit.cpp — shows the quick form; what may be saved is decided by
// QuickRegistration.
#include "records/screens/hizli_ogrenci_kayit.h"

#include "widgets/choice_list.h"

#include <map>
#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kProfession = QStringLiteral("meslek");
const QString kRegistrationNo = QStringLiteral("kayitNo");
const QString kStudentNo = QStringLiteral("kutukNo");
const QString kName = QStringLiteral("adi");
const QString kSurname = QStringLiteral("soyadi");

constexpr int kProfessionWidth = 48; // with code and curriculum version
constexpr int kNameWidth = 25;

QString choiceCode(const Profession& profession) {
    return QStringLiteral("%1/%2").arg(profession.code).arg(profession.version);
}

QPushButton* makeButton(const char* name, const QString& text, const QString& tip, QWidget* parent) {
    auto* button = new QPushButton(text, parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(tip);
    button->setAutoDefault(true); // Enter presses it
    return button;
}

} // namespace

hizli_ogrenci_kayit::hizli_ogrenci_kayit(DatabaseSet& databases, Dialogs& dialogs, const Clock& clock,
                                         QWidget* parent)
    : Screen(QStringLiteral("hizli_ogrenci_kayit"), QString::fromUtf8(kQuickRegistrationTitle), dialogs,
             parent),
      registration_(databases, dialogs, clock) {
    build();
    attempt(QStringLiteral("hizli_ogrenci_kayit"), [this] { loadProfessions(); });
}

void hizli_ogrenci_kayit::build() {
    const int numberWidth = registration_.numberWidth();
    const FormField fields[] = {
        {kProfession, QStringLiteral("&Meslek:"), FieldKind::Choice, 0, kProfessionWidth},
        {kRegistrationNo, QStringLiteral("Kayıt &No:"), FieldKind::Display, 0, 10},
        {kStudentNo, QStringLiteral("&Kütük No:"), FieldKind::Code, numberWidth, 12},
        {kName, QStringLiteral("&Adı:"), FieldKind::Text, registration_.nameWidth(), kNameWidth},
        {kSurname, QStringLiteral("&Soyadı:"), FieldKind::Text, registration_.surnameWidth(), kNameWidth},
    };
    form_ = new EntryForm(fields, this);
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    saveButton_ =
        makeButton("kaydet", QStringLiteral("Kay&det"), QStringLiteral("Öğrenciyi kaydeder (Ctrl+S)"), this);
    auto* fresh =
        makeButton("yeni", QStringLiteral("Y&eni"), QStringLiteral("Alanları boşaltır (Ctrl+N)"), this);
    auto* leave =
        makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"), this);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* button : {saveButton_, fresh, leave})
        buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(form_, 1);
    layout->addWidget(result_);
    layout->addLayout(buttons);
    setFocusProxy(form_->editor(kProfession));

    connect(saveButton_, &QPushButton::clicked, this, [this] { save(); });
    connect(fresh, &QPushButton::clicked, this, &hizli_ogrenci_kayit::startNew);
    connect(leave, &QPushButton::clicked, this, &Screen::closeWindow);
    connect(form_, &EntryForm::dirtyChanged, this, [this](bool dirty) { setUnsaved(dirty); });
    connect(form_, &EntryForm::lastFieldDone, this, [this] { saveButton_->setFocus(Qt::TabFocusReason); });
    connect(form_, &EntryForm::edited, this, [this](const QString& name) {
        if (name == kProfession) attempt(QStringLiteral("Meslek seçimi"), [this] { propose(); });
    });
    auto* newAction = new QAction(this);
    newAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_N));
    newAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    newAction->setAutoRepeat(false);
    connect(newAction, &QAction::triggered, this, &hizli_ogrenci_kayit::startNew);
    addAction(newAction);
}

void hizli_ogrenci_kayit::loadProfessions() {
    professions_ = registration_.professions();
    std::map<QString, int> versions; // how many curricula a code has
    for (const Profession& profession : professions_)
        ++versions[profession.code];
    std::vector<Choice> choices;
    for (const Profession& profession : professions_) {
        QString text = QStringLiteral("%1 (%2)").arg(profession.name, profession.code);
        if (versions[profession.code] > 1) text += QStringLiteral(" - %1. müfredat").arg(profession.version);
        choices.push_back({choiceCode(profession), text});
    }
    form_->choiceList(kProfession)->setChoices(std::move(choices));
    if (professions_.empty())
        result_->setText(QStringLiteral("Bu düzeyde tanımlı meslek yok. Önce meslekleri tanımlayınız."));
}

Profession hizli_ogrenci_kayit::chosenProfession() const {
    const QString code = form_->value(kProfession);
    for (const Profession& profession : professions_)
        if (choiceCode(profession) == code) return profession;
    return {};
}

// The chosen profession and its next numbers are no work of the user's that could be lost; names and a typed
// number are.
void hizli_ogrenci_kayit::propose() {
    const Profession profession = chosenProfession();
    current_ = registration_.propose(profession);
    form_->setValue(kProfession, form_->value(kProfession));
    const bool chosen = !profession.code.isEmpty();
    form_->setValue(kRegistrationNo, chosen ? QString::number(current_.registrationNo) : QString());
    form_->setValue(kStudentNo, current_.studentNo);
}

void hizli_ogrenci_kayit::startNew() {
    if (!settleUnsaved()) return;
    attempt(QStringLiteral("Yeni kayıt"), [this] {
        propose();
        discardChanges();
        result_->clear();
        form_->clearWrong();
        form_->focusField(chosenProfession().code.isEmpty() ? kProfession : kName);
    });
}

void hizli_ogrenci_kayit::discardChanges() {
    form_->setValue(kName, {});
    form_->setValue(kSurname, {});
    form_->setValue(kStudentNo, current_.studentNo);
}

void hizli_ogrenci_kayit::refresh() {
    if (hasUnsaved()) return;
    attempt(QStringLiteral("hizli_ogrenci_kayit"), [this] {
        loadProfessions();
        propose();
    });
}

bool hizli_ogrenci_kayit::save() {
    // the second click of a double click finds the form already empty
    if (saving_ || (sinceSaved_.isValid() && sinceSaved_.elapsed() < QApplication::doubleClickInterval() &&
                    !hasUnsaved()))
        return false;
    saving_ = true;
    bool saved = false;
    attempt(QStringLiteral("Hızlı öğrenci kaydı"), [&] { saved = trySave(); });
    saving_ = false;
    return saved;
}

bool hizli_ogrenci_kayit::trySave() {
    form_->choiceList(kProfession)->settle();
    QuickForm wanted = current_;
    wanted.profession = chosenProfession();
    wanted.studentNo = form_->value(kStudentNo);
    wanted.name = form_->value(kName);
    wanted.surname = form_->value(kSurname);
    if (registration_.save(wanted) == QuickSave::Refused) {
        showRefused(wanted);
        return false;
    }
    afterSaved(wanted);
    return true;
}

void hizli_ogrenci_kayit::afterSaved(const QuickForm& saved) {
    sinceSaved_.start();
    result_->setText(QStringLiteral("Kaydedildi: %1  %2 %3").arg(saved.studentNo, saved.name, saved.surname));
    propose();
    discardChanges();
    form_->clearWrong();
    form_->focusField(kName);
    emit recordsChanged();
}

void hizli_ogrenci_kayit::showRefused(const QuickForm& refused) {
    result_->clear();
    if (refused.registrationNo != current_.registrationNo || refused.studentNo != form_->value(kStudentNo)) {
        current_ = refused;
        form_->setValue(kRegistrationNo, QString::number(refused.registrationNo));
        form_->setValue(kStudentNo, refused.studentNo);
    }
    if (refused.profession.code.isEmpty())
        form_->showWrong(kProfession, QStringLiteral("Meslek seçilmedi."));
    else if (refused.studentNo.isEmpty())
        form_->showWrong(kStudentNo, QStringLiteral("Kütük No boş olamaz."));
    else if (refused.name.isEmpty())
        form_->showWrong(kName, QStringLiteral("Adı boş olamaz."));
    else if (refused.surname.isEmpty())
        form_->showWrong(kSurname, QStringLiteral("Soyadı boş olamaz."));
}

} // namespace orvan
