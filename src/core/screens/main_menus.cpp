// core/screens/main_menus.cpp — menus and toolbar of the main window, made from the menu plan.
#include "core/screens/main_window.h"
#include "core/screens/menu_plan.h"

#include <algorithm>
#include <QAction>
#include <QActionGroup>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QToolBar>

namespace orvan {

namespace {

// Keys that work in every screen; those of commands are read from the menus.
constexpr struct {
    const char* keys;
    const char* meaning;
} kSharedKeys[] = {
    {"Enter", "Sonraki alana geçer; son alandan sonra Kaydet düğmesine gider"},
    {"Tab / Shift+Tab", "Sonraki / önceki alan"},
    {"Esc", "Alanın eski değerini geri verir; değişmemişse pencereyi kapatır"},
    {"Ctrl+S", "Kaydeder"},
    {"Ctrl+N", "Yeni kayıt"},
    {"Ctrl+Z", "Yazılanı, sonra kaydedilmemiş bütün kaydı geri alır"},
    {"F5", "Bilgileri yeniden okur"},
    {"Ctrl+F, F3", "Listede arar"},
    {"Ctrl+C", "Seçili satırları kopyalar"},
    {"Ctrl+A", "Bütün satırları seçer"},
    {"Ctrl+P", "Listeyi yazdırır"},
    {"Ctrl+Tab", "Sonraki pencere"},
    {"Ctrl+F4", "Pencereyi kapatır"},
    {"Alt+F4", "Programdan çıkar"},
};

} // namespace

void MDIFormORVAN::buildMenus() {
    toolbar_ = addToolBar(QStringLiteral("Araç çubuğu"));
    toolbar_->setObjectName(QStringLiteral("aracCubugu"));
    toolbar_->setMovable(false);
    toolbar_->setContextMenuPolicy(Qt::PreventContextMenu);
    toolbar_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    levels_ = new QActionGroup(this);
    dataSets_ = new QActionGroup(this);
    for (const MenuPlan& plan : menuPlans())
        if (QMenu* menu = makeMenu(plan, this)) menuBar()->addMenu(menu);
    buildWindowMenu();
    buildHelpMenu();
}

QMenu* MDIFormORVAN::makeMenu(const MenuPlan& plan, QWidget* parent) {
    auto* menu = new QMenu(QString::fromUtf8(plan.text), parent);
    menu->setObjectName(QString::fromLatin1(plan.name));
    for (const MenuCommand& command : plan.commands)
        addCommand(menu, command);
    const auto entries = menu->actions();
    if (std::any_of(entries.begin(), entries.end(), [](QAction* entry) { return !entry->isSeparator(); }))
        return menu;
    delete menu;
    return nullptr;
}

void MDIFormORVAN::addCommand(QMenu* menu, const MenuCommand& command) {
    if (command.submenu) {
        if (QMenu* submenu = makeMenu(*command.submenu, menu)) menu->addMenu(submenu);
        return;
    }
    if (!command.key) {
        menu->addSeparator(); // Qt draws none at the ends of a menu and never two together
        return;
    }
    const QString key = QString::fromUtf8(command.key);
    if (!dispatcher_.available(key)) return;
    QAction* action = menu->addAction(QString::fromUtf8(command.text));
    action->setObjectName(key);
    action->setData(key);
    action->setAutoRepeat(false);
    if (command.shortcut) action->setShortcut(QKeySequence(QString::fromLatin1(command.shortcut)));
    connect(action, &QAction::triggered, this, [this, key] { run(key); });
    const CommandKind kind = findCommand(key)->kind;
    if (kind == CommandKind::Level || kind == CommandKind::DataSet) {
        action->setCheckable(true);
        (kind == CommandKind::Level ? levels_ : dataSets_)->addAction(action);
    }
    if (command.toolbar) addToToolbar(action, command);
}

void MDIFormORVAN::addToToolbar(QAction* action, const MenuCommand& command) {
    action->setIconText(QString::fromUtf8(command.toolbar));
    if (command.shortcut)
        action->setToolTip(QStringLiteral("%1 (%2)").arg(action->text().remove(u'&'),
                                                         QString::fromLatin1(command.shortcut)));
    toolbar_->addAction(action);
}

void MDIFormORVAN::buildWindowMenu() {
    windowMenu_ = menuBar()->addMenu(QStringLiteral("&Pencere"));
    windowMenu_->setObjectName(QStringLiteral("menuPencere"));
    connect(windowMenu_, &QMenu::aboutToShow, this, &MDIFormORVAN::fillWindowMenu);
    fillWindowMenu();
}

void MDIFormORVAN::fillWindowMenu() {
    windowMenu_->clear();
    const auto windows = area_->subWindowList(QMdiArea::CreationOrder);
    const auto add = [&](const char* name, const QString& text, auto run) {
        QAction* action = windowMenu_->addAction(text, area_, run);
        action->setObjectName(QString::fromLatin1(name));
        action->setEnabled(!windows.isEmpty());
    };
    add("doseme", QStringLiteral("&Döşe"), &QMdiArea::tileSubWindows);
    add("basamak", QStringLiteral("&Basamakla"), &QMdiArea::cascadeSubWindows);
    add("sonrakiPencere", QStringLiteral("&Sonraki pencere"), &QMdiArea::activateNextSubWindow);
    add("tumunuKapat", QStringLiteral("&Tümünü kapat"), &QMdiArea::closeAllSubWindows);
    if (windows.isEmpty()) return;
    windowMenu_->addSeparator();
    int number = 1;
    for (QMdiSubWindow* window : windows) {
        QString title = window->windowTitle();
        title.replace(QStringLiteral("[*]"), window->isWindowModified() ? QStringLiteral("*") : QString());
        title.replace(u'&', QStringLiteral("&&"));
        const QString letter = number <= 9 ? QStringLiteral("&%1 ").arg(number) : QString();
        QAction* action = windowMenu_->addAction(letter + title);
        action->setCheckable(true);
        action->setChecked(window == area_->activeSubWindow());
        connect(action, &QAction::triggered, window, [this, window] { area_->setActiveSubWindow(window); });
        ++number;
    }
}

void MDIFormORVAN::buildHelpMenu() {
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&Yardım"));
    menu->setObjectName(QStringLiteral("menuYardim"));
    addCommand(menu, {"Kullanım Kılavuzu", "Kullanım &Kılavuzu"});
    QAction* keys = menu->addAction(QStringLiteral("Kısayol &Tuşları"), this, &MDIFormORVAN::showShortcuts);
    keys->setObjectName(QStringLiteral("kisayolTuslari"));
    keys->setShortcut(QKeySequence(Qt::Key_F1));
    addCommand(menu, {"Versiyonda Yapılanlar", "&Versiyonda Yapılanlar"});
    addCommand(menu, {"İl İlçe Güncelleme", "İl İlçe &Güncelleme"});
}

void MDIFormORVAN::showShortcuts() {
    QDialog box(this);
    box.setObjectName(QStringLiteral("kisayollar"));
    box.setWindowTitle(QStringLiteral("Kısayol Tuşları"));
    auto* layout = new QGridLayout(&box);
    layout->setHorizontalSpacing(fontMetrics().averageCharWidth() * 3);
    int row = 0;
    const auto add = [&](const QString& keys, const QString& meaning) {
        auto* name = new QLabel(keys, &box);
        QFont bold = name->font();
        bold.setBold(true);
        name->setFont(bold);
        layout->addWidget(name, row, 0);
        layout->addWidget(new QLabel(meaning, &box), row++, 1);
    };
    for (const QMenu* menu : findChildren<QMenu*>())
        for (const QAction* action : menu->actions())
            if (!action->shortcut().isEmpty())
                add(action->shortcut().toString(QKeySequence::NativeText), action->text().remove(u'&'));
    for (const auto& shared : kSharedKeys)
        add(QString::fromUtf8(shared.keys), QString::fromUtf8(shared.meaning));
    auto* buttons = new QDialogButtonBox(&box);
    QPushButton* ok = buttons->addButton(QStringLiteral("&Tamam"), QDialogButtonBox::AcceptRole);
    ok->setObjectName(QStringLiteral("tamam"));
    connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
    layout->addWidget(buttons, row, 0, 1, 2);
    box.exec();
}

} // namespace orvan
