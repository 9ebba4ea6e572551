// reference/definition_list.h — the rows of one group of coded definitions: read, add, change, delete, with
// all checks. Speaks through Dialogs; writes only what the user may write.
#pragma once

#include "core/database_set.h"
#include "reference/definition_groups.h"
#include "reference/listed_records.h"

namespace orvan {

class DefinitionList : public ListedRecords {
  public:
    // `title`: the screen's title, under which the right to write is stored. All must outlive it.
    // REQUIRES: databases are connected.
    DefinitionList(DatabaseSet& databases, Dialogs& dialogs, const DefinitionGroup& group, QString title);

    std::vector<StoredRow> rows() override; // by code, then version
    // Adds (`row` empty) or changes; afterwards `row` is as it is stored. Texts are trimmed; the date of a
    // curriculum version is filled in. A description that the program itself looks up keeps its words.
    SaveOutcome save(std::optional<StoredRow>& row, FieldTexts wanted) override;
    bool remove(const StoredRow& row) override;
    bool mayWrite();

    // How many records repeat the definition: "12 öğrenci", a line for each place that has some.
    QStringList uses(const StoredRow& row);
    // The highest code that is a number, plus one, with its leading zeros; empty when there is none, and in a
    // group whose codes go by version.
    QString nextCode() override;

    const DefinitionGroup& group() const { return group_; }
    QString one() const override { return QString::fromUtf8(group_.one); }
    QString nameOf(const FieldTexts& values) const override;
    const QStringList& fields() const override { return fields_; }
    QString versionField() const override;
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
