// table/row_store.h — where a table's rows lie: puts row bytes on pages with room, moves rows that outgrow
// their page, gives emptied pages back. Knows bytes, never fields; indexes and long values are not its
// business. REQUIRES: inside a write for everything that changes.
#pragma once

#include "jet/format/usage_map.h"
#include "jet/table/row_reader.h"
#include "jet/table/table_source.h"

namespace jet {

class RowStore {
  public:
    RowStore(TableSource& source, const TableDef& def);

    RowId insert(std::span<const uint8_t> row);
    // The row keeps its RowId: in place, or moved with a pointer left behind. REQUIRES: the row exists.
    void update(RowId id, std::span<const uint8_t> row);
    void erase(RowId id); // REQUIRES: the row exists

    RowReader& reader() { return reader_; }

  private:
    RowId place(std::span<const uint8_t> row, bool hidden);
    PageNo pageWithRoom(size_t length);
    PageNo newPage();
    bool hasRoom(PageNo page, size_t length);
    bool replace(RowId at, std::span<const uint8_t> row);
    void eraseSlot(RowId at);
    void roomGained(PageNo page);
    void release(PageNo page);

    PageFile* file_;
    PageAllocator* allocator_;
    const Layout* layout_;
    PageNo owner_;
    UsageMap owned_, free_;
    RowReader reader_;
    RowReader::Place place_;
    PageNo last_ = 0;             // page of the last insert; only a hint, checked before use
    uint64_t lastGeneration_ = 0; // of the file when last_ was set
};

} // namespace jet
