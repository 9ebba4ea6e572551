// records/bulk_commands.h — which fields of many students can be set at once, one declaration per command:
// how the value is entered, which values are allowed, what else is checked. Read by the bulk-edit rule and
// screen.
#pragma once

#include "core/database_set.h"
#include "records/registration_choices.h"
#include "reference/stored_rows.h"

#include <QDate>
#include <vector>

namespace orvan {

enum class BulkInput {
    OneForAll, // one value for the ticked students
    EachOwn,   // a value per student, in a grid
};
enum class BulkEditor { Text, Code, Date, Choice, YesNo };

// What is wrong with the student as he will be, as a sentence; empty: nothing. `student` holds the command's
// fields and those of alsoRead.
using BulkCheck = QString (*)(const FieldTexts& student, QDate today);

struct BulkField {
    const char* name; // of OgrenciBilgisi; label and width are those of its declaration
    BulkEditor editor = BulkEditor::Text;
    // Of a Choice that offers more or other values than the registration forms do; a code may be one that
    // only `derive` understands.
    std::vector<FormChoice> (*choices)(DatabaseSet& databases) = nullptr;
    BulkCheck refusal = nullptr; // the value is not written
    BulkCheck warning = nullptr; // it is, but the person should look
    // The value that a choice means for this student; gives a refusal when it means none. Null: the choice.
    QString (*derive)(const FieldTexts& student, const QString& choice, QString& refusal) = nullptr;
    bool unique = false; // no two students hold the same value
};

struct BulkCommand {
    const char* key;    // of the command list
    const char* window; // name of the window
    BulkInput input;
    std::vector<BulkField> fields;
    std::vector<const char*> alsoRead = {}; // more fields that the checks look at

    const BulkField* field(const QString& name) const; // nullptr when there is none
};

const std::vector<BulkCommand>& bulkCommands();
const BulkCommand& bulkCommand(const QString& key); // REQUIRES: there is one

} // namespace orvan
