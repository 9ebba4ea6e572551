// core/screens/main_window.cpp — child windows, session and state of the main window. Its menus:
// main_menus.cpp.
#include "core/screens/main_window.h"

#include "core/general_error.h"
#include "core/screens/document_box.h"
#include "core/screens/login_dialog.h"
#include "core/screens/program_icon.h"
#include "core/structure_check.h"
#include "widgets/screen.h"
#include "widgets/user_memory.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QProcess>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>

namespace orvan {

namespace {

const QString kWindowPlace = QStringLiteral("AnaPencere/Yer");

QString frameName(const QString& key) { return QStringLiteral("pencere-") + key; }

QString placeKey(const QString& screen) { return QStringLiteral("Pencere-%1/Yer").arg(screen); }

} // namespace

MDIFormORVAN::MDIFormORVAN(const Program& program, QWidget* parent)
    : QMainWindow(parent), program_(program),
      dispatcher_(program_.screens, program_.databases, program_.dialogs, *this), area_(new QMdiArea(this)) {
    setObjectName(QStringLiteral("MDIFormORVAN"));
    QApplication::setWindowIcon(programIcon());
    area_->setObjectName(QStringLiteral("calismaAlani"));
    area_->setBackground(QColor(0xC9, 0xD6, 0xE2));
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(area_);
    buildMenus();
    buildStatusBar();
    resize(1024, 700);
    menuBar()->setEnabled(false);
    toolbar_->setEnabled(false);
    showState();
}

MDIFormORVAN::~MDIFormORVAN() = default;

void MDIFormORVAN::showInPlace() {
    if (restoreGeometry(program_.memory.value(kWindowPlace).toByteArray()))
        show();
    else
        showMaximized();
}

bool MDIFormORVAN::beginSession() {
    LoginDialog login(program_.folder, program_.session, program_.dialogs, program_.memory, this);
    if (login.exec() != QDialog::Accepted) return false;
    try {
        Start start{program_.folder, program_.session, program_.databases, program_.dialogs, program_.host};
        openAfterSignIn(start);
    } catch (const std::exception& error) {
        showGeneralError(program_.dialogs, GeneralError::from(error, QStringLiteral("Connect")));
        return false;
    }
    sessionReady();
    return true;
}

void MDIFormORVAN::sessionReady() {
    program_.memory.setUser(program_.session.user);
    menuBar()->setEnabled(true);
    toolbar_->setEnabled(true);
    showState();
}

void MDIFormORVAN::run(const QString& key) {
    attempt(program_.dialogs, key, [&] { dispatcher_.onCommand(key); });
    showState();
}

QList<Screen*> MDIFormORVAN::openScreens() const {
    QList<Screen*> screens;
    for (QMdiSubWindow* window : area_->subWindowList(QMdiArea::ActivationHistoryOrder))
        if (auto* screen = qobject_cast<Screen*>(window->widget())) screens << screen;
    return screens;
}

QMdiSubWindow* MDIFormORVAN::frameOf(const QString& key) const {
    for (QMdiSubWindow* window : area_->subWindowList())
        if (window->objectName() == frameName(key)) return window;
    return nullptr;
}

// As the menu does it, so the right to enter is asked; then the record, when what is on the screen may go.
void MDIFormORVAN::openRecord(const QString& key, const QString& record) {
    attempt(program_.dialogs, key, [&] { dispatcher_.onRequest(key); });
    QMdiSubWindow* frame = frameOf(key);
    auto* screen = frame ? qobject_cast<Screen*>(frame->widget()) : nullptr;
    if (!screen || !screen->settleUnsaved()) return;
    attempt(program_.dialogs, key, [&] { screen->showRecord(record); });
}

void MDIFormORVAN::openScreen(const ScreenEntry& entry) {
    if (QMdiSubWindow* window = frameOf(entry.key)) {
        if (window->isMinimized()) window->showNormal();
        area_->setActiveSubWindow(window);
        return;
    }
    QWidget* content = entry.factory();
    QMdiSubWindow* window = area_->addSubWindow(content);
    window->setObjectName(frameName(entry.key));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->installEventFilter(this);
    place(window, content->objectName());
    if (auto* screen = qobject_cast<Screen*>(content)) {
        connect(screen, &Screen::recordsChanged, this, [this, screen] {
            for (Screen* other : openScreens())
                if (other != screen && !other->hasUnsaved()) other->refresh();
        });
        connect(screen, &Screen::openRequested, this, &MDIFormORVAN::openRecord);
    }
    window->show();
    content->setFocus();
}

// The remembered place, moved inside the window when that has become smaller; else the content's own size.
void MDIFormORVAN::place(QMdiSubWindow* window, const QString& name) {
    const QSize room = area_->viewport()->size();
    const QStringList stored = program_.memory.value(placeKey(name)).toStringList();
    if (stored.size() == 5) {
        QRect rect(stored[0].toInt(), stored[1].toInt(), stored[2].toInt(), stored[3].toInt());
        rect.setSize(rect.size().boundedTo(room).expandedTo(window->minimumSizeHint()));
        rect.moveLeft(std::max(0, std::min(rect.left(), room.width() - rect.width())));
        rect.moveTop(std::max(0, std::min(rect.top(), room.height() - rect.height())));
        window->setGeometry(rect);
        if (stored[4] == QLatin1String("1")) window->setWindowState(Qt::WindowMaximized);
        return;
    }
    const QSize size = window->sizeHint().boundedTo(room);
    const auto step = static_cast<int>((area_->subWindowList().size() - 1) % 8) * 24;
    window->setGeometry(QRect(
        QPoint(std::min(step, room.width() - size.width()), std::min(step, room.height() - size.height())),
        size));
}

void MDIFormORVAN::rememberPlace(QMdiSubWindow* window) {
    if (!window->widget() || window->isMinimized()) return;
    const QString key = placeKey(window->widget()->objectName());
    QStringList stored = program_.memory.value(key).toStringList();
    const bool maximized = window->isMaximized();
    if (!maximized || stored.size() != 5) {
        const QRect rect = window->geometry();
        stored = QStringList{QString::number(rect.x()),
                             QString::number(rect.y()),
                             QString::number(rect.width()),
                             QString::number(rect.height()),
                             {}};
    }
    stored[4] = maximized ? QStringLiteral("1") : QStringLiteral("0");
    program_.memory.setValue(key, stored);
}

bool MDIFormORVAN::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Close)
        if (auto* window = qobject_cast<QMdiSubWindow*>(watched)) rememberPlace(window);
    return QMainWindow::eventFilter(watched, event);
}

bool MDIFormORVAN::settleScreens() {
    for (Screen* screen : openScreens()) {
        if (!screen->hasUnsaved()) continue;
        area_->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(screen->parentWidget()));
        if (!screen->settleUnsaved()) return false;
    }
    return true;
}

// REQUIRES: settleScreens(); so none of them asks.
void MDIFormORVAN::closeScreens() { area_->closeAllSubWindows(); }

void MDIFormORVAN::databaseChanged() {
    closeScreens();
    showState();
}

void MDIFormORVAN::signInAgain() {
    closeScreens();
    program_.databases.close();
    program_.memory.setUser({});
    menuBar()->setEnabled(false);
    toolbar_->setEnabled(false);
    showState();
    QTimer::singleShot(0, this, [this] {
        if (!beginSession()) quit();
    });
}

void MDIFormORVAN::quit() { close(); }

void MDIFormORVAN::showDocument(const QString& file) { DocumentBox(file, this).exec(); }

bool MDIFormORVAN::startProgram(const QString& file) {
    return QProcess::startDetached(file, {}, program_.folder.path());
}

void MDIFormORVAN::closeEvent(QCloseEvent* event) {
    if (!settleScreens()) {
        event->ignore();
        return;
    }
    closeScreens();
    program_.databases.close();
    const QString user = program_.session.user;
    program_.memory.setUser({}); // the frame's place belongs to the computer, not to a user
    program_.memory.setValue(kWindowPlace, saveGeometry());
    program_.memory.setUser(user);
    event->accept();
}

void MDIFormORVAN::buildStatusBar() {
    const auto add = [this](const char* name, int stretch) {
        auto* label = new QLabel(this);
        label->setObjectName(QString::fromLatin1(name));
        label->setTextFormat(Qt::PlainText);
        label->setContentsMargins(4, 0, 12, 0);
        statusBar()->addWidget(label, stretch);
        return label;
    };
    level_ = add("durumDuzey", 0);
    dataSet_ = add("durumVeri", 0);
    school_ = add("durumOkul", 1);
    user_ = add("durumKullanici", 0);
}

void MDIFormORVAN::showState() {
    const Session& session = program_.session;
    QString title = QStringLiteral("ORVAN - Mesleki Eğitim Merkezi Öğrenci Takip Programı  Ver: %1")
                        .arg(releaseText(thisRelease()));
    if (session.mode != DataSetMode::Working)
        title += QStringLiteral("  [%1]").arg(dataSetCaption(session.mode));
    setWindowTitle(title);
    const bool open = program_.databases.isOpen();
    QString level = levelText(session.level);
    if (session.equivalence) level += QStringLiteral(" Denklik");
    level_->setText(open ? QStringLiteral("Düzey: %1").arg(level) : QString());
    QString dataSet = dataSetCaption(session.mode);
    if (session.mode != DataSetMode::Working) dataSet += QLatin1Char(' ') + session.schoolYear;
    dataSet_->setText(open ? QStringLiteral("Veri: %1").arg(dataSet) : QString());
    school_->setText(open ? session.schoolName : QString());
    user_->setText(session.user.isEmpty() ? QStringLiteral("Giriş yapılmadı")
                                          : QStringLiteral("Kullanıcı: %1").arg(session.user));
    const auto check = [](QActionGroup* group, const QString& key) {
        for (QAction* action : group->actions())
            action->setChecked(action->data().toString() == key);
    };
    check(levels_, levelCommand(session));
    check(dataSets_, dataSetCommand(session));
}

} // namespace orvan
