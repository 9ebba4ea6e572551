#include "worker.h"

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <poll.h>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace proof {

namespace {

volatile std::sig_atomic_t askedToEnd = 0;

void tell(int pipe, Told told, const Action& action, const char* text = "") {
    Message message{told, action, {}};
    std::snprintf(message.text, sizeof message.text, "%s", text);
    if (::write(pipe, &message, sizeof message) != sizeof message) ::_exit(4); // smaller than PIPE_BUF: whole
}

} // namespace

uint64_t nowMicroseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(now).count());
}

Worker::Worker(int number, const std::filesystem::path& file, const Model& model, uint32_t seed)
    : number_(number), model_(model) {
    int ends[2];
    if (::pipe(ends) != 0) throw std::runtime_error("pipe");
    std::fflush(stdout);
    process_ = ::fork();
    if (process_ < 0) throw std::runtime_error("fork");
    if (process_ == 0) {
        ::close(ends[0]);
        work(file, seed, ends[1]);
    }
    ::close(ends[1]);
    pipe_ = ends[0];
}

Worker::~Worker() {
    if (process_ > 0) {
        kill();
        ::waitpid(process_, nullptr, 0);
    }
    ::close(pipe_);
}

void Worker::work(const std::filesystem::path& file, uint32_t seed, int pipe) {
    struct sigaction end {};
    end.sa_handler = [](int) { askedToEnd = 1; };
    ::sigaction(SIGTERM, &end, nullptr);
    Action action;
    try {
        const auto database = jet::Database::open(file);
        jet::SqlSession sql(*database);
        Chooser chooser(number_, seed);
        while (askedToEnd == 0) {
            action = chooser.next(model_);
            tell(pipe, Told::Begins, action);
            perform(*database, sql, number_, action);
            apply(model_, action);
            tell(pipe, Told::Done, action);
        }
    } catch (const std::exception& error) {
        tell(pipe, Told::Failed, action, error.what());
        ::_exit(3);
    }
    ::_exit(0);
}

bool Worker::listen(int milliseconds) {
    pollfd waiting{pipe_, POLLIN, 0};
    if (::poll(&waiting, 1, milliseconds) <= 0) return false;
    Message message;
    if (::read(pipe_, &message, sizeof message) != sizeof message) return false;
    hear(message);
    return true;
}

void Worker::hear(const Message& message) {
    switch (message.told) {
    case Told::Begins:
        pending_ = message.action;
        begun_ = nowMicroseconds();
        break;
    case Told::Done:
        apply(model_, message.action);
        pending_.reset();
        ++done_;
        usual_ = usual_ * 0.8 + static_cast<double>(nowMicroseconds() - begun_) * 0.2;
        break;
    case Told::Failed: failure_ = message.text;
    }
}

void Worker::kill() { ::kill(process_, SIGKILL); }
void Worker::askToEnd() { ::kill(process_, SIGTERM); }

bool Worker::waitForEnd() {
    if (process_ < 0) return endedWell_;
    int status = 0;
    constexpr int kPatienceMs = 30'000;
    for (const uint64_t start = nowMicroseconds();;) {
        while (listen(0)) {
        }
        const pid_t ended = ::waitpid(process_, &status, WNOHANG);
        if (ended == process_) break;
        if (nowMicroseconds() - start > kPatienceMs * 1000ull) {
            failure_ = "does not end";
            kill();
            ::waitpid(process_, &status, 0);
            break;
        }
        ::usleep(500);
    }
    process_ = -1;
    while (listen(0)) {
    }
    const bool killed = WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL;
    return endedWell_ = failure_.empty() && (killed || (WIFEXITED(status) && WEXITSTATUS(status) == 0));
}

} // namespace proof
