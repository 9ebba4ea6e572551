// board.h.
#include "board.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <stdexcept>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace proof {

namespace {
// Step of a duration: four steps for each power of two.
size_t stepOf(uint64_t micros) {
    if (micros < 4) return micros;
    const auto power = static_cast<size_t>(std::bit_width(micros)) - 1;
    return (power - 1) * 4 + (micros >> (power - 2) & 3);
}
uint64_t upperEdge(size_t step) {
    if (step < 4) return step;
    const size_t power = step / 4 + 1;
    return ((5 + step % 4) << (power - 2)) - 1;
}
} // namespace

void Histogram::add(uint64_t micros) {
    ++steps_[std::min(stepOf(micros), kSteps - 1)];
    if (micros > longest_) longest_ = micros;
}

uint64_t Histogram::count() const {
    uint64_t sum = 0;
    for (const auto& step : steps_)
        sum += step;
    return sum;
}

uint64_t Histogram::percentile(double part) const {
    auto left = static_cast<uint64_t>(std::ceil(static_cast<double>(count()) * part));
    for (size_t step = 0; step < kSteps; ++step) {
        if (steps_[step] >= left) return left == 0 ? 0 : std::min(upperEdge(step), longest());
        left -= steps_[step];
    }
    return longest();
}

#ifdef _WIN32
Board& mapBoard(const std::filesystem::path& file) {
    const HANDLE handle = CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) throw std::runtime_error("no board");
    const HANDLE mapping = CreateFileMappingW(handle, nullptr, PAGE_READWRITE, 0, sizeof(Board), nullptr);
    void* memory = mapping ? MapViewOfFile(mapping, FILE_MAP_WRITE, 0, 0, sizeof(Board)) : nullptr;
    if (mapping) CloseHandle(mapping);
    CloseHandle(handle);
    if (!memory) throw std::runtime_error("no board");
    return *static_cast<Board*>(memory);
}
#else
Board& mapBoard(const std::filesystem::path& file) {
    const int fd = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    if (fd < 0 || ::ftruncate(fd, sizeof(Board)) != 0) throw std::runtime_error("no board");
    void* memory = ::mmap(nullptr, sizeof(Board), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    ::close(fd);
    if (memory == MAP_FAILED) throw std::runtime_error("no board");
    return *static_cast<Board*>(memory);
}
#endif

} // namespace proof
