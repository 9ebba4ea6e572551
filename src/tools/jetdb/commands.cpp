#include "tools/jetdb/commands.h"

#include "jet/check/check.h"
#include "jet/database.h"
#include "jet/sql/session.h"
#include "tools/jetdb/copy_commands.h"
#include "tools/jetdb/repair_command.h"
#include "tools/jetdb/schema.h"
#include "tools/jetdb/text_output.h"
#include "tools/terminal.h"

#include <cstdio>

namespace jetdb {
namespace {

std::unique_ptr<jet::Database> openFile(const Arguments& args, bool readOnly) {
    jet::OpenOptions options;
    options.password = args.password.value_or("");
    options.readOnly = readOnly;
    return jet::Database::open(terminal::fileNamed(args.plain[0]), options);
}

Form formOf(const Arguments& args) { return args.json ? Form::Json : Form::Csv; }

jet::TableKinds kindsOf(const Arguments& args) {
    return args.systemTables ? jet::TableKinds::All : jet::TableKinds::User;
}

int runTables(const Arguments& args) {
    const auto database = openFile(args, true);
    for (const std::string& name : database->tableNames(kindsOf(args)))
        std::printf("%s\n", name.c_str());
    return 0;
}

int runSchema(const Arguments& args) {
    const auto database = openFile(args, true);
    const auto names =
        args.plain.size() > 1 ? std::vector{args.plain[1]} : database->tableNames(kindsOf(args));
    for (size_t i = 0; i < names.size(); ++i)
        std::printf("%s%s", i > 0 ? "\n" : "", schemaText(database->tableDef(names[i])).c_str());
    return 0;
}

int runDump(const Arguments& args) {
    const auto database = openFile(args, true);
    const jet::ReadScope read(database->pages());
    jet::Table table = database->openTable(args.plain[1]);
    const std::vector<jet::FieldDef> fields = table.def().fields;
    std::vector<std::string> names;
    for (const jet::FieldDef& field : fields)
        names.push_back(field.name);

    RowWriter writer(stdout, formOf(args), names);
    jet::Scan scan = table.scan();
    std::string scratch;
    while (scan.next()) {
        writer.beginRow();
        for (size_t i = 0; i < fields.size(); ++i) {
            if (fields[i].isText() && !scan.row().isNull(i))
                writer.textField(scan.text(i, scratch));
            else
                writer.field(scan.value(i));
        }
        writer.endRow();
    }
    return 0;
}

// A statement that gives rows, told by its first word.
bool givesRows(const std::string& sql) {
    const size_t at = sql.find_first_not_of(" \t\r\n(");
    if (at == std::string::npos) return true; // let the parser say what is wrong
    const std::string word = jet::foldName(sql.substr(at, sql.find_first_of(" \t\r\n", at) - at));
    return word == jet::foldName("select") || word == jet::foldName("parameters") ||
           word == jet::foldName("transform");
}

int runSql(const Arguments& args) {
    const std::string& sql = args.plain[1];
    const bool query = givesRows(sql);
    const auto database = openFile(args, query);
    jet::SqlSession session(*database);
    if (!query) {
        const size_t rows = session.execute(sql);
        std::printf("%zu kayıt işlendi.\n", rows);
        return 0;
    }
    const jet::ResultSet result = session.query(sql);
    std::vector<std::string> names;
    for (const jet::ResultColumn& column : result.columns())
        names.push_back(column.name);
    RowWriter writer(stdout, formOf(args), names);
    for (size_t row = 0; row < result.rowCount(); ++row) {
        writer.beginRow();
        for (size_t column = 0; column < names.size(); ++column)
            writer.field(result.at(row, column));
        writer.endRow();
    }
    return 0;
}

int runExplain(const Arguments& args) {
    const auto database = openFile(args, true);
    std::printf("%s\n", jet::SqlSession(*database).explain(args.plain[1]).c_str());
    return 0;
}

void printFault(const jet::Fault& fault) {
    std::printf("%s", fault.table.empty() ? "dosya" : ("tablo " + fault.table).c_str());
    if (fault.page > 0) std::printf(", sayfa %u", fault.page);
    std::printf(": %s\n", fault.text.c_str());
}

int runCheck(const Arguments& args) {
    const auto database = openFile(args, true);
    const jet::CheckReport report = jet::checkDatabase(*database);
    for (const jet::Fault& fault : report.faults)
        printFault(fault);
    if (report.faultCount > report.faults.size())
        std::printf("… %zu kusur daha var.\n", report.faultCount - report.faults.size());
    std::printf("%zu sayfa, %zu tablo, %zu kayıt, %zu dizin girdisi, %zu uzun değer denetlendi: ",
                report.pages, report.tables, report.rows, report.indexEntries, report.longValues);
    if (report.faultCount == 0)
        std::printf("kusur yok.\n");
    else
        std::printf("%zu kusur bulundu.\n", report.faultCount);
    return report.faultCount == 0 ? 0 : 1;
}

int runPassword(const Arguments& args) {
    const int asked =
        (args.newPassword ? 1 : 0) + (args.removePassword ? 1 : 0) + (args.testPassword ? 1 : 0);
    if (asked != 1) {
        std::fprintf(stderr, "jetdb: --set PAROLA, --remove ve --test seçeneklerinden biri verilmelidir.\n");
        return 2;
    }
    const auto database = openFile(args, args.testPassword);
    if (args.testPassword) {
        std::printf("%s\n", database->header().password.empty() ? "Dosyada parola yok." : "Parola doğru.");
        return 0;
    }
    database->changePassword(args.password.value_or(""), args.newPassword.value_or(""));
    std::printf("%s\n", args.newPassword ? "Parola konuldu." : "Parola kaldırıldı.");
    return 0;
}

} // namespace

const std::vector<Command>& commands() {
    static const std::vector<Command> list = {
        {"tables", 1, 1, runTables, "tables DOSYA [--all]                 tablo adları, her satıra bir ad"},
        {"schema", 1, 2, runSchema, "schema DOSYA [TABLO] [--all]         yapı, SQL olarak"},
        {"dump", 2, 2, runDump,
         "dump DOSYA TABLO [--json]            kayıtlar, başlık satırlı CSV ya da JSON"},
        {"sql", 2, 2, runSql, "sql DOSYA \"SELECT …\" [--json]        sorgu ya da değişiklik"},
        {"explain", 2, 2, runExplain,
         "explain DOSYA \"SELECT …\"             sorgunun nasıl yürütüleceği, kullandığı dizinler"},
        {"check", 1, 1, runCheck,
         "check DOSYA                          dosyanın bütünüyle denetimi; kusur varsa çıkış 1"},
        {"compact", 2, 2, runCompact,
         "compact DOSYA YENİ                   boşlukları atılmış, sık bir kopya"},
        {"convert", 2, 2, runConvert,
         "convert DOSYA YENİ                   Access 97 dosyasından Access 2000 biçiminde yeni dosya"},
        {"repair", 2, 2, runRepair,
         "repair BOZUK YENİ                    bozuk dosyadan kurtarılabilenlerle yeni bir dosya yapar"},
        {"password", 1, 1, runPassword, "password DOSYA --set YENİ | --remove | --test"},
    };
    return list;
}

} // namespace jetdb
