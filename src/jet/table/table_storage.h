// jet/table/table_storage.h — the pages of a table besides its definition: maps, data pages, long values,
// index trees. Gives out new empty ones and takes old ones back. REQUIRES for every function: inside a write.
#pragma once

#include "jet/index/entry_sorter.h"
#include "jet/table/open_database.h"

namespace jet {

// New empty maps for the rows and for every long-value field; sets the pointers in `def`.
void createStorage(OpenDatabase& db, TableDef& def);
void createLongValueMaps(OpenDatabase& db, FieldDef& field);

// A new empty tree; sets root and map in `index`. `owner` = the table's definition page.
void createTree(OpenDatabase& db, PageNo owner, IndexDef& index);

// Pages that carry another owner's mark are left alone: in a damaged file they may be somebody else's.
void freeRows(OpenDatabase& db, const TableDef& def); // data pages and their two maps
void freeLongValues(OpenDatabase& db, const FieldDef& field);
void freeTree(OpenDatabase& db, const TableDef& def, const IndexDef& index);

// The data pages of `def` now belong to the table whose definition starts on `owner`.
void changeOwner(OpenDatabase& db, const TableDef& def, PageNo owner);

// The position of the first logical index of each tree, ordered by tree.
std::vector<size_t> treesOf(const TableDef& def);

struct FillOptions {
    size_t memoryBytes = SIZE_MAX;  // for sorting; what is beyond goes to the file
    EntrySorter::MakeFile makeFile; // empty: all is sorted in memory
    std::function<void()> step;     // for each row; may throw
};
// Fills the empty tree of an index from the table's rows and sets its count in `def`.
// Err::DuplicateKey, Err::IndexNullKey: the text names the index, and the tree is still empty.
void fillTree(OpenDatabase& db, TableDef& def, const IndexDef& index, const FillOptions& options = {});
// The same from entries that are there already. Err::DuplicateKey.
void buildTree(OpenDatabase& db, TableDef& def, const IndexDef& index, EntrySorter& entries);

} // namespace jet
