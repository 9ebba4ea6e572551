// jet/index/tree_editor.cpp — inserting: the fast way into a leaf with room, else splits up to the root.
//
// The bound of a child in its parent is not below the child's last entry; the last child of the right edge of
// the tree is the parent's tail and has no bound. A split leaves the left half on the old page, so bounds
// that exist stay right: the left half gets a new entry in the parent, the old entry (or the tail) then leads
// to the right half. The root keeps its number: when it splits, both halves go to new pages.
#include "jet/index/tree_editor.h"

#include "jet/error.h"

#include <algorithm>
#include <cassert>

namespace jet {
namespace {

constexpr int kMaxBoundRepairs = 64; // far more than a path has nodes

// An entry without its child pointer: the bound that a node's last entry gives to the level above.
std::span<const uint8_t> boundOf(bool leaf, std::span<const uint8_t> entry) {
    return leaf ? entry : entry.first(entry.size() - kChildPointerSize);
}

} // namespace

PageNo TreeEditor::createRoot(PageAllocator& allocator, PageNo owner, RowId pageMap) {
    TreeEditor editor({&allocator, 0, owner, pageMap});
    return editor.newPage(0).number();
}

// Frees what the page map lists, so that a damaged tree can be dropped too; pages of somebody else are left
// alone.
void TreeEditor::destroy() {
    std::vector<PageNo> pages;
    map().forEach([&](PageNo page) { pages.push_back(page); });
    for (const PageNo page : pages) {
        try {
            loadIndexPage(tree_, page);
        } catch (const Error& error) {
            if (error.number() != Err::Corrupt) throw;
            continue;
        }
        freePage(page);
    }
}

PageEdit TreeEditor::newPage(size_t height) {
    PageEdit page = tree_.allocator->allocate();
    map().add(page.number(), *tree_.allocator);
    index_page::initialise(layout_, page.bytes(), height, tree_.owner);
    return page;
}

void TreeEditor::freePage(PageNo page) {
    map().remove(page);
    tree_.allocator->free(page);
}

PageEdit TreeEditor::edit(PageNo page) {
    loadIndexPage(tree_, page);
    return tree_.file().edit(page);
}

void TreeEditor::insert(std::span<const uint8_t> entry) {
    for (int repairs = 0; repairs < kMaxBoundRepairs; ++repairs) {
        TreePath path;
        const LoadedPage leaf = descend(tree_, entry, &path);
        const auto stepsEnd = path.steps.begin() + static_cast<ptrdiff_t>(path.depth);
        if (std::any_of(path.steps.begin(), stepsEnd, [](const TreeStep& step) { return step.beyondLast; })) {
            raiseBounds(path, entry);
            continue;
        }
        const size_t at = leaf.view.lowerBound(entry);
        if (at < leaf.view.used() && leaf.view.equals(at, entry))
            throw Error(Err::Corrupt, "Satır dizinde zaten var.").onPage(leaf.view.number());
        return insertAt(path, path.depth - 1, at, entry);
    }
    throw Error(Err::Corrupt, "Dizin düğümlerinin anahtarları onarılamıyor.").onPage(tree_.root);
}

// Some programs leave the last child of a node in its entries, with a bound that the new entry is above. On
// the right edge of the tree such a child becomes the tail; elsewhere its bound is raised. One node at a
// time, from the top.
void TreeEditor::raiseBounds(const TreePath& path, std::span<const uint8_t> entry) {
    size_t level = 0;
    bool rightEdge = true;
    for (; !path.steps[level].beyondLast; ++level)
        rightEdge = rightEdge && path.steps[level].tail;

    PageEdit page = edit(path.steps[level].page);
    const size_t last = view(page).lastStart();
    const PageNo child = view(page).child(last);
    index_page::erase(layout_, view(page), page.bytes(), last);
    if (rightEdge) return index_page::setTail(layout_, page.bytes(), child);
    Bytes raised(entry.begin(), entry.end());
    appendChild(child, raised);
    insertAt(path, level, view(page).used(), raised);
}

void TreeEditor::insertAt(const TreePath& path, size_t level, size_t at, std::span<const uint8_t> entry) {
    PageEdit page = tree_.file().edit(path.steps[level].page);
    const IndexPage before = view(page);
    if (index_page::insert(layout_, before, page.bytes(), at, entry)) return;

    EntryList list;
    before.collect(list, at, entry);
    if (index_page::fits(layout_, before.leaf(), list, 0, list.count()))
        return index_page::write(layout_, page.bytes(), list, 0, list.count());
    const size_t leftCount = chooseSplit(before, list, at);
    if (level == 0)
        splitRoot(path, list, leftCount);
    else
        split(path, level, list, leftCount);
}

// How many entries the left half gets. Rows that come in rising (falling) order fill their pages; all others
// are halved by bytes.
size_t TreeEditor::chooseSplit(const IndexPage& page, const EntryList& list, size_t addedAt) const {
    const size_t count = list.count();
    const auto possible = [&](size_t left) {
        return left > 0 && left < count && index_page::fits(layout_, page.leaf(), list, 0, left) &&
               index_page::fits(layout_, page.leaf(), list, left, count);
    };
    const bool rightEdge = page.leaf() ? page.next() == 0 : page.tail() != 0;
    if (addedAt == page.used() && rightEdge && possible(count - 1)) return count - 1;
    if (addedAt == 0 && page.leaf() && page.previous() == 0 && possible(1)) return 1;

    size_t half = 1;
    while (half < count && list.bytes(0, half) < list.bytes(half, count))
        ++half;
    for (size_t distance = 0; distance < count; ++distance) {
        if (half >= distance && possible(half - distance)) return half - distance;
        if (possible(half + distance)) return half + distance;
    }
    throw Error(Err::RecordTooLarge, "Dizin sayfası bölünemiyor: anahtarları çok uzun.")
        .onPage(page.number());
}

void TreeEditor::split(const TreePath& path, size_t level, const EntryList& list, size_t leftCount) {
    const PageNo leftNo = path.steps[level].page;
    PageEdit right = newPage(path.depth - 1 - level);
    PageEdit left = tree_.file().edit(leftNo);
    const IndexPage before = view(left);
    const bool leaf = before.leaf();
    const PageNo next = before.next();

    index_page::setLinks(layout_, right.bytes(), leftNo, next);
    index_page::setTail(layout_, right.bytes(), before.tail());
    index_page::write(layout_, right.bytes(), list, leftCount, list.count());
    index_page::setNext(layout_, left.bytes(), right.number());
    index_page::setTail(layout_, left.bytes(), 0);
    index_page::write(layout_, left.bytes(), list, 0, leftCount);
    if (next != 0) index_page::setPrevious(layout_, edit(next).bytes(), right.number());

    const TreeStep& above = path.steps[level - 1];
    PageEdit parent = tree_.file().edit(above.page);
    if (above.tail)
        index_page::setTail(layout_, parent.bytes(), right.number());
    else
        index_page::setChild(layout_, view(parent), parent.bytes(), above.at, right.number());
    const auto bound = boundOf(leaf, list.at(leftCount - 1));
    Bytes separator(bound.begin(), bound.end());
    appendChild(leftNo, separator);
    insertAt(path, level - 1, above.at, separator);
}

void TreeEditor::splitRoot(const TreePath& path, const EntryList& list, size_t leftCount) {
    const size_t height = path.depth - 1;
    PageEdit left = newPage(height), right = newPage(height);
    PageEdit root = tree_.file().edit(tree_.root);
    const bool leaf = view(root).leaf();
    index_page::setLinks(layout_, left.bytes(), 0, right.number());
    index_page::setLinks(layout_, right.bytes(), left.number(), 0);
    index_page::setTail(layout_, right.bytes(), view(root).tail());
    index_page::write(layout_, left.bytes(), list, 0, leftCount);
    index_page::write(layout_, right.bytes(), list, leftCount, list.count());

    const auto bound = boundOf(leaf, list.at(leftCount - 1));
    Bytes separator(bound.begin(), bound.end());
    appendChild(left.number(), separator);
    index_page::initialise(layout_, root.bytes(), height + 1, tree_.owner);
    index_page::setTail(layout_, root.bytes(), right.number());
    index_page::insert(layout_, view(root), root.bytes(), 0, separator);
}

} // namespace jet
