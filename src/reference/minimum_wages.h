// reference/minimum_wages.h — AsgariUcret: the daily minimum wages, a row a month. Figures come from the
// person alone; months without a row are named, never guessed.
#pragma once

#include "core/database_set.h"
#include "reference/stored_rows.h"

#include <QDate>

namespace orvan {

struct WageMonth {
    int month = 1;        // 1..12
    QString adult, young; // BuyukGunluk, KucukGunluk: older and younger than 16; "123.4500", empty: none
    bool newLira = false; // YtlVar "E"

    bool isEmpty() const { return adult.isEmpty() && young.isEmpty(); }
    bool operator==(const WageMonth&) const = default;
};

struct WagePeriod {
    int year = 0, month = 0;
    auto operator<=>(const WagePeriod&) const = default;
};

// The months without a row from the first one that has a row to the last one or `today`, whichever is later.
std::vector<WagePeriod> missingWages(const std::vector<WagePeriod>& stored, QDate today);
// "2008: Ocak-Mart, Mayıs; 2009: Temmuz"; empty for none.
QString periodsText(const std::vector<WagePeriod>& periods);
QString monthName(int month); // 1..12

struct WageOutcome {
    bool saved = false;
    int month = 0;  // of the refused cell; 0: the person has decided, or it is saved
    QString field;  // kAdultWage or kYoungWage
    QString reason; // why it is refused
};

inline constexpr auto kAdultWage = "BuyukGunluk";
inline constexpr auto kYoungWage = "KucukGunluk";

class MinimumWages {
  public:
    // All must outlive it. REQUIRES: databases are connected.
    MinimumWages(DatabaseSet& databases, Dialogs& dialogs, QString title);

    std::vector<WagePeriod> periods(); // that have a row, in order
    // Twelve months as they are stored; what is read is what save() compares with.
    std::vector<WageMonth> load(int year);
    // Adds, changes and (months that are empty now) deletes rows of the loaded year, after asking about the
    // deletes. REQUIRES: twelve months.
    WageOutcome save(const std::vector<WageMonth>& wanted);
    bool mayWrite();

    // New rows are in new lira from 2005 on.
    static bool isNewLira(int year) { return year >= 2005; }

  private:
    WageOutcome check(const std::vector<WageMonth>& wanted) const;
    bool acceptsDeletes(const std::vector<WageMonth>& wanted);
    int insuranceRows(int month);
    bool store(const WageMonth& wanted);
    StoredRows stored() const;
    FieldTexts textsOf(const WageMonth& wanted) const;
    WageMonth& before(int month) { return loaded_[static_cast<size_t>(month - 1)]; }
    const WageMonth& before(int month) const { return loaded_[static_cast<size_t>(month - 1)]; }

    DatabaseSet& databases_;
    Dialogs& dialogs_;
    QString title_;
    int year_ = 0;
    std::vector<WageMonth> loaded_;
    std::map<int, StoredRow> rows_; // by month
};

} // namespace orvan
