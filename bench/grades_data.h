// bench/grades_data.h — the table of grades that both engines get: 240,000 rows of 18 fields, the same for
// both. 10,000 students × 2 terms × 12 courses, written course by course, as a centre's marks come in.
#pragma once

#include <cstdint>
#include <string>

namespace bench {

inline constexpr int kStudents = 10'000, kTerms = 2, kCourses = 12;
inline constexpr int kRows = kStudents * kTerms * kCourses;
inline constexpr int kSeeks = 5'000;

struct Grade {
    int32_t id;
    std::string studentNo, firstName, surname, courseCode, courseName, schoolYear;
    int32_t term, hours;
    std::string oral1, oral2, written1, written2, written3, yearEnd;
    double average;
    int64_t feeTenThousandths;
    double enteredOn; // day count
};

// Row number 0..kRows-1 in writing order; `grade` is overwritten.
void makeGrade(int row, Grade& grade);
std::string studentNo(int student); // 0..kStudents-1
int seekStudent(int seek);          // spread over all students
int seekTerm(int seek);             // 1..kTerms

} // namespace bench
