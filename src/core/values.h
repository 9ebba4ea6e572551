// core/values.h — QString and QDate to and from the engine's values, in one place.
#pragma once

#include "jet/database.h"
#include "jet/error.h"
#include "jet/sql/session.h"

#include <initializer_list>
#include <QString>
#include <vector>

namespace orvan {

QString toText(const jet::Value& value);      // null = empty; numbers in their invariant form
QString trimmedText(const jet::Value& value); // without blanks at both ends
jet::Value textValue(const QString& text);    // the empty text stays an empty text
std::string utf8(const QString& text);
QString fromUtf8(std::string_view text);
std::filesystem::path filePath(const QString& path);
QString errorText(const std::exception& error); // what() as QString

// Parameters of a statement, from texts and numbers: Parameters{code, version}.
class Parameters {
  public:
    class Item {
      public:
        Item(const QString& text) : value(textValue(text)) {}
        Item(const char* text) : value(text) {}
        Item(int number) : value(static_cast<int32_t>(number)) {}
        Item(jet::Value given) : value(std::move(given)) {}
        jet::Value value;
    };
    Parameters(std::initializer_list<Item> items);
    operator std::span<const jet::Value>() const { return values_; }

  private:
    std::vector<jet::Value> values_;
};

} // namespace orvan
