// jet/table/catalog.h — the rows of MSysObjects: which objects the file has, under which names, with which
// properties. Reads and writes them through Table; keeps the names of the container "Tables" in memory until
// told to forget.
#pragma once

#include "jet/format/properties.h"
#include "jet/table/table_source.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace jet {

// Definition pages of the system tables; fixed in every file.
struct SystemPage {
    static constexpr PageNo kObjects = 2, kAces = 3, kQueries = 4, kRelationships = 5;
};
// Name of the system table that starts on this page; empty for any other page.
std::string_view systemTableName(PageNo page);

// Stored object types; persisted, never renumber.
struct ObjectType {
    static constexpr int kTable = 1, kDatabase = 2, kContainer = 3, kOdbcLink = 4, kQuery = 5, kLink = 6,
                         kRelation = 8, kDocument = -32757;
};
// Ids of the objects that every file has.
struct ObjectId {
    static constexpr int32_t kRoot = 0x0F000000, kTables = 0x0F000001, kDatabases = 0x0F000002,
                             kRelationships = 0x0F000003, kDatabase = 0x10000000;
};
struct ObjectFlag {
    static constexpr uint32_t kSystem = 0x80000000u, kOtherSystem = 2, kHidden = 8;
};

struct CatalogEntry {
    std::string name;
    int32_t id = 0; // definition page of a table
    int type = 0;
    uint32_t flags = 0;
    RowId row; // in MSysObjects

    bool isTable() const { return type == ObjectType::kTable; }
    bool isSystem() const { return (flags & (ObjectFlag::kSystem | ObjectFlag::kOtherSystem)) != 0; }
    bool isHidden() const { return (flags & ObjectFlag::kHidden) != 0; }
    PageNo page() const { return static_cast<PageNo>(id); }
};

// REQUIRES for every function: inside a read or write scope; for the changing ones: a write scope.
class Catalog {
  public:
    explicit Catalog(TableSource& source) : source_(&source) {}

    // Reads the names again when `stamp` is not the one of the last time.
    void refresh(uint64_t stamp);

    // Objects of the container "Tables" (tables, links, queries), in the order of their rows.
    const std::vector<CatalogEntry>& entries() const { return entries_; }
    const CatalogEntry* find(std::string_view name) const; // any of them; nullptr when there is none
    const CatalogEntry* findTable(PageNo page) const;

    // Stored LvProp bytes; empty when there are none.
    Bytes properties(const CatalogEntry& entry);
    // Sets LvProp and the time of change.
    void setProperties(const CatalogEntry& entry, const PropertySet& properties);
    void touch(const CatalogEntry& entry); // time of change only
    void rename(const CatalogEntry& entry, const std::string& name);
    void remove(const CatalogEntry& entry);

    struct NewObject {
        int32_t id = 0, parent = 0;
        int type = 0;
        uint32_t flags = 0;
        std::string name;
        Bytes owner;      // security id; empty = that of the database's owner
        Bytes properties; // LvProp
    };
    void insert(const NewObject& object);

  private:
    Bytes ownerOfDatabase();

    TableSource* source_;
    uint64_t stamp_ = 0; // 0 = never read
    std::vector<CatalogEntry> entries_;
    std::unordered_map<std::string, size_t> byName_, byFoldedName_;
    std::unordered_map<PageNo, size_t> byPage_;
};

} // namespace jet
