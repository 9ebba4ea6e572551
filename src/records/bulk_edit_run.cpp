// records/bulk_edit_run.cpp — the question and the write of a bulk edit.
#include "core/users.h"
#include "core/values.h"
#include "records/bulk_edit.h"
#include "reference/field_texts.h"

#include <memory>

namespace orvan {
namespace {

constexpr size_t kNamed = 8; // students named in the question

// A field that lists compare with the empty text never holds null.
jet::Value storedValue(const FieldDeclaration& field, const QString& text) {
    if (text.isEmpty() && field.defaultValue == "\"\"") return textValue(text);
    return fieldValue(field, text);
}

// An error of one row, after which the others can still be written.
bool concernsOneRow(const jet::Error& error) {
    switch (error.number()) {
    case jet::Err::FieldTooLong:
    case jet::Err::Conversion:
    case jet::Err::RequiredNull:
    case jet::Err::ZeroLength:
    case jet::Err::DuplicateKey:
    case jet::Err::RecordTooLarge:
    case jet::Err::NoCurrentRecord: return true;
    default: return false;
    }
}

QString oneValueOf(const std::vector<BulkLine>& lines) {
    const BulkLine* first = nullptr;
    for (const BulkLine& line : lines) {
        if (!line.refusal.isEmpty()) continue;
        if (first && (first->value != line.value || first->about != line.about)) return {};
        if (!first) first = &line;
    }
    if (!first) return {};
    return first->after.isEmpty() ? QStringLiteral(" boşaltılacaktır")
                                  : QStringLiteral(" “%1” olarak değiştirilecektir").arg(first->after);
}

} // namespace

bool BulkEdit::confirmed(const std::vector<BulkLine>& lines) {
    QStringList fields, names;
    std::optional<size_t> last;
    size_t count = 0;
    for (const BulkLine& line : lines) {
        if (!line.refusal.isEmpty()) continue;
        if (!fields.contains(line.field)) fields << line.field;
        if (last == line.wish) continue;
        last = line.wish;
        if (++count <= kNamed) names << line.number + QLatin1Char(' ') + line.name;
    }
    if (count > kNamed) names << QStringLiteral("… ve %1 öğrenci daha").arg(count - kNamed);
    const QString what = oneValueOf(lines);
    QString question =
        QStringLiteral("%1 öğrencinin “%2” bilgisi%3.\n\n%4\n\n")
            .arg(count)
            .arg(fields.join(QStringLiteral("”, “")),
                 what.isEmpty() ? QStringLiteral(" değiştirilecektir") : what, names.join(QLatin1Char('\n')));
    if (const size_t skipped = studentsToSkip(lines); skipped > 0)
        question += QStringLiteral("%1 öğrenci ön izlemede yazan nedenle atlanacaktır.\n").arg(skipped);
    if (!databases_.isNormalLevelFile())
        question += QStringLiteral("Dikkat: açık olan veriler normal arşiv değil (%1).\n")
                        .arg(dataSetCaption(databases_.session().mode));
    return dialogs_.confirms(question + QStringLiteral("Onaylıyor musunuz?"), title_);
}

std::optional<BulkOutcome> BulkEdit::run(const Wishes& wishes) {
    if (!mayWrite(databases_.constants().sql(), databases_.session().user, title_, dialogs_)) return {};
    const std::vector<BulkLine> wanted = preview(wishes);
    const size_t count = studentsToChange(wanted);
    if (count == 0) {
        dialogs_.message(QStringLiteral("Değiştirilecek öğrenci yok."), title_, Icon::Information);
        return {};
    }
    if (!confirmed(wanted)) return {};
    const auto progress = dialogs_.beginProgress(title_, static_cast<int>(count));
    BulkOutcome outcome;
    jet::Database& database = databases_.level().database();
    jet::Table table = database.openTable("OgrenciBilgisi");
    jet::WriteBatch batch(database);
    outcome.lines = evaluate(wishes, table);
    write(wishes, table, *progress, outcome);
    batch.commit();
    outcome.skipped = studentsToSkip(outcome.lines);
    return outcome;
}

void BulkEdit::write(const Wishes& wishes, jet::Table& table, Progress& progress, BulkOutcome& outcome) {
    std::vector<BulkLine>& lines = outcome.lines;
    std::vector<jet::Value> values(table.def().fields.size());
    std::map<const BulkField*, size_t> places; // the definition may move with each write
    for (const BulkField& field : command_.fields)
        if (const auto place = table.def().findField(field.name)) places[&field] = *place;
    const auto changed = std::make_unique<bool[]>(values.size());
    QString whyStopped;
    for (size_t from = 0, to = 0; from < lines.size(); from = to) {
        const size_t wish = lines[from].wish;
        std::fill_n(changed.get(), values.size(), false);
        bool any = false;
        for (to = from; to < lines.size() && lines[to].wish == wish; ++to) {
            if (!lines[to].refusal.isEmpty()) continue;
            const size_t place = places.at(lines[to].about);
            values[place] = storedValue(declaration(*lines[to].about), lines[to].value);
            changed[place] = any = true;
        }
        if (!any) continue;
        if (whyStopped.isEmpty() && progress.cancelled())
            whyStopped = QStringLiteral("Durduruldu; değiştirilmedi.");
        QString refusal = whyStopped;
        if (refusal.isEmpty()) {
            try {
                table.update(wishes[wish].student.id, values, {changed.get(), values.size()});
                progress.step(static_cast<int>(++outcome.changed), lines[from].name);
            } catch (const jet::Error& error) {
                refusal = errorText(error);
                if (!concernsOneRow(error)) whyStopped = QStringLiteral("Hata nedeniyle değiştirilmedi.");
            }
        }
        for (size_t i = from; i < to; ++i) {
            if (!lines[i].refusal.isEmpty()) continue;
            lines[i].refusal = refusal;
            lines[i].written = refusal.isEmpty();
        }
    }
    outcome.stopped = !whyStopped.isEmpty();
}

} // namespace orvan
