// jet/format/row_codec.h — one row's bytes: reading fields out of them, and making them from values.
// Long values (memo, OLE) are only their 12-byte headers here; long_value.h follows them.
#pragma once

#include "jet/format/layout.h"
#include "jet/format/table_def.h"
#include "jet/value.h"

#include <span>
#include <string>
#include <string_view>

namespace jet {

// A view of a row's bytes, cut into fields by the definition; the bytes must outlive it. attach() checks the
// whole structure once (counts, offsets in order and inside the row): after it no getter can leave the row.
class RowView {
  public:
    // Err::Corrupt with the reason when the bytes are no row of this table.
    // `codePage`: of the texts in Jet 3 files.
    void attach(const Layout& layout, const TableDef& def, std::span<const uint8_t> bytes,
                uint16_t codePage = 1254);

    size_t fieldCount() const { return def_->fields.size(); }
    const TableDef& def() const { return *def_; }
    std::span<const uint8_t> bytes() const { return bytes_; }
    bool isNull(size_t field) const; // Boolean is never null
    // Stored bytes of a field; empty for null, and for Boolean.
    std::span<const uint8_t> raw(size_t field) const;

    // Typed getters for the fast path. REQUIRES: field not null and of a fitting type.
    bool boolean(size_t field) const;
    int32_t integer(size_t field) const; // Byte, Integer, Long
    Currency currency(size_t field) const;
    double real(size_t field) const; // Single, Double, Date
    // Text as UTF-8, decoded into `scratch` (replaced); the view points into it or, never, into the row.
    std::string_view text(size_t field, std::string& scratch) const;
    // Any type but Memo and Ole, null included.
    Value value(size_t field) const;

  private:
    size_t variableStart(size_t index) const; // where variable field `index` begins; index <= variableCount_
    size_t jump(size_t index) const;          // Jet 3: what its 8-bit offset leaves out
    void attachJet3();
    void attachJet4();
    void checkOffsets(size_t limit) const;
    void checkFixedFields(size_t end) const;

    const Layout* layout_ = nullptr;
    const TableDef* def_ = nullptr;
    std::span<const uint8_t> bytes_;
    uint16_t codePage_ = 0;
    uint16_t columnCount_ = 0, variableCount_ = 0;
    uint8_t jumps_ = 0;          // Jet 3: entries of the jump table that count
    size_t maskAt_ = 0;          // null mask
    size_t variableTableAt_ = 0; // offset of variable field 0; the next ones lie before it
};

// What a field holds when a row is written: a ready value, or for Memo/Ole the 12-byte header that
// long_value.h made.
struct StoredField {
    bool null = true;
    bool boolean = false;
    Bytes bytes;
};

// Turns a value into the bytes of a field: conversion to its type (Err::Conversion), width
// (Err::FieldTooLong, the text names field and width), text compression. Not for Memo/Ole. Does not look at
// required/allowZeroLength.
void encodeField(const Layout& layout, const FieldDef& field, const Value& value, StoredField& out);

// The row's bytes, Jet 4 form. `fields` has one entry per def.fields. Err::RecordTooLarge past the layout's
// limit.
void encodeRow(const Layout& layout, const TableDef& def, std::span<const StoredField> fields, Bytes& out);

// Converts a value to the type of a field without storing it (for keys, comparisons, defaults). Null stays
// null.
Value convertTo(const FieldDef& field, const Value& value);

// Text forms. Decode understands plain UTF-16LE, the FF FE compressed form and, for Jet 3, the file's code
// page.
void decodeText(const Layout& layout, uint16_t codePage, std::span<const uint8_t> stored, std::string& utf8);
void encodeText(std::string_view utf8, bool compress, Bytes& stored); // Jet 4, as Access stores it
std::u16string utf16FromUtf8(std::string_view utf8);                  // WTF-8 in, lone surrogates out
void appendUtf8(std::u16string_view text, std::string& utf8);
size_t utf16Length(std::string_view utf8); // in UTF-16 units: what Jet counts as characters

} // namespace jet
