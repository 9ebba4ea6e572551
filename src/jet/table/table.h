// jet/table/table.h — the rows of one table, with the habits of DAO: a current record, AddNew / Edit / Update
// / Delete, Seek on an index; plus plain scans for the SQL layer. Every index, row count and long value is
// kept right. A handle is live: it sees what others commit. One statement = one call; put many under a
// WriteBatch.
#pragma once

#include "jet/format/row_codec.h"
#include "jet/format/table_def.h"
#include "jet/value.h"

#include <memory>
#include <span>
#include <string_view>

namespace jet {

class TableSource;

enum class SeekOp { Equal, Greater, GreaterOrEqual, Less, LessOrEqual };

// Bounds of a walk along an index. Empty vectors = open end. A bound may give fewer values than the index has
// fields: it then means every entry that begins with them. Bounds are in the order of values: where lower and
// upper first differ on a descending field they are turned round, so `lower` is always the smaller value.
// Null is below every value. Values are converted to the fields' types (Err::Conversion): 5.5 on a Long field
// would be rounded, so ask for what the field can hold.
struct KeyRange {
    std::vector<Value> lower, upper;
    bool lowerInclusive = true, upperInclusive = true;
    bool backwards = false;
};

// A walk over rows, in page order or along an index. REQUIRES: a ReadScope (or a write) stays open around it.
// Rows that the caller changes or deletes during the walk are allowed; rows inserted may or may not be met.
class Scan {
  public:
    Scan(Scan&&) noexcept;
    Scan& operator=(Scan&&) noexcept;
    ~Scan();
    bool next(); // false at the end
    // Starts again with other bounds on the same index, keeping buffers and pages: one descent of the tree.
    // For joins. A walk in page order starts again at the first page and takes no bounds.
    void restart(const KeyRange& range = {});
    const RowView& row() const; // valid until next() or a write
    RowId id() const;
    // Any field of the current row, long values included.
    Value value(size_t field) const;
    // Memo as UTF-8 / Text as UTF-8 into scratch; REQUIRES: not null.
    std::string_view text(size_t field, std::string& scratch) const;

  private:
    friend class Table;
    Scan();
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

class Table {
  public:
    // The source must outlive every call; destroying the handle after it is allowed.
    Table(TableSource& source, PageNo definitionPage);
    Table(Table&&) noexcept;
    Table& operator=(Table&&) noexcept;
    ~Table();

    const TableDef& def(); // as the file has it now; the reference holds until the next call on this table
    uint32_t rowCount();

    // --- plain access, by RowId
    Scan scan();                                              // page order
    Scan scan(std::string_view index, const KeyRange& range); // Err::NoSuchItem for an unknown index
    std::vector<Value> read(RowId id);                        // Err::NoCurrentRecord when it is gone
    // One entry per field in display order. A field not in `given` takes its default or null; autonumbers
    // fill in. Errors leave everything as it was: DuplicateKey (names the index), RequiredNull, ZeroLength,
    // FieldTooLong, …
    RowId insert(std::span<const Value> values, std::span<const bool> given = {});
    void update(RowId id, std::span<const Value> values, std::span<const bool> changed);
    void remove(RowId id);

    // --- the current record. Moving past either end leaves no current record (eof()/bof()). A new handle, or
    // one whose index was just set, stands on the first record. Moving throws an unfinished addNew()/edit()
    // away.
    void setIndex(std::string_view name); // order of moves and target of seek; "" = page order
    bool moveFirst();
    bool moveLast();
    bool moveNext();
    bool movePrevious();
    // False = no match, no current record. REQUIRES: an index is set. Fewer keys than fields: entries that
    // begin with them. Greater/Less are in the order of the index: on a descending field Greater goes to
    // smaller values.
    bool seek(SeekOp op, std::span<const Value> keys);
    bool eof() const;
    bool bof() const;
    RowId bookmark() const;
    void goTo(RowId bookmark);
    Value value(std::string_view field); // of the edit buffer while adding or editing; Err::NoCurrentRecord

    void addNew(); // the buffer holds the defaults; an autonumber stays null until update()
    void edit();
    void set(std::string_view field,
             Value value); // checked at once for type and width; Err::UpdateWithoutEdit
    void update();         // Err::DataChanged when the record changed since edit(): the buffer stays as typed
    void cancelUpdate();
    RowId lastModified() const; // of the last update(): after addNew() the current record stays what it was
    void remove();              // deletes the current record; moveNext() then goes to the one after it

  private:
    friend class TableSource;
    Table();
    struct Impl;
    std::unique_ptr<Impl> impl_;
};

} // namespace jet
