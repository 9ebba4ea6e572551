// jet/pages/page_cache.h: the clock over all frames; slabs grow only as pages are really read.
#include "jet/pages/page_cache.h"

#include <algorithm>
#include <cassert>

namespace jet {

namespace {
constexpr size_t kFewestFrames = 16; // a tree walk with its neighbours stays in place
}

void PageCache::setPageSize(size_t bytes) {
    assert(frames_.empty());
    pageSize_ = bytes;
    bound_ = std::max(kFewestFrames, boundBytes_ / bytes);
}

void PageCache::addFrames() {
    const size_t room = frames_.size() < bound_ ? bound_ - frames_.size() : 1;
    const size_t count = std::min(kSlabFrames, room);
    frames_.reserve(frames_.size() + count);
    free_.reserve(frames_.size() + count);
    auto& data = dataSlabs_.emplace_back(new uint8_t[count * pageSize_]);
    auto& slab = frameSlabs_.emplace_back(new Frame[count]);
    for (size_t i = count; i-- > 0;) {
        slab[i].data = data.get() + i * pageSize_;
        slab[i].size = static_cast<uint32_t>(pageSize_);
        frames_.push_back(&slab[i]);
        free_.push_back(&slab[i]);
    }
}

Frame* PageCache::victim() {
    if (free_.empty() && frames_.size() < bound_) addFrames();
    if (!free_.empty()) return free_.back();
    for (size_t steps = 2 * frames_.size(); steps > 0; --steps) {
        Frame* frame = frames_[hand_];
        hand_ = hand_ + 1 == frames_.size() ? 0 : hand_ + 1;
        if (frame->pins > 0) continue;
        if (frame->page == Frame::kNoPage || !frame->used) return frame;
        frame->used = false;
    }
    addFrames(); // everything is pinned
    return free_.back();
}

void PageCache::attach(Frame& frame, uint32_t page) {
    assert(frame.pins == 0);
    if (frame.page != Frame::kNoPage)
        table_[frame.page] = nullptr;
    else if (!free_.empty() && free_.back() == &frame)
        free_.pop_back();
    if (page >= table_.size()) table_.resize(std::max<size_t>(page + 1, table_.size() + table_.size() / 2));
    assert(!table_[page]);
    table_[page] = &frame;
    frame.page = page;
    frame.used = true;
    frame.dirty = false;
}

void PageCache::detach(Frame& frame) {
    if (frame.page == Frame::kNoPage) return;
    table_[frame.page] = nullptr;
    frame.page = Frame::kNoPage;
    frame.dirty = false;
    if (frame.pins == 0) free_.push_back(&frame); // a pinned one is found by the clock later
}

void PageCache::dropFrom(uint32_t firstPage) {
    for (size_t page = firstPage; page < table_.size(); ++page)
        if (table_[page]) detach(*table_[page]);
}

void PageCache::clear(Keep keep) {
    for (Frame* frame : frames_)
        if (keep == Keep::Nothing || !frame->dirty) detach(*frame);
}

} // namespace jet
