// jet/index/tree_builder.cpp — builds a tree bottom-up: leaves from left to right, each full page an entry of
// the level above. The last child of a level becomes the tail of the last node above it; the top page moves
// into the root.
#include "jet/index/tree_builder.h"

#include "jet/error.h"
#include "jet/index/tree_editor.h"

#include <algorithm>
#include <deque>

namespace jet {
namespace {

class TreeBuilder {
  public:
    explicit TreeBuilder(const TreeRef& tree) : tree_(tree), layout_(tree.layout()), editor_(tree) {}

    void add(std::span<const uint8_t> entry) {
        if (entry.size() + kChildPointerSize > index_page::maxEntry(layout_))
            throw Error(Err::RecordTooLarge, "Dizin anahtarı çok uzun.");
        addEntry(0, entry);
    }

    void finish() {
        PageNo top = 0;
        for (size_t height = 0; top == 0; ++height) {
            Level& level = levels_[height];
            if (level.lastPage == 0 && (height == 0 || level.entries.count() == 0)) {
                top = level.heldChild; // 0 only for a single leaf
                if (height == 0) return writeRoot();
            } else {
                flush(height, level.entries.count(), level.heldChild);
            }
        }
        moveIntoRoot(top);
    }

  private:
    struct Level {
        EntryList entries;    // of the page that is being filled
        PageNo lastPage = 0;  // the page before it
        PageNo heldChild = 0; // nodes: the newest child; entry or tail as another follows or not
        Bytes heldBound;
    };

    void addEntry(size_t height, std::span<const uint8_t> entry) {
        if (levels_.size() <= height) levels_.resize(height + 1);
        EntryList& entries = levels_[height].entries;
        entries.add(entry);
        const size_t count = entries.count();
        if (index_page::fits(layout_, height == 0, entries, 0, count)) return;
        flush(height, count - 1, 0);
        const Bytes first(entry.begin(), entry.end());
        levels_[height].entries.clear();
        levels_[height].entries.add(first);
    }

    void addChild(size_t height, std::span<const uint8_t> bound, PageNo child) {
        if (levels_.size() <= height) levels_.resize(height + 1);
        if (levels_[height].heldChild != 0) {
            Bytes entry = levels_[height].heldBound;
            appendChild(levels_[height].heldChild, entry);
            addEntry(height, entry);
        }
        levels_[height].heldChild = child;
        levels_[height].heldBound.assign(bound.begin(), bound.end());
    }

    // Writes the first `count` entries of a level as its next page.
    void flush(size_t height, size_t count, PageNo tail) {
        Level& level = levels_[height];
        PageEdit page = editor_.newPage(height);
        index_page::write(layout_, page.bytes(), level.entries, 0, count);
        index_page::setLinks(layout_, page.bytes(), level.lastPage, 0);
        index_page::setTail(layout_, page.bytes(), tail);
        if (level.lastPage != 0)
            index_page::setNext(layout_, tree_.file().edit(level.lastPage).bytes(), page.number());
        level.lastPage = page.number();
        const auto last = level.entries.at(count - 1);
        addChild(height + 1, height == 0 ? last : last.first(last.size() - kChildPointerSize), page.number());
    }

    void writeRoot() {
        const EntryList& entries = levels_[0].entries;
        index_page::write(layout_, tree_.file().edit(tree_.root).bytes(), entries, 0, entries.count());
    }

    void moveIntoRoot(PageNo top) {
        {
            PageEdit root = tree_.file().edit(tree_.root);
            const LoadedPage page = loadIndexPage(tree_, top);
            const auto bytes = page.ref.bytes();
            std::copy(bytes.begin(), bytes.end(), root.bytes().begin());
        }
        editor_.freePage(top);
    }

    TreeRef tree_;
    const Layout& layout_;
    TreeEditor editor_;
    std::deque<Level> levels_ = std::deque<Level>(1); // by height; a deque: references stay when it grows
};

} // namespace

void buildTree(const TreeRef& tree, const std::function<bool(Bytes& key, RowId& row)>& nextEntry) {
    if (const LoadedPage root = loadIndexPage(tree, tree.root); !root.view.leaf() || !root.view.empty())
        throw Error(Err::InvalidArgument, "Dizin boş değil; baştan doldurulamaz.").onPage(tree.root);
    TreeBuilder builder(tree);
    Bytes entry, previous;
    RowId row;
    while (nextEntry(entry, row)) {
        const LeafEntry whole(entry, row);
        const auto bytes = whole.span();
        if (!previous.empty() &&
            !std::lexicographical_compare(previous.begin(), previous.end(), bytes.begin(), bytes.end()))
            throw Error(Err::InvalidArgument, "Dizine girecek kayıtlar sıralı değil.");
        builder.add(bytes);
        previous.assign(bytes.begin(), bytes.end());
    }
    builder.finish();
}

} // namespace jet
