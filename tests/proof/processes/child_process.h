// child_process.h — one process that the proof starts, kills and waits for, on either system.
#pragma once

#include <string>
#include <vector>

namespace proof {

class ChildProcess {
  public:
    ChildProcess() = default;
    // The first word is the program, with its whole path. Throws std::runtime_error when it cannot be
    // started.
    static ChildProcess start(const std::vector<std::string>& words);

    void kill();      // at once and without any word to it; returns when it is gone
    bool endedWell(); // waits for its end; true when its status is 0

  private:
#ifdef _WIN32
    void* process_ = nullptr;
#else
    int process_ = 0;
#endif
};

std::string ownProgram(); // whole path of the program that asks

} // namespace proof
