// tests/proof/repair — harms files in every way we can think of and demands from repair: every row that lies
// on pages without harm is in the result, the result stands up to the check, the source is untouched.
//   proof_repair [--seeds N] [--first SEED] [--flips MOST] [--harmed PAGES] [--quick] [--random-only]
#include "peer/peer.h"
#include "proof/repair/judge.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

using namespace proof_repair;

namespace {

struct Options {
    unsigned seeds = 200, first = 0;
    size_t flips = 24, harmed = 30;
    bool quick = false, randomOnly = false;
};

constexpr int kLargeRows = 20000, kQuickRows = 4000;
constexpr size_t kSmallPages = 40;     // every page of samples up to this size is harmed in turn
constexpr unsigned kMdbToolsEvery = 8; // seeds

std::vector<uint8_t> bytesOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::filesystem::path sampleFolder() {
    if (const char* set = std::getenv("ORVAN_SHARED")) return std::filesystem::path(set) / "jet/samples";
    if (const char* source = std::getenv("ORVAN_SOURCE_DIR"))
        return std::filesystem::path(source).parent_path() / "shared/jet/samples";
    return "../shared/jet/samples";
}

std::vector<KnownFile> learnSamples() {
    std::vector<std::filesystem::path> paths;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(sampleFolder(), ignored))
        if (entry.path().extension() == ".mdb" && entry.path().string().find("jet3") == std::string::npos)
            paths.push_back(entry.path());
    std::ranges::sort(paths);
    std::vector<KnownFile> samples;
    for (const auto& path : paths) {
        const std::string name = path.filename().string();
        samples.push_back(
            learnFile(name, bytesOf(path), name.find("-password-") == std::string::npos ? "" : "Şifre12"));
    }
    return samples;
}

bool parse(int argc, char** argv, Options& options) {
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        const auto number = [&] { return ++i < argc ? std::strtoul(argv[i], nullptr, 10) : 0; };
        if (word == "--seeds")
            options.seeds = static_cast<unsigned>(number());
        else if (word == "--first")
            options.first = static_cast<unsigned>(number());
        else if (word == "--flips")
            options.flips = number();
        else if (word == "--harmed")
            options.harmed = number();
        else if (word == "--quick")
            options.quick = true;
        else if (word == "--random-only")
            options.randomOnly = true;
        else
            return false;
    }
    return options.flips > 0;
}

void print(const char* title, const Figures& f) {
    std::printf("%-44s %6zu trials, %zu faults, %zu with nothing to save\n", title, f.trials, f.faults,
                f.refused);
    std::printf("    rows on unharmed pages: %llu owed, all saved unless faults say otherwise\n",
                static_cast<unsigned long long>(f.rowsOwed));
    std::printf("    rows on harmed pages:   %llu, of them %llu saved unchanged; %llu rows differ or are "
                "partly lost\n",
                static_cast<unsigned long long>(f.rowsTouched),
                static_cast<unsigned long long>(f.touchedSaved),
                static_cast<unsigned long long>(f.rowsForeign));
    std::printf("    rows read again by mdb-export: %llu; repair took %.1f ms on average, %.1f ms at worst\n",
                static_cast<unsigned long long>(f.shownByMdbTools),
                f.trials ? f.allMs / static_cast<double>(f.trials) : 0, f.worstMs);
}

class Proof {
  public:
    explicit Proof(const Options& options) : options_(options), withMdbTools_(peer::haveMdbTools()) {}

    int run() {
        std::vector<KnownFile> samples = learnSamples();
        const KnownFile own = learnFile("own", makeLargeFile(options_.quick ? kQuickRows : kLargeRows), "");
        if (samples.empty()) std::printf("samples are not here: only the file of our own is harmed\n");
        if (!withMdbTools_) std::printf("mdbtools is not installed: results are read by our engine alone\n");
        if (!options_.randomOnly) sweep(samples);
        section("random harm", [&](Judge& judge) {
            for (unsigned seed = options_.first; seed < options_.first + options_.seeds; ++seed) {
                const bool shown = withMdbTools_ && seed % kMdbToolsEvery == 0;
                judge.tryRepair(own, harmAtRandom(own.bytes, options_.harmed, options_.flips, seed), shown);
                if (samples.empty()) continue;
                const KnownFile& sample = samples[seed % samples.size()];
                judge.tryRepair(sample, harmAtRandom(sample.bytes, options_.harmed, options_.flips, seed),
                                shown);
            }
        });
        print("all", all_);
        return all_.faults == 0 ? 0 : 1;
    }

  private:
    template <class F> void section(const char* title, F part) {
        Judge judge([](const std::string& text) { std::printf("FAULT %s\n", text.c_str()); });
        part(judge);
        print(title, judge.figures());
        all_.add(judge.figures());
    }

    void sweep(const std::vector<KnownFile>& samples) {
        std::vector<const KnownFile*> small;
        for (const KnownFile& sample : samples)
            if (sample.pageCount() <= kSmallPages && (!options_.quick || small.empty()))
                small.push_back(&sample);
        section("no harm", [&](Judge& judge) {
            for (const KnownFile& sample : samples)
                judge.tryRepair(sample, {sample.bytes, {}, "no harm"}, withMdbTools_ && !options_.quick);
        });
        section("each page in turn", [&](Judge& judge) {
            for (const KnownFile* file : small)
                for (uint32_t page = 0; page < file->pageCount(); ++page)
                    for (const PageHarm how :
                         {PageHarm::Flips, PageHarm::Zeroes, PageHarm::Noise, PageHarm::TypeByte})
                        judge.tryRepair(*file, harmPage(file->bytes, page, how, page), false);
        });
        section("cut short, garbage behind", [&](Judge& judge) {
            for (const KnownFile* file : small) {
                for (size_t page = 0; page < file->pageCount(); ++page)
                    for (const size_t more : {0, 1000})
                        judge.tryRepair(*file, cutAt(file->bytes, page * 4096 + more), false);
                for (const size_t bytes : {1, 4096, 100000})
                    judge.tryRepair(*file, appendNoise(file->bytes, bytes, 1), false);
            }
        });
    }

    Options options_;
    bool withMdbTools_;
    Figures all_;
};

} // namespace

int main(int argc, char** argv) {
    Options options;
    if (!parse(argc, argv, options)) {
        std::fprintf(stderr,
                     "proof_repair [--seeds N] [--first SEED] [--flips MOST] [--harmed PAGES] [--quick] "
                     "[--random-only]\n");
        return 2;
    }
    return Proof(options).run();
}
