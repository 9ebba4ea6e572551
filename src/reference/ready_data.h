// reference/ready_data.h — the ready-made curricula as data: common professions with their courses, hours and
// years for curriculum versions 3 and 4. A starting point: a centre loads them and edits them.
#pragma once

#include <span>

namespace orvan {

// Hours a week, a digit per year of training: "2200/20" = four years of the primary track, then two of the
// high-school track. '0': not taught in that year.
struct ReadyCourse {
    const char* code; // DersKodu; of a profession's own course the part behind its code and a point
    const char* name;
    const char* shortName;
    const char* third;  // hours of version 3, "" where the version does not have it
    const char* fourth; // of version 4
    char master;        // hours of the year of master training, '0' none
};

struct ReadyProfession {
    const char* code;
    const char* name;
    const char* shortName;
    std::span<const ReadyCourse> courses; // vocational
};

struct ReadyMainProfession {
    const char* code;
    const char* name;
};

std::span<const ReadyMainProfession> readyMainProfessions();
std::span<const ReadyProfession> readyProfessions();
std::span<const ReadyCourse> readyGeneralCourses(); // that every profession has; kind "K"
std::span<const ReadyCourse> readyCommonCourses();  // the same, of kind "M"

} // namespace orvan
