// proof_processes — real processes on one real file: they read and write what the others read and write, some
// are killed on the way, and at the end all they wrote down is replayed and compared with the file.
//   proof_processes [--processes N] [--seconds N] [--kills N] [--timeout MS] [--folder FOLDER] [--seed N]
// Exit status 1 on any fault. FOLDER (default: a temporary one) is kept when something was found.
#include "figures.h"
#include "replay.h"
#include "worker.h"

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

struct Options {
    std::string program, folder;
    int processes = 8, seconds = 60, kills = -1, timeout = 10'000, seed = 1;
    int worker = 0, life = 0; // of a worker process
};

Options parse(int argc, char** argv) {
    Options options;
    options.program = fs::read_symlink("/proc/self/exe").string();
    const std::map<std::string, int*> numbers = {{"--processes", &options.processes},
                                                 {"--seconds", &options.seconds},
                                                 {"--kills", &options.kills},
                                                 {"--timeout", &options.timeout},
                                                 {"--seed", &options.seed},
                                                 {"--worker", &options.worker},
                                                 {"--life", &options.life}};
    for (int i = 1; i < argc; ++i) {
        const std::string name = argv[i];
        const auto known = numbers.find(name);
        if ((known == numbers.end() && name != "--folder") || i + 1 == argc) {
            std::fprintf(stderr, "proof_processes [--processes N] [--seconds N] [--kills N] [--timeout MS] "
                                 "[--folder FOLDER] [--seed N]\n");
            std::exit(2);
        }
        if (name == "--folder")
            options.folder = argv[++i];
        else
            *known->second = std::atoi(argv[++i]);
    }
    options.processes = std::clamp(options.processes, 1, proof::kMostWorkers - 1);
    if (options.kills < 0) options.kills = options.seconds / 5;
    return options;
}

int work(const Options& options) {
    try {
        proof::Worker worker(
            {options.folder, options.worker, options.processes, options.life, options.timeout});
        worker.run();
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "FAULT (process %d): ended by %s\n", options.worker, error.what());
        return 1;
    }
}

class Workers {
  public:
    explicit Workers(const Options& options) : options_(options) {}

    void start(int number) {
        const int life = lives_[number]++;
        const pid_t id = ::fork();
        if (id != 0) {
            running_[number] = id;
            return;
        }
        const std::string arguments[] = {options_.program,
                                         "--folder",
                                         options_.folder,
                                         "--worker",
                                         std::to_string(number),
                                         "--life",
                                         std::to_string(options_.seed * 1000 + life),
                                         "--processes",
                                         std::to_string(options_.processes),
                                         "--timeout",
                                         std::to_string(options_.timeout)};
        std::vector<char*> list;
        for (const std::string& argument : arguments)
            list.push_back(const_cast<char*>(argument.c_str()));
        list.push_back(nullptr);
        ::execv(list[0], list.data());
        ::_exit(127);
    }
    void kill(int number) {
        ::kill(running_[number], SIGKILL);
        ::waitpid(running_[number], nullptr, 0);
        running_.erase(number);
    }
    bool endAll() { // true when all ended well
        bool well = true;
        for (const auto& [number, id] : running_) {
            int status = 0;
            ::waitpid(id, &status, 0);
            well = well && WIFEXITED(status) && WEXITSTATUS(status) == 0;
        }
        running_.clear();
        return well;
    }

  private:
    const Options& options_;
    std::map<int, pid_t> running_;
    std::map<int, int> lives_;
};

// The load: everybody works; now and then one is killed and another takes its place.
bool runLoad(const Options& options, proof::Board& board) {
    Workers workers(options);
    for (int number = 1; number <= options.processes; ++number)
        workers.start(number);
    std::mt19937 dice(static_cast<unsigned>(options.seed));
    const auto start = Clock::now();
    const auto span = std::chrono::seconds(options.seconds);
    for (int kill = 1; kill <= options.kills; ++kill) {
        const auto jitter = std::chrono::milliseconds(dice() % 200);
        std::this_thread::sleep_until(start + span * kill / (options.kills + 1) + jitter);
        const int victim = 1 + static_cast<int>(dice() % static_cast<unsigned>(options.processes));
        workers.kill(victim);
        workers.start(victim);
    }
    std::this_thread::sleep_until(start + span);
    board.stop = true;
    return workers.endAll();
}

int prove(Options options) {
    const bool temporary = options.folder.empty();
    if (temporary) {
        std::string pattern = (fs::temp_directory_path() / "orvan-proof-XXXXXX").string();
        if (!::mkdtemp(pattern.data())) return 2;
        options.folder = pattern;
    }
    const fs::path folder = options.folder, database = folder / "ORTAK.MDB";
    proof::Board& board = proof::mapBoard(folder / "board");
    proof::createDatabase(database, options.processes);
    const bool endedWell = runLoad(options, board);
    const auto progress = proof::printFigures(board, options.processes, options.seconds);

    std::vector<std::string> faults;
    if (!endedWell) faults.push_back("a process ended by an error");
    for (const char* left : {"ORTAK.ldb", "ORTAK.MDB-journal"})
        if (fs::exists(folder / left)) faults.push_back(std::string(left) + " stayed behind");
    if (progress.fewestReads == 0 || progress.fewestWrites == 0)
        faults.push_back("a process made no progress");
    const proof::Replay replay = proof::replayAndCompare(folder, database, options.processes);
    faults.insert(faults.end(), replay.faults.begin(), replay.faults.end());
    std::printf("%10zu  acknowledged changes replayed, %zu of killed processes open either way; %d kills\n",
                replay.changes, replay.unknown, options.kills);
    std::printf("%10zu  records and %zu batches at the end; file %llu kB\n", replay.records, replay.batches,
                static_cast<unsigned long long>(fs::file_size(database) >> 10));
    for (size_t i = 0; i < faults.size() && i < 50; ++i)
        std::printf("FAULT: %s\n", faults[i].c_str());
    const size_t found = faults.size() + board.faults;
    std::printf("%10zu  faults\n", found);
    if (found == 0 && temporary) fs::remove_all(folder);
    if (found != 0) std::printf("kept: %s\n", folder.c_str());
    return found == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const Options options = parse(argc, argv);
    return options.worker > 0 ? work(options) : prove(options);
}
