// table/table.cpp — the Table handle: opens the scopes, sees to the definition being the file's present one,
// and leaves the work to RowWriter (rows), RecordCursor (place) and RecordBuffer (edits).
#include "jet/table/table.h"

#include "jet/format/bytes.h"
#include "jet/table/record_buffer.h"
#include "jet/table/record_cursor.h"
#include "jet/table/row_writer.h"
#include "jet/table/scan_impl.h"

#include <unordered_map>

namespace jet {
struct Table::Impl {
    Impl(TableSource& from, PageNo definitionPage) : source(from), page(definitionPage), cursor(from) {}

    const TableDef& refresh();
    RowWriter& writer();
    RecordCursor& records();
    RowReader& reader();
    RecordBuffer& edited(); // the buffer, in the fields of the present definition
    size_t fieldAt(std::string_view name);
    void requireWritable();
    // Run `work` in a read scope, or as one statement, with the present definition; errors name the table.
    template <class Work> auto reading(Work&& work);
    template <class Work> void writing(Work&& work);

    void updateEdited();
    // Between calls a handle holds no page: it then hinders neither the cache nor the closing of the file.
    void unpin();
    struct Unpin {
        Impl& table;
        ~Unpin() { table.unpin(); }
    };

    TableSource& source;
    PageNo page;
    std::shared_ptr<const TableDef> def;
    std::optional<RowWriter> rowWriter; // these three are made for `def` when first needed
    std::optional<RowReader> rowReader;
    std::unordered_map<std::string, size_t> fieldsByName; // folded; empty = not made yet
    std::shared_ptr<const TableDef> cursorDef;
    RecordCursor cursor;
    RecordBuffer buffer;
    RowId lastModified;
};

const TableDef& Table::Impl::refresh() {
    auto now = source.definition(page);
    if (now != def) {
        rowWriter.reset();
        rowReader.reset();
        fieldsByName.clear();
        def = std::move(now);
    }
    return *def;
}

RowWriter& Table::Impl::writer() {
    if (!rowWriter) rowWriter.emplace(source, *def);
    return *rowWriter;
}

RecordCursor& Table::Impl::records() {
    if (cursorDef != def) {
        cursor.attach(def);
        cursorDef = def;
    }
    return cursor;
}

RowReader& Table::Impl::reader() {
    if (!rowReader) rowReader.emplace(source.pages(), source.layout(), page);
    return *rowReader;
}

RecordBuffer& Table::Impl::edited() {
    buffer.follow(def, [this] { return writer().defaults(); });
    return buffer;
}

size_t Table::Impl::fieldAt(std::string_view name) {
    if (fieldsByName.empty())
        for (size_t i = 0; i < def->fields.size(); ++i)
            fieldsByName.emplace(foldName(def->fields[i].name), i);
    const auto found = fieldsByName.find(foldName(name));
    if (found == fieldsByName.end())
        throw Error(Err::NoSuchItem, "“" + std::string(name) + "” adında bir alan yok.");
    return found->second;
}

void Table::Impl::requireWritable() {
    std::string reason;
    if (!source.writable(reason)) throw Error(Err::ReadOnly, reason);
    reason = def->readOnlyReason();
    if (!reason.empty()) throw Error(Err::ReadOnly, reason);
}

void Table::Impl::unpin() {
    if (rowWriter) rowWriter->reader().unpin();
    if (rowReader) rowReader->unpin();
    cursor.unpin();
}

template <class Work> auto Table::Impl::reading(Work&& work) {
    const Unpin atEnd{*this};
    try {
        const ReadScope scope(source.pages());
        refresh();
        return work();
    } catch (Error& error) {
        if (def) error.inTable(def->name);
        throw;
    }
}

template <class Work> void Table::Impl::writing(Work&& work) {
    const Unpin atEnd{*this};
    try {
        std::string reason;
        if (!source.writable(reason)) throw Error(Err::ReadOnly, reason);
        WriteScope scope(source.pages());
        refresh();
        requireWritable();
        work();
        scope.commit();
    } catch (Error& error) {
        if (def) error.inTable(def->name);
        throw;
    }
}

Table::Table() = default;
Table::Table(TableSource& source, PageNo definitionPage)
    : impl_(std::make_unique<Impl>(source, definitionPage)) {}
Table::Table(Table&&) noexcept = default;
Table& Table::operator=(Table&&) noexcept = default;
Table::~Table() = default;

const TableDef& Table::def() {
    return impl_->reading([&]() -> std::reference_wrapper<const TableDef> { return *impl_->def; });
}

uint32_t Table::rowCount() {
    return impl_->reading([&] {
        const PageRef page = impl_->source.pages().read(impl_->page);
        return get32(page.bytes(), impl_->source.layout().tdefRowCount);
    });
}

// --- plain access

Scan Table::scan() {
    return impl_->reading([&] {
        Scan scan;
        scan.impl_ = std::make_unique<Scan::Impl>(impl_->source, impl_->def);
        return scan;
    });
}

Scan Table::scan(std::string_view index, const KeyRange& range) {
    return impl_->reading([&] {
        const IndexDef* found = impl_->def->findIndex(index);
        if (!found) throw Error(Err::NoSuchItem, "“" + std::string(index) + "” adında bir dizin yok.");
        Scan scan;
        scan.impl_ = std::make_unique<Scan::Impl>(impl_->source, impl_->def, *found);
        scan.restart(range);
        return scan;
    });
}

std::vector<Value> Table::read(RowId id) {
    return impl_->reading([&] {
        std::span<const uint8_t> bytes;
        if (!impl_->reader().find(id, bytes))
            throw Error(Err::NoCurrentRecord, "Kayıt artık yok; silinmiş olabilir.");
        StoredRow row(impl_->source);
        row.attach(*impl_->def, bytes);
        std::vector<Value> values;
        row.values(values);
        return values;
    });
}

RowId Table::insert(std::span<const Value> values, std::span<const bool> given) {
    RowId id;
    impl_->writing([&] { id = impl_->writer().insert(values, given); });
    return id;
}

void Table::update(RowId id, std::span<const Value> values, std::span<const bool> changed) {
    impl_->writing([&] {
        impl_->writer().update(id, values, changed);
        if (impl_->cursorDef) impl_->records().rowChanged(id);
    });
}

void Table::remove(RowId id) {
    impl_->writing([&] {
        impl_->writer().remove(id);
        if (impl_->cursorDef) impl_->records().rowRemoved(id);
    });
}

// --- the current record

void Table::setIndex(std::string_view name) {
    impl_->buffer.cancel();
    impl_->reading([&] { impl_->records().setIndex(name); });
}

bool Table::moveFirst() {
    impl_->buffer.cancel();
    return impl_->reading([&] { return impl_->records().first(); });
}

bool Table::moveLast() {
    impl_->buffer.cancel();
    return impl_->reading([&] { return impl_->records().last(); });
}

bool Table::moveNext() {
    impl_->buffer.cancel();
    return impl_->reading([&] { return impl_->records().next(); });
}

bool Table::movePrevious() {
    impl_->buffer.cancel();
    return impl_->reading([&] { return impl_->records().previous(); });
}

bool Table::seek(SeekOp op, std::span<const Value> keys) {
    impl_->buffer.cancel();
    return impl_->reading([&] { return impl_->records().seek(op, keys); });
}

bool Table::eof() const {
    return impl_->reading([&] { return impl_->records().atEnd(); });
}

bool Table::bof() const {
    return impl_->reading([&] { return impl_->records().atBegin(); });
}

RowId Table::bookmark() const {
    return impl_->reading([&] { return impl_->records().id(); });
}

void Table::goTo(RowId bookmark) {
    impl_->buffer.cancel();
    impl_->reading([&] { impl_->records().goTo(bookmark); });
}

Value Table::value(std::string_view field) {
    return impl_->reading([&] {
        const size_t at = impl_->fieldAt(field);
        const RecordBuffer& buffer = impl_->edited();
        if (buffer.mode() != RecordBuffer::Mode::None && buffer.holds(at)) return buffer.value(at);
        return impl_->records().row().value(at);
    });
}

// --- the edit buffer

void Table::addNew() {
    impl_->reading([&] {
        impl_->requireWritable();
        impl_->buffer.beginAdd(impl_->def, impl_->writer().defaults());
    });
}

void Table::edit() {
    impl_->reading([&] {
        impl_->requireWritable();
        const StoredRow& row = impl_->records().row();
        impl_->buffer.beginEdit(impl_->def, impl_->records().id(), row);
    });
}

void Table::set(std::string_view field, Value value) {
    impl_->reading([&] {
        if (impl_->buffer.mode() == RecordBuffer::Mode::None)
            throw Error(Err::UpdateWithoutEdit, "Kayıt, değiştirilmek üzere açılmadan değiştirilemez.");
        const size_t at = impl_->fieldAt(field);
        impl_->writer().checkValue(at, value);
        impl_->edited().set(at, convertTo(impl_->def->fields[at], value));
    });
}

void Table::Impl::updateEdited() {
    const RowId id = buffer.record();
    std::span<const uint8_t> bytes;
    if (!reader().find(id, bytes))
        throw Error(Err::NoCurrentRecord, "Kayıt, başka bir kullanıcı tarafından silinmiş.");
    StoredRow now(source);
    now.attach(*def, bytes);
    if (!buffer.matches(now))
        throw Error(Err::DataChanged,
                    "Kayıt, siz değiştirirken başka bir kullanıcı tarafından değiştirildi.");
    writer().update(id, buffer.values(), buffer.changed());
    records().rowChanged(id);
    lastModified = id;
}

void Table::update() {
    if (impl_->buffer.mode() == RecordBuffer::Mode::None)
        throw Error(Err::UpdateWithoutEdit, "Kayıt, değiştirilmek üzere açılmadan yazılamaz.");
    impl_->writing([&] {
        if (impl_->edited().mode() == RecordBuffer::Mode::Editing)
            impl_->updateEdited();
        else
            impl_->lastModified = impl_->writer().insert(impl_->buffer.values(), {});
    });
    impl_->buffer.cancel();
}

void Table::cancelUpdate() { impl_->buffer.cancel(); }

RowId Table::lastModified() const { return impl_->lastModified; }

void Table::remove() {
    impl_->buffer.cancel();
    impl_->writing([&] {
        const RowId id = impl_->records().id();
        impl_->records().row(); // Err::NoCurrentRecord when somebody else removed it
        impl_->writer().remove(id);
        impl_->records().rowRemoved(id);
    });
}

} // namespace jet
