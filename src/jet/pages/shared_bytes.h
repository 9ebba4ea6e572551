// jet/pages/shared_bytes.h — the bytes of a file in memory, cheap to copy: copies share what neither of them
// has changed. A copy may be used in another thread; one object may not.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace jet {

class SharedBytes {
  public:
    SharedBytes() = default;
    explicit SharedBytes(std::span<const uint8_t> bytes) { write(0, bytes); }

    size_t size() const { return size_; }
    void resize(size_t size);                                    // new bytes are zero
    size_t read(uint64_t offset, std::span<uint8_t> into) const; // short at the end
    void write(uint64_t offset, std::span<const uint8_t> from);  // grows as needed
    std::vector<uint8_t> all() const;

  private:
    static constexpr size_t kChunk = 16 << 10;
    using Chunk = std::array<uint8_t, kChunk>;
    Chunk& own(size_t chunk); // nobody else has it afterwards

    std::vector<std::shared_ptr<Chunk>> chunks_; // none = zeros; past size_ all is zero
    size_t size_ = 0;
};

} // namespace jet
