// records/screens/registration_fields.cpp — what an edited field does to others, and the commands of the
// menu.
#include "records/screens/registration_screen.h"

#include "core/clock.h"
#include "records/screens/related_lists.h"
#include "widgets/choice_list.h"

#include <algorithm>
#include <QLabel>

namespace orvan {

namespace {

const QString kWorkplace = QStringLiteral("Ogr_calistigi_isyerinin_adi");
const QString kMaster = QStringLiteral("Ogr_Usta_Ogreticisi");
const QString kMasterMobile = QStringLiteral("ustaOgreticiCep");
const QString kBirth = QStringLiteral("Ogr_Dogum_Tarihi");
const QString kRegistryBirth = QStringLiteral("Ogr_Nufus_Dogum_Tarihi");

// Two fields of the table for one fact: an empty one takes what is entered into the other.
struct Twins {
    const char *one, *other;
};
constexpr Twins kTwins[] = {{"Ogr_Cinsiyeti", "Ogr_Nufus_Cinsiyeti"},
                            {"Ogr_Dogum_Tarihi", "Ogr_Nufus_Dogum_Tarihi"},
                            {"Ogr_OgrenimDuzeyi", "Ogr_Ogrenim_Durumu"}};

std::vector<Choice> choices(const std::vector<FormChoice>& list) {
    std::vector<Choice> all;
    for (const FormChoice& choice : list)
        all.push_back({choice.code, choice.text});
    return all;
}

} // namespace

void RegistrationScreen::loadChoices() {
    for (const QString& field : chosenFields())
        pages_->choiceList(field)->setChoices(choices(choicesOf(databases_, field)));
    profession_->setChoices(choices(professionChoices(databases_)));
    if (profession_->choices().empty())
        result_->setText(QStringLiteral("Bu düzeyde tanımlı meslek yok. Önce meslekleri tanımlayınız."));
}

void RegistrationScreen::showSupervisors(const std::optional<WorkplaceFacts>& facts) {
    std::vector<Choice> masters;
    for (const auto& supervisor : facts ? facts->supervisors : std::vector<WorkplaceFacts::Supervisor>())
        if (std::none_of(masters.begin(), masters.end(),
                         [&](const Choice& known) { return known.code == supervisor.name; }))
            masters.push_back({supervisor.name, supervisor.name});
    pages_->choiceList(kMaster)->setChoices(std::move(masters));
}

void RegistrationScreen::enterWhenEmpty(const QString& field, const QString& value) {
    if (pages_->value(field).isEmpty() && !value.isEmpty()) pages_->enterValue(field, value);
}

// Twins of the field, and the age. A date counts when it is left: while it is typed it may already be
// another.
void RegistrationScreen::carryOver(const QString& field) {
    const QString value = pages_->value(field);
    for (const Twins& twins : kTwins) {
        if (field == QLatin1String(twins.one)) enterWhenEmpty(QLatin1String(twins.other), value);
        if (field == QLatin1String(twins.other)) enterWhenEmpty(QLatin1String(twins.one), value);
    }
    if (field != kBirth && field != kRegistryBirth) return;
    const QString age = ageOn(clock_.today(), pages_->value(kBirth));
    if (!age.isEmpty()) pages_->enterValue(QStringLiteral("Ogr_Yasi"), age);
}

void RegistrationScreen::carryOverDates() {
    for (const QString& field : {kBirth, kRegistryBirth})
        if (isEdited(field)) carryOver(field);
}

void RegistrationScreen::fieldEdited(const QString& field) {
    result_->clear();
    if (!isDateField(field)) carryOver(field);
    if (field == kWorkplace) attempt(QStringLiteral("İşyeri seçimi"), [this] { takeOverWorkplace(); });
    if (field != kMaster) return;
    attempt(QStringLiteral("Usta öğretici seçimi"), [&] {
        if (const auto facts = workplaceFacts(databases_, pages_->value(kWorkplace)))
            for (const auto& supervisor : facts->supervisors)
                if (supervisor.name == pages_->value(kMaster))
                    pages_->enterValue(kMasterMobile, supervisor.mobile);
    });
}

// Address and master-instructor of a workplace of the register.
void RegistrationScreen::takeOverWorkplace() {
    const auto facts = workplaceFacts(databases_, pages_->value(kWorkplace));
    showSupervisors(facts);
    const WorkplaceFacts taken = facts.value_or(WorkplaceFacts());
    pages_->enterValue(QStringLiteral("Ogr_calistigi_isyeri_adresi1"), taken.address1);
    pages_->enterValue(QStringLiteral("Ogr_calistigi_isyeri_adresi2"), taken.address2);
    const bool one = taken.supervisors.size() == 1;
    pages_->enterValue(kMaster, one ? taken.supervisors[0].name : QString());
    pages_->enterValue(kMasterMobile, one ? taken.supervisors[0].mobile : QString());
}

// A field that was edited and left: its fault is told at once, in the window; the save tells it in a box.
void RegistrationScreen::checkLeft(const QWidget* left) {
    if (!left || isEmpty() || !pages_->isAncestorOf(left)) return;
    const QString field = left->objectName();
    if (!shown_.contains(field) || !isEdited(field)) return;
    if (isDateField(field) && dateFromText(pages_->value(field))) carryOver(field);
    attempt(QStringLiteral("Alan denetimi"), [&] {
        const QString fault = registration_.fault(collect(), field);
        if (!fault.isEmpty()) result_->setText(QStringLiteral("⚠ ") + QString(fault).replace(u'\n', u' '));
    });
}

// A command on the stored student: what is typed is settled first.
void RegistrationScreen::withStudent(const QString& routine, const std::function<void()>& work) {
    if (!settleUnsaved()) return;
    if (isEmpty() || form_.stored.isNew()) {
        result_->setText(QStringLiteral("Önce kayıtlı bir öğrenci seçiniz."));
        return;
    }
    attempt(routine, work);
}

void RegistrationScreen::sendToEarlier() {
    withStudent(QStringLiteral("Önceki işyerine gönderme"), [this] {
        if (!earlier_.sendToEarlier(form_.stored.number())) return;
        lists_->showStudent(form_.stored);
        wrote(QStringLiteral("İşyeri, önceki işyerlerine eklendi."));
    });
}

void RegistrationScreen::copy(AddressCopy direction) {
    if (isEmpty()) {
        result_->setText(QStringLiteral("Önce bir öğrenci seçiniz."));
        return;
    }
    FieldTexts values = collect().values;
    const FieldTexts before = values;
    if (!copyAddress(values, direction, dialogs())) return;
    for (const auto& [field, text] : changedTexts(before, values))
        pages_->enterValue(field, text);
    result_->setText(QStringLiteral("Adres kopyalandı; kaydetmeyi unutmayınız."));
}

void RegistrationScreen::removeTerm() {
    withStudent(QStringLiteral("Dönem devamsızlıklarını silme"), [this] {
        if (!absences_.removeTerm(form_.stored)) return;
        lists_->showStudent(form_.stored);
        wrote(QStringLiteral("Devamsızlıklar silindi."));
    });
}

void RegistrationScreen::startAgain() {
    withStudent(QStringLiteral("Yeniden başlama"), [this] {
        if (!absences_.startAgain(form_.stored)) return;
        reload();
        wrote(QStringLiteral("Devamsızlıklar ve ayrılış nedeni temizlendi."));
    });
}

} // namespace orvan
