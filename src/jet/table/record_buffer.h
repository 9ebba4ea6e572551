// table/record_buffer.h — the copy of a record between addNew() or edit() and update(): values as typed so
// far, which of them were set, and the stored row as it was, to see whether another user changed it
// meanwhile. The table's structure may change meanwhile, too: values belong to fields by name.
#pragma once

#include "jet/table/stored_row.h"

#include <memory>

namespace jet {

class RecordBuffer {
  public:
    enum class Mode { None, Adding, Editing };

    using Definition = std::shared_ptr<const TableDef>;
    void beginAdd(Definition def, std::vector<Value> defaults);
    void beginEdit(Definition def, RowId id, const StoredRow& row);
    // Goes over to another definition of the table; fields that are new take their default while adding.
    // Err::NoSuchItem when a field that was set is gone, and then nothing has changed. `defaults` is asked
    // only when needed.
    template <class Defaults> void follow(const Definition& now, Defaults&& defaults) {
        if (mode_ != Mode::None && now != def_) moveTo(now, defaults());
    }
    void cancel() { mode_ = Mode::None; }

    Mode mode() const { return mode_; }
    RowId record() const { return record_; } // REQUIRES: editing
    // False for a field that the table did not have when edit() copied the record, until it is set.
    bool holds(size_t field) const { return copied_[field] || changed_[field]; }
    const Value& value(size_t field) const { return values_[field]; }
    void set(size_t field, Value value);

    std::span<const Value> values() const { return values_; }
    std::span<const bool> changed() const { return {changed_.get(), values_.size()}; }

    // Does the stored row still hold what was copied, long values included? REQUIRES: editing.
    bool matches(const StoredRow& now) const;

  private:
    void begin(Mode mode, Definition def, std::vector<Value> values);
    void moveTo(const Definition& now, std::vector<Value> defaults);

    Mode mode_ = Mode::None;
    Definition def_; // its fields are those of the values
    RowId record_;
    std::vector<Value> values_, original_;
    std::unique_ptr<bool[]> changed_;
    std::vector<bool> copied_;
};

} // namespace jet
