// app/shots.cpp — saves pictures of the screens.
#include "app/shots.h"

#include "app/program_start.h"
#include "core/screens/login_dialog.h"
#include "core/screens/main_window.h"
#include "core/values.h"
#include "widgets/screen.h"

#include <QApplication>
#include <QDir>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QRegularExpression>
#include <QTabWidget>

namespace orvan {

namespace {

class Album {
  public:
    explicit Album(const QString& folder) : folder_(folder) {
        if (!folder_.mkpath(QStringLiteral("."))) fail(folder);
    }

    void add(QWidget& widget, const QString& name) {
        QApplication::processEvents();
        const QString file = folder_.filePath(name + QStringLiteral(".png"));
        if (!widget.grab().save(file)) fail(file);
        files_ << file;
    }
    const QStringList& files() const { return files_; }

  private:
    [[noreturn]] static void fail(const QString& path) {
        jet::Error error(jet::Err::DiskIO, "Resim dosyası yazılamadı.");
        throw error.inFile(utf8(path));
    }
    QDir folder_;
    QStringList files_;
};

// The pictures show the program as its first user sees it.
void takeFirstUser(MDIFormORVAN& window, const Program& program) {
    const auto users = program.databases.constants().sql().query("Select Kullanici_Adi From Kullanici");
    if (!program.session.user.isEmpty() || users.empty()) return;
    program.session.user = trimmedText(users.at(0, size_t{0}));
    window.sessionReady();
}

void shootStart(Album& album, MDIFormORVAN& window, const Program& program) {
    const auto splash = makeProgramSplash();
    splash->setSchool(program.session.schoolName);
    splash->showStep(QStringLiteral("Veritabanlarına bağlanılıyor…"));
    album.add(*splash, QStringLiteral("acilis"));
    Session nobody;
    LoginDialog login(program.folder, nobody, program.dialogs, program.memory, &window);
    login.show();
    album.add(login, QStringLiteral("giris"));
}

void shootMenus(Album& album, MDIFormORVAN& window) {
    for (QMenu* menu : window.findChildren<QMenu*>(QRegularExpression(QStringLiteral("^menu")))) {
        menu->popup(window.mapToGlobal(QPoint(0, window.menuBar()->height())));
        album.add(*menu, menu->objectName());
        menu->hide();
    }
}

// Each page of the outermost tabs that is not the one on view, by its place: "-2", "-3", …
void shootPages(Album& album, QWidget& content, const QString& name) {
    auto* tabs = content.findChild<QTabWidget*>();
    if (!tabs) return;
    const int first = tabs->currentIndex();
    for (int page = 0; page < tabs->count(); ++page) {
        if (page == first) continue;
        tabs->setCurrentIndex(page);
        album.add(content, QStringLiteral("%1-%2").arg(name).arg(page + 1));
    }
    tabs->setCurrentIndex(first);
}

void shootScreens(Album& album, MDIFormORVAN& window, const ScreenRegistry& registry) {
    for (const ScreenEntry& entry : registry.entries()) {
        window.openScreen(entry);
        Screen* content = window.openScreens().last();
        const QString name = QStringLiteral("%1-%2").arg(entry.window, entry.key);
        album.add(window, name + QStringLiteral("-pencerede"));
        album.add(*content, name);
        shootPages(album, *content, name);
        auto* frame = content->parentWidget();
        frame->close();
        QApplication::sendPostedEvents(frame, QEvent::DeferredDelete);
    }
}

} // namespace

QStringList takeShots(MDIFormORVAN& window, const Program& program, const QString& folder) {
    Album album(folder);
    takeFirstUser(window, program);
    shootStart(album, window, program);
    album.add(window, QStringLiteral("ana_pencere"));
    shootMenus(album, window);
    shootScreens(album, window, program.screens);
    return album.files();
}

} // namespace orvan
