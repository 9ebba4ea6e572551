// records/screens/student_roster.cpp — see student_roster.h.
#include "records/screens/student_roster.h"

#include "core/turkish_text.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/choice_list.h"
#include "widgets/grid.h"

#include <algorithm>
#include <map>
#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kAll = QStringLiteral("*");
const QString kNone = QStringLiteral("-");

} // namespace

StudentRoster::StudentRoster(RosterLook look, const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                             UserMemory& memory, const Clock& clock, QWidget* parent)
    : Screen(look.window, title, dialogs, parent), look_(std::move(look)), databases_(databases),
      clock_(clock) {
    build(memory);
    refresh();
}

void StudentRoster::build(UserMemory& memory) {
    grid_ = new ListGrid(look_.list, look_.columns, dialogs(), memory, this);
    grid_->setEmptyText(QStringLiteral("Bu düzeyde kayıtlı öğrenci yok."));
    grid_->setPinnedColumns(3);
    groups_ = new ChoiceList(30, this);
    groups_->setObjectName(QStringLiteral("grup"));
    auto* label = new QLabel(look_.groupBy, this);
    label->setBuddy(groups_);
    counts_ = new QLabel(this);
    counts_->setObjectName(QStringLiteral("mevcut"));
    counts_->setTextFormat(Qt::PlainText);
    auto* choice = new QHBoxLayout;
    choice->addWidget(label);
    choice->addWidget(groups_);
    choice->addSpacing(fontMetrics().averageCharWidth() * 3);
    choice->addWidget(counts_, 1);
    auto* again = makeButton("yenile", QStringLiteral("Y&enile"), QStringLiteral("Listeyi yeniden okur (F5)"),
                             this, [this] { refresh(); });
    auto* print = makeButton("yazdirDugmesi", QStringLiteral("Yazdı&r"),
                             QStringLiteral("Görünen listeyi yazdırır (Ctrl+P)"), this,
                             [this] { grid_->outputActions().front()->trigger(); });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* button : {again, print, leave})
        buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grid_, 1); // first: who opens the list begins to type a name
    layout->addLayout(choice);
    layout->addLayout(buttons);
    setFocusProxy(grid_);
    connect(groups_, &ChoiceList::codeChanged, this, [this] { showChosen(); });
    connect(grid_, &ListGrid::activated, this, [this](size_t row) {
        emit openRequested(QStringLiteral("ogrencikayit"), students_[shown_[row]].number);
    });
}

void StudentRoster::refresh() {
    attempt(objectName(), [this] { load(); });
}

void StudentRoster::load() {
    QApplication::setOverrideCursor(Qt::BusyCursor);
    struct Restore {
        ~Restore() { QApplication::restoreOverrideCursor(); }
    } restore;
    students_ = studentList(databases_.level().sql());
    std::map<QString, size_t> places; // of the groups in Turkish order
    QStringList names;
    for (const StudentListRow& student : students_)
        if (places.emplace(look_.groupOf(student), 0).second) names << look_.groupOf(student);
    const bool someWithout = names.removeAll(QString()) > 0;
    sortTurkish(names);
    std::vector<Choice> choices{{kAll, QStringLiteral("(tümü)")}};
    for (const QString& name : names) {
        places[name] = choices.size();
        choices.push_back({QLatin1Char('=') + name, name});
    }
    places[QString()] = choices.size(); // whoever has no group comes last
    if (someWithout) choices.push_back({kNone, look_.ungrouped});
    std::stable_sort(students_.begin(), students_.end(),
                     [&](const StudentListRow& a, const StudentListRow& b) {
                         return places.at(look_.groupOf(a)) < places.at(look_.groupOf(b));
                     });
    const QString before = groups_->code();
    groups_->setChoices(std::move(choices));
    groups_->setCode(before);
    if (groups_->code().isEmpty()) groups_->setCode(kAll);
    showChosen();
}

void StudentRoster::showChosen() {
    const QString code = groups_->code();
    if (code.isEmpty()) return;
    shown_.clear();
    std::vector<ListRow> rows;
    std::vector<QString> sexes;
    for (size_t i = 0; i < students_.size(); ++i) {
        const QString group = look_.groupOf(students_[i]);
        if (code != kAll && (group.isEmpty() ? kNone : QLatin1Char('=') + group) != code) continue;
        shown_.push_back(i);
        rows.push_back(look_.rowOf(students_[i]));
        sexes.push_back(students_[i].sex);
    }
    const QString counts = studentCounts(sexes);
    counts_->setText(counts);
    const Session& session = databases_.session();
    QStringList notes;
    if (!session.schoolName.isEmpty()) notes << session.schoolName;
    notes << QStringLiteral("%1 - %2 - %3")
                 .arg(levelText(session.level), dataSetCaption(session.mode), dateText(clock_.today()));
    QString label = look_.groupBy;
    label.remove(QLatin1Char('&'));
    notes << (code == kAll ? counts
                           : QStringLiteral("%1 %2 - %3").arg(label, groups_->currentText(), counts));
    grid_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    grid_->setNotes(notes);
    grid_->setRows(std::move(rows));
}

} // namespace orvan
