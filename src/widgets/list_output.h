// widgets/list_output.h — "Yazdır…", "PDF…", "Excel…", "CSV…" of whatever gives a ListSheet.
#pragma once

#include "core/dialogs.h"
#include "widgets/list_sheet.h"

#include <functional>
#include <QObject>

class QAction;
class QMenu;
class QToolButton;
class QWidget;

namespace orvan {

class UserMemory;

class ListOutput : public QObject {
    Q_OBJECT

  public:
    // `owner`: the list; Ctrl+P in it prints. `sheet` is asked when an action runs. All must outlive it.
    ListOutput(QWidget* owner, std::function<ListSheet()> sheet, Dialogs& dialogs, UserMemory& memory);

    const std::vector<QAction*>& actions() const { return actions_; }
    QToolButton* makeButton(QWidget* parent) const; // "Yazdır / Dışa Aktar"

  private:
    QAction* add(const char* name, const QString& text, void (ListOutput::*run)());
    void print();
    void exportFile(const QString& what, const QString& filter,
                    void (*write)(const ListSheet&, const QString&));
    void exportPdf();
    void exportXlsx();
    void exportCsv();

    QWidget* owner_;
    std::function<ListSheet()> sheet_;
    Dialogs& dialogs_;
    UserMemory& memory_;
    std::vector<QAction*> actions_;
};

// A button of a list's tool line that opens a menu.
QToolButton* makeMenuButton(const char* name, const QString& text, QMenu* menu, QWidget* parent);

} // namespace orvan
