// reference/classes.cpp — see classes.h. The week: class_hours.cpp.
#include "reference/classes.h"

#include "core/turkish_text.h"
#include "core/users.h"
#include "core/values.h"
#include "reference/field_texts.h"

#include <algorithm>

namespace orvan {
namespace {

constexpr auto kTable = "Sinif";
const QString kName = QStringLiteral("SinifAdi");
const QString kWarning = QStringLiteral("Uyarı");

QString textOf(const FieldTexts& values, const QString& field) {
    const auto found = values.find(field);
    return found == values.end() ? QString() : found->second;
}

} // namespace

ClassList::ClassList(DatabaseSet& databases, Dialogs& dialogs, QString title)
    : databases_(databases), dialogs_(dialogs), title_(std::move(title)) {
    for (const FieldDeclaration& field : databases.schema().table(kTable).fields)
        fields_ << fromUtf8(field.name);
}

StoredRows ClassList::stored() {
    return {databases_.level().database(), databases_.schema().table(kTable), fields_, {kName}};
}

int ClassList::width(const QString& field) const { return databases_.schema().width(kTable, utf8(field)); }

bool ClassList::mayWrite() {
    return orvan::mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_);
}

std::vector<StoredRow> ClassList::rows() {
    auto rows = stored().all();
    std::stable_sort(rows.begin(), rows.end(), [](const StoredRow& a, const StoredRow& b) {
        return lessTurkish(a.values.at(kName), b.values.at(kName));
    });
    return rows;
}

std::vector<UndefinedClass> ClassList::undefined() {
    const auto found = databases_.level().sql().query(
        "SELECT Trim(Ogr_Sinif), COUNT(*) FROM OgrenciBilgisi WHERE Trim(Ogr_Sinif) <> '' AND "
        "Trim(Ogr_Sinif) NOT IN (SELECT Trim(SinifAdi) FROM Sinif WHERE SinifAdi IS NOT NULL) "
        "GROUP BY Trim(Ogr_Sinif) ORDER BY 1");
    std::vector<UndefinedClass> classes;
    for (size_t i = 0; i < found.rowCount(); ++i)
        classes.push_back({trimmedText(found.at(i, size_t{0})), static_cast<int>(found.at(i, 1).toInt())});
    return classes;
}

int ClassList::studentCount(const QString& name) {
    const auto found = databases_.level().sql().query(
        "SELECT COUNT(Ogr_Sinif) AS OgrSay FROM OgrenciBilgisi WHERE Trim(Ogr_Sinif) = ?", Parameters{name});
    return static_cast<int>(found.at(0, size_t{0}).toInt());
}

bool ClassList::nameTaken(const QString& name, const StoredRow* self) {
    if (self && sameTurkish(self->values.at(kName), name)) return false; // its own, perhaps in other letters
    return !databases_.level()
                .sql()
                .query("SELECT SinifAdi FROM Sinif WHERE Trim(SinifAdi) = ?", Parameters{name})
                .empty();
}

SaveOutcome ClassList::refuseTaken() {
    const QString words = QStringLiteral("Bu isimle bir sınıf kayıtlı !");
    dialogs_.message(words, kWarning, Icon::Warning);
    return SaveOutcome::refused(kName, words);
}

// Only what is edited is judged: an old class with an odd time can still get a new teacher.
SaveOutcome ClassList::check(FieldTexts& wanted, const StoredRow* before) {
    if (textOf(wanted, kName).isEmpty())
        return SaveOutcome::refused(kName, QStringLiteral("Sınıf adı boş olamaz; adını yazınız."));
    FieldTexts changed = before ? changedTexts(before->values, wanted) : wanted;
    for (const SlotFields& slot : slotFields())
        for (const QString& field : {slot.start, slot.end}) {
            const QString text = textOf(changed, field), time = timeFromText(text);
            if (!text.isEmpty() && time.isEmpty())
                return SaveOutcome::refused(
                    field, QStringLiteral("Saat 09:30 gibi yazılır; “%1” saat değil.").arg(text));
            if (!time.isEmpty()) wanted[field] = changed[field] = time;
        }
    const StoredRows rows = stored();
    for (const auto& [field, text] : changed)
        if (const QString problem = fieldProblem(rows.field(field), text); !problem.isEmpty())
            return SaveOutcome::refused(field, problem);
    for (const SlotFields& slot : slotFields()) {
        const bool edited = changed.contains(slot.day) || changed.contains(slot.room) ||
                            changed.contains(slot.start) || changed.contains(slot.end) ||
                            changed.contains(slot.teacher);
        const SaveOutcome checked = edited ? checkSlot(wanted, slot) : SaveOutcome::done();
        if (!checked.saved) return checked;
    }
    return nameTaken(textOf(wanted, kName), before) ? refuseTaken() : SaveOutcome::done();
}

SaveOutcome ClassList::checkSlot(const FieldTexts& wanted, const SlotFields& slot) const {
    const QString day = textOf(wanted, slot.day), start = textOf(wanted, slot.start),
                  end = textOf(wanted, slot.end);
    const bool filled = !start.isEmpty() || !end.isEmpty() || !textOf(wanted, slot.room).isEmpty() ||
                        !textOf(wanted, slot.teacher).isEmpty();
    if (filled && day.isEmpty())
        return SaveOutcome::refused(slot.day, QStringLiteral("Gün seçilmedi; listeden seçiniz."));
    if (!start.isEmpty() && !end.isEmpty() && end <= start)
        return SaveOutcome::refused(slot.end, QStringLiteral("Bitiş saati başlangıçtan sonra olmalı."));
    return SaveOutcome::done();
}

bool ClassList::acceptsNewName(const QString& before, const QString& now) {
    return dialogs_.confirms(before + QStringLiteral(" isimli sinif ") + now +
                                 QStringLiteral(" olarak değiştirilecektir ! \n"
                                                "Bu işlem sonucu öğrencilerde ") +
                                 now + QStringLiteral(" olarak değiştirilecektir !\nOnaylıyor musunuz?"),
                             kWarning);
}

SaveOutcome ClassList::save(std::optional<StoredRow>& row, FieldTexts wanted) {
    for (auto& [name, text] : wanted)
        text = text.trimmed();
    if (!mayWrite()) return {};
    const StoredRow* before = row ? &*row : nullptr;
    for (const QString& field : before ? fields_ : QStringList())
        wanted.try_emplace(field, before->values.at(field));
    if (const SaveOutcome checked = check(wanted, before); !checked.saved) return checked;
    const QString oldName = before ? before->values.at(kName) : QString();
    if (before && oldName != wanted.at(kName) && !acceptsNewName(oldName, wanted.at(kName)))
        return SaveOutcome::refused(kName, QStringLiteral("Kaydedilmedi; adı düzeltebilirsiniz."));
    return write(row, wanted);
}

SaveOutcome ClassList::write(std::optional<StoredRow>& row, const FieldTexts& wanted) {
    if (!row) return add(row, wanted);
    const QString oldName = row->values.at(kName), newName = wanted.at(kName);
    std::function<void()> carry;
    if (oldName != newName)
        carry = [&] {
            databases_.level().sql().execute(
                "UPDATE OgrenciBilgisi SET Ogr_Sinif = ? WHERE Trim(Ogr_Sinif) = ?",
                Parameters{newName, oldName});
        };
    try {
        switch (stored().change(*row, wanted, Clash::AnyField, dialogs_, carry)) {
        case RowChange::Saved: return SaveOutcome::done();
        case RowChange::Kept: return {};
        case RowChange::Gone: break;
        }
    } catch (const jet::Error& error) {
        if (error.number() != jet::Err::DuplicateKey) throw;
        return refuseTaken(); // since it was looked up
    }
    if (!dialogs_.confirms(QStringLiteral("%1 sınıfı, siz açtıktan sonra başka bir bilgisayarda silindi veya "
                                          "adı değiştirildi.\n\n"
                                          "Yazdıklarınız yeni bir sınıf olarak kaydedilsin mi?")
                               .arg(oldName),
                           kWarning))
        return {};
    return add(row, wanted);
}

// Looks and writes under one lock: two stations cannot add the same name.
SaveOutcome ClassList::add(std::optional<StoredRow>& row, const FieldTexts& wanted) {
    bool taken = false;
    {
        jet::WriteBatch batch(databases_.level().database());
        taken = nameTaken(wanted.at(kName), nullptr);
        if (!taken) row = stored().read(stored().add(wanted).id);
        batch.commit();
    }
    return taken ? refuseTaken() : SaveOutcome::done();
}

bool ClassList::remove(const StoredRow& row) {
    if (!mayWrite()) return false;
    const QString name = row.values.at(kName);
    const int students = studentCount(name);
    const QString question =
        students > 0 ? name + QStringLiteral(" isimli Sınıf %1 öğrencide kayıtlıdır !\n"
                                             "Sınıfı silerseniz aynı anda öğrenci bilgisinden de bu sınıf "
                                             "silinecektir!\n")
                                  .arg(students)
                     : name + QStringLiteral(" isimli Sınıf silinecektir !\n");
    if (!dialogs_.confirms(question + QStringLiteral("Silme işlemini onaylıyor musunuz ?"), kWarning))
        return false;
    bool gone = false;
    {
        databases_.level().database().requireWritable();
        jet::WriteScope scope(databases_.level().database().pages());
        gone = !stored().now(row);
        if (!gone) {
            databases_.level().sql().execute(
                "UPDATE OgrenciBilgisi SET Ogr_Sinif = '' WHERE Trim(Ogr_Sinif) = ?", Parameters{name});
            stored().remove(row);
        }
        scope.commit();
    }
    if (gone)
        dialogs_.message(QStringLiteral("%1 sınıfı başka bir bilgisayarda zaten silinmiş veya adı "
                                        "değiştirilmiş; liste yenilendi.")
                             .arg(name),
                         QStringLiteral("Açıklama"));
    return true;
}

} // namespace orvan
