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

void writeTemplate(const std::filesystem::path& file, const Template& wanted) {
    std::filesystem::path unfinished = file;
    unfinished += ".yeni";
    std::filesystem::remove(unfinished);
    {
        const auto database = jet::Database::create(unfinished);
        jet::WriteBatch batch(*database);
        for (const TableDeclaration& table : allTables().tables())
            if (table.database == wanted.kind) createTable(*database, table);
        if (wanted.ready) writeReadyCurricula(*database, *wanted.ready);
        batch.commit();
    }
    std::filesystem::rename(unfinished, file);
}

} // namespace

QStringList writeTemplates(const QString& folder) {
    QStringList written;
    const std::filesystem::path path = filePath(folder);
    try {
        std::filesystem::create_directories(path);
        std::filesystem::path
            emptyLevel; // level templates without curricula are the same: made once, then copied
        for (const Template& entry : kTemplates) {
            const std::filesystem::path file = path / entry.name;
            const bool isEmptyLevel = entry.kind == DatabaseKind::Level && !entry.ready;
            if (isEmptyLevel && !emptyLevel.empty())
                std::filesystem::copy_file(emptyLevel, file,
                                           std::filesystem::copy_options::overwrite_existing);
            else
                writeTemplate(file, entry);
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
