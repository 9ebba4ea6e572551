// runCommand of peer.h through the system's shell.
#ifndef _WIN32

#include "peer/peer.h"

#include <cstdio>
#include <stdexcept>

namespace peer {

std::string runCommand(const std::string& command, int& status) {
    std::FILE* pipe = popen(command.c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot run " + command);
    std::string output;
    char block[1 << 16];
    while (const size_t got = std::fread(block, 1, sizeof block, pipe))
        output.append(block, got);
    status = pclose(pipe);
    return output;
}

} // namespace peer

#endif
