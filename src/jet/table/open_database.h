// jet/table/open_database.h — what an open file consists of: pages, allocator, header, catalog, definitions.
// Database's statements work on it, Table sees it as its TableSource. It changes no structure itself.
#pragma once

#include "jet/error.h"
#include "jet/format/database_header.h"
#include "jet/pages/io_error.h"
#include "jet/table/catalog.h"
#include "jet/table/table_source.h"

#include <memory>
#include <string>
#include <unordered_map>

namespace jet {

class OpenDatabase : public TableSource {
  public:
    // `readOnlyReason`: Turkish sentence; empty = may be written.
    OpenDatabase(std::unique_ptr<PageFile> file, DatabaseHeader header, std::string readOnlyReason);

    PageFile& pages() override { return *file_; }
    PageAllocator& allocator() override { return allocator_; }
    const Layout& layout() const override { return *header_.layout; }
    uint16_t codePage() const override { return header_.codePage; }
    bool writable(std::string& reason) const override;
    std::shared_ptr<const TableDef> definition(PageNo page) override;
    Date now() const override;

    const DatabaseHeader& header() const { return header_; }
    void setPassword(std::string password) {
        header_.password = std::move(password);
    } // after page 0 was changed
    const std::string& readOnlyReason() const { return readOnlyReason_; }
    void requireWritable() const; // Err::ReadOnly with the reason

    // Names as the file has them now. REQUIRES: inside a read or write scope.
    Catalog& catalog();
    // Err::NoSuchTable. REQUIRES: as catalog().
    CatalogEntry tableEntry(std::string_view name);
    // The definition with its counters as the pages have them now, to be changed and written back by
    // saveDefinition().
    TableDef loadDefinition(PageNo page);
    void saveDefinition(const TableDef& def);
    // To be called after catalog rows or definitions changed: what is kept in memory is compared with the
    // file anew.
    void structureChanged() { ++structure_; }

    // A definition that is being built and has no catalog row yet; 0 = none.
    void setDraft(PageNo page) { draft_ = page; }

  private:
    struct Known {
        std::shared_ptr<const TableDef> def;
        Bytes image, properties; // what `def` was made of, counters blanked
        std::string name;
        uint32_t flags = 0;
        uint64_t stamp = 0; // when it was last compared with the file

        bool sameAs(const Known& other) const {
            return image == other.image && properties == other.properties && name == other.name &&
                   flags == other.flags;
        }
    };
    uint64_t stamp() const { return file_->generation() + structure_ + 1; } // both only grow
    Known read(PageNo page);

    std::unique_ptr<PageFile> file_;
    DatabaseHeader header_;
    std::string readOnlyReason_;
    PageAllocator allocator_;
    Catalog catalog_;
    uint64_t structure_ = 0;
    PageNo draft_ = 0;
    std::unordered_map<PageNo, Known> known_;
};

// Runs one structural statement: the lock, all or nothing, and the place added to errors.
template <class Body> void statement(OpenDatabase& db, std::string_view table, Body&& body) {
    try {
        db.requireWritable();
        WriteScope write(db.pages());
        body();
        write.commit();
        db.structureChanged();
    } catch (Error& error) {
        error.inFile(pathText(db.pages().path())).inTable(table);
        throw;
    }
}

} // namespace jet
