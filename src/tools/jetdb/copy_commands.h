// tools/jetdb/copy_commands.h — the commands that make one database file out of another.
#pragma once

#include "tools/jetdb/commands.h"

#include <cstddef>

namespace jetdb {

int runCompact(const Arguments& args);
int runConvert(const Arguments& args);

// "%37" on the last line of a terminal while it lasts; silent elsewhere. Goes when the object goes.
class TerminalProgress {
  public:
    TerminalProgress();
    ~TerminalProgress();
    TerminalProgress(const TerminalProgress&) = delete;
    TerminalProgress& operator=(const TerminalProgress&) = delete;
    void show(size_t done, size_t total);

  private:
    bool terminal_;
    size_t shown_ = SIZE_MAX; // percent
};

} // namespace jetdb
