// jet/index/tree_builder.h — fills an empty index tree from sorted entries, every page as full as it goes.
#pragma once

#include "jet/index/tree_walk.h"

#include <functional>

namespace jet {

// See BTree::build.
void buildTree(const TreeRef& tree, const std::function<bool(Bytes& key, RowId& row)>& nextEntry);

} // namespace jet
