// jet/copy/source_rows.h
#include "jet/copy/source_rows.h"

#include "jet/check/row_set.h"
#include "jet/pages/io_error.h"
#include "jet/table/definition_store.h"

#include <algorithm>

namespace jet {

void forEachRow(Table& table, const std::function<void(const Scan&)>& visit) {
    const IndexDef* key = table.def().primaryKey();
    RowSet seen;
    if (key) {
        uint32_t rows = 0;
        const std::string name = key->name;
        for (Scan scan = table.scan(name, {}); scan.next(); ++rows) {
            if (!seen.insert(scan.id()))
                throw Error(Err::Corrupt, "“" + name + "” dizini bir kaydı iki kez gösteriyor.");
            visit(scan);
        }
        if (rows == table.rowCount()) return;
    }
    for (Scan scan = table.scan(); scan.next();)
        if (!key || seen.insert(scan.id())) visit(scan);
}

std::vector<SourceTable> sourceTables(Database& database) {
    std::vector<SourceTable> tables;
    for (const std::string& name : database.tableNames(TableKinds::All)) {
        const TableDef& def = database.tableDef(name);
        tables.push_back({name, def.page, def.system});
    }
    std::sort(tables.begin(), tables.end(),
              [](const SourceTable& a, const SourceTable& b) { return a.page < b.page; });
    return tables;
}

TableDef countedDefinition(Database& database, Table& table) {
    TableDef def = table.def();
    const Layout& layout = database.layout();
    const TableDef counted =
        parseTableDef(layout, def.page, readDefinition(database.pages(), layout, def.page));
    def.rowCount = counted.rowCount;
    def.lastAutoNumber = counted.lastAutoNumber;
    def.storedRowCounts = counted.storedRowCounts;
    return def;
}

uint64_t fileSize(Io& io, const std::filesystem::path& path) {
    try {
        return io.open(path, OpenMode::ReadOnly)->size();
    } catch (const Error&) {
        return 0;
    }
}

CopyReport reportedCopy(const std::filesystem::path& in, const CopyOptions& options,
                        const std::function<void(Io&, CopyReport&)>& body) {
    const std::shared_ptr<Io> io = options.io ? options.io : systemIo();
    CopyReport report;
    try {
        body(*io, report);
    } catch (const CopyStopped&) {
        report = {};
        report.stopped = true;
    } catch (Error& error) {
        error.inFile(pathText(in));
        throw;
    }
    return report;
}

CopyReport copyDatabase(const std::filesystem::path& in, const std::filesystem::path& out,
                        const CopyOptions& options,
                        const std::function<void(Database& source, CopyReport&)>& body) {
    return reportedCopy(in, options, [&](Io& io, CopyReport& report) {
        const auto source = Database::open(
            in, {.password = options.password, .readOnly = true, .pages = options.pages, .io = options.io});
        const ReadScope read(source->pages());
        report.bytesBefore = fileSize(io, in);
        body(*source, report);
        report.bytesAfter = fileSize(io, out);
    });
}

} // namespace jet
