// records/screens/registration_screen.h — what the two registration forms share: finding a student, his
// record on pages, photo and related lists, and the commands. What may be saved is decided by Registration.
#pragma once

#include "records/earlier_workplaces.h"
#include "records/registration.h"
#include "records/registration_absences.h"
#include "records/registration_addresses.h"
#include "records/registration_choices.h"
#include "widgets/form_pages.h"
#include "widgets/screen.h"

#include <QElapsedTimer>

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace orvan {

class ChoiceList;
class PhotoPage;
class RelatedLists;
class StudentFinder;

class RegistrationScreen : public Screen {
    Q_OBJECT

  public:
    struct About {
        QString name, caption;
        QString rights; // title under which the right to write is stored
        // the form in the other arrangement: its key and the words that lead there
        QString otherKey, otherText;
    };
    // All must outlive it. REQUIRES: databases are connected.
    RegistrationScreen(About about, std::vector<FormPage> pages, DatabaseSet& databases, Dialogs& dialogs,
                       UserMemory& memory, const Clock& clock, QWidget* parent);
    ~RegistrationScreen() override;

    bool save() override;
    void discardChanges() override;
    void refresh() override;
    void showRecord(const QString& number) override;

  private:
    void build(QHBoxLayout* header, UserMemory& memory);
    QHBoxLayout* buildHeader();
    QHBoxLayout* buildButtons();
    QPushButton* buildMoreButton();
    void addKeys();

    void loadChoices();
    void showForm(const RegistrationForm& form);
    void showNothing(const QString& why);
    void showWho();
    void showSupervisors(const std::optional<WorkplaceFacts>& facts);
    RegistrationForm collect() const;
    bool isEdited(const QString& field) const;
    bool isEmpty() const { return form_.values.empty(); }

    bool trySave();
    void afterRefused(const RegistrationForm& refused, const RegistrationResult& result);
    void wrote(const QString& words);
    void startNew();
    void proposeAnew();
    void remove();
    enum class Step { Back, Forth };
    void step(Step where);
    void reload();
    Profession chosenProfession() const;

    void withStudent(const QString& routine, const std::function<void()>& work);
    void sendToEarlier();
    void copy(AddressCopy direction);
    void removeTerm();
    void startAgain();

    void fieldEdited(const QString& field);
    void carryOver(const QString& field);
    void carryOverDates();
    void takeOverWorkplace();
    void enterWhenEmpty(const QString& field, const QString& value);
    void checkLeft(const QWidget* left);

    DatabaseSet& databases_;
    const Clock& clock_;
    About about_;
    Registration registration_;
    RegistrationAbsences absences_;
    EarlierWorkplaces earlier_;
    FormPages* pages_;
    QStringList fields_;
    RegistrationForm form_; // as it was shown; empty: no student is on view
    FieldTexts shown_;      // what the fields held then
    StudentFinder* finder_ = nullptr;
    ChoiceList* profession_ = nullptr; // of the next new student
    PhotoPage* photo_ = nullptr;
    RelatedLists* lists_ = nullptr;
    QLabel *who_ = nullptr, *result_ = nullptr;
    QPushButton* saveButton_ = nullptr;
    QElapsedTimer sinceSaved_;
    bool saving_ = false;
};

} // namespace orvan
