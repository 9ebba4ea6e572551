// records/workplaces.h — the register of workplaces, which all levels share: read, add, change, delete, with
// all checks; banks and the other lists of its form; how many students each supervisor has. Speaks through
// Dialogs; writes only what the user may write.
#pragma once

#include "core/database_set.h"
#include "reference/code_lists.h"
#include "reference/stored_rows.h"

#include <array>

namespace orvan {

inline constexpr size_t kSupervisors = 7;

// The fields of one supervisor of a workplace.
struct SupervisorFields {
    QString name, mobile, girls, boys, total;
    QString identity; // the first one's; empty for the others
};
const std::array<SupervisorFields, kSupervisors>& supervisorFields();

struct SupervisorCount {
    int girls = 0, boys = 0; // students of another sex, or without one, are in neither
    int total() const { return girls + boys; }
    bool operator==(const SupervisorCount&) const = default;
};

struct Bank {
    QString name, branch; // the name is the key
    QString shown() const { return branch.isEmpty() ? name : name + QStringLiteral(" / ") + branch; }
};

struct District {
    QString code, name;
};

enum class SaveQuestion { Ask, AlreadyAsked };

class WorkplaceRename;
struct CarriedFile;

class Workplaces {
  public:
    // `title`: the screen's title, under which the right to write is stored. All must outlive it. REQUIRES:
    // databases are connected whenever a function is called.
    Workplaces(DatabaseSet& databases, Dialogs& dialogs, QString title);

    std::vector<StoredRow> rows(); // by name; without those of type '1'

    // Adds (`row` empty) or changes; afterwards `row` is as it is stored. The district's name and the
    // students' counts are filled in. A new name or address is carried into the students' records and
    // histories of both levels, or nothing is saved at all; when a file fails in between the person is told
    // what stands.
    SaveOutcome save(std::optional<StoredRow>& row, FieldTexts wanted,
                     SaveQuestion question = SaveQuestion::Ask);
    bool remove(const StoredRow& row);             // asks; true: the row is gone
    bool confirmsSupervisorRemoval();              // asks before a supervisor is taken out of the form
    QStringList warnings(const FieldTexts& typed); // what looks wrong but is saved: phones, IBAN, identity no

    // Of the students of the open level database who work there. A supervisor without a name has none.
    std::array<SupervisorCount, kSupervisors> counts(const QString& workplace,
                                                     const std::array<QString, kSupervisors>& supervisors);

    int studentCount(const QString& workplace); // of the open level, whatever their sex and supervisor

    std::vector<District> districts();                    // by name
    QStringList chambers();                               // by name
    QStringList productionFields(const QString& chamber); // in use at workplaces of that chamber
    std::vector<Bank> banks();                            // by name; each once
    SaveOutcome addBank(const Bank& bank);                // field: "BankaAdi" or "sube"

    const QStringList& fields() const { return fields_; } // read and written, without the counts
    int width(const QString& field) const;
    int bankWidth(const QString& field) const;
    bool mayWrite();

  private:
    StoredRows stored();
    SaveOutcome check(const FieldTexts& wanted, const StoredRow* before);
    bool nameTaken(const QString& name, const StoredRow* self);
    void fillIn(FieldTexts& wanted, const StoredRow* before);
    bool acceptsRename(WorkplaceRename& rename, const QString& oldName);
    SaveOutcome write(std::optional<StoredRow>& row, const FieldTexts& wanted);
    SaveOutcome change(StoredRow& row, const FieldTexts& wanted, bool& gone);
    SaveOutcome add(std::optional<StoredRow>& row, const FieldTexts& wanted);
    void reportFailure(const std::vector<CarriedFile>& files, const jet::Error& error);

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
    QStringList fields_;
};

} // namespace orvan
