// tools/jetdb/text_output.h — writes rows as CSV or JSON, buffered.
// CSV: texts in double quotes (a quote doubled), null empty, yes/no 1 or 0, dates ISO, binary as hex. JSON:
// one array of objects, null as null, binary as hex text.
#pragma once

#include "jet/value.h"

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace jetdb {

enum class Form { Csv, Json };

class RowWriter {
  public:
    RowWriter(std::FILE* out, Form form, std::vector<std::string> columns);
    ~RowWriter(); // closes the JSON array, flushes

    void beginRow();
    void field(const jet::Value& value);
    void textField(std::string_view utf8);
    void endRow();

    RowWriter(const RowWriter&) = delete;
    RowWriter& operator=(const RowWriter&) = delete;

  private:
    void separate(); // what stands before a field
    void bare(std::string_view text);
    void flush();

    std::FILE* out_;
    Form form_;
    std::vector<std::string> columns_;
    std::string buffer_;
    size_t column_ = 0, rows_ = 0;
};

// Shortest text that reads back as the same number; a point as decimal mark.
std::string numberText(double number);
std::string numberText(float number);
// "2008-09-15", with " 13:30:00" behind it when there is a time of day.
std::string dateText(jet::Date date);

} // namespace jetdb
