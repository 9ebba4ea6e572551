// jet/copy/table_plan.h — the definition that a copied table gets: without the holes that dropped fields and
// indexes left. Pure: no file.
#pragma once

#include "jet/format/table_def.h"

namespace jet {

// Sets what says where fields lie in a row, as it was when that has no holes, else anew; numbers the trees
// without gaps; blanks what a new file gives anew (maps, roots, counts). Indexes stay in their order, each
// with its readOnlyReason.
// Err::InvalidArgument (see DatabaseWriter::beginTable), Err::TooManyFields, Err::RecordTooLarge.
void planTable(TableDef& def);

// Takes the indexes for which `drop` was set out of the definition, and their trees.
void dropIndexes(TableDef& def, const std::vector<bool>& drop);

} // namespace jet
