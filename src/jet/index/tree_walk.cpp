// jet/index/tree_walk.cpp — the way down from the root of an index tree.
#include "jet/index/tree_walk.h"

#include "jet/error.h"

#include <algorithm>
#include <cstring>

namespace jet {
namespace {

[[noreturn]] void tooDeep(const TreeRef& tree) {
    throw Error(Err::Corrupt, "Dizin ağacının bağlantıları döngü oluşturuyor.").onPage(tree.root);
}

TreeStep chooseChild(const IndexPage& node, std::span<const uint8_t> target) {
    const size_t at = node.lowerBound(target);
    if (at < node.used()) return {node.number(), at, false, false};
    if (node.tail() != 0) return {node.number(), at, true, false};
    if (node.empty()) throw Error(Err::Corrupt, "Dizin düğümünün hiç alt sayfası yok.").onPage(node.number());
    return {node.number(), node.lastStart(), false, true};
}

} // namespace

LoadedPage loadIndexPage(const TreeRef& tree, PageNo page) {
    PageRef ref = tree.file().read(page);
    const IndexPage view(tree.layout(), page, ref.bytes());
    if (view.owner() != tree.owner)
        throw Error(Err::Corrupt, "Dizin sayfası başka bir tabloya ait görünüyor.").onPage(page);
    return {std::move(ref), view};
}

LoadedPage descend(const TreeRef& tree, std::span<const uint8_t> target, TreePath* path) {
    PageNo page = tree.root;
    for (size_t depth = 0; depth < kMaxTreeDepth; ++depth) {
        LoadedPage loaded = loadIndexPage(tree, page);
        const IndexPage& view = loaded.view;
        const TreeStep step = view.leaf() ? TreeStep{page} : chooseChild(view, target);
        if (path != nullptr) {
            path->steps[depth] = step;
            path->depth = depth + 1;
        }
        if (view.leaf()) return loaded;
        page = step.tail ? view.tail() : view.child(step.at);
    }
    tooDeep(tree);
}

LoadedPage descendToLast(const TreeRef& tree) {
    PageNo page = tree.root;
    for (size_t depth = 0; depth < kMaxTreeDepth; ++depth) {
        LoadedPage loaded = loadIndexPage(tree, page);
        const IndexPage& view = loaded.view;
        if (view.leaf()) return loaded;
        if (view.tail() == 0 && view.empty())
            throw Error(Err::Corrupt, "Dizin düğümünün hiç alt sayfası yok.").onPage(page);
        page = view.tail() != 0 ? view.tail() : view.child(view.lastStart());
    }
    tooDeep(tree);
}

LeafEntry::LeafEntry(std::span<const uint8_t> key, RowId row)
    : size_(std::min(key.size(), bytes_.size() - kRowPointerSize)) {
    std::copy_n(key.begin(), size_, bytes_.begin());
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes_[size_++] = static_cast<uint8_t>(row.packed() >> shift);
}

void appendChild(PageNo child, Bytes& entry) {
    for (int shift = 24; shift >= 0; shift -= 8)
        entry.push_back(static_cast<uint8_t>(child >> shift));
}

} // namespace jet
