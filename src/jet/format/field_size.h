// jet/format/field_size.h — how many bytes a value of each type takes in a row.
#pragma once

#include "jet/format/table_def.h"

namespace jet {

// Bytes of the types that always take the same room; 0 for the others (and for Boolean, which is a bit of the
// mask).
constexpr size_t storedSize(Type type) {
    switch (type) {
    case Type::Byte: return 1;
    case Type::Integer: return 2;
    case Type::Long:
    case Type::Single: return 4;
    case Type::Currency:
    case Type::Double:
    case Type::Date: return 8;
    case Type::Guid: return 16;
    case Type::Numeric: return 17;
    default: return 0;
    }
}

constexpr bool knownType(Type type) {
    const auto number = static_cast<uint8_t>(type);
    return (number >= 0x01 && number <= 0x0C) || number == 0x0F || number == 0x10;
}

} // namespace jet
