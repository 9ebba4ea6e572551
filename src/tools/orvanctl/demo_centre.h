// tools/orvanctl/demo_centre.h — makes a whole demonstration centre: program folder, users, lists, students.
// The same seed gives the same centre. People, workplaces and numbers are invented.
#pragma once

#include <QString>

namespace orvanctl {

struct DemoOptions {
    QString folder;
    int students = 1200; // of all three levels
    unsigned seed = 1923;
    QString user = QStringLiteral("yonetici"); // with every right; "memur" may only look
    QString password = QStringLiteral("orvan");
};

struct DemoCounts {
    int apprentices = 0, masters = 0, instructors = 0, workplaces = 0, coordinators = 0, photos = 0;
};

// Throws std::runtime_error when the folder is not empty and no demo centre, jet::Error when a file fails.
DemoCounts makeDemoCentre(const DemoOptions& options);

} // namespace orvanctl
