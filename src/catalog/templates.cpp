// catalog/templates.cpp — one new database per template, every table of its kind in it; those of the two
// training levels carry the ready-made curricula.
#include "catalog/templates.h"

#include "catalog/all_tables.h"
#include "core/values.h"
#include "reference/ready_writer.h"

#include <filesystem>
#include <optional>

namespace orvan {
namespace {

struct Template {
    const char* name;
    DatabaseKind kind;
    std::optional<ReadyLevel> ready = {};
};
constexpr Template kTemplates[] = {
    {"Sabit.mdx", DatabaseKind::Constants},
    {"Isletme.mdx", DatabaseKind::Workplaces},
    {"koordinator.mdx", DatabaseKind::Coordinators},
    {"KALFA.MDX", DatabaseKind::Level, ReadyLevel::Journeyman},
    {"USTA.MDX", DatabaseKind::Level, ReadyLevel::Master},
    {"ISYERI.MDX", DatabaseKind::Level},
    {"Ogrenci.MDX", DatabaseKind::Level},
};

void makeTemplate(const std::filesystem::path& file, const Template& wanted) {
    const auto database = jet::Database::create(file);
    jet::WriteBatch batch(*database);
    for (const TableDeclaration& table : allTables().tables())
        if (table.database == wanted.kind) createTable(*database, table);
    if (wanted.ready) writeReadyCurricula(*database, *wanted.ready);
    batch.commit();
}

// `alike`: a template that is the same, empty when there is none yet.
void writeTemplate(const std::filesystem::path& file, const Template& wanted,
                   const std::filesystem::path& alike) {
    std::filesystem::path unfinished = file;
    unfinished += ".yeni";
    std::filesystem::remove(unfinished);
    if (alike.empty())
        makeTemplate(unfinished, wanted);
    else
        std::filesystem::copy_file(alike, unfinished);
    std::filesystem::rename(unfinished, file);
}

} // namespace

QStringList writeTemplates(const QString& folder) {
    QStringList written;
    const std::filesystem::path path = filePath(folder);
    try {
        std::filesystem::create_directories(path);
        std::filesystem::path emptyLevel; // level templates without curricula are the same
        for (const Template& entry : kTemplates) {
            const std::filesystem::path file = path / entry.name;
            const bool isEmptyLevel = entry.kind == DatabaseKind::Level && !entry.ready;
            writeTemplate(file, entry, isEmptyLevel ? emptyLevel : std::filesystem::path());
            if (isEmptyLevel) emptyLevel = file;
            written << QLatin1String(entry.name);
        }
    } catch (const std::filesystem::filesystem_error& error) {
        jet::Error wrapped(jet::Err::DiskIO, "Şablon dosyası yazılamadı: " + error.code().message());
        throw wrapped.inFile(utf8(folder));
    }
    return written;
}

} // namespace orvan
