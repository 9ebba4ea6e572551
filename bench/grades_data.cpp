#include "grades_data.h"

#include <array>
#include <cstdio>

namespace bench {
namespace {

constexpr std::array<const char*, 12> kNames{"Ayşe",  "Mehmet", "Çiğdem", "İbrahim", "Gül",  "Ömer",
                                             "Şükrü", "Zeynep", "Işıl",   "Hasan",   "Ümit", "Elif"};
constexpr std::array<const char*, 10> kSurnames{"Yılmaz", "Öztürk", "Şahin", "Kaya",  "Çelik",
                                                "Güneş",  "Aydın",  "Işık",  "Doğan", "Koç"};
constexpr std::array<const char*, kCourses> kCourseNames{
    "Türk Dili",      "Matematik",  "Meslek Resmi", "Atölye",           "İş Güvenliği", "Ahilik Kültürü",
    "Meslek Bilgisi", "Bilgisayar", "Girişimcilik", "Elektrik Bilgisi", "Malzeme",      "Pratik Uygulama"};

std::string mark(int seed) { return std::to_string(seed % 101); }

} // namespace

std::string studentNo(int student) {
    char text[16];
    std::snprintf(text, sizeof text, "%04d%05d", 1000 + student % 40, student);
    return text;
}

int seekStudent(int seek) { return static_cast<int>((static_cast<int64_t>(seek) * 7919) % kStudents); }
int seekTerm(int seek) { return 1 + seek % kTerms; }

void makeGrade(int row, Grade& g) {
    const int perCourse = kStudents * kTerms;
    const int course = row / perCourse, student = row % perCourse / kTerms, term = row % kTerms;
    g.id = row + 1;
    g.studentNo = studentNo(student);
    g.firstName = kNames[student % kNames.size()];
    g.surname = kSurnames[student / 7 % kSurnames.size()];
    g.courseCode = "D" + std::to_string(100 + course);
    g.courseName = kCourseNames[course];
    g.schoolYear = "2025-2026";
    g.term = term + 1;
    g.hours = 2 + course % 4;
    g.oral1 = mark(row * 3), g.oral2 = mark(row * 5), g.written1 = mark(row * 7);
    g.written2 = mark(row * 11), g.written3 = mark(row * 13), g.yearEnd = mark(row * 17);
    g.average = (row % 10001) / 100.0;
    g.feeTenThousandths = static_cast<int64_t>(row % 50000) * 2500;
    g.enteredOn = 45900 + row % 250;
}

} // namespace bench
