#include "tools/jetdb/repair_command.h"

#include "jet/copy/repair.h"
#include "jet/format/row_codec.h"
#include "tools/terminal.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace jetdb {
namespace {

constexpr size_t kNameWidth = 32, kNumberWidth = 13; // characters
constexpr size_t kListed = 20;                       // losses

// Blanks up to the width of a column.
std::string blanks(const std::string& text, size_t width) {
    const size_t length = jet::utf16Length(text);
    return std::string(width > length ? width - length : 0, ' ');
}

void printLine(const std::string& name, const std::array<std::string, 4>& numbers) {
    std::string line = name + blanks(name, kNameWidth);
    for (const std::string& number : numbers)
        line += blanks(number, kNumberWidth) + number;
    std::printf("%s\n", line.c_str());
}

void printTable(const jet::RepairedTable& table) {
    printLine(table.name, {std::to_string(table.rowsSaved), std::to_string(table.rowsLost),
                           std::to_string(table.fieldsLost), std::to_string(table.pagesDamaged)});
    for (const std::string& note : table.notes)
        std::printf("    %s\n", note.c_str());
}

void printLosses(const jet::RepairReport& report) {
    for (size_t i = 0; i < std::min(kListed, report.losses.size()); ++i) {
        const jet::RepairLoss& loss = report.losses[i];
        std::printf("%s: sayfa %u, satır %u%s%s: %s\n", loss.table.c_str(), loss.page, loss.row,
                    loss.field.empty() ? "" : ", alan ", loss.field.c_str(), loss.reason.c_str());
    }
    if (report.lossCount > kListed) std::printf("… %zu kayıp daha var.\n", report.lossCount - kListed);
}

} // namespace

int runRepair(const Arguments& args) {
    jet::RepairOptions options;
    options.password = args.password.value_or("");
    const jet::RepairReport report =
        jet::repairDatabase(terminal::fileNamed(args.plain[0]), terminal::fileNamed(args.plain[1]), options);
    for (const std::string& note : report.notes)
        std::printf("%s\n", note.c_str());
    printLine("Tablo", {"kurtarılan", "yiten kayıt", "yiten alan", "bozuk sayfa"});
    for (const jet::RepairedTable& table : report.tables)
        printTable(table);
    printLosses(report);
    const jet::RepairedTable sum = report.sum();
    std::printf(
        "%zu sayfadan %zu tanesi bozuk; %llu kayıt kurtarıldı, en az %llu kayıt ve %llu alan yitti.\n",
        report.pages, report.pagesDamaged, static_cast<unsigned long long>(sum.rowsSaved),
        static_cast<unsigned long long>(sum.rowsLost), static_cast<unsigned long long>(sum.fieldsLost));
    return 0;
}

} // namespace jetdb
