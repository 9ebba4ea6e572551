// records/student_search.cpp — see student_search.h.
#include "records/student_search.h"

#include "core/database_set.h"
#include "core/passwords.h"
#include "core/turkish_text.h"
#include "records/trimmed_rows.h"
#include "reference/code_lists.h"

#include <algorithm>
#include <array>
#include <map>

namespace orvan {
namespace {

constexpr auto kStudents = "OgrenciBilgisi";

enum Column {
    Number,
    RegistrationNo,
    Name,
    Surname,
    IdentityNo,
    FatherName,
    ClassName,
    Stage,
    Workplace,
    ProfessionCode,
    Curriculum,
    ColumnCount
};
constexpr std::array<const char*, ColumnCount> kColumns = {
    "Ogr_Numarasi",  "Ogr_Kayit_No", "Ogr_Adi",
    "Ogr_Soyadi",    "Ogr_Mernis",   "Ogr_Nufus_Baba_Adi",
    "Ogr_Sinif",     "Ogr_Seviye",   "Ogr_calistigi_isyerinin_adi",
    "Ogr_MeslekKod", "DersID"};

// One file, open for the length of its search.
class PlaceSearch {
  public:
    PlaceSearch(const SearchPlace& place, size_t number)
        : number_(number), connection_(place.file, legacyPassword()),
          students_(connection_.database().openTable(kStudents)), scope_(connection_.database().pages()) {
        const jet::TableDef& def = students_.def();
        for (size_t i = 0; i < kColumns.size(); ++i)
            fields_[i] = def.findField(kColumns[i]);
    }

    void byIdentityNumber(const QString& identityNo, std::vector<FoundStudent>& found) {
        for (const jet::RowId row :
             rowsByText(connection_.database(), kStudents, kColumns[IdentityNo], identityNo)) {
            const std::vector<jet::Value> values = students_.read(row);
            found.push_back(student([&](size_t field) { return values[field]; }));
        }
    }
    void byTerms(const SearchTerms& terms, std::vector<FoundStudent>& found) {
        for (jet::Scan scan = students_.scan(); scan.next();)
            if (matches(scan, terms))
                found.push_back(student([&](size_t field) { return scan.value(field); }));
    }

  private:
    bool matches(jet::Scan& scan, const SearchTerms& terms) {
        return begins(scan, IdentityNo, terms.identityNo) && begins(scan, Number, terms.number) &&
               holds(scan, Name, terms.name) && holds(scan, Surname, terms.surname) &&
               holds(scan, Workplace, terms.workplace) && holds(scan, FatherName, terms.fatherName);
    }
    QString text(jet::Scan& scan, Column column) {
        const auto field = fields_[column];
        if (!field || scan.row().isNull(*field)) return {};
        return trimmedText(scan.value(*field));
    }
    bool begins(jet::Scan& scan, Column column, const QString& term) {
        return term.isEmpty() || upperTurkish(text(scan, column)).startsWith(upperTurkish(term));
    }
    bool holds(jet::Scan& scan, Column column, const QString& term) {
        return term.isEmpty() || containsTurkish(text(scan, column), term);
    }
    template <class Read> FoundStudent student(const Read& read) {
        const auto text = [&](Column column) {
            return fields_[column] ? trimmedText(read(*fields_[column])) : QString();
        };
        FoundStudent one;
        one.place = number_;
        one.number = text(Number);
        one.registrationNo = text(RegistrationNo).toInt();
        one.name = text(Name);
        one.surname = text(Surname);
        one.identityNo = text(IdentityNo);
        one.fatherName = text(FatherName);
        one.className = text(ClassName);
        one.stage = text(Stage);
        one.workplace = text(Workplace);
        one.professionCode = text(ProfessionCode);
        one.profession = professionText(one.professionCode, text(Curriculum).toInt());
        return one;
    }
    QString professionText(const QString& code, int version) {
        if (!namesRead_) {
            namesRead_ = true;
            for (const Profession& each : professions(connection_.sql()))
                names_[{each.code, each.version}] = each.name;
        }
        const auto name = names_.find({code, version});
        return name == names_.end() ? QString() : name->second;
    }

    size_t number_;
    Connection connection_;
    jet::Table students_;
    jet::ReadScope scope_;
    std::array<std::optional<size_t>, ColumnCount> fields_;
    std::map<std::pair<QString, int>, QString> names_;
    bool namesRead_ = false;
};

void sortByName(std::vector<FoundStudent>& found, size_t first) {
    std::stable_sort(found.begin() + static_cast<ptrdiff_t>(first), found.end(),
                     [](const FoundStudent& a, const FoundStudent& b) {
                         const int name = compareTurkish(a.name, b.name);
                         return name != 0 ? name < 0 : lessTurkish(a.surname, b.surname);
                     });
}

template <class Search> void searchPlace(SearchResult& result, size_t number, const Search& search) {
    const size_t first = result.found.size();
    try {
        PlaceSearch place(result.places[number], number);
        search(place, result.found);
    } catch (const std::exception& error) {
        result.found.resize(first);
        result.unreadable << QStringLiteral("%1: %2").arg(result.places[number].file, errorText(error));
    }
    sortByName(result.found, first);
}

SearchTerms trimmed(const SearchTerms& terms) {
    return {trimBlanks(terms.number),     trimBlanks(terms.name),      trimBlanks(terms.surname),
            trimBlanks(terms.identityNo), trimBlanks(terms.workplace), trimBlanks(terms.fatherName)};
}

} // namespace

bool SearchTerms::isEmpty() const {
    const SearchTerms t = trimmed(*this);
    return (t.number + t.name + t.surname + t.identityNo + t.workplace + t.fatherName).isEmpty();
}

SearchResult searchStudents(const std::vector<SearchPlace>& places, const SearchTerms& terms,
                            Dialogs& dialogs) {
    SearchResult result;
    result.places = places;
    if (terms.isEmpty()) return result;
    const SearchTerms wanted = trimmed(terms);
    const auto progress =
        dialogs.beginProgress(QStringLiteral("Öğrenci aranıyor"), static_cast<int>(places.size()));
    for (size_t i = 0; i < places.size(); ++i) {
        progress->step(static_cast<int>(i), places[i].words());
        if (progress->cancelled()) {
            result.stopped = true;
            break;
        }
        searchPlace(result, i, [&](PlaceSearch& place, auto& found) { place.byTerms(wanted, found); });
    }
    return result;
}

IdentitySearch findByIdentityNumber(const ProgramFolder& folder, const QString& identityNo) {
    IdentitySearch search{trimBlanks(identityNo), {}};
    search.result.places = searchPlaces(folder);
    if (search.number.isEmpty()) return search;
    for (size_t i = 0; i < search.result.places.size(); ++i)
        searchPlace(search.result, i,
                    [&](PlaceSearch& place, auto& found) { place.byIdentityNumber(search.number, found); });
    return search;
}

QString IdentitySearch::text() const {
    QString labels;
    QStringList seen;
    for (const FoundStudent& each : result.found) {
        const SearchPlace& place = result.places[each.place];
        if (seen.contains(place.code)) continue;
        seen << place.code;
        labels += place.label;
    }
    QStringList lines;
    if (isFound())
        lines << number + QStringLiteral(" TC Kimlik numarasında öğrenci var.")
              << labels + QStringLiteral(" çalışmasında");
    else
        lines << number + QStringLiteral(" TC Kimlik numarasında öğrenci YOKTUR.");
    if (!result.unreadable.isEmpty()) lines << QStringLiteral("Okunamayan dosyalar:") << result.unreadable;
    return lines.join(QLatin1Char('\n'));
}

} // namespace orvan
