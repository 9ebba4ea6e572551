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
#include "reference/ready_writer.h"
#include "reference/school_year.h"
#include "tools/orvanctl/console_dialogs.h"
#include "tools/orvanctl/demo_photos.h"
#include "tools/orvanctl/demo_students.h"

#include <algorithm>
#include <QDir>
#include <stdexcept>

namespace orvanctl {
namespace {

constexpr int kClassSize = 30;             // students, about
constexpr int kPhotoEach = 12;             // every twelfth apprentice has a portrait
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
        QStringLiteral(
            "Bu klasör orvanctl demo komutuyla üretilmiş örnek bir kurumdur. Kişiler, işletmeler, resimler "
            "ve asgari ücret tutarları uydurmadır."));
}

QStringList fillLevel(orvan::Connection& level, DemoLevel kind, DemoRandom& random, DemoPlaces& places,
                      int count) {
    const int years = kind == DemoLevel::Journeyman ? 4 : kind == DemoLevel::Master ? 2 : 1;
    const int branches = std::clamp(count / years / kClassSize, 1, 26);
    {
        jet::WriteBatch batch(level.database());
        orvan::writeReadyCurricula(level.database(), kind == DemoLevel::Journeyman
                                                         ? orvan::ReadyLevel::Journeyman
                                                         : orvan::ReadyLevel::Master);
        batch.commit();
    }
    fillCodeLists(level);
    const auto classes = fillClasses(level, random, years, branches);
    return fillStudents(level, kind, random, places, classes, count);
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
    DemoCounts counts;
    counts.masters = options.students / 5;
    counts.instructors = options.students * 2 / 25;
    counts.apprentices = options.students - counts.masters - counts.instructors;
    counts.workplaces = std::max(options.students / 6, static_cast<int>(demoProfessions().size()) * 2);
    counts.coordinators = std::max(options.students / 45, 4);
    const QDate today = orvan::SystemClock().today();
    places.today = today;
    places.schoolYear = orvan::schoolYearOf(today);
    fillSchool(databases.constants(), places.schoolYear);
    fillMadeUpWages(databases.constants(), today);
    addUsers(databases.constants(), options);
    const auto teachers = fillCoordinators(databases.coordinators(), random, counts.coordinators);
    places.workplaces = fillWorkplaces(databases.workplaces(), random, counts.workplaces, teachers);
    const struct {
        orvan::Level level;
        DemoLevel kind;
        int students;
    } levels[] = {{orvan::Level::Kalfa, DemoLevel::Journeyman, counts.apprentices},
                  {orvan::Level::Usta, DemoLevel::Master, counts.masters},
                  {orvan::Level::UstaOgretici, DemoLevel::Instructor, counts.instructors}};
    DemoRandom portraits(options.seed); // of their own: a change of the faces changes no name
    for (const auto& each : levels) {
        session.level = each.level;
        databases.connect();
        const QStringList numbers = fillLevel(databases.level(), each.kind, random, places, each.students);
        if (each.kind == DemoLevel::Journeyman)
            counts.photos = drawPhotos(folder, numbers, kPhotoEach, portraits);
    }
    writeStudentCounts(databases.workplaces(), places.workplaces);
    writeStudentCounts(databases.coordinators(), places.studentsOfTeacher);
    databases.close();

    ConsoleDialogs dialogs;
    orvan::checkStructure(folder, session, orvan::allTables(), dialogs);
    return counts;
}

} // namespace orvanctl
