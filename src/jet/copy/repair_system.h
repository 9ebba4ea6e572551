// jet/copy/repair_system.h — carries the rows of the four system tables over into the new file, as far as
// they can be read and agree with what is there: objects, permissions, queries, relations.
#pragma once

#include "jet/copy/database_writer.h"
#include "jet/copy/salvage.h"

#include <set>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace jet {

class SystemRows {
  public:
    // Reads one system table's rows into a sink, losses counted.
    using Reader = std::function<void(const SalvagedTable&, const TableDef&, const TableSalvage::RowSink&)>;

    // `made`: the tables of the new file by their old ids.
    SystemRows(const Salvage& salvage, DatabaseWriter& writer, std::unordered_map<PageNo, std::string> made,
               Reader reader, std::vector<std::string>& notes);

    // REQUIRES: all other tables were ended.
    void carryOver();

  private:
    struct Source {
        const SalvagedTable* table = nullptr;
        TableDef def;
        size_t column(std::string_view name) const; // Err::Corrupt when it is not there
    };

    Source source(PageNo page) const;
    template <class F> void copy(const Source& from, F change);
    void chooseRelations(const Source& relations);
    void copyObjects(const Source& objects);
    void copyPermissions(const Source& permissions);
    void copyQueries(const Source& queries);
    void copyRelations(const Source& relations);
    bool hasField(const Value& table, const Value& field);
    void note(size_t count, const std::string& what);

    const Salvage& salvage_;
    DatabaseWriter& writer_;
    std::unordered_map<PageNo, std::string> made_;
    Reader read_;
    std::vector<std::string>& notes_;
    std::unordered_map<std::string, PageNo> tablesByName_;               // folded
    std::unordered_map<PageNo, std::unordered_set<std::string>> fields_; // folded, of tables asked for
    std::unordered_set<std::string> keptRelations_;                      // by name
    std::unordered_set<int32_t> objects_;                                // ids as in the new file
};

} // namespace jet
