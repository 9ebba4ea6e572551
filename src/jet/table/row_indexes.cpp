// table/row_indexes.cpp — see row_indexes.h.
#include "jet/table/row_indexes.h"

#include "jet/format/bytes.h"
#include "jet/index/key.h"

#include <algorithm>

namespace jet {
namespace {

constexpr size_t kUniqueCountInEntry = 4; // offset of the unique-entry count in a real index's entry

// Is the value already of the field's own type, so that it needs no conversion for a key?
bool hasTypeOf(const FieldDef& field, const Value& value) {
    switch (field.type) {
    case Type::Boolean: return value.get<bool>();
    case Type::Byte:
    case Type::Integer:
    case Type::Long: return value.get<int32_t>();
    case Type::Currency: return value.get<Currency>();
    case Type::Single: return value.get<float>();
    case Type::Double: return value.get<double>();
    case Type::Date: return value.get<Date>();
    case Type::Text:
    case Type::Memo: return value.get<std::string>();
    default: return false;
    }
}

void appendPart(const FieldDef& field, bool descending, const Value& value, Bytes& key) {
    if (value.isNull() || hasTypeOf(field, value)) {
        appendKeyPart(field, descending, value, key);
    } else {
        appendKeyPart(field, descending, convertTo(field, value), key);
    }
}

} // namespace

RowIndexes::RowIndexes(TableSource& source, const TableDef& def) : source_(&source), def_(&def) {
    for (const IndexDef& index : def.indexes)
        addTree(index);
}

void RowIndexes::addTree(const IndexDef& index) {
    auto tree = std::find_if(trees_.begin(), trees_.end(),
                             [&](const Tree& t) { return t.index->realNumber == index.realNumber; });
    if (tree == trees_.end()) {
        trees_.push_back({.index = &index,
                          .tree = BTree(source_->allocator(), index.rootPage, def_->page,
                                        RowId::fromPacked(index.usageMapPointer)),
                          .ignoreNulls = index.ignoreNulls,
                          .oldKey = {},
                          .newKey = {}});
        tree = trees_.end() - 1;
    } else if (index.primary || tree->index->foreign) {
        tree->index = &index;
    }
    tree->unique |= index.unique || index.primary;
    tree->noNulls |= index.required || index.primary;
}

bool RowIndexes::touches(const Tree& tree, std::span<const Value* const> row) {
    return std::any_of(tree.index->fields.begin(), tree.index->fields.end(),
                       [&](const IndexField& part) { return row[part.field] != nullptr; });
}

void RowIndexes::makeNewKey(Tree& tree, const StoredRow* old, std::span<const Value* const> row) {
    tree.newKey.clear();
    tree.anyNull = false;
    tree.allNull = true;
    for (const IndexField& part : tree.index->fields) {
        const FieldDef& field = def_->fields[part.field];
        const Value* given = row[part.field];
        const Value kept = given ? Value() : old->value(part.field);
        const Value& value = given ? *given : kept;
        if (value.isNull())
            tree.anyNull = true;
        else
            tree.allNull = false;
        appendPart(field, part.descending, value, tree.newKey);
    }
    tree.newEntry = !(tree.ignoreNulls && tree.allNull);
}

void RowIndexes::makeOldKey(Tree& tree, const StoredRow& old) {
    tree.oldKey.clear();
    bool allNull = true;
    for (const IndexField& part : tree.index->fields) {
        const Value value = old.value(part.field);
        allNull = allNull && value.isNull();
        appendPart(def_->fields[part.field], part.descending, value, tree.oldKey);
    }
    tree.oldEntry = !(tree.ignoreNulls && allNull);
}

void RowIndexes::refuse(const Tree& tree) const {
    const std::string& name = tree.index->name;
    if (tree.noNulls && tree.anyNull)
        throw Error(Err::IndexNullKey, "“" + name + "” dizininin alanları boş bırakılamaz.");
    // A key with a null in it stands beside others like it: nulls are not equal.
    if (tree.unique && !tree.anyNull && tree.newEntry && tree.tree.containsKey(tree.newKey))
        throw Error(Err::DuplicateKey, "“" + name + "” dizininde aynı değeri taşıyan bir kayıt zaten var.");
}

void RowIndexes::prepareInsert(std::span<const Value* const> row) {
    for (Tree& tree : trees_) {
        tree.oldEntry = false;
        makeNewKey(tree, nullptr, row);
        refuse(tree);
    }
}

void RowIndexes::prepareUpdate(const StoredRow& old, std::span<const Value* const> row) {
    for (Tree& tree : trees_) {
        tree.oldEntry = tree.newEntry = false;
        if (!touches(tree, row)) continue;
        makeOldKey(tree, old);
        makeNewKey(tree, &old, row);
        if (tree.oldEntry == tree.newEntry && tree.oldKey == tree.newKey) {
            tree.oldEntry = tree.newEntry = false;
        } else {
            refuse(tree);
        }
    }
}

void RowIndexes::prepareRemove(const StoredRow& old) {
    for (Tree& tree : trees_) {
        tree.newEntry = false;
        makeOldKey(tree, old);
    }
}

void RowIndexes::apply(RowId id) {
    for (Tree& tree : trees_) {
        if (tree.oldEntry && !tree.tree.erase(tree.oldKey, id))
            throw Error(Err::Corrupt, "Kaydın “" + tree.index->name + "” dizinindeki girdisi bulunamadı.")
                .onPage(tree.index->rootPage);
        if (tree.newEntry) tree.tree.insert(tree.newKey, id);
    }
}

bool RowIndexes::changesCounts() const {
    return std::any_of(trees_.begin(), trees_.end(),
                       [](const Tree& tree) { return tree.unique && tree.oldEntry != tree.newEntry; });
}

void RowIndexes::countInto(std::span<uint8_t> definitionPage) const {
    const Layout& layout = source_->layout();
    for (const Tree& tree : trees_) {
        if (!tree.unique || tree.oldEntry == tree.newEntry) continue;
        const size_t at =
            layout.tdefStart + layout.realIndexCountEntry * tree.index->realNumber + kUniqueCountInEntry;
        if (at + 4 > definitionPage.size()) continue;
        const uint32_t count = get32(definitionPage, at);
        if (tree.newEntry)
            put32(definitionPage, at, count + 1);
        else if (count > 0)
            put32(definitionPage, at, count - 1);
    }
}

} // namespace jet
