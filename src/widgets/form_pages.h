// widgets/form_pages.h — one record on several pages: tabs, each an EntryForm or a screen's own widget. The
// fields of all pages behave as one form. Ctrl+PgDn / Ctrl+PgUp (and Ctrl+Tab) turn pages; the page a user
// was on is remembered. Field names are unique over all pages.
#pragma once

#include "widgets/form.h"
#include "widgets/user_memory.h"

class QTabWidget;

namespace orvan {

struct FormPage {
    QString name;  // object name of the page
    QString title; // of the tab, with an Alt letter
    std::vector<FormField> fields;
};

class FormPages : public QWidget {
    Q_OBJECT

  public:
    // `name`: object name and the name its page is remembered under. memory must outlive it.
    FormPages(const QString& name, std::vector<FormPage> pages, UserMemory& memory,
              QWidget* parent = nullptr);

    // A page of the screen's own behind the others (a grid, a list). Takes it over. Its changes are the
    // screen's.
    void addPage(const QString& name, const QString& title, QWidget* page);

    // As EntryForm's, over all pages. REQUIRES: the field is on some page.
    QString value(const QString& field) const;
    void setValue(const QString& field, const QString& value);
    void enterValue(const QString& field, const QString& value);
    ChoiceList* choiceList(const QString& field) const;
    QWidget* editor(const QString& field) const;
    void setReadOnly(const QString& field, bool readOnly);
    void setAllReadOnly(bool readOnly);
    bool settle(); // turns to the page of the refused field
    bool isDirty() const;
    void acceptAsLoaded();
    void revert();
    void focusField(const QString& field);                       // turns to its page
    void focusFirst();                                           // of the page on view
    void showWrong(const QString& field, const QString& reason); // turns to its page
    void clearWrong();

    EntryForm* form(const QString& page) const; // nullptr for a page of the screen's own
    QString page() const;                       // name of the page on view
    void showPage(const QString& page);
    QTabWidget* tabs() const { return tabs_; }

  signals:
    void edited(const QString& field);
    void dirtyChanged(bool dirty);
    void lastFieldDone(); // Enter in the last field of the last form page
    void pageShown(const QString& page);

  protected:
    void hideEvent(QHideEvent* event) override;
    void focusInEvent(QFocusEvent* event) override; // on to the first field of the page on view

  private:
    EntryForm* formOf(const QString& field) const;
    void addForm(const FormPage& page);
    void goOnAfter(const EntryForm* form);
    void checkDirty();
    void turn(int step);

    UserMemory& memory_;
    QTabWidget* tabs_;
    std::vector<EntryForm*> forms_;
    bool wasDirty_ = false;
};

} // namespace orvan
