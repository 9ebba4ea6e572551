// jet/pages/frame.h — one place of the page cache. Only the cache and PageRef touch its counters.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jet {

struct Frame {
    static constexpr uint32_t kNoPage = 0xFFFFFFFF;
    uint8_t* data = nullptr;
    uint32_t size = 0;       // bytes
    uint32_t page = kNoPage; // page held; kNoPage = none (also a dropped page that somebody still has pinned)
    uint32_t pins = 0;       // living PageRefs; a pinned frame stays in place
    bool used = false;       // since the clock hand passed
    bool dirty = false;      // differs from the database file and from the spill file
};

} // namespace jet
