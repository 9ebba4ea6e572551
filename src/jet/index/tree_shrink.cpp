// jet/index/tree_shrink.cpp — erasing: empty pages are freed, sparse ones joined with a neighbour of the same
// parent, and a root with a single child takes over what the child holds.
#include "jet/error.h"
#include "jet/index/tree_editor.h"

#include <algorithm>

namespace jet {

bool TreeEditor::erase(std::span<const uint8_t> entry) {
    TreePath path;
    {
        const LoadedPage leaf = descend(tree_, entry, &path);
        const size_t at = leaf.view.lowerBound(entry);
        if (at == leaf.view.used() || !leaf.view.equals(at, entry)) return false;
        path.steps[path.depth - 1].at = at;
    }
    const TreeStep& step = path.steps[path.depth - 1];
    size_t left = 0;
    {
        PageEdit page = tree_.file().edit(step.page);
        index_page::erase(layout_, view(page), page.bytes(), step.at);
        left = view(page).used();
    }
    if (left == 0)
        removePage(path, path.depth - 1);
    else
        mergeIfSparse(path, path.depth - 1);
    return true;
}

// A page without entries (and tail) leaves the tree; an empty root becomes the empty leaf that a new tree is.
void TreeEditor::removePage(const TreePath& path, size_t level) {
    const PageNo page = path.steps[level].page;
    if (level == 0) return index_page::initialise(layout_, tree_.file().edit(page).bytes(), 0, tree_.owner);
    unlink(page);
    freePage(page);
    dropChild(path, level - 1);
}

void TreeEditor::dropChild(const TreePath& path, size_t level) {
    const TreeStep& step = path.steps[level];
    PageEdit node = tree_.file().edit(step.page);
    const IndexPage before = view(node);
    if (step.tail) { // the child before it becomes the tail
        const size_t last = before.empty() ? 0 : before.lastStart();
        const PageNo child = before.empty() ? 0 : before.child(last);
        if (child != 0) index_page::erase(layout_, before, node.bytes(), last);
        index_page::setTail(layout_, node.bytes(), child);
    } else if (step.at > 0 && before.end(step.at) == before.used() && before.tail() == 0) {
        // The last bound must stay as high as the parent's: the child before it moves up to it.
        const size_t previous = before.startBefore(step.at);
        index_page::setChild(layout_, before, node.bytes(), step.at, before.child(previous));
        index_page::erase(layout_, view(node), node.bytes(), previous);
    } else {
        index_page::erase(layout_, before, node.bytes(), step.at);
    }
    settle(path, level);
}

// After a node lost a child.
void TreeEditor::settle(const TreePath& path, size_t level) {
    const LoadedPage node = loadIndexPage(tree_, path.steps[level].page);
    if (node.view.empty() && node.view.tail() == 0) return removePage(path, level);
    if (level == 0) return collapseRoot();
    mergeIfSparse(path, level);
}

void TreeEditor::mergeIfSparse(const TreePath& path, size_t level) {
    if (level == 0) return;
    const PageNo page = path.steps[level].page;
    if (loadIndexPage(tree_, page).view.used() >= index_page::capacity(layout_) / 4) return;

    const TreeStep& above = path.steps[level - 1];
    const LoadedPage parent = loadIndexPage(tree_, above.page);
    const IndexPage& view = parent.view;
    if (!above.tail) {
        const size_t following = view.end(above.at);
        const PageNo right = following < view.used() ? view.child(following) : view.tail();
        if (right != 0 && mergePair(path, level, above.at, page, right)) return;
    }
    if (above.at > 0) {
        const size_t previous = view.startBefore(above.at);
        mergePair(path, level, previous, view.child(previous), page);
    }
}

// Moves the left page's entries to the right one, whose bound holds for both. `leftAt` is the left page's
// entry in the parent. False, nothing changed, when both together would be more than three quarters full.
bool TreeEditor::mergePair(const TreePath& path, size_t level, size_t leftAt, PageNo left, PageNo right) {
    EntryList list;
    {
        const LoadedPage a = loadIndexPage(tree_, left), b = loadIndexPage(tree_, right);
        if (a.view.leaf() != b.view.leaf())
            throw Error(Err::Corrupt, "Dizin ağacının dalları eşit derinlikte değil.").onPage(right);
        if (a.view.used() + b.view.used() > index_page::capacity(layout_) / 4 * 3 || a.view.tail() != 0)
            return false;
        if (!a.view.empty() && !b.view.empty() && a.view.compare(a.view.lastStart(), b.view, 0) >= 0)
            throw Error(Err::Corrupt, "Dizin sayfaları sıralı değil.").onPage(right);
        a.view.collect(list);
        b.view.collect(list);
        if (!index_page::fits(layout_, a.view.leaf(), list, 0, list.count())) return false;
    }
    index_page::write(layout_, edit(right).bytes(), list, 0, list.count());
    unlink(left);
    freePage(left);
    {
        PageEdit parent = tree_.file().edit(path.steps[level - 1].page);
        index_page::erase(layout_, view(parent), parent.bytes(), leftAt);
    }
    settle(path, level - 1);
    return true;
}

// The root keeps its number, so a single child's content moves up into it.
void TreeEditor::collapseRoot() {
    for (size_t depth = 0; depth < kMaxTreeDepth; ++depth) {
        PageEdit root = tree_.file().edit(tree_.root);
        const IndexPage before = view(root);
        if (before.leaf()) return;
        const bool tailOnly = before.empty() && before.tail() != 0;
        const bool entryOnly = !before.empty() && before.end(0) == before.used() && before.tail() == 0;
        if (!tailOnly && !entryOnly) return;
        const PageNo child = tailOnly ? before.tail() : before.child(0);
        if (child == tree_.root)
            throw Error(Err::Corrupt, "Dizin ağacının bağlantıları döngü oluşturuyor.").onPage(child);
        {
            const LoadedPage page = loadIndexPage(tree_, child);
            const auto bytes = page.ref.bytes();
            std::copy(bytes.begin(), bytes.end(), root.bytes().begin());
        }
        index_page::setLinks(layout_, root.bytes(), 0, 0);
        freePage(child);
    }
}

// Ties the page's neighbours together. Leaves must be linked both ways; some programs do not link nodes at
// all.
void TreeEditor::unlink(PageNo page) {
    PageNo previous = 0, next = 0;
    bool leaf = false;
    {
        const LoadedPage loaded = loadIndexPage(tree_, page);
        previous = loaded.view.previous(), next = loaded.view.next(), leaf = loaded.view.leaf();
    }
    const auto broken = [&](PageNo neighbour) {
        if (leaf) throw Error(Err::Corrupt, "Dizin yapraklarının bağlantıları uyuşmuyor.").onPage(neighbour);
    };
    if (previous != 0) {
        PageEdit neighbour = edit(previous);
        if (view(neighbour).next() == page)
            index_page::setNext(layout_, neighbour.bytes(), next);
        else
            broken(previous);
    }
    if (next != 0) {
        PageEdit neighbour = edit(next);
        if (view(neighbour).previous() == page)
            index_page::setPrevious(layout_, neighbour.bytes(), previous);
        else
            broken(next);
    }
}

} // namespace jet
