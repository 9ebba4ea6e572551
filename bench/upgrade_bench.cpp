// upgrade_bench FOLDER — how long the structure upgrade of a centre takes: 20 archives of 2,000 students and
// 24,000 marks each, which lack a third of the declared fields, and the same folder once more with nothing to
// do. FOLDER is emptied first.
#include "catalog/all_tables.h"
#include "catalog/templates.h"
#include "core/row_writer.h"
#include "core/structure_check.h"
#include "core/values.h"
#include "quiet_dialogs.h"

#include <chrono>
#include <cstdio>
#include <filesystem>

namespace {

using namespace orvan;

constexpr int kArchives = 20, kStudents = 2000, kMarksEach = 12;

void dropAThird(jet::Database& database) {
    for (const TableDeclaration& table : allTables().tables()) {
        if (table.database != DatabaseKind::Level) continue;
        for (const IndexDeclaration& index : table.indexes)
            database.dropIndex(table.name, index.name);
        for (size_t i = 2; i < table.fields.size(); i += 3)
            database.dropField(table.name, table.fields[i].name);
    }
}

void fill(jet::Database& database) {
    jet::Table students = database.openTable("OgrenciBilgisi"), marks = database.openTable("Notlar");
    RowWriter student(students, {"Ogr_Numarasi", "Ogr_Kayit_No", "Ogr_Adi"});
    RowWriter mark(marks, {"N_Ogr_Numarasi", "N_Ogr_Adi", "N_OgrDonem"});
    for (int i = 0; i < kStudents; ++i) {
        const jet::Value number("0101" + std::to_string(10000 + i)), name("Öğrenci " + std::to_string(i));
        student.add({number, jet::Value(int32_t{i}), name});
        for (int k = 0; k < kMarksEach; ++k)
            mark.add({number, name, jet::Value(int32_t{1 + k / 6})});
    }
}

void makeCentre(const ProgramFolder& folder) {
    writeTemplates(folder.resolve(QStringLiteral("\\Mdx")));
    folder.ensureFolder(QStringLiteral("\\Data"));
    const QString first = QStringLiteral("\\Data\\MKAL2000.MDB");
    folder.copy(QStringLiteral("\\Mdx\\Ogrenci.MDX"), first);
    {
        const auto database = jet::Database::open(filePath(folder.resolve(first)));
        jet::WriteBatch batch(*database);
        dropAThird(*database);
        fill(*database);
        batch.commit();
    }
    for (int i = 1; i < kArchives; ++i)
        folder.copy(first, QStringLiteral("\\Data\\MKAL%1.MDB").arg(2000 + i));
}

double upgradeSeconds(const ProgramFolder& folder, StructureChanges& changes) {
    QuietDialogs dialogs;
    Session session;
    const auto begin = std::chrono::steady_clock::now();
    changes = checkStructure(folder, session, allTables(), dialogs, QStringLiteral("Check1"));
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "upgrade_bench FOLDER\n");
        return 2;
    }
    std::filesystem::remove_all(argv[1]);
    const ProgramFolder folder(QString::fromLocal8Bit(argv[1]));
    makeCentre(folder);
    StructureChanges changes;
    const double first = upgradeSeconds(folder, changes);
    std::printf("%d archives of %d students: %d fields and %d indexes added in %.2f s\n", kArchives,
                kStudents, changes.fields, changes.indexes, first);
    const double second = upgradeSeconds(folder, changes);
    std::printf("the same with nothing to do: %.2f s\n", second);
    return changes.any() ? 1 : 0;
}
