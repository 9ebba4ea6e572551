// orvanctl — the batch jobs of ORVAN from a terminal, with the same rules as the windows.
// Each command prints what it did; a failure is one clear line and a status other than 0 (2: wrong words).
#include "tools/orvanctl/demo_centre.h"
#include "tools/orvanctl/options.h"
#include "tools/orvanctl/program_tables.h"
#include "tools/terminal.h"

#include "catalog/templates.h"

#include <cstdio>
#include <QCoreApplication>

namespace {

using orvanctl::Options;
using orvanctl::UsageError;

struct Command {
    const char* name;
    const char* usage;
    const char* meaning;
    void (*run)(const QStringList& words);
};

QString folderOf(const Options& options) {
    if (options.plain().size() == 1) return options.plain().first();
    throw UsageError("Bir klasör adı gerekir.");
}

void runDemo(const QStringList& words) {
    const Options options(words, {QStringLiteral("--students"), QStringLiteral("--user"),
                                  QStringLiteral("--password"), QStringLiteral("--seed")});
    orvanctl::DemoOptions demo;
    demo.folder = folderOf(options);
    demo.students = options.number(QStringLiteral("--students"), demo.students, 0, 500000);
    demo.seed = static_cast<unsigned>(
        options.number(QStringLiteral("--seed"), static_cast<int>(demo.seed), 0, 1000000));
    demo.user = options.text(QStringLiteral("--user"), demo.user);
    demo.password = options.text(QStringLiteral("--password"), demo.password);
    const auto made = orvanctl::makeDemoCentre(demo);
    std::printf(
        "Demo kurum hazır: %s\n"
        "%d kalfa, %d usta, %d usta öğretici öğrencisi, %d işletme, %d koordinatör öğretmen, %d fotoğraf\n"
        "Kullanıcı: %s / %s (salt okur: memur / %s)\n",
        demo.folder.toUtf8().constData(), made.apprentices, made.masters, made.instructors, made.workplaces,
        made.coordinators, made.photos, demo.user.toUtf8().constData(), demo.password.toUtf8().constData(),
        demo.password.toUtf8().constData());
}

void printLines(const QStringList& lines) {
    for (const QString& line : lines)
        std::printf("%s\n", line.toUtf8().constData());
}

void runTemplates(const QStringList& words) {
    const Options options(words, {});
    printLines(orvan::writeTemplates(folderOf(options)));
}

void runCommands(const QStringList& words) {
    if (!Options(words, {}).plain().isEmpty()) throw UsageError("Bu komut başka söz almaz.");
    printLines(orvanctl::commandTable());
}

void runShots(const QStringList& words) {
    const Options options(words, {QStringLiteral("--folder")});
    printLines(orvanctl::takeShots(folderOf(options), options.text(QStringLiteral("--folder"), {})));
}

constexpr Command kCommands[] = {
    {"demo", "demo KLASÖR [--students N] [--user AD] [--password ŞİFRE] [--seed N]",
     "Örnek bir kurum kurar; boş olmayan klasöre yalnız daha önce kurduğu örneğin yerine yazar.", runDemo},
    {"templates", "templates KLASÖR", "Boş şablon veritabanlarını (Mdx) yazar.", runTemplates},
    {"commands", "commands", "Ana pencerenin komutlarını listeler: anahtar, ekran başlığı, pencere.",
     runCommands},
    {"shots", "shots KLASÖR [--folder KURUM]",
     "Her ekranın resmini KLASÖR'e yazar; KURUM verilmezse bunun için örnek bir kurum kurar.", runShots},
};

int usage() {
    std::fprintf(stderr, "Kullanım:\n");
    for (const Command& command : kCommands)
        std::fprintf(stderr, "  orvanctl %s\n      %s\n", command.usage, command.meaning);
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    terminal::begin(argc, argv);
    const QCoreApplication application(argc, argv);
    QStringList words = application.arguments().mid(1);
    if (words.isEmpty()) return usage();
    const QString name = words.takeFirst();
    for (const Command& command : kCommands) {
        if (name != QLatin1String(command.name)) continue;
        try {
            command.run(words);
            return 0;
        } catch (const UsageError& error) {
            std::fprintf(stderr, "orvanctl: %s\n", error.what());
            return 2;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "orvanctl: %s\n", error.what());
            return 1;
        }
    }
    return usage();
}
