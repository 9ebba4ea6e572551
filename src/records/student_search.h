// records/student_search.h — finds students in all level databases and archives. Each file is opened for
// reading, searched and closed again; one that cannot be opened is named in the result and the search goes
// on.
#pragma once

#include "core/dialogs.h"
#include "core/session.h"
#include "records/search_places.h"

#include <functional>

namespace orvan {

struct FoundStudent {
    size_t place = 0; // in the places of the search
    QString number;   // Kütük No
    int registrationNo = 0;
    QString name, surname, identityNo, fatherName, className, stage, workplace;
    QString professionCode, profession; // the name is empty when the code has none
};

struct SearchResult {
    std::vector<SearchPlace> places; // that were searched, or tried
    std::vector<FoundStudent> found; // in the order of the places; in one place by name
    QStringList unreadable;          // a sentence for each file that could not be read, naming it
    bool stopped = false;            // the person stopped the search; what was found till then is there
};

// Parts of texts, all of which must occur (Turkish case; an identity or student number from its beginning).
// Empty ones do not count; blanks at the ends neither.
struct SearchTerms {
    QString number = {}, name = {}, surname = {}, identityNo = {}, workplace = {}, fatherName = {};
    bool isEmpty() const;
};

// Over `places`, with a progress of the dialogs. No term at all finds nobody.
SearchResult searchStudents(const std::vector<SearchPlace>& places, const SearchTerms& terms,
                            Dialogs& dialogs);

// Where an identity number occurs (compared trimmed, found by its index).
struct IdentitySearch {
    QString number;
    SearchResult result;
    bool isFound() const { return !result.found.empty(); }
    // "… TC Kimlik numarasında öğrenci var." with the labels of the databases, each once, or "… öğrenci
    // YOKTUR."; then the files that could not be read.
    QString text() const;
};
IdentitySearch findByIdentityNumber(const ProgramFolder& folder, const QString& identityNo);

} // namespace orvan
