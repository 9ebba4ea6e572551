// records/search_places.h — the level databases and archives in which a student may be, in the order in which
// they are searched, with the labels under which he is reported. Reads names of files only.
#pragma once

#include "core/program_folder.h"

#include <vector>

namespace orvan {

struct SearchPlace {
    QString code;          // "KALFA", "MKAL", …
    QString label;         // "*Kalfa mezun arşivi ", with the blanks it has
    QString schoolYear;    // "2008-2009" of an archive; empty for a working file
    QString file;          // whole path of a file that exists
    QString words() const; // "Kalfa mezun arşivi 2008-2009", for a list
};

// Master instructors, journeymen, masters, their archives (the newest year first), equivalence with its
// archives. Files that do not exist are left out.
std::vector<SearchPlace> searchPlaces(const ProgramFolder& folder);
// The same and the working file of İşyeri Açma, which has no code of its own among them.
std::vector<SearchPlace> allSearchPlaces(const ProgramFolder& folder);

} // namespace orvan
