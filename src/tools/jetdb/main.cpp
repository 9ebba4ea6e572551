// jetdb — looks into any Access (Jet) file from a terminal: tables, schema, rows, SQL, check, password.
#include "jet/error.h"
#include "tools/jetdb/commands.h"
#include "tools/terminal.h"

#include <algorithm>
#include <cstdio>

namespace {

int usage() {
    std::fprintf(stderr, "Kullanım:\n");
    for (const jetdb::Command& command : jetdb::commands())
        std::fprintf(stderr, "  jetdb %s\n", command.usage);
    std::fprintf(stderr, "Parolalı bir dosya için her komutta: --password PAROLA\n");
    return 2;
}

// False when an option is unknown or lacks its value; the fault is already reported.
bool parse(const std::vector<std::string>& words, jetdb::Arguments& args) {
    for (size_t i = 0; i < words.size(); ++i) {
        const std::string& word = words[i];
        const bool wantsValue = word == "--password" || word == "--set";
        if (wantsValue && i + 1 >= words.size()) {
            std::fprintf(stderr, "jetdb: %s seçeneğinden sonra bir değer gelmelidir.\n", word.c_str());
            return false;
        }
        if (word == "--password")
            args.password = words[++i];
        else if (word == "--set")
            args.newPassword = words[++i];
        else if (word == "--remove")
            args.removePassword = true;
        else if (word == "--test")
            args.testPassword = true;
        else if (word == "--json")
            args.json = true;
        else if (word == "--all")
            args.systemTables = true;
        else if (word.starts_with("--")) {
            std::fprintf(stderr, "jetdb: bilinmeyen seçenek: %s\n", word.c_str());
            return false;
        } else if (args.command.empty())
            args.command = word;
        else
            args.plain.push_back(word);
    }
    return true;
}

} // namespace

int main(int argc, char** argv) {
    jetdb::Arguments args;
    if (!parse(terminal::begin(argc, argv), args)) return usage();
    const auto& list = jetdb::commands();
    const auto command =
        std::find_if(list.begin(), list.end(), [&](const auto& c) { return args.command == c.name; });
    if (command == list.end() || args.plain.size() < command->least || args.plain.size() > command->most)
        return usage();
    try {
        return command->run(args);
    } catch (const jet::Error& error) {
        std::fflush(stdout);
        std::fprintf(stderr, "jetdb: hata %d: %s\n", error.code(), error.what());
    } catch (const std::exception& error) {
        std::fflush(stdout);
        std::fprintf(stderr, "jetdb: beklenmeyen hata: %s\n", error.what());
    }
    return 1;
}
