// proof_processes — real processes on one real file: they read and write what the others read and write, some
// are killed on the way, and at the end all they wrote down is replayed and compared with the file.
//   proof_processes [--processes N] [--seconds N] [--kills N] [--timeout MS] [--folder FOLDER] [--seed N]
//   [--other P]
// Exit status 1 on any fault. FOLDER (default: a temporary one) is kept when something was found.
// P is this program built for another system, with what it needs to run here: every second process is one of
// it.
#include "child_process.h"
#include "figures.h"
#include "replay.h"
#include "worker.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <thread>

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

struct Options {
    std::string program, other, folder;
    int processes = 8, seconds = 60, kills = -1, timeout = 10'000, seed = 1;
    int worker = 0, life = 0; // of a worker process
};

Options parse(int argc, char** argv) {
    Options options;
    options.program = proof::ownProgram();
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
        const bool text = name == "--folder" || name == "--other";
        if ((known == numbers.end() && !text) || i + 1 == argc) {
            std::fprintf(stderr, "proof_processes [--processes N] [--seconds N] [--kills N] [--timeout MS] "
                                 "[--folder FOLDER] [--seed N] [--other PROGRAM]\n");
            std::exit(2);
        }
        if (text)
            (name == "--folder" ? options.folder : options.other) = argv[++i];
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
        const bool other = !options_.other.empty() && number % 2 == 0;
        running_[number] = proof::ChildProcess::start(
            {other ? options_.other : options_.program, "--folder", options_.folder, "--worker",
             std::to_string(number), "--life", std::to_string(options_.seed * 1000 + life), "--processes",
             std::to_string(options_.processes), "--timeout", std::to_string(options_.timeout)});
    }
    void kill(int number) {
        running_[number].kill();
        running_.erase(number);
    }
    bool endAll() { // true when all ended well
        bool well = true;
        for (auto& [number, process] : running_)
            well = process.endedWell() && well;
        running_.clear();
        return well;
    }

  private:
    const Options& options_;
    std::map<int, proof::ChildProcess> running_;
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

std::string temporaryFolder() {
    fs::path folder;
    do
        folder = fs::temp_directory_path() / ("orvan-proof-" + std::to_string(std::random_device()()));
    while (!fs::create_directory(folder));
    return folder.string();
}

int prove(Options options) {
    const bool temporary = options.folder.empty();
    if (temporary) options.folder = temporaryFolder();
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
    if (found != 0) std::printf("kept: %s\n", options.folder.c_str());
    std::error_code left; // the board may still be mapped
    if (found == 0 && temporary) fs::remove_all(folder, left);
    return found == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv) {
    const Options options = parse(argc, argv);
    return options.worker > 0 ? work(options) : prove(options);
}
