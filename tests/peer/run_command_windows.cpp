// runCommand of peer.h on Windows, whose shell reads words in another way: quotation marks and where the
// errors go are understood here, and the program is started without a shell.
#ifdef _WIN32

#include "peer/peer.h"

#include <stdexcept>
#include <windows.h>

namespace peer {
namespace {

std::vector<std::string> wordsOf(const std::string& command) {
    std::vector<std::string> words;
    bool inWord = false;
    char quote = 0;
    for (size_t i = 0; i < command.size(); ++i) {
        char c = command[i];
        if (!quote && c == ' ') {
            inWord = false;
            continue;
        }
        if (!inWord) words.emplace_back();
        inWord = true;
        if (!quote && (c == '\'' || c == '"'))
            quote = c;
        else if (c == quote)
            quote = 0;
        else if (c == '\\' && quote != '\'' && i + 1 < command.size())
            words.back() += command[++i];
        else
            words.back() += c;
    }
    return words;
}

// The way programs take their words apart again: a backslash counts only before a quotation mark.
std::wstring commandLine(const std::vector<std::string>& words) {
    std::wstring line;
    for (const std::string& word : words) {
        line += line.empty() ? L"\"" : L" \"";
        size_t backslashes = 0;
        for (const wchar_t c : std::filesystem::path(std::u8string(word.begin(), word.end())).wstring()) {
            if (c == L'"') line.append(backslashes + 1, L'\\');
            backslashes = c == L'\\' ? backslashes + 1 : 0;
            line += c;
        }
        line.append(backslashes, L'\\');
        line += L'"';
    }
    return line;
}

std::string outputOf(HANDLE pipe) {
    std::string output;
    char block[1 << 16];
    for (DWORD got = 0; ReadFile(pipe, block, sizeof block, &got, nullptr) && got > 0;)
        output.append(block, got);
    for (size_t at = 0; (at = output.find("\r\n", at)) != std::string::npos; ++at)
        output.erase(at, 1);
    return output;
}

// Its handle. Wine now and then refuses to start a program and does it when asked again.
HANDLE start(const std::vector<std::string>& words, HANDLE out, HANDLE errors) {
    STARTUPINFOW how{};
    how.cb = sizeof how;
    how.dwFlags = STARTF_USESTDHANDLES;
    how.hStdOutput = out;
    how.hStdError = errors;
    PROCESS_INFORMATION made{};
    for (int tries = 1;; ++tries) {
        std::wstring line = commandLine(words);
        if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW, nullptr, nullptr,
                           &how, &made))
            break;
        if (tries == 3)
            throw std::runtime_error("cannot run " + words[0] + ": " + std::to_string(GetLastError()));
        Sleep(200);
    }
    CloseHandle(made.hThread);
    return made.hProcess;
}

} // namespace

std::string runCommand(const std::string& command, int& status) {
    std::vector<std::string> words = wordsOf(command);
    const bool mergesErrors = words.back() == "2>&1";
    if (mergesErrors || words.back() == "2>/dev/null") words.pop_back();
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    HANDLE out = nullptr, in = nullptr;
    if (!CreatePipe(&out, &in, &inherited, 0)) throw std::runtime_error("no pipe");
    SetHandleInformation(out, HANDLE_FLAG_INHERIT, 0);
    const HANDLE process = start(words, in, mergesErrors ? in : nullptr);
    CloseHandle(in);
    std::string output = outputOf(out);
    CloseHandle(out);
    DWORD code = 1;
    WaitForSingleObject(process, INFINITE);
    GetExitCodeProcess(process, &code);
    CloseHandle(process);
    status = static_cast<int>(code);
    return output;
}

} // namespace peer

#endif
