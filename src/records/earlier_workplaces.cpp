// records/earlier_workplaces.cpp — see earlier_workplaces.h.
#include "records/earlier_workplaces.h"

#include "core/clock.h"
#include "core/turkish_text.h"
#include "core/users.h"
#include "core/values.h"
#include "records/trimmed_rows.h"
#include "reference/field_texts.h"

#include <algorithm>

namespace orvan {
namespace {

constexpr auto kTable = "Ogrenci_Isyerleri";
const QString kNumber = QStringLiteral("Ogr_No");
const QString kName = QStringLiteral("Ogr_Adi");
const QString kSurname = QStringLiteral("Ogr_Soyadi");
const QString kOrder = QStringLiteral("Ogr_sira");
const QString kWorkplace = QStringLiteral("Ogr_isyerinin_adi");
const QString kStart = QStringLiteral("Ogr_Ise_Giris_Tarihi");
const QString kEnd = QStringLiteral("Ogr_Isden_Ayrilis_Tarihi");
const QString kYears = QStringLiteral("Ogr_Isletme1_Yil");
const QString kMonths = QStringLiteral("Ogr_Isletme1_Ay");
const QString kDays = QStringLiteral("Ogr_Isletme1_Gun");
const QString kLastPayment = QStringLiteral("Ogr_SSK_SonOdeme_Tarihi");
const QString kWarning = QStringLiteral("Uyarı");

// A student's current workplace: where it stands in his record, where in his history.
constexpr const char* kCurrent[][2] = {
    {"Ogr_calistigi_isyerinin_adi", "Ogr_isyerinin_adi"},
    {"Ogr_calistigi_isyeri_adresi1", "Ogr_Isyeri_Adresi1"},
    {"Ogr_calistigi_isyeri_adresi2", "Ogr_Isyeri_Adresi2"},
    {"Ogr_calistigi_ise_giris_tarihi", "Ogr_Ise_Giris_Tarihi"},
    {"Ogr_calistigi_isden_ayrilis_tarihi", "Ogr_Isden_Ayrilis_Tarihi"},
    {"Ogr_Ayrilis_Nedeni", "Ogr_AyrilisNedeni"},
    {"Ogr_SSK_SonOdeme_Tarihi", "Ogr_SSK_SonOdeme_Tarihi"},
};

QString textOf(const FieldTexts& values, const QString& field) {
    const auto found = values.find(field);
    return found == values.end() ? QString() : found->second;
}

bool isDate(const QString& field) { return field == kStart || field == kEnd || field == kLastPayment; }
bool isCount(const QString& field) { return field == kYears || field == kMonths || field == kDays; }

bool belongsTo(const FieldTexts& values, const HistoryOwner& owner) {
    return sameTurkish(values.at(kNumber), owner.number) && sameTurkish(values.at(kName), owner.name) &&
           sameTurkish(values.at(kSurname), owner.surname);
}

void fillTime(FieldTexts& values) {
    const auto first = dateFromText(textOf(values, kStart)), last = dateFromText(textOf(values, kEnd));
    for (const QString& field : {kYears, kMonths, kDays})
        if (!textOf(values, field).isEmpty()) return;
    if (!first || !last || *last < *first) return;
    const TimeSpent time = timeSpent(*first, *last);
    values[kYears] = QString::number(time.years);
    values[kMonths] = QString::number(time.months);
    values[kDays] = QString::number(time.days);
}

QString afterLast(const std::vector<StoredRow>& rows) {
    int last = 0;
    for (const StoredRow& row : rows)
        last = std::max(last, row.values.at(kOrder).toInt());
    return QString::number(last + 1);
}

} // namespace

TimeSpent timeSpent(QDate first, QDate last) {
    const QDate end = last.addDays(1); // the first day that does not count
    TimeSpent time;
    time.years = end.year() - first.year();
    if (first.addYears(time.years) > end) --time.years;
    const QDate anniversary = first.addYears(time.years);
    while (anniversary.addMonths(time.months + 1) <= end)
        ++time.months;
    time.days = static_cast<int>(anniversary.addMonths(time.months).daysTo(end));
    return time;
}

EarlierWorkplaces::EarlierWorkplaces(DatabaseSet& databases, Dialogs& dialogs, QString title)
    : databases_(databases), dialogs_(dialogs), title_(std::move(title)) {
    for (const FieldDeclaration& field : databases.schema().table(kTable).fields)
        fields_ << fromUtf8(field.name);
    for (const QString& kept : {kNumber, kName, kSurname, kOrder})
        fields_.removeAll(kept);
}

StoredRows EarlierWorkplaces::stored() {
    const QStringList keys{kNumber, kName, kSurname};
    return {databases_.level().database(), databases_.schema().table(kTable),
            fields_ + keys + QStringList{kOrder}, keys};
}

int EarlierWorkplaces::width(const QString& field) const {
    return databases_.schema().width(kTable, utf8(field));
}

bool EarlierWorkplaces::mayWrite() {
    return orvan::mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_);
}

std::optional<HistoryOwner> EarlierWorkplaces::owner(const QString& number) {
    HistoryOwner owner;
    if (currentWorkplace(number, owner).empty()) return std::nullopt;
    return owner;
}

std::vector<StoredRow> EarlierWorkplaces::rows(const HistoryOwner& owner) {
    std::vector<StoredRow> rows;
    jet::Database& level = databases_.level().database();
    const jet::ReadScope scope(level.pages());
    StoredRows source = stored();
    for (const jet::RowId id : rowsByText(level, kTable, utf8(kNumber), owner.number))
        if (auto row = source.read(id); row && belongsTo(row->values, owner)) rows.push_back(std::move(*row));
    std::stable_sort(rows.begin(), rows.end(), [](const StoredRow& a, const StoredRow& b) {
        return a.values.at(kOrder).toInt() < b.values.at(kOrder).toInt();
    });
    return rows;
}

// Only what is edited is judged: an old row with an odd date can still get its leaving reason.
SaveOutcome EarlierWorkplaces::check(const FieldTexts& wanted, const StoredRow* before) {
    const FieldTexts changed = before ? changedTexts(before->values, wanted) : wanted;
    if (textOf(wanted, kWorkplace).isEmpty())
        return SaveOutcome::refused(kWorkplace, QStringLiteral("İşyerinin adı boş olamaz; adını yazınız."));
    const StoredRows rows = stored();
    for (const auto& [name, text] : changed) {
        const FieldDeclaration& field = rows.field(name);
        if (const QString problem = fieldProblem(field, text); !problem.isEmpty())
            return SaveOutcome::refused(name, problem);
        if (text.isEmpty()) continue;
        if (isDate(name) && !dateFromText(text))
            return SaveOutcome::refused(name, QStringLiteral("%1 bir tarih olmalı (gg.aa.yyyy); “%2” tarih "
                                                             "değil.")
                                                  .arg(fromUtf8(field.label), text));
        bool isNumber = true;
        if (isCount(name)) text.toUInt(&isNumber);
        if (!isNumber)
            return SaveOutcome::refused(
                name,
                QStringLiteral("%1 bir tam sayı olmalı; “%2” sayı değil.").arg(fromUtf8(field.label), text));
    }
    const auto first = dateFromText(textOf(wanted, kStart)), last = dateFromText(textOf(wanted, kEnd));
    const bool dated = changed.contains(kStart) || changed.contains(kEnd);
    if (dated && first && last && *last < *first)
        return SaveOutcome::refused(kEnd, QStringLiteral("İşten çıkış tarihi işe giriş tarihinden önce."));
    return SaveOutcome::done();
}

StoredRow EarlierWorkplaces::append(const HistoryOwner& owner, FieldTexts values) {
    values[kNumber] = owner.number;
    values[kName] = owner.name;
    values[kSurname] = owner.surname;
    values[kOrder] = afterLast(rows(owner));
    return stored().add(values);
}

SaveOutcome EarlierWorkplaces::save(const HistoryOwner& owner, std::optional<StoredRow>& row,
                                    FieldTexts wanted) {
    for (auto& [name, text] : wanted)
        text = text.trimmed();
    if (!mayWrite()) return {};
    if (const SaveOutcome checked = check(wanted, row ? &*row : nullptr); !checked.saved) return checked;
    fillTime(wanted);
    if (row) switch (stored().change(*row, wanted, Clash::AnyField, dialogs_)) {
        case RowChange::Saved: return SaveOutcome::done();
        case RowChange::Kept: return {};
        case RowChange::Gone: break;
        }
    if (row &&
        !dialogs_.confirms(QStringLiteral("Bu satır, siz açtıktan sonra başka bir bilgisayarda silindi.\n\n"
                                          "Yazdıklarınız yeni bir satır olarak kaydedilsin mi?"),
                           kWarning))
        return {};
    jet::WriteBatch batch(databases_.level().database());
    row = append(owner, wanted);
    batch.commit();
    return SaveOutcome::done();
}

bool EarlierWorkplaces::remove(const StoredRow& row) {
    if (!mayWrite()) return false;
    if (!dialogs_.confirms(
            QStringLiteral("“%1” önceki işyeri kaydı silinsin mi?").arg(row.values.at(kWorkplace)),
            QStringLiteral("Dikkat")))
        return false;
    if (!stored().remove(row))
        dialogs_.message(QStringLiteral("Bu satır başka bir bilgisayarda zaten silinmiş; liste yenilendi."),
                         QStringLiteral("Açıklama"));
    return true;
}

bool EarlierWorkplaces::move(const HistoryOwner& owner, const StoredRow& row, Move where) {
    if (!mayWrite()) return false;
    jet::Database& level = databases_.level().database();
    jet::WriteBatch batch(level);
    std::vector<StoredRow> all = rows(owner);
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const StoredRow& other) { return other.id == row.id; });
    const bool atEnd = where == Move::Up ? found == all.begin() : found + 1 == all.end();
    if (found == all.end() || atEnd) return false;
    std::iter_swap(found, where == Move::Up ? found - 1 : found + 1);
    jet::Table table = level.openTable(kTable);
    for (size_t i = 0; i < all.size(); ++i)
        if (all[i].values.at(kOrder).toInt() != static_cast<int>(i + 1))
            changeRow(table, all[i].id, {{utf8(kOrder), jet::Value(static_cast<int32_t>(i + 1))}});
    batch.commit();
    return true;
}

// Empty when there is no such student.
FieldTexts EarlierWorkplaces::currentWorkplace(const QString& number, HistoryOwner& owner) {
    jet::Database& level = databases_.level().database();
    const jet::ReadScope scope(level.pages());
    const auto students = rowsByText(level, "OgrenciBilgisi", "Ogr_Numarasi", number);
    if (number.trimmed().isEmpty() || students.empty()) return {};
    std::vector<std::string> fields{"Ogr_Numarasi", "Ogr_Adi", "Ogr_Soyadi"};
    for (const auto& pair : kCurrent)
        fields.emplace_back(pair[0]);
    jet::Table table = level.openTable("OgrenciBilgisi");
    const std::vector<QString> texts = trimmedTexts(table, students.front(), fields);
    owner = {texts[0], texts[1], texts[2]};
    FieldTexts values;
    for (size_t i = 0; i < std::size(kCurrent); ++i)
        values[QString::fromLatin1(kCurrent[i][1])] = texts[i + 3];
    return values;
}

bool EarlierWorkplaces::isKnown(const HistoryOwner& owner, const FieldTexts& values) {
    const std::vector<StoredRow> all = rows(owner);
    return std::any_of(all.begin(), all.end(), [&](const StoredRow& row) {
        return sameTurkish(row.values.at(kWorkplace), values.at(kWorkplace)) &&
               row.values.at(kStart) == values.at(kStart);
    });
}

// Why the workplace cannot go into the history; empty: it can.
QString EarlierWorkplaces::sendingFault(const HistoryOwner& owner, const FieldTexts& values) {
    if (values.empty()) return QStringLiteral("Seçili Öğrenci Bulunamadı!");
    if (values.at(kWorkplace).isEmpty())
        return QStringLiteral("Öğrencinin çalıştığı bir işyeri kayıtlı değil; gönderilecek bilgi yok.");
    if (isKnown(owner, values))
        return QStringLiteral("“%1” işyeri, aynı işe giriş tarihiyle önceki işyerlerinde zaten var.")
            .arg(values.at(kWorkplace));
    return {};
}

std::optional<StoredRow> EarlierWorkplaces::sendToEarlier(const QString& student) {
    if (!mayWrite()) return std::nullopt;
    std::optional<StoredRow> row;
    QString fault;
    {
        jet::WriteBatch batch(databases_.level().database());
        HistoryOwner owner;
        FieldTexts values = currentWorkplace(student, owner);
        fault = sendingFault(owner, values);
        if (fault.isEmpty()) {
            fillTime(values);
            row = append(owner, values);
        }
        batch.commit();
    }
    if (!fault.isEmpty()) dialogs_.message(fault, kWarning, Icon::Warning);
    return row;
}

std::vector<EarlierWorkplaces::NameInUse> EarlierWorkplaces::namesInUse() {
    const auto found = databases_.level().sql().query(
        "SELECT Trim(Ogr_calistigi_isyerinin_adi) AS Isyeri, COUNT(*) AS Sayi FROM OgrenciBilgisi "
        "WHERE Trim(Ogr_calistigi_isyerinin_adi) <> '' GROUP BY Trim(Ogr_calistigi_isyerinin_adi) ORDER BY "
        "1");
    std::vector<NameInUse> names;
    for (size_t i = 0; i < found.rowCount(); ++i)
        names.push_back({trimmedText(found.at(i, size_t{0})), static_cast<int>(found.at(i, 1).toInt())});
    return names;
}

QStringList EarlierWorkplaces::registeredNames() {
    const auto found = databases_.workplaces().sql().query(
        "SELECT K_Adi FROM isletme_Bilgisi WHERE k_isletme_tipi <> '1' ORDER BY K_Adi");
    QStringList names;
    for (size_t i = 0; i < found.rowCount(); ++i)
        names << trimmedText(found.at(i, size_t{0}));
    return names;
}

std::optional<size_t> EarlierWorkplaces::renameInStudents(const QString& from, const QString& to) {
    const QString old = from.trimmed(), fresh = to.trimmed();
    const auto refuse = [this](const QString& why) -> std::optional<size_t> {
        dialogs_.message(why, kWarning, Icon::Warning);
        return std::nullopt;
    };
    if (!mayWrite()) return std::nullopt;
    if (old.isEmpty() || fresh.isEmpty()) return refuse(QStringLiteral("Eski ve yeni işyeri adını seçiniz."));
    if (old == fresh) return refuse(QStringLiteral("Eski ve yeni işyeri adı aynı."));
    const FieldDeclaration& field =
        *databases_.schema().table("OgrenciBilgisi").field("Ogr_calistigi_isyerinin_adi");
    if (const QString problem = fieldProblem(field, fresh); !problem.isEmpty()) return refuse(problem);
    jet::SqlSession& level = databases_.level().sql();
    const auto students = level.query(
        "SELECT COUNT(*) FROM OgrenciBilgisi WHERE Trim(Ogr_calistigi_isyerinin_adi) = ?", Parameters{old});
    const QString question = QStringLiteral("Çalıştığı işyeri “%1” olan %2 öğrencinin işyeri adı “%3” olarak "
                                            "değiştirilecektir.\nOnaylıyor musunuz?")
                                 .arg(old, toText(students.at(0, size_t{0})), fresh);
    if (!dialogs_.confirms(question, kWarning)) return std::nullopt;
    return level.execute("UPDATE OgrenciBilgisi SET Ogr_calistigi_isyerinin_adi = ? "
                         "WHERE Trim(Ogr_calistigi_isyerinin_adi) = ?",
                         Parameters{fresh, old});
}

} // namespace orvan
