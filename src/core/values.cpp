// core/values.cpp — see values.h.
#include "core/values.h"

#include "core/turkish_text.h"

namespace orvan {

QString toText(const jet::Value& value) {
    if (const std::string* text = value.get<std::string>()) return fromUtf8(*text);
    return value.isNull() ? QString() : fromUtf8(value.toText());
}

QString trimmedText(const jet::Value& value) { return trimBlanks(toText(value)); }

jet::Value textValue(const QString& text) { return jet::Value(utf8(text)); }

std::string utf8(const QString& text) { return text.toStdString(); }

QString fromUtf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

std::filesystem::path filePath(const QString& path) { return std::filesystem::path(path.toStdU16String()); }

QString errorText(const std::exception& error) { return QString::fromUtf8(error.what()); }

Parameters::Parameters(std::initializer_list<Item> items) {
    values_.reserve(items.size());
    for (const Item& item : items)
        values_.push_back(item.value);
}

} // namespace orvan
