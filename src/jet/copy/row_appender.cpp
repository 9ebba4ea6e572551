// jet/copy/row_appender.h. A row's long values are written before the row; when it is refused after all, they
// go again.
#include "jet/copy/row_appender.h"

#include "jet/format/data_page.h"
#include "jet/format/long_value.h"

namespace jet {

RowAppender::RowAppender(NewFile& file, const TableDef& def)
    : file_(file), def_(def), stored_(def.fields.size()) {
    for (size_t i = 0; i < def.fields.size(); ++i)
        if (def.fields[i].isLongValue()) longFields_.push_back(i);
}

RowId RowAppender::append(std::span<const Value> values) {
    if (values.size() != stored_.size())
        throw Error(Err::InvalidArgument, "Verilen değerlerin sayısı tablonun alan sayısına uymuyor.");
    for (size_t i = 0; i < values.size(); ++i)
        encode(i, values[i]);
    return place([&](size_t field) {
        const Value value = convertTo(def_.fields[field], values[field]);
        if (const auto* text = value.get<std::string>()) {
            encodeText(*text, def_.fields[field].compressed, text_);
            writeLongValueOf(field, text_);
        } else {
            writeLongValueOf(field, *value.get<Bytes>());
        }
    });
}

RowId RowAppender::append(const RowView& row, PageFile& from) {
    for (size_t i = 0; i < stored_.size(); ++i)
        keep(i, row);
    return place([&](size_t field) { writeLongValueOf(field, readLongValue(from, kJet4, row.raw(field))); });
}

void RowAppender::keep(size_t field, const RowView& row) {
    StoredField& stored = stored_[field];
    stored.null = row.isNull(field);
    if (def_.fields[field].type == Type::Boolean) {
        stored.boolean = row.boolean(field);
        return;
    }
    const auto raw = row.raw(field);
    stored.bytes.assign(raw.begin(), raw.end());
    if (def_.fields[field].autoNumber && !stored.null) noteAutoNumber(row.integer(field));
}

void RowAppender::encode(size_t field, const Value& value) {
    const FieldDef& def = def_.fields[field];
    if (def.isLongValue())
        stored_[field].null = value.isNull();
    else
        encodeField(kJet4, def, value, stored_[field]);
    if (def.autoNumber && !value.isNull()) noteAutoNumber(value.toInt());
}

void RowAppender::noteAutoNumber(int64_t number) {
    if (number > static_cast<int64_t>(highest_) && number <= INT32_MAX)
        highest_ = static_cast<uint32_t>(number);
}

void RowAppender::writeLongValueOf(size_t field, std::span<const uint8_t> stored) {
    stored_[field].bytes = writeLongValue(file_.db().allocator(), def_.fields[field], stored);
}

template <class F> RowId RowAppender::place(F longValues) {
    size_t written = 0;
    try {
        for (const size_t field : longFields_) {
            if (!stored_[field].null) longValues(field);
            ++written;
        }
        encodeRow(kJet4, def_, stored_, bytes_);
    } catch (...) {
        for (size_t i = 0; i < written; ++i)
            if (const size_t field = longFields_[i]; !stored_[field].null)
                freeLongValue(file_.db().allocator(), def_.fields[field], stored_[field].bytes);
        throw;
    }
    return put();
}

RowId RowAppender::put() {
    file_.relieve();
    PageFile& file = file_.db().pages();
    if (page_ != 0) {
        PageEdit page = file.edit(page_);
        if (data_page::fits(kJet4, page.bytes(), bytes_.size())) {
            ++rows_;
            return {page_, data_page::insert(kJet4, page.bytes(), bytes_)};
        }
    }
    PageAllocator& allocator = file_.db().allocator();
    {
        PageEdit page = allocator.allocate();
        data_page::initialise(kJet4, page.bytes(), def_.page);
        page_ = page.number();
    }
    UsageMap(file, kJet4, RowId::fromPacked(def_.ownedMapPointer)).add(page_, allocator);
    ++rows_;
    PageEdit page = file.edit(page_);
    return {page_, data_page::insert(kJet4, page.bytes(), bytes_)};
}

void RowAppender::finish() {
    if (page_ != 0)
        UsageMap(file_.db().pages(), kJet4, RowId::fromPacked(def_.freeMapPointer))
            .add(page_, file_.db().allocator());
}

} // namespace jet
