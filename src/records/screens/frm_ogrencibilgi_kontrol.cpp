// records/screens/frm_ogrencibilgi_kontrol.cpp — see frm_ogrencibilgi_kontrol.h.
#include "records/screens/frm_ogrencibilgi_kontrol.h"

#include "reference/screens/screen_buttons.h"
#include "widgets/grid.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QSplitter>
#include <QTableView>
#include <QVBoxLayout>

namespace orvan {

namespace {

std::vector<ListColumn> columns() {
    return {
        {QStringLiteral("denetim"), QStringLiteral("Denetim"), ListKind::Text, 24},
        {QStringLiteral("numara"), QStringLiteral("Kütük No"), ListKind::Text, 11},
        {QStringLiteral("adi"), QStringLiteral("Adı"), ListKind::Text, 12},
        {QStringLiteral("soyadi"), QStringLiteral("Soyadı"), ListKind::Text, 12},
        {QStringLiteral("bulgu"), QStringLiteral("Bulgu"), ListKind::Text, 46},
        {QStringLiteral("sinif"), QStringLiteral("Sınıf"), ListKind::Text, 8},
        {QStringLiteral("meslek"), QStringLiteral("Meslek"), ListKind::Text, 20},
        {QStringLiteral("sira"), QStringLiteral("Sıra"), ListKind::Number, 5, false},
    };
}

ListRow rowOf(const RecordFinding& f, size_t place) {
    return {f.check, f.number,    f.name,       f.surname,
            f.text,  f.className, f.profession, static_cast<int>(place) + 1};
}

} // namespace

Frm_ogrencibilgi_kontrol::Frm_ogrencibilgi_kontrol(const QString& title, DatabaseSet& databases,
                                                   Dialogs& dialogs, UserMemory& memory, const Clock& clock,
                                                   QWidget* parent)
    : Screen(QStringLiteral("Frm_ogrencibilgi_kontrol"), title, dialogs, parent), databases_(databases),
      clock_(clock) {
    build(memory);
}

void Frm_ogrencibilgi_kontrol::build(UserMemory& memory) {
    auto* halves = new QSplitter(Qt::Horizontal, this);
    halves->addWidget(buildChecks());
    halves->addWidget(buildFindings(memory));
    halves->setStretchFactor(1, 1);
    halves->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(halves, 1);
    setFocusProxy(checks_);
}

QWidget* Frm_ogrencibilgi_kontrol::buildChecks() {
    auto* half = new QWidget(this);
    auto* label = new QLabel(QStringLiteral("&Denetimler:"), half);
    checks_ = new QListWidget(half);
    checks_->setObjectName(QStringLiteral("denetimler"));
    checks_->setAccessibleName(QStringLiteral("Denetimler"));
    label->setBuddy(checks_);
    for (const RecordCheck& check : recordChecks()) {
        auto* item = new QListWidgetItem(check.title, checks_);
        item->setData(Qt::UserRole, check.key);
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        item->setCheckState(Qt::Checked);
    }
    checks_->setCurrentRow(0);
    const int scrollBar = 28;
    checks_->setMinimumWidth(checks_->sizeHintForColumn(0) + scrollBar);
    auto* all = makeButton("tumu", QStringLiteral("Tü&mü"), QStringLiteral("Bütün denetimleri seçer"), half,
                           [this] { tickAll(true); });
    auto* none = makeButton("hicbiri", QStringLiteral("&Hiçbiri"), QStringLiteral("Hiçbir denetimi seçmez"),
                            half, [this] { tickAll(false); });
    auto* go = makeButton("denetle", QStringLiteral("D&enetle"), QStringLiteral("Seçili denetimleri yapar"),
                          half, [this] { start(); });
    auto* choose = new QHBoxLayout;
    choose->addWidget(all);
    choose->addWidget(none);
    choose->addStretch(1);
    choose->addWidget(go);
    auto* layout = new QVBoxLayout(half);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(checks_, 1);
    layout->addLayout(choose);
    return half;
}

QWidget* Frm_ogrencibilgi_kontrol::buildFindings(UserMemory& memory) {
    auto* half = new QWidget(this);
    grid_ = new ListGrid(QStringLiteral("bulgular"), columns(), dialogs(), memory, half);
    grid_->setKeyColumn(columns().size() - 1);
    grid_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    grid_->setEmptyText(QStringLiteral("Denetimleri seçip “Denetle” düğmesine basınız."));
    result_ = new QLabel(half);
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    auto* show = makeButton(
        "ac", QStringLiteral("&Kaydı Aç"),
        QStringLiteral("Seçili öğrencinin kaydını açar (listede Enter veya çift tıklama)"), half, [this] {
            if (const auto row = grid_->currentRow()) open(*row);
        });
    auto* output = makeButton("yazdir", QStringLiteral("Yazdı&r"),
                              QStringLiteral("Bulguları yazdırır; dosyaya vermek için listenin üstündeki "
                                             "düğmeyi kullanınız"),
                              half, [this] { grid_->outputActions().front()->trigger(); });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             half, [this] { closeWindow(); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* button : {show, output, leave})
        buttons->addWidget(button);
    auto* layout = new QVBoxLayout(half);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(grid_, 1);
    layout->addWidget(result_);
    layout->addLayout(buttons);
    connect(grid_, &ListGrid::activated, this, &Frm_ogrencibilgi_kontrol::open);
    return half;
}

QStringList Frm_ogrencibilgi_kontrol::ticked() const {
    QStringList keys;
    for (int row = 0; row < checks_->count(); ++row)
        if (checks_->item(row)->checkState() == Qt::Checked)
            keys << checks_->item(row)->data(Qt::UserRole).toString();
    return keys;
}

void Frm_ogrencibilgi_kontrol::tickAll(bool ticked) {
    for (int row = 0; row < checks_->count(); ++row)
        checks_->item(row)->setCheckState(ticked ? Qt::Checked : Qt::Unchecked);
}

void Frm_ogrencibilgi_kontrol::start() {
    const QStringList keys = ticked();
    if (keys.isEmpty()) {
        dialogs().message(QStringLiteral("En az bir denetim seçiniz."), QStringLiteral("Uyarı"),
                          Icon::Warning);
        checks_->setFocus();
        return;
    }
    running_ = keys;
    run();
    if (!findings_.list.empty()) grid_->view()->setFocus();
}

void Frm_ogrencibilgi_kontrol::refresh() {
    if (!running_.isEmpty()) run();
}

void Frm_ogrencibilgi_kontrol::run() {
    attempt(objectName(), [this] {
        findings_ = checkRecords(databases_, running_, clock_, dialogs());
        std::vector<ListRow> rows;
        for (size_t i = 0; i < findings_.list.size(); ++i)
            rows.push_back(rowOf(findings_.list[i], i));
        QString sentence = QStringLiteral("%1 öğrenci denetlendi, %2 bulgu var.")
                               .arg(findings_.students)
                               .arg(findings_.list.size());
        if (findings_.stopped) sentence += QStringLiteral(" Denetim durduruldu; kalan denetimler yapılmadı.");
        result_->setText(sentence);
        const Session& session = databases_.session();
        QStringList notes{
            QStringLiteral("%1 - %2 - %3")
                .arg(levelText(session.level), dataSetCaption(session.mode), dateText(clock_.today())),
            sentence};
        if (!session.schoolName.isEmpty()) notes.prepend(session.schoolName);
        grid_->setNotes(notes);
        grid_->setEmptyText(QStringLiteral("Seçili denetimlerde eksik veya çelişki bulunmadı."));
        grid_->setRows(std::move(rows));
    });
}

void Frm_ogrencibilgi_kontrol::open(size_t row) {
    emit openRequested(QStringLiteral("ogrencikayit"), findings_.list[row].number);
}

} // namespace orvan
