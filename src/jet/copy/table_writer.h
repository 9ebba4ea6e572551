// jet/copy/table_writer.h — one table of a new file: its definition, rows and trees.
#pragma once

#include "jet/copy/row_appender.h"
#include "jet/table/table_storage.h"

#include <optional>

namespace jet {

class TableWriter {
  public:
    // `def.page`: where the definition shall lie; the page is there. Errors as DatabaseWriter::beginTable.
    TableWriter(NewFile& file, TableDef def, const WriterOptions& options);

    const TableDef& def() const { return def_; } // its indexes as given
    void add(std::span<const Value> values);
    void add(const RowView& row, PageFile& from, RowId old);
    // As DatabaseWriter::endTable. Afterwards def() is what was stored.
    std::vector<IndexOutcome> end(const DatabaseWriter::OldKeys& oldKeys);

  private:
    FillOptions fillOptions() const;
    void buildIndexes(const DatabaseWriter::OldKeys& oldKeys, std::vector<IndexOutcome>& outcomes);
    IndexFate build(size_t index, const DatabaseWriter::OldKeys& oldKeys, std::string& reason);
    void buildFromOldKeys(size_t index, const DatabaseWriter::OldKeys& oldKeys);
    void step() const {
        if (options_.step) options_.step();
    }

    NewFile& file_;
    const WriterOptions& options_;
    TableDef def_;
    std::optional<RowAppender> rows_;
    std::optional<EntrySorter> places_; // key: place in the old file; row: place in the new one
};

} // namespace jet
