// fuzz/mutate_pages.h — the mutator of the file targets (libFuzzer finds it by its names): it damages the
// numbers that the engine goes by — page types, owners, counts, offsets, links, masks, map pointers,
// long-value headers — and leaves the rest of a file valid, so that damage is met deep inside. Sums of a
// journal are made right again, pages of an encoded file are decoded and encoded.
#pragma once

#include "hostile_file.h"

#include "jet/format/layout.h"

#include <random>

namespace fuzz {

class PageMutator {
  public:
    // `file` is changed in place and never gets longer than `room`.
    PageMutator(Bytes& file, size_t room, uint32_t seed);
    void mutate(); // one to four changes

  private:
    size_t below(size_t bound) { return bound == 0 ? 0 : random_() % bound; }
    bool oneIn(size_t n) { return below(n) == 0; }
    size_t pages() const { return file_.size() / layout_.pageSize; }
    uint16_t get16(size_t at) const;
    uint32_t get32(size_t at) const;

    void step();
    void pageNumber(size_t at); // u32
    void rowPointer(size_t at); // u32: row, then page
    void number32(size_t at);
    void number16(size_t at);
    void byte(size_t at);
    void nearby(size_t at, size_t length); // libFuzzer's own mutations on a few bytes

    void wholePages();
    void headerPage();
    void dataPage(size_t page);
    void row(size_t page, size_t start, size_t end);
    void usageMap(size_t start, size_t end);
    void definition(size_t page);
    void index(size_t page);

    Bytes& file_;
    size_t room_;
    std::minstd_rand random_;
    const jet::Layout& layout_;
};

// Makes magic and sums of a journal right, as far as its counts fit its length.
void sealJournal(Bytes& journal);

} // namespace fuzz
