// reference/screens/frm_ana_meslek_degistir.h — gives ticked students, or one student, another main
// profession. What is written, and the question before it, are MainProfessionChange's.
#pragma once

#include "reference/main_profession_change.h"
#include "widgets/choice_list.h"
#include "widgets/screen.h"
#include "widgets/user_memory.h"

#include <map>

class QLabel;
class QLayout;

namespace orvan {

class TickList;

class frmAnaMeslekDegistir : public Screen {
    Q_OBJECT

  public:
    // `title`: that of the right to write. All must outlive it. REQUIRES: databases are connected.
    frmAnaMeslekDegistir(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                         QWidget* parent = nullptr);

    bool save() override; // changes the ticked students
    void refresh() override;
    void showRecord(const QString& studentNo) override; // that student alone is ticked

  private:
    void build(UserMemory& memory);
    QLayout* buildChoices();
    QLayout* buildButtons();
    void offer();
    void load();
    int version() const;

    DatabaseSet& databases_;
    MainProfessionChange change_;
    std::map<QString, MainProfessionStudent> students_; // shown, by number
    ChoiceList *version_ = nullptr, *profession_ = nullptr, *main_ = nullptr;
    TickList* list_ = nullptr;
    QLabel* result_ = nullptr;
};

} // namespace orvan
