// reference/stored_rows.h — rows of one declared table as texts, for screens that edit one row at a time:
// read, add, change only what was changed, notice what another station did meanwhile. Texts: field_texts.h.
#pragma once

#include "core/dialogs.h"
#include "core/schema.h"

#include <functional>
#include <map>
#include <optional>
#include <QStringList>

namespace orvan {

using FieldTexts = std::map<QString, QString>; // by the field's declared name

struct StoredRow {
    jet::RowId id;
    FieldTexts values; // as last read
};

enum class RowChange {
    Saved,
    Kept, // another station's values stay; they are now in the row, what was typed stays with the caller
    Gone, // the row is not there any more
};

// Which changes of another station are worth a question: any, or only in fields that are changed here too.
enum class Clash { AnyField, SameField };

class StoredRows {
  public:
    // `fields`: the ones read and written; `keys`: those that tell which row it is. All must outlive it.
    StoredRows(jet::Database& database, const TableDeclaration& table, QStringList fields,
               QStringList keys = {});

    std::vector<StoredRow> all();
    // The rows whose first field of the index has the value; all rows in which it is so, where an old file
    // lacks the index.
    std::vector<StoredRow> having(const std::string& index, const std::string& field, const QString& value);
    // The same for the first fields of the index together, in its order.
    std::vector<StoredRow> having(const std::string& index,
                                  const std::vector<std::pair<QString, QString>>& key);
    std::optional<StoredRow> read(jet::RowId id); // nothing when there is none
    // As it is now; nothing when it is gone (deleted, or its keys are others).
    std::optional<StoredRow> now(const StoredRow& row);

    StoredRow add(const FieldTexts& values); // fields that are not given stay null
    // Writes the fields in which `wanted` differs from the row. When another station has changed the row
    // since it was read, shows both values and asks whose are to stay. `wanted` may name further fields of
    // the table: they are written and never compared. `also` writes what goes with the row, under the same
    // lock; an error of it undoes the row's change too and is thrown.
    RowChange change(StoredRow& row, const FieldTexts& wanted, Clash clash, Dialogs& dialogs,
                     const std::function<void()>& also = {});
    bool remove(const StoredRow& row); // false: it was gone already

    const FieldDeclaration& field(const QString& name) const;
    jet::Database& database() { return database_; }

  private:
    StoredRow readRow(jet::Table& table, const jet::Scan& scan) const;
    bool isSameRow(const FieldTexts& a, const FieldTexts& b) const;
    bool writeOver(const StoredRow& seen, const FieldTexts& changed, const std::function<void()>& also);
    bool writeFields(const StoredRow& seen, const FieldTexts& changed);
    bool asksForMine(const FieldTexts& before, const FieldTexts& theirs, const FieldTexts& changed,
                     Dialogs& dialogs) const;

    jet::Database& database_;
    const TableDeclaration& table_;
    QStringList fields_, keys_;
};

// What became of a save that a person asked for.
struct SaveOutcome {
    bool saved = false;
    QString field = {};  // the one that is refused; empty: the person has decided, or it is saved
    QString reason = {}; // why it is refused

    static SaveOutcome done() { return {true}; }
    static SaveOutcome refused(QString field, QString reason) {
        return {false, std::move(field), std::move(reason)};
    }
};

// The texts in which `wanted` differs from `stored`; a field that `wanted` lacks is not changed.
FieldTexts changedTexts(const FieldTexts& stored, const FieldTexts& wanted);

} // namespace orvan
