// jet/pages/shared_bytes.h
#include "jet/pages/shared_bytes.h"

#include <algorithm>
#include <atomic>
#include <cstring>

namespace jet {

SharedBytes::Chunk& SharedBytes::own(size_t chunk) {
    std::shared_ptr<Chunk>& held = chunks_[chunk];
    if (!held) {
        held = std::make_shared<Chunk>();
        held->fill(0);
    } else if (held.use_count() > 1) {
        held = std::make_shared<Chunk>(*held);
    } else {
        std::atomic_thread_fence(std::memory_order_acquire); // who had it before has read it
    }
    return *held;
}

void SharedBytes::resize(size_t size) {
    if (size < size_ && size % kChunk != 0) {
        Chunk& last = own(size / kChunk);
        std::memset(last.data() + size % kChunk, 0, kChunk - size % kChunk);
    }
    chunks_.resize((size + kChunk - 1) / kChunk);
    size_ = size;
}

size_t SharedBytes::read(uint64_t offset, std::span<uint8_t> into) const {
    if (offset >= size_) return 0;
    const size_t wanted = std::min<uint64_t>(into.size(), size_ - offset);
    for (size_t done = 0; done < wanted;) {
        const size_t at = static_cast<size_t>(offset) + done, inside = at % kChunk;
        const size_t n = std::min(wanted - done, kChunk - inside);
        if (const auto& chunk = chunks_[at / kChunk])
            std::memcpy(into.data() + done, chunk->data() + inside, n);
        else
            std::memset(into.data() + done, 0, n);
        done += n;
    }
    return wanted;
}

void SharedBytes::write(uint64_t offset, std::span<const uint8_t> from) {
    if (offset + from.size() > size_) resize(static_cast<size_t>(offset) + from.size());
    for (size_t done = 0; done < from.size();) {
        const size_t at = static_cast<size_t>(offset) + done, inside = at % kChunk;
        const size_t n = std::min(from.size() - done, kChunk - inside);
        std::memcpy(own(at / kChunk).data() + inside, from.data() + done, n);
        done += n;
    }
}

std::vector<uint8_t> SharedBytes::all() const {
    std::vector<uint8_t> bytes(size_);
    read(0, bytes);
    return bytes;
}

} // namespace jet
