// records/bulk_edit.h — one field or more of many students changed at once, for every command declared in
// bulk_commands.h: who can be chosen, what would change, and the change itself under one lock with a report.
// Speaks only through Dialogs.
#pragma once

#include "core/clock.h"
#include "records/bulk_commands.h"
#include "reference/code_lists.h"

#include <optional>

namespace orvan {

struct BulkSelection { // an empty text, and version 0, choose all
    QString profession;
    int version = 0;
    QString stage, className;
};

struct BulkWish {
    StoredRow student; // as it was read by BulkEdit::students
    FieldTexts wanted; // what some of the command's fields are to hold
};

// One field of one student.
struct BulkLine {
    size_t wish = 0;       // place in the wishes
    QString number, name;  // of the student
    QString field;         // its label
    QString before, after; // as a person reads them
    QString refusal;       // why it is not written; empty: it can be, or it is
    QString warning;       // it is written, but the person should look
    QString value;         // as it is stored
    const BulkField* about = nullptr;
    bool written = false;
};

struct BulkOutcome {
    std::vector<BulkLine> lines;
    size_t changed = 0;   // students
    size_t skipped = 0;   // students of whom something was not written
    bool stopped = false; // by the person or by an error; what was written before stays
};

class BulkEdit {
  public:
    // All must outlive it. `title`: of the command, under which the right to write is stored. REQUIRES:
    // databases are connected whenever a function is called.
    BulkEdit(const BulkCommand& command, QString title, DatabaseSet& databases, Dialogs& dialogs,
             const Clock& clock);
    const BulkCommand& command() const { return command_; }

    // What students can be chosen by: professions, stages and classes that some student has.
    std::vector<Profession> professions();
    QStringList stages();
    QStringList classes();
    std::vector<StoredRow> students(const BulkSelection& selection); // by number

    std::vector<FormChoice> choices(const BulkField& field); // empty for a field that is no Choice
    QString label(const BulkField& field) const;
    int width(const BulkField& field) const;                      // characters
    QString shown(const BulkField& field, const QString& stored); // what a person reads for it
    QStringList inUse(const BulkField& field); // values that students have, to be offered while typing
    // What the field would hold for the typed text, without a look at the student; gives a refusal when it is
    // no value of the field.
    QString valueOf(const BulkField& field, const QString& typed, QString& refusal);

    // What would change, with what keeps it from changing; a value that stays as it is has no line.
    std::vector<BulkLine> preview(const std::vector<BulkWish>& wishes);
    // Asks, then writes under one lock; a student whom another station changed or deleted meanwhile is
    // skipped. Nothing when the person may not, does not want to, or nothing is to be done. Database errors
    // before the first write are thrown as jet::Error.
    std::optional<BulkOutcome> run(const std::vector<BulkWish>& wishes);

  private:
    using Wishes = std::vector<BulkWish>;
    QStringList firstColumn(const char* sql);
    QStringList fieldsRead() const;
    std::vector<BulkLine> evaluate(const Wishes& wishes, jet::Table& table);
    void addLines(const BulkWish& wish, size_t place, const std::optional<FieldTexts>& fresh,
                  std::vector<BulkLine>& lines);
    void refuseDoubles(const BulkField& field, const Wishes& wishes, jet::Table& table,
                       std::vector<BulkLine>& lines);
    bool confirmed(const std::vector<BulkLine>& lines);
    void write(const Wishes& wishes, jet::Table& table, Progress& progress, BulkOutcome& outcome);
    const FieldDeclaration& declaration(const BulkField& field) const;

    const BulkCommand& command_;
    QString title_;
    DatabaseSet& databases_;
    Dialogs& dialogs_;
    const Clock& clock_;
    std::map<QString, std::vector<FormChoice>> choices_; // by field, read once per preview or run
};

// Students of whom something can be written, and those of whom something cannot.
size_t studentsToChange(const std::vector<BulkLine>& lines);
size_t studentsToSkip(const std::vector<BulkLine>& lines);

} // namespace orvan
