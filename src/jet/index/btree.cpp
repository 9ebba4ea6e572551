// jet/index/btree.cpp — finding and walking. Changes are in tree_editor.cpp, filling in tree_builder.cpp,
// checking in tree_check.cpp.
#include "jet/index/btree.h"

#include "jet/error.h"
#include "jet/index/tree_builder.h"
#include "jet/index/tree_check.h"
#include "jet/index/tree_editor.h"
#include "jet/index/tree_walk.h"

#include <cassert>

namespace jet {
namespace {

enum class Direction { Forward, Backward };

bool stand(const TreeRef& tree, const IndexPage& leaf, size_t at, TreePosition& position) {
    position = {leaf.number(), static_cast<uint16_t>(at), tree.file().changeCount()};
    return true;
}

// Stands on the nearest entry in the leaves after (before) `leaf`; false when there is none. The entries must
// go on in order, so links that run in a circle end in an error, not in an endless walk.
bool crossLeaf(const TreeRef& tree, const IndexPage& leaf, Direction direction, TreePosition& position) {
    const bool forward = direction == Direction::Forward;
    PageNo no = forward ? leaf.next() : leaf.previous();
    for (PageNo steps = tree.file().pageCount(); steps > 0 && no != 0; --steps) {
        const LoadedPage neighbour = loadIndexPage(tree, no);
        const IndexPage& view = neighbour.view;
        if (!view.leaf()) throw Error(Err::Corrupt, "Dizin yaprağının komşusu yaprak değil.").onPage(no);
        if (view.empty()) {
            no = forward ? view.next() : view.previous();
            continue;
        }
        const size_t at = forward ? 0 : view.lastStart();
        if (!leaf.empty()) {
            const int order = leaf.compare(forward ? leaf.lastStart() : 0, view, at);
            if (forward ? order >= 0 : order <= 0)
                throw Error(Err::Corrupt, "Dizin yaprakları sıralı değil.").onPage(no);
        }
        return stand(tree, view, at, position);
    }
    if (no != 0) throw Error(Err::Corrupt, "Dizin yapraklarının bağlantıları döngü oluşturuyor.").onPage(no);
    position = {};
    return false;
}

// First entry that is not below `target`.
bool seekEntry(const TreeRef& tree, std::span<const uint8_t> target, TreePosition& position) {
    const LoadedPage leaf = descend(tree, target);
    const size_t at = leaf.view.lowerBound(target);
    if (at < leaf.view.used()) return stand(tree, leaf.view, at, position);
    return crossLeaf(tree, leaf.view, Direction::Forward, position);
}

} // namespace

BTree::BTree(PageAllocator& allocator, PageNo root, PageNo owner, RowId pageMap)
    : allocator_(&allocator), root_(root), owner_(owner), pageMap_(pageMap) {}

TreeRef BTree::self() const { return {allocator_, root_, owner_, pageMap_}; }

PageNo BTree::create(PageAllocator& allocator, PageNo owner, RowId pageMap) {
    return TreeEditor::createRoot(allocator, owner, pageMap);
}

void BTree::destroy() { TreeEditor(self()).destroy(); }

void BTree::insert(std::span<const uint8_t> key, RowId row) {
    const size_t longest = index_page::maxEntry(allocator_->layout()) - kRowPointerSize - kChildPointerSize;
    if (key.size() > longest)
        throw Error(Err::RecordTooLarge, "Dizin anahtarı çok uzun (" + std::to_string(key.size()) +
                                             " bayt, en çok " + std::to_string(longest) + ").");
    TreeEditor(self()).insert(LeafEntry(key, row).span());
}

bool BTree::erase(std::span<const uint8_t> key, RowId row) {
    return TreeEditor(self()).erase(LeafEntry(key, row).span());
}

void BTree::build(const std::function<bool(Bytes& key, RowId& row)>& nextEntry) {
    buildTree(self(), nextEntry);
}

bool BTree::seek(std::span<const uint8_t> key, TreePosition& at) const { return seekEntry(self(), key, at); }

bool BTree::seekBefore(std::span<const uint8_t> key, TreePosition& at) const {
    const TreeRef tree = self();
    const LoadedPage leaf = descend(tree, key);
    const size_t bound = leaf.view.lowerBound(key);
    if (bound > 0) return stand(tree, leaf.view, leaf.view.startBefore(bound), at);
    return crossLeaf(tree, leaf.view, Direction::Backward, at);
}

bool BTree::first(TreePosition& at) const { return seek({}, at); }

bool BTree::last(TreePosition& at) const {
    const TreeRef tree = self();
    const LoadedPage leaf = descendToLast(tree);
    if (!leaf.view.empty()) return stand(tree, leaf.view, leaf.view.lastStart(), at);
    return crossLeaf(tree, leaf.view, Direction::Backward, at);
}

bool BTree::next(TreePosition& at) const {
    if (at.leaf == 0) return false;
    const TreeRef tree = self();
    assert(at.changeCount == tree.file().changeCount());
    const LoadedPage leaf = loadIndexPage(tree, at.leaf);
    const size_t following = leaf.view.end(at.entry);
    if (following < leaf.view.used()) {
        at.entry = static_cast<uint16_t>(following);
        return true;
    }
    return crossLeaf(tree, leaf.view, Direction::Forward, at);
}

bool BTree::previous(TreePosition& at) const {
    if (at.leaf == 0) return false;
    const TreeRef tree = self();
    assert(at.changeCount == tree.file().changeCount());
    const LoadedPage leaf = loadIndexPage(tree, at.leaf);
    if (at.entry > 0) {
        at.entry = static_cast<uint16_t>(leaf.view.startBefore(at.entry));
        return true;
    }
    return crossLeaf(tree, leaf.view, Direction::Backward, at);
}

bool BTree::restore(std::span<const uint8_t> key, RowId row, TreePosition& at, bool& exact) const {
    const TreeRef tree = self();
    const LeafEntry entry(key, row);
    exact = false;
    if (!seekEntry(tree, entry.span(), at)) return false;
    exact = loadIndexPage(tree, at.leaf).view.equals(at.entry, entry.span());
    return true;
}

void BTree::read(const TreePosition& at, Bytes& key, RowId& row) const {
    const LoadedPage leaf = loadIndexPage(self(), at.leaf);
    leaf.view.copyEntry(at.entry, key);
    row = leaf.view.row(at.entry);
    key.resize(key.size() - kRowPointerSize);
}

RowId BTree::rowAt(const TreePosition& at) const { return loadIndexPage(self(), at.leaf).view.row(at.entry); }

bool BTree::containsKey(std::span<const uint8_t> key) const {
    TreePosition at;
    if (!seek(key, at)) return false;
    return loadIndexPage(self(), at.leaf).view.hasKey(at.entry, key);
}

void BTree::verify(const std::function<void(std::span<const uint8_t> key, RowId)>& entry,
                   const std::function<void(PageNo, const std::string&)>& fault) const {
    checkTree(self(), entry, fault);
}

} // namespace jet
