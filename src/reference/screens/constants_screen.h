// reference/screens/constants_screen.h — what the two windows of the school's constants share: pages over the
// one row of constants, of which only edited fields are written. An empty table shows empty fields.
#pragma once

#include "reference/school_constants.h"
#include "widgets/choice_list.h"
#include "widgets/form_pages.h"
#include "widgets/screen.h"

#include <QElapsedTimer>

class QLabel;
class QPushButton;

namespace orvan {

class ConstantsScreen : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    ConstantsScreen(const QString& name, const QString& title, std::vector<FormPage> pages,
                    DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory, QWidget* parent);

    bool save() override;
    void discardChanges() override;
    void refresh() override;

  protected:
    void load();                                                     // call it when the window is built
    virtual void offerChoices(const SchoolConstants& constants) = 0; // to the Choice fields, before they load
    virtual QString shownText(const SchoolConstants& constants, const QString& field) const;
    virtual void addToSave(FieldTexts& wanted) const { (void)wanted; } // fields that go with edited ones
    // What the window holds beside the row of constants.
    virtual bool settleMore() { return true; }
    virtual bool saveMore() { return true; }
    virtual bool moreIsDirty() const { return false; }
    virtual void discardMore() {}
    virtual void loadMore() {}

    void checkUnsaved();
    FormPages& pages() { return *pages_; }
    const FormPages& pages() const { return *pages_; }
    DatabaseSet& databases() const { return databases_; }
    bool isEdited(const QString& field) const; // by the user, against what was loaded

  private:
    void build();
    void takeOver();
    bool trySave();
    bool saveConstants();

    DatabaseSet& databases_;
    ConstantsRecord record_;
    FormPages* pages_;
    QStringList fields_;
    FieldTexts shown_; // the fields' values as loaded
    QLabel* result_ = nullptr;
    QPushButton* saveButton_ = nullptr;
    QElapsedTimer sinceSaved_;
    bool saving_ = false;
};

// A choice for a stored text that the list does not have, so that nothing is lost by opening the window.
std::vector<Choice> withStored(std::vector<Choice> choices, const QString& code, const QString& text);

} // namespace orvan
