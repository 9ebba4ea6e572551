// jet/copy/database_writer.h — makes a new, dense Jet 4 file from nothing: tables one after the other, the
// rows of each in the order they are given, then its indexes, and at the end the catalog. Compacting,
// converting and repairing all write through it; it knows nothing of where the rows come from.
//
// What it guarantees:
//  - The file grows under a name of its own beside `out` and gets the name `out` in finish(), whole and
//    synced. Destroyed before that, or after an error, it leaves nothing behind.
//  - What finish() leaves is sound (checkDatabase() finds nothing), whatever was given: a thing that would
//    contradict another is refused with an error or, where `lenient`, left out and told in the outcome.
//  - Memory is bounded by the options, whatever the number of rows.
//
// Order of calls: beginTable(), addRow()…, endTable() for each table; then, if rows of them are to be carried
// over, the system tables in the same way with beginSystemTable(); finish(). Not thread safe.
#pragma once

#include "jet/format/database_header.h"
#include "jet/format/properties.h"
#include "jet/format/row_codec.h"
#include "jet/format/table_def.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace jet {

class Io;

struct WriterOptions {
    std::shared_ptr<Io> io{};       // empty = systemIo()
    size_t memoryBytes = 64u << 20; // for pages and as much again for sorting; more goes to temporary files
    bool lenient = false; // an index that the rows stand against: false = the error, true = see IndexFate
    std::function<void()> step{}; // called for each row, and for each row again per index; what it throws
                                  // stops the writer
    bool replace = false;         // a file called `out` is there and goes when the new one is whole
    std::function<void()> beforeName{}; // called when all is written, right before the file gets its name
};

// Page 0 of the new file.
struct NewDatabase {
    DatabaseHeader header; // layout is not looked at; creationDate 0 = the one every new file of ours has
    Bytes page0{};         // of the file it is made from, taken over byte for byte but for the users' marks;
                           // empty = made from `header`. Must say what `header` says.
};

struct NewTable {
    // Name, fields in display order, indexes. `def.page` is the table's id in the old file (0: none); indexes
    // of relations name the other table by its old id in `relatedTable`. Where fields lie in a row, page
    // numbers, maps and row counts are set anew; required, allowZeroLength and defaultValue are not looked
    // at: they are properties. lastAutoNumber is kept, or raised to the highest value given.
    TableDef def;
    uint32_t flags = 0; // of the catalog row (ObjectFlag); used when no row of the catalog is given for it
    Bytes properties{}; // LvProp; used in the same case
};

enum class IndexFate {
    Built,     // as wanted
    NotUnique, // rows have equal keys, or nulls where none may be: made, but without that rule
    Dropped,   // keys cannot be made of the rows (unknown order or character): not there
};
struct IndexOutcome {
    std::string index;
    IndexFate fate = IndexFate::Built;
    std::string reason{}; // Turkish sentence; empty when built
};

class DatabaseWriter {
  public:
    // Errors: DatabaseExists (`out` is there), FileInUse (somebody is making it), and those of the disk.
    DatabaseWriter(const std::filesystem::path& out, const NewDatabase& what, WriterOptions options);
    ~DatabaseWriter();
    DatabaseWriter(const DatabaseWriter&) = delete;
    DatabaseWriter& operator=(const DatabaseWriter&) = delete;

    // Starts a table; returns its id in the new file. REQUIRES: the table before it was ended.
    // Err::InvalidArgument when its definition cannot be (no fields, a name twice, an index without fields).
    int32_t beginTable(const NewTable& table);
    // Starts one of the four that every file has (SystemPage), each at most once and after all other tables.
    // `def`: nullptr = as new files have it. The caller gives rows with ids as the new file has them, see
    // newId().
    void beginSystemTable(PageNo page, const TableDef* def = nullptr);
    const TableDef& def() const; // of the table that was begun: the order of the values for addRow()

    // One value per field in display order, autonumbers and nulls as they are to be; no defaults are filled
    // in. Errors (Conversion, FieldTooLong, RecordTooLarge) leave nothing of the row and the writer usable.
    void addRow(std::span<const Value> values);
    // The same from a row of a Jet 4 file, stored bytes taken as they stand; `row` is of a definition with
    // the same fields in the same order. Long values are read through `from`.
    // `old`: where it lies there; needed for the keys of endTable().
    void addRow(const RowView& row, PageFile& from, RowId old);

    // Gives the entries of an index of the old file, in any order. `index`: position in def().indexes.
    using OldEntry = std::function<void(std::span<const uint8_t> key, RowId old)>;
    using OldKeys = std::function<void(size_t index, const OldEntry& entry)>;

    // Builds the indexes. One outcome per index, in the order of def().indexes as given. Unless lenient:
    // DuplicateKey, IndexNullKey, InvalidArgument, ReadOnly. An index whose keys cannot be made gets the keys
    // it had, where `oldKeys` knows them and every row was given with its old place.
    std::vector<IndexOutcome> endTable(const OldKeys& oldKeys = {});

    // The id in the new file of what had `oldId`: another one for tables, the same for everything else.
    int32_t newId(int32_t oldId) const;
    bool hasTable(int32_t oldId) const; // was a table with this old id made?

    // Completes and names the file:
    //  - system tables that were not begun are made; objects that every file has and no row was given for are
    //    added; every table without a catalog row gets one, and permissions as its container hands them on;
    //  - an index of a relation whose other side is not there becomes a plain one, or goes when its tree has
    //    another name already; told in the result.
    // Afterwards only the destructor may be called.
    std::vector<std::string> finish(); // Turkish sentences

  private:
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace jet
