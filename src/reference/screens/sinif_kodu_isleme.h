// reference/screens/sinif_kodu_isleme.h — "Sınıf İşleme": profession, stages and present classes choose the
// students, who are ticked and put into a class.
#pragma once

#include "reference/class_assignment.h"
#include "widgets/screen.h"
#include "widgets/user_memory.h"

class QBoxLayout;
class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;

namespace orvan {

class ChoiceList;
class TickList;

class sinif_kodu_isleme : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    sinif_kodu_isleme(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                      QWidget* parent = nullptr);

    bool save() override; // puts the students into the class
    void refresh() override;

  private:
    void build(UserMemory& memory);
    QWidget* buildChoices();
    QWidget* buildStudents(UserMemory& memory);
    QBoxLayout* buildButtons();
    void offer();
    void offerClasses();
    void listStudents();
    void showStudents(const std::vector<ClassStudent>& students);
    void choiceChanged();
    bool trySave();
    void toggleAll();
    void nameToggle();
    ClassSelection selection() const;

    ClassAssignment assignment_;
    std::vector<Profession> professions_;
    std::optional<ClassSelection> shown_; // of the students on view
    std::vector<ClassStudent> listed_;
    ChoiceList *profession_ = nullptr, *target_ = nullptr;
    QListWidget *stages_ = nullptr, *classes_ = nullptr;
    TickList* students_ = nullptr;
    QCheckBox* ignoreMarks_ = nullptr;
    QPushButton *toggle_ = nullptr, *save_ = nullptr;
    QLabel* result_ = nullptr;
    bool saving_ = false;
};

} // namespace orvan
