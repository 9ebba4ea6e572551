// widgets/column_layout.h — widths, order, visibility and sorting of a list's columns: as declared, as the
// user arranges them in a menu, and as remembered for him. Knows the header only, no rows.
#pragma once

#include "widgets/list_sheet.h"
#include "widgets/user_memory.h"

class QHeaderView;
class QMenu;

namespace orvan {

class ColumnLayout {
  public:
    // `key`: what the layout is remembered under. header and memory must outlive it. REQUIRES: the header has
    // a section per column.
    ColumnLayout(QHeaderView* header, std::vector<ListColumn> columns, UserMemory& memory,
                 const QString& key);

    void reset();   // as declared
    void restore(); // as the user left it; as declared when he has not been here
    void save() const;

    // A check mark per column and "Başlangıç düzeni". The last shown column cannot be hidden. The actions
    // live in the menu; the layout must outlive its use.
    void fillMenu(QMenu* menu);

    std::vector<size_t> shown() const;  // columns on view, in their order
    int find(const QString& key) const; // -1 when there is none

  private:
    int pixelWidth(const ListColumn& column) const;
    QHeaderView* header_;
    std::vector<ListColumn> columns_;
    UserMemory& memory_;
    QString key_;
};

} // namespace orvan
