// records_bench FOLDER — what a person waits for at a centre of 20,000 students: finding one while typing,
// opening the registration screen, the next student, another number for one with 500 rows in other tables, a
// field of all students at once. Beside each the same look-up or change in a plain SQLite file of the same
// rows. FOLDER is made by `orvanctl demo`, which must lie beside this program. The screens are worked on the
// offscreen platform.
#include "catalog/all_tables.h"
#include "core/row_writer.h"
#include "core/values.h"
#include "quiet_dialogs.h"
#include "records/bulk_edit.h"
#include "records/renumber.h"
#include "records/screens/ogrenci_bilgi_kayit.h"
#include "records/student_index.h"
#include "records/student_record.h"
#include "records_sqlite.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <QApplication>
#include <QProcess>
#include <QPushButton>

namespace {

using namespace orvan;

constexpr int kStudents = 20000;
constexpr int kRowsInOtherTables = 500;

using Work = std::function<void(int)>;

struct Times {
    double median = 0, worst = 0; // milliseconds
};

Times measure(int times, const Work& work) {
    std::vector<double> taken;
    for (int i = 0; i < times; ++i) {
        const auto begin = std::chrono::steady_clock::now();
        work(i);
        taken.push_back(
            std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count());
    }
    std::sort(taken.begin(), taken.end());
    return {taken[taken.size() / 2], taken.back()};
}

void report(const char* what, int times, double limit, const Work& ours, const Work& sqlite) {
    const Times mine = measure(times, ours);
    std::printf("%-44s %9.2f ms (worst %8.2f)", what, mine.median, mine.worst);
    if (sqlite) {
        const Times theirs = measure(times, sqlite);
        std::printf("   SQLite %9.2f ms (worst %8.2f)", theirs.median, theirs.worst);
    }
    if (limit > 0) std::printf("   limit %g ms: %s", limit, mine.median < limit ? "kept" : "NOT KEPT");
    std::printf("\n");
    std::fflush(stdout);
}

// A demo centre whose level Kalfa has about 20,000 students.
void makeCentre(const QString& folder) {
    QProcess maker;
    maker.setProcessChannelMode(QProcess::ForwardedChannels);
    maker.start(
        QCoreApplication::applicationDirPath() + QStringLiteral("/orvanctl"),
        {QStringLiteral("demo"), folder, QStringLiteral("--students"), QString::number(kStudents * 25 / 18)});
    if (!maker.waitForFinished(-1) || maker.exitCode() != 0) throw std::runtime_error("orvanctl demo failed");
}

void addRowsOf(DatabaseSet& databases, const QString& number) {
    jet::WriteBatch batch(databases.level().database());
    RowWriter marks(databases.table(QStringLiteral("Notlar")), {"N_Ogr_Numarasi", "N_OgrDonem", "N_DersID"});
    RowWriter absences(databases.table(QStringLiteral("Devam")), {"D_Ogr_Numarasi", "D_Donem", "D_DersID"});
    for (int i = 0; i < kRowsInOtherTables; ++i)
        (i % 2 ? marks : absences).add({textValue(number), jet::Value(i % 8 + 1), jet::Value("MAT")});
    batch.commit();
}

void benchTyping(DatabaseSet& databases, SqliteStudents& sqlite) {
    StudentIndex index;
    report("list for finding while typing, read", 3, 0,
           [&](int) { index.load(databases.level().database()); }, {});
    const QString typed[] = {QStringLiteral("a"),     QStringLiteral("ış"),   QStringLiteral("ışıl"),
                             QStringLiteral("çelik"), QStringLiteral("1101"), QStringLiteral("zey yıl")};
    report(
        "a key while finding", 300, 50, [&](int i) { index.find(typed[i % 6], 50); },
        [&](int i) { sqlite.find(typed[i % 6]); });
}

void benchScreen(DatabaseSet& databases, SqliteStudents& sqlite, const std::vector<QString>& numbers) {
    QuietDialogs dialogs;
    SystemClock clock;
    UserMemory memory(databases.folder().resolve(QStringLiteral("\\bench.ini")));
    std::unique_ptr<ogrenci_bilgi_kayit> screen;
    const auto open = [&](int) {
        screen = std::make_unique<ogrenci_bilgi_kayit>(QString(), databases, dialogs, memory, clock);
        screen->setVisible(true);
        QCoreApplication::processEvents();
    };
    open(0); // fonts and styles are loaded once
    report("registration screen, open and painted", 10, 300, open, {});
    const auto size = static_cast<int>(numbers.size());
    report(
        "registration screen, a student by number", 200, 0,
        [&](int i) { screen->showRecord(numbers[static_cast<size_t>(i * 97 % size)]); },
        [&](int i) { sqlite.byNumber(numbers[static_cast<size_t>(i * 97 % size)]); });
    screen->showRecord(numbers[numbers.size() / 2]);
    auto* next = screen->findChild<QPushButton*>(QStringLiteral("sonraki"));
    QString at = numbers[numbers.size() / 2];
    report(
        "next student, on the screen", 200, 20,
        [&](int) {
            next->click();
            QCoreApplication::processEvents();
        },
        [&](int) { at = sqlite.after(at); });
    StudentRecords records(databases);
    auto student = records.byNumber(numbers.front());
    report(
        "next student, the record alone", 200, 0, [&](int) { student = records.next(*student); },
        [&](int) { at = sqlite.after(at); });
}

void benchRenumber(DatabaseSet& databases, SqliteStudents& sqlite, const QString& number) {
    addRowsOf(databases, number);
    sqlite.addRowsOf(number, kRowsInOtherTables);
    const QString names[] = {number, number.left(4) + QStringLiteral("90001")};
    report(
        "another number, with 500 rows elsewhere", 20, 100,
        [&](int i) {
            Renumbering change;
            change.oldNumber = names[i % 2];
            change.newNumber = names[(i + 1) % 2];
            const RenumberReport done = renumberStudents(databases, {change});
            if (!done.done() || done.dependentRows < kRowsInOtherTables)
                throw std::runtime_error("renumbering failed");
        },
        [&](int i) { sqlite.renumber(names[i % 2], names[(i + 1) % 2]); });
}

void benchBulk(DatabaseSet& databases, SqliteStudents& sqlite) {
    QuietDialogs dialogs;
    SystemClock clock;
    databases.session().user = QStringLiteral("yonetici");
    BulkEdit edit(bulkCommand(QStringLiteral("TopluDonemIsleme")), QStringLiteral("Öğrenci Dönem Atlatma"),
                  databases, dialogs, clock);
    std::vector<StoredRow> students;
    report(
        "all students for a bulk edit, read", 3, 0, [&](int) { students = edit.students({}); },
        [&](int) { sqlite.all(); });
    report(
        "a field of all students", 3, 0,
        [&](int i) {
            std::vector<BulkWish> wishes;
            for (const StoredRow& student : edit.students({}))
                wishes.push_back({student, {{QStringLiteral("Ogr_Seviye"), QString::number(i + 1)}}});
            const auto done = edit.run(wishes);
            if (!done || done->changed < kStudents / 2) throw std::runtime_error("bulk edit failed");
        },
        [&](int i) { sqlite.setStageOfAll(QString::number(i + 1)); });
}

int run(const QString& path) {
    makeCentre(path);
    const ProgramFolder folder(path);
    Session session;
    DatabaseSet databases(folder, session, allTables());
    databases.connect();
    SqliteStudents sqlite(folder.resolve(QStringLiteral("\\bench.sqlite")), databases.level());
    const std::vector<QString> numbers = sqlite.numbers();
    std::printf("%zu students\n", numbers.size());
    benchTyping(databases, sqlite);
    benchScreen(databases, sqlite, numbers);
    benchRenumber(databases, sqlite, numbers[numbers.size() / 3]);
    benchBulk(databases, sqlite);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    if (application.arguments().size() != 2) {
        std::fprintf(stderr, "records_bench FOLDER\n");
        return 2;
    }
    try {
        return run(application.arguments()[1]);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "records_bench: %s\n", error.what());
        return 1;
    }
}
