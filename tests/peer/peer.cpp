#include "peer/peer.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

namespace peer {
namespace {

struct Cell {
    std::string text;
    bool quoted = false;
};

// RFC 4180, both programs' dialect: a doubled quote inside quotes.
std::vector<std::vector<Cell>> parseCsv(const std::string& csv) {
    std::vector<std::vector<Cell>> rows;
    std::vector<Cell> row;
    Cell cell;
    bool inside = false;
    for (size_t i = 0; i < csv.size(); ++i) {
        const char c = csv[i];
        if (inside) {
            if (c != '"')
                cell.text += c;
            else if (i + 1 < csv.size() && csv[i + 1] == '"')
                cell.text += csv[++i];
            else
                inside = false;
        } else if (c == '"') {
            inside = cell.quoted = true;
        } else if (c == ',' || c == '\n') {
            row.push_back(std::move(cell));
            cell = {};
            if (c == '\n') rows.push_back(std::move(row)), row.clear();
        } else {
            cell.text += c;
        }
    }
    return rows;
}

std::string printed(const char* format, double number) {
    char text[64];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

// mdb-export shows a GUID in hex mode as the hex of its text form, and that without its last hyphen.
std::string guidText(const std::string& cell) {
    std::string text = cell;
    if (!cell.starts_with("{")) {
        text.clear();
        for (size_t i = 0; i + 1 < cell.size(); i += 2)
            text += static_cast<char>(std::stoi(cell.substr(i, 2), nullptr, 16));
    }
    std::erase(text, '-');
    return text;
}

// Hex digits up to the first zero byte.
std::string beforeZeroByte(const std::string& hex) {
    for (size_t i = 0; i + 1 < hex.size(); i += 2)
        if (hex[i] == '0' && hex[i + 1] == '0') return hex.substr(0, i);
    return hex;
}

std::string canonical(const Cell& cell, const jet::FieldDef& field, Detail detail) {
    using jet::Type;
    if (cell.text.empty()) return cell.quoted && detail == Detail::Exact ? "''" : "null";
    if (field.type == Type::Binary && detail == Detail::AsMdbTools) {
        const std::string shown = beforeZeroByte(cell.text);
        return shown.empty() ? "null" : shown;
    }
    switch (field.type) {
    case Type::Single: return printed("%.8g", static_cast<float>(std::strtod(cell.text.c_str(), nullptr)));
    case Type::Double: return printed("%.16g", std::strtod(cell.text.c_str(), nullptr));
    case Type::Numeric: return printed("%.16g", std::strtod(cell.text.c_str(), nullptr));
    case Type::Date: return cell.text.size() == 10 ? cell.text + " 00:00:00" : cell.text;
    case Type::Guid: return guidText(cell.text);
    default: return field.isText() ? "'" + cell.text + "'" : cell.text;
    }
}

Rows canonicalRows(const std::vector<std::vector<Cell>>& csv, const jet::TableDef& def, Detail detail) {
    Rows result;
    if (csv.empty()) throw std::runtime_error("no header line for table " + def.name);
    std::vector<std::pair<std::string, size_t>> columns; // by name, so the order of columns does not matter
    for (size_t i = 0; i < csv[0].size(); ++i)
        columns.emplace_back(csv[0][i].text, i);
    std::sort(columns.begin(), columns.end());
    for (const auto& [name, at] : columns)
        result.header.push_back(name);
    for (size_t r = 1; r < csv.size(); ++r) {
        std::string row;
        for (const auto& [name, at] : columns)
            row += (at < csv[r].size() ? canonical(csv[r][at], def.field(name), detail) : "missing") + " | ";
        result.rows.push_back(std::move(row));
    }
    std::sort(result.rows.begin(), result.rows.end());
    return result;
}

std::string hexOf(const jet::Bytes& bytes) {
    std::string text;
    for (const uint8_t byte : bytes) {
        char two[3];
        std::snprintf(two, sizeof two, "%02X", byte);
        text += two;
    }
    return text;
}

Cell cellOf(const jet::Value& value) {
    if (value.isNull()) return {};
    if (const bool* flag = value.get<bool>()) return {*flag ? "1" : "0"};
    if (const auto* text = value.get<std::string>()) return {*text, true};
    if (const auto* bytes = value.get<jet::Bytes>()) return {hexOf(*bytes), true};
    if (const auto* number = value.get<double>()) return {printed("%.17g", *number)};
    if (const auto* number = value.get<float>()) return {printed("%.9g", *number)};
    return {value.toText()};
}

} // namespace

bool haveMdbTools() { return std::system("mdb-export --version >/dev/null 2>&1") == 0; }

std::string shellQuoted(const std::string& text) {
    std::string quoted = "'";
    for (const char c : text)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}
std::string shellQuoted(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return shellQuoted(std::string(text.begin(), text.end()));
}

std::filesystem::path program(const std::string& name) {
    const char* folder = std::getenv("ORVAN_BIN_DIR");
    return std::filesystem::path(folder ? folder : "build/release/bin") / name;
}

Rows exportedByMdbTools(const std::filesystem::path& file, const jet::TableDef& def) {
    int status = 0;
    const std::string csv = runCommand("mdb-export -b hex -D '%Y-%m-%d %H:%M:%S' -T '%Y-%m-%d %H:%M:%S' " +
                                           shellQuoted(file) + " " + shellQuoted(def.name) + " 2>/dev/null",
                                       status);
    return canonicalRows(parseCsv(csv), def, Detail::AsMdbTools);
}

Rows dumpedByJetdb(const std::filesystem::path& file, const jet::TableDef& def, Detail detail,
                   const std::string& password) {
    int status = 0;
    const std::string option = password.empty() ? "" : " --password " + shellQuoted(password);
    const std::string csv = runCommand(shellQuoted(program("jetdb")) + " dump " + shellQuoted(file) + " " +
                                           shellQuoted(def.name) + option,
                                       status);
    if (status != 0) throw std::runtime_error("jetdb dump failed on " + file.string() + " " + def.name);
    return canonicalRows(parseCsv(csv), def, detail);
}

Rows fromModel(const std::map<jet::RowId, std::vector<jet::Value>>& model, const jet::TableDef& def,
               Detail detail) {
    std::vector<std::vector<Cell>> csv(1);
    for (const jet::FieldDef& field : def.fields)
        csv[0].push_back({field.name});
    for (const auto& [id, values] : model) {
        std::vector<Cell> row;
        for (const jet::Value& value : values)
            row.push_back(cellOf(value));
        csv.push_back(std::move(row));
    }
    return canonicalRows(csv, def, detail);
}

std::string difference(const Rows& ours, const Rows& theirs) {
    if (ours.header != theirs.header) return "different columns";
    if (ours.rows.size() != theirs.rows.size())
        return std::to_string(ours.rows.size()) + " rows of ours, " + std::to_string(theirs.rows.size()) +
               " of theirs";
    for (size_t i = 0; i < ours.rows.size(); ++i)
        if (ours.rows[i] != theirs.rows[i])
            return "ours:   " + ours.rows[i].substr(0, 2000) + "\ntheirs: " + theirs.rows[i].substr(0, 2000);
    return {};
}

std::set<std::string> faultsOf(const std::filesystem::path& file, const std::string& password) {
    int status = 0;
    const std::string option = password.empty() ? "" : " --password " + shellQuoted(password);
    std::istringstream output(
        runCommand(shellQuoted(program("jetdb")) + " check " + shellQuoted(file) + option + " 2>&1", status));
    std::set<std::string> faults;
    for (std::string line; status != 0 && std::getline(output, line);)
        if (line.find("denetlendi") == std::string::npos) faults.insert(line);
    if (status != 0 && faults.empty()) faults.insert("jetdb check failed");
    return faults;
}

} // namespace peer
