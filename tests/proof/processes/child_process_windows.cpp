// child_process.h on Windows. No word it is given contains a quotation mark.
#ifdef _WIN32

#include "child_process.h"

#include <filesystem>
#include <stdexcept>
#include <windows.h>

namespace proof {

ChildProcess ChildProcess::start(const std::vector<std::string>& words) {
    std::wstring line;
    for (const std::string& word : words)
        line += (line.empty() ? L"\"" : L" \"") + std::filesystem::path(word).wstring() + L"\"";
    STARTUPINFOW how{};
    how.cb = sizeof how;
    PROCESS_INFORMATION made{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &how, &made))
        throw std::runtime_error("no process");
    CloseHandle(made.hThread);
    ChildProcess child;
    child.process_ = made.hProcess;
    return child;
}

void ChildProcess::kill() {
    TerminateProcess(process_, 9);
    endedWell();
}

bool ChildProcess::endedWell() {
    DWORD status = 1;
    WaitForSingleObject(process_, INFINITE);
    GetExitCodeProcess(process_, &status);
    CloseHandle(process_);
    return status == 0;
}

std::string ownProgram() {
    wchar_t name[32768] = {};
    GetModuleFileNameW(nullptr, name, static_cast<DWORD>(std::size(name)));
    return std::filesystem::path(name).string();
}

} // namespace proof

#endif
