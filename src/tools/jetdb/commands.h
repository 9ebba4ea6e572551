// tools/jetdb/commands.h — what jetdb can do; main.cpp reads the command line and reports errors.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace jetdb {

// The command line, cut up. Options may stand anywhere behind the command.
struct Arguments {
    std::string command;
    std::vector<std::string> plain; // FILE and what follows it
    std::optional<std::string> password;
    std::optional<std::string> newPassword; // --set
    bool removePassword = false, testPassword = false, json = false, systemTables = false;
};

struct Command {
    const char* name;
    size_t least, most;           // how many plain arguments
    int (*run)(const Arguments&); // exit status; throws jet::Error
    const char* usage;            // behind "jetdb "
};

const std::vector<Command>& commands();

} // namespace jetdb
