// fuzz/make_corpus FOLDER STATEMENTS — writes the seeds: FOLDER/files (databases), FOLDER/sql (one statement
// of the list each), FOLDER/keys (pairs of texts).
#include "small_databases.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace {

void write(const std::filesystem::path& path, std::string_view bytes) {
    std::filesystem::create_directories(path.parent_path());
    std::ofstream out(path, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out.flush()) throw std::runtime_error("cannot write " + path.string());
}

constexpr std::string_view kTexts[] = {
    "Ali\nali",
    "Işık\nIŞIK",
    "ılık\nilik",
    "İnci\ninci",
    "Çağrı Öğüş\nCagri Ogus",
    "a-b\nab",
    "co-op\ncoop",
    "l'an\nlan",
    "Straße\nstrasse",
    "æble\naeble",
    "Ångström\nAngstrom",
    "2 kg\n2kg",
    "a  \na",
    "Ждёт\nЖдет",
    "日本\n日",
    "\xEF\xBB\xBFx\nx",
    "\xED\xA0\x80\n",
    "\xFF\xFE a\n\x80",
    "a\xCC\x81\ná",
    "x*[!a-f]#?\nxyz1q",
};

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "make_corpus FOLDER STATEMENTS\n";
        return 2;
    }
    const std::filesystem::path folder = argv[1];
    for (const auto& [name, bytes] : fuzz::seedFiles())
        write(folder / "files" / name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
    std::ifstream statements(argv[2]);
    size_t number = 0;
    for (std::string line; std::getline(statements, line);)
        if (!line.empty()) write(folder / "sql" / std::to_string(number++), line);
    number = 0;
    for (const std::string_view text : kTexts)
        write(folder / "keys" / std::to_string(number++), text);
    return number > 0 && statements.eof() ? 0 : 1;
}
