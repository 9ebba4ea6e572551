// reference/listed_records.h — what a definition window lists and edits one at a time: coded definitions, the
// courses of the pool. An implementation checks, asks and writes; the window only shows.
#pragma once

#include "core/database_set.h"
#include "reference/stored_rows.h"

namespace orvan {

class ListedRecords {
  public:
    virtual ~ListedRecords() = default;

    virtual std::vector<StoredRow> rows() = 0; // in the order of the list
    // Adds (`row` empty) or changes; afterwards `row` is as it is stored.
    virtual SaveOutcome save(std::optional<StoredRow>& row, FieldTexts wanted) = 0;
    virtual bool remove(const StoredRow& row) = 0; // asks; true: the row is gone
    // What a new record begins with as its code; empty: nothing.
    virtual QString nextCode() { return {}; }

    virtual QString one() const = 0; // "meslek", in the middle of a sentence
    virtual QString nameOf(const FieldTexts& values) const = 0;
    virtual const QStringList& fields() const = 0;      // read and written; the code first
    virtual QString versionField() const { return {}; } // curriculum version; empty: records have none
};

} // namespace orvan
