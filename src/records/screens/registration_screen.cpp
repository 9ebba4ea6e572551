// records/screens/registration_screen.cpp — the record on view: shown, saved, left, deleted. How the window
// is put together: registration_build.cpp; what fields do to each other: registration_fields.cpp.
#include "records/screens/registration_screen.h"

#include "records/screens/photo_page.h"
#include "records/screens/related_lists.h"
#include "records/screens/student_finder.h"
#include "widgets/choice_list.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>

namespace orvan {

namespace {

const QString kNumber = QStringLiteral("Ogr_Numarasi");
const QString kRegistrationNo = QStringLiteral("Ogr_Kayit_No");
const QString kName = QStringLiteral("Ogr_Adi");

QString textIn(const FieldTexts& texts, const QString& field) {
    const auto found = texts.find(field);
    return found == texts.end() ? QString() : found->second;
}

} // namespace

void RegistrationScreen::showForm(const RegistrationForm& form) {
    form_ = form;
    showSupervisors(workplaceFacts(databases_, form.text("Ogr_calistigi_isyerinin_adi")));
    pages_->setAllReadOnly(false);
    pages_->setReadOnly(kNumber, !form.stored.isNew());
    for (const QString& field : fields_) {
        const QString stored = textIn(form.stored.values, field), wanted = textIn(form.values, field);
        pages_->setValue(field, listCode(field, stored));
        shown_[field] = pages_->value(field);
        if (wanted != stored) pages_->enterValue(field, listCode(field, wanted));
    }
    pages_->clearWrong();
    photo_->showStudent(form.stored);
    lists_->showStudent(form.stored);
    showWho();
    setUnsaved(pages_->isDirty());
}

void RegistrationScreen::showNothing(const QString& why) {
    form_ = {};
    for (const QString& field : fields_) {
        pages_->setValue(field, {});
        shown_[field] = pages_->value(field);
    }
    pages_->clearWrong();
    pages_->setAllReadOnly(true);
    photo_->showStudent({});
    lists_->showStudent({});
    showWho();
    setUnsaved(false);
    result_->setText(why);
}

void RegistrationScreen::showWho() {
    if (isEmpty()) {
        who_->setText(QStringLiteral("Öğrenci seçilmedi"));
    } else if (form_.stored.isNew()) {
        who_->setText(
            QStringLiteral("Yeni öğrenci: %1, %2").arg(form_.text("Ogr_Numarasi"), form_.text("Ogr_Bolum")));
    } else {
        QStringList words{form_.stored.number() + QStringLiteral("  ") + form_.stored.fullName(),
                          form_.text("Ogr_Sinif"), form_.text("Ogr_Bolum")};
        words.removeAll(QString());
        who_->setText(words.join(QStringLiteral(", ")));
    }
}

bool RegistrationScreen::isEdited(const QString& field) const {
    return pages_->value(field) != shown_.at(field);
}

// What was shown and not edited keeps the words in which it is stored.
RegistrationForm RegistrationScreen::collect() const {
    RegistrationForm form = form_;
    for (const QString& field : fields_)
        form.values[field] = isEdited(field) ? pages_->value(field) : textIn(form_.stored.values, field);
    return form;
}

void RegistrationScreen::discardChanges() { pages_->revert(); }

bool RegistrationScreen::save() {
    // the second click of a double click finds nothing left to save
    if (saving_ || (sinceSaved_.isValid() && sinceSaved_.elapsed() < QApplication::doubleClickInterval() &&
                    !hasUnsaved()))
        return false;
    bool saved = false;
    const QScopedValueRollback saving(saving_, true);
    attempt(QStringLiteral("Öğrenci kaydı"), [&] { saved = trySave(); });
    return saved;
}

bool RegistrationScreen::trySave() {
    if (!pages_->settle()) return false;
    if (isEmpty() || (!form_.stored.isNew() && !pages_->isDirty())) {
        result_->setText(isEmpty() ? QStringLiteral("Kaydedilecek öğrenci yok.")
                                   : QStringLiteral("Değişiklik yok."));
        return true;
    }
    carryOverDates(); // Ctrl+S leaves no field
    RegistrationForm wanted = collect();
    const RegistrationResult result = registration_.save(wanted);
    switch (result.what) {
    case RegistrationResult::Saved:
        sinceSaved_.start();
        showForm(wanted);
        wrote(QStringLiteral("Kaydedildi: %1  %2").arg(form_.stored.number(), form_.stored.fullName()));
        return true;
    case RegistrationResult::Replaced:
        showForm(wanted);
        result_->setText(QStringLiteral("Öbür bilgisayarda kaydedilen bilgiler yüklendi."));
        return false;
    case RegistrationResult::Dropped:
        finder_->forget();
        showNothing(QStringLiteral("Öğrenci silinmiş kaldı."));
        return false;
    case RegistrationResult::Refused: break;
    }
    afterRefused(wanted, result);
    return false;
}

// Everything typed stays. Fresh numbers, or what another station saved meanwhile, stand below it.
void RegistrationScreen::afterRefused(const RegistrationForm& refused, const RegistrationResult& result) {
    const bool otherGround = refused.stored.id != form_.stored.id ||
                             refused.stored.values != form_.stored.values ||
                             refused.proposed.studentNo != form_.proposed.studentNo ||
                             refused.proposed.registrationNo != form_.proposed.registrationNo;
    if (otherGround) showForm(refused);
    result_->clear();
    if (!result.field.isEmpty() && !result.reason.isEmpty()) pages_->showWrong(result.field, result.reason);
}

void RegistrationScreen::wrote(const QString& words) {
    finder_->forget();
    result_->setText(words);
    emit recordsChanged();
}

void RegistrationScreen::startNew() {
    if (!settleUnsaved()) return;
    attempt(QStringLiteral("Yeni kayıt"), [this] {
        profession_->settle();
        const auto form = registration_.startNew(chosenProfession());
        if (!form) {
            profession_->setFocus(Qt::OtherFocusReason);
            return;
        }
        sinceSaved_.invalidate(); // what is saved next is another student
        showForm(*form);
        result_->clear();
        pages_->focusField(kName);
    });
}

// Another profession was chosen for the new student on view: his numbers follow, what was typed stays.
void RegistrationScreen::proposeAnew() {
    if (isEmpty() || !form_.stored.isNew() || chosenProfession().code.isEmpty()) return;
    RegistrationForm form = collect();
    const bool ownNumber = isEdited(kNumber);
    const auto fresh = registration_.startNew(chosenProfession());
    for (const QString& field :
         {kNumber, kRegistrationNo, QStringLiteral("Ogr_MeslekKod"), QStringLiteral("DersID"),
          QStringLiteral("Ogr_Bolum"), QStringLiteral("Ogr_Bolumu")}) {
        form.stored.values[field] = fresh->values.at(field);
        if (field != kNumber || !ownNumber) form.values[field] = fresh->values.at(field);
    }
    form.proposed = fresh->proposed;
    showForm(form);
}

void RegistrationScreen::remove() {
    if (isEmpty() || form_.stored.isNew()) {
        result_->setText(QStringLiteral("Silinecek kayıtlı öğrenci yok."));
        return;
    }
    attempt(QStringLiteral("Öğrenci silme"), [this] {
        const StudentRecord gone = form_.stored;
        if (!registration_.remove(form_)) return;
        StudentRecords& records = registration_.records();
        auto beside = records.next(gone);
        if (!beside) beside = records.previous(gone);
        if (beside)
            showForm(Registration::formOf(std::move(*beside)));
        else
            showNothing({});
        wrote(QStringLiteral("Silindi: %1  %2").arg(gone.number(), gone.fullName()));
    });
}

void RegistrationScreen::step(Step where) {
    if (!settleUnsaved()) return;
    attempt(QStringLiteral("Öğrenciler arasında gezinme"), [this, where] {
        StudentRecords& records = registration_.records();
        auto beside = where == Step::Back ? records.previous(form_.stored) : records.next(form_.stored);
        if (beside) {
            result_->clear();
            showForm(Registration::formOf(std::move(*beside)));
        } else {
            result_->setText(where == Step::Back ? QStringLiteral("Bu, ilk öğrenci.")
                                                 : QStringLiteral("Bu, son öğrenci."));
        }
    });
}

void RegistrationScreen::showRecord(const QString& number) {
    auto record = registration_.records().byNumber(number);
    result_->clear();
    if (record)
        showForm(Registration::formOf(std::move(*record)));
    else
        result_->setText(QStringLiteral("%1 numaralı öğrenci bu düzeyde yok.").arg(number));
}

void RegistrationScreen::refresh() {
    finder_->forget();
    attempt(objectName(), [this] {
        loadChoices();
        if (!hasUnsaved()) reload();
    });
}

void RegistrationScreen::reload() {
    if (isEmpty()) return;
    if (form_.stored.isNew()) {
        proposeAnew();
        return;
    }
    auto now = registration_.records().now(form_.stored);
    if (now)
        showForm(Registration::formOf(std::move(*now)));
    else
        showNothing(QStringLiteral("%1 %2 başka bir bilgisayarda silindi.")
                        .arg(form_.stored.number(), form_.stored.fullName()));
}

Profession RegistrationScreen::chosenProfession() const {
    const QString code = profession_->code();
    const qsizetype slash = code.lastIndexOf(u'/');
    if (slash < 0) return {};
    Profession profession{code.left(slash), code.mid(slash + 1).toInt(), {}};
    profession.name = professionName(databases_.level().sql(), profession.code, profession.version);
    return profession;
}

} // namespace orvan
