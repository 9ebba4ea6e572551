// core/row_writer.cpp — see row_writer.h.
#include "core/row_writer.h"

#include "jet/error.h"

#include <cassert>

namespace orvan {

RowWriter::RowWriter(jet::Table& table, const std::vector<std::string>& fields) : table_(table) {
    const jet::TableDef& def = table.def();
    row_.resize(def.fields.size());
    given_ = std::make_unique<bool[]>(def.fields.size());
    for (const std::string& field : fields) {
        const auto place = def.findField(field);
        if (!place) {
            jet::Error error(jet::Err::NoSuchItem, "Alan bulunamadı: " + field);
            throw error.inTable(def.name);
        }
        places_.push_back(*place);
        given_[*place] = true;
    }
}

jet::RowId RowWriter::add(const std::vector<jet::Value>& values) {
    assert(values.size() == places_.size());
    for (size_t i = 0; i < values.size(); ++i)
        row_[places_[i]] = values[i];
    return table_.insert(row_, {given_.get(), row_.size()});
}

} // namespace orvan
