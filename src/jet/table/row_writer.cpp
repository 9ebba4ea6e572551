// table/row_writer.cpp — every row goes the same way: encode and check all fields, make keys and ask the
// indexes, and only then write: long values, row, index entries, counts. So a refused row has touched no
// page.
#include "jet/table/row_writer.h"

#include "jet/format/bytes.h"
#include "jet/format/long_value.h"

#include <algorithm>

namespace jet {
namespace {

const Value kFalse(false);

bool isEmptyText(const FieldDef& field, const Value& value) {
    const auto* text = value.get<std::string>();
    return field.isText() && text && text->empty();
}

} // namespace

RowWriter::RowWriter(TableSource& source, const TableDef& def)
    : source_(&source), def_(&def), store_(source, def), indexes_(source, def), row_(def.fields.size()),
      made_(def.fields.size()), stored_(def.fields.size()), old_(source) {
    for (size_t i = 0; i < def.fields.size(); ++i) {
        defaults_.push_back(DefaultValue::of(def.fields[i]));
        hasAutoNumber_ = hasAutoNumber_ || def.fields[i].autoNumber;
        if (def.fields[i].isLongValue()) longFields_.push_back(i);
    }
}

void RowWriter::requireOnePerField(size_t values, size_t flags) const {
    if (values != def_->fields.size() || flags != def_->fields.size())
        throw Error(Err::InvalidArgument, "Verilen değerlerin sayısı tablonun alan sayısına uymuyor.");
}

std::vector<Value> RowWriter::defaults() const {
    std::vector<Value> values;
    for (size_t i = 0; i < def_->fields.size(); ++i) {
        values.push_back(defaults_[i].at(source_->now()));
        if (values[i].isNull() && def_->fields[i].type == Type::Boolean) values[i] = kFalse;
    }
    return values;
}

void RowWriter::checkValue(size_t field, const Value& value) {
    const FieldDef& def = def_->fields[field];
    if (value.isNull()) return;
    if (def.isLongValue())
        convertTo(def, value);
    else
        encodeField(source_->layout(), def, value, checked_);
}

// --- making the row

void RowWriter::checkRules(const FieldDef& field, const Value& value) const {
    if (value.isNull()) {
        if (field.required || field.autoNumber)
            throw Error(Err::RequiredNull, "“" + field.name + "” alanı boş bırakılamaz.");
    } else if (!field.allowZeroLength && isEmptyText(field, value)) {
        throw Error(Err::ZeroLength, "“" + field.name + "” alanına sıfır uzunlukta metin yazılamaz.");
    }
}

// Checks row_[field] and turns it into bytes; long values only later, when nothing can refuse the row any
// more.
void RowWriter::encode(size_t field) {
    const FieldDef& def = def_->fields[field];
    checkRules(def, *row_[field]);
    if (!def.isLongValue()) encodeField(source_->layout(), def, *row_[field], stored_[field]);
    if (def.autoNumber) noteAutoNumber(*row_[field]);
}

void RowWriter::keepStored(size_t field) {
    const RowView& view = old_.view();
    StoredField& stored = stored_[field];
    stored.null = view.isNull(field);
    if (def_->fields[field].type == Type::Boolean) {
        stored.boolean = view.boolean(field);
    } else {
        const auto raw = view.raw(field);
        stored.bytes.assign(raw.begin(), raw.end());
    }
}

void RowWriter::writeLongValueOf(size_t field) {
    const FieldDef& def = def_->fields[field];
    StoredField& stored = stored_[field];
    stored.null = row_[field]->isNull();
    stored.bytes.clear();
    if (stored.null) return;
    const Value* value = row_[field];
    Value converted;
    if (!(def.type == Type::Memo ? value->get<std::string>() != nullptr : value->get<Bytes>() != nullptr)) {
        converted = convertTo(def, *value);
        value = &converted;
    }
    if (def.type == Type::Memo) {
        text_.clear();
        encodeText(*value->get<std::string>(), def.compressed, text_);
        stored.bytes = writeLongValue(source_->allocator(), def, text_);
    } else {
        stored.bytes = writeLongValue(source_->allocator(), def, *value->get<Bytes>());
    }
}

// --- autonumber and row count

void RowWriter::noteAutoNumber(const Value& value) {
    const int64_t number = value.toInt();
    if (number <= static_cast<int32_t>(autoNumber_)) return;
    autoNumber_ = static_cast<uint32_t>(number);
    autoNumberMoved_ = true;
}

void RowWriter::count(int rows) {
    if (rows == 0 && !autoNumberMoved_ && !indexes_.changesCounts()) return;
    const Layout& layout = source_->layout();
    PageEdit page = source_->pages().edit(def_->page);
    const uint32_t before = get32(page.bytes(), layout.tdefRowCount);
    // The count in files of other makers may be too low; it never goes below zero here.
    if (rows > 0 || before > 0)
        put32(page.bytes(), layout.tdefRowCount, before + static_cast<uint32_t>(rows));
    if (autoNumberMoved_) put32(page.bytes(), layout.tdefAutoNumber, autoNumber_);
    indexes_.countInto(page.bytes());
}

// --- the three statements

void RowWriter::fillNew(std::span<const Value> values, std::span<const bool> given) {
    const Layout& layout = source_->layout();
    autoNumberMoved_ = false;
    if (hasAutoNumber_) autoNumber_ = get32(source_->pages().read(def_->page).bytes(), layout.tdefAutoNumber);
    for (size_t i = 0; i < row_.size(); ++i) {
        row_[i] = &values[i];
        if (!given.empty() && !given[i]) {
            made_[i] = defaults_[i].at(source_->now());
            row_[i] = &made_[i];
        }
        if (!row_[i]->isNull()) continue;
        if (def_->fields[i].type == Type::Boolean) row_[i] = &kFalse;
        if (def_->fields[i].autoNumber) {
            made_[i] = static_cast<int32_t>(autoNumber_ + 1);
            row_[i] = &made_[i];
        }
    }
}

RowId RowWriter::insert(std::span<const Value> values, std::span<const bool> given) {
    requireOnePerField(values.size(), given.empty() ? values.size() : given.size());
    fillNew(values, given);
    for (size_t i = 0; i < row_.size(); ++i)
        encode(i);
    indexes_.prepareInsert(row_);
    for (const size_t field : longFields_)
        writeLongValueOf(field);
    encodeRow(source_->layout(), *def_, stored_, bytes_);
    const RowId id = store_.insert(bytes_);
    indexes_.apply(id);
    count(+1);
    return id;
}

void RowWriter::takeOld(RowId id) {
    std::span<const uint8_t> bytes;
    if (!reader().find(id, bytes)) throw Error(Err::NoCurrentRecord, "Kayıt artık yok; silinmiş olabilir.");
    oldBytes_.assign(bytes.begin(), bytes.end());
    old_.attach(*def_, oldBytes_);
}

void RowWriter::update(RowId id, std::span<const Value> values, std::span<const bool> changed) {
    requireOnePerField(values.size(), changed.size());
    takeOld(id);
    autoNumberMoved_ = false;
    if (hasAutoNumber_)
        autoNumber_ = get32(source_->pages().read(def_->page).bytes(), source_->layout().tdefAutoNumber);
    for (size_t i = 0; i < row_.size(); ++i) {
        row_[i] = changed[i] ? &values[i] : nullptr;
        if (changed[i] && values[i].isNull() && def_->fields[i].type == Type::Boolean) row_[i] = &kFalse;
        if (row_[i])
            encode(i);
        else
            keepStored(i);
    }
    indexes_.prepareUpdate(old_, row_);
    for (const size_t field : longFields_) {
        if (!row_[field]) continue;
        if (!old_.view().isNull(field))
            freeLongValue(source_->allocator(), def_->fields[field], old_.view().raw(field));
        writeLongValueOf(field);
    }
    encodeRow(source_->layout(), *def_, stored_, bytes_);
    if (bytes_ != oldBytes_) store_.update(id, bytes_);
    indexes_.apply(id);
    count(0);
}

void RowWriter::remove(RowId id) {
    takeOld(id);
    autoNumberMoved_ = false;
    indexes_.prepareRemove(old_);
    indexes_.apply(id);
    for (const size_t field : longFields_)
        if (!old_.view().isNull(field))
            freeLongValue(source_->allocator(), def_->fields[field], old_.view().raw(field));
    store_.erase(id);
    count(-1);
}

} // namespace jet
