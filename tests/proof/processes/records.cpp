// records.h. Written with one call each: what was written survives the process.
#include "records.h"

#include <stdexcept>
#include <string>

namespace proof {

namespace {
std::filesystem::path diaryPath(const std::filesystem::path& folder, int worker) {
    return folder / ("diary." + std::to_string(worker));
}
} // namespace

Diary::Diary(const std::filesystem::path& folder, int worker) {
    out_.rdbuf()->pubsetbuf(nullptr, 0); // each record goes to the system at once
    out_.open(diaryPath(folder, worker), std::ios::binary | std::ios::app);
    if (!out_) throw std::runtime_error("no diary");
    now_.worker = static_cast<uint16_t>(worker);
}

Diary::~Diary() = default;

void Diary::begin(What what, int32_t key, int32_t id, int32_t version) {
    now_ = {what, Phase::Begun, now_.worker, key, id, version};
    write();
}

void Diary::end(bool done) {
    now_.phase = done ? Phase::Done : Phase::Undone;
    write();
}

void Diary::write() {
    if (!out_.write(reinterpret_cast<const char*>(&now_), sizeof now_))
        throw std::runtime_error("diary not written");
}

std::vector<Change> readDiaries(const std::filesystem::path& folder, int workers) {
    std::vector<Change> changes;
    for (int worker = 1; worker <= workers; ++worker) {
        std::ifstream in(diaryPath(folder, worker), std::ios::binary);
        Record record;
        bool open = false;
        while (in.read(reinterpret_cast<char*>(&record), sizeof record)) {
            if (record.phase == Phase::Begun) {
                changes.push_back({record, Outcome::Unknown});
                open = true;
                continue;
            }
            if (!open) throw std::runtime_error("a diary tells an outcome without its intent");
            open = false;
            if (record.phase == Phase::Done)
                changes.back().outcome = Outcome::Done;
            else
                changes.pop_back();
        }
    }
    return changes;
}

} // namespace proof
