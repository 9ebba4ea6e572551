// records/screens/ogrenci_listesi.cpp — the student list.
#include "records/screens/ogrenci_listesi.h"

#include "records/student_list.h"
#include "widgets/grid.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvan {

namespace {

std::vector<ListColumn> columns() {
    return {
        {QStringLiteral("numara"), QStringLiteral("Kütük No"), ListKind::Text, 11},
        {QStringLiteral("adi"), QStringLiteral("Adı"), ListKind::Text, 16},
        {QStringLiteral("soyadi"), QStringLiteral("Soyadı"), ListKind::Text, 16},
        {QStringLiteral("sinif"), QStringLiteral("Sınıf"), ListKind::Text, 8},
        {QStringLiteral("meslek"), QStringLiteral("Meslek"), ListKind::Text, 24},
        {QStringLiteral("seviye"), QStringLiteral("Seviye"), ListKind::Text, 9},
        {QStringLiteral("kayitNo"), QStringLiteral("Kayıt No"), ListKind::Number, 8},
        {QStringLiteral("kimlikNo"), QStringLiteral("T.C. Kimlik No"), ListKind::Text, 12},
        {QStringLiteral("isyeri"), QStringLiteral("İşyeri"), ListKind::Text, 30},
    };
}

ListRow rowOf(const StudentListRow& student) {
    return {student.number, student.name,           student.surname,    student.className, student.profession,
            student.stage,  student.registrationNo, student.identityNo, student.workplace};
}

} // namespace

ogrenci_listesi::ogrenci_listesi(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                 UserMemory& memory, const Clock& clock, QWidget* parent)
    : Screen(QStringLiteral("ogrenci_listesi"), title, dialogs, parent), databases_(databases), clock_(clock),
      grid_(new ListGrid(QStringLiteral("ogrenciler"), columns(), dialogs, memory, this)) {
    grid_->sortAtFirstBy(QStringLiteral("sinif"));
    grid_->setTitle(QStringLiteral("Öğrenci Listesi"));
    grid_->setEmptyText(QStringLiteral("Bu düzeyde kayıtlı öğrenci yok."));
    auto* again = new QPushButton(QStringLiteral("Y&enile"), this);
    again->setObjectName(QStringLiteral("yenile"));
    again->setToolTip(QStringLiteral("Listeyi yeniden okur (F5)"));
    auto* leave = new QPushButton(QStringLiteral("Kapa&t"), this);
    leave->setObjectName(QStringLiteral("kapat"));
    leave->setToolTip(QStringLiteral("Pencereyi kapatır (Esc)"));
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(again);
    buttons->addWidget(leave);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(grid_, 1);
    layout->addLayout(buttons);
    connect(again, &QPushButton::clicked, this, &Screen::refresh);
    connect(leave, &QPushButton::clicked, this, &Screen::closeWindow);
    setFocusProxy(grid_);
    refresh();
}

void ogrenci_listesi::refresh() {
    attempt(QStringLiteral("ogrenci_listesi"), [this] { load(); });
}

void ogrenci_listesi::load() {
    QApplication::setOverrideCursor(Qt::BusyCursor);
    struct Restore {
        ~Restore() { QApplication::restoreOverrideCursor(); }
    } restore;
    std::vector<ListRow> rows;
    for (const StudentListRow& student : studentList(databases_.level().sql()))
        rows.push_back(rowOf(student));
    const Session& session = databases_.session();
    QStringList notes{
        QStringLiteral("%1 - %2 - %3")
            .arg(levelText(session.level), dataSetCaption(session.mode), dateText(clock_.today()))};
    if (!session.schoolName.isEmpty()) notes.prepend(session.schoolName);
    grid_->setNotes(notes);
    grid_->setRows(std::move(rows));
}

} // namespace orvan
