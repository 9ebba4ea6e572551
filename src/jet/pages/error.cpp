// jet/error.h: the place of an error, put into one Turkish line for people.
#include "jet/error.h"

namespace jet {

Error& Error::inFile(std::string_view path) {
    if (path_.empty()) {
        path_ = path;
        rebuild();
    }
    return *this;
}

Error& Error::inTable(std::string_view table) {
    if (table_.empty()) {
        table_ = table;
        rebuild();
    }
    return *this;
}

Error& Error::onPage(uint32_t page) {
    if (page_ == 0) {
        page_ = page;
        rebuild();
    }
    return *this;
}

void Error::rebuild() {
    std::string place;
    const auto add = [&place](std::string_view what, std::string_view name) {
        if (name.empty()) return;
        if (!place.empty()) place += ", ";
        place += what;
        place += ' ';
        place += name;
    };
    add("dosya", path_);
    add("tablo", table_);
    if (page_ != 0) add("sayfa", std::to_string(page_));
    full_ = place.empty() ? std::string() : message_ + " (" + place + ")";
}

} // namespace jet
