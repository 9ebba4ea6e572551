// reference/screens/wage_page.h — the minimum wages of one year in a grid of twelve months, and which months
// have none. Checks and statements are those of MinimumWages.
#pragma once

#include "core/clock.h"
#include "reference/minimum_wages.h"
#include "widgets/user_memory.h"

#include <QWidget>

class QLabel;

namespace orvan {

class ChoiceList;
class EditGrid;

class WagePage : public QWidget {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    WagePage(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
             const Clock& clock, QWidget* parent = nullptr);

    int year() const { return year_; }
    void showYear(int year); // reads; what was typed is gone
    void stayInYear();       // the person has kept his unsaved amounts
    bool isDirty() const;
    bool settle();
    bool save(); // false: refused and shown, or the person has decided
    void revert();

  signals:
    void yearWanted(int year);
    void dirtyChanged();

  private:
    void build(Dialogs& dialogs, UserMemory& memory);
    void offerYears();
    void showMissing();
    void copyDown();
    QString stateOf(size_t row) const;
    std::vector<WageMonth> months() const;

    MinimumWages wages_;
    const Clock& clock_;
    int year_;
    ChoiceList* years_ = nullptr;
    EditGrid* grid_ = nullptr;
    QLabel* missing_ = nullptr;
};

} // namespace orvan
