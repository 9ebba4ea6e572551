// jet/format/data_page.h — the slotted page that holds rows, long values and usage maps alike (page type 1).
// Pure functions on a page's bytes; owns no file.
#pragma once

#include "jet/format/layout.h"
#include "jet/value.h"

#include <optional>
#include <span>
#include <string>

namespace jet {

struct Slot {
    size_t start = 0, length = 0;
    bool deleted = false; // emptied or marked dead
    bool hidden = false;  // flag 0x8000: target of an overflow pointer, not shown in scans
    bool pointer = false; // flag 0x4000: the first 4 bytes name the row that holds the data
};

// Checked view of a data page. Every function throws Err::Corrupt when the slot table does not fit the page.
namespace data_page {
void initialise(const Layout&, std::span<uint8_t> page,
                uint32_t owner); // empty data page owned by a definition page
uint32_t owner(const Layout&, std::span<const uint8_t> page);
uint16_t slotCount(const Layout&, std::span<const uint8_t> page);
Slot slot(const Layout&, std::span<const uint8_t> page, uint16_t number);
size_t freeBytes(const Layout&, std::span<const uint8_t> page); // as the page's own field says
// Room for a new row of `length` bytes (a new slot included, or a dead one that may be used again)?
bool fits(const Layout&, std::span<const uint8_t> page, size_t length);
// Adds a row, returns its slot. REQUIRES: fits(). `hidden` marks the target of an overflow pointer.
uint8_t insert(const Layout&, std::span<uint8_t> page, std::span<const uint8_t> row, bool hidden = false);
// Gives the slot new bytes if they fit on the page (other rows are moved, slots keep their numbers); else
// false and nothing changed. Clears the pointer flag, keeps `hidden`.
bool replace(const Layout&, std::span<uint8_t> page, uint8_t slot, std::span<const uint8_t> row);
// Turns the slot into a pointer to `target`; always fits (a row is at least 4 bytes or is padded when
// inserted).
void makePointer(const Layout&, std::span<uint8_t> page, uint8_t slot, RowId target);
void erase(const Layout&, std::span<uint8_t> page, uint8_t slot);
bool empty(const Layout&, std::span<const uint8_t> page); // no living slot
RowId pointerTarget(const Layout&, std::span<const uint8_t> page, uint8_t slot);
// Internal contradictions (overlaps, free-space field, flags), empty when sound: for the checker.
std::string contradiction(const Layout&, std::span<const uint8_t> page);
} // namespace data_page

} // namespace jet
