// reference/screens/constants_screen.cpp — see constants_screen.h.
#include "reference/screens/constants_screen.h"

#include "reference/screens/screen_buttons.h"

#include <algorithm>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace orvan {

namespace {

QStringList fieldNames(const std::vector<FormPage>& pages) {
    QStringList names;
    for (const FormPage& page : pages)
        for (const FormField& field : page.fields)
            names << field.name;
    return names;
}

} // namespace

std::vector<Choice> withStored(std::vector<Choice> choices, const QString& code, const QString& text) {
    const bool known = std::any_of(choices.begin(), choices.end(), [&](const Choice& choice) {
        return choice.code == code || choice.text == text;
    });
    if (!known && !code.isEmpty()) choices.push_back({code, text});
    return choices;
}

ConstantsScreen::ConstantsScreen(const QString& name, const QString& title, std::vector<FormPage> pages,
                                 DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                                 QWidget* parent)
    : Screen(name, title, dialogs, parent), databases_(databases), record_(databases, dialogs, title),
      pages_(nullptr), fields_(fieldNames(pages)) {
    pages_ = new FormPages(name + QStringLiteral("Sayfalari"), std::move(pages), memory, this);
    build();
}

void ConstantsScreen::build() {
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    saveButton_ = makeButton("kaydet", QStringLiteral("Kay&det"),
                             QStringLiteral("Bütün sayfalardaki değişiklikleri kaydeder (Ctrl+S)"), this,
                             [this] { save(); });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(result_, 1);
    buttons->addWidget(saveButton_);
    buttons->addWidget(leave);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pages_, 1);
    layout->addLayout(buttons);
    connect(pages_, &FormPages::dirtyChanged, this, [this] { checkUnsaved(); });
    connect(pages_, &FormPages::edited, this, [this] { result_->clear(); });
    connect(pages_, &FormPages::lastFieldDone, this, [this] { saveButton_->setFocus(Qt::TabFocusReason); });
    setFocusProxy(pages_);
}

void ConstantsScreen::load() {
    attempt(objectName(), [this] {
        const SchoolConstants& constants = record_.load();
        offerChoices(constants);
        shown_.clear();
        for (const QString& name : fields_) {
            pages_->setValue(name, shownText(constants, name));
            shown_[name] = pages_->value(name);
        }
        loadMore();
        checkUnsaved();
    });
}

QString ConstantsScreen::shownText(const SchoolConstants& constants, const QString& field) const {
    return constants.text(field.toLatin1().constData());
}

void ConstantsScreen::checkUnsaved() { setUnsaved(pages_->isDirty() || moreIsDirty()); }

bool ConstantsScreen::isEdited(const QString& field) const {
    return pages_->value(field) != shown_.at(field);
}

void ConstantsScreen::discardChanges() {
    pages_->revert();
    discardMore();
}

void ConstantsScreen::refresh() {
    if (!hasUnsaved()) load();
}

bool ConstantsScreen::save() {
    // the second click of a double click finds nothing left to save
    if (saving_ || (sinceSaved_.isValid() && sinceSaved_.elapsed() < QApplication::doubleClickInterval() &&
                    !hasUnsaved()))
        return false;
    bool saved = false;
    const QScopedValueRollback saving(saving_, true);
    attempt(QStringLiteral("Sabit bilgilerin kaydı"), [&] { saved = trySave(); });
    return saved;
}

bool ConstantsScreen::trySave() {
    if (!pages_->settle() || !settleMore()) return false;
    checkUnsaved();
    if (!hasUnsaved()) {
        result_->setText(QStringLiteral("Değişiklik yok."));
        return true;
    }
    if (pages_->isDirty() && !saveConstants()) return false;
    if (moreIsDirty() && !saveMore()) return false;
    sinceSaved_.start();
    load();
    result_->setText(QStringLiteral("Kaydedildi."));
    emit recordsChanged();
    return true;
}

bool ConstantsScreen::saveConstants() {
    FieldTexts wanted;
    for (const QString& name : fields_)
        if (isEdited(name)) wanted[name] = pages_->value(name);
    addToSave(wanted);
    const SaveOutcome outcome = record_.save(wanted);
    if (outcome.saved) {
        pages_->acceptAsLoaded();
        for (const QString& name : fields_)
            shown_[name] = pages_->value(name);
        return true;
    }
    if (fields_.contains(outcome.field))
        pages_->showWrong(outcome.field, outcome.reason);
    else
        result_->setText(outcome.reason);
    takeOver();
    return false;
}

// Another station's values stand in the row now: shown where nothing was typed here.
void ConstantsScreen::takeOver() {
    for (auto& [name, loaded] : shown_) {
        const QString stored = shownText(record_.loaded(), name);
        if (pages_->value(name) != loaded || stored == loaded || stored.isEmpty()) continue;
        pages_->setValue(name, stored);
        loaded = pages_->value(name);
    }
}

} // namespace orvan
