// reference/definition_list.cpp — see definition_list.h.
#include "reference/definition_list.h"

#include "core/turkish_text.h"
#include "core/users.h"
#include "core/values.h"
#include "reference/field_texts.h"

#include <algorithm>

namespace orvan {
namespace {

const QString kCode = QString::fromLatin1(kCodeField);
const QString kDescription = QString::fromLatin1(kDescriptionField);
const QString kVersion = QString::fromLatin1(kVersionField);
const QString kInForce = QString::fromLatin1(kInForceField);
const QString kWarning = QStringLiteral("Uyarı");
constexpr auto kTable = "Parametrik_giris";
constexpr auto kIndex = "indGrupKod";
constexpr double kHighestRate = 100;     // per cent
constexpr int kProfessionCodeLength = 4; // the student number goes on behind it

QString textOf(const FieldTexts& values, const QString& field) {
    const auto found = values.find(field);
    return found == values.end() ? QString() : found->second;
}

// Numbers by their size, so that 2 stands before 10; everything else as text.
int compareCodes(const QString& a, const QString& b) {
    bool bothNumbers = false, isNumber = false;
    const int first = a.toInt(&bothNumbers), second = b.toInt(&isNumber);
    if (bothNumbers && isNumber && first != second) return first < second ? -1 : 1;
    return compareTurkish(a, b);
}

QString groupName(const DefinitionGroup& group) { return QString::fromUtf8(group.group); }

} // namespace

QString definitionName(const DefinitionGroup& group, const FieldTexts& values) {
    QString name = QStringLiteral("%1 - %2").arg(textOf(values, kCode), textOf(values, kDescription));
    if (group.versions == Versions::Curriculum)
        name += QStringLiteral(" (%1. program)").arg(textOf(values, kVersion));
    return name;
}

DefinitionList::DefinitionList(DatabaseSet& databases, Dialogs& dialogs, const DefinitionGroup& group,
                               QString title)
    : databases_(databases), dialogs_(dialogs), group_(group),
      title_(std::move(title)), fields_{kCode, kDescription} {
    for (const char* field : group.extraFields)
        fields_ << QString::fromLatin1(field);
}

QString DefinitionList::nameOf(const FieldTexts& values) const { return definitionName(group_, values); }

QString DefinitionList::versionField() const {
    return group_.versions == Versions::Curriculum ? kVersion : QString();
}

StoredRows DefinitionList::stored() {
    QStringList fields = fields_;
    QStringList keys{kCode};
    if (group_.versions == Versions::Curriculum) keys << kVersion;
    fields << QString::fromLatin1(kGroupField);
    keys << QString::fromLatin1(kGroupField);
    return {databases_.level().database(), databases_.schema().table(kTable), fields, keys};
}

int DefinitionList::width(const QString& field) const {
    return databases_.schema().width(kTable, utf8(field));
}

bool DefinitionList::mayWrite() {
    return orvan::mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_);
}

std::vector<StoredRow> DefinitionList::rows() {
    auto rows = stored().having(kIndex, kGroupField, groupName(group_));
    std::stable_sort(rows.begin(), rows.end(), [](const StoredRow& a, const StoredRow& b) {
        const int order = compareCodes(a.values.at(kCode), b.values.at(kCode));
        return order != 0 ? order < 0 : textOf(a.values, kVersion) < textOf(b.values, kVersion);
    });
    return rows;
}

QString DefinitionList::nextCode() {
    if (group_.versions == Versions::Curriculum) return {};
    QString highest;
    for (const StoredRow& row : rows()) {
        const QString code = row.values.at(kCode);
        bool isNumber = false;
        const int number = code.toInt(&isNumber);
        if (isNumber && (highest.isEmpty() || number > highest.toInt())) highest = code;
    }
    if (highest.isEmpty()) return {};
    return QStringLiteral("%1").arg(highest.toInt() + 1, static_cast<int>(highest.size()), 10,
                                    QLatin1Char('0'));
}

// What can be said without looking at other rows.
SaveOutcome DefinitionList::check(const FieldTexts& wanted) {
    const StoredRows rows = stored();
    if (textOf(wanted, kCode).isEmpty())
        return SaveOutcome::refused(kCode, QStringLiteral("Kod boş olamaz; bir kod yazınız."));
    if (textOf(wanted, kDescription).isEmpty())
        return SaveOutcome::refused(kDescription, QStringLiteral("Açıklama boş olamaz; adını yazınız."));
    if (group_.versions == Versions::Curriculum &&
        versionInForceFrom(textOf(wanted, kVersion).toInt()).isEmpty())
        return SaveOutcome::refused(kVersion, QStringLiteral("Program seçilmedi; listeden seçiniz."));
    for (const auto& [name, text] : wanted) {
        const QString problem = fieldProblem(rows.field(name), text);
        if (!problem.isEmpty()) return SaveOutcome::refused(name, problem);
        const jet::Type type = rows.field(name).type;
        const QString label = fromUtf8(rows.field(name).label);
        if (type != jet::Type::Text && text.toDouble() < 0)
            return SaveOutcome::refused(name, QStringLiteral("%1 sıfırdan küçük olamaz.").arg(label));
        if (type == jet::Type::Double && text.toDouble() > kHighestRate)
            return SaveOutcome::refused(name, QStringLiteral("%1 en çok yüzde 100 olabilir.").arg(label));
    }
    return SaveOutcome::done();
}

SaveOutcome DefinitionList::checkAgainstOthers(const std::vector<StoredRow>& others, const FieldTexts& wanted,
                                               const StoredRow* self) const {
    const auto isNew = [&](const QString& field) { // doubles of an old file do not stop other changes
        return !self || textOf(self->values, field) != textOf(wanted, field) ||
               textOf(self->values, kVersion) != textOf(wanted, kVersion);
    };
    const bool newCode = isNew(kCode), newDescription = isNew(kDescription);
    for (const StoredRow& other : others) {
        if (self && other.id == self->id) continue;
        if (textOf(other.values, kVersion) != textOf(wanted, kVersion)) continue;
        if (newCode && sameTurkish(textOf(other.values, kCode), textOf(wanted, kCode)))
            return SaveOutcome::refused(
                kCode, QStringLiteral("Bu kod kullanılıyor: %1.").arg(definitionName(group_, other.values)));
        if (newDescription && sameTurkish(textOf(other.values, kDescription), textOf(wanted, kDescription)))
            return SaveOutcome::refused(
                kDescription,
                QStringLiteral("Bu açıklama kullanılıyor: %1.").arg(definitionName(group_, other.values)));
    }
    return SaveOutcome::done();
}

// A student number begins with the profession's code and goes on at its fifth character.
bool DefinitionList::acceptsOddCode(const FieldTexts& wanted, const StoredRow* before) {
    const QString code = textOf(wanted, kCode);
    if (QLatin1String(group_.command) != QLatin1String("Meslekler") || code.size() == kProfessionCodeLength ||
        (before && textOf(before->values, kCode) == code))
        return true;
    return dialogs_.confirms(
        QStringLiteral("Meslek kodu 4 karakter olmalı; “%1” %2 karakter.\nKütük numarasının sırası 5. "
                       "karakterden başladığı için bu meslekte numaralar karışabilir.\n\n"
                       "Yine de kaydedilsin mi?")
            .arg(code)
            .arg(code.size()),
        kWarning);
}

bool DefinitionList::acceptsNewCode(const StoredRow& before, const FieldTexts& wanted) {
    const bool same = textOf(before.values, kCode) == textOf(wanted, kCode) &&
                      textOf(before.values, kVersion) == textOf(wanted, kVersion);
    const QStringList users = same ? QStringList() : uses(before);
    if (users.isEmpty()) return true;
    return dialogs_.confirms(
        QStringLiteral("“%1” tanımının kodunu veya programını değiştiriyorsunuz.\nŞu kayıtlar eskisini "
                       "taşımaya devam eder ve adını bulamaz:\n\n%2\n\nYine de değiştirilsin mi?")
            .arg(definitionName(group_, before.values), users.join(QLatin1Char('\n'))),
        kWarning);
}

bool DefinitionList::isFixed(const StoredRow& row) const {
    const QString description = textOf(row.values, kDescription);
    return std::any_of(group_.fixedDescriptions.begin(), group_.fixedDescriptions.end(),
                       [&](const char* fixed) { return sameTurkish(description, QString::fromUtf8(fixed)); });
}

SaveOutcome DefinitionList::save(std::optional<StoredRow>& row, FieldTexts wanted) {
    for (auto& [name, text] : wanted)
        text = text.trimmed();
    if (group_.versions == Versions::Curriculum)
        wanted[kInForce] = versionInForceFrom(textOf(wanted, kVersion).toInt());
    if (!mayWrite()) return {};
    if (const SaveOutcome checked = check(wanted); !checked.saved) return checked;
    const StoredRow* before = row ? &*row : nullptr;
    if (before && isFixed(*before) && textOf(wanted, kDescription) != textOf(before->values, kDescription))
        return SaveOutcome::refused(kDescription,
                                    QStringLiteral("Program bu tanımı “%1” adıyla arar; adı değiştirilemez.")
                                        .arg(textOf(before->values, kDescription)));
    if (const SaveOutcome checked = checkAgainstOthers(rows(), wanted, before); !checked.saved)
        return checked;
    if (!acceptsOddCode(wanted, before) || (before && !acceptsNewCode(*before, wanted)))
        return SaveOutcome::refused(kCode, QStringLiteral("Kaydedilmedi; kodu düzeltebilirsiniz."));
    return write(row, wanted);
}

SaveOutcome DefinitionList::write(std::optional<StoredRow>& row, const FieldTexts& wanted) {
    if (!row) return add(row, wanted);
    switch (stored().change(*row, wanted, Clash::AnyField, dialogs_)) {
    case RowChange::Saved: return SaveOutcome::done();
    case RowChange::Kept: return {};
    case RowChange::Gone: break;
    }
    if (!dialogs_.confirms(QStringLiteral("“%1” tanımı, siz açtıktan sonra başka bir bilgisayarda silindi "
                                          "veya kodu değiştirildi.\n\n"
                                          "Yazdıklarınız yeni bir tanım olarak kaydedilsin mi?")
                               .arg(definitionName(group_, row->values)),
                           kWarning))
        return {};
    return add(row, wanted);
}

// Looks and writes under one lock: two stations cannot add the same code.
SaveOutcome DefinitionList::add(std::optional<StoredRow>& row, const FieldTexts& wanted) {
    jet::WriteBatch batch(databases_.level().database());
    if (const SaveOutcome checked = checkAgainstOthers(rows(), wanted, nullptr); !checked.saved)
        return checked;
    FieldTexts values = wanted;
    values[QString::fromLatin1(kGroupField)] = groupName(group_);
    row = stored().add(values);
    batch.commit();
    return SaveOutcome::done();
}

int DefinitionList::count(const DefinitionUse& use, const StoredRow& row) {
    Connection& connection = use.database == DatabaseKind::Level        ? databases_.level()
                             : use.database == DatabaseKind::Workplaces ? databases_.workplaces()
                                                                        : databases_.coordinators();
    const std::string field = std::string("Trim(") + use.field + ")";
    std::string sql = std::string("SELECT COUNT(*) FROM ") + use.table + " WHERE ";
    std::vector<jet::Value> parameters;
    const auto match = [&](const QString& name) {
        sql += parameters.empty() ? "(" + field + " = ?" : " OR " + field + " = ?";
        parameters.push_back(textValue(textOf(row.values, name)));
    };
    if (use.by != DefinitionUse::Description) match(kCode);
    if (use.by != DefinitionUse::Code) match(kDescription);
    sql += ")";
    if (use.versionField && !textOf(row.values, kVersion).isEmpty()) {
        sql += std::string(" AND ") + use.versionField + " = ?";
        parameters.emplace_back(static_cast<int32_t>(textOf(row.values, kVersion).toInt()));
    }
    return static_cast<int>(connection.sql().query(sql, parameters).at(0, size_t{0}).toInt());
}

QStringList DefinitionList::uses(const StoredRow& row) {
    QStringList lines;
    for (const DefinitionUse& use : group_.uses)
        if (const int records = count(use, row); records > 0)
            lines << QStringLiteral("%1 %2").arg(records).arg(QString::fromUtf8(use.words));
    return lines;
}

bool DefinitionList::remove(const StoredRow& row) {
    if (!mayWrite()) return false;
    const QString name = definitionName(group_, row.values);
    if (isFixed(row)) {
        dialogs_.message(QStringLiteral("Program “%1” tanımını adıyla arar; silinemez.").arg(name), kWarning,
                         Icon::Warning);
        return false;
    }
    const QStringList users = uses(row);
    const QString question =
        users.isEmpty() ? QStringLiteral("“%1” tanımı silinsin mi?").arg(name)
                        : QStringLiteral("“%1” tanımı kullanılıyor:\n\n%2\n\nSilinirse bu kayıtlar adını "
                                         "bulamaz. Yine de silinsin mi?")
                              .arg(name, users.join(QLatin1Char('\n')));
    if (!dialogs_.confirms(question, QStringLiteral("Dikkat"))) return false;
    if (!stored().remove(row))
        dialogs_.message(QStringLiteral("“%1” tanımı başka bir bilgisayarda zaten silinmiş veya kodu "
                                        "değiştirilmiş; liste yenilendi.")
                             .arg(name),
                         QStringLiteral("Açıklama"));
    return true;
}

} // namespace orvan
