// tests/jet/format/sample_file.h — a sample database opened with the format layer alone: its definitions and
// its rows.
#pragma once

#include "jet/format/data_page.h"
#include "jet/format/database_header.h"
#include "jet/format/row_codec.h"
#include "jet/format/table_def.h"
#include "jet/format/usage_map.h"
#include "jet/pages/page_file.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace format_test {

class SampleFile {
  public:
    explicit SampleFile(const std::filesystem::path& path);

    jet::PageFile& pages() { return *file_; }
    const jet::Layout& layout() const { return *header_.layout; }
    const jet::DatabaseHeader& header() const { return header_; }
    // The definition's bytes over all its pages.
    jet::Bytes image(jet::PageNo page);
    jet::TableDef definition(jet::PageNo page);
    // Definitions of all tables, the system's included, with their names.
    std::vector<jet::TableDef> tables();
    // Rows as a scan shows them; `stored` are the row's bytes, moved rows followed.
    void forEachRow(const jet::TableDef& def, const std::function<void(const jet::RowView& row)>& visit);

  private:
    std::unique_ptr<jet::PageFile> file_;
    std::unique_ptr<jet::ReadScope> scope_;
    jet::DatabaseHeader header_;
};

} // namespace format_test
