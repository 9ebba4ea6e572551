// jet/index/tree_check.cpp — the whole-tree check. Every page is visited once, so damage cannot make it run
// for ever.
#include "jet/index/tree_check.h"

#include "jet/error.h"

#include <algorithm>
#include <optional>
#include <set>
#include <unordered_set>

namespace jet {
namespace {

class TreeCheck {
  public:
    TreeCheck(const TreeRef& tree, const std::function<void(std::span<const uint8_t>, RowId)>& entry,
              const std::function<void(PageNo, const std::string&)>& fault)
        : tree_(tree), entry_(entry), fault_(fault) {}

    void run() {
        checkPage(tree_.root, 0, nullptr);
        if (lastLeaf_ != 0 && lastLeafNext_ != 0)
            fault_(lastLeaf_, "Son dizin yaprağının ardında başka bir yaprak bağlı.");
        checkMap();
    }

  private:
    // `bound`: the parent's key for this page, nullptr for the root and tails.
    void checkPage(PageNo page, size_t depth, const Bytes* bound) {
        if (depth >= kMaxTreeDepth) return fault_(page, "Dizin ağacı çok derin.");
        if (!visited_.insert(page).second)
            return fault_(page, "Dizin sayfasına ağaçta iki yerden ulaşılıyor.");
        std::optional<LoadedPage> loaded;
        if (!guarded(page, [&] { loaded.emplace(loadIndexPage(tree_, page)); })) return;
        const IndexPage& view = loaded->view;
        if (std::string text = view.contradiction(); !text.empty()) return fault_(page, text);
        if (depth == 0 && (view.previous() != 0 || view.next() != 0))
            fault_(page, "Dizinin kök sayfasının komşu bağlantısı var.");
        if (bound != nullptr && !view.empty()) checkBound(view, *bound);
        if (view.leaf())
            checkLeaf(view, depth);
        else
            checkNode(view, depth);
    }

    void checkBound(const IndexPage& view, const Bytes& bound) {
        Bytes last;
        view.copyEntry(view.lastStart(), last);
        if (!view.leaf()) last.resize(last.size() - kChildPointerSize);
        if (last > bound) fault_(view.number(), "Üst düğümün anahtarı sayfanın son kaydından küçük.");
    }

    void checkNode(const IndexPage& view, size_t depth) {
        if (view.empty() && view.tail() == 0) fault_(view.number(), "Dizin düğümünün hiç alt sayfası yok.");
        Bytes bound;
        for (size_t at = 0; at < view.used(); at = view.end(at)) {
            view.copyEntry(at, bound);
            const PageNo child = view.child(at);
            bound.resize(bound.size() - kChildPointerSize);
            checkPage(child, depth + 1, &bound);
        }
        if (view.tail() != 0) checkPage(view.tail(), depth + 1, nullptr);
    }

    void checkLeaf(const IndexPage& view, size_t depth) {
        if (!leafDepth_) leafDepth_ = depth;
        if (*leafDepth_ != depth) fault_(view.number(), "Dizin yaprakları aynı derinlikte değil.");
        if (view.previous() != lastLeaf_) fault_(view.number(), "Yaprağın önceki yaprağa bağlantısı yanlış.");
        if (lastLeaf_ != 0 && lastLeafNext_ != view.number())
            fault_(lastLeaf_, "Yaprağın sonraki yaprağa bağlantısı yanlış.");
        lastLeaf_ = view.number();
        lastLeafNext_ = view.next();

        Bytes entry;
        for (size_t at = 0; at < view.used(); at = view.end(at)) {
            view.copyEntry(at, entry);
            if (at == 0 && !lastEntry_.empty() && lastEntry_ >= entry)
                fault_(view.number(), "Yaprağın ilk kaydı önceki yaprağın son kaydından büyük değil.");
            entry_(std::span(entry).first(entry.size() - kRowPointerSize), view.row(at));
            lastEntry_ = entry;
        }
    }

    void checkMap() {
        std::set<PageNo> listed;
        const UsageMap map(tree_.file(), tree_.layout(), tree_.pageMap);
        if (!guarded(tree_.pageMap.page, [&] { map.forEach([&](PageNo page) { listed.insert(page); }); }))
            return;
        for (const PageNo page : std::set<PageNo>(visited_.begin(), visited_.end()))
            if (listed.count(page) == 0) fault_(page, "Dizin sayfası, dizinin sayfa haritasında yok.");
        for (const PageNo page : listed)
            if (visited_.count(page) == 0)
                fault_(page, "Sayfa haritasındaki sayfaya dizin ağacından ulaşılamıyor.");
    }

    template <class Action> bool guarded(PageNo page, const Action& action) {
        try {
            action();
            return true;
        } catch (const Error& error) {
            fault_(error.page() != 0 ? error.page() : page, error.message());
            return false;
        }
    }

    TreeRef tree_;
    const std::function<void(std::span<const uint8_t>, RowId)>& entry_;
    const std::function<void(PageNo, const std::string&)>& fault_;
    std::unordered_set<PageNo> visited_;
    std::optional<size_t> leafDepth_;
    PageNo lastLeaf_ = 0, lastLeafNext_ = 0;
    Bytes lastEntry_;
};

} // namespace

void checkTree(const TreeRef& tree, const std::function<void(std::span<const uint8_t> key, RowId)>& entry,
               const std::function<void(PageNo, const std::string&)>& fault) {
    TreeCheck(tree, entry, fault).run();
}

} // namespace jet
