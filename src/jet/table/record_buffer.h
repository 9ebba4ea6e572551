// table/record_buffer.h — the copy of a record between addNew() or edit() and update(): values as typed so
// far, which of them were set, and the stored row as it was, to see whether another user changed it
// meanwhile.
#pragma once

#include "jet/table/stored_row.h"

#include <memory>

namespace jet {

class RecordBuffer {
  public:
    enum class Mode { None, Adding, Editing };

    void beginAdd(std::vector<Value> defaults);
    void beginEdit(RowId id, const StoredRow& row);
    void cancel() { mode_ = Mode::None; }

    Mode mode() const { return mode_; }
    RowId record() const { return record_; } // REQUIRES: editing
    const Value& value(size_t field) const { return values_[field]; }
    void set(size_t field, Value value);

    size_t fieldCount() const { return values_.size(); }
    std::span<const Value> values() const { return values_; }
    std::span<const bool> changed() const { return {changed_.get(), values_.size()}; }

    // Does the stored row still hold what was copied, long values included? REQUIRES: editing.
    bool matches(const StoredRow& now) const;

  private:
    void begin(Mode mode, std::vector<Value> values);

    Mode mode_ = Mode::None;
    RowId record_;
    std::vector<Value> values_, original_;
    std::unique_ptr<bool[]> changed_;
};

} // namespace jet
