// worker.h — a process of its own that changes the database until it is killed or asked to end, and tells
// what it is about to do and what was done.
#pragma once

#include "model.h"

#include <optional>
#include <sys/types.h>

namespace proof {

enum class Told : int32_t { Begins, Done, Failed };
struct Message {
    Told told = Told::Begins;
    Action action;
    char text[120] = {}; // of Failed
};

class Worker {
  public:
    // Starts it; it goes on from `model`.
    Worker(int number, const std::filesystem::path& file, const Model& model, uint32_t seed);
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    int number() const { return number_; }
    // Waits for a message up to `milliseconds`; false when none came. Keeps model and pending action.
    bool listen(int milliseconds);
    void kill();
    void askToEnd();
    bool waitForEnd(); // reads what is still told; false when it did not end well

    const Model& acknowledged() const { return model_; }
    const std::optional<Action>& pending() const { return pending_; } // begun, not acknowledged
    size_t done() const { return done_; }
    const std::string& failure() const { return failure_; }
    double usualMicroseconds() const { return usual_; } // of one action, lately

  private:
    [[noreturn]] void work(const std::filesystem::path& file, uint32_t seed, int pipe);
    void hear(const Message& message);

    int number_;
    Model model_;
    pid_t process_ = -1;
    int pipe_ = -1;
    bool endedWell_ = false;
    std::optional<Action> pending_;
    size_t done_ = 0;
    std::string failure_;
    uint64_t begun_ = 0;
    double usual_ = 3000;
};

uint64_t nowMicroseconds();

} // namespace proof
