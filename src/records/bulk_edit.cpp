// records/bulk_edit.cpp — choosing, checking and previewing; the write itself is in bulk_edit_run.cpp.
#include "records/bulk_edit.h"

#include "core/turkish_text.h"
#include "core/values.h"
#include "reference/field_texts.h"

#include <algorithm>
#include <set>

namespace orvan {
namespace {

const QString kNumber = QStringLiteral("Ogr_Numarasi");
const QString kVersion = QStringLiteral("DersID");
const QString kName = QStringLiteral("Ogr_Adi");
const QString kSurname = QStringLiteral("Ogr_Soyadi");
const QString kProfession = QStringLiteral("Ogr_MeslekKod");
const QString kClass = QStringLiteral("Ogr_Sinif");
const QString kStage = QStringLiteral("Ogr_Seviye");

// Fields of a table by their places, so that a row costs no look-up by name.
class FieldPlaces {
  public:
    FieldPlaces(jet::Table& table, const QStringList& names) {
        for (const QString& name : names)
            if (const auto place = table.def().findField(utf8(name))) places_.emplace_back(name, *place);
    }
    template <class ValueAt> FieldTexts read(ValueAt valueAt) const {
        FieldTexts texts;
        for (const auto& [name, place] : places_)
            texts[name] = fieldText(valueAt(place));
        return texts;
    }

  private:
    std::vector<std::pair<QString, size_t>> places_;
};

bool isChosen(const FieldTexts& student, const BulkSelection& selection) {
    const auto fits = [&](const QString& field, const QString& wanted) {
        return wanted.isEmpty() || student.at(field) == wanted;
    };
    return fits(kProfession, selection.profession) && fits(kStage, selection.stage) &&
           fits(kClass, selection.className) &&
           (selection.version == 0 || student.at(kVersion).toInt() == selection.version);
}

QString fullName(const FieldTexts& student) {
    return trimBlanks(student.at(kName) + QLatin1Char(' ') + student.at(kSurname));
}

bool isSameStudent(const FieldTexts& a, const FieldTexts& b) {
    return a.at(kNumber) == b.at(kNumber) && a.at(kVersion) == b.at(kVersion) && a.at(kName) == b.at(kName) &&
           a.at(kSurname) == b.at(kSurname);
}

// The student as he is now; nothing when he is gone or the row is another's.
std::optional<FieldTexts> now(jet::Table& table, const StoredRow& student, const FieldPlaces& places) {
    try {
        const std::vector<jet::Value> values = table.read(student.id);
        FieldTexts fresh = places.read([&](size_t place) { return values[place]; });
        if (isSameStudent(fresh, student.values)) return fresh;
    } catch (const jet::Error& error) {
        if (error.number() != jet::Err::NoCurrentRecord) throw;
    }
    return std::nullopt;
}

template <class Wanted> size_t countStudents(const std::vector<BulkLine>& lines, Wanted wanted) {
    std::set<size_t> students;
    for (const BulkLine& line : lines)
        if (wanted(line)) students.insert(line.wish);
    return students.size();
}

} // namespace

BulkEdit::BulkEdit(const BulkCommand& command, QString title, DatabaseSet& databases, Dialogs& dialogs,
                   const Clock& clock)
    : command_(command), title_(std::move(title)), databases_(databases), dialogs_(dialogs), clock_(clock) {}

QStringList BulkEdit::firstColumn(const char* sql) {
    const auto rows = databases_.level().sql().query(sql);
    QStringList texts;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        texts << trimmedText(rows.at(i, size_t{0}));
    return texts;
}

std::vector<Profession> BulkEdit::professions() {
    const auto rows = databases_.level().sql().query(
        "SELECT DISTINCT PG.ID, PG.Ta_Tanim_Kod, PG.Ta_tanim_aciklama "
        "FROM Parametrik_giris PG, OgrenciBilgisi OB WHERE PG.Ta_Tanim_Grup = ? "
        "AND PG.Ta_Tanim_Kod = OB.Ogr_MeslekKod AND PG.ID = OB.DersID "
        "ORDER BY PG.Ta_tanim_aciklama, PG.ID;",
        Parameters{group::profession});
    std::vector<Profession> found;
    for (size_t i = 0; i < rows.rowCount(); ++i)
        found.push_back({trimmedText(rows.at(i, 1)), static_cast<int>(rows.at(i, size_t{0}).toInt()),
                         trimmedText(rows.at(i, 2))});
    return found;
}

QStringList BulkEdit::stages() {
    return firstColumn(
        "SELECT DISTINCT Ogr_Seviye FROM OgrenciBilgisi WHERE Ogr_Seviye <> '' ORDER BY Ogr_Seviye;");
}

QStringList BulkEdit::classes() {
    return firstColumn(
        "SELECT DISTINCT Ogr_Sinif FROM OgrenciBilgisi WHERE Ogr_Sinif <> '' ORDER BY Ogr_Sinif;");
}

QStringList BulkEdit::fieldsRead() const {
    QStringList fields{kNumber, kVersion, kName, kSurname, kProfession, kClass, kStage};
    for (const BulkField& field : command_.fields)
        fields << QString::fromLatin1(field.name);
    for (const char* field : command_.alsoRead)
        fields << QString::fromLatin1(field);
    fields.removeDuplicates();
    return fields;
}

std::vector<StoredRow> BulkEdit::students(const BulkSelection& selection) {
    std::vector<StoredRow> found;
    jet::Database& database = databases_.level().database();
    jet::Table table = database.openTable("OgrenciBilgisi");
    const jet::ReadScope scope(database.pages());
    const FieldPlaces places(table, fieldsRead());
    for (jet::Scan scan = table.scan(); scan.next();) {
        FieldTexts texts = places.read([&](size_t place) { return scan.value(place); });
        if (isChosen(texts, selection)) found.push_back({scan.id(), std::move(texts)});
    }
    std::stable_sort(found.begin(), found.end(), [](const StoredRow& a, const StoredRow& b) {
        return a.values.at(kNumber) < b.values.at(kNumber);
    });
    return found;
}

const FieldDeclaration& BulkEdit::declaration(const BulkField& field) const {
    return *databases_.schema().table("OgrenciBilgisi").field(field.name);
}

QString BulkEdit::label(const BulkField& field) const { return fromUtf8(declaration(field).label); }
int BulkEdit::width(const BulkField& field) const { return declaration(field).width; }

std::vector<FormChoice> BulkEdit::choices(const BulkField& field) {
    if (field.choices) return field.choices(databases_);
    if (field.editor != BulkEditor::Choice) return {};
    return choicesOf(databases_, QString::fromLatin1(field.name));
}

QStringList BulkEdit::inUse(const BulkField& field) {
    const std::string name = field.name; // a declared field, not a person's text
    return firstColumn(
        ("SELECT DISTINCT " + name + " FROM OgrenciBilgisi WHERE " + name + " <> '' ORDER BY " + name)
            .c_str());
}

QString BulkEdit::shown(const BulkField& field, const QString& stored) {
    if (field.editor == BulkEditor::YesNo)
        return stored == QLatin1String("1") ? QStringLiteral("Evet") : QStringLiteral("Hayır");
    const QString name = QString::fromLatin1(field.name);
    if (field.editor == BulkEditor::Choice && !choices_.contains(name)) choices_[name] = choices(field);
    if (field.editor == BulkEditor::Choice)
        for (const FormChoice& choice : choices_[name])
            if (choice.code == stored) return choice.text;
    return stored;
}

QString BulkEdit::valueOf(const BulkField& field, const QString& typed, QString& refusal) {
    const QString text = trimBlanks(typed);
    if (text.isEmpty()) return field.editor == BulkEditor::YesNo ? QStringLiteral("0") : QString();
    if (field.editor == BulkEditor::Date) {
        const auto date = dateFromText(text);
        if (!date) refusal = QStringLiteral("“%1” bir tarih değil; gg.aa.yyyy olarak yazınız.").arg(text);
        return date ? dateText(*date) : text;
    }
    if (field.editor == BulkEditor::Choice) {
        const QString name = QString::fromLatin1(field.name);
        if (!choices_.contains(name)) choices_[name] = choices(field);
        const auto& allowed = choices_[name];
        if (std::none_of(allowed.begin(), allowed.end(), [&](const FormChoice& c) { return c.code == text; }))
            refusal = QStringLiteral("“%1” seçilebilecek değerler arasında yok.").arg(text);
    }
    if (refusal.isEmpty()) refusal = fieldProblem(declaration(field), text);
    return text;
}

// `fresh`: the student as he is now; nothing when he is gone.
void BulkEdit::addLines(const BulkWish& wish, size_t place, const std::optional<FieldTexts>& fresh,
                        std::vector<BulkLine>& lines) {
    const FieldTexts& seen = wish.student.values;
    FieldTexts after = fresh.value_or(seen);
    const size_t first = lines.size();
    for (const BulkField& field : command_.fields) {
        const QString name = QString::fromLatin1(field.name);
        const auto wanted = wish.wanted.find(name);
        if (wanted == wish.wanted.end()) continue;
        BulkLine line;
        line.wish = place;
        line.number = seen.at(kNumber);
        line.name = fullName(seen);
        line.field = label(field);
        line.about = &field;
        line.value = valueOf(field, wanted->second, line.refusal);
        if (field.derive && line.refusal.isEmpty()) line.value = field.derive(seen, line.value, line.refusal);
        if (line.refusal.isEmpty() && line.value == seen.at(name)) continue;
        line.before = shown(field, seen.at(name));
        line.after = shown(field, line.value);
        if (!fresh)
            line.refusal = QStringLiteral("Kayıt bu arada silinmiş ya da numarası, adı değişmiş.");
        else if (fresh->at(name) != seen.at(name))
            line.refusal = QStringLiteral("Bu arada başka bir bilgisayarda “%1” olarak değiştirilmiş.")
                               .arg(shown(field, fresh->at(name)));
        if (line.refusal.isEmpty()) after[name] = line.value;
        lines.push_back(std::move(line));
    }
    for (size_t i = first; i < lines.size(); ++i) {
        BulkLine& line = lines[i];
        if (line.refusal.isEmpty() && line.about->refusal)
            line.refusal = line.about->refusal(after, clock_.today());
        if (line.refusal.isEmpty() && line.about->warning)
            line.warning = line.about->warning(after, clock_.today());
    }
}

// Compares the values as they will be: two students may exchange theirs. A refused change leaves the old
// value, which another's new one may now meet, so the look is repeated until nothing more is refused.
void BulkEdit::refuseDoubles(const BulkField& field, const Wishes& wishes, jet::Table& table,
                             std::vector<BulkLine>& lines) {
    const QString name = QString::fromLatin1(field.name);
    struct Holder {
        QString value, number, who;
    };
    std::map<jet::RowId, Holder> holders;
    const FieldPlaces places(table, {name, kNumber, kName, kSurname});
    for (jet::Scan scan = table.scan(); scan.next();) {
        const FieldTexts texts = places.read([&](size_t place) { return scan.value(place); });
        holders[scan.id()] = {texts.at(name), texts.at(kNumber), fullName(texts)};
    }
    const auto idOf = [&](const BulkLine& line) { return wishes[line.wish].student.id; };
    std::map<jet::RowId, QString> stored;
    for (const BulkLine& line : lines)
        if (line.about == &field && line.refusal.isEmpty()) {
            Holder& holder = holders[idOf(line)];
            stored[idOf(line)] = std::exchange(holder.value, line.value);
        }
    for (bool again = true; again;) {
        again = false;
        std::map<QString, std::vector<jet::RowId>> byValue;
        for (const auto& [id, holder] : holders)
            if (!holder.value.isEmpty()) byValue[holder.value].push_back(id);
        for (BulkLine& line : lines) {
            if (line.about != &field || !line.refusal.isEmpty() || line.value.isEmpty()) continue;
            const auto& same = byValue[line.value];
            const auto other =
                std::find_if(same.begin(), same.end(), [&](jet::RowId id) { return id != idOf(line); });
            if (other == same.end()) continue;
            line.refusal = QStringLiteral("%1 %2 ile %3 numarasına %4 adlı öğrenci kayıtlı bulunmaktadır.")
                               .arg(line.value, line.field, holders[*other].number, holders[*other].who);
            line.warning.clear();
            holders[idOf(line)].value = stored[idOf(line)];
            again = true;
        }
    }
}

std::vector<BulkLine> BulkEdit::evaluate(const Wishes& wishes, jet::Table& table) {
    choices_.clear();
    std::vector<BulkLine> lines;
    const FieldPlaces places(table, fieldsRead());
    for (size_t i = 0; i < wishes.size(); ++i)
        addLines(wishes[i], i, now(table, wishes[i].student, places), lines);
    for (const BulkField& field : command_.fields)
        if (field.unique && !lines.empty()) refuseDoubles(field, wishes, table, lines);
    return lines;
}

std::vector<BulkLine> BulkEdit::preview(const Wishes& wishes) {
    jet::Database& database = databases_.level().database();
    jet::Table table = database.openTable("OgrenciBilgisi");
    const jet::ReadScope scope(database.pages());
    return evaluate(wishes, table);
}

size_t studentsToChange(const std::vector<BulkLine>& lines) {
    return countStudents(lines, [](const BulkLine& line) { return line.refusal.isEmpty(); });
}

size_t studentsToSkip(const std::vector<BulkLine>& lines) {
    return countStudents(lines, [](const BulkLine& line) { return !line.refusal.isEmpty(); });
}

} // namespace orvan
