// tools/orvanctl/demo_random.h — repeatable choices: the same on every system, as library distributions are
// not.
#pragma once

#include <random>
#include <span>

namespace orvanctl {

class DemoRandom {
  public:
    explicit DemoRandom(unsigned seed) : engine_(seed) {}
    int below(int limit) { return static_cast<int>(engine_() % static_cast<unsigned>(limit)); } // 0..limit-1
    int between(int least, int most) { return least + below(most - least + 1); }
    bool chance(int percent) { return below(100) < percent; }
    template <class T> const T& pick(std::span<const T> items) {
        return items[static_cast<size_t>(below(static_cast<int>(items.size())))];
    }

  private:
    std::mt19937 engine_;
};

} // namespace orvanctl
