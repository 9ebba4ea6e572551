// jet/pages/page_cache.h — frames in a bounded number, found by page number in one step, reused by the clock
// rule. It does no I/O: who takes a dirty victim saves it first.
#pragma once

#include "jet/pages/frame.h"

#include <memory>
#include <vector>

namespace jet {

class PageCache {
  public:
    explicit PageCache(size_t boundBytes) : boundBytes_(boundBytes) {}
    void setPageSize(size_t bytes); // REQUIRES: no frame made yet

    // The frame of a page, or nullptr. Marks it as used.
    Frame* find(uint32_t page) {
        if (page >= table_.size() || !table_[page]) return nullptr;
        table_[page]->used = true;
        return table_[page];
    }
    const Frame* peek(uint32_t page) const { return page < table_.size() ? table_[page] : nullptr; }

    // An unpinned frame: a free one, a new one while the bound allows (or all are pinned), else the least
    // used. It may still hold a page: save it if dirty, then attach() it to the wanted one.
    Frame* victim();
    void attach(Frame& frame, uint32_t page); // the frame forgets the page it held
    void detach(Frame& frame); // the frame holds no page; if pinned its bytes stay until unpinned

    void dropFrom(uint32_t firstPage); // detaches every page >= firstPage
    enum class Keep { Nothing, Dirty };
    void clear(Keep keep);

    size_t frameCount() const { return frames_.size(); }
    const std::vector<Frame*>& frames() const { return frames_; }

  private:
    void addFrames();

#ifdef ORVAN_GUARD_PAGES // a block of its own for each page: whoever leaves a page is seen by
                         // AddressSanitizer
    static constexpr size_t kSlabFrames = 1;
#else
    static constexpr size_t kSlabFrames = 32;
#endif
    size_t boundBytes_;
    size_t pageSize_ = 0;
    size_t bound_ = 0;           // frames
    std::vector<Frame*> table_;  // by page number
    std::vector<Frame*> frames_; // all
    std::vector<Frame*> free_;   // hold no page, not pinned when they came here
    std::vector<std::unique_ptr<Frame[]>> frameSlabs_;
    std::vector<std::unique_ptr<uint8_t[]>> dataSlabs_;
    size_t hand_ = 0;
};

} // namespace jet
