// records/screens/ogrenci_ara.h — looks for a student in all levels and archives; the identity number's own
// answer stands above the list.
#pragma once

#include "core/database_set.h"
#include "records/student_search.h"
#include "widgets/list_sheet.h"
#include "widgets/screen.h"

class QLabel;

namespace orvan {

class EntryForm;
class ListGrid;
class UserMemory;

class OgrenciARA : public Screen {
    Q_OBJECT

  public:
    // All must outlive it. REQUIRES: databases are connected.
    OgrenciARA(const QString& title, DatabaseSet& databases, Dialogs& dialogs, UserMemory& memory,
               QWidget* parent = nullptr);

    void refresh() override; // searches again what was searched last

  private:
    void build(UserMemory& memory);
    void search();
    void run();
    void clear();
    void open(size_t row);
    SearchTerms terms() const;
    bool asksForIdentityNumberAlone() const;
    void showResult(const QString& sentence);
    ListRow rowOf(const FoundStudent& student) const;

    DatabaseSet& databases_;
    SearchTerms searched_; // what the list shows
    SearchResult result_;
    EntryForm* form_ = nullptr;
    QLabel* answer_ = nullptr;
    ListGrid* grid_ = nullptr;
};

} // namespace orvan
