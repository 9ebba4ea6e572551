// child_process.h on Linux.
#ifndef _WIN32

#include "child_process.h"

#include <csignal>
#include <filesystem>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace proof {

ChildProcess ChildProcess::start(const std::vector<std::string>& words) {
    std::vector<char*> list;
    for (const std::string& word : words)
        list.push_back(const_cast<char*>(word.c_str()));
    list.push_back(nullptr);
    ChildProcess child;
    child.process_ = ::fork();
    if (child.process_ < 0) throw std::runtime_error("no process");
    if (child.process_ != 0) return child;
    ::execv(list[0], list.data());
    ::_exit(127);
}

void ChildProcess::kill() {
    ::kill(process_, SIGKILL);
    ::waitpid(process_, nullptr, 0);
}

bool ChildProcess::endedWell() {
    int status = 0;
    ::waitpid(process_, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

std::string ownProgram() { return std::filesystem::read_symlink("/proc/self/exe").string(); }

} // namespace proof

#endif
