// jet/pages/savepoints.h — before-images in memory, for undoing a part of a write.
// Buffers are kept from savepoint to savepoint: in a bulk job a savepoint costs no allocation, only the page
// copies.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace jet {

class Savepoints {
  public:
    struct Image {
        uint32_t page = 0;
        uint64_t savedBefore = 0; // stamp that the page had before this image
        std::unique_ptr<uint8_t[]> bytes;
    };

    explicit Savepoints(size_t pageSize = 0) : pageSize_(pageSize) {}

    size_t depth() const { return points_.size(); }
    size_t push(uint32_t pageCount); // returns the new depth

    // True when the innermost savepoint must keep the page's bytes before a change. `stamp` belongs to the
    // page, starts at 0 and is set by save().
    bool wants(uint32_t page, uint64_t stamp) const {
        return !points_.empty() && stamp < points_.back().stamp && page < points_.back().pageCount;
    }
    void save(uint32_t page, uint64_t& stamp, const uint8_t* bytes);

    // Ends the innermost savepoint; its images go to the one around it. `stampOf(page)` is the page's stamp.
    template <class StampOf> void release(StampOf stampOf);

    // For undoing down to `depth`: its page count, and its images, newest last (undo from the back).
    // pop() then ends it and the deeper ones.
    uint32_t pageCountAt(size_t depth) const { return points_[depth - 1].pageCount; }
    std::span<const Image> imagesFrom(size_t depth) const {
        return std::span(images_).subspan(points_[depth - 1].firstImage,
                                          used_ - points_[depth - 1].firstImage);
    }
    void pop(size_t depth);
    void clear();

  private:
    struct Point {
        uint64_t stamp;
        size_t firstImage;
        uint32_t pageCount;
    };
    static constexpr size_t kKeptBuffers = 1024;

    size_t pageSize_;
    std::vector<Point> points_;
    std::vector<Image> images_; // a stack of `used_`; behind it spare buffers
    size_t used_ = 0;
    uint64_t lastStamp_ = 0; // grows for ever: stamps of ended savepoints mean nothing to later ones
};

template <class StampOf> void Savepoints::release(StampOf stampOf) {
    const Point inner = points_.back();
    points_.pop_back();
    if (points_.empty()) {
        used_ = 0;
        return;
    }
    const Point& outer = points_.back();
    size_t kept = inner.firstImage;
    for (size_t i = inner.firstImage; i < used_; ++i) {
        const bool outerHasIt = images_[i].savedBefore >= outer.stamp || images_[i].page >= outer.pageCount;
        if (outerHasIt) continue;
        stampOf(images_[i].page) = outer.stamp;
        std::swap(images_[kept++], images_[i]);
    }
    used_ = kept;
}

} // namespace jet
