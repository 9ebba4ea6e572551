// widgets/screen.cpp — closing with the question about unsaved work, and the keys all screens share.
#include "widgets/screen.h"

#include "core/general_error.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMdiSubWindow>

namespace orvan {

Screen::Screen(const QString& name, const QString& title, Dialogs& dialogs, QWidget* parent)
    : QWidget(parent), dialogs_(dialogs) {
    setObjectName(name);
    setWindowTitle(title + QStringLiteral("[*]"));
    const auto shortcut = [this](QKeySequence keys, auto run) {
        auto* action = new QAction(this);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        action->setAutoRepeat(false); // a held key must not save twice
        connect(action, &QAction::triggered, this, run);
        addAction(action);
    };
    shortcut(QKeySequence(Qt::CTRL | Qt::Key_S), [this] { save(); });
    shortcut(QKeySequence(Qt::Key_F5), [this] { refresh(); });
}

bool Screen::settleUnsaved() {
    if (!hasUnsaved()) return true;
    const Answer answer =
        dialogs_.askYesNo(QStringLiteral("Yapmış olabileceğiniz değişiklikleri kaydetmeden çıkmak "
                                         "üzeresiniz.\nBilgileriniz kayıt edilsin mi?"),
                          QStringLiteral("Uyarı"), Answer::Yes);
    if (answer == Answer::Yes) return saveOnLeaving();
    discardChanges();
    setUnsaved(false);
    return true;
}

void Screen::closeEvent(QCloseEvent* event) {
    if (settleUnsaved())
        event->accept();
    else
        event->ignore();
}

void Screen::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier) {
        closeWindow();
        return;
    }
    QWidget::keyPressEvent(event);
}

void Screen::closeWindow() {
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (frame)
        frame->close();
    else
        close();
}

void Screen::attempt(const QString& routine, const std::function<void()>& work) {
    orvan::attempt(dialogs_, routine, work);
}

bool attempt(Dialogs& dialogs, const QString& routine, const std::function<void()>& work) {
    try {
        work();
        return true;
    } catch (const std::exception& error) {
        const auto general = GeneralError::from(error, routine);
        if (showGeneralError(dialogs, general, AfterError::MayContinue) == AfterError::EndProgram)
            QApplication::quit();
        return false;
    }
}

} // namespace orvan
