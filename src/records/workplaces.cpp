// records/workplaces.cpp — see workplaces.h. The other lists of the form: workplace_lists.cpp.
#include "records/workplaces.h"

#include "core/clock.h"
#include "core/turkish_text.h"
#include "core/users.h"
#include "core/values.h"
#include "records/identity_number.h"
#include "records/workplace_checks.h"
#include "records/workplace_rename.h"
#include "reference/field_texts.h"

#include <algorithm>

namespace orvan {
namespace {

constexpr auto kTable = "isletme_Bilgisi";
const QString kName = QStringLiteral("K_Adi");
const QString kType = QStringLiteral("K_isletme_Tipi");
const QString kAddress1 = QStringLiteral("K_Adresi1");
const QString kAddress2 = QStringLiteral("K_Adresi2");
const QString kDistrictCode = QStringLiteral("K_Semt_Kodu");
const QString kDistrictName = QStringLiteral("K_Semt_Adi");
const QString kBirthDate = QStringLiteral("K_isveren_vekil_dogum_tarihi");
const QString kStaff = QStringLiteral("K_Personel_Sayisi");
const QString kWarning = QStringLiteral("Uyarı");

QString textOf(const FieldTexts& values, const QString& field) {
    const auto found = values.find(field);
    return found == values.end() ? QString() : found->second;
}

bool isCount(const QString& field) {
    const auto& all = supervisorFields();
    return std::any_of(all.begin(), all.end(), [&](const SupervisorFields& s) {
        return field == s.girls || field == s.boys || field == s.total;
    });
}

WorkplaceIdentity identityOf(const FieldTexts& values) {
    return {textOf(values, kName), textOf(values, kAddress1), textOf(values, kAddress2)};
}

} // namespace

const std::array<SupervisorFields, kSupervisors>& supervisorFields() {
    static const std::array<SupervisorFields, kSupervisors> all = [] {
        const char* const names[] = {"K_egitim_Sorumlusu",  "K_egitim_sorumlusu2", "K_egitim_sorumlusu3",
                                     "K_egitim_sorumlusu4", "K_egitim_sorumlusu5", "K_egitim_sorumlusu6",
                                     "K_Egitim_Sorumlusu7"};
        std::array<SupervisorFields, kSupervisors> made;
        for (size_t i = 0; i < kSupervisors; ++i) {
            const QString n = QString::number(i + 1), suffix = i == 0 ? QString() : n;
            made[i] = {QString::fromLatin1(names[i]),
                       QStringLiteral("K_EgitimSorumlusu%1_Cep").arg(n),
                       QStringLiteral("K_Kiz_Ogrenci_sayisi") + suffix,
                       QStringLiteral("K_Erkek_Ogrenci_Sayisi") + suffix,
                       QStringLiteral("K_Toplam_Ogrenci_Sayisi") + suffix,
                       {}};
        }
        made[0].identity = QStringLiteral("K_EgitimSorumlusu1_TC");
        return made;
    }();
    return all;
}

Workplaces::Workplaces(DatabaseSet& databases, Dialogs& dialogs, QString title)
    : databases_(databases), dialogs_(dialogs), title_(std::move(title)) {
    for (const FieldDeclaration& field : databases.schema().table(kTable).fields)
        if (const QString name = fromUtf8(field.name); name != kType && !isCount(name)) fields_ << name;
}

// The counts are no part of the comparison with other stations: each level counts its own students.
StoredRows Workplaces::stored() {
    return {databases_.workplaces().database(),
            databases_.schema().table(kTable),
            fields_ + QStringList{kType},
            {kName}};
}

int Workplaces::width(const QString& field) const { return databases_.schema().width(kTable, utf8(field)); }

bool Workplaces::mayWrite() {
    return orvan::mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_);
}

std::vector<StoredRow> Workplaces::rows() {
    auto rows = stored().all();
    std::erase_if(rows, [](const StoredRow& row) { return row.values.at(kType) == QLatin1String("1"); });
    std::stable_sort(rows.begin(), rows.end(), [](const StoredRow& a, const StoredRow& b) {
        return lessTurkish(a.values.at(kName), b.values.at(kName));
    });
    return rows;
}

bool Workplaces::nameTaken(const QString& name, const StoredRow* self) {
    if (self && sameTurkish(self->values.at(kName), name)) return false; // its own, perhaps in other letters
    return !databases_.workplaces()
                .sql()
                .query("SELECT K_adi FROM isletme_bilgisi WHERE trim(K_adi) = ?", Parameters{name})
                .empty();
}

// Only what is edited is judged: an old row with an odd date can still get a new telephone.
SaveOutcome Workplaces::check(const FieldTexts& wanted, const StoredRow* before) {
    const QString name = textOf(wanted, kName);
    if (name.isEmpty()) {
        const QString words = QStringLiteral("Ad Sahası Boş Geçilemez!");
        dialogs_.message(words, kWarning, Icon::Warning);
        return SaveOutcome::refused(kName, words);
    }
    const StoredRows rows = stored();
    for (const auto& [field, text] : before ? changedTexts(before->values, wanted) : wanted) {
        if (const QString problem = fieldProblem(rows.field(field), text); !problem.isEmpty())
            return SaveOutcome::refused(field, problem);
        if (field == kBirthDate && !text.isEmpty() && !dateFromText(text))
            return SaveOutcome::refused(
                field, QStringLiteral("Doğum tarihi gg.aa.yyyy olmalı; “%1” tarih değil.").arg(text));
        if (field == kStaff && text.toInt() < 0)
            return SaveOutcome::refused(field, QStringLiteral("Personel sayısı sıfırdan küçük olamaz."));
    }
    if (nameTaken(name, before))
        return SaveOutcome::refused(
            kName, QStringLiteral("“%1” adıyla bir işletme zaten kayıtlı; başka bir ad yazınız.").arg(name));
    return SaveOutcome::done();
}

QStringList Workplaces::warnings(const FieldTexts& typed) {
    const StoredRows rows = stored();
    QStringList all;
    const auto phone = [&](const QString& field, Phone kind) {
        all << phoneWarning(fromUtf8(rows.field(field).label), textOf(typed, field), kind);
    };
    phone(QStringLiteral("K_Telefon"), Phone::Any);
    phone(QStringLiteral("K_FAX"), Phone::Any);
    phone(QStringLiteral("K_Cep_Telefonu"), Phone::Mobile);
    for (const SupervisorFields& supervisor : supervisorFields())
        phone(supervisor.mobile, Phone::Mobile);
    all << ibanWarning(textOf(typed, QStringLiteral("K_IBANNo")));
    const QString identity = textOf(typed, supervisorFields()[0].identity);
    if (!identity.isEmpty() && !isIdentityNumber(identity))
        all << QStringLiteral("1. eğitim sorumlusunun T.C. kimlik numarası “%1” geçerli değil.")
                   .arg(identity);
    all.removeAll(QString());
    return all;
}

// What follows from the rest: the district's name, the counts of the open level (of the name that the
// students bear now).
void Workplaces::fillIn(FieldTexts& wanted, const StoredRow* before) {
    const QString code = textOf(wanted, kDistrictCode);
    if (!before || before->values.at(kDistrictCode) != code) {
        const QString name =
            descriptionOf(databases_.level().sql(), QString::fromUtf8(group::district), code);
        wanted[kDistrictName] = code.isEmpty() ? QString() : name;
    }
    std::array<QString, kSupervisors> supervisors;
    for (size_t i = 0; i < kSupervisors; ++i)
        supervisors[i] = textOf(wanted, supervisorFields()[i].name);
    const auto counted = counts(before ? before->values.at(kName) : textOf(wanted, kName), supervisors);
    for (size_t i = 0; i < kSupervisors; ++i) {
        const SupervisorFields& fields = supervisorFields()[i];
        wanted[fields.girls] = QString::number(counted[i].girls);
        wanted[fields.boys] = QString::number(counted[i].boys);
        wanted[fields.total] = QString::number(counted[i].total());
    }
}

SaveOutcome Workplaces::save(std::optional<StoredRow>& row, FieldTexts wanted, SaveQuestion question) {
    for (auto& [name, text] : wanted)
        text = text.trimmed();
    if (!mayWrite()) return {};
    const StoredRow* before = row ? &*row : nullptr;
    for (const QString& field : before ? fields_ : QStringList())
        wanted.try_emplace(field, before->values.at(field));
    if (const SaveOutcome checked = check(wanted, before); !checked.saved) return checked;
    if (question == SaveQuestion::Ask &&
        !dialogs_.confirms(QStringLiteral("Bilgileriniz kayıt edilsin mi?"), kWarning))
        return {};
    fillIn(wanted, before);
    SaveOutcome outcome = write(row, wanted);
    if (outcome.saved)
        dialogs_.message(QStringLiteral("Kayıt İşlemi Tamamlanmıştır."), QStringLiteral("Açıklama"));
    return outcome;
}

SaveOutcome Workplaces::write(std::optional<StoredRow>& row, const FieldTexts& wanted) {
    if (!row) return add(row, wanted);
    bool gone = false;
    SaveOutcome outcome = change(*row, wanted, gone);
    if (!gone) return outcome;
    if (!dialogs_.confirms(QStringLiteral("“%1” işletmesi, siz açtıktan sonra başka bir bilgisayarda silindi "
                                          "veya adı değiştirildi.\n\n"
                                          "Yazdıklarınız yeni bir işletme olarak kaydedilsin mi?")
                               .arg(row->values.at(kName)),
                           kWarning))
        return {};
    return add(row, wanted);
}

// Looks and writes under one lock: two stations cannot add the same name.
SaveOutcome Workplaces::add(std::optional<StoredRow>& row, const FieldTexts& wanted) {
    jet::WriteBatch batch(databases_.workplaces().database());
    if (nameTaken(textOf(wanted, kName), nullptr))
        return SaveOutcome::refused(
            kName, QStringLiteral("“%1” adıyla bir işletme zaten kayıtlı.").arg(textOf(wanted, kName)));
    const StoredRow added = stored().add(wanted);
    row = stored().read(added.id); // with its defaults
    batch.commit();
    return SaveOutcome::done();
}

bool Workplaces::acceptsRename(WorkplaceRename& rename, const QString& oldName) {
    if (rename.users() == 0) return true;
    return dialogs_.confirms(QStringLiteral("Çalıştığı işyeri ''%1'' olan öğrencilere ait işyeri bilgileri "
                                            "değiştirilecektir.\nOnaylıyor musunuz?")
                                 .arg(oldName),
                             kWarning);
}

SaveOutcome Workplaces::change(StoredRow& row, const FieldTexts& wanted, bool& gone) {
    const WorkplaceIdentity before = identityOf(row.values);
    const bool carries = identityOf(wanted) != before;
    std::optional<WorkplaceRename> rename;
    std::function<void()> carry;
    try {
        if (carries) {
            rename.emplace(databases_, before.name);
            if (!acceptsRename(*rename, before.name))
                return SaveOutcome::refused(kName, QStringLiteral("Kaydedilmedi: işletmenin adı veya adresi, "
                                                                  "öğrencilerdekiyle birlikte değişir."));
            carry = [&] { rename->write(identityOf(stored().read(row.id)->values)); };
        }
        switch (stored().change(row, wanted, Clash::AnyField, dialogs_, carry)) {
        case RowChange::Saved: return SaveOutcome::done();
        case RowChange::Kept: return {};
        case RowChange::Gone: gone = true;
        }
    } catch (const jet::Error& error) {
        if (error.number() == jet::Err::DuplicateKey) // taken since it was looked up
            return SaveOutcome::refused(
                kName, QStringLiteral("“%1” adıyla bir işletme zaten kayıtlı.").arg(textOf(wanted, kName)));
        if (!carries) throw;
        reportFailure(rename ? rename->files() : std::vector<CarriedFile>(), error);
    }
    return {};
}

void Workplaces::reportFailure(const std::vector<CarriedFile>& files, const jet::Error& error) {
    QString text = QStringLiteral("İşletme bilgileri kaydedilemedi.\n%1\n\n").arg(errorText(error));
    const bool somethingStands = std::any_of(files.begin(), files.end(), [](const CarriedFile& file) {
        return file.committed && file.students + file.histories > 0;
    });
    for (const CarriedFile& file : somethingStands ? files : std::vector<CarriedFile>())
        text += file.committed
                    ? QStringLiteral("%1: %2 öğrencide ve %3 önceki işyeri satırında değiştirildi.\n")
                          .arg(file.name)
                          .arg(file.students)
                          .arg(file.histories)
                    : QStringLiteral("%1: hiçbir kayıt değiştirilmedi.\n").arg(file.name);
    text += somethingStands
                ? QStringLiteral("İşletmenin kendi kaydı: değiştirilmedi.\n\nYazdıklarınız ekranda duruyor. "
                                 "Hatanın nedeni giderilince yeniden kaydediniz: kalan kayıtlar da değişir.")
                : QStringLiteral("Hiçbir kayıt değiştirilmedi; yazdıklarınız ekranda duruyor.");
    dialogs_.message(text, kWarning, Icon::Critical);
}

bool Workplaces::remove(const StoredRow& row) {
    if (!mayWrite()) return false;
    const QString name = row.values.at(kName);
    if (!dialogs_.confirms(name + QStringLiteral(" İşletmesinin Bilgileri Silinsin mi?"), kWarning))
        return false;
    if (!stored().remove(row))
        dialogs_.message(QStringLiteral("“%1” işletmesi başka bir bilgisayarda zaten silinmiş veya adı "
                                        "değiştirilmiş; liste yenilendi.")
                             .arg(name),
                         QStringLiteral("Açıklama"));
    return true;
}

bool Workplaces::confirmsSupervisorRemoval() {
    return mayWrite() &&
           dialogs_.confirms(QStringLiteral("Öğretmen Bilgileri Silinmek İsteniyor."), kWarning);
}

} // namespace orvan
