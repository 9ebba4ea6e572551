// jet/copy/salvage_pages.h — what each page of a damaged file is, told from the pages themselves: neither
// maps nor catalog are asked. Small damage to a page's head is healed on the way from the file, so that
// everybody above sees the page as it was.
#pragma once

#include "jet/format/layout.h"
#include "jet/pages/page_file.h"

#include <functional>
#include <memory>
#include <vector>

namespace jet {

enum class PageKind : uint8_t { Empty, Data, LongValues, Maps, Definition, Index, Bitmap, Unknown };

struct PageSurvey {
    std::vector<PageKind> kinds; // per page; page 0 is Unknown
    std::vector<PageNo> owners;  // per page; Data: the definition page whose mark it carries, else 0
    std::vector<bool> damaged;   // per page: its own bytes contradict each other
    size_t longValuePages = 0;

    PageKind kind(PageNo page) const { return page < kinds.size() ? kinds[page] : PageKind::Unknown; }
};

// How many of the pages (a sample of a large file) look like pages of a Jet 4 file when decoded with this
// key.
size_t countPlausiblePages(PageFile& file, uint32_t encodingKey);
// Definitions among the same sample: they tell Jet 4 from the older format.
size_t countMarkedDefinitions(PageFile& file, uint32_t encodingKey);

// Goes over all pages once and leaves the file decoding and healing them. REQUIRES: inside a read.
PageSurvey surveyPages(PageFile& file, uint32_t encodingKey, const std::function<void()>& step);

} // namespace jet
