// reference/screens/frm_sinif_tanimlama.h — "Sınıf Bilgileri": the classes with their teachers and weekly
// slots, the week of the class on view, the timetable of all classes, and the classes that only students
// know.
#pragma once

#include "reference/classes.h"
#include "reference/screens/record_screen.h"

class QLabel;
class QStackedWidget;

namespace orvan {

class ClassWeekPage;

class Frm_Sinif_Tanimlama : public RecordScreen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    Frm_Sinif_Tanimlama(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
                        QWidget* parent = nullptr);

  protected:
    std::vector<StoredRow> readRows() override;
    SaveOutcome saveRow(std::optional<StoredRow>& row, const FieldTexts& wanted, bool asked) override;
    bool removeRow(const StoredRow& row) override;
    void showMore(const StoredRow* row) override;
    void takeOverMore(const StoredRow& row) override;
    bool settleMore() override;
    bool moreIsDirty() const override;
    void revertMore() override;
    void addToSave(FieldTexts& wanted) const override;
    bool showWrongMore(const QString& field, const QString& reason) override;
    QString wordsAfterSave(const FieldTexts& saved) override;
    void listRead() override;

  private:
    QWidget* buildWeek();
    QWidget* buildTimetable(const QStringList& notes);
    QWidget* buildUndefined();
    void showWeek();
    void showTimetable();
    void define();

    ClassList classes_;
    std::vector<UndefinedClass> undefined_;
    ClassWeekPage* slots_ = nullptr;
    ListGrid *week_ = nullptr, *timetable_ = nullptr, *students_ = nullptr, *unknown_ = nullptr;
    QStackedWidget* timetables_ = nullptr;
    QLabel* className_ = nullptr; // above the week
};

} // namespace orvan
