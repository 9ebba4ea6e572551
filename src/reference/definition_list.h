// reference/definition_list.h — the rows of one group of coded definitions: read, add, change, delete, with
// all checks. Speaks through Dialogs; writes only what the user may write.
#pragma once

#include "core/database_set.h"
#include "reference/definition_groups.h"
#include "reference/stored_rows.h"

namespace orvan {

class DefinitionList {
  public:
    // `title`: the screen's title, under which the right to write is stored. All must outlive it.
    // REQUIRES: databases are connected.
    DefinitionList(DatabaseSet& databases, Dialogs& dialogs, const DefinitionGroup& group, QString title);

    std::vector<StoredRow> rows(); // by code, then version
    // Adds (`row` empty) or changes; afterwards `row` is as it is stored. Texts are trimmed; the date of a
    // curriculum version is filled in. A description that the program itself looks up keeps its words.
    SaveOutcome save(std::optional<StoredRow>& row, FieldTexts wanted);
    bool remove(const StoredRow& row); // asks; true: the row is gone
    bool mayWrite();

    // How many records repeat the definition: "12 öğrenci", a line for each place that has some.
    QStringList uses(const StoredRow& row);
    // The highest code that is a number, plus one, with its leading zeros; empty when there is none.
    QString nextCode();

    const DefinitionGroup& group() const { return group_; }
    QString name() const { return QString::fromUtf8(group_.one); }
    const QStringList& fields() const { return fields_; }
    int width(const QString& field) const;

  private:
    StoredRows stored();
    SaveOutcome check(const FieldTexts& wanted);
    SaveOutcome checkAgainstOthers(const std::vector<StoredRow>& others, const FieldTexts& wanted,
                                   const StoredRow* self) const;
    bool acceptsOddCode(const FieldTexts& wanted, const StoredRow* before);
    bool acceptsNewCode(const StoredRow& before, const FieldTexts& wanted);
    SaveOutcome write(std::optional<StoredRow>& row, const FieldTexts& wanted);
    SaveOutcome add(std::optional<StoredRow>& row, const FieldTexts& wanted);
    int count(const DefinitionUse& use, const StoredRow& row);
    bool isFixed(const StoredRow& row) const;

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    const DefinitionGroup& group_;
    QString title_;
    QStringList fields_; // read and written, code and description first
};

// "0101 - Kuaförlük", with the version where the group has them.
QString definitionName(const DefinitionGroup& group, const FieldTexts& values);

} // namespace orvan
