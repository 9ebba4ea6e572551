// records.h — what each worker writes down of its changes, so that all of them can be replayed: an intent
// before the call, the outcome after it. An intent without outcome is of a process that was killed.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <vector>

namespace proof {

enum class What : uint8_t {
    Insert,   // key, id
    Update,   // key, id; version = the new one
    Delete,   // key, id; version = the one that was deleted
    Count,    // key = the counter
    Stamp,    // key = the worker, version = the new number
    BatchIn,  // key = the batch
    BatchOut, // key = the batch
    Changing, // key = the new row of Degisen
};
enum class Phase : uint8_t { Begun, Done, Undone };

struct Record {
    What what = What::Insert;
    Phase phase = Phase::Begun;
    uint16_t worker = 0;
    int32_t key = 0, id = 0, version = 0;
};

class Diary {
  public:
    Diary(const std::filesystem::path& folder, int worker);
    ~Diary();
    Diary(const Diary&) = delete;
    Diary& operator=(const Diary&) = delete;

    void begin(What what, int32_t key, int32_t id = 0, int32_t version = 0);
    void end(bool done); // of what was begun last

  private:
    void write();
    std::ofstream out_;
    Record now_;
};

// What is known of one change at the end.
enum class Outcome { Done, Unknown };
struct Change {
    Record record;
    Outcome outcome = Outcome::Done;
};
std::vector<Change> readDiaries(const std::filesystem::path& folder, int workers); // undone ones left out

} // namespace proof
