// jet/index/tree_check.h — walks a whole index tree and names what contradicts itself. Reads only.
#pragma once

#include "jet/index/tree_walk.h"

#include <functional>
#include <string>

namespace jet {

// See BTree::verify.
void checkTree(const TreeRef& tree, const std::function<void(std::span<const uint8_t> key, RowId)>& entry,
               const std::function<void(PageNo, const std::string&)>& fault);

} // namespace jet
