// jet/copy/compact.h
#include "jet/copy/compact.h"

#include "jet/copy/database_writer.h"
#include "jet/copy/source_rows.h"
#include "jet/index/btree.h"
#include "jet/table/catalog.h"

#include <algorithm>

namespace jet {

namespace {

void requireJet4(const Database& database) {
    if (database.layout().version != 4)
        throw Error(Err::ReadOnly, "Access 97 biçimindeki bir dosya sıkıştırılamaz; önce dönüştürülmelidir.");
}

Bytes firstPage(Database& database) {
    const PageRef page = database.pages().read(0);
    return {page.bytes().begin(), page.bytes().end()};
}

// One compaction. REQUIRES: a read or write scope of the source stays open around it.
class Compaction {
  public:
    Compaction(Database& source, const std::filesystem::path& out, const CopyOptions& options,
               WriterOptions writerOptions)
        : source_(source), progress_(options),
          writer_(out, {source.header(), firstPage(source)}, completed(std::move(writerOptions), options)) {}

    void run(CopyReport& report) {
        const std::vector<SourceTable> tables = sourceTables(source_);
        for (const SourceTable& table : tables)
            progress_.expect(source_.tableDef(table.name), source_.openTable(table.name).rowCount());
        for (const SourceTable& table : tables) {
            if (!systemTableName(table.page).empty()) continue;
            const uint64_t rows = copyTable(table.name);
            if (table.system) continue;
            ++report.tables;
            report.rows += rows;
        }
        copySystemTable(SystemPage::kObjects, {"Id", "ParentId"});
        copySystemTable(SystemPage::kAces, {"ObjectId"});
        copySystemTable(SystemPage::kQueries, {"ObjectId"});
        copySystemTable(SystemPage::kRelationships, {});
        report.notes = writer_.finish();
    }

  private:
    WriterOptions completed(WriterOptions writer, const CopyOptions& options) {
        writer.io = options.io;
        writer.memoryBytes = options.memoryBytes;
        writer.step = [this] { progress_.step(); };
        return writer;
    }

    template <class F> void inTable(const std::string& name, F body) {
        try {
            body();
        } catch (Error& error) {
            error.inTable(name);
            throw;
        }
    }

    uint64_t copyTable(const std::string& name) {
        uint64_t rows = 0;
        inTable(name, [&] {
            Table table = source_.openTable(name);
            const TableDef def = countedDefinition(source_, table);
            writer_.beginTable({.def = def});
            forEachRow(table, [&](const Scan& scan) {
                writer_.addRow(scan.row(), source_.pages(), scan.id());
                ++rows;
            });
            writer_.endTable([&](size_t index, const DatabaseWriter::OldEntry& entry) {
                walkIndex(def, def.indexes[index], entry);
            });
        });
        return rows;
    }

    void walkIndex(const TableDef& def, const IndexDef& index, const DatabaseWriter::OldEntry& entry) {
        const BTree tree(source_.allocator(), index.rootPage, def.page,
                         RowId::fromPacked(index.usageMapPointer));
        TreePosition at;
        Bytes key;
        RowId row;
        for (bool found = tree.first(at); found; found = tree.next(at)) {
            tree.read(at, key, row);
            entry(key, row);
        }
    }

    // A system table whose `ids` name objects: tables have other ones now.
    void copySystemTable(PageNo page, std::initializer_list<std::string_view> ids) {
        const std::string name(systemTableName(page));
        inTable(name, [&] {
            Table table = source_.openTable(name);
            const TableDef def = countedDefinition(source_, table);
            std::vector<size_t> columns;
            for (const std::string_view id : ids)
                if (const auto column = def.findField(id)) columns.push_back(*column);
            writer_.beginSystemTable(page, &def);
            std::vector<Value> values(def.fields.size());
            forEachRow(table, [&](const Scan& scan) {
                for (size_t i = 0; i < values.size(); ++i)
                    values[i] = scan.value(i);
                for (const size_t column : columns) {
                    const auto* id = values[column].get<int32_t>();
                    if (!id) continue;
                    if (isGone(*id)) return;
                    values[column] = writer_.newId(*id);
                }
                writer_.addRow(values);
            });
            writer_.endTable();
        });
    }

    // The id of a table dropped long ago, which permissions may outlive: another table has it now.
    bool isGone(int32_t id) const {
        const bool ofTable = id > 0 && id < ObjectId::kRoot;
        return ofTable && !writer_.hasTable(id) && systemTableName(static_cast<PageNo>(id)).empty();
    }

    Database& source_;
    CopyProgress progress_;
    DatabaseWriter writer_;
};

void refuseOthers(Database& database, Io& io, const PageFileOptions& options) {
    std::vector<std::string> users = database.pages().users();
    const auto own = std::find(users.begin(), users.end(), io.computerName() + " " + options.securityName);
    if (own != users.end()) users.erase(own);
    if (users.empty()) return;
    std::string names;
    for (const std::string& user : users)
        names += (names.empty() ? "" : ", ") + user;
    throw Error(Err::FileInUse, "Dosya şu anda başkalarınca açık: " + names + ".");
}

} // namespace

CopyReport compactDatabase(const std::filesystem::path& in, const std::filesystem::path& out,
                           const CopyOptions& options) {
    return copyDatabase(in, out, options, [&](Database& source, CopyReport& report) {
        requireJet4(source);
        Compaction(source, out, options, {}).run(report);
    });
}

CopyReport compactInPlace(const std::filesystem::path& path, const CopyOptions& options) {
    return reportedCopy(path, options, [&](Io& io, CopyReport& report) {
        const auto source =
            Database::open(path, {.password = options.password, .pages = options.pages, .io = options.io});
        requireJet4(*source);
        source->requireWritable();
        refuseOthers(*source, io, options.pages);
        // The lock keeps writers away until the new file has the name; nothing is written in it.
        const WriteScope lock(source->pages());
        report.bytesBefore = fileSize(io, path);
        WriterOptions writer;
        writer.replace = true;
        writer.beforeName = [&] {
            refuseOthers(*source, io, options.pages);
            source->pages().letFileGo(); // not every system gives a name away that an open file still has
        };
        Compaction(*source, path, options, writer).run(report);
        report.bytesAfter = fileSize(io, path);
    });
}

} // namespace jet
