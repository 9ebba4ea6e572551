// jet/pages/savepoints.h
#include "jet/pages/savepoints.h"

#include <algorithm>
#include <cstring>

namespace jet {

size_t Savepoints::push(uint32_t pageCount) {
    points_.push_back({++lastStamp_, used_, pageCount});
    return points_.size();
}

void Savepoints::save(uint32_t page, uint64_t& stamp, const uint8_t* bytes) {
    if (used_ == images_.size()) {
        images_.emplace_back();
        images_.back().bytes.reset(new uint8_t[pageSize_]);
    }
    Image& image = images_[used_++];
    image.page = page;
    image.savedBefore = stamp;
    std::memcpy(image.bytes.get(), bytes, pageSize_);
    stamp = points_.back().stamp;
}

void Savepoints::pop(size_t depth) {
    used_ = points_[depth - 1].firstImage;
    points_.resize(depth - 1);
}

void Savepoints::clear() {
    points_.clear();
    used_ = 0;
    if (images_.size() > kKeptBuffers) images_.resize(kKeptBuffers);
}

} // namespace jet
