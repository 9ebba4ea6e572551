// jet/pages/spill_file.h
#include "jet/pages/spill_file.h"

#include "jet/error.h"

namespace jet {

uint32_t SpillFile::put(uint32_t slot, std::span<const uint8_t> page) {
    if (!file_) {
        io_.remove(path_); // left by a process that died between the two steps below
        file_ = io_.open(path_, OpenMode::CreateNew);
        io_.remove(path_);
    }
    const uint32_t place = slot == kNone ? slots_ : slot;
    file_->write(uint64_t{place} * page.size(), page);
    if (slot == kNone) ++slots_;
    return place;
}

void SpillFile::get(uint32_t slot, std::span<uint8_t> page) {
    if (file_->read(uint64_t{slot} * page.size(), page) < page.size())
        throw Error(Err::DiskIO, "Geçici dosya okunamadı.");
}

void SpillFile::clear() noexcept {
    slots_ = 0;
    file_.reset(); // a new one is made when it is needed again
}

} // namespace jet
