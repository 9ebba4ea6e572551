// tools/jetdb/copy_commands.h
#include "tools/jetdb/copy_commands.h"

#include "jet/copy/compact.h"
#include "jet/copy/convert.h"
#include "tools/terminal.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace jetdb {

namespace {

bool standardErrorIsTerminal() {
#ifdef _WIN32
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

using Copy = jet::CopyReport (*)(const std::filesystem::path&, const std::filesystem::path&,
                                 const jet::CopyOptions&);

int run(const Arguments& args, Copy copy) {
    jet::CopyReport report;
    {
        TerminalProgress progress;
        jet::CopyOptions options;
        options.password = args.password.value_or("");
        options.progress = [&](size_t done, size_t total) {
            progress.show(done, total);
            return true;
        };
        report = copy(terminal::fileNamed(args.plain[0]), terminal::fileNamed(args.plain[1]), options);
    }
    for (const std::string& note : report.notes)
        std::printf("Not: %s\n", note.c_str());
    std::printf("%zu tablo, %" PRIu64 " kayıt yazıldı; %" PRIu64 " bayttan %" PRIu64 " bayta.\n",
                report.tables, report.rows, report.bytesBefore, report.bytesAfter);
    return 0;
}

} // namespace

TerminalProgress::TerminalProgress() : terminal_(standardErrorIsTerminal()) {}

TerminalProgress::~TerminalProgress() {
    if (shown_ != SIZE_MAX) std::fprintf(stderr, "\r     \r");
}

void TerminalProgress::show(size_t done, size_t total) {
    if (!terminal_ || total == 0) return;
    const size_t percent = std::min<size_t>(100, done * 100 / total);
    if (percent == shown_) return;
    shown_ = percent;
    std::fprintf(stderr, "\r%%%zu", percent);
    std::fflush(stderr);
}

int runCompact(const Arguments& args) { return run(args, jet::compactDatabase); }
int runConvert(const Arguments& args) { return run(args, jet::convertDatabase); }

} // namespace jetdb
