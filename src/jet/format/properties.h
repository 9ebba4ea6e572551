// jet/format/properties.h — the LvProp blob ("MR2") of a catalog row: properties of a table and of its
// fields. Unknown properties are kept byte for byte when a blob is changed.
#pragma once

#include "jet/value.h"

#include <map>
#include <span>
#include <string>
#include <vector>

namespace jet {

struct Property {
    std::string name;
    uint8_t flag = 0;
    uint8_t type = 0; // Jet type byte
    Bytes value;      // as stored
};

struct PropertyBlock {
    uint16_t kind = 0; // 0 table, 1 field
    std::string owner; // name of the table or field
    std::vector<Property> properties;
};

class PropertySet {
  public:
    // Err::Corrupt; an empty blob is an empty set. `codePage`: of the texts in Jet 3 blobs.
    static PropertySet parse(std::span<const uint8_t> blob, uint16_t codePage = 1252);
    Bytes serialize() const; // empty when there is nothing
    bool empty() const { return blocks_.empty(); }

    // `field` empty = the table itself.
    bool boolean(std::string_view field, std::string_view name, bool whenAbsent) const;
    std::string text(std::string_view field, std::string_view name) const; // empty when absent
    void setBoolean(std::string_view field, std::string_view name, bool value);
    void setText(std::string_view field, std::string_view name, std::string_view value); // empty removes it
    void renameField(std::string_view from, std::string_view to);
    void removeField(std::string_view field);

  private:
    const Property* find(std::string_view field, std::string_view name) const;
    PropertyBlock& block(std::string_view field); // made when it is not there
    void set(std::string_view field, std::string_view name, uint8_t type, Bytes value);
    void remove(std::string_view field, std::string_view name);

    std::vector<PropertyBlock> blocks_;
    std::vector<std::string> names_; // the blob's list of property names, in its order
};

} // namespace jet
