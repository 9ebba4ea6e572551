// jet/format/properties.h: mark, then chunks (u32 length with itself, u16 kind). Kind 80 lists the names; the
// others are blocks: u32 length of their head, name of the owner, then properties that point into the list of
// names.
#include "jet/format/properties.h"

#include "jet/error.h"
#include "jet/format/bytes.h"
#include "jet/format/row_codec.h"

#include <algorithm>
#include <array>

namespace jet {

namespace {

constexpr std::array<uint8_t, 4> kMark4 = {'M', 'R', '2', 0}, kMark3 = {'K', 'K', 'D', 0};
constexpr uint16_t kNames = 0x80, kTable = 0, kField = 1;
constexpr size_t kChunkHead = 6, kBlockHead = 6, kEntryHead = 8;
constexpr size_t kMostCopied = 16; // names of properties stand in the blob once, in memory for each of them
constexpr uint8_t kDefinition = 1; // flag of the properties that belong to the definition itself
constexpr uint8_t kBooleanType = 0x01, kTextType = 0x0A, kMemoType = 0x0C;

[[noreturn]] void corrupt() { throw Error(Err::Corrupt, "Tablo özelliklerinin kaydı (LvProp) bozuk."); }

bool isText(uint8_t type) { return type == kTextType || type == kMemoType; }

std::span<const uint8_t> part(std::span<const uint8_t> from, size_t at, size_t length) {
    if (at > from.size() || length > from.size() - at) corrupt();
    return from.subspan(at, length);
}

Bytes wideFromUtf8(std::string_view utf8) {
    Bytes bytes;
    appendUnits(utf16FromUtf8(utf8), bytes);
    return bytes;
}

// Reads one blob; Jet 3 texts become UTF-16 so that the rest need not know of them.
class Parser {
  public:
    Parser(const Layout& layout, uint16_t codePage, std::span<const uint8_t> blob)
        : layout_(layout), codePage_(codePage), blob_(blob) {}

    void run(std::vector<std::string>& names, std::vector<PropertyBlock>& blocks) {
        for (size_t at = kMark4.size(); at < blob_.size();) {
            const auto head = part(blob_, at, kChunkHead);
            const size_t length = get32(head, 0);
            if (length < kChunkHead) corrupt();
            const auto body = part(blob_, at, length).subspan(kChunkHead);
            if (const uint16_t kind = get16(head, 4); kind == kNames)
                readNames(body, names);
            else
                blocks.push_back(readBlock(kind, body, names));
            at += length;
        }
    }

  private:
    std::string text(std::span<const uint8_t> stored) const {
        std::string utf8;
        decodeText(layout_, codePage_, stored, utf8);
        return utf8;
    }

    void readNames(std::span<const uint8_t> body, std::vector<std::string>& names) const {
        for (size_t at = 0; at < body.size();) {
            const size_t length = get16(part(body, at, 2), 0);
            names.push_back(text(part(body, at + 2, length)));
            at += 2 + length;
        }
    }

    PropertyBlock readBlock(uint16_t kind, std::span<const uint8_t> body,
                            const std::vector<std::string>& names) {
        PropertyBlock block{.kind = kind, .owner = {}, .properties = {}};
        const auto head = part(body, 0, kBlockHead);
        const size_t headLength = get32(head, 0);
        block.owner = text(part(body, kBlockHead, get16(head, 4)));
        if (headLength < kBlockHead + get16(head, 4)) corrupt();
        for (size_t at = headLength; at < body.size();) {
            const auto entry = part(body, at, kEntryHead);
            const size_t length = get16(entry, 0), name = get16(entry, 4), valueLength = get16(entry, 6);
            if (length < kEntryHead + valueLength || name >= names.size()) corrupt();
            copied_ += names[name].size();
            if (copied_ > kMostCopied * blob_.size()) corrupt();
            const auto value = part(body, at + kEntryHead, valueLength);
            Property property{.name = names[name], .flag = entry[2], .type = entry[3], .value = {}};
            if (layout_.version == 3 && isText(property.type))
                property.value = wideFromUtf8(text(value));
            else
                property.value.assign(value.begin(), value.end());
            block.properties.push_back(std::move(property));
            at += length;
        }
        return block;
    }

    const Layout& layout_;
    uint16_t codePage_;
    std::span<const uint8_t> blob_;
    size_t copied_ = 0; // bytes
};

void appendName(const std::string& name, Bytes& out) {
    const Bytes wide = wideFromUtf8(name);
    const size_t at = out.size();
    out.resize(at + 2);
    put16(out, at, static_cast<uint16_t>(wide.size()));
    out.insert(out.end(), wide.begin(), wide.end());
}

size_t beginChunk(uint16_t kind, Bytes& out) {
    const size_t at = out.size();
    out.resize(at + kChunkHead);
    put16(out, at + 4, kind);
    return at;
}

void endChunk(size_t at, Bytes& out) { put32(out, at, static_cast<uint32_t>(out.size() - at)); }

void appendBlock(const PropertyBlock& block, const std::vector<std::string>& names, Bytes& out) {
    const size_t chunk = beginChunk(block.kind, out);
    const size_t head = out.size();
    out.resize(head + 4);
    appendName(block.owner, out);
    put32(out, head, static_cast<uint32_t>(out.size() - head));
    for (const Property& property : block.properties) {
        const auto name = std::find(names.begin(), names.end(), property.name);
        const size_t at = out.size();
        out.resize(at + kEntryHead);
        put16(out, at, static_cast<uint16_t>(kEntryHead + property.value.size()));
        out[at + 2] = property.flag;
        out[at + 3] = property.type;
        put16(out, at + 4, static_cast<uint16_t>(name - names.begin()));
        put16(out, at + 6, static_cast<uint16_t>(property.value.size()));
        out.insert(out.end(), property.value.begin(), property.value.end());
    }
    endChunk(chunk, out);
}

bool isDefinitionProperty(std::string_view name) {
    return name == "Required" || name == "AllowZeroLength" || name == "DefaultValue" ||
           name == "ValidationRule" || name == "ValidationText";
}

bool isExpression(std::string_view name) { return name == "DefaultValue" || name == "ValidationRule"; }

} // namespace

PropertySet PropertySet::parse(std::span<const uint8_t> blob, uint16_t codePage) {
    PropertySet set;
    if (blob.empty()) return set;
    const auto mark = part(blob, 0, kMark4.size());
    const bool jet3 = std::equal(mark.begin(), mark.end(), kMark3.begin());
    if (!jet3 && !std::equal(mark.begin(), mark.end(), kMark4.begin())) corrupt();
    Parser(jet3 ? kJet3 : kJet4, codePage, blob).run(set.names_, set.blocks_);
    return set;
}

Bytes PropertySet::serialize() const {
    if (blocks_.empty()) return {};
    std::vector<std::string> names = names_;
    for (const PropertyBlock& block : blocks_)
        for (const Property& property : block.properties)
            if (std::find(names.begin(), names.end(), property.name) == names.end())
                names.push_back(property.name);
    Bytes out(kMark4.begin(), kMark4.end());
    const size_t chunk = beginChunk(kNames, out);
    for (const std::string& name : names)
        appendName(name, out);
    endChunk(chunk, out);
    for (const PropertyBlock& block : blocks_)
        appendBlock(block, names, out);
    return out;
}

const Property* PropertySet::find(std::string_view field, std::string_view name) const {
    for (const PropertyBlock& block : blocks_) {
        if (block.kind != (field.empty() ? kTable : kField) ||
            (!field.empty() && !sameName(block.owner, field)))
            continue;
        for (const Property& property : block.properties)
            if (property.name == name) return &property;
    }
    return nullptr;
}

bool PropertySet::boolean(std::string_view field, std::string_view name, bool whenAbsent) const {
    const Property* property = find(field, name);
    if (!property || property->type != kBooleanType || property->value.empty()) return whenAbsent;
    return property->value[0] != 0;
}

std::string PropertySet::text(std::string_view field, std::string_view name) const {
    const Property* property = find(field, name);
    std::string utf8;
    if (property && isText(property->type)) decodeText(kJet4, 0, property->value, utf8);
    return utf8;
}

PropertyBlock& PropertySet::block(std::string_view field) {
    const uint16_t kind = field.empty() ? kTable : kField;
    for (PropertyBlock& block : blocks_)
        if (block.kind == kind && (field.empty() || sameName(block.owner, field))) return block;
    return blocks_.emplace_back(PropertyBlock{.kind = kind, .owner = std::string(field), .properties = {}});
}

void PropertySet::set(std::string_view field, std::string_view name, uint8_t type, Bytes value) {
    if (value.size() > UINT16_MAX - kEntryHead)
        throw Error(Err::InvalidArgument, "'" + std::string(name) + "' özelliğinin değeri çok uzun.");
    PropertyBlock& at = block(field);
    for (Property& property : at.properties) {
        if (property.name != name) continue;
        if (!(isText(type) && isText(property.type))) property.type = type;
        property.value = std::move(value);
        return;
    }
    const uint8_t flag = isDefinitionProperty(name) ? kDefinition : 0;
    at.properties.push_back(
        {.name = std::string(name), .flag = flag, .type = type, .value = std::move(value)});
}

void PropertySet::remove(std::string_view field, std::string_view name) {
    if (!find(field, name)) return;
    PropertyBlock& at = block(field);
    std::erase_if(at.properties, [name](const Property& property) { return property.name == name; });
    std::erase_if(blocks_,
                  [](const PropertyBlock& each) { return each.kind == kField && each.properties.empty(); });
}

void PropertySet::setBoolean(std::string_view field, std::string_view name, bool value) {
    set(field, name, kBooleanType, Bytes{static_cast<uint8_t>(value)});
}

void PropertySet::setText(std::string_view field, std::string_view name, std::string_view value) {
    if (value.empty())
        remove(field, name);
    else
        set(field, name, isExpression(name) ? kMemoType : kTextType, wideFromUtf8(value));
}

void PropertySet::renameField(std::string_view from, std::string_view to) {
    for (PropertyBlock& each : blocks_)
        if (each.kind == kField && sameName(each.owner, from)) each.owner = to;
}

void PropertySet::removeField(std::string_view field) {
    std::erase_if(blocks_, [field](const PropertyBlock& each) {
        return each.kind == kField && sameName(each.owner, field);
    });
}

} // namespace jet
