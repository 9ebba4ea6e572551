// records/registration.cpp — the save in its order of checks, then one write under one lock.
#include "records/registration.h"

#include "core/clock.h"
#include "core/turkish_text.h"
#include "core/users.h"
#include "core/values.h"
#include "records/identity_number.h"
#include "records/registration_conflict.h"
#include "records/student_photo.h"

#include <QFile>

namespace orvan {
namespace {

const QString& warning() {
    static const QString title = QStringLiteral("Uyarı");
    return title;
}

QString kindOfNewStudents(const Session& session) {
    if (session.level == Level::IsyeriAcma) return QStringLiteral("İşyeri Açma");
    if (!session.equivalence && session.level != Level::DenklikKalfa && session.level != Level::DenklikUsta)
        return QStringLiteral("Mesleki Eğitim");
    const bool masters = session.level == Level::Usta || session.level == Level::DenklikUsta;
    return masters ? QStringLiteral("DenklikUsta") : QStringLiteral("DenklikKalfa");
}

// A stored student keeps number, registration number and profession: other numbers come with all his rows, by
// another command.
void keepNumbers(RegistrationForm& form) {
    if (form.stored.isNew()) return;
    for (const char* field : {"Ogr_Numarasi", "Ogr_Kayit_No", "Ogr_MeslekKod"})
        if (const QString stored = form.stored.text(field); !stored.isEmpty())
            form.values[QLatin1String(field)] = stored;
}

// What is stored has no blanks at its ends.
void trimAll(FieldTexts& values) {
    for (auto& [name, text] : values)
        text = trimBlanks(text);
}

} // namespace

QString RegistrationForm::text(const char* field) const {
    const auto found = values.find(QLatin1String(field));
    return found == values.end() ? QString() : found->second;
}

Registration::Registration(DatabaseSet& databases, Dialogs& dialogs, const Clock& clock, QString title,
                           AfterSave afterSave)
    : databases_(databases), dialogs_(dialogs), clock_(clock), title_(std::move(title)),
      afterSave_(std::move(afterSave)), records_(databases), others_(databases) {}

std::optional<RegistrationForm> Registration::startNew(const Profession& profession) {
    if (profession.code.isEmpty()) {
        dialogs_.message(QStringLiteral("Yeni kayıt yapmak için önce meslek seçimi yapmalısınız."), warning(),
                         Icon::Warning);
        return std::nullopt;
    }
    RegistrationForm form;
    form.proposed = others_.freeNumbers(profession);
    for (const FieldDeclaration& field : records_.table().fields)
        form.values[fromUtf8(field.name)] =
            field.type == jet::Type::Boolean ? QStringLiteral("0") : QString();
    const auto put = [&](const char* field, const QString& text) {
        form.values[QLatin1String(field)] = text;
    };
    put("Ogr_Numarasi", form.proposed.studentNo);
    put("Ogr_Kayit_No", QString::number(form.proposed.registrationNo));
    put("Ogr_Kayit_Tarihi", dateText(clock_.today()));
    put("Ogr_MeslekKod", profession.code);
    put("DersID", QString::number(profession.version));
    put("Ogr_Bolum", profession.name);
    put("Ogr_Bolumu", profession.name);
    put("Ogr_DersYili", databases_.session().schoolYear);
    put("Ogr_Seviye", QStringLiteral("1"));
    put("Ogr_Durum", QStringLiteral("0"));
    put("Ogr_Kayit_Durumu", kindOfNewStudents(databases_.session()));
    put("Ogr_Nufus_Uyrugu", QStringLiteral("T.C."));
    form.stored.values = form.values;
    return form;
}

RegistrationForm Registration::formOf(StudentRecord stored) {
    RegistrationForm form;
    form.values = stored.values;
    form.stored = std::move(stored);
    return form;
}

RegistrationResult Registration::save(RegistrationForm& form) {
    trimAll(form.values);
    keepNumbers(form);
    if (const auto refused = checkFields(form)) return *refused;
    if (const auto refused = checkLawArticle(form)) return *refused;
    if (!mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_)) return {};
    if (const QString fault = requiredFault(form.values); !fault.isEmpty()) {
        for (const char* field : {"Ogr_Numarasi", "Ogr_Adi", "Ogr_Soyadi"})
            if (form.text(field).isEmpty()) return refuse(fault, field, QStringLiteral("Boş olamaz."));
    }
    if (const auto refused = checkIdentityNumber(form)) return *refused;
    if (const auto refused = checkSameStudent(form)) return *refused;
    if (!acceptsArchive()) return {};
    Result result = writeWhenFree(form);
    if (result.what == Result::Saved && afterSave_) afterSave_(form.stored);
    return result;
}

// The person has filled one of the fields; what was stored before is his predecessors'.
bool Registration::edited(const RegistrationForm& form, std::initializer_list<const char*> fields) const {
    for (const char* field : fields)
        if (form.text(field) != form.stored.text(field)) return true;
    return false;
}

RegistrationResult Registration::refuse(const QString& text, const char* field, const QString& reason) {
    dialogs_.message(text, warning(), Icon::Warning);
    return {Result::Refused, QLatin1String(field), reason};
}

QString Registration::fault(const RegistrationForm& form, const QString& field) {
    const auto about = [&](std::initializer_list<const char*> fields) {
        for (const char* name : fields)
            if (field == QLatin1String(name)) return edited(form, fields);
        return false;
    };
    const QString text = form.values.at(field);
    if (about({"Ogr_Sifre"}))
        if (const QString fault = passwordLengthFault(text); !fault.isEmpty()) return fault;
    if (text != form.stored.text(utf8(field).c_str()))
        if (const QString problem = records_.problem(field, text); !problem.isEmpty()) return problem;
    if (about({"Ogr_calistigi_isden_ayrilis_tarihi", "Ogr_calistigi_ise_giris_tarihi"}))
        if (const QString fault = workDatesFault(form.values); !fault.isEmpty()) return fault;
    if (about({"Ogr_SSK_SonOdeme_Tarihi", "Ogr_calistigi_isden_ayrilis_tarihi"}))
        if (const QString fault = lastPaymentFault(form.values); !fault.isEmpty()) return fault;
    const bool newPassword = about({"Ogr_Sifre"}) && !text.isEmpty();
    return newPassword && others_.passwordTaken(text, form.text("Ogr_Numarasi")) ? passwordTakenText()
                                                                                 : QString();
}

std::optional<RegistrationResult> Registration::checkFields(const RegistrationForm& form) {
    for (const FieldDeclaration& field : records_.table().fields) {
        if (!form.values.contains(fromUtf8(field.name)) || !edited(form, {field.name.c_str()})) continue;
        const QString found = fault(form, fromUtf8(field.name));
        if (!found.isEmpty())
            return refuse(found, field.name.c_str(), found.section(QLatin1Char('\n'), 0, 0));
    }
    return std::nullopt;
}

// The words of the article; files that hold its code have them in the list of articles.
QString Registration::lawArticle(const RegistrationForm& form) {
    const QString stored = form.text("Ogr_Kanun_Maddesi");
    if (stored.isEmpty()) return stored;
    const QString words =
        descriptionOf(databases_.level().sql(), QString::fromUtf8(group::lawArticle), stored);
    return words.isEmpty() ? stored : words;
}

std::optional<RegistrationResult> Registration::checkLawArticle(const RegistrationForm& form) {
    const QString fault = lawArticleFault(form.values, lawArticle(form));
    if (fault.isEmpty()) return std::nullopt;
    dialogs_.message(fault, QStringLiteral("Dikkat"), Icon::Critical);
    return Result{Result::Refused, QStringLiteral("Ogr_calistigi_ise_giris_tarihi"),
                  QStringLiteral("16.madde ile kayıtta zorunludur.")};
}

RegistrationResult Registration::identityTaken(const RegistrationForm& form, const StudentRecord& holder) {
    return refuse(identityTakenText(form.text("Ogr_Mernis"), holder), "Ogr_Mernis",
                  QStringLiteral("%1 numaralı öğrencide kayıtlı.").arg(holder.number()));
}

// Held by somebody else: refused. Wrong check digits: the person may know better.
std::optional<RegistrationResult> Registration::checkIdentityNumber(const RegistrationForm& form) {
    const QString identityNo = form.text("Ogr_Mernis");
    if (identityNo.size() == kIdentityNumberLength)
        if (const auto holder = others_.withIdentityNumber(identityNo, form.text("Ogr_Numarasi")))
            return identityTaken(form, *holder);
    if (identityNo.isEmpty() || !edited(form, {"Ogr_Mernis"}) || isIdentityNumber(identityNo))
        return std::nullopt;
    const QString question =
        QStringLiteral("%1 geçerli bir T.C. kimlik numarası değil: 11 rakam olmalı ve son "
                       "iki rakamı öncekilerle uyuşmalıdır.\n"
                       "Yine de bu numarayla kaydedilsin mi?")
            .arg(identityNo);
    if (dialogs_.confirms(question, warning())) return std::nullopt;
    return Result{Result::Refused, QStringLiteral("Ogr_Mernis"), QStringLiteral("Numarayı denetleyiniz.")};
}

// A proposed number that is taken by now is looked at later. The question about the name is asked where the
// save would bring such a pair about.
std::optional<RegistrationResult> Registration::checkSameStudent(const RegistrationForm& form) {
    const QString number = form.text("Ogr_Numarasi");
    const bool newPair = form.stored.isNew() ? number != form.proposed.studentNo : edited(form, {"DersID"});
    if (newPair && others_.hasNumber(number, form.text("DersID")))
        return refuse(sameNumberText(number), "Ogr_Numarasi", QStringLiteral("Bu numara kayıtlı."));
    if (!form.stored.isNew() && !edited(form, {"Ogr_Adi", "Ogr_Soyadi", "Ogr_MeslekKod"}))
        return std::nullopt;
    if (!others_.namesakeInOtherProfession(form.values)) return std::nullopt;
    if (dialogs_.confirms(
            QStringLiteral(
                "Kayıt işlemine devam ederseniz aynı isimde fakat farklı meslekte kayıtlı kursiyer "
                "bilgisi oluşacaktır.\nKayıt işlemine devam etmek istiyor musunuz ?"),
            warning()))
        return std::nullopt;
    return Result{Result::Refused, QStringLiteral("Ogr_Adi"), QStringLiteral("Aynı isimde öğrenci var.")};
}

bool Registration::acceptsArchive() {
    if (databases_.isNormalLevelFile()) return true;
    return dialogs_.confirms(
        QStringLiteral(
            "Dikkat! Değişiklik yaptığınız öğrenci normal arşivde değil. Dolayısıyla bu değişiklik "
            "normal arşivde gözükmeyecektir.\n"
            "Gözükmesi için öğrenciyi önce normal arşive aktarmalısınız. Yine de devam etmek "
            "istiyor musunuz?"),
        warning());
}

// Questions are asked outside the lock, so their answers are looked at once more under it.
RegistrationResult Registration::writeWhenFree(RegistrationForm& form) {
    for (;;) {
        std::optional<StudentRecord> theirs;
        switch (lookAndWrite(form, theirs)) {
        case Obstacle::None: return {Result::Saved, {}, {}};
        case Obstacle::Numbers:
            if (!acceptFreshNumbers(form)) return {};
            break;
        case Obstacle::Identity: return identityTaken(form, *theirs);
        case Obstacle::Password: return refuse(passwordTakenText(), "Ogr_Sifre", {});
        case Obstacle::Changed:
            if (const auto settled = settleChange(form, *theirs)) return *settled;
            break;
        case Obstacle::Gone:
            if (const auto settled = settleGone(form)) return *settled;
            break;
        }
    }
}

// One write: all of it or, when anything stands against it or an error comes, nothing.
Registration::Obstacle Registration::lookAndWrite(RegistrationForm& form,
                                                  std::optional<StudentRecord>& theirs) {
    jet::Database& level = databases_.level().database();
    jet::WriteBatch batch(level);
    jet::WriteScope whole(level.pages());
    const QString identityNo = form.text("Ogr_Mernis"), password = form.text("Ogr_Sifre");
    if (form.stored.isNew()) {
        if (numbersTaken(form)) return Obstacle::Numbers;
    } else {
        theirs = records_.now(form.stored);
        if (!theirs) return Obstacle::Gone;
        if (theirs->values != form.stored.values) return Obstacle::Changed;
        form.stored = *theirs;
    }
    if (identityNo.size() == kIdentityNumberLength) {
        theirs = others_.withIdentityNumber(identityNo, form.text("Ogr_Numarasi"));
        if (theirs) return Obstacle::Identity;
    }
    if (!password.isEmpty() && edited(form, {"Ogr_Sifre"}) &&
        others_.passwordTaken(password, form.text("Ogr_Numarasi")))
        return Obstacle::Password;
    StudentRecord written = form.stored;
    records_.write(written, form.values);
    whole.commit();
    batch.commit();
    form = formOf(std::move(written));
    return Obstacle::None;
}

bool Registration::numbersTaken(const RegistrationForm& form) {
    return others_.hasNumber(form.text("Ogr_Numarasi"), form.text("DersID")) ||
           others_.hasRegistrationNo(form.text("Ogr_Kayit_No").toInt());
}

bool Registration::acceptFreshNumbers(RegistrationForm& form) {
    const Profession profession{form.text("Ogr_MeslekKod"), form.text("DersID").toInt(), {}};
    StudentNumbers fresh = others_.freeNumbers(profession);
    const QString typed = form.text("Ogr_Numarasi");
    if (!others_.hasNumber(typed, form.text("DersID"))) fresh.studentNo = typed;
    if (!dialogs_.confirms(numbersTakenQuestion(fresh), warning())) return false;
    form.proposed = fresh;
    form.values[QStringLiteral("Ogr_Numarasi")] = fresh.studentNo;
    form.values[QStringLiteral("Ogr_Kayit_No")] = QString::number(fresh.registrationNo);
    return true;
}

std::optional<RegistrationResult> Registration::settleChange(RegistrationForm& form,
                                                             const StudentRecord& theirs) {
    switch (askAboutChange(form, theirs, records_, dialogs_)) {
    case ConflictChoice::Stay: return Result{};
    case ConflictChoice::Theirs: form = formOf(theirs); return Result{Result::Replaced, {}, {}};
    case ConflictChoice::Mine: break;
    }
    FieldTexts mine = theirs.values;
    for (const auto& [name, text] : changedTexts(form.stored.values, form.values))
        mine[name] = text;
    form.values = std::move(mine);
    form.stored = theirs;
    keepNumbers(form);
    return checkLawArticle(form); // both changes together
}

std::optional<RegistrationResult> Registration::settleGone(RegistrationForm& form) {
    switch (askAboutDeletion(form, dialogs_)) {
    case ConflictChoice::Stay: return Result{};
    case ConflictChoice::Theirs: form = {}; return Result{Result::Dropped, {}, {}};
    case ConflictChoice::Mine: break;
    }
    form.stored = {};
    form.proposed = {form.text("Ogr_Kayit_No").toInt(), form.text("Ogr_Numarasi")};
    return std::nullopt;
}

bool Registration::remove(const RegistrationForm& form) {
    if (!rightsOf(databases_.constants().sql(), databases_.session().user, title_).write) {
        dialogs_.message(
            QStringLiteral("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz"), warning(),
            Icon::Warning);
        return false;
    }
    const StudentRecord& student = form.stored;
    const QString title = QStringLiteral("Öğrenci Silme: %1 %2").arg(student.number(), student.fullName());
    if (!dialogs_.confirms(QStringLiteral("Silmek İstediğinize Emin misiniz?"), title)) return false;
    jet::Database& level = databases_.level().database();
    size_t removed = 0;
    {
        jet::WriteBatch batch(level);
        jet::WriteScope whole(level.pages());
        removed = records_.remove(student.number(), student.text("Ogr_Adi"), student.text("Ogr_Soyadi"));
        whole.commit();
        batch.commit();
    }
    if (removed == 0) {
        dialogs_.message(
            QStringLiteral("%1 %2 bu adla artık kayıtlı değil: başka bir bilgisayarda silinmiş ya "
                           "da adı değiştirilmiş. Hiçbir şey silinmedi.")
                .arg(student.number(), student.fullName()),
            warning(), Icon::Warning);
        return false;
    }
    if (!records_.byNumber(student.number())) QFile::remove(photoFile(databases_.folder(), student.number()));
    return true;
}

} // namespace orvan
