// reference/course_pool.cpp — see course_pool.h.
#include "reference/course_pool.h"

#include "core/turkish_text.h"
#include "core/users.h"
#include "core/values.h"
#include "reference/definition_groups.h"
#include "reference/field_texts.h"

#include <algorithm>

namespace orvan {
namespace {

const QString kVersion = QStringLiteral("ID");
const QString kCode = QStringLiteral("DersKodu");
const QString kName = QStringLiteral("DersAdi");
const QString kKind = QStringLiteral("DersTuru");
const QString kWeekly = QStringLiteral("DersHaftalikSaat");
const QString kTotal = QStringLiteral("DersToplamSaat");
const QString kInForce = QStringLiteral("YururlulukTarihi");
const QString kWarning = QStringLiteral("Uyarı");
constexpr int kMostWeekly = 99, kMostTotal = 9999;

QString textOf(const FieldTexts& values, const QString& field) {
    const auto found = values.find(field);
    return found == values.end() ? QString() : found->second;
}

int wholeOf(const jet::Value& value) { return toText(value).toInt(); }

bool isYes(const jet::Value& value) {
    const bool* yes = value.get<bool>();
    return yes && *yes;
}

jet::ResultSet newestCourse(jet::SqlSession& level, const QString& code) {
    return level.query("SELECT DersTuru, DersUygulama FROM DersHavuzu WHERE DersKodu = ? ORDER BY ID DESC",
                       Parameters{code});
}

SaveOutcome checkNumber(const FieldTexts& wanted, const QString& field, const QString& label, int most) {
    const QString text = textOf(wanted, field);
    if (text.isEmpty() || (text.toInt() >= 0 && text.toInt() <= most)) return SaveOutcome::done();
    return SaveOutcome::refused(field, QStringLiteral("%1 0 ile %2 arasında olmalı.").arg(label).arg(most));
}

} // namespace

std::vector<Course> courses(jet::SqlSession& level, int version) {
    const auto rows = level.query("SELECT DersKodu, DersAdi, DersKisaAdi, DersHaftalikSaat, DersToplamSaat, "
                                  "DersTuru, DersUygulama, DersTurkce FROM DersHavuzu WHERE ID = ? "
                                  "ORDER BY DersTuru, DersAdi",
                                  Parameters{version});
    std::vector<Course> found;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        found.push_back({trimmedText(rows.at(i, size_t{0})), trimmedText(rows.at(i, 1)),
                         trimmedText(rows.at(i, 2)), wholeOf(rows.at(i, 3)), wholeOf(rows.at(i, 4)),
                         trimmedText(rows.at(i, 5)), isYes(rows.at(i, 6)), isYes(rows.at(i, 7))});
    return found;
}

QString courseKind(jet::SqlSession& level, const QString& courseCode) {
    const auto rows = newestCourse(level, courseCode);
    return rows.empty() ? QString() : trimmedText(rows.at(0, size_t{0}));
}

bool isPractical(jet::SqlSession& level, const QString& courseCode) {
    const auto rows = newestCourse(level, courseCode);
    return !rows.empty() && isYes(rows.at(0, 1));
}

CoursePool::CoursePool(DatabaseSet& databases, Dialogs& dialogs, QString title)
    : databases_(databases), dialogs_(dialogs),
      title_(std::move(title)), fields_{kCode,
                                        kName,
                                        QStringLiteral("DersKisaAdi"),
                                        kWeekly,
                                        kTotal,
                                        kKind,
                                        QStringLiteral("DersUygulama"),
                                        QStringLiteral("DersTurkce"),
                                        QStringLiteral("Bitirme_Sinav_Turu"),
                                        kVersion,
                                        kInForce} {}

StoredRows CoursePool::stored() {
    return {databases_.level().database(),
            databases_.schema().table(kCoursePoolTable),
            fields_,
            {kVersion, kCode}};
}

QString CoursePool::nameOf(const FieldTexts& values) const {
    return QStringLiteral("%1 - %2 (%3. program)")
        .arg(textOf(values, kCode), textOf(values, kName), textOf(values, kVersion));
}

std::vector<StoredRow> CoursePool::rows() {
    auto rows = stored().all();
    std::stable_sort(rows.begin(), rows.end(), [](const StoredRow& a, const StoredRow& b) {
        for (const QString& field : {kKind, kName, kVersion})
            if (const int order = compareTurkish(a.values.at(field), b.values.at(field)); order != 0)
                return order < 0;
        return false;
    });
    return rows;
}

SaveOutcome CoursePool::check(const FieldTexts& wanted) {
    const StoredRows rows = stored();
    if (textOf(wanted, kCode).isEmpty())
        return SaveOutcome::refused(kCode, QStringLiteral("Ders kodu boş olamaz; bir kod yazınız."));
    if (textOf(wanted, kName).isEmpty())
        return SaveOutcome::refused(kName, QStringLiteral("Ders adı boş olamaz; dersin adını yazınız."));
    if (versionInForceFrom(textOf(wanted, kVersion).toInt()).isEmpty())
        return SaveOutcome::refused(kVersion, QStringLiteral("Program seçilmedi; listeden seçiniz."));
    if (const QString kind = textOf(wanted, kKind); kind != QLatin1String("K") && kind != QLatin1String("M"))
        return SaveOutcome::refused(kKind, QStringLiteral("Ders türü seçilmedi; listeden seçiniz."));
    for (const auto& [name, text] : wanted)
        if (const QString problem = fieldProblem(rows.field(name), text); !problem.isEmpty())
            return SaveOutcome::refused(name, problem);
    const SaveOutcome weekly = checkNumber(wanted, kWeekly, QStringLiteral("Haftalık saat"), kMostWeekly);
    if (!weekly.saved) return weekly;
    return checkNumber(wanted, kTotal, QStringLiteral("Toplam saat"), kMostTotal);
}

// The row that the version has under the code, in any case of its letters.
std::optional<StoredRow> CoursePool::find(const FieldTexts& values) {
    for (StoredRow& row : stored().having("indDers", "ID", textOf(values, kVersion)))
        if (sameTurkish(row.values.at(kCode), textOf(values, kCode))) return std::move(row);
    return std::nullopt;
}

// Rows of curricula; of every version when `version` is empty.
int CoursePool::uses(const QString& code, const QString& version) {
    std::string sql = "SELECT COUNT(*) FROM MeslekDersHavuzu WHERE MeslekDersKodu = ?";
    std::vector<jet::Value> parameters{textValue(code)};
    if (!version.isEmpty()) {
        sql += " AND ID = ?";
        parameters.emplace_back(static_cast<int32_t>(version.toInt()));
    }
    return static_cast<int>(databases_.level().sql().query(sql, parameters).at(0, size_t{0}).toInt());
}

bool CoursePool::acceptsNewCode(const StoredRow& before, const FieldTexts& wanted) {
    if (textOf(before.values, kCode) == textOf(wanted, kCode) &&
        textOf(before.values, kVersion) == textOf(wanted, kVersion))
        return true;
    const int rows = uses(textOf(before.values, kCode), textOf(before.values, kVersion));
    return rows == 0 ||
           dialogs_.confirms(
               QStringLiteral("“%1” dersinin kodunu veya programını değiştiriyorsunuz.\nMesleklere "
                              "ait derslerde %2 satır eskisini taşımaya devam eder ve adını "
                              "bulamaz.\n\nYine de değiştirilsin mi?")
                   .arg(nameOf(before.values))
                   .arg(rows),
               kWarning);
}

SaveOutcome CoursePool::save(std::optional<StoredRow>& row, FieldTexts wanted) {
    for (auto& [name, text] : wanted)
        text = text.trimmed();
    wanted[kInForce] = versionInForceFrom(textOf(wanted, kVersion).toInt());
    if (!mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_)) return {};
    if (const SaveOutcome checked = check(wanted); !checked.saved) return checked;
    const auto other = find(wanted);
    if (other && (!row || other->id != row->id)) {
        if (row)
            return SaveOutcome::refused(
                kCode, QStringLiteral("Bu kod kullanılıyor: %1.").arg(nameOf(other->values)));
        if (!dialogs_.confirms(
                QStringLiteral("%1 dersi kayıtlı.\n\nBilgileri yazdıklarınızla değiştirilsin mi?")
                    .arg(nameOf(other->values)),
                kWarning))
            return SaveOutcome::refused(kCode, QStringLiteral("Kaydedilmedi; kodu düzeltebilirsiniz."));
        row = other;
    }
    if (!row) return add(row, wanted);
    if (!acceptsNewCode(*row, wanted))
        return SaveOutcome::refused(kCode, QStringLiteral("Kaydedilmedi; kodu düzeltebilirsiniz."));
    switch (stored().change(*row, wanted, Clash::AnyField, dialogs_)) {
    case RowChange::Saved: return SaveOutcome::done();
    case RowChange::Kept: return {};
    case RowChange::Gone: break;
    }
    if (!dialogs_.confirms(
            QStringLiteral("“%1” dersi, siz açtıktan sonra başka bir bilgisayarda silindi veya "
                           "kodu değiştirildi.\n\nYazdıklarınız yeni bir ders olarak "
                           "kaydedilsin mi?")
                .arg(nameOf(row->values)),
            kWarning))
        return {};
    return add(row, wanted);
}

// Looks and writes under one lock: two stations cannot add the same code.
SaveOutcome CoursePool::add(std::optional<StoredRow>& row, const FieldTexts& wanted) {
    jet::WriteBatch batch(databases_.level().database());
    if (const auto other = find(wanted))
        return SaveOutcome::refused(kCode,
                                    QStringLiteral("Bu kod kullanılıyor: %1.").arg(nameOf(other->values)));
    row = stored().add(wanted);
    batch.commit();
    return SaveOutcome::done();
}

bool CoursePool::remove(const StoredRow& row) {
    const QString code = textOf(row.values, kCode), name = textOf(row.values, kName);
    if (!rightsOf(databases_.constants().sql(), databases_.session().user, title_).write) {
        dialogs_.message(
            QStringLiteral("Değişiklik yapma yetkiniz yok. Lütfen sistem yetkilisi ile görüşünüz"), kWarning,
            Icon::Warning);
        return false;
    }
    if (code == QLatin1String(kPracticeCourse)) {
        dialogs_.message(QStringLiteral("Program “%1” dersini koduyla arar; silinemez.").arg(code), kWarning,
                         Icon::Warning);
        return false;
    }
    if (!dialogs_.confirms(code + QStringLiteral(" Kodlu ") + name +
                               QStringLiteral(" dersinin kaydını silmek üzeresiniz.\n"
                                              "Silme işlemine devam etmek istiyor musunuz?"),
                           kWarning))
        return false;
    if (const int used = uses(code, {});
        used > 0 && !dialogs_.confirms(QStringLiteral("“%1” dersi mesleklere ait derslerde %2 satırda "
                                                      "kullanılıyor; silinirse bu satırlar dersin adını "
                                                      "bulamaz.\n\nYine de silinsin mi?")
                                           .arg(name)
                                           .arg(used),
                                       kWarning))
        return false;
    databases_.level().sql().execute("DELETE FROM Dershavuzu WHERE DersKodu=?", Parameters{code});
    return true;
}

} // namespace orvan
