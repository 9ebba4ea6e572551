// tests/jet/index/byte_order.h — orders byte strings, alone and as keys of entries. std::less on vectors of
// bytes makes GCC 12 warn of a memcmp that cannot happen.
#pragma once

#include "jet/value.h"

#include <string_view>
#include <utility>

namespace orvan_test {

struct ByteOrder {
    using Entry = std::pair<jet::Bytes, jet::RowId>;
    static std::string_view text(const jet::Bytes& bytes) {
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }
    bool operator()(const jet::Bytes& a, const jet::Bytes& b) const { return text(a) < text(b); }
    bool operator()(const Entry& a, const Entry& b) const {
        if (const int order = text(a.first).compare(text(b.first)); order != 0) return order < 0;
        return a.second < b.second;
    }
};

} // namespace orvan_test
