// widgets/list_output.cpp — printing and exporting a list.
#include "widgets/list_output.h"

#include "core/values.h"
#include "widgets/list_export.h"
#include "widgets/list_print.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QToolButton>

namespace orvan {

ListOutput::ListOutput(QWidget* owner, std::function<ListSheet()> sheet, Dialogs& dialogs, UserMemory& memory)
    : QObject(owner), owner_(owner), sheet_(std::move(sheet)), dialogs_(dialogs), memory_(memory) {
    QAction* print = add("yazdir", QStringLiteral("&Yazdır…"), &ListOutput::print);
    print->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    print->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    owner->addAction(print);
    add("pdf", QStringLiteral("&PDF dosyası…"), &ListOutput::exportPdf);
    add("excel", QStringLiteral("&Excel dosyası (.xlsx)…"), &ListOutput::exportXlsx);
    add("csv", QStringLiteral("&CSV dosyası…"), &ListOutput::exportCsv);
}

QAction* ListOutput::add(const char* name, const QString& text, void (ListOutput::*run)()) {
    auto* action = new QAction(text, owner_);
    action->setObjectName(QString::fromLatin1(name));
    connect(action, &QAction::triggered, this, run);
    actions_.push_back(action);
    return action;
}

QToolButton* ListOutput::makeButton(QWidget* parent) const {
    auto* menu = new QMenu(parent);
    for (QAction* action : actions_)
        menu->addAction(action);
    return makeMenuButton("cikti", QStringLiteral("Yazdır / Dışa Aktar"), menu, parent);
}

void ListOutput::print() {
    try {
        previewList(sheet_(), owner_->window(), memory_);
    } catch (const jet::Error& error) {
        dialogs_.message(errorText(error), QStringLiteral("Yazdırma"), Icon::Critical);
    }
}

void ListOutput::exportFile(const QString& what, const QString& filter,
                            void (*write)(const ListSheet&, const QString&)) {
    const ListSheet shown = sheet_();
    const auto path = dialogs_.chooseSaveFile(what, filter, shown.title);
    if (!path) return;
    try {
        QApplication::setOverrideCursor(Qt::WaitCursor);
        struct Restore {
            ~Restore() { QApplication::restoreOverrideCursor(); }
        } restore;
        write(shown, *path);
    } catch (const jet::Error& error) {
        dialogs_.message(errorText(error), what, Icon::Critical);
    }
}

void ListOutput::exportPdf() {
    exportFile(QStringLiteral("PDF Dosyasına Aktar"), QStringLiteral("PDF dosyaları|*.pdf"), writePdf);
}

void ListOutput::exportXlsx() {
    exportFile(QStringLiteral("Excel Dosyasına Aktar"), QStringLiteral("Excel dosyaları|*.xlsx"), writeXlsx);
}

void ListOutput::exportCsv() {
    exportFile(QStringLiteral("CSV Dosyasına Aktar"), QStringLiteral("CSV dosyaları|*.csv"), writeCsv);
}

QToolButton* makeMenuButton(const char* name, const QString& text, QMenu* menu, QWidget* parent) {
    auto* button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(text + QStringLiteral("  ")); // room for the arrow
    button->setMenu(menu);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

} // namespace orvan
