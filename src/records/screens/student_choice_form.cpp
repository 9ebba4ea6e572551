// records/screens/student_choice_form.cpp — see student_choice_form.h.
#include "records/screens/student_choice_form.h"

#include "widgets/choice_list.h"

namespace orvan {

namespace {

const QString kProfession = QStringLiteral("meslek");
const QString kStage = QStringLiteral("donem");
const QString kClass = QStringLiteral("sinif");
const QString kAll = QStringLiteral("*");

Choice allOfThem() { return {kAll, QStringLiteral("(tümü)")}; }

QString codeOf(const QString& code, int version) { return QStringLiteral("%1/%2").arg(code).arg(version); }

std::vector<FormField> fields() {
    FormField profession{kProfession, QStringLiteral("Mesle&k:"), FieldKind::Choice, 0, 28};
    FormField stage{kStage, QStringLiteral("Döne&m:"), FieldKind::Choice, 0, 10};
    FormField className{kClass, QStringLiteral("Sını&f:"), FieldKind::Choice, 0, 10};
    stage.column = 1;
    className.column = 2;
    return {profession, stage, className};
}

std::vector<Choice> choicesOf(const QStringList& texts) {
    std::vector<Choice> choices{allOfThem()};
    for (const QString& text : texts)
        choices.push_back({text, text});
    return choices;
}

} // namespace

StudentChoiceForm::StudentChoiceForm(QWidget* parent) : EntryForm(fields(), parent) {
    setObjectName(QStringLiteral("secim"));
    offer({}, {}, {});
    setSelection({});
    connect(this, &EntryForm::edited, this, [this] {
        acceptAsLoaded(); // a choice of what to see is no unsaved work
        emit chosen();
    });
}

void StudentChoiceForm::offer(const std::vector<Profession>& professions, const QStringList& stages,
                              const QStringList& classes) {
    const BulkSelection before = selection();
    std::vector<Choice> choices{allOfThem()};
    for (const Profession& profession : professions)
        choices.push_back(
            {codeOf(profession.code, profession.version), QStringLiteral("%1 (%2) - %3. program")
                                                              .arg(profession.name, profession.code)
                                                              .arg(profession.version)});
    choiceList(kProfession)->setChoices(std::move(choices));
    choiceList(kStage)->setChoices(choicesOf(stages));
    choiceList(kClass)->setChoices(choicesOf(classes));
    setSelection(before);
}

BulkSelection StudentChoiceForm::selection() const {
    BulkSelection chosen;
    const auto text = [this](const QString& field) {
        const QString code = value(field);
        return code == kAll ? QString() : code;
    };
    const QString profession = text(kProfession);
    chosen.profession = profession.section(QLatin1Char('/'), 0, -2);
    chosen.version = profession.section(QLatin1Char('/'), -1).toInt();
    chosen.stage = text(kStage);
    chosen.className = text(kClass);
    return chosen;
}

void StudentChoiceForm::setSelection(const BulkSelection& selection) {
    const auto put = [this](const QString& field, const QString& code) {
        setValue(field, code);
        if (value(field).isEmpty() || code.isEmpty()) setValue(field, kAll);
    };
    put(kProfession,
        selection.profession.isEmpty() ? QString() : codeOf(selection.profession, selection.version));
    put(kStage, selection.stage);
    put(kClass, selection.className);
}

QString StudentChoiceForm::words() const {
    QStringList words;
    for (const QString& field : {kProfession, kStage, kClass})
        if (value(field) != kAll) {
            const ChoiceList* list = choiceList(field);
            const QString label = field == kProfession ? QStringLiteral("Meslek")
                                  : field == kStage    ? QStringLiteral("Dönem")
                                                       : QStringLiteral("Sınıf");
            words << label + QStringLiteral(": ") + list->currentText();
        }
    return words.join(QStringLiteral(" - "));
}

} // namespace orvan
