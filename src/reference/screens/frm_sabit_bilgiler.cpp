// reference/screens/frm_sabit_bilgiler.cpp — the school's constants; province and district by their tables.

#include "reference/screens/frm_sabit_bilgiler.h"

#include "core/turkish_text.h"
#include "reference/code_lists.h"
#include "reference/screens/constants_pages.h"

#include <algorithm>

namespace orvan {

namespace {

std::vector<Choice> choicesOf(const std::vector<Place>& places) {
    std::vector<Choice> choices;
    for (const Place& place : places)
        choices.push_back({place.code, place.name});
    return choices;
}

// A stored place as the list has it: by its code, else by its name (older rows hold names alone); a place
// that the list does not have goes by its code, or by its name.
Place placeIn(const std::vector<Place>& places, const QString& code, const QString& name) {
    for (const Place& place : places)
        if (place.code == code) return place;
    for (const Place& place : places)
        if (sameTurkish(place.name, name)) return place;
    return {code.isEmpty() ? name : code, name.isEmpty() ? code : name};
}

} // namespace

frmSabitBilgiler::frmSabitBilgiler(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                   UserMemory& memory, QWidget* parent)
    : ConstantsScreen(QStringLiteral("frmSabitBilgiler"), title, schoolPages(databases.schema()), databases,
                      dialogs, memory, parent) {
    connect(&pages(), &FormPages::edited, this, [this](const QString& field) {
        if (field == kProvinceField) attempt(QStringLiteral("İlçe listesi"), [this] { offerDistricts(); });
    });
    load();
}

void frmSabitBilgiler::offerChoices(const SchoolConstants& constants) {
    auto& sql = databases().constants().sql();
    provinces_ = provinces(sql);
    storedProvince_ = placeIn(provinces_, constants.text("SB_il_kodu"), constants.text("SB_il_adi"));
    storedDistrict_ = placeIn(districtsOf(sql, storedProvince_.code), constants.text("SB_ilce_kodu"),
                              constants.text("SB_ilce_adi"));
    pages()
        .choiceList(kProvinceField)
        ->setChoices(withStored(choicesOf(provinces_), storedProvince_.code, storedProvince_.name));
    pages().setValue(kProvinceField, storedProvince_.code);
    offerDistricts();

    std::vector<Choice> terms;
    for (const QString& term : descriptions(databases().level().sql(), QString::fromUtf8(group::state)))
        if (!term.isEmpty() && term.front().isDigit()) terms.push_back({term, term});
    const QString stored = constants.text("SB_Donem");
    pages().choiceList(kTermField)->setChoices(withStored(std::move(terms), stored, stored));
}

// The chosen district stays while it is one of the province's.
void frmSabitBilgiler::offerDistricts() {
    const QString province = pages().value(kProvinceField);
    auto choices = choicesOf(districtsOf(databases().constants().sql(), province));
    if (province == storedProvince_.code)
        choices = withStored(std::move(choices), storedDistrict_.code, storedDistrict_.name);
    pages().choiceList(kDistrictField)->setChoices(std::move(choices));
}

QString frmSabitBilgiler::shownText(const SchoolConstants& constants, const QString& field) const {
    if (field == kProvinceField) return storedProvince_.code;
    if (field == kDistrictField) return storedDistrict_.code;
    return ConstantsScreen::shownText(constants, field);
}

QString frmSabitBilgiler::chosenText(const QString& field) const {
    const QString code = pages().value(field);
    for (const Choice& choice : pages().choiceList(field)->choices())
        if (choice.code == code) return choice.text;
    return {};
}

// Printed forms read the names.
void frmSabitBilgiler::addToSave(FieldTexts& wanted) const {
    if (isEdited(kProvinceField)) wanted[QStringLiteral("SB_il_adi")] = chosenText(kProvinceField);
    if (isEdited(kDistrictField)) wanted[QStringLiteral("SB_ilce_adi")] = chosenText(kDistrictField);
}

} // namespace orvan
