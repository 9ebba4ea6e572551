// jet/format/table_def.h, for repair: what is left of a damaged definition, cut down to its fields.
#include "jet/format/bytes.h"
#include "jet/format/layout.h"
#include "jet/format/table_def.h"

#include <algorithm>
#include <array>

namespace jet {

namespace {

struct Column {
    std::span<const uint8_t> descriptor;
    Bytes name; // UTF-16LE
};

// The names lie one behind the other: behind one with an impossible length nothing is known.
void readNames(const Layout& layout, std::span<const uint8_t> image, size_t at,
               std::vector<Column>& columns) {
    for (Column& column : columns) {
        if (at + layout.nameLengthSize > image.size()) return;
        const size_t length = get16(image, at);
        at += layout.nameLengthSize;
        if (length == 0 || length % 2 != 0 || length > 2 * kMaxName || at + length > image.size()) return;
        const auto name = image.subspan(at, length);
        column.name.assign(name.begin(), name.end());
        at += length;
    }
}

void makeUpName(size_t number, Bytes& name) {
    std::u16string text = u"Alan";
    for (const char digit : std::to_string(number))
        text += static_cast<char16_t>(digit);
    name.clear();
    appendUnits(text, name);
}

} // namespace

Bytes fieldsOnlyImage(const Layout& layout, std::span<const uint8_t> image) {
    if (image.size() < layout.tdefStart) return {};
    const uint64_t reals = get32(image, layout.tdefRealIndexes);
    const uint64_t descriptors = layout.tdefStart + reals * layout.realIndexCountEntry;
    if (descriptors >= image.size()) return {};
    const auto first = static_cast<size_t>(descriptors);
    const size_t stored = get16(image, layout.tdefColumns),
                 readable = std::min(stored, (image.size() - first) / layout.columnEntry);
    std::vector<Column> columns;
    for (size_t i = 0; i < readable; ++i)
        columns.push_back({image.subspan(first + i * layout.columnEntry, layout.columnEntry), {}});
    if (readable == stored) readNames(layout, image, first + stored * layout.columnEntry, columns);

    std::array<bool, kMaxFields> seen{};
    std::erase_if(columns, [&](const Column& column) {
        const uint16_t number = get16(column.descriptor, layout.column.number);
        return number >= kMaxFields || std::exchange(seen[number], true);
    });
    if (columns.empty()) return {};

    Bytes out(image.begin(), image.begin() + static_cast<ptrdiff_t>(layout.tdefStart));
    out[0] = PageType::kTableDef;
    const auto last = std::find(seen.rbegin(), seen.rend(), true);
    const auto highest = static_cast<uint16_t>(seen.rend() - last);
    put16(out, layout.tdefColumns, static_cast<uint16_t>(columns.size()));
    if (const uint16_t ever = get16(out, layout.tdefMaxColumns); ever < highest || ever > kMaxFields)
        put16(out, layout.tdefMaxColumns, highest);
    const uint16_t ever = get16(out, layout.tdefMaxColumns);
    put16(out, layout.tdefVariableColumns, std::min(get16(out, layout.tdefVariableColumns), ever));
    put32(out, layout.tdefLogicalIndexes, 0);
    put32(out, layout.tdefRealIndexes, 0);
    for (const Column& column : columns)
        out.insert(out.end(), column.descriptor.begin(), column.descriptor.end());
    for (Column& column : columns) {
        if (column.name.empty())
            makeUpName(get16(column.descriptor, layout.column.number) + size_t{1}, column.name);
        const size_t at = out.size();
        out.resize(at + layout.nameLengthSize);
        put16(out, at, static_cast<uint16_t>(column.name.size()));
        out.insert(out.end(), column.name.begin(), column.name.end());
    }
    out.insert(out.end(), {0xFF, 0xFF}); // no maps of long values
    put32(out, layout.tdefLength, static_cast<uint32_t>(out.size()));
    return out;
}

} // namespace jet
