// core/screens/form_kullanici1.cpp — the screen "Yeni Kullanıcı / Kullanıcı
// Hakları".
#include "core/screens/form_kullanici1.h"

#include "widgets/tick_list.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace orvan {

namespace {

const QString kEnter = QStringLiteral("giris");
const QString kWrite = QStringLiteral("yazma");

// Headings and main titles stand at the top; the heading's own text is its key.
std::vector<TickRow> treeRows(const UserRights& marks) {
    std::vector<TickRow> rows;
    QString parent;
    size_t next = 0;
    for (const TitleNode& node : rightsTree()) {
        const bool isTitle = node.kind != TitleKind::Heading;
        const Rights mark = isTitle ? marks[next++] : Rights();
        const bool isTop = node.kind != TitleKind::Sub;
        if (isTop) parent = node.text;
        rows.push_back({node.text, isTop ? QString() : parent, {node.text}, {mark.enter, mark.write}});
    }
    return rows;
}

} // namespace

Form_Kullanici1::Form_Kullanici1(DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                                 QWidget* parent)
    : Screen(QStringLiteral("Form_Kullanici1"), UserAdministration::title(), dialogs, parent),
      administration_(databases, dialogs) {
    build(memory);
    attempt(objectName(), [&] { listUsers(databases.session().user); });
}

void Form_Kullanici1::build(UserMemory& memory) {
    users_ = new QListWidget(this);
    users_->setObjectName(QStringLiteral("kullanicilar"));
    users_->setAccessibleName(QStringLiteral("Kullanıcılar"));
    auto* layout = new QHBoxLayout(this);
    layout->addLayout(buildUserSide()); // before the rights: Tab goes in the order they are made
    rights_ = new TickList(
        QStringLiteral("haklar"), {{QStringLiteral("ekran"), QStringLiteral("Ekran"), ListKind::Text, 60}},
        {{kEnter, QStringLiteral("Giriş")}, {kWrite, QStringLiteral("Değiştirme")}}, dialogs(), memory, this);
    layout->addLayout(buildRightsSide(), 1);
    setFocusProxy(users_);
    connect(users_, &QListWidget::currentRowChanged, this, [this] { selectUser(); });
    connect(rights_, &TickList::dirtyChanged, this, [this](bool dirty) { setUnsaved(dirty); });
}

QBoxLayout* Form_Kullanici1::buildUserSide() {
    auto* caption = new QLabel(QStringLiteral("&Kullanıcılar:"), this);
    caption->setBuddy(users_);
    users_->setFixedWidth(fontMetrics().averageCharWidth() * 28);
    auto* side = new QVBoxLayout;
    side->addWidget(caption);
    side->addWidget(users_, 1);
    const auto add = [&](const char* name, const char* text, const char* hint,
                         void (Form_Kullanici1::*run)()) {
        connect(addButton(side, name, text, hint), &QPushButton::clicked, this,
                [this, run] { attempt(objectName(), [this, run] { (this->*run)(); }); });
    };
    add("yeni", "Y&eni Kullanıcı…", "Yeni kullanıcı açar", &Form_Kullanici1::addUser);
    add("sifre", "Şi&fre Değiştir…", "Seçili kullanıcıya yeni şifre verir", &Form_Kullanici1::changePassword);
    add("sil", "&Sil…", "Seçili kullanıcıyı ve haklarını siler", &Form_Kullanici1::removeUser);
    return side;
}

QBoxLayout* Form_Kullanici1::buildRightsSide() {
    auto *enter = new QVBoxLayout, *write = new QVBoxLayout; // four in a row are too wide for large letters
    addBulkButton(enter, "girisVer", "Giriş &Haklarını Ver", kEnter, true);
    addBulkButton(enter, "girisAl", "Giriş Hakla&rını Al", kEnter, false);
    addBulkButton(write, "yazmaVer", "Değiştir&me Haklarını Ver", kWrite, true);
    addBulkButton(write, "yazmaAl", "Değiştirme Hakları&nı Al", kWrite, false);
    auto* bulk = new QHBoxLayout;
    bulk->addLayout(enter);
    bulk->addLayout(write);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    connect(addButton(buttons, "kaydet", "Kay&det", "İşaretleri kaydeder (Ctrl+S)"), &QPushButton::clicked,
            this, [this] { save(); });
    connect(addButton(buttons, "kapat", "Kapa&t", "Pencereyi kapatır (Esc)"), &QPushButton::clicked, this,
            &Screen::closeWindow);
    whose_ = new QLabel(this);
    whose_->setObjectName(QStringLiteral("kimin"));
    whose_->setTextFormat(Qt::PlainText);
    auto* side = new QVBoxLayout;
    side->addWidget(whose_);
    side->addWidget(rights_, 1);
    side->addLayout(bulk);
    side->addLayout(buttons);
    return side;
}

QPushButton* Form_Kullanici1::addButton(QBoxLayout* layout, const char* name, const char* text,
                                        const char* hint) {
    auto* button = new QPushButton(QString::fromUtf8(text), this);
    button->setObjectName(QString::fromLatin1(name));
    button->setToolTip(QString::fromUtf8(hint));
    layout->addWidget(button);
    return button;
}

void Form_Kullanici1::addBulkButton(QBoxLayout* layout, const char* name, const char* text,
                                    const QString& column, bool granted) {
    const auto* button = addButton(layout, name, text,
                                   "Bütün ekranların işaretini birden "
                                   "değiştirir; kaydedilene kadar geçerli olmaz");
    connect(button, &QPushButton::clicked, this, [this, column, granted] {
        attempt(objectName(), [&] {
            if (shown_.isEmpty() || !administration_.requireChange()) return;
            rights_->setFilter({}); // all rows, not only those on view
            rights_->setAllTicked(column, granted);
        });
    });
}

void Form_Kullanici1::listUsers(const QString& current) {
    {
        const QSignalBlocker quiet(users_);
        users_->clear();
        users_->addItems(administration_.users());
        const auto found = users_->findItems(current, Qt::MatchFixedString | Qt::MatchCaseSensitive);
        users_->setCurrentRow(found.isEmpty() ? 0 : users_->row(found.first()));
    }
    showRights();
}

// Another user was chosen: what is unsaved is settled first; when it cannot be,
// the old one stays.
void Form_Kullanici1::selectUser() {
    const QListWidgetItem* item = users_->currentItem();
    if (!item || item->text() == shown_) return;
    if (!hasUnsaved() || settleUnsaved()) {
        attempt(objectName(), [this] { showRights(); });
        return;
    }
    const auto found = users_->findItems(shown_, Qt::MatchFixedString | Qt::MatchCaseSensitive);
    const QSignalBlocker quiet(users_);
    if (!found.isEmpty()) users_->setCurrentItem(found.first());
}

void Form_Kullanici1::showRights() {
    const QListWidgetItem* item = users_->currentItem();
    shown_ = item ? item->text() : QString();
    loaded_ = administration_.rights(shown_);
    const QString caption = QStringLiteral("Kullanıcı Hakları: %1").arg(shown_);
    whose_->setText(caption);
    rights_->setTitle(caption);
    rights_->setReadOnly(!administration_.mayChange());
    rights_->setRows(treeRows(loaded_));
    setUnsaved(false);
}

UserRights Form_Kullanici1::marks() const {
    UserRights marks;
    for (const QString& title : programTitles())
        marks.push_back({rights_->isTicked(title, kEnter), rights_->isTicked(title, kWrite)});
    return marks;
}

bool Form_Kullanici1::save() { return store(UserAdministration::Ask::Yes); }
bool Form_Kullanici1::saveOnLeaving() { return store(UserAdministration::Ask::AlreadyDone); }

bool Form_Kullanici1::store(UserAdministration::Ask ask) {
    bool saved = false;
    attempt(objectName(), [&] {
        if (shown_.isEmpty() || !administration_.saveRights(shown_, loaded_, marks(), ask)) return;
        loaded_ = administration_.rights(shown_);
        rights_->acceptAsLoaded();
        setUnsaved(false);
        saved = true;
    });
    return saved;
}

void Form_Kullanici1::discardChanges() { rights_->revert(); }

void Form_Kullanici1::refresh() {
    if (hasUnsaved() && !settleUnsaved()) return;
    attempt(objectName(), [this] { listUsers(shown_); });
}

void Form_Kullanici1::addUser() {
    if (!settleUnsaved()) return;
    if (const auto name = administration_.newUser()) listUsers(*name);
}

void Form_Kullanici1::changePassword() {
    if (!shown_.isEmpty()) administration_.changePassword(shown_);
}

void Form_Kullanici1::removeUser() {
    if (shown_.isEmpty() || !administration_.removeUser(shown_)) return;
    discardChanges(); // of a user who is gone
    listUsers({});
}

} // namespace orvan
