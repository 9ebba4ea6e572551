// records/screens/frm_sinif_ogrenci_sayilari.cpp — see frm_sinif_ogrenci_sayilari.h.
#include "records/screens/frm_sinif_ogrenci_sayilari.h"

#include "records/class_counts.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/grid.h"

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvan {

namespace {

std::vector<ListColumn> columns() {
    std::vector<ListColumn> all = {
        {QStringLiteral("sinif"), QStringLiteral("Sınıf"), ListKind::Text, 14},
        {QStringLiteral("meslek"), QStringLiteral("Meslekler"), ListKind::Text, 30},
        {QStringLiteral("kiz"), QStringLiteral("Kız"), ListKind::Number, 6},
        {QStringLiteral("erkek"), QStringLiteral("Erkek"), ListKind::Number, 6},
        {QStringLiteral("belirsiz"), QStringLiteral("Belirsiz"), ListKind::Number, 7},
        {QStringLiteral("toplam"), QStringLiteral("Toplam"), ListKind::Number, 7},
    };
    for (size_t stage = 0; stage < kStageCount; ++stage) {
        const QString title = stageTitle(stage);
        all.push_back({QStringLiteral("donem%1").arg(stage + 1),
                       stage < 4 ? title + QStringLiteral(". dönem") : title, ListKind::Number,
                       static_cast<int>(title.size()) + (stage < 4 ? 7 : 2)});
    }
    return all;
}

ListRow rowOf(const ClassCount& count) {
    ListRow row{count.className.isEmpty() ? QStringLiteral("(sınıfı yok)") : count.className,
                count.professions,
                count.girls,
                count.boys,
                count.unknown == 0 ? QVariant() : QVariant(count.unknown),
                count.total()};
    for (const int stage : count.stages)
        row.emplace_back(stage == 0 ? QVariant() : QVariant(stage));
    return row;
}

QString sentence(const ClassCount& sum, size_t classes) {
    QStringList parts{QStringLiteral("%1 sınıf").arg(classes), QStringLiteral("kız %1").arg(sum.girls),
                      QStringLiteral("erkek %1").arg(sum.boys)};
    if (sum.unknown > 0) parts << QStringLiteral("cinsiyeti belirsiz %1").arg(sum.unknown);
    parts << QStringLiteral("toplam %1 öğrenci").arg(sum.total());
    for (size_t stage = 0; stage < kStageCount; ++stage)
        if (sum.stages[stage] > 0)
            parts << QStringLiteral("%1%2 %3").arg(
                stageTitle(stage), stage < 4 ? QStringLiteral(". dönem:") : QStringLiteral(":"),
                QString::number(sum.stages[stage]));
    return QStringLiteral("Toplam: ") + parts.join(QStringLiteral(", "));
}

} // namespace

Frm_SinifOgrenciSayilari::Frm_SinifOgrenciSayilari(const QString& title, DatabaseSet& databases,
                                                   Dialogs& dialogs, UserMemory& memory, const Clock& clock,
                                                   QWidget* parent)
    : Screen(QStringLiteral("Frm_SinifOgrenciSayilari"), title, dialogs, parent), databases_(databases),
      clock_(clock) {
    build(memory);
    refresh();
}

void Frm_SinifOgrenciSayilari::build(UserMemory& memory) {
    grid_ = new ListGrid(QStringLiteral("sinifSayilari"), columns(), dialogs(), memory, this);
    grid_->sortAtFirstBy(QStringLiteral("sinif"));
    grid_->setTitle(QStringLiteral("Sınıf Öğrenci Sayıları"));
    grid_->setEmptyText(QStringLiteral("Bu düzeyde sınıf ve öğrenci yok."));
    grid_->setPinnedColumns(1);
    inTraining_ =
        new QCheckBox(QStringLiteral("Yalnız &eğitimi sürenler (dönemi rakamla başlayanlar)"), this);
    inTraining_->setObjectName(QStringLiteral("egitimiSurenler"));
    inTraining_->setChecked(true);
    sum_ = new QLabel(this);
    sum_->setObjectName(QStringLiteral("toplam"));
    sum_->setTextFormat(Qt::PlainText);
    sum_->setWordWrap(true);
    QFont bold = sum_->font();
    bold.setBold(true);
    sum_->setFont(bold);

    auto* output =
        makeButton("yazdir", QStringLiteral("Yazdı&r"), QStringLiteral("Listeyi toplamlarıyla yazdırır"),
                   this, [this] { grid_->outputActions().front()->trigger(); });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(inTraining_);
    buttons->addStretch(1);
    buttons->addWidget(output);
    buttons->addWidget(leave);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grid_, 1);
    layout->addWidget(sum_);
    layout->addLayout(buttons);
    setFocusProxy(grid_);
    connect(inTraining_, &QCheckBox::toggled, this, &Screen::refresh);
}

void Frm_SinifOgrenciSayilari::refresh() {
    attempt(objectName(), [this] { load(); });
}

void Frm_SinifOgrenciSayilari::load() {
    const auto counts =
        classCounts(databases_.level().sql(),
                    inTraining_->isChecked() ? CountedStudents::InTraining : CountedStudents::All);
    std::vector<ListRow> rows;
    for (const ClassCount& count : counts)
        rows.push_back(rowOf(count));
    const QString total = sentence(sumOf(counts), counts.size());
    const Session& session = databases_.session();
    QStringList notes{
        QStringLiteral("%1 - %2 - %3")
            .arg(levelText(session.level), dataSetCaption(session.mode), dateText(clock_.today())),
        total};
    if (inTraining_->isChecked()) notes << QStringLiteral("Yalnız eğitimi sürenler");
    if (!session.schoolName.isEmpty()) notes.prepend(session.schoolName);
    sum_->setText(total);
    grid_->setNotes(notes);
    grid_->setRows(std::move(rows));
}

} // namespace orvan
