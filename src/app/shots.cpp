// app/shots.cpp — saves pictures of the screens.
#include "app/shots.h"

#include "core/screens/login_dialog.h"
#include "core/screens/main_window.h"
#include "core/values.h"
#include "widgets/screen.h"

#include <QApplication>
#include <QDir>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>

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

} // namespace

QStringList takeShots(MDIFormORVAN& window, const Program& program, const QString& folder) {
    Album album(folder);
    Session nobody;
    LoginDialog login(program.folder, nobody, program.dialogs, program.memory, &window);
    login.show();
    album.add(login, QStringLiteral("giris"));
    login.hide();

    album.add(window, QStringLiteral("ana_pencere"));
    for (QAction* entry : window.menuBar()->actions()) {
        QMenu* menu = entry->menu();
        menu->popup(window.mapToGlobal(QPoint(0, window.menuBar()->height())));
        album.add(*menu, menu->objectName());
        menu->hide();
    }
    for (const ScreenEntry& entry : program.screens.entries()) {
        window.openScreen(entry);
        const auto screens = window.openScreens();
        auto* frame = qobject_cast<QMdiSubWindow*>(screens.last()->parentWidget());
        QWidget* content = screens.last();
        album.add(window, content->objectName() + QStringLiteral("-pencerede"));
        album.add(*content, content->objectName());
        frame->close();
        QApplication::sendPostedEvents(frame, QEvent::DeferredDelete);
    }
    return album.files();
}

} // namespace orvan
