// records/class_counts.h — how many girls and boys are in each class of the open level, and in which stage.
#pragma once

#include "jet/sql/session.h"

#include <array>
#include <QString>
#include <vector>

namespace orvan {

// Stages as they are counted: years of training 1 to 4, final exam, graduated, external, anything else.
inline constexpr size_t kStageCount = 8;
QString stageTitle(size_t stage); // "1", …, "BİTİRME", "MEZUN", "DIŞARDAN", "Diğer"

struct ClassCount {
    QString className;                    // empty: students without a class
    QString professions;                  // names of the students' professions, a comma between
    int girls = 0, boys = 0, unknown = 0; // unknown: the sex is empty
    std::array<int, kStageCount> stages{};
    int total() const { return girls + boys + unknown; }
};

enum class CountedStudents { All, InTraining }; // InTraining: the stage begins with a digit

// By class name in Turkish order; a class that is defined and empty counts too.
std::vector<ClassCount> classCounts(jet::SqlSession& level, CountedStudents counted);
ClassCount sumOf(const std::vector<ClassCount>& counts); // its name is empty

} // namespace orvan
