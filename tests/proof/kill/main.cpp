// proof_kill — processes that change a database on a real disk are killed at random moments, also one of
// several who share it. Whatever was acknowledged must be there, nothing half, nothing left over. Exit status
// 1 when anything is not so.
//   proof_kill [--kills N] [--seed N] [--folder PATH]
#include "jet/check/check.h"
#include "peer/peer.h"
#include "peer/random_edits.h"
#include "worker.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using proof::Model;
using proof::Worker;

struct Figures {
    size_t kills = 0, inWrite = 0, hot = 0, alone = 0, done = 0, survivorsDone = 0, adopted = 0, peer = 0,
           faults = 0;
    double longestOpenMs = 0;
};

class Proof {
  public:
    Proof(fs::path folder, uint32_t seed, size_t peerEach)
        : file_(folder / "KALFA.MDB"), models_(proof::kWorkers), dice_(seed), peerEach_(peerEach) {
        proof::createDatabase(file_);
    }
    void round();
    const Figures& figures() const { return figures_; }

  private:
    using Workers = std::vector<std::unique_ptr<Worker>>;
    void startWorkers(Workers& workers);
    void killOne(Workers& workers);
    void letOthersGoOn(Workers& workers, const Worker& dead);
    void end(Worker& worker);
    void endAll(Workers& workers, Worker& dead);
    void verify(const Workers& workers);
    void compareWithPeer(jet::Database& database);
    bool journalIsHot() const;
    fs::path beside(const char* ending) const { return file_.string() + ending; }
    size_t below(size_t bound) { return dice_() % bound; }
    void fault(const std::string& what);

    fs::path file_;
    std::vector<Model> models_; // as they were found last
    std::mt19937 dice_;
    size_t peerEach_;
    Figures figures_;
};

void Proof::fault(const std::string& what) {
    if (++figures_.faults <= 20) std::printf("FAULT  kill %zu: %s\n", figures_.kills, what.c_str());
    std::fflush(stdout);
}

void Proof::round() {
    Workers workers;
    startWorkers(workers);
    killOne(workers);
    verify(workers);
}

void Proof::startWorkers(Workers& workers) {
    const size_t count = below(2) == 0 ? 1 : 2 + below(proof::kWorkers - 1);
    std::vector<int> numbers(proof::kWorkers);
    for (int i = 0; i < proof::kWorkers; ++i)
        numbers[static_cast<size_t>(i)] = i;
    std::shuffle(numbers.begin(), numbers.end(), dice_);
    for (size_t i = 0; i < count; ++i) {
        const int number = numbers[i];
        workers.push_back(std::make_unique<Worker>(number, file_, models_[static_cast<size_t>(number)],
                                                   static_cast<uint32_t>(dice_())));
    }
    figures_.alone += count == 1;
}

// At a moment of its own choosing, or at a place within an action, as long as actions take lately.
void Proof::killOne(Workers& workers) {
    Worker& victim = *workers[below(workers.size())];
    const size_t actions = 1 + below(12);
    while (victim.done() < actions && victim.failure().empty() && victim.listen(30'000)) {
    }
    if (below(4) == 0) {
        ::usleep(static_cast<useconds_t>(below(40'000)));
    } else {
        while (!victim.pending() && victim.failure().empty() && victim.listen(30'000)) {
        }
        ::usleep(static_cast<useconds_t>(below(static_cast<size_t>(victim.usualMicroseconds() * 1.2) + 1)));
    }
    victim.kill();
    victim.waitForEnd(); // its locks end with it
    ++figures_.kills;
    if (workers.size() > 1) letOthersGoOn(workers, victim);
    endAll(workers, victim);
}

// Their work must not stop because one of them died.
void Proof::letOthersGoOn(Workers& workers, const Worker& dead) {
    for (const auto& worker : workers) {
        if (worker.get() == &dead) continue;
        while (worker->listen(0)) { // what it told before
        }
        const size_t before = worker->done();
        while (worker->done() < before + 3 && worker->failure().empty())
            if (!worker->listen(30'000)) {
                fault("worker " + std::to_string(worker->number()) + " stands still after another died");
                break;
            }
        figures_.survivorsDone += worker->done() - before;
    }
}

void Proof::end(Worker& worker) {
    const bool well = worker.waitForEnd();
    figures_.done += worker.done();
    if (!well) fault("worker " + std::to_string(worker.number()) + ": " + worker.failure());
}

// The killed one first: until the system has buried it, it still has the file open and nobody is the last.
void Proof::endAll(Workers& workers, Worker& dead) {
    end(dead);
    for (const auto& worker : workers)
        if (worker.get() != &dead) worker->askToEnd();
    for (const auto& worker : workers) {
        if (worker.get() == &dead) continue;
        end(*worker);
        if (worker->pending()) fault("a worker ended inside an action");
    }
    figures_.inWrite += dead.pending().has_value();
    figures_.hot += workers.size() == 1 && journalIsHot();
    if (workers.size() > 1 && fs::exists(file_.parent_path() / "KALFA.ldb"))
        fault("the last who left did not remove the lock file");
}

bool Proof::journalIsHot() const {
    std::ifstream journal(beside("-journal"), std::ios::binary);
    char magic[8] = {};
    return journal.read(magic, sizeof magic) && std::memcmp(magic, "ORVJRNL1", sizeof magic) == 0;
}

void Proof::verify(const Workers& workers) {
    std::vector<std::string> faults;
    try {
        const uint64_t start = proof::nowMicroseconds();
        const auto database = jet::Database::open(file_);
        database->tableNames();
        figures_.longestOpenMs =
            std::max(figures_.longestOpenMs, static_cast<double>(proof::nowMicroseconds() - start) / 1000);
        const std::vector<Model> found = proof::readModels(*database, faults);
        for (const auto& worker : workers) {
            const auto number = static_cast<size_t>(worker->number());
            Model expected = worker->acknowledged();
            models_[number] = expected;
            if (found[number] == expected) continue;
            if (worker->pending()) proof::apply(expected, *worker->pending());
            models_[number] = expected;
            ++figures_.adopted;
        }
        for (size_t i = 0; i < models_.size(); ++i)
            if (found[i] != models_[i])
                faults.push_back("worker " + std::to_string(i) + ": " +
                                 proof::difference(models_[i], found[i]));
        models_ = found;
        for (const jet::Fault& each : jet::checkDatabase(*database).faults)
            faults.push_back("check: " + each.table + " page " + std::to_string(each.page) + ": " +
                             each.text);
        if (peerEach_ != 0 && figures_.kills % peerEach_ == 0) compareWithPeer(*database);
    } catch (const std::exception& error) {
        faults.push_back(std::string("reopening: ") + error.what());
    }
    for (const auto& entry : fs::directory_iterator(file_.parent_path()))
        if (entry.path() != file_) faults.push_back("left over: " + entry.path().filename().string());
    for (const std::string& each : faults)
        fault(each);
}

void Proof::compareWithPeer(jet::Database& database) {
    ++figures_.peer;
    for (const std::string& table : database.tableNames()) {
        const jet::TableDef def = database.tableDef(table);
        const auto ours = peer::fromModel(peer::readModel(database, table), def, peer::Detail::AsMdbTools);
        const std::string differs = peer::difference(ours, peer::exportedByMdbTools(file_, def));
        if (!differs.empty()) fault("mdb-export of " + table + ": " + differs.substr(0, 300));
    }
}

} // namespace

int main(int count, char** words) {
    size_t kills = 500, seed = 1;
    fs::path folder = fs::temp_directory_path();
    for (int i = 1; i < count; i += 2) {
        const bool more = i + 1 < count;
        if (more && std::strcmp(words[i], "--kills") == 0)
            kills = static_cast<size_t>(std::atoi(words[i + 1]));
        else if (more && std::strcmp(words[i], "--seed") == 0)
            seed = static_cast<size_t>(std::atoi(words[i + 1]));
        else if (more && std::strcmp(words[i], "--folder") == 0)
            folder = words[i + 1];
        else
            return std::fprintf(stderr, "proof_kill [--kills N] [--seed N] [--folder PATH]\n"), 2;
    }
    folder /= "orvan-kill-" + std::to_string(::getpid());
    fs::create_directories(folder);
    const bool peer = peer::haveMdbTools();
    if (!peer) std::printf("mdb-export is not here: the file is not read by another program\n");
    const uint64_t start = proof::nowMicroseconds();
    Figures figures;
    {
        Proof proof(folder, static_cast<uint32_t>(seed), peer ? 10 : 0);
        while (proof.figures().kills < kills && proof.figures().faults == 0)
            proof.round();
        figures = proof.figures();
    }
    if (figures.faults == 0)
        fs::remove_all(folder);
    else
        std::printf("the file stays in %s\n", folder.c_str());
    std::printf(
        "kills %zu (%zu of a process alone, %zu of one among several)\n"
        "  inside a statement %zu; found done though not acknowledged %zu; hot journals of those alone %zu\n"
        "statements acknowledged %zu, %zu of them by others after one was killed\n"
        "longest reopening %.1f ms; compared with mdb-export %zu times; %.1f s\nfaults %zu\n",
        figures.kills, figures.alone, figures.kills - figures.alone, figures.inWrite, figures.adopted,
        figures.hot, figures.done, figures.survivorsDone, figures.longestOpenMs, figures.peer,
        static_cast<double>(proof::nowMicroseconds() - start) / 1e6, figures.faults);
    return figures.faults == 0 ? 0 : 1;
}
