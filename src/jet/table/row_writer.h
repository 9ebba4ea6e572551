// table/row_writer.h — writes whole rows of one table: values to bytes, rules of the fields, long values,
// indexes, row count and autonumber. One object per definition; its buffers are used again from row to row.
// REQUIRES: inside a write for every call. After an error the caller undoes the statement when anything was
// changed.
#pragma once

#include "jet/table/default_value.h"
#include "jet/table/row_indexes.h"
#include "jet/table/row_store.h"

namespace jet {

class RowWriter {
  public:
    RowWriter(TableSource& source, const TableDef& def);

    // As Table::insert / update / remove.
    RowId insert(std::span<const Value> values, std::span<const bool> given);
    void update(RowId id, std::span<const Value> values, std::span<const bool> changed);
    void remove(RowId id);

    // Defaults of a new row, one per field; autonumbers null, Booleans false.
    std::vector<Value> defaults() const;
    // Type and width of one value, as they would be refused when written. Null passes.
    void checkValue(size_t field, const Value& value);
    RowReader& reader() { return store_.reader(); }

  private:
    void requireOnePerField(size_t values, size_t flags) const;
    void takeOld(RowId id);
    void fillNew(std::span<const Value> values, std::span<const bool> given);
    void encode(size_t field);
    void keepStored(size_t field);
    void writeLongValueOf(size_t field);
    void checkRules(const FieldDef& field, const Value& value) const;
    void noteAutoNumber(const Value& value);
    void count(int rows);

    TableSource* source_;
    const TableDef* def_;
    RowStore store_;
    RowIndexes indexes_;
    std::vector<DefaultValue> defaults_;
    std::vector<size_t> longFields_;
    bool hasAutoNumber_ = false;

    // Of the row being written.
    std::vector<const Value*> row_; // one per field; null = stays as it is
    std::vector<Value> made_;       // defaults and autonumbers that row_ points to
    std::vector<StoredField> stored_;
    StoredField checked_;
    Bytes bytes_, oldBytes_, text_;
    StoredRow old_;
    uint32_t autoNumber_ = 0; // last one, as the file will have it
    bool autoNumberMoved_ = false;
};

} // namespace jet
