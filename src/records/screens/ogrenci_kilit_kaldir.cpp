// records/screens/ogrenci_kilit_kaldir.cpp — see ogrenci_kilit_kaldir.h.
#include "records/screens/ogrenci_kilit_kaldir.h"

#include "core/users.h"
#include "records/lock_status.h"
#include "reference/screens/screen_buttons.h"
#include "widgets/grid.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kExplanation = QStringLiteral(
    "Öğrenciler tek tek kilitlenmez. Bir veritabanını açan her bilgisayar, yanındaki kilit dosyasına (.ldb) "
    "yazılır; yazarken kısa süreyle kilitler ve program kapanınca kilidi kendiliğinden kalkar. Elektrik veya "
    "ağ kesilirse yalnız dosyanın kendisi geride kalabilir. “Artık Kilitleri Kaldır”, kimsenin kullanmadığı "
    "veritabanlarında kalan kilit dosyalarını kaldırır ve yarım kalmış yazmaları geri alır; kullanılan "
    "veritabanlarına dokunmaz. Bir kilit sürüyorsa listedeki bilgisayarda programı kapatınız.");

std::vector<ListColumn> columns() {
    return {
        {QStringLiteral("dosya"), QStringLiteral("Veritabanı"), ListKind::Text, 18},
        {QStringLiteral("durum"), QStringLiteral("Durum"), ListKind::Text, 40},
        {QStringLiteral("kullananlar"), QStringLiteral("Kullanan bilgisayarlar"), ListKind::Text, 36},
    };
}

ListRow rowOf(const LockStatus& status) {
    QStringList computers = status.others;
    if (status.own) computers.prepend(QStringLiteral("bu program"));
    return {QFileInfo(status.file).fileName(), status.words(), computers.join(QStringLiteral(", "))};
}

} // namespace

OgrenciKilitKaldir::OgrenciKilitKaldir(const QString& title, DatabaseSet& databases, Dialogs& dialogs,
                                       UserMemory& memory, QWidget* parent)
    : Screen(QStringLiteral("OgrenciKilitKaldir"), title, dialogs, parent), databases_(databases) {
    build(memory);
    refresh();
}

void OgrenciKilitKaldir::build(UserMemory& memory) {
    auto* explanation = new QLabel(kExplanation, this);
    explanation->setObjectName(QStringLiteral("aciklama"));
    explanation->setTextFormat(Qt::PlainText);
    explanation->setWordWrap(true);
    grid_ = new ListGrid(QStringLiteral("kilitler"), columns(), dialogs(), memory, this);
    grid_->setTitle(windowTitle().remove(QStringLiteral("[*]")));
    grid_->setEmptyText(QStringLiteral("Veritabanı yok."));
    result_ = new QLabel(this);
    result_->setObjectName(QStringLiteral("sonuc"));
    result_->setTextFormat(Qt::PlainText);
    result_->setWordWrap(true);
    remove_ = makeButton("kaldir", QStringLiteral("Artık &Kilitleri Kaldır"),
                         QStringLiteral("Kimsenin kullanmadığı veritabanlarının artık kilitlerini kaldırır"),
                         this, [this] { removeLeft(); });
    auto* again = makeButton("yenile", QStringLiteral("Y&enile"), QStringLiteral("Yeniden bakar (F5)"), this,
                             [this] { refresh(); });
    auto* leave = makeButton("kapat", QStringLiteral("Kapa&t"), QStringLiteral("Pencereyi kapatır (Esc)"),
                             this, [this] { closeWindow(); });
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    for (QPushButton* button : {remove_, again, leave})
        buttons->addWidget(button);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(explanation);
    layout->addWidget(grid_, 1);
    layout->addWidget(result_);
    layout->addLayout(buttons);
    setFocusProxy(grid_);
}

void OgrenciKilitKaldir::refresh() {
    attempt(objectName(), [this] { load(); });
}

void OgrenciKilitKaldir::load() {
    std::vector<ListRow> rows;
    int left = 0;
    for (const LockStatus& status : lockStatus(databases_)) {
        rows.push_back(rowOf(status));
        left += status.leftBehind() || (status.journal && !status.inUse());
    }
    grid_->setRows(std::move(rows));
    result_->setText(left == 0 ? QStringLiteral("Artık kilit yok.")
                               : QStringLiteral("%1 veritabanında artık kilit var.").arg(left));
}

void OgrenciKilitKaldir::removeLeft() {
    const QString title = windowTitle().remove(QStringLiteral("[*]"));
    attempt(objectName(), [&] {
        if (!mayWrite(databases_.constants().sql(), databases_.session().user, title, dialogs())) return;
        const QStringList report = removeLeftLocks(databases_);
        load();
        result_->setText(report.isEmpty() ? QStringLiteral("Kaldırılacak artık kilit yok.")
                                          : report.join(QLatin1Char('\n')));
    });
}

} // namespace orvan
