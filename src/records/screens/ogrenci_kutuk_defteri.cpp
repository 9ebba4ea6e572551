// records/screens/ogrenci_kutuk_defteri.cpp — see ogrenci_kutuk_defteri.h.
#include "records/screens/ogrenci_kutuk_defteri.h"

#include "core/values.h"
#include "records/screens/student_choice_form.h"
#include "records/student_list.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/grid.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvan {

namespace {

std::vector<ListColumn> columns() {
    return {{QStringLiteral("numara"), QStringLiteral("Kütük No"), ListKind::Text, 11},
            {QStringLiteral("adSoyad"), QStringLiteral("Adı Soyadı"), ListKind::Text, 22},
            {QStringLiteral("kayitTarihi"), QStringLiteral("Kayıt Tarihi"), ListKind::Date, 10},
            {QStringLiteral("kimlikNo"), QStringLiteral("T.C. Kimlik No"), ListKind::Text, 12},
            {QStringLiteral("baba"), QStringLiteral("Baba Adı"), ListKind::Text, 11},
            {QStringLiteral("dogumYeri"), QStringLiteral("Doğum Yeri"), ListKind::Text, 11},
            {QStringLiteral("dogumTarihi"), QStringLiteral("Doğum Tarihi"), ListKind::Date, 10},
            {QStringLiteral("meslek"), QStringLiteral("Meslek"), ListKind::Text, 22},
            {QStringLiteral("sinif"), QStringLiteral("Sınıf"), ListKind::Text, 7},
            {QStringLiteral("donem"), QStringLiteral("Dönem"), ListKind::Text, 8},
            {QStringLiteral("isyeri"), QStringLiteral("İşyeri"), ListKind::Text, 26}};
}

} // namespace

ogrenci_kutuk_defteri::ogrenci_kutuk_defteri(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                             UserMemory& memory, const Clock& clock, QWidget* parent)
    : Screen(QStringLiteral("ogrenci_kutuk_defteri"), title, dialogs, parent), databases_(databases),
      memory_(memory), clock_(clock), choices_(bulkCommands().front(), title, databases, dialogs, clock) {
    build();
    refresh();
}

void ogrenci_kutuk_defteri::build() {
    choice_ = new StudentChoiceForm(this);
    grid_ = new ListGrid(QStringLiteral("kutuk"), columns(), dialogs(), memory_, this);
    grid_->sortAtFirstBy(QStringLiteral("numara"));
    grid_->setEmptyText(QStringLiteral("Bu seçime uyan öğrenci yok."));
    grid_->setPinnedColumns(2);
    counts_ = new QLabel(this);
    counts_->setObjectName(QStringLiteral("mevcut"));
    counts_->setTextFormat(Qt::PlainText);
    auto* print = makeButton("defteriYazdir", QStringLiteral("Defteri Yazdı&r"),
                             QStringLiteral("Her öğrenciyi bir çerçevede gösteren sayfaları yazdırır"), this,
                             [this] { printPages(); });
    auto* file =
        makeButton("defterPdf", QStringLiteral("&Defteri PDF'ye Aktar"),
                   QStringLiteral("Aynı sayfaları bir PDF dosyasına yazar"), this, [this] { exportPages(); });
    auto* again = makeButton("yenile", QStringLiteral("Y&enile"), QStringLiteral("Kütüğü yeniden okur (F5)"),
                             this, [this] { refresh(); });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(counts_, 1);
    for (QPushButton* button : {print, file, again, leave})
        buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(choice_);
    layout->addWidget(grid_, 1);
    layout->addLayout(buttons);
    setFocusProxy(choice_);
    connect(choice_, &StudentChoiceForm::chosen, this,
            [this] { attempt(objectName(), [this] { showChosen(); }); });
    connect(choice_, &EntryForm::lastFieldDone, grid_, [this] { grid_->setFocus(Qt::TabFocusReason); });
    connect(grid_, &ListGrid::activated, this,
            [this](size_t row) { emit openRequested(QStringLiteral("ogrencikayit"), entries_[row].number); });
}

void ogrenci_kutuk_defteri::refresh() {
    attempt(objectName(), [this] { load(); });
}

void ogrenci_kutuk_defteri::load() {
    choice_->offer(choices_.professions(), choices_.stages(), choices_.classes());
    showChosen();
}

void ogrenci_kutuk_defteri::showChosen() {
    QApplication::setOverrideCursor(Qt::BusyCursor);
    struct Restore {
        ~Restore() { QApplication::restoreOverrideCursor(); }
    } restore;
    entries_ = studentRegister(databases_.level().sql(), choice_->selection());
    std::vector<ListRow> rows;
    std::vector<QString> sexes;
    for (const RegisterEntry& e : entries_) {
        rows.push_back({e.number, e.name, e.registered, e.identityNo, e.father, e.birthPlace, e.birthDate,
                        e.profession, e.className, e.stage, e.workplace});
        sexes.push_back(e.sex);
    }
    counts_->setText(studentCounts(sexes));
    const RegisterSheet about = sheet();
    grid_->setTitle(about.title);
    grid_->setNotes(about.notes);
    grid_->setRows(std::move(rows));
}

RegisterSheet ogrenci_kutuk_defteri::sheet() const {
    const Session& session = databases_.session();
    RegisterSheet sheet{windowTitle().remove(QStringLiteral("[*]")), {}, entries_};
    if (!session.schoolName.isEmpty()) sheet.notes << session.schoolName;
    sheet.notes << QStringLiteral("%1 - %2 - %3")
                       .arg(levelText(session.level), dataSetCaption(session.mode), dateText(clock_.today()));
    const QString chosen = choice_->words();
    sheet.notes << (chosen.isEmpty() ? counts_->text() : chosen + QStringLiteral(" - ") + counts_->text());
    return sheet;
}

void ogrenci_kutuk_defteri::printPages() {
    try {
        previewRegister(sheet(), window(), memory_);
    } catch (const jet::Error& error) {
        dialogs().message(errorText(error), QStringLiteral("Yazdırma"), Icon::Critical);
    }
}

void ogrenci_kutuk_defteri::exportPages() {
    const QString what = QStringLiteral("PDF Dosyasına Aktar");
    const auto path = dialogs().chooseSaveFile(what, QStringLiteral("PDF dosyaları|*.pdf"), sheet().title);
    if (!path) return;
    try {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        struct Restore {
            ~Restore() { QApplication::restoreOverrideCursor(); }
        } restore;
        writeRegisterPdf(sheet(), *path);
    } catch (const jet::Error& error) {
        dialogs().message(errorText(error), what, Icon::Critical);
    }
}

} // namespace orvan
