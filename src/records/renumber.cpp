// records/renumber.cpp — looks up all rows first, so that numbers may be swapped within one list; then writes
// table by table in the fixed order, the students last.
#include "records/renumber.h"

#include "core/turkish_text.h"
#include "records/dependent_tables.h"
#include "records/student_photo.h"
#include "records/trimmed_rows.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

namespace orvan {
namespace {

constexpr qsizetype kShortestNumber = 5; // four characters of the profession and a serial
constexpr auto kStudents = "OgrenciBilgisi";
constexpr auto kNumber = "Ogr_Numarasi";
constexpr auto kRegistrationNo = "Ogr_Kayit_No";

bool numberMoves(const Renumbering& wanted) {
    return wanted.changesNumber() && trimBlanks(wanted.newNumber) != trimBlanks(wanted.oldNumber);
}
bool registrationMoves(const Renumbering& wanted) {
    return wanted.changesRegistrationNo() && wanted.newRegistrationNo != wanted.oldRegistrationNo;
}

struct StudentRow {
    jet::RowId id;
    StudentName name;
};

// One entry of the list and the rows it concerns.
struct Move {
    std::vector<StudentRow> students;
    bool alone = true; // nobody else has the old number
};

class Renumberer {
  public:
    Renumberer(jet::Database& level, const std::vector<Renumbering>& list)
        : level_(level), list_(list), students_(level.openTable(kStudents)) {}

    std::vector<RenumberProblem> look();
    void write(RenumberReach reach, RenumberReport& report);

  private:
    std::optional<RenumberFault> faultOf(size_t which);
    std::optional<RenumberFault> shapeFault(const Renumbering& wanted);
    std::vector<jet::RowId> holders(const Renumbering& wanted, bool& alone);
    void findStudents();
    bool taken(const std::vector<jet::RowId>& holders, const std::map<jet::RowId, size_t>& leaving,
               size_t which) const;
    void writeTable(const DependentTable& about, RenumberReport& report);
    void writeStudents(RenumberReport& report);
    void stepAside();

    jet::Database& level_;
    const std::vector<Renumbering>& list_;
    jet::Table students_;
    std::vector<Move> moves_;
    // rows of students that give up their number or registration number, by the entry that takes it
    std::map<jet::RowId, size_t> numberLeavers_, registrationLeavers_;
    std::set<QString> newNumbers_;
    std::set<int> newRegistrations_;
};

std::vector<jet::RowId> Renumberer::holders(const Renumbering& wanted, bool& alone) {
    const QString number = trimBlanks(wanted.oldNumber);
    if (number.isEmpty()) return rowsByNumber(level_, kStudents, kRegistrationNo, wanted.oldRegistrationNo);
    std::vector<jet::RowId> rows = rowsByText(level_, kStudents, kNumber, number);
    if (!wanted.changesRegistrationNo()) return rows;
    const size_t before = rows.size();
    std::erase_if(rows, [&](jet::RowId row) {
        return trimmedTexts(students_, row, {kRegistrationNo})[0] !=
               QString::number(wanted.oldRegistrationNo);
    });
    alone = rows.size() == before;
    return rows;
}

void Renumberer::findStudents() {
    for (size_t i = 0; i < list_.size(); ++i) {
        Move move;
        for (const jet::RowId row : holders(list_[i], move.alone)) {
            auto texts = trimmedTexts(students_, row, {"Ogr_Adi", "Ogr_Soyadi"});
            move.students.push_back({row, {texts[0], texts[1]}});
            if (numberMoves(list_[i])) numberLeavers_.emplace(row, i);
            if (registrationMoves(list_[i])) registrationLeavers_.emplace(row, i);
        }
        moves_.push_back(std::move(move));
    }
}

std::vector<RenumberProblem> Renumberer::look() {
    findStudents();
    std::vector<RenumberProblem> problems;
    for (size_t i = 0; i < list_.size(); ++i)
        if (const auto fault = faultOf(i)) problems.push_back({i, *fault});
    return problems;
}

std::optional<RenumberFault> Renumberer::shapeFault(const Renumbering& wanted) {
    if (registrationMoves(wanted) && wanted.newRegistrationNo <= 0) return RenumberFault::TooLong;
    if (!numberMoves(wanted)) return {};
    const QString number = trimBlanks(wanted.newNumber);
    if (number.size() < kShortestNumber) return RenumberFault::TooShort;
    const jet::TableDef& def = students_.def();
    const auto width = [&](const char* field) {
        const auto place = def.findField(field);
        return place ? static_cast<qsizetype>(def.fields[*place].size) : 0;
    };
    if (number.size() > width(kNumber) || wanted.newProfessionCode.size() > width("Ogr_MeslekKod"))
        return RenumberFault::TooLong;
    const auto isPlain = [](QChar c) {
        return c.isLetterOrNumber() ? c.unicode() < 0x250 : c.unicode() < 0x7F;
    };
    if (!std::all_of(number.begin(), number.end(), isPlain)) return RenumberFault::BadCharacter;
    return {};
}

// Held by a student who keeps it.
bool Renumberer::taken(const std::vector<jet::RowId>& holders, const std::map<jet::RowId, size_t>& leaving,
                       size_t which) const {
    return std::any_of(holders.begin(), holders.end(), [&](jet::RowId row) {
        const auto& own = moves_[which].students;
        const bool isOwn =
            std::any_of(own.begin(), own.end(), [row](const StudentRow& each) { return each.id == row; });
        return !isOwn && !leaving.contains(row);
    });
}

std::optional<RenumberFault> Renumberer::faultOf(size_t which) {
    const Renumbering& wanted = list_[which];
    if (const auto fault = shapeFault(wanted)) return fault;
    if (moves_[which].students.empty()) return RenumberFault::NoSuchStudent;
    if (numberMoves(wanted)) {
        const QString number = trimBlanks(wanted.newNumber);
        if (taken(rowsByText(level_, kStudents, kNumber, number), numberLeavers_, which) ||
            !newNumbers_.insert(upperTurkish(number)).second)
            return RenumberFault::NumberTaken;
    }
    if (registrationMoves(wanted)) {
        const int number = wanted.newRegistrationNo;
        if (taken(rowsByNumber(level_, kStudents, kRegistrationNo, number), registrationLeavers_, which) ||
            !newRegistrations_.insert(number).second)
            return RenumberFault::RegistrationTaken;
    }
    return {};
}

// The rows of all entries are looked up before the first is written.
void Renumberer::writeTable(const DependentTable& about, RenumberReport& report) {
    std::vector<std::pair<jet::RowId, size_t>> rows;
    for (size_t i = 0; i < list_.size(); ++i) {
        if (!numberMoves(list_[i])) continue;
        const StudentName* name = moves_[i].alone ? nullptr : &moves_[i].students.front().name;
        for (const jet::RowId row : dependentRows(level_, about, trimBlanks(list_[i].oldNumber), name))
            rows.emplace_back(row, i);
    }
    if (rows.empty()) return;
    jet::Table table = level_.openTable(about.table);
    for (const auto& [row, which] : rows)
        changeRow(table, row, {{about.number, textValue(trimBlanks(list_[which].newNumber))}});
    report.dependentRows += rows.size();
}

// Students whose number another one of the list takes over get out of his way first: the index of numbers
// does not let two have the same, not even for a moment.
void Renumberer::stepAside() {
    int place = 0;
    for (size_t i = 0; i < list_.size(); ++i) {
        if (!numberMoves(list_[i])) continue;
        for (const jet::RowId row : rowsByText(level_, kStudents, kNumber, list_[i].newNumber)) {
            const auto leaver = numberLeavers_.find(row);
            if (leaver == numberLeavers_.end() || leaver->second == i) continue;
            changeRow(students_, row, {{kNumber, textValue(QStringLiteral("*%1*").arg(++place))}});
        }
    }
}

void Renumberer::writeStudents(RenumberReport& report) {
    stepAside();
    for (size_t i = 0; i < list_.size(); ++i) {
        const Renumbering& wanted = list_[i];
        std::vector<NewValue> values;
        if (wanted.changesNumber()) {
            values.push_back({kNumber, textValue(trimBlanks(wanted.newNumber))});
            const QString code = trimBlanks(wanted.newProfessionCode);
            if (!code.isEmpty()) values.push_back({"Ogr_MeslekKod", textValue(code)});
        }
        if (wanted.changesRegistrationNo())
            values.push_back({kRegistrationNo, jet::Value(wanted.newRegistrationNo)});
        for (const StudentRow& student : moves_[i].students)
            changeRow(students_, student.id, values);
        report.students += moves_[i].students.size();
    }
}

void Renumberer::write(RenumberReach reach, RenumberReport& report) {
    for (const DependentTable& table : numberedTables())
        writeTable(table, report);
    if (reach == RenumberReach::AllOfHim)
        for (const DependentTable& table : dayTables())
            writeTable(table, report);
    writeStudents(report);
}

std::vector<PhotoMove> photoMoves(const std::vector<Renumbering>& list) {
    std::vector<PhotoMove> moves;
    for (const Renumbering& each : list) {
        const QString from = trimBlanks(each.oldNumber), to = trimBlanks(each.newNumber);
        if (numberMoves(each) && !from.isEmpty()) moves.push_back({from, to});
    }
    return moves;
}

} // namespace

QString problemText(const RenumberProblem& problem, const Renumbering& wanted) {
    switch (problem.fault) {
    case RenumberFault::TooShort:
        return QStringLiteral("Kütük No en az beş karakter olmalı: “%1”.").arg(wanted.newNumber);
    case RenumberFault::TooLong:
        return QStringLiteral("Kütük No veya Kayıt No sınırların dışında: “%1” / %2.")
            .arg(wanted.newNumber)
            .arg(wanted.newRegistrationNo);
    case RenumberFault::NoSuchStudent:
        return QStringLiteral("Kütük No %1, Kayıt No %2 olan öğrenci artık yok.")
            .arg(wanted.oldNumber)
            .arg(wanted.oldRegistrationNo);
    case RenumberFault::NumberTaken:
        return QStringLiteral("Kütük No %1 başka bir öğrencide var.").arg(wanted.newNumber);
    case RenumberFault::RegistrationTaken:
        return QStringLiteral("Kayıt No %1 başka bir öğrencide var.").arg(wanted.newRegistrationNo);
    case RenumberFault::BadCharacter:
        return QStringLiteral("Kütük No yalnız harf ve rakamdan oluşmalı: “%1”.").arg(wanted.newNumber);
    }
    return {};
}

std::vector<RenumberProblem> renumberProblems(jet::Database& level, const std::vector<Renumbering>& list) {
    const jet::ReadScope scope(level.pages());
    return Renumberer(level, list).look();
}

RenumberReport renumberUnderLock(jet::Database& level, const std::vector<Renumbering>& list,
                                 RenumberReach reach) {
    RenumberReport report;
    Renumberer renumberer(level, list);
    report.problems = renumberer.look();
    if (report.done()) renumberer.write(reach, report);
    return report;
}

QStringList carryPhotos(const ProgramFolder& folder, const std::vector<Renumbering>& list) {
    return renamePhotos(folder, photoMoves(list));
}

RenumberReport renumberStudents(DatabaseSet& databases, const std::vector<Renumbering>& list,
                                RenumberReach reach) {
    if (list.empty()) return {};
    jet::WriteBatch batch(databases.level().database());
    RenumberReport report = renumberUnderLock(databases.level().database(), list, reach);
    batch.commit();
    if (report.done()) report.photos = carryPhotos(databases.folder(), list);
    return report;
}

bool renumberStudent(DatabaseSet& databases, const Renumbering& renumbering) {
    return renumberStudents(databases, {renumbering}, RenumberReach::Numbered).done();
}

} // namespace orvan
