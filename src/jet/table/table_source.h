// jet/table/table_source.h — what Table needs of the database it lives in; Database implements it, tests may
// too.
#pragma once

#include "jet/format/table_def.h"
#include "jet/format/usage_map.h"
#include "jet/pages/page_file.h"

#include <memory>

namespace jet {

class TableSource {
  public:
    virtual ~TableSource() = default;
    virtual PageFile& pages() = 0;
    virtual PageAllocator& allocator() = 0;
    virtual const Layout& layout() const = 0;
    virtual uint16_t codePage() const = 0; // of Jet 3 text
    virtual bool writable(std::string& reason) const = 0;
    // The definition that starts on this page, as the file has it now; cheap when nothing changed. Row count
    // and last autonumber in it may be stale: read them from the page. Err::NoSuchTable when no table starts
    // there any more. REQUIRES: inside a read or write scope.
    virtual std::shared_ptr<const TableDef> definition(PageNo page) = 0;
    virtual Date now() const = 0; // for default values Now() and Date()
};

} // namespace jet
