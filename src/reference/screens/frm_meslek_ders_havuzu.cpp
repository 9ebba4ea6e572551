// reference/screens/frm_meslek_ders_havuzu.cpp — see frm_meslek_ders_havuzu.h; building it:
// frm_meslek_ders_havuzu_build.cpp.
#include "reference/screens/frm_meslek_ders_havuzu.h"

#include "core/values.h"
#include "reference/definition_groups.h"
#include "widgets/grid.h"

#include <algorithm>
#include <QLabel>
#include <QScopedValueRollback>

namespace orvan {

using namespace curriculum_field;

namespace {

const QString kAllYears = QStringLiteral("0");
constexpr int kUsualYears = 4;

const QStringList& gridFields() { // in the order of the grid's columns; an empty one is the course's name
    static const QStringList fields{kOrder,      kYear,     kTerm,      kCourse,  QString(), kHours,
                                    kTotalHours, kPassMark, kPractical, kTurkish, kExempt};
    return fields;
}

const QStringList& typedFields() {
    static const QStringList fields{kYear,     kTerm,      kHours,   kTotalHours,
                                    kPassMark, kPractical, kTurkish, kExempt};
    return fields;
}

} // namespace

FrmMeslekDersHavuzu::FrmMeslekDersHavuzu(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                         UserMemory& memory, QWidget* parent)
    : Screen(QStringLiteral("FrmMeslekDersHavuzu"), title, dialogs, parent), databases_(databases),
      curriculum_(databases, dialogs, title), ready_(databases, dialogs, title) {
    build(memory);
    attempt(objectName(), [this] {
        // the newest version that has professions
        int newest = kLastVersion;
        for (const Profession& each : professions(databases_.level().sql()))
            newest = newest == kLastVersion ? each.version : std::max(newest, each.version);
        version_->setCode(QString::number(newest));
        level_->setCode(curriculumLevelOf(databases_.session()));
        offerTracks();
        offerProfessions();
        loadPool();
        load();
    });
}

// --- what is chosen

CurriculumKey FrmMeslekDersHavuzu::key() const {
    return {level_->code(), profession_->code(), version_->code().toInt(), track_->code()};
}

int FrmMeslekDersHavuzu::year() const { return year_->code().toInt(); }

void FrmMeslekDersHavuzu::offerProfessions() {
    std::vector<Choice> choices;
    for (const Profession& each : professions(databases_.level().sql(), version_->code().toInt()))
        choices.push_back({each.code, QStringLiteral("%1 - %2").arg(each.code, each.name)});
    const QString first = choices.empty() ? QString() : choices.front().code;
    profession_->setChoices(std::move(choices));
    if (profession_->code().isEmpty()) profession_->setCode(first);
    if (first.isEmpty())
        result_->setText(
            QStringLiteral("Bu programda tanımlı meslek yok. Önce “Meslekler…” ile tanımlayınız."));
}

void FrmMeslekDersHavuzu::offerTracks() {
    std::vector<Choice> choices;
    for (const Track& track : tracksOf(level_->code()))
        choices.push_back({track.code, track.name});
    const QString first = choices.front().code;
    track_->setChoices(std::move(choices));
    if (track_->code().isEmpty()) track_->setCode(first);
}

void FrmMeslekDersHavuzu::offerYears() {
    int last = kUsualYears;
    for (const StoredRow& row : rows_)
        last = std::max(last, row.values.at(kYear).toInt());
    std::vector<Choice> choices{{kAllYears, QStringLiteral("Tüm yıllar")}};
    for (int each = 1; each <= last; ++each)
        choices.push_back({QString::number(each), QStringLiteral("%1. yıl").arg(each)});
    year_->setChoices(std::move(choices));
    if (year_->code().isEmpty()) year_->setCode(kAllYears);
}

// Typed values of the choice before are saved or thrown away first; refused, the choice goes back.
void FrmMeslekDersHavuzu::chosen(ChoiceList* list, const QString& code) {
    if (busy_) return;
    if (code.isEmpty() || !settleUnsaved()) {
        list->setCode(shownCodes_[list]);
        return;
    }
    attempt(objectName(), [&] {
        result_->clear();
        if (list == level_) offerTracks();
        if (list == version_) {
            offerProfessions();
            loadPool();
        }
        load();
    });
}

// --- what is shown

EditRow FrmMeslekDersHavuzu::cells(const StoredRow& row) const {
    EditRow cells;
    for (const QString& field : gridFields()) {
        if (!field.isEmpty()) {
            cells.push_back(row.values.at(field));
            continue;
        }
        const auto name = courseNames_.find(row.values.at(kCourse));
        cells.push_back(name == courseNames_.end() ? QStringLiteral("(havuzda yok)") : name->second);
    }
    return cells;
}

void FrmMeslekDersHavuzu::loadPool() {
    pool_ = courses(databases_.level().sql(), version_->code().toInt());
    courseNames_.clear();
    std::vector<ListRow> list;
    for (const Course& course : pool_) {
        courseNames_[course.code] = course.name;
        list.push_back({course.code, course.name, course.weeklyHours, course.kind});
    }
    poolGrid_->setRows(std::move(list));
}

void FrmMeslekDersHavuzu::load() {
    const QScopedValueRollback busy(busy_, true);
    rows_ = key().profession.isEmpty() ? std::vector<StoredRow>() : curriculum_.rows(key());
    offerYears();
    shown_.clear();
    std::vector<EditRow> list;
    for (size_t i = 0; i < rows_.size(); ++i) {
        if (year() != 0 && rows_[i].values.at(kYear).toInt() != year()) continue;
        shown_.push_back(i);
        list.push_back(cells(rows_[i]));
    }
    grid_->setNotes({databases_.session().schoolName, profession_->currentText(), version_->currentText(),
                     level_->currentText() + QStringLiteral(", ") + track_->currentText()});
    grid_->setRows(std::move(list));
    setUnsaved(false);
    for (ChoiceList* list : {profession_, version_, level_, track_, year_})
        shownCodes_[list] = list->code();
}

// The rows as they are stored now, with what is typed and not saved put into them again.
void FrmMeslekDersHavuzu::reloadKeepingTyped() {
    std::map<jet::RowId, FieldTexts> typed;
    for (const CellPlace place : grid_->changedCells()) {
        const QString field = gridFields()[static_cast<qsizetype>(place.column)];
        typed[rows_[shown_[place.row]].id][field] = grid_->value(place.row, field);
    }
    const auto current = grid_->currentCell();
    const jet::RowId currentRow = current ? rows_[shown_[current->row]].id : jet::RowId();
    load();
    std::vector<EditGrid::Change> changes;
    for (size_t i = 0; i < shown_.size(); ++i) {
        const jet::RowId id = rows_[shown_[i]].id;
        for (const auto& [field, text] : typed[id])
            changes.push_back({i, field, text});
        if (id == currentRow) grid_->makeCurrent(i, kHours);
    }
    grid_->applyChanges(changes);
    setUnsaved(grid_->isDirty());
}

void FrmMeslekDersHavuzu::discardChanges() { grid_->revert(); }

void FrmMeslekDersHavuzu::refresh() {
    if (hasUnsaved()) return;
    attempt(objectName(), [this] {
        offerProfessions();
        loadPool();
        reloadKeepingTyped();
    });
}

void FrmMeslekDersHavuzu::showRecord(const QString& professionCode) {
    profession_->setCode(professionCode);
    load();
}

// --- what is written

std::vector<FieldTexts> FrmMeslekDersHavuzu::wanted() const {
    std::vector<FieldTexts> all;
    for (size_t i = 0; i < shown_.size(); ++i) {
        all.push_back(rows_[shown_[i]].values);
        for (const QString& field : typedFields())
            all.back()[field] = grid_->value(i, field);
    }
    return all;
}

bool FrmMeslekDersHavuzu::save() {
    if (busy_) return false;
    bool saved = false;
    attempt(QStringLiteral("Meslek dersleri kaydı"), [&] { saved = trySave(); });
    return saved;
}

bool FrmMeslekDersHavuzu::trySave() {
    if (!grid_->settle()) return false;
    if (!grid_->isDirty()) {
        result_->setText(QStringLiteral("Değişiklik yok."));
        return true;
    }
    std::vector<StoredRow> rows;
    for (const size_t place : shown_)
        rows.push_back(rows_[place]);
    const size_t changed = grid_->changedRows().size();
    const RowSave outcome = curriculum_.save(rows, wanted());
    if (outcome.saved) {
        load();
        wrote(QStringLiteral("Kaydedildi: %1 satır.").arg(changed));
        return true;
    }
    if (outcome.field.isEmpty())
        reloadKeepingTyped();
    else
        grid_->showWrong(outcome.row, outcome.field, outcome.reason);
    return false;
}

void FrmMeslekDersHavuzu::wrote(const QString& result) {
    result_->setText(result);
    emit recordsChanged();
}

void FrmMeslekDersHavuzu::addCourses() {
    attempt(QStringLiteral("Ders ekleme"), [this] {
        QStringList codes;
        for (const size_t row : poolGrid_->selectedRows())
            codes << pool_[row].code;
        int intoYear = year(), term = 0;
        if (const auto current = grid_->currentCell()) {
            const FieldTexts& beside = rows_[shown_[current->row]].values;
            if (intoYear == 0) intoYear = beside.at(kYear).toInt();
            if (ProfessionCurriculum::usesTerms(rows_)) term = beside.at(kTerm).toInt();
        }
        intoYear = std::max(intoYear, 1);
        const int added = curriculum_.add(key(), codes, intoYear, term);
        if (added == 0) return;
        reloadKeepingTyped();
        wrote(QStringLiteral("%1. yıla %2 ders eklendi.").arg(intoYear).arg(added));
    });
}

QString FrmMeslekDersHavuzu::words(size_t shownRow) const {
    const StoredRow& row = rows_[shown_[shownRow]];
    const auto name = courseNames_.find(row.values.at(kCourse));
    return QStringLiteral("%1. %2")
        .arg(shownRow + 1)
        .arg(name == courseNames_.end() ? row.values.at(kCourse)
                                        : row.values.at(kCourse) + QStringLiteral(" - ") + name->second);
}

void FrmMeslekDersHavuzu::removeRow() {
    const auto current = grid_->currentCell();
    if (!current) {
        result_->setText(QStringLiteral("Silinecek satırın üzerine geliniz."));
        return;
    }
    attempt(QStringLiteral("Ders satırı silme"), [&] {
        const QString text = words(current->row);
        if (!curriculum_.remove(rows_[shown_[current->row]], text)) return;
        reloadKeepingTyped();
        if (!shown_.empty()) grid_->makeCurrent(std::min(current->row, shown_.size() - 1), kHours);
        wrote(QStringLiteral("Silindi: ") + text);
    });
}

void FrmMeslekDersHavuzu::moveCurrent(int by) {
    const auto current = grid_->currentCell();
    if (!current || (by < 0 && current->row == 0) || (by > 0 && current->row + 1 >= shown_.size())) return;
    move(current->row, by < 0 ? current->row - 1 : current->row + 1);
}

void FrmMeslekDersHavuzu::move(size_t from, size_t to) {
    if (from == to || from >= shown_.size() || to >= shown_.size()) return;
    const auto period = [&](size_t row) {
        const FieldTexts& values = rows_[shown_[row]].values;
        return std::pair(values.at(kTerm).toInt(), values.at(kYear).toInt());
    };
    if (ProfessionCurriculum::usesTerms(rows_) && period(from) != period(to)) {
        result_->setText(QStringLiteral("Satır yalnız kendi yılı ve dönemi içinde taşınabilir."));
        return;
    }
    attempt(QStringLiteral("Ders sırası"), [&] {
        std::vector<StoredRow> ordered;
        for (const size_t place : movedOrder(rows_.size(), shown_, from, to))
            ordered.push_back(rows_[place]);
        const bool moved = curriculum_.reorder(key(), ordered);
        reloadKeepingTyped();
        if (!moved) return;
        grid_->makeCurrent(to, kHours);
        wrote(QStringLiteral("Sıra değişti: ") + words(to));
    });
}

void FrmMeslekDersHavuzu::makeFinalExam() {
    attempt(QStringLiteral("Bitirme dersleri"), [this] {
        const auto made = curriculum_.makeFinalExam(key());
        if (!made) return;
        reloadKeepingTyped();
        wrote(QStringLiteral("%1 bitirme dersi oluşturuldu (Öğrenim: BİTİRME).").arg(*made));
    });
}

void FrmMeslekDersHavuzu::loadReady() {
    attempt(QStringLiteral("Hazır dersler"), [this] {
        const ReadyLoad done = ready_.load(key());
        if (!done.loaded) return;
        loadPool();
        reloadKeepingTyped();
        QString text = QStringLiteral("Hazır derslerden %1 satır, havuza %2 ders eklendi.")
                           .arg(done.rows)
                           .arg(done.courses);
        if (done.alreadyThere > 0)
            text += QStringLiteral(" Zaten bulunan %1 satır olduğu gibi kaldı.").arg(done.alreadyThere);
        wrote(text);
        if (!done.otherNames.isEmpty())
            dialogs().message(
                QStringLiteral("Şu derslerin kodu havuzda başka bir adla kayıtlı; havuzdaki adlar "
                               "kaldı:\n\n") +
                    done.otherNames.join(QLatin1Char('\n')),
                QStringLiteral("Açıklama"));
    });
}

} // namespace orvan
