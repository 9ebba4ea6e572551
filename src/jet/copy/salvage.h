// jet/copy/salvage.h — reads what is left of a damaged Jet 4 file: which tables there were, what they were
// called, and their rows. Believes pages rather than maps, indexes and catalog, which only help:
//  - a table is a definition page that can be read; its name comes from the catalog, else it is made up;
//  - a definition or data page that the map of free pages calls free is left over, and not used; a map that
//    contradicts the tables' own maps is believed in nothing.
// Changes nothing in the file and puts nothing beside it.
#pragma once

#include "jet/copy/salvage_io.h"
#include "jet/copy/salvage_rows.h"
#include "jet/format/database_header.h"

#include <string>
#include <unordered_map>

namespace jet {

struct SalvagedTable {
    PageNo id = 0, page = 0; // page 0: the definition is gone, and the one that every file has is taken
    std::string name{};
    uint32_t flags = 0; // of the catalog row
    bool nameLost = false;
    Bytes properties{}; // LvProp of the catalog row
};

// Rows whose table is not known any more.
struct StrayPages {
    PageNo owner = 0;    // the definition page that is gone
    std::string table{}; // its name, when the catalog still knows it
    size_t pages = 0, rows = 0;
};

struct SalvageOptions {
    std::string password; // UTF-8; ignored when the file has none
    std::filesystem::path
        workCopy;               // made only when a half-done write must be rolled back; removed at the end
    std::function<void()> step; // for each page of each pass; may throw to stop
};

class Salvage {
  public:
    // Errors: FileNotFound, CannotOpen, NotADatabase (no page of a database in it), InvalidPassword, ReadOnly
    // (an older format), NewerFormat.
    Salvage(std::shared_ptr<Io> io, const std::filesystem::path& path, SalvageOptions options);
    ~Salvage();
    Salvage(const Salvage&) = delete;
    Salvage& operator=(const Salvage&) = delete;

    const DatabaseHeader& header() const { return header_; }         // as found, or as assumed
    const std::vector<std::string>& notes() const { return notes_; } // Turkish sentences about the whole file
    size_t pageCount() const { return source_->file.pageCount(); }
    // Pages in use whose bytes contradict each other or are no page at all.
    size_t damagedPages() const;

    // System tables first, then by definition page.
    const std::vector<SalvagedTable>& tables() const { return tables_; }
    const std::vector<StrayPages>& strayPages() const { return strays_; }
    SalvagedDefinition definition(const SalvagedTable& table) const;
    bool isKeyName(std::string_view name) const; // could an object of the file be called so?
    // Equal for names that cannot stand side by side. REQUIRES: isKeyName(name).
    std::string keyOf(std::string_view name) const;
    const Bytes& page0() const { return page0_; } // empty unless everything in it can be believed
    bool datesKnown() const { return header_.creationDate != 0; } // and with it what security ids mean
    void readRows(const SalvagedTable& table, const TableDef& def, const TableSalvage::RowSink& sink,
                  TableLosses& losses);

  private:
    struct CatalogRow {
        std::string name;
        uint32_t flags = 0;
        Bytes properties;
    };
    struct Catalog {
        std::unordered_map<PageNo, CatalogRow> rows; // of tables that have pages
        bool whole = false;                          // nothing is missing in it
    };

    void readHeader();
    void chooseKey(bool believed);
    void findTables();
    void adoptStrayPages();
    void readFreeMap();
    Catalog readCatalog();
    bool freeMapContradicts(const Catalog& catalog) const;
    void nameTables(const Catalog& catalog);
    void countStrays(const Catalog& catalog);
    void assumeSortOrder();
    bool isFree(PageNo page) const { return page < free_.size() && free_[page]; }
    bool isKnown(PageNo id) const { return known_.contains(id); }
    bool isSystem(PageNo id) const;
    // Pages with the table's mark: those in use, or those that the map of free pages calls free.
    std::vector<PageNo> pagesOf(PageNo id, bool free = false) const;
    SalvagedDefinition definitionOf(PageNo id) const;

    std::shared_ptr<Io> io_;
    SalvageOptions options_;
    DamagedFile opened_;
    std::optional<ReadScope> read_;
    DatabaseHeader header_;
    bool headerKnown_ = false;
    Bytes page0_;
    std::vector<std::string> notes_;
    std::optional<SalvageSource> source_;
    std::unordered_map<PageNo, PageNo> known_;         // id of a table -> where its definition lies, 0 = gone
    std::vector<std::pair<PageNo, PageNo>> dataPages_; // (table, page), sorted; the table may be unknown
    std::vector<bool> free_;                           // empty: not to be believed
    std::vector<SalvagedTable> tables_;
    std::vector<StrayPages> strays_;
    std::unique_ptr<LongValueReader> longValues_;
    std::unordered_map<PageNo, TableDef> systemDefinitions_; // as every file has them
};

} // namespace jet
