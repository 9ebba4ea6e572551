// tools/orvanctl/demo_centre.cpp — the order in which the demo centre is put together.
#include "tools/orvanctl/demo_centre.h"

#include "catalog/all_tables.h"
#include "catalog/templates.h"
#include "core/clock.h"
#include "core/ini_file.h"
#include "core/startup.h"
#include "core/structure_check.h"
#include "core/users.h"
#include "core/values.h"
#include "reference/school_year.h"
#include "tools/orvanctl/console_dialogs.h"
#include "tools/orvanctl/demo_students.h"

#include <QDir>
#include <stdexcept>

namespace orvanctl {
namespace {

constexpr auto kMarker = "orvan-demo.txt"; // tells that the folder is ours to replace

void claimFolder(const QString& path) {
    QDir folder(path);
    const bool empty = !folder.exists() || folder.isEmpty();
    if (!empty && !folder.exists(QLatin1String(kMarker)))
        throw std::runtime_error("Klasör boş değil ve örnek kurum içermiyor: " + path.toStdString());
    for (const char* own : {"Data", "Mdx"}) {
        QDir part(orvan::ProgramFolder(path).resolve(QLatin1String(own)));
        if (part.exists() && !part.removeRecursively())
            throw std::runtime_error("Eski örnek silinemedi: " + part.path().toStdString());
    }
    for (const char* own : {"Yapi.sys", "orvyet.ini"})
        folder.remove(QLatin1String(own));
    if (!folder.mkpath(QStringLiteral(".")))
        throw std::runtime_error("Klasör oluşturulamadı: " + path.toStdString());
    orvan::writeOneValueFile(
        folder.filePath(QLatin1String(kMarker)),
        QStringLiteral("Bu klasör orvanctl demo komutuyla üretilmiş örnek bir kurumdur. Kişiler, işletmeler "
                       "ve asgari ücret tutarları uydurmadır."));
}

void fillLevel(orvan::Connection& level, DemoRandom& random, DemoPlaces& places, const QString& name,
               int count) {
    fillCodeLists(level);
    fillCourses(level, name);
    places.classes = fillClasses(level, random);
    fillStudents(level, random, places, count);
    places.firstPerson += count;
}

void addUsers(orvan::Connection& constants, const DemoOptions& options) {
    orvan::createUser(constants.database(), options.user, options.password);
    orvan::grantAll(constants.database(), options.user, {true, true});
    const QString clerk = QStringLiteral("memur");
    if (orvan::userExists(constants.database(), clerk)) return;
    orvan::createUser(constants.database(), clerk, options.password);
    orvan::grantAll(constants.database(), clerk, {true, false});
}

} // namespace

DemoCounts makeDemoCentre(const DemoOptions& options) {
    claimFolder(options.folder);
    const orvan::ProgramFolder folder(options.folder);
    orvan::writeTemplates(folder.resolve(QStringLiteral("\\Mdx")));
    orvan::Session session;
    orvan::DatabaseSet databases(folder, session, orvan::allTables());
    databases.connect();

    DemoRandom random(options.seed);
    DemoPlaces places;
    DemoCounts counts{options.students, options.students / 5, 40, 12};
    const QDate today = orvan::SystemClock().today();
    places.schoolYear = orvan::schoolYearOf(today);
    fillSchool(databases.constants(), places.schoolYear);
    fillMadeUpWages(databases.constants(), today);
    addUsers(databases.constants(), options);
    places.workplaces = fillWorkplaces(databases.workplaces(), random, counts.workplaces);
    places.coordinators = fillCoordinators(databases.coordinators(), random, counts.coordinators);
    fillLevel(databases.level(), random, places, QStringLiteral("Kalfa"), counts.students);
    session.level = orvan::Level::Usta;
    databases.connect();
    fillLevel(databases.level(), random, places, QStringLiteral("Usta"), counts.masters);
    databases.close();

    ConsoleDialogs dialogs;
    orvan::checkStructure(folder, session, orvan::allTables(), dialogs);
    return counts;
}

} // namespace orvanctl
