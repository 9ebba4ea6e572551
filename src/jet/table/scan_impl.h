// table/scan_impl.h — what is inside a Scan, for table.cpp, which makes them.
#pragma once

#include "jet/table/index_cursor.h"
#include "jet/table/page_cursor.h"
#include "jet/table/stored_row.h"

#include <optional>

namespace jet {

struct Scan::Impl {
    Impl(TableSource& source, std::shared_ptr<const TableDef> definition); // page order
    Impl(TableSource& source, std::shared_ptr<const TableDef> definition,
         const IndexDef& index); // index order

    bool next();
    bool step();

    std::shared_ptr<const TableDef> def;
    PageFile* file;
    std::optional<PageCursor> pageCursor; // one of the two
    std::optional<IndexCursor> indexCursor;
    std::optional<RowReader> reader; // with an index
    StoredRow row;
    RowId id;
    bool backwards = false, started = false, ended = false;
};

} // namespace jet
