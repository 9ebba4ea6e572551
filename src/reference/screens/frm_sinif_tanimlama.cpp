// reference/screens/frm_sinif_tanimlama.cpp — see frm_sinif_tanimlama.h.
#include "reference/screens/frm_sinif_tanimlama.h"

#include "reference/screens/class_week_page.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/grid.h"

#include <map>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kName = QStringLiteral("SinifAdi");
const QString kTeacher = QStringLiteral("SinifOgretmeni");
const QString kInsurance = QStringLiteral("SGKKodu");
constexpr size_t kSchoolDays = 5; // the others are narrow

ListColumn column(const char* key, const QString& title, int width, ListKind kind = ListKind::Text) {
    return {QString::fromLatin1(key), title, kind, width};
}

std::vector<ListColumn> weekColumns() {
    std::vector<ListColumn> columns{column("saat", QStringLiteral("Saat"), 13)};
    for (const QString& day : weekDays())
        columns.push_back({QStringLiteral("gun%1").arg(columns.size()), day, ListKind::Text,
                           columns.size() <= kSchoolDays ? 23 : 10});
    return columns;
}

} // namespace

Frm_Sinif_Tanimlama::Frm_Sinif_Tanimlama(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                         UserMemory& memory, QWidget* parent)
    : RecordScreen(QStringLiteral("Frm_Sinif_Tanimlama"), title, dialogs, memory, parent),
      classes_(databases, dialogs, title) {
    QStringList notes{databases.session().schoolName, levelText(databases.session().level)};
    notes.removeAll(QString());
    RecordParts parts;
    parts.listName = QStringLiteral("siniflar");
    parts.columns = {{kName, QStringLiteral("Sınıf"), ListKind::Text, 12},
                     {kTeacher, QStringLiteral("Sınıf öğretmeni"), ListKind::Text, 20}};
    parts.pages = {
        {QStringLiteral("sayfaSinif"),
         QStringLiteral("Sınıf"),
         {{kName, QStringLiteral("Sınıf adı:"), FieldKind::Text, classes_.width(kName), 24},
          {kTeacher, QStringLiteral("Sınıf öğretmeni:"), FieldKind::Text, classes_.width(kTeacher), 32},
          {kInsurance, QStringLiteral("SGK kodu:"), FieldKind::Code, classes_.width(kInsurance), 20}}}};
    parts.one = QStringLiteral("sınıf");
    parts.section = QStringLiteral("Sını&flar");
    parts.notes = notes;
    build(std::move(parts));

    slots_ = new ClassWeekPage(classes_, dialogs, memory, pages().parentWidget());
    addBelow(slots_);
    addSection(QStringLiteral("&Haftalık Görünüm"), buildWeek());
    addSection(QStringLiteral("Ders Progra&mı"), buildTimetable(notes));
    addSection(QStringLiteral("Ta&nımsız Sınıflar"), buildUndefined());
    connect(slots_, &ClassWeekPage::changed, this, [this] {
        checkUnsaved();
        showWeek();
    });
    load();
}

QWidget* Frm_Sinif_Tanimlama::buildWeek() {
    auto* page = new QWidget;
    className_ = new QLabel(page);
    className_->setObjectName(QStringLiteral("haftaninSinifi"));
    className_->setTextFormat(Qt::PlainText);
    QFont bold = className_->font();
    bold.setBold(true);
    className_->setFont(bold);
    week_ = new ListGrid(QStringLiteral("sinifHaftasi"), weekColumns(), dialogs(), memory(), page);
    week_->setTitle(QStringLiteral("Haftalık Ders Programı"));
    week_->setEmptyText(QStringLiteral("Bu sınıfın günü seçilmiş dersi yok."));
    week_->setPinnedColumns(1);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(className_);
    layout->addWidget(week_, 1);
    page->setFocusProxy(week_);
    return page;
}

QWidget* Frm_Sinif_Tanimlama::buildTimetable(const QStringList& notes) {
    auto* page = new QWidget;
    auto* withStudents = new QCheckBox(QStringLiteral("Öğrencileriyle göster"), page);
    withStudents->setObjectName(QStringLiteral("ogrencileriyle"));
    timetables_ = new QStackedWidget(page);
    timetable_ = new ListGrid(
        QStringLiteral("dersProgrami"),
        {column("gun", QStringLiteral("Gün"), 10), column("baslangic", QStringLiteral("Başlangıç"), 8),
         column("bitis", QStringLiteral("Bitiş"), 6), column("sinif", QStringLiteral("Sınıf"), 9),
         column("derslik", QStringLiteral("Derslik"), 12),
         column("ogretmen", QStringLiteral("Öğretmen"), 20)},
        dialogs(), memory(), timetables_);
    students_ = new ListGrid(
        QStringLiteral("dersProgramiOgrencileri"),
        {column("sinif", QStringLiteral("Sınıf"), 9), column("numara", QStringLiteral("Kütük No"), 11),
         column("adi", QStringLiteral("Adı"), 14), column("soyadi", QStringLiteral("Soyadı"), 14),
         column("saatler", QStringLiteral("Ders saatleri"), 34)},
        dialogs(), memory(), timetables_);
    for (ListGrid* grid : {timetable_, students_}) {
        grid->setTitle(QStringLiteral("Sınıf Ders Programı"));
        grid->setNotes(notes);
        grid->setEmptyText(QStringLiteral("Dersliği yazılmış bir ders saati yok."));
        timetables_->addWidget(grid);
    }
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(withStudents);
    layout->addWidget(timetables_, 1);
    page->setFocusProxy(withStudents);
    connect(withStudents, &QCheckBox::toggled, this, [this](bool on) {
        timetables_->setCurrentIndex(on ? 1 : 0);
        attempt(objectName(), [this] { showTimetable(); });
    });
    return page;
}

QWidget* Frm_Sinif_Tanimlama::buildUndefined() {
    auto* page = new QWidget;
    unknown_ = new ListGrid(QStringLiteral("tanimsizSiniflar"),
                            {column("sinif", QStringLiteral("Sınıf"), 16),
                             column("ogrenci", QStringLiteral("Öğrenci sayısı"), 14, ListKind::Number)},
                            dialogs(), memory(), page);
    unknown_->setTitle(QStringLiteral("Öğrencilerde Olup Tanımlı Olmayan Sınıflar"));
    unknown_->setEmptyText(QStringLiteral("Öğrencilerin bütün sınıfları tanımlı."));
    auto* add = makeButton("tanimla", QStringLiteral("Sınıflara E&kle"),
                           QStringLiteral("Seçili adları sınıf olarak kaydeder"), page, [this] { define(); });
    auto* line = new QHBoxLayout;
    line->addStretch(1);
    line->addWidget(add);
    auto* layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(unknown_, 1);
    layout->addLayout(line);
    page->setFocusProxy(unknown_);
    connect(unknown_, &ListGrid::activated, this, [this] { define(); });
    return page;
}

std::vector<StoredRow> Frm_Sinif_Tanimlama::readRows() { return classes_.rows(); }

SaveOutcome Frm_Sinif_Tanimlama::saveRow(std::optional<StoredRow>& row, const FieldTexts& wanted, bool) {
    return classes_.save(row, wanted);
}

bool Frm_Sinif_Tanimlama::removeRow(const StoredRow& row) { return classes_.remove(row); }

void Frm_Sinif_Tanimlama::showMore(const StoredRow* row) {
    slots_->show(row ? &row->values : nullptr);
    className_->setText(row ? row->values.at(kName) : QStringLiteral("Yeni sınıf"));
    week_->setNotes({className_->text()});
    showWeek();
}

void Frm_Sinif_Tanimlama::takeOverMore(const StoredRow& row) { slots_->takeOver(row.values); }

bool Frm_Sinif_Tanimlama::settleMore() {
    if (slots_->settle()) return true;
    showRecordSection();
    return false;
}

bool Frm_Sinif_Tanimlama::moreIsDirty() const { return slots_->isDirty(); }
void Frm_Sinif_Tanimlama::revertMore() { slots_->revert(); }
void Frm_Sinif_Tanimlama::addToSave(FieldTexts& wanted) const { slots_->addTo(wanted); }

bool Frm_Sinif_Tanimlama::showWrongMore(const QString& field, const QString& reason) {
    return slots_->showWrong(field, reason);
}

// Clashes of this class with the others; the week may be meant so.
QString Frm_Sinif_Tanimlama::wordsAfterSave(const FieldTexts& saved) {
    QStringList words;
    for (const QString& clash : hourClashes(classes_.timetable(), saved.at(kName)))
        words << QStringLiteral("Dikkat: ") + clash;
    return words.join(QLatin1Char('\n'));
}

// A row per time, a column per day.
void Frm_Sinif_Tanimlama::showWeek() {
    std::map<QString, ListRow> lines;
    for (const TeachingHour& hour : slots_->hours()) {
        const qsizetype day = weekDays().indexOf(hour.day);
        if (day < 0) continue;
        const bool timed = !hour.start.isEmpty() || !hour.end.isEmpty();
        const QString time = timed ? hour.start + QLatin1Char('-') + hour.end : QString();
        ListRow& line = lines[time];
        if (line.empty()) line.assign(static_cast<size_t>(weekDays().size()) + 1, QVariant(QString()));
        line[0] = time;
        QStringList words{line[static_cast<size_t>(day) + 1].toString(), hour.room, hour.teacher};
        words.removeAll(QString());
        line[static_cast<size_t>(day) + 1] = words.join(QStringLiteral(", "));
    }
    std::vector<ListRow> rows;
    for (auto& [time, line] : lines)
        rows.push_back(std::move(line));
    week_->setRows(std::move(rows));
}

void Frm_Sinif_Tanimlama::showTimetable() {
    std::vector<ListRow> rows;
    if (timetables_->currentIndex() == 0) {
        for (const TeachingHour& hour : classes_.timetable())
            rows.push_back({hour.day, hour.start, hour.end, hour.className, hour.room, hour.teacher});
        timetable_->setRows(std::move(rows));
        return;
    }
    for (const TimetableStudent& student : classes_.timetableStudents())
        rows.push_back({student.className, student.number, student.name, student.surname, student.hours});
    students_->setRows(std::move(rows));
}

void Frm_Sinif_Tanimlama::listRead() {
    undefined_ = classes_.undefined();
    std::vector<ListRow> rows;
    for (const UndefinedClass& name : undefined_)
        rows.push_back({name.name, name.students});
    unknown_->setRows(std::move(rows));
    showTimetable();
}

void Frm_Sinif_Tanimlama::define() {
    attempt(QStringLiteral("Sınıf tanımlama"), [this] {
        QStringList names, added;
        for (const size_t place : unknown_->selectedRows())
            names << undefined_[place].name;
        for (const QString& name : names) {
            std::optional<StoredRow> fresh;
            if (!classes_.save(fresh, {{kName, name}}).saved) break;
            added << name;
        }
        if (names.isEmpty()) say(QStringLiteral("Önce eklenecek sınıfları seçiniz."));
        if (!added.isEmpty()) afterChange(QStringLiteral("Eklendi: ") + added.join(QStringLiteral(", ")));
    });
}

} // namespace orvan
