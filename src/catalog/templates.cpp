// catalog/templates.cpp — one new database per template, every table of its kind in it.
#include "catalog/templates.h"

#include "catalog/all_tables.h"
#include "core/values.h"

#include <filesystem>

namespace orvan {
namespace {

struct Template {
    const char* name;
    DatabaseKind kind;
};
constexpr Template kTemplates[] = {
    {"Sabit.mdx", DatabaseKind::Constants},
    {"Isletme.mdx", DatabaseKind::Workplaces},
    {"koordinator.mdx", DatabaseKind::Coordinators},
    {"KALFA.MDX", DatabaseKind::Level},
    {"USTA.MDX", DatabaseKind::Level},
    {"ISYERI.MDX", DatabaseKind::Level},
    {"Ogrenci.MDX", DatabaseKind::Level},
};

void writeTemplate(const std::filesystem::path& file, DatabaseKind kind) {
    std::filesystem::path unfinished = file;
    unfinished += ".yeni";
    std::filesystem::remove(unfinished);
    {
        const auto database = jet::Database::create(unfinished);
        jet::WriteBatch batch(*database);
        for (const TableDeclaration& table : allTables().tables())
            if (table.database == kind) createTable(*database, table);
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
        std::filesystem::path levelTemplate; // the level templates are the same file: made once, then copied
        for (const Template& entry : kTemplates) {
            const std::filesystem::path file = path / entry.name;
            if (entry.kind == DatabaseKind::Level && !levelTemplate.empty())
                std::filesystem::copy_file(levelTemplate, file,
                                           std::filesystem::copy_options::overwrite_existing);
            else
                writeTemplate(file, entry.kind);
            if (entry.kind == DatabaseKind::Level) levelTemplate = file;
            written << QLatin1String(entry.name);
        }
    } catch (const std::filesystem::filesystem_error& error) {
        jet::Error wrapped(jet::Err::DiskIO, "Şablon dosyası yazılamadı: " + error.code().message());
        throw wrapped.inFile(utf8(folder));
    }
    return written;
}

} // namespace orvan
