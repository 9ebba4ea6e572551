#include "tools/jetdb/text_output.h"

#include <charconv>
#include <cmath>
#include <utility>

namespace jetdb {
namespace {

constexpr size_t kFlushAt = 1u << 16;

template <class Number> std::string shortest(Number number) {
    char digits[64];
    const auto end = std::to_chars(digits, digits + sizeof digits, number);
    return {digits, end.ptr};
}

void appendCsvText(std::string_view text, std::string& out) {
    out += '"';
    for (const char c : text) {
        if (c == '"') out += '"';
        out += c;
    }
    out += '"';
}

void appendJsonText(std::string_view text, std::string& out) {
    constexpr char hex[] = "0123456789abcdef";
    out += '"';
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (c == '\n') {
            out += "\\n";
        } else if (code < 0x20) {
            out += "\\u00";
            out += hex[code >> 4];
            out += hex[code & 15];
        } else {
            out += c;
        }
    }
    out += '"';
}

std::string hexText(const jet::Bytes& bytes) {
    constexpr char hex[] = "0123456789ABCDEF";
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const uint8_t byte : bytes) {
        text += hex[byte >> 4];
        text += hex[byte & 15];
    }
    return text;
}

} // namespace

std::string numberText(double number) { return shortest(number); }
std::string numberText(float number) { return shortest(number); }

std::string dateText(jet::Date date) {
    std::string iso = date.toIso();
    if (iso.ends_with(" 00:00:00")) iso.resize(iso.size() - 9);
    return iso;
}

RowWriter::RowWriter(std::FILE* out, Form form, std::vector<std::string> columns)
    : out_(out), form_(form), columns_(std::move(columns)) {
    if (form_ == Form::Json) {
        buffer_ = "[";
        return;
    }
    for (size_t i = 0; i < columns_.size(); ++i) {
        if (i > 0) buffer_ += ',';
        const std::string& name = columns_[i];
        if (name.find_first_of(",\"\r\n") != std::string::npos)
            appendCsvText(name, buffer_);
        else
            buffer_ += name;
    }
    buffer_ += '\n';
}

RowWriter::~RowWriter() {
    if (form_ == Form::Json) buffer_ += rows_ > 0 ? "\n]\n" : "]\n";
    flush();
}

void RowWriter::flush() {
    std::fwrite(buffer_.data(), 1, buffer_.size(), out_);
    buffer_.clear();
}

void RowWriter::beginRow() {
    column_ = 0;
    if (form_ == Form::Json) buffer_ += rows_ > 0 ? ",\n{" : "\n{";
}

void RowWriter::endRow() {
    buffer_ += form_ == Form::Json ? "}" : "\n";
    ++rows_;
    if (buffer_.size() > kFlushAt) flush();
}

void RowWriter::separate() {
    if (column_ > 0) buffer_ += ',';
    if (form_ == Form::Json) {
        appendJsonText(columns_[column_], buffer_);
        buffer_ += ':';
    }
    ++column_;
}

void RowWriter::bare(std::string_view text) {
    separate();
    buffer_ += text;
}

void RowWriter::textField(std::string_view utf8) {
    separate();
    if (form_ == Form::Json)
        appendJsonText(utf8, buffer_);
    else
        appendCsvText(utf8, buffer_);
}

void RowWriter::field(const jet::Value& value) {
    if (value.isNull()) return bare(form_ == Form::Json ? "null" : "");
    if (const bool* flag = value.get<bool>()) {
        if (form_ == Form::Json) return bare(*flag ? "true" : "false");
        return bare(*flag ? "1" : "0");
    }
    if (const int32_t* number = value.get<int32_t>()) return bare(std::to_string(*number));
    if (const jet::Currency* money = value.get<jet::Currency>()) return bare(money->toText());
    if (const jet::Numeric* number = value.get<jet::Numeric>()) return bare(number->toText());
    if (const float* number = value.get<float>(); number && std::isfinite(*number))
        return bare(numberText(*number));
    if (const double* number = value.get<double>(); number && std::isfinite(*number))
        return bare(numberText(*number));
    if (const jet::Date* date = value.get<jet::Date>()) return textField(dateText(*date));
    if (const jet::Bytes* bytes = value.get<jet::Bytes>()) return textField(hexText(*bytes));
    if (const std::string* text = value.get<std::string>()) return textField(*text);
    textField(value.toText());
}

} // namespace jetdb
