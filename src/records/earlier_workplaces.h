// records/earlier_workplaces.h — the workplaces at which a student has been before: his history in the open
// level database, row by row in his order. Speaks through Dialogs; writes only what the user may write.
#pragma once

#include "core/database_set.h"
#include "reference/stored_rows.h"

#include <QDate>

namespace orvan {

// A row belongs to the student whose number, name and surname it bears (compared trimmed).
struct HistoryOwner {
    QString number, name, surname;
    bool operator==(const HistoryOwner&) const = default;
};

struct TimeSpent {
    int years = 0, months = 0, days = 0;
    bool operator==(const TimeSpent&) const = default;
};
// From the first day to the last one, both worked. REQUIRES: first <= last.
TimeSpent timeSpent(QDate first, QDate last);

class EarlierWorkplaces {
  public:
    // `title`: the screen's title, under which the right to write is stored. All must outlive it. REQUIRES:
    // databases are connected whenever a function is called.
    EarlierWorkplaces(DatabaseSet& databases, Dialogs& dialogs, QString title);

    std::optional<HistoryOwner> owner(const QString& number); // nothing when there is no such student
    std::vector<StoredRow> rows(const HistoryOwner& owner);   // in his order; rows without a place first

    // Adds (`row` empty; at the end) or changes; afterwards `row` is as it is stored. Where both dates are
    // given and no time, the time between them is filled in.
    SaveOutcome save(const HistoryOwner& owner, std::optional<StoredRow>& row, FieldTexts wanted);
    bool remove(const StoredRow& row); // asks; true: the row is gone
    enum class Move { Up, Down };
    // Changes places with its neighbour; the rows are numbered anew, from 1. False: it is at that end, the
    // row is gone, or the user may not write.
    bool move(const HistoryOwner& owner, const StoredRow& row, Move where);

    // "Önceki İşyerine Gönder": the student's current workplace, as it is stored (save him first), becomes
    // the last row of his history; his own fields stay. `student`: his Ogr_Numarasi. Nothing when it is
    // refused; the person has been told why: no right, no such student, no workplace, or it is there already.
    std::optional<StoredRow> sendToEarlier(const QString& student);

    const QStringList& fields() const { return fields_; } // what can be edited
    int width(const QString& field) const;
    bool mayWrite();

    // Names of workplaces in the students' records of the open level, with the number of students; by name.
    struct NameInUse {
        QString name;
        int students = 0;
    };
    std::vector<NameInUse> namesInUse();
    QStringList registeredNames(); // of the register of workplaces, by name
    // Writes `to` for the workplace `from` in the students' records of the open level; asks, with the number.
    // Histories and addresses stay. Returns how many students; nothing when it is refused or declined.
    std::optional<size_t> renameInStudents(const QString& from, const QString& to);

  private:
    StoredRows stored();
    SaveOutcome check(const FieldTexts& wanted, const StoredRow* before);
    StoredRow append(const HistoryOwner& owner, FieldTexts values);
    QString sendingFault(const HistoryOwner& owner, const FieldTexts& values);
    bool isKnown(const HistoryOwner& owner, const FieldTexts& values);
    FieldTexts currentWorkplace(const QString& number, HistoryOwner& owner);

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
    QStringList fields_;
};

} // namespace orvan
