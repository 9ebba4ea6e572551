// jet/sql/virtual_plan.cpp — which index serves a set of tests best, and whether it gives the wanted order.
// What an index is asked for may be wider than the test, never narrower: SQLite tests every row again.
#include "jet/sql/virtual_table.h"

#include <algorithm>
#include <cmath>

namespace jet::sql {
namespace {

constexpr double kRowByIndex = 1.6;  // cost of a row found through an index, in rows of a scan
constexpr double kStart = 5;         // of any walk
constexpr double kLookupCost = 0.3;  // of a search in memory, as a share of a scan: making it is not free
constexpr double kEqualKeeps = 0.04; // share of rows that one "=" leaves, when nothing better is known
constexpr double kRangeKeeps = 0.3;  // the same for one bound

struct Tests { // constraint numbers on one field; -1 = none
    int equal = -1, null = -1, lower = -1, upper = -1;
};

struct Candidate {
    Plan plan;
    std::vector<int> arguments; // constraints, in the order of the cursor's arguments
    std::string bounds;         // "A=, B>=" for people
    double rows = 0, cost = 0;
    bool ordered = false, single = false;
};

// Keys of these types are found by equality of values alone.
bool seekable(Type type) {
    switch (type) {
    case Type::Memo:
    case Type::Ole:
    case Type::Binary:
    case Type::Guid:
    case Type::Numeric: return false;
    default: return true;
    }
}

class Chooser {
  public:
    Chooser(VirtualTable& table, sqlite3_index_info& info)
        : table_(table), def_(table.source->def), info_(info), tests_(def_.fields.size()) {
        rows_ = std::max(1.0, static_cast<double>(table.source->table.rowCount()));
        for (int i = 0; i < info.nConstraint; ++i)
            sort(i);
    }

    void run() {
        Candidate best;
        best.rows = rows_;
        best.cost = rows_ + kStart;
        best.ordered = info_.nOrderBy == 0;
        for (size_t i = 0; i < def_.indexes.size() && i < 250; ++i)
            if (const auto candidate = tryIndex(i); candidate && total(*candidate) < total(best))
                best = *candidate;
        for (size_t field = 0; field < tests_.size() && field < 255; ++field)
            if (const auto candidate = tryLookup(field); candidate && total(*candidate) < total(best))
                best = *candidate;
        give(best);
    }

  private:
    // What it will cost SQLite with the sorting that is left.
    double total(const Candidate& candidate) const {
        return candidate.cost +
               (candidate.ordered ? 0 : 0.5 * candidate.rows * std::log2(candidate.rows + 1));
    }

    void sort(int number) {
        const auto& test = info_.aConstraint[number];
        if (!test.usable || test.iColumn < 0) return;
        const auto field = static_cast<size_t>(test.iColumn);
        const Type type = def_.fields[field].type;
        if (!seekable(type)) return;
        if (!table_.collations[field].empty() && test.op != SQLITE_INDEX_CONSTRAINT_ISNULL &&
            table_.collations[field] != sqlite3_vtab_collation(&info_, number))
            return;
        Tests& tests = tests_[field];
        switch (test.op) {
        case SQLITE_INDEX_CONSTRAINT_EQ: tests.equal = number; break;
        case SQLITE_INDEX_CONSTRAINT_ISNULL: tests.null = number; break;
        case SQLITE_INDEX_CONSTRAINT_GT:
        case SQLITE_INDEX_CONSTRAINT_GE:
            if (type != Type::Boolean) tests.lower = number;
            break;
        case SQLITE_INDEX_CONSTRAINT_LT:
        case SQLITE_INDEX_CONSTRAINT_LE:
            if (type != Type::Boolean) tests.upper = number;
            break;
        default: break;
        }
    }

    std::optional<Candidate> tryIndex(size_t number) const {
        const IndexDef& index = def_.indexes[number];
        if (!index.readOnlyReason.empty() || index.fields.empty()) return {};
        Candidate candidate;
        Plan& plan = candidate.plan;
        plan.index = static_cast<int>(number) + 1;
        bool nullFree = true; // no entry asked for can be one that the index leaves out
        for (const IndexField& part : index.fields) {
            const Tests& tests = tests_[part.field];
            const std::string& name = def_.fields[part.field].name;
            if (tests.equal >= 0) {
                candidate.arguments.push_back(tests.equal);
                candidate.bounds += (candidate.bounds.empty() ? "" : ", ") + name + "=";
            } else if (tests.null >= 0) {
                plan.nulls |= 1u << plan.equal;
                nullFree = false;
                candidate.bounds += (candidate.bounds.empty() ? "" : ", ") + name + " boş";
            } else
                break;
            ++plan.equal;
        }
        const auto equal = static_cast<size_t>(plan.equal);
        if (equal < index.fields.size()) addRange(index.fields[equal].field, candidate);
        const size_t bound = equal + (plan.lower || plan.upper ? 1 : 0);
        if (index.ignoreNulls && (!nullFree || bound < index.fields.size())) return {};
        candidate.ordered = ordered(index, plan);
        if (bound == 0 && (!candidate.ordered || info_.nOrderBy == 0)) return {};
        estimate(index, candidate);
        return candidate;
    }

    std::optional<Candidate> tryLookup(size_t field) const {
        const int test = tests_[field].equal;
        sqlite3_value* constant = nullptr; // one value for the whole statement is searched once
        if (test < 0 || !canLookUp(def_.fields[field]) ||
            sqlite3_vtab_rhs_value(&info_, test, &constant) == SQLITE_OK)
            return {};
        Candidate candidate;
        candidate.plan.lookUp = true;
        candidate.plan.index = static_cast<int>(field) + 1;
        candidate.arguments = {test};
        candidate.bounds = def_.fields[field].name + "=";
        candidate.ordered = info_.nOrderBy == 0;
        candidate.rows = std::max(1.0, rows_ * kEqualKeeps);
        candidate.cost = kStart + rows_ * kLookupCost;
        return candidate;
    }

    void addRange(uint16_t field, Candidate& candidate) const {
        const Tests& tests = tests_[field];
        const auto add = [&](int test, bool& present, bool& inclusive, int inclusiveOp, const char* strict) {
            if (test < 0) return;
            present = true;
            inclusive = info_.aConstraint[test].op == inclusiveOp;
            candidate.arguments.push_back(test);
            candidate.bounds += (candidate.bounds.empty() ? "" : ", ") + def_.fields[field].name + strict;
            if (inclusive) candidate.bounds += "=";
        };
        Plan& plan = candidate.plan;
        add(tests.lower, plan.lower, plan.lowerInclusive, SQLITE_INDEX_CONSTRAINT_GE, ">");
        add(tests.upper, plan.upper, plan.upperInclusive, SQLITE_INDEX_CONSTRAINT_LE, "<");
    }

    // Does the walk give what ORDER BY asks for? Fields fixed by "=" have one value and do not count.
    bool ordered(const IndexDef& index, Plan& plan) const {
        auto next = static_cast<size_t>(plan.equal);
        std::optional<bool> backwards;
        for (int i = 0; i < info_.nOrderBy; ++i) {
            const auto& term = info_.aOrderBy[i];
            const auto isTerm = [&](const IndexField& part) { return part.field == term.iColumn; };
            if (std::any_of(index.fields.begin(), index.fields.begin() + plan.equal, isTerm)) continue;
            if (next >= index.fields.size() || !isTerm(index.fields[next])) return false;
            const bool turned = (term.desc != 0) != index.fields[next].descending;
            if (backwards && *backwards != turned) return false;
            backwards = turned;
            ++next;
        }
        plan.backwards = backwards.value_or(false);
        return true;
    }

    void estimate(const IndexDef& index, Candidate& candidate) const {
        const Plan& plan = candidate.plan;
        const auto fields = static_cast<double>(index.fields.size()), equal = static_cast<double>(plan.equal);
        candidate.single = (index.unique || index.primary) && equal == fields && plan.nulls == 0;
        double rows = rows_;
        if (candidate.single)
            rows = 1;
        else if (index.unique || index.primary)
            rows = std::pow(rows_, 1 - equal / fields);
        else
            rows = rows_ * std::pow(kEqualKeeps, equal);
        rows *= (plan.lower ? kRangeKeeps : 1) * (plan.upper ? kRangeKeeps : 1);
        candidate.rows = std::max(1.0, rows);
        candidate.cost = kStart + std::log2(rows_ + 1) + candidate.rows * kRowByIndex;
    }

    void give(const Candidate& best) {
        for (size_t i = 0; i < best.arguments.size(); ++i)
            info_.aConstraintUsage[best.arguments[i]].argvIndex = static_cast<int>(i) + 1;
        info_.idxNum = best.plan.packed();
        info_.estimatedCost = best.cost;
        info_.estimatedRows = static_cast<sqlite3_int64>(std::ceil(best.rows));
        info_.orderByConsumed = info_.nOrderBy > 0 && best.ordered;
        if (best.single) info_.idxFlags |= SQLITE_INDEX_SCAN_UNIQUE;
        std::string text = def_.name + ": ";
        if (best.plan.index == Plan::kScan)
            text += "baştan sona tarama";
        else if (best.plan.lookUp)
            text += "baştan sona tarama, yinelenirse bellekte dizin (" + best.bounds + ")";
        else {
            text += def_.indexes[static_cast<size_t>(best.plan.index) - 1].name;
            text += best.bounds.empty() ? " sırasıyla tarama" : " ile arama (" + best.bounds + ")";
        }
        info_.idxStr = sqlite3_mprintf("%s", text.c_str());
        info_.needToFreeIdxStr = 1;
    }

    VirtualTable& table_;
    const TableDef& def_;
    sqlite3_index_info& info_;
    std::vector<Tests> tests_;
    double rows_ = 1;
};

} // namespace

int Plan::packed() const {
    return index | equal << 8 | static_cast<int>(nulls << 12) | lower << 22 | upper << 23 |
           lowerInclusive << 24 | upperInclusive << 25 | backwards << 26 | lookUp << 27;
}

Plan Plan::unpack(int number) {
    const auto bit = [number](int at) { return (number >> at & 1) != 0; };
    Plan plan;
    plan.index = number & 0xFF;
    plan.equal = number >> 8 & 0xF;
    plan.nulls = static_cast<unsigned>(number >> 12 & 0x3FF);
    plan.lower = bit(22);
    plan.upper = bit(23);
    plan.lowerInclusive = bit(24);
    plan.upperInclusive = bit(25);
    plan.backwards = bit(26);
    plan.lookUp = bit(27);
    return plan;
}

int chooseBestPlan(sqlite3_vtab* base, sqlite3_index_info* info) {
    auto& table = *static_cast<VirtualTable*>(base);
    return caught(*table.context, [&] { Chooser(table, *info).run(); });
}

} // namespace jet::sql
